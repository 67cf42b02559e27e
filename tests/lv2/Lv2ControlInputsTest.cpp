// What a control port's value does on its way in: held to the parameter's range, acting only
// when it changes, and after a restored state neither the recorded nor the stale value counts as
// a change. Also the text in which a state records the port values.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <limits>
#include <string>
#include <vector>

#include "host/ZORVorixMetaClass.h"
#include "lv2/Lv2ControlInputs.h"
#include "lv2/Lv2PortRecord.h"

namespace vorix::test {
namespace {

constexpr float kInf = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

struct Act {
    std::int32_t index;
    float value;
    bool operator==(const Act&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Act& act) {
    return out << "{" << act.index << ", " << act.value << "}";
}

// The ports of every host input of the table at their defaults, as a host connects them.
class ControlPorts {
  public:
    ControlPorts() {
        for (std::int32_t index = 0; index < table.GetParameterCount(); ++index) {
            const ZORParameterInfo& info = *table.GetParameterInfo(index);
            ports[static_cast<std::size_t>(index)] = info.defaultValue;
            if (Lv2ControlInputs::IsHostInput(info))
                inputs.Connect(index, &ports[static_cast<std::size_t>(index)]);
        }
    }

    // One run()'s reading of the ports: what acted, in table order.
    std::vector<Act> Scan() {
        std::vector<Act> acts;
        inputs.Scan(
            [&](std::int32_t index, float value) {
                acts.push_back({index, value});
            },
            [&](std::int32_t index, float value) {
                if (workerFull) return false;
                acts.push_back({index, value});
                return true;
            });
        return acts;
    }
    std::int32_t Row(const char* symbol) const {
        for (std::int32_t index = 0; index < table.GetParameterCount(); ++index) {
            if (std::string(symbol) == table.GetParameterInfo(index)->name) return index;
        }
        ADD_FAILURE() << symbol;
        return 0;
    }
    float& Port(const char* symbol) { return ports[static_cast<std::size_t>(Row(symbol))]; }
    // A restore that recorded `values` for the port of `symbol`, and nothing for the others.
    void Restore(const char* symbol, std::initializer_list<float> values) {
        Lv2ControlInputs::QuietValues none;
        none.fill(kNaN);
        std::vector<Lv2ControlInputs::QuietValues> recorded(ports.size(), none);
        std::copy(values.begin(), values.end(),
                  recorded[static_cast<std::size_t>(Row(symbol))].begin());
        inputs.Restored(recorded);
    }
    // What a state saved now records for the port of `symbol`.
    std::vector<float> Recordable(const char* symbol) const {
        const std::vector<Lv2ControlInputs::QuietValues> all = inputs.Recordable();
        std::vector<float> values;
        for (const float value : all[static_cast<std::size_t>(Row(symbol))]) {
            if (!std::isnan(value)) values.push_back(value);
        }
        return values;
    }

