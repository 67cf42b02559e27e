#include "vorix/RenderCommand.h"

#include <chrono>
#include <vector>

#include "core/PluginCore.h"
#include "dsp/DenormalGuard.h"
#include "vorix/Arguments.h"
#include "vorix/AudioFile.h"
#include "vorix/Commands.h"
#include "vorix/Interrupt.h"
#include "vorix/OutputFile.h"
#include "vorix/ProgramLookup.h"
#include "vorix/ProgressBar.h"
#include "vorix/ToolErrors.h"

namespace vorix::cli {
namespace {

constexpr const char* kPrefix = "vorix render: ";

// Where the process-wide guard noise generator stands when a process starts.
constexpr std::uint32_t kGuardNoiseStartSeed = 1;

// Bypass mode 0 of the core's audio call: the plug-in is active.
constexpr std::int32_t kActive = 0;

constexpr OptionDefinition kRenderOptions[] = {
    {"--program", true, false}, {"--settings", true, false}, {"--set", true, true},
    {"--block", true, false},   {"--float", false, false},   {"--quiet", false, false},
};

RenderJob ParseRenderJob(CommandWords words, const ToolContext& context) {
    const ParsedArguments parsed = ParseArguments(words, kRenderOptions);
    if (parsed.positionals.size() < 2) throw UsageError("render needs an input and an output file");
    if (parsed.positionals.size() > 2) {
        throw UsageError("render takes two files, and \"" + parsed.positionals[2] +
                         "\" is a third");
    }
    if (parsed.Has("--program") && parsed.Has("--settings")) {
        throw UsageError("give a program or a settings file, not both");
    }
    RenderJob job;
    job.inputPath = parsed.positionals[0];
    job.outputPath = parsed.positionals[1];
    ContainerFor(job.outputPath);  // a name of the wrong kind is a usage error, found first
    if (auto program = parsed.Value("--program")) {
        job.program = ProgramCatalog(context.product).Resolve(*program);
    }
    job.settingsPath = parsed.Value("--settings").value_or("");
    for (const std::string& setting : parsed.Values("--set")) {
        job.parameters.push_back(ParseParameterSetting(setting, context.product));
    }
    if (auto block = parsed.Value("--block")) {
        job.blockSize = static_cast<std::int32_t>(
            ParseWholeNumber(*block, "the block size", 1, kLargestBlockSize));
    }
    job.asFloat = parsed.Has("--float");
    job.quiet = parsed.Has("--quiet");
    return job;
}

// The host's side of the audio call: the file's interleaved frames in, the core's channel
// buffers, and interleaved frames out, one block at a time.
class BlockBuffers {
  public:
    BlockBuffers(int channels, std::int32_t blockSize)
        : channels_(channels),
          interleaved_(static_cast<std::size_t>(channels) * blockSize),
          inputs_(interleaved_.size()),
          outputs_(interleaved_.size()) {
        for (int c = 0; c < channels; ++c) {
            inputPointers_[c] = inputs_.data() + static_cast<std::size_t>(c) * blockSize;
            outputPointers_[c] = outputs_.data() + static_cast<std::size_t>(c) * blockSize;
        }
    }

    float* Interleaved() noexcept { return interleaved_.data(); }
    float** Inputs() noexcept { return inputPointers_; }
    float** Outputs() noexcept { return outputPointers_; }

    void Split(std::int64_t frames) {
        for (std::int64_t i = 0; i < frames; ++i) {
            for (int c = 0; c < channels_; ++c)
                inputPointers_[c][i] = interleaved_[Index(i, c)];
        }
    }
    void Join(std::int64_t frames) {
        for (std::int64_t i = 0; i < frames; ++i) {
            for (int c = 0; c < channels_; ++c)
                interleaved_[Index(i, c)] = outputPointers_[c][i];
        }
    }

  private:
    std::size_t Index(std::int64_t frame, int channel) const {
        return static_cast<std::size_t>(frame) * static_cast<std::size_t>(channels_) +
               static_cast<std::size_t>(channel);
    }

    int channels_;
    std::vector<float> interleaved_, inputs_, outputs_;
    float* inputPointers_[2] = {nullptr, nullptr};
    float* outputPointers_[2] = {nullptr, nullptr};
};

std::int64_t ProcessFile(EngineSession& session, AudioFileReader& input, AudioFileWriter& writer,
                         const RenderJob& job, ToolContext& context) {
    BlockBuffers buffers(input.Channels(), job.blockSize);
    ProgressBar bar(context.err, context.errIsTerminal && !job.quiet, input.Frames());
    SetGuardNoiseSeed(kGuardNoiseStartSeed);
    session.Platform().SetProcessing(true);
    std::int64_t done = 0;
    while (const std::int64_t frames = input.Read(buffers.Interleaved(), job.blockSize)) {
        if (InterruptRequested()) throw ToolFailure("interrupted, so no output was written");
        buffers.Split(frames);
        session.Core().Process(buffers.Inputs(), buffers.Outputs(),
                               static_cast<std::int32_t>(frames), false, kActive);
        buffers.Join(frames);
        writer.Write(buffers.Interleaved(), frames);
        done += frames;
        bar.Update(done);
    }
    session.Platform().SetProcessing(false);
    bar.Finish();
    return done;
}

}  // namespace

RenderReport RenderFile(const RenderJob& job, ToolContext& context, const std::string& prefix) {
    const auto start = std::chrono::steady_clock::now();
    AudioFileReader input(job.inputPath);
    if (input.Channels() != 1 && input.Channels() != 2) {
        throw ToolFailure("\"" + job.inputPath + "\" has " + std::to_string(input.Channels()) +
                          " channels, and Vorix processes mono and stereo only");
    }
    const int format = OutputFormatFor(ContainerFor(job.outputPath), input.Format(), job.asFloat);
    EngineSetup setup;
    setup.sampleRate = static_cast<float>(input.SampleRate());
    setup.channels = input.Channels();
    setup.blockSize = job.blockSize;
    setup.program = job.program;
    setup.settingsPath = job.settingsPath;
    setup.parameters = job.parameters;
    EngineSession session(context.product, setup, context.err, prefix);

    PendingOutputFile output(job.outputPath);
    AudioFileWriter writer(output.Descriptor(), job.outputPath, format, input.SampleRate(),
                           input.Channels());
    RenderReport report;
    report.frames = ProcessFile(session, input, writer, job, context);
    writer.Close();
    output.Commit();
    report.sampleRate = input.SampleRate();
    report.seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    return report;
}

int RunRenderCommand(CommandWords words, ToolContext& context) {
    RenderFile(ParseRenderJob(words, context), context, kPrefix);
    return kExitSuccess;
}

}  // namespace vorix::cli
