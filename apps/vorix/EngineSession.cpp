#include "vorix/EngineSession.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>

#include "core/PluginCore.h"
#include "core/SettingsTexts.h"
#include "core/ZORPluginMetaClass.h"
#include "engine/Ombrel.h"
#include "framework/ScopeGuards.h"
#include "vorix/ProgramLookup.h"
#include "vorix/ToolErrors.h"

namespace vorix::cli {
namespace {

// At most one byte beyond the longest settings text is read, so that a file far too long, or a
// device or pipe whose data never ends, is refused at once rather than read whole.
std::string ReadSettingsText(const std::string& path) {
    const auto cannotRead = [&path](int reason) {
        return ToolFailure("cannot read the settings file \"" + path +
                           "\": " + SystemReason(reason));
    };
    int descriptor = -1;
    do {
        descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    } while (descriptor < 0 && errno == EINTR);
    if (descriptor < 0) throw cannotRead(errno);
    const ScopeExit closing([descriptor] { close(descriptor); });
    struct stat status {};
    if (fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode)) {
        throw ToolFailure("\"" + path + "\" is a folder, not a settings file");
    }
    std::string text;
    char piece[65536];
    while (text.size() <= kMaxSettingsTextBytes) {
        const ssize_t got = read(descriptor, piece,
                                 std::min(sizeof piece, kMaxSettingsTextBytes + 1 - text.size()));
        if (got == 0) break;
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) throw cannotRead(errno);
        text.append(piece, static_cast<std::size_t>(got));
    }
    return text;
}

std::string RateText(float rate) {
    return std::to_string(static_cast<long>(std::lround(rate))) + " Hz";
}

}  // namespace

EngineSession::EngineSession(ZORPluginMetaClass& product, const EngineSetup& setup,
                             std::ostream& err, const std::string& messagePrefix)
    : product_(product),
      err_(err),
      prefix_(messagePrefix),
      platform_(setup.sampleRate, setup.blockSize, setup.channels, err, messagePrefix) {
    const ChannelConfig config{setup.channels, setup.channels};
    core_ = product_.CreateCore(&platform_, config);
    core_->CaptureDefaultSettings();
    core_->ResetAudioState();
    core_->SetSampleRate(setup.sampleRate);
    core_->SetBlockSize(setup.blockSize);
    core_->Start();
    if (!setup.settingsPath.empty()) {
        LoadSettingsFile(setup.settingsPath);
    } else if (setup.program) {
        LoadProgram(*setup.program);
    }
    for (const ParameterSetting& setting : setup.parameters)
        ApplyParameter(setting);
}

EngineSession::~EngineSession() {
    core_->ResetAudioState();
    core_->Stop();
}

Ombrel& EngineSession::Engine() const {
    return dynamic_cast<Ombrel&>(*core_);
}

// A host's change to the program already current changes nothing, and a new instance's current
// program is 0, whose stored text the engine has not loaded yet (it starts from its own default
// filters). For that program the core gets its own program document back as a whole-document
// chunk, which loads the current program's stored text as a host's restored bank would.
void EngineSession::LoadProgram(std::int32_t program) {
    const int before = platform_.MessageCount();
    if (program != core_->GetProgram()) {
        core_->SetProgram(program);
    } else {
        const std::string document = core_->FormatProgramDocument();
        core_->SetChunk(document.data(), static_cast<std::int32_t>(document.size()), false);
    }
    ThrowIfCoreComplained(before);
    WarnOfFixedRate(core_->GetProgramName(program));
}

// A file longer than any settings text gets the core's own message for corrupted settings, as a
// chunk of that size would.
void EngineSession::LoadSettingsFile(const std::string& path) {
    const std::string text = ReadSettingsText(path);
    if (text.empty()) throw ToolFailure("the settings file \"" + path + "\" is empty");
    const int before = platform_.MessageCount();
    if (text.size() > kMaxSettingsTextBytes) {
        core_->ShowErrorOnce(kUnableToLoadSettings, kSettingsCorrupted, nullptr,
                             kSettingsErrorKind);
    } else {
        core_->SetChunk(text.data(), static_cast<std::int32_t>(text.size()), true);
    }
    ThrowIfCoreComplained(before);
}

void EngineSession::WarnOfFixedRate(const std::string& programName) {
    const std::optional<float> madeFor = ProgramCatalog::MadeForRate(programName);
    if (!madeFor || *madeFor == core_->GetSampleRate()) return;
    err_ << prefix_ << "warning: \"" << programName << "\" is made for " << RateText(*madeFor)
         << " and the audio runs at " << RateText(core_->GetSampleRate())
         << ", so its fixed filter shapes the sound differently from what its name promises.\n";
}

// A parameter's value as the user reads it on the command line: the shortest decimal form of the
// 32-bit number, never in exponent form, then the parameter's units.
std::string EngineSession::ValueText(const ZORParameterInfo& info, float value) const {
    char number[64];
    const auto written =
        std::to_chars(number, number + sizeof number, value, std::chars_format::fixed);
    std::string text(number, written.ec == std::errc{} ? written.ptr : number);
    std::string units;
    product_.GetUnits(units, info.index);
    if (!units.empty()) text.append(" ").append(units);
    return text;
}

// The same path as a host's control change. A host's control holds its value to the parameter's
// range, and so does the command line; a value outside it is worth a warning, since the user
// asked for it by name. The engine limits values further and silently (a gain link, an empty
// filter slot, a filter's own range): a value it did not take is worth a warning too.
void EngineSession::ApplyParameter(const ParameterSetting& setting) {
    const ChannelConfig config = *core_->GetChannelConfig();
    const ZORParameterInfo& info = FindParameterByName(product_, setting.name, config);
    const float value = static_cast<float>(
        std::clamp(setting.value, static_cast<double>(info.min), static_cast<double>(info.max)));
    core_->SetParameter(&info, value);
    const double held = core_->GetParameterByIndex(info.index);
    const double tolerance = info.step + 1e-3 * (static_cast<double>(info.max) - info.min);
    if (std::abs(held - value) > tolerance) {
        err_ << prefix_ << "warning: the engine holds " << info.name << " at "
             << ValueText(info, static_cast<float>(held)) << " rather than " << setting.valueText
             << ", as its gain link, its filter slot or its filter's range allows.\n";
    } else if (value != setting.value) {
        err_ << prefix_ << "warning: " << info.name << " takes " << ValueText(info, info.min)
             << " to " << ValueText(info, info.max) << ", so it is set to "
             << ValueText(info, value) << " rather than " << setting.valueText << ".\n";
    }
}

void EngineSession::ThrowIfCoreComplained(int messagesBefore) const {
    if (platform_.MessageCount() != messagesBefore) throw FailureAlreadyShown();
}

}  // namespace vorix::cli