    const ZORVorixMetaClass table;
    Lv2ControlInputs inputs{table};
    std::vector<float> ports =
        std::vector<float>(static_cast<std::size_t>(table.GetParameterCount()));
    bool workerFull = false;
};

class Lv2ControlPorts : public ::testing::Test, public ControlPorts {};

TEST_F(Lv2ControlPorts, APortActsOnceWhenItsValueChangesAndNotAtItsDefault) {
    EXPECT_TRUE(Scan().empty());
    Port("prmControl_1_Gain") = 6.0f;
    Port("prmLeftGain") = -3.0f;
    EXPECT_EQ(Scan(),
              (std::vector<Act>{{Row("prmControl_1_Gain"), 6.0f}, {Row("prmLeftGain"), -3.0f}}));
    EXPECT_TRUE(Scan().empty());
}

TEST_F(Lv2ControlPorts, EveryValueEntersHeldToItsParametersRange) {
    for (std::int32_t index = 0; index < table.GetParameterCount(); ++index) {
        const ZORParameterInfo& info = *table.GetParameterInfo(index);
        if (!Lv2ControlInputs::IsHostInput(info)) continue;
        const float middle = 0.5f * (info.min + info.max);
        const float span = info.max - info.min;
        for (const auto& [raw, held] :
             {std::pair{-kInf, info.min}, std::pair{info.min - span, info.min},
              std::pair{info.max + span, info.max}, std::pair{kInf, info.max},
              std::pair{std::numeric_limits<float>::max(), info.max},
              std::pair{-std::numeric_limits<float>::max(), info.min}}) {
            ports[static_cast<std::size_t>(index)] = middle;
            Scan();
            ports[static_cast<std::size_t>(index)] = raw;
            EXPECT_EQ(Scan(), (std::vector<Act>{{index, held}})) << info.name << " " << raw;
        }
        // A NaN leaves the port acting with its last value: nothing moves, now or after it.
        ports[static_cast<std::size_t>(index)] = kNaN;
        EXPECT_TRUE(Scan().empty()) << info.name;
        ports[static_cast<std::size_t>(index)] = info.min;
        EXPECT_TRUE(Scan().empty()) << info.name;
    }
    // Two values beyond the same end are the same held value: the second is no change.
    Port("prmControl_1_Freq") = 500.0f;
    Scan();
    Port("prmControl_1_Freq") = -5.0f;
    EXPECT_EQ(Scan(), (std::vector<Act>{{Row("prmControl_1_Freq"), 16.0f}}));
    Port("prmControl_1_Freq") = -7.0f;
    EXPECT_TRUE(Scan().empty());
    EXPECT_EQ(inputs.Clamp(Row("prmLeftGain"), 1e9f), 24.0f);
}

TEST_F(Lv2ControlPorts, TheSessionCounterIsNoInputAndAFullWorkerIsAskedAgain) {
    EXPECT_FALSE(Lv2ControlInputs::IsHostInput(*table.GetParameterInfo(Row("prmDirty"))));
    Port("prmDirty") = 7.0f;  // never connected: the host cannot move it
    workerFull = true;
    Port("prmRightGain") = 2.0f;
    EXPECT_TRUE(Scan().empty());
    workerFull = false;
    EXPECT_EQ(Scan(), (std::vector<Act>{{Row("prmRightGain"), 2.0f}}));
}

// The host's port shows +6 while a loaded document holds 0 dB; the state saved then records +6.
// Whichever of the recorded and the stale value the port shows after the restore, in whatever
// order, is no change; once the port has shown the recorded one, only a move acts.
TEST_F(Lv2ControlPorts, AfterARestoreTheRecordedAndTheStaleValueAreNoChange) {
    Port("prmControl_1_Gain") = 6.0f;
    Scan();
    Restore("prmControl_1_Gain", {0.0f});  // a preset whose ports the host does not set
    EXPECT_TRUE(Scan().empty());           // the stale +6
    Port("prmControl_1_Gain") = 0.0f;      // the recorded value
    EXPECT_TRUE(Scan().empty());
    Port("prmControl_1_Gain") = 6.0f;  // the stale value is stale no more: the user moved it
    EXPECT_EQ(Scan(), (std::vector<Act>{{Row("prmControl_1_Gain"), 6.0f}}));

    // A new instance: the state arrives first, the port still at its default, then the port.
    ControlPorts fresh;
    fresh.Restore("prmControl_1_Gain", {6.0f});
    EXPECT_TRUE(fresh.Scan().empty());
    fresh.Port("prmControl_1_Gain") = 6.0f;
    EXPECT_TRUE(fresh.Scan().empty());
    fresh.Port("prmControl_1_Gain") = 0.0f;
    EXPECT_EQ(fresh.Scan(), (std::vector<Act>{{fresh.Row("prmControl_1_Gain"), 0.0f}}));

    // A state saved before the port answered a restore records both values, here 0 dB and the
    // stale +6. In a new instance whose port shows 0 dB at first, that 0 dB settles nothing: the
    // host may still restore +6, and only then is the port settled.
    ControlPorts twice;
    twice.Restore("prmControl_1_Gain", {0.0f, 6.0f});
    EXPECT_TRUE(twice.Scan().empty());
    twice.Port("prmControl_1_Gain") = 6.0f;
    EXPECT_TRUE(twice.Scan().empty());
    twice.Port("prmControl_1_Gain") = 0.0f;
    EXPECT_EQ(twice.Scan(), (std::vector<Act>{{twice.Row("prmControl_1_Gain"), 0.0f}}));

    // A value held to the range is recorded as held: -5 Hz shows as 16 Hz, and so reloads.
    ControlPorts held;
    held.Restore("prmControl_0_Freq", {-5.0f});
    held.Port("prmControl_0_Freq") = 16.0f;
    EXPECT_TRUE(held.Scan().empty());
}

TEST_F(Lv2ControlPorts, AHostsRoundingOfARecordedValueIsNoChangeButAMoveIs) {
    Restore("prmControl_2_Poly", {0.12060301f});
    Port("prmControl_2_Poly") = 0.120603f;  // six significant digits
    EXPECT_TRUE(Scan().empty());
    Port("prmControl_2_Poly") = 0.1206f;  // as close once the restore is settled: a move
    EXPECT_EQ(Scan(), (std::vector<Act>{{Row("prmControl_2_Poly"), 0.1206f}}));

    Restore("prmControl_3_Freq", {1000.0f});
    Port("prmControl_3_Freq") = 1000.2f;
    EXPECT_EQ(Scan(), (std::vector<Act>{{Row("prmControl_3_Freq"), 1000.2f}}));
}

// A state saved while a restore is pending records every value the port may show for the
// document (the host may yet set the recorded one, or leave the stale one), and a state saved
// once the port settled records that one value, held to the range.
TEST_F(Lv2ControlPorts, AStateRecordsEveryValueThePortMayShowForItsDocument) {
    Port("prmControl_0_Gain") = 40.0f;
    Port("prmLeftGain") = kNaN;
    Scan();
    EXPECT_EQ(Recordable("prmControl_0_Gain"), std::vector<float>{18.0f});
    EXPECT_EQ(Recordable("prmLeftGain"), std::vector<float>{0.0f});
    EXPECT_TRUE(Recordable("prmDirty").empty());

    Restore("prmControl_0_Gain", {-4.0f});
    Scan();  // the port still shows the stale value
    EXPECT_EQ(Recordable("prmControl_0_Gain"), (std::vector<float>{-4.0f, 18.0f}));

    // Reloaded into an instance whose port shows its default: the stale +18 is recorded, so the
    // host's restore of it settles the port without a change.
    ControlPorts reloaded;
    reloaded.Restore("prmControl_0_Gain", {-4.0f, 18.0f});
    EXPECT_TRUE(reloaded.Scan().empty());
    reloaded.Port("prmControl_0_Gain") = 18.0f;
    EXPECT_TRUE(reloaded.Scan().empty());
    EXPECT_EQ(reloaded.Recordable("prmControl_0_Gain"), std::vector<float>{18.0f});
    reloaded.Port("prmControl_0_Gain") = -4.0f;
    EXPECT_EQ(reloaded.Scan(), (std::vector<Act>{{reloaded.Row("prmControl_0_Gain"), -4.0f}}));

    // Restores that the port never answers keep at most four values, the latest first.
    for (const float value : {1.0f, 2.0f, 3.0f, 4.0f, 5.0f})
        Restore("prmControl_1_Gain", {value});
    EXPECT_EQ(Recordable("prmControl_1_Gain"), (std::vector<float>{5.0f, 4.0f, 3.0f, 2.0f}));
}

TEST(Lv2PortRecord, ReadsBackEveryValueExactlyAndSkipsWhatIsNotAValue) {
    const std::vector<Lv2PortValue> values = {{"prmControl_0_Freq", 100.00001f},
                                              {"prmControl_0_Poly", 0.12060301f},
                                              {"prmControl_1_Gain", -18.0f},
                                              {"prmLeftGain", 1e-7f},
                                              {"prmRightGain", -0.0f}};
    const std::string text = Lv2PortRecordText(values);
    EXPECT_EQ(ReadLv2PortRecord(text), values);
    EXPECT_EQ(text.substr(0, text.find('\n')), "prmControl_0_Freq 100.00001");

    const std::vector<Lv2PortValue> survivors = ReadLv2PortRecord(
        "prmControl_0_Gain 3\n"
        "prmControl_1_Gain\n"        // no value
        "prmControl_2_Gain 3 dB\n"   // more than a value
        " 4\n"                       // no symbol
        "prmControl_3_Gain 1e999\n"  // beyond a float
        "prmControl_4_Gain\t-2.5");  // a tab, and no line feed at the end
    EXPECT_EQ(survivors, (std::vector<Lv2PortValue>{{"prmControl_0_Gain", 3.0f},
                                                    {"prmControl_4_Gain", -2.5f}}));
}

}  // namespace
}  // namespace vorix::test
