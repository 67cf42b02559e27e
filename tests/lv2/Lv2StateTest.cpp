// State and presets: a restored instance sounds like the one saved, whatever order a host
// restores ports and state in; bad settings are told to the host's log and change nothing; every
// preset loads its factory program and leaves the ports showing what the engine holds.

#include <gtest/gtest.h>
#include <lv2/atom/atom.h>
#include <lv2/state/state.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>
#include <map>
#include <set>

#include "CoreRenderer.h"
#include "Lv2TestHost.h"
#include "host/ZORVorixMetaClass.h"
#include "lv2/Lv2Names.h"

namespace vorix::test {
namespace {

constexpr int kBlock = 512;
constexpr int kTenBandIso = 2;  // "10-Band ISO": every slot bound, every gain at 0 dB

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

// How a host hands a saved session back: the plug-in's state and the ports' values, in one order
// or the other, with or without a block run between them, the values as saved or printed in six
// significant digits.
struct SessionRestore {
    bool portsFirst;
    bool runBetween;
    int digits;
};

// "B: Gain" moved to +6 (and two more slots), then a preset loaded by a host that does not set
// the preset's port values, so that the ports still show +6 over a document that holds 0 dB.
// The reloaded session must sound exactly as it did. (The trims are left alone here: the
// engine's smoothing of a trim that moved settles within a few bits of its target, never on it.)
TEST_P(Lv2State, AReloadedSessionSoundsAsSavedWhicheverWayItsPortsAndStateArrive) {
    Lv2TestInstance saved(Channels());
    saved.Set("prmControl_1_Gain", 6.0f);
    saved.Set("prmControl_4_Freq", 30000.0f);  // held to 20000
    saved.Set("prmControl_5_Poly", 0.3f);
    saved.Process(Signal(), kBlock);
    saved.LoadPreset(Lv2PresetUri(Channels(), kTenBandIso), false);
    Settle(saved);
    const std::string session = saved.SaveSession();
    const Audio expected = saved.Process(Signal(), kBlock);
    ASSERT_EQ(saved.PortValuesOf(session).at("prmControl_1_Gain"), 6.0f);

    for (const SessionRestore order :
         {SessionRestore{true, false, 0}, SessionRestore{true, true, 0},
          SessionRestore{false, false, 0}, SessionRestore{false, true, 0},
          SessionRestore{true, true, 6}, SessionRestore{false, true, 6}}) {
        Lv2TestInstance reloaded(Channels());
        const auto between = [&] {
            if (order.runBetween) reloaded.Process(Signal(kBlock), kBlock);
        };
        if (order.portsFirst) {
            reloaded.RestoreSessionPorts(session, order.digits);
            between();
            reloaded.RestoreSessionState(session);
        } else {
            reloaded.RestoreSessionState(session);
            between();
            reloaded.RestoreSessionPorts(session, order.digits);
        }
        Settle(reloaded);
        EXPECT_EQ(reloaded.Process(Signal(), kBlock), expected)
            << "ports first " << order.portsFirst << ", run between " << order.runBetween
            << ", digits " << order.digits;
        EXPECT_TRUE(reloaded.LogLines().empty());
    }
}

// A stale trim reaches the engine neither after the restore nor from before it: a change that
// run() handed to the worker before a restore is dropped when the worker gets to it.
TEST_P(Lv2State, AStaleTrimActsNeitherAfterARestoreNorFromTheWorkersQueue) {
    Lv2TestInstance saved(Channels());
    saved.Set("prmLeftGain", 3.0f);
    saved.Process(Signal(kBlock), kBlock);
    saved.LoadPreset(Lv2PresetUri(Channels(), kTenBandIso), false);
    const std::string session = saved.SaveSession();
    const std::string document = saved.SaveSettingsValue();
    ASSERT_NE(document.find("<compensation_gain>0</compensation_gain>"), std::string::npos);

    Lv2TestInstance stateFirst(Channels());
    stateFirst.RestoreSessionState(session);
    stateFirst.RestoreSessionPorts(session);
    stateFirst.Process(Signal(kBlock), kBlock);
    EXPECT_EQ(stateFirst.WorkDone(), 0u);

    Lv2TestInstance portsFirst(Channels());
    portsFirst.RestoreSessionPorts(session);
    portsFirst.RunOnce(kBlock);
    const std::vector<Lv2TestInstance::Work> queued = portsFirst.TakeQueuedWork();
    ASSERT_EQ(queued.size(), 1u);
    portsFirst.RestoreSessionState(session);
    portsFirst.DoWork(queued[0]);
    portsFirst.Process(Signal(kBlock), kBlock);
    EXPECT_EQ(portsFirst.WorkDone(), 1u);
    EXPECT_EQ(portsFirst.SaveSettingsValue(), document);
}

// What a host saves for the ports: every host parameter and the enable switch, and nothing for
// the session counter, which is the engine's to show and no control a host may automate.
TEST_P(Lv2State, ASessionKeepsEveryControlOfTheHostAndNoCounter) {
    Lv2TestInstance plugin(Channels());
    plugin.Process(Signal(kBlock), kBlock);
    const ZORVorixMetaClass table;
    std::set<std::string> controls{"enabled"};
    for (int index = 0; index < table.GetParameterCount(); ++index) {
        if (table.GetParameterInfo(index)->automatable)
            controls.insert(table.GetParameterInfo(index)->name);
    }
    std::set<std::string> saved;
    for (const auto& entry : plugin.PortValuesOf(plugin.SaveSession()))
        saved.insert(entry.first);
    EXPECT_EQ(saved, controls);
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

// A preset loaded over moved ports: with its port values set by the host or not, no port acts
// afterwards (the trim would reach the worker again), and the instance sounds as the core does
// after the same moves and the program. Both start from another program, since the core keeps
// the edits of its current program in its bank and would load them back.
TEST_P(Lv2State, EveryPresetLoadsItsFactoryProgramAndMovesNoPort) {
    const std::vector<HostParameter> moves = {
        {"prmControl_1_Gain", 6.0f}, {"prmControl_0_Freq", 250.0f}, {"prmControl_2_Poly", 0.9f}};
    for (int number = 0; number < 19; ++number) {
        const int start = number == 18 ? 17 : 18;
        for (const bool ports : {true, false}) {
            Lv2TestInstance plugin(Channels());
            plugin.LoadPreset(Lv2PresetUri(Channels(), start), ports);
            const Audio out = plugin.Process(Signal(), kBlock, [&](int block) {
                if (block == 0) {
                    for (const HostParameter& move : moves)
                        plugin.Set(move.symbol, move.value);
                    plugin.Set("prmLeftGain", 3.0f);
                }
                if (block == 2) plugin.LoadPreset(Lv2PresetUri(Channels(), number), ports);
            });
            CoreRenderer core(Channels(), 48000.0f, kBlock);
            core.SetProgram(start);
            const Audio reference = core.Process(Signal(), kBlock, [&](int block) {
                if (block == 0) core.Set(moves);
                if (block == 1) core.Set({{"prmLeftGain", 3.0f}});  // the worker's block later
                if (block == 2) core.SetProgram(number);
            });
            EXPECT_EQ(out, reference) << number << (ports ? " with" : " without") << " ports";
            EXPECT_EQ(plugin.WorkDone(), 1u) << number;
            EXPECT_TRUE(plugin.LogLines().empty()) << number;
        }
    }
}

// A generic slider shows the port's value: after a preset, what the engine holds, to the float
// (a frequency to the document's digits, which the rate's fraction may move by a bit).
TEST_P(Lv2State, APresetSetsThePortsToWhatTheEngineHolds) {
    const ZORVorixMetaClass table;
    for (int number = 0; number < 19; ++number) {
        const std::map<std::string, float> preset =
            Lv2TestInstance::PresetPortValues(Lv2PresetUri(Channels(), number));
        CoreRenderer core(Channels(), 44100.0f, kBlock);
        core.SetProgram(number);
        std::size_t inputs = 0;
        for (int index = 0; index < table.GetParameterCount(); ++index) {
            const ZORParameterInfo& info = *table.GetParameterInfo(index);
            if (!info.automatable) continue;
            ++inputs;
            ASSERT_EQ(preset.count(info.name), 1u) << number << " " << info.name;
            const float held = std::clamp(core.Get(info.name), info.min, info.max);
            EXPECT_NEAR(preset.at(info.name), held, 1e-6f * std::fabs(held))
                << number << " " << info.name;
        }
        EXPECT_EQ(preset.size(), inputs) << number;
    }
}

// A session saved by this version (data/stale-ports-session.ttl): "B: Gain" at +6 and
// "E: Frequency" sent 30000 Hz, then "10-Band ISO" loaded without its port values and the
// session saved before the ports answered, so that the state records for each port the preset's
// value and the stale one. Builds to come must read it so: its stale ports, restored before or
// after its state, change nothing, and it sounds as its document alone.
TEST(Lv2SavedSession, ASessionOfThisVersionReloadsWithItsStalePortsChangingNothing) {
    std::ifstream file(VORIX_LV2_TEST_DATA_DIR "/stale-ports-session.ttl");
    const std::string session((std::istreambuf_iterator<char>(file)),
                              std::istreambuf_iterator<char>());
    const Audio signal = TestSignal(2, 8 * kBlock);
    const auto settledRender = [&](Lv2TestInstance& plugin) {
        plugin.Process(TestSignal(2, 48000), kBlock);
        plugin.Reactivate();
        return plugin.Process(signal, kBlock);
    };
    Lv2TestInstance documentOnly(2);
    ASSERT_EQ(documentOnly.PortValuesOf(session).at("prmControl_1_Gain"), 6.0f);
    documentOnly.RestoreSessionState(session);
    const Audio expected = settledRender(documentOnly);
    EXPECT_TRUE(documentOnly.LogLines().empty());

    for (const bool portsFirst : {true, false}) {
        Lv2TestInstance reloaded(2);
        if (portsFirst) reloaded.RestoreSessionPorts(session);
        reloaded.Process(TestSignal(2, kBlock), kBlock);
        reloaded.RestoreSessionState(session);
        if (!portsFirst) reloaded.RestoreSessionPorts(session);
        EXPECT_EQ(settledRender(reloaded), expected) << "ports first " << portsFirst;
    }
}

INSTANTIATE_TEST_SUITE_P(MonoAndStereo, Lv2State, ::testing::Values(1, 2),
                         [](const auto& info) { return info.param == 1 ? "Mono" : "Stereo"; });

}  // namespace
}  // namespace vorix::test
