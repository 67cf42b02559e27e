#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "core/PluginCore.h"
#include "core/PluginPlatform.h"
#include "core/RecordingErrorMessageService.h"
#include "core/ZORPluginMetaClass.h"
#include "engine/ZORVorixMetaClass.h"

namespace vorix::fuzz {

// A platform that keeps the user's messages instead of showing them, so a run stays quiet.
class QuietPlatform : public PluginPlatform {
  public:
    std::string GetHostName() const override { return "Fuzz"; }
    std::int32_t GetInitialDelay() const override { return 0; }
    float GetSampleRate() const override { return 48000.0f; }
    std::int32_t GetBlockSize() const override { return 512; }
    void SetInitialDelay(std::int32_t) override {}
    void SetTailDelay(std::int32_t) override {}
    bool IsInputConnected(std::int32_t) const override { return true; }
    bool IsOutputConnected(std::int32_t) const override { return true; }
    std::int32_t GetOutputCount() const override { return 2; }
    std::int32_t GetInputCount() const override { return 2; }
    bool IsHostInitialized() const override { return true; }
    bool IsEditorOpen() const override { return false; }
    bool IsHostProcessing() const override { return false; }
    void ParameterChanged(std::int32_t, float) override {}
    ErrorMessageService* GetErrorMessageService() const override { return &messages; }

    mutable RecordingErrorMessageService messages;
};

// A core without an engine of its own: its settings are the framework's archive form.
class ArchiveCore : public PluginCore {
  public:
    explicit ArchiveCore(PluginPlatform* platform) : PluginCore(platform, ChannelConfig{2, 2}) {}
    double GetParameter(const ZORParameterInfo*) override { return 0.0; }
    Frame* CreateEditorFrame(PluginUIRoot&, Frame*) override { return nullptr; }
    Frame* CreateAboutFrame(PluginUIRoot&, Frame*) override { return nullptr; }
    EditorSize GetEditorSize() const override { return {}; }

  protected:
    bool ApplyParameter(const ZORParameterInfo*, float) override { return false; }
    void ApplyParameterToEditor(const ZORParameterInfo*, float) override {}
    void ProcessAudio(float**, float**, std::int32_t, std::int32_t) noexcept override {}
};

// The product's description, held for the whole run.
inline void HoldMetaClass() {
    static const bool held = [] {
        SetMetaClassMaker([] { return std::make_unique<ZORVorixMetaClass>(); });
        AcquireMetaClass();
        return true;
    }();
    (void)held;
}

// An invariant of the target failed: libFuzzer keeps the input as a crasher.
[[noreturn]] inline void Broken(const char* what) {
    std::fprintf(stderr, "invariant broken: %s\n", what);
    std::abort();
}

inline std::string_view Text(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

}  // namespace vorix::fuzz
