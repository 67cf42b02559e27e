#include "vorix/ResponseCommand.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "core/ZORPluginMetaClass.h"
#include "dsp/FilterChainOps.h"
#include "dsp/FilterParameters.h"
#include "dsp/FilterResponse.h"
#include "engine/Ombrel.h"
#include "engine/VorixParameterIds.h"
#include "vorix/Arguments.h"
#include "vorix/Commands.h"
#include "vorix/EngineOptions.h"
#include "vorix/EngineSession.h"
#include "vorix/ProgramLookup.h"
#include "vorix/ToolErrors.h"

namespace vorix::cli {
namespace {

constexpr const char* kPrefix = "vorix response: ";
constexpr const char* kCsvHeader = "frequency_hz,left_db,right_db";

constexpr double kLowestGridFrequency = 10.0;
constexpr double kHighestGridFrequency = 20000.0;
constexpr int kDefaultPoints = 200;
constexpr int kMostPoints = 100000;

constexpr OptionDefinition kResponseOptions[] = {
    {"--program", true, false},
    {"--settings", true, false},
    {"--set", true, true},
    kRateOption,
    kChannelsOption,
    {"--points", true, false},
    {"--freqs", true, false},
};

double ChannelMagnitude(const Ombrel& engine, int channel, double normalisedFrequency) {
    double magnitude = 1.0;
    for (const OpaqueFilterData* f = FirstFilter(engine.Chain(channel)); f != nullptr;
         f = NextFilter(f)) {
        if ((f->flags.Load() & FilterFlags::NotProcessing) != 0) continue;
        float filterMagnitude = 1.0f;
        EvaluateFilterResponse(f, normalisedFrequency, &filterMagnitude, nullptr);
        magnitude *= filterMagnitude;
    }
    return magnitude;
}

// The compensation gain as the audio path applies it: the parameter's decibels as a ratio.
double CompensationGain(Ombrel& engine, int channel) {
    const int32_t id = channel == 0 ? kLeftGainId : kRightGainId;
    const double decibels = engine.GetParameter(engine.MetaClass().FindParameterInfo(id));
    return DecibelsToRatio(static_cast<float>(decibels));
}

double Decibels(double magnitude) {
    if (!(magnitude > 0.0)) return kResponseFloorDb;
    return std::max(20.0 * std::log10(magnitude), kResponseFloorDb);
}

// A decibel value as the CSV shows it: four decimals, and no "-0.0000".
std::string DecibelText(double decibels) {
    char text[32];
    std::snprintf(text, sizeof text, "%.4f", decibels);
    return std::string(text) == "-0.0000" ? "0.0000" : text;
}

std::vector<double> RequestedFrequencies(const ParsedArguments& parsed, double rate) {
    if (parsed.Has("--points") && parsed.Has("--freqs")) {
        throw UsageError("give --points or --freqs, not both");
    }
    if (auto list = parsed.Value("--freqs")) {
        return ParseNumberList(*list, "each frequency", 0.0, rate / 2.0);
    }
    int points = kDefaultPoints;
    if (auto text = parsed.Value("--points")) {
        points = static_cast<int>(ParseWholeNumber(*text, "the number of points", 2, kMostPoints));
    }
    return LogFrequencyGrid(points, rate);
}

}  // namespace

std::vector<ResponsePoint> ComputeResponse(Ombrel& engine, const std::vector<double>& frequencies) {
    const double rate = engine.GetSampleRate();
    const bool stereo = engine.Channels() == 2;
    const double leftGain = CompensationGain(engine, 0);
    const double rightGain = stereo ? CompensationGain(engine, 1) : leftGain;
    std::vector<ResponsePoint> points;
    points.reserve(frequencies.size());
    for (double frequency : frequencies) {
        ResponsePoint point;
        point.frequency = frequency;
        point.leftDb = Decibels(ChannelMagnitude(engine, 0, frequency / rate) * leftGain);
        point.rightDb = stereo ? Decibels(ChannelMagnitude(engine, 1, frequency / rate) * rightGain)
                               : point.leftDb;
        points.push_back(point);
    }
    return points;
}

std::vector<double> LogFrequencyGrid(int points, double sampleRate) {
    const double highest = std::min(kHighestGridFrequency, sampleRate / 2.0);
    std::vector<double> grid(static_cast<std::size_t>(points));
    const double ratio = highest / kLowestGridFrequency;
    for (int i = 0; i < points; ++i) {
        grid[static_cast<std::size_t>(i)] =
            kLowestGridFrequency * std::pow(ratio, static_cast<double>(i) / (points - 1));
    }
    grid.front() = kLowestGridFrequency;
    grid.back() = highest;
    return grid;
}

void WriteResponseCsv(std::ostream& out, const std::vector<ResponsePoint>& points) {
    out << kCsvHeader << '\n';
    for (const ResponsePoint& point : points) {
        char frequency[32];
        std::snprintf(frequency, sizeof frequency, "%.10g", point.frequency);
        out << frequency << ',' << DecibelText(point.leftDb) << ',' << DecibelText(point.rightDb)
            << '\n';
    }
}

int RunResponseCommand(CommandWords words, ToolContext& context) {
    const ParsedArguments parsed = ParseArguments(words, kResponseOptions);
    if (!parsed.positionals.empty()) {
        throw UsageError("response takes options only, and \"" + parsed.positionals[0] +
                         "\" is none");
    }
    if (parsed.Has("--program") && parsed.Has("--settings")) {
        throw UsageError("give a program or a settings file, not both");
    }
    EngineSetup setup = ParseEngineFormat(parsed);
    if (auto program = parsed.Value("--program")) {
        setup.program = ProgramCatalog(context.product).Resolve(*program);
    }
    setup.settingsPath = parsed.Value("--settings").value_or("");
    for (const std::string& setting : parsed.Values("--set")) {
        setup.parameters.push_back(ParseParameterSetting(setting, context.product));
    }
    const std::vector<double> frequencies = RequestedFrequencies(parsed, setup.sampleRate);
    EngineSession session(context.product, setup, context.err, kPrefix);
    WriteResponseCsv(context.out, ComputeResponse(session.Engine(), frequencies));
    return kExitSuccess;
}

}  // namespace vorix::cli
