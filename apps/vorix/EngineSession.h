#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "vorix/ParameterSettings.h"
#include "vorix/ToolPlatform.h"

namespace vorix {
class Ombrel;
class PluginCore;
class ZORPluginMetaClass;
struct ZORParameterInfo;
}  // namespace vorix

namespace vorix::cli {

// Blocks as hosts hand them to the core: 4096 samples at most, and that by default.
inline constexpr std::int32_t kLargestBlockSize = 4096;
inline constexpr std::int32_t kDefaultBlockSize = 4096;

// What the engine is to hold before audio starts.
struct EngineSetup {
    float sampleRate = 44100.0f;
    std::int32_t channels = 2;
    std::int32_t blockSize = kDefaultBlockSize;
    std::optional<std::int32_t> program;  // a factory program
    std::string settingsPath;             // a settings file, loaded instead of a program
    std::vector<ParameterSetting> parameters;
};

// One plug-in instance, made and set up exactly as a host does it: the core from the product's
// description, default settings captured, audio state reset, sample rate, block size, start;
// then the settings (a settings file through the preset chunk, or a factory program), then the
// host control changes. At the end: audio state reset, stop, destruction.
class EngineSession {
  public:
    // Main thread. Throws UsageError for a parameter name that the product lacks, ToolFailure for
    // a settings file that cannot be read, and FailureAlreadyShown when the core refused the
    // settings and has said why. `messagePrefix` leads every line the session writes on `err`.
    EngineSession(ZORPluginMetaClass& product, const EngineSetup& setup, std::ostream& err,
                  const std::string& messagePrefix);
    ~EngineSession();
    EngineSession(const EngineSession&) = delete;
    EngineSession& operator=(const EngineSession&) = delete;

    // Main thread. The instance; the audio call may run on the caller's thread.
    PluginCore& Core() const noexcept { return *core_; }
    // Main thread. The instance as the equalizer engine it is.
    Ombrel& Engine() const;
    ToolPlatform& Platform() noexcept { return platform_; }

  private:
    void LoadProgram(std::int32_t program);
    void LoadSettingsFile(const std::string& path);
    void WarnOfFixedRate(const std::string& programName);
    void ApplyParameter(const ParameterSetting& setting);
    std::string ValueText(const ZORParameterInfo& info, float value) const;
    void ThrowIfCoreComplained(int messagesBefore) const;

    ZORPluginMetaClass& product_;
    std::ostream& err_;
    std::string prefix_;
    ToolPlatform platform_;
    std::unique_ptr<PluginCore> core_;
};

}  // namespace vorix::cli
