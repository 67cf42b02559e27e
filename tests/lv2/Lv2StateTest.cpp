// State and presets: a restored instance sounds like the one saved, bad settings are told to the
// host's log and change nothing, and every preset loads its factory program.

#include <gtest/gtest.h>
#include <lv2/atom/atom.h>
#include <lv2/state/state.h>

#include "CoreRenderer.h"
#include "Lv2TestHost.h"
#include "lv2/Lv2Names.h"

namespace vorix::test {
namespace {

constexpr int kBlock = 512;

class Lv2State : public ::testing::TestWithParam<int> {
  protected:
    int Channels() const { return GetParam(); }
    Audio Signal(int frames = 8 * kBlock) const { return TestSignal(Channels(), frames); }

    // Runs a second of audio, so that the trims' smoothing settles, then clears the filters'
    // memories as a host's re-activation does: what remains is what the settings hold.
    void Settle(Lv2TestInstance& plugin) {
        plugin.Process(Signal(48000), kBlock);
        plugin.Reactivate();
    }
};

TEST_P(Lv2State, ARestoredInstanceRendersBitIdenticalAudio) {
    Lv2TestInstance saved(Channels());
    saved.Set("prmControl_0_Freq", 180.0f);
    saved.Set("prmControl_1_Gain", 6.0f);
    saved.Set("prmControl_2_Poly", 0.25f);
    saved.Set("prmLeftGain", 3.0f);
    Settle(saved);

    // Only the state travels; the new instance's ports stay at their defaults.
    Lv2TestInstance restored(Channels());
    EXPECT_EQ(restored.RestoreSettingsValue(saved.SaveSettingsValue(), LV2_ATOM__String),
              LV2_STATE_SUCCESS);
    Settle(restored);

    const Audio out = restored.Process(Signal(), kBlock);
    EXPECT_EQ(out, saved.Process(Signal(), kBlock));
    EXPECT_NE(out, Lv2TestInstance(Channels()).Process(Signal(), kBlock));
    EXPECT_TRUE(restored.LogLines().empty());
}

TEST_P(Lv2State, BadSettingsAreLoggedAndTheFiltersStay) {
    Lv2TestInstance plugin(Channels());
    Lv2TestInstance twin(Channels());
    for (Lv2TestInstance* instance : {&plugin, &twin})
        instance->Set("prmControl_1_Gain", 9.0f);
    plugin.Process(Signal(), kBlock);
    twin.Process(Signal(), kBlock);
    const std::string unknownVersion =
        "Vorix: Unable to load settings. These settings are not readable by this version of "
        "Vorix.\n";
    const std::string corrupted =
        "Vorix: Unable to load settings. These are not valid settings or the settings have been "
        "corrupted.\n";

    // The engine's reader refuses a document of ours that it cannot read, every time.
    const std::string unreadable =
        "<!-- Copyright (c) Zorvane Sound Works, 2026 -->\n<vorix_filter_settings>\n";
    EXPECT_EQ(plugin.RestoreSettingsValue(unreadable, LV2_ATOM__String), LV2_STATE_SUCCESS);
    EXPECT_EQ(plugin.RestoreSettingsValue(unreadable, LV2_ATOM__String), LV2_STATE_SUCCESS);
    // The chunk checks refuse a text without the maker's name.
    plugin.RestoreSettingsValue("<vorix_filter_settings>\n", LV2_ATOM__String);
    EXPECT_EQ(plugin.LogLines(),
              (std::vector<std::string>{unknownVersion, unknownVersion, corrupted}));
    // A value that is not text never reaches the core.
    EXPECT_EQ(plugin.RestoreSettingsValue("12", LV2_ATOM__Int), LV2_STATE_ERR_BAD_TYPE);
    EXPECT_EQ(plugin.LogLines().size(), 4u);

    EXPECT_EQ(plugin.Process(Signal(), kBlock), twin.Process(Signal(), kBlock));
}

TEST_P(Lv2State, WithoutAHostLogMessagesGoToStandardError) {
    Lv2TestInstance plugin(Channels(), 48000.0, {.log = false});
    ::testing::internal::CaptureStderr();
    plugin.RestoreSettingsValue("no settings here", LV2_ATOM__String);
    const std::string written = ::testing::internal::GetCapturedStderr();
    EXPECT_NE(written.find("Vorix: Unable to load settings."), std::string::npos) << written;
}

TEST_P(Lv2State, EveryPresetLoadsItsFactoryProgram) {
    for (int number = 0; number < 19; ++number) {
        Lv2TestInstance plugin(Channels());
        plugin.LoadPreset(Lv2PresetUri(Channels(), number));
        CoreRenderer core(Channels(), 48000.0f, kBlock);
        core.SetProgram(number);
        EXPECT_EQ(plugin.Process(Signal(), kBlock), core.Process(Signal(), kBlock)) << number;
        EXPECT_TRUE(plugin.LogLines().empty()) << number;
    }
}

INSTANTIATE_TEST_SUITE_P(MonoAndStereo, Lv2State, ::testing::Values(1, 2),
                         [](const auto& info) { return info.param == 1 ? "Mono" : "Stereo"; });

}  // namespace
}  // namespace vorix::test
