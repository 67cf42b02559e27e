// `vorix demo`: a recording with mains hum made up on the spot, rendered through the factory
// program against 60 Hz hum, and measured before and after.

#include <chrono>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include "vorix/Arguments.h"
#include "vorix/AudioFile.h"
#include "vorix/Commands.h"
#include "vorix/DemoMeasurement.h"
#include "vorix/DemoSignal.h"
#include "vorix/EngineSession.h"
#include "vorix/OutputFile.h"
#include "vorix/ProgramLookup.h"
#include "vorix/RenderCommand.h"
#include "vorix/ResponseCommand.h"
#include "vorix/ToolErrors.h"

namespace vorix::cli {
namespace {

constexpr const char* kPrefix = "vorix demo: ";
constexpr const char* kDefaultFolder = "vorix-demo";
constexpr const char* kRecordingName = "hum-recording.wav";
constexpr const char* kResultName = "hum-removed.wav";
constexpr const char* kDemoProgram = "Hum Suppression (60Hz)";
// The recording is kept as a studio would: 24-bit WAV.
constexpr int kRecordingFormat = SF_FORMAT_WAV | SF_FORMAT_PCM_24;

using Clock = std::chrono::steady_clock;

void WriteRecording(const std::string& path, const std::vector<float>& interleaved) {
    PendingOutputFile file(path);
    AudioFileWriter writer(file.Descriptor(), path, kRecordingFormat, kDemoSampleRate,
                           kDemoChannels);
    writer.Write(interleaved.data(), static_cast<std::int64_t>(interleaved.size() / kDemoChannels));
    writer.Close();
    file.Commit();
}

std::vector<float> ReadRecording(const std::string& path) {
    AudioFileReader reader(path);
    std::vector<float> interleaved(static_cast<std::size_t>(reader.Frames() * reader.Channels()));
    interleaved.resize(static_cast<std::size_t>(reader.Read(interleaved.data(), reader.Frames()) *
                                                reader.Channels()));
    return interleaved;
}

// What the program's filter does at each hum frequency, from the engine's own response.
std::vector<double> FilterGains(ToolContext& context, std::int32_t program,
                                const std::vector<HumComponent>& hum) {
    EngineSetup setup;
    setup.sampleRate = kDemoSampleRate;
    setup.channels = kDemoChannels;
    setup.program = program;
    EngineSession session(context.product, setup, context.err, kPrefix);
    std::vector<double> frequencies;
    for (const HumComponent& component : hum)
        frequencies.push_back(component.frequency);
    std::vector<double> gains;
    for (const ResponsePoint& point : ComputeResponse(session.Engine(), frequencies)) {
        gains.push_back((point.leftDb + point.rightDb) / 2.0);
    }
    return gains;
}

// Tenths of a decibel, without a "-0.0" for a change too small to show.
double Tenths(double decibels) {
    return std::round(decibels * 10.0) / 10.0 + 0.0;
}

std::string Row(const std::string& label, double before, double after, const std::string& last) {
    char text[160];
    std::snprintf(text, sizeof text, "  %-24s %7.1f dB %7.1f dB %+7.1f dB%s\n", label.c_str(),
                  Tenths(before), Tenths(after), Tenths(after - before), last.c_str());
    return text;
}

void PrintTable(std::ostream& out, const std::vector<HumComponent>& hum, const DemoLevels& before,
                const DemoLevels& after, const std::vector<double>& filterGains) {
    out << "  " << std::string(24, ' ') << "    before      after     change     filter\n";
    for (std::size_t i = 0; i < hum.size(); ++i) {
        char filter[32];
        std::snprintf(filter, sizeof filter, " %+7.1f dB", Tenths(filterGains[i]));
        const std::string label =
            "hum " + std::to_string(static_cast<int>(hum[i].frequency)) + " Hz";
        out << Row(label, before.humDb[i], after.humDb[i], filter);
    }
    out << Row("music away from the hum", before.musicDb, after.musicDb, "");
}

}  // namespace

int RunDemoCommand(CommandWords words, ToolContext& context) {
    const ParsedArguments parsed = ParseArguments(words, {});
    if (parsed.positionals.size() > 1) throw UsageError("demo takes one folder at most");
    const auto start = Clock::now();
    const std::filesystem::path folder =
        parsed.positionals.empty() ? kDefaultFolder : parsed.positionals[0];
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) {
        throw ToolFailure("cannot make the folder \"" + folder.string() + "\": " + error.message());
    }
    const std::vector<HumComponent> hum = DemoHum();
    RenderJob job;
    job.inputPath = (folder / kRecordingName).string();
    job.outputPath = (folder / kResultName).string();
    job.program = ProgramCatalog(context.product).Resolve(kDemoProgram);

    WriteRecording(job.inputPath, MakeDemoRecording());
    const RenderReport render = RenderFile(job, context, kPrefix);
    const DemoLevels before = MeasureDemoLevels(ReadRecording(job.inputPath), hum);
    const DemoLevels after = MeasureDemoLevels(ReadRecording(job.outputPath), hum);
    const std::vector<double> gains = FilterGains(context, *job.program, hum);

    std::ostream& out = context.out;
    out << "Vorix demonstration: " << kDemoSeconds << " s of 48 kHz stereo music with 60 Hz mains "
        << "hum, through \"" << kDemoProgram << "\".\n"
        << "  recording  " << job.inputPath << "\n  result     " << job.outputPath << "\n\n";
    PrintTable(out, hum, before, after, gains);
    const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
    char summary[200];
    std::snprintf(summary, sizeof summary,
                  "\nLevels relative to a full-scale sine over the last %d s; \"filter\" is the "
                  "program's response there.\nDone in %.1f s; the render ran at %.0f times real "
                  "time.\n",
                  kMeasuredSeconds, seconds,
                  static_cast<double>(render.frames) / render.sampleRate / render.seconds);
    out << summary;
    return kExitSuccess;
}

}  // namespace vorix::cli
