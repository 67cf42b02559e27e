#include "vorix-host/InsertCommands.h"

#include <cmath>
#include <iomanip>
#include <optional>
#include <vector>

#include "vorix-host/AudioFile.h"
#include "vorix-host/FileReplacement.h"
#include "vorix-host/FourCharacterIds.h"
#include "vorix-host/HostError.h"
#include "vorix-host/Insert.h"
#include "vorix-host/Renderer.h"
#include "vorix-host/SessionFile.h"
#include "vorix-host/Signals.h"

namespace vorix {
namespace {

constexpr std::int32_t kDefaultBlockSize = 1024;
constexpr std::int32_t kLargestBlockSize = 1 << 20;
constexpr std::int32_t kLowestSampleRate = 1000;
constexpr std::int32_t kHighestSampleRate = 768000;
// The host's meter scale: 2^31 is full scale.
constexpr double kMeterFullScale = 2147483648.0;

struct RenderOptions {
    std::optional<std::int32_t> typeId;
    std::string input;
    std::string output;
    std::vector<std::string> controls;
    std::vector<std::string> automation;
    std::optional<std::string> load;
    std::optional<std::string> save;
    std::int32_t blockSize = kDefaultBlockSize;
    std::int32_t rate = kDefaultSampleRate;
    bool meters = false;
};

RenderOptions ParseRenderOptions(ArgumentList& args) {
    RenderOptions options;
    if (const auto type = args.TakeOption("--type")) options.typeId = ParseTypeId(*type);
    options.controls = args.TakeOptions("--control");
    options.automation = args.TakeOptions("--automate");
    options.load = args.TakeOption("--load");
    options.save = args.TakeOption("--save");
    if (const auto block = args.TakeOption("--block")) {
        options.blockSize = ParseWholeNumber(*block, 1, kLargestBlockSize, "block size");
    }
    if (const auto rate = args.TakeOption("--rate")) options.rate = ParseSampleRate(*rate);
    options.meters = args.TakeFlag("--meters");
    const std::vector<std::string> files = args.TakePositionals();
    if (files.size() != 2) throw UsageError("The command render needs an input and an output.");
    options.input = files[0];
    options.output = files[1];
    if (!options.typeId && !options.load) throw UsageError("The command render needs --type ID.");
    return options;
}

// An effect type named on the command line that the file lacks is the user's mistake, found
// before any work; one that only a session names is the session's, a failure of the work.
void CheckNamedType(const PlugInModule& module, std::int32_t typeId) {
    for (const EffectTypeInfo& type : module.EffectTypes()) {
        if (type.id == typeId) return;
    }
    throw UsageError("The plug-in file has no effect type " + IdText(typeId) + ".");
}

// The first insert of a session file, which fixes the type when the command line gives none.
std::optional<SessionInsert> LoadSessionInsert(const std::optional<std::string>& path,
                                               std::optional<std::int32_t>& typeId) {
    if (!path) return std::nullopt;
    std::vector<SessionInsert> inserts = ReadSessionFile(*path);
    if (inserts.empty()) throw HostError("The session file " + *path + " holds no insert.");
    const std::int32_t saved = inserts.front().typeId;
    if (typeId && *typeId != saved) {
        throw HostError("The session file holds a " + IdText(saved) + " insert, not a " +
                        IdText(*typeId) + " one.");
    }
    typeId = saved;
    return std::move(inserts.front());
}

AudioData ReadInput(const RenderOptions& options, std::int32_t channels, AudioFileFormat& format) {
    if (const auto sine = ParseSineSignal(options.input)) {
        format = 0;
        const auto frames = static_cast<std::int64_t>(std::llround(sine->seconds * options.rate));
        return GenerateSine(options.rate, channels, frames, sine->frequency, sine->amplitude);
    }
    return ReadAudioFile(options.input, format);
}

// "C=VALUE" as a control and the value its text stands for.
std::pair<std::int32_t, std::int32_t> ParseControlSetting(const Insert& insert,
                                                          std::string_view setting) {
    const std::size_t equals = setting.find('=');
    if (equals == std::string_view::npos) {
        throw UsageError("A control setting reads C=VALUE, not " + std::string(setting) + ".");
    }
    const std::int32_t control = insert.FindControl(setting.substr(0, equals));
    return {control, insert.ControlTextValue(control, setting.substr(equals + 1))};
}

std::vector<AutomationEvent> ParseAutomation(const Insert& insert,
                                             const std::vector<std::string>& settings) {
    std::vector<AutomationEvent> events;
    for (const std::string& setting : settings) {
        const std::size_t at = setting.rfind('@');
        if (at == std::string::npos) {
            throw UsageError("An automation point reads C=VALUE@SECONDS, not " + setting + ".");
        }
        const double seconds =
            ParseDecimal(std::string_view(setting).substr(at + 1), "automation time");
        if (seconds < 0.0) throw UsageError("An automation time cannot lie before the track.");
        const auto [control, value] = ParseControlSetting(insert, setting.substr(0, at));
        events.push_back({static_cast<std::int64_t>(std::llround(seconds * insert.SampleRate())),
                          control, value});
    }
    return events;
}

void PrintMeters(Insert& insert, std::ostream& out) {
    out << "latency\t" << insert.ReadLatency() << '\n';
    for (const MeterReading& meter : insert.ReadMeters()) {
        out << "meter\t" << meter.name << '\t';
        if (meter.clipped) {
            out << "clip\n";
        } else {
            out << std::fixed << std::setprecision(4) << meter.value / kMeterFullScale << '\n';
        }
    }
}

}  // namespace

std::int32_t ParseTypeId(const std::string& text) {
    const auto id = ParseId(text);
    if (!id) throw UsageError("An effect type id has four characters, such as StRT.");
    return *id;
}

std::int32_t ParseSampleRate(const std::string& text) {
    return ParseWholeNumber(text, kLowestSampleRate, kHighestSampleRate, "sample rate");
}

void RunControls(ArgumentList& args, PlugInModule& module, std::ostream& out, std::ostream& err) {
    std::optional<std::int32_t> typeId;
    if (const auto type = args.TakeOption("--type")) typeId = ParseTypeId(*type);
    const auto load = args.TakeOption("--load");
    const auto rate = args.TakeOption("--rate");
    if (!args.TakePositionals().empty())
        throw UsageError("The command controls takes no arguments.");
    if (!typeId && !load) throw UsageError("The command controls needs --type ID.");
    InsertSetup setup;
    setup.sampleRate = rate ? ParseSampleRate(*rate) : kDefaultSampleRate;
    if (typeId) CheckNamedType(module, *typeId);
    const std::optional<SessionInsert> session = LoadSessionInsert(load, typeId);
    setup.messageEcho = &err;
    Insert insert(module.FindType(*typeId), setup);
    if (session) insert.RestoreChunks(session->chunks);
    for (std::int32_t control = 1; control <= insert.CountControls(); ++control) {
        const ControlInfo info = insert.DescribeControl(control);
        out << info.number << '\t' << IdText(info.id) << '\t' << info.name << '\t'
            << (info.continuous ? "continuous" : "discrete") << '\t' << info.minimumText << '\t'
            << info.maximumText << '\t' << info.valueText << '\n';
    }
}

void RunRender(ArgumentList& args, PlugInModule& module, std::ostream& out, std::ostream& err) {
    RenderOptions options = ParseRenderOptions(args);
    if (options.typeId) CheckNamedType(module, *options.typeId);
    // A place that cannot take the results is found out before the work, not after it.
    for (const std::optional<std::string>& path : {std::optional(options.output), options.save}) {
        if (path) FileReplacement{*path};
    }
    const std::optional<SessionInsert> session = LoadSessionInsert(options.load, options.typeId);
    IProcessType& type = module.FindType(*options.typeId);
    std::int32_t inputs = 0;
    std::int32_t outputs = 0;
    type.GetChannelCounts(inputs, outputs);
    AudioFileFormat format = 0;
    const AudioData input = ReadInput(options, inputs, format);

    InsertSetup setup;
    setup.sampleRate = input.sampleRate;
    setup.messageEcho = &err;
    Insert insert(type, setup);
    if (session) insert.RestoreChunks(session->chunks);
    for (const std::string& setting : options.controls) {
        const auto [control, value] = ParseControlSetting(insert, setting);
        insert.WriteControl(control, value);
    }
    const AudioData output = RenderThrough(insert, input, options.blockSize,
                                           ParseAutomation(insert, options.automation));
    WriteAudioFile(options.output, output, format);
    if (options.save) WriteSessionFile(*options.save, {{insert.TypeId(), insert.SaveChunks()}});
    if (options.meters) PrintMeters(insert, out);
}

}  // namespace vorix
