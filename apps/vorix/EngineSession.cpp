#include "vorix/EngineSession.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
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

// At most one byte beyond the longest settings text is read, so that a file that is far too long,
// a device that never ends or a pipe that never closes is found out at once.
std::string ReadSettingsText(const std::string& path) {
    const auto cannotRead = [&path](int reason) {
        return ToolFailure("cannot read the settings file \"" + path + "\": " +
                           SystemReason(reason));
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
    std::string text(kMaxSettingsTextBytes + 1, '\0');
    std::size_t filled = 0;
    while (filled < text.size()) {
        const ssize_t got = read(descriptor, text.data() + filled, text.size() - filled);
        if (got == 0) break;
        if (got < 0) {
            if (errno == EINTR) continue;
            throw cannotRead(errno);
        }
        filled += static_cast<std::size_t>(got);
    }
    text.resize(filled);
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

// The same path as a host's control change. The engine limits values silently (a gain link, an
// empty filter slot, a filter's own range); a value it did not take is worth a warning here,
// since the user asked for it by name.
void EngineSession::ApplyParameter(const ParameterSetting& setting) {
    const ChannelConfig config = *core_->GetChannelConfig();
    const ZORParameterInfo& info = FindParameterByName(product_, setting.name, config);
    core_->SetParameter(&info, setting.value);
    const double held = core_->GetParameterByIndex(info.index);
    const double tolerance = info.step + 1e-3 * (static_cast<double>(info.max) - info.min);
    if (std::abs(held - setting.value) <= tolerance) return;
    std::string heldText;
    product_.FormatValueWithUnits(heldText, info.index, static_cast<float>(held), -1);
    err_ << prefix_ << "warning: the engine holds " << info.name << " at " << heldText
         << " rather than " << setting.value
         << ", as its gain link, its filter slot or its filter's range allows.\n";
}

void EngineSession::ThrowIfCoreComplained(int messagesBefore) const {
    if (platform_.MessageCount() != messagesBefore) throw FailureAlreadyShown();
}

}  // namespace vorix::cli
