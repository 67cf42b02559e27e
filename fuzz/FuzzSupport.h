#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "core/PluginCore.h"
#include "core/PluginPlatform.h"
#include "core/ZORPluginMetaClass.h"
#include "host/ZORVorixMetaClass.h"
#include "support/TestPlatform.h"

namespace vorix::fuzz {

// The tests' recording host: the user's messages are kept instead of shown, so a run stays quiet.
using QuietPlatform = test::TestPlatform;

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
