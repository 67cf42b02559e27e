#include <sstream>

#include "HostTestSupport.h"

namespace vorix::test {
namespace {

// Parameter i is control i + 2, after the master bypass.
constexpr const char* kControlIds =
    "bypa ctaa ctab ctac ctad ctae ctaf ctag ctah ctai ctaj ctak ctal ctam ctan ctao ctap ctaq "
    "ctar ctas ctat ctau ctav ctaw ctax ctay ctaz ctba ctbb ctbc ctbd ctbe ctbf ctbg";

// What each control of a filter role shows, by the role's place in its letter's three.
struct RoleControl {
    const char* name;
    std::int32_t steps;
    const char* minimum;
    const char* maximum;
};
constexpr RoleControl kRoles[3] = {{": Frequency", 19984, "16.00 Hz", "20.00 kHz"},
                                   {": Gain", 720, "-18.0 dB", "18.0 dB"},
                                   {": Q/BW/Slope", 512, "0.0", "1.0"}};

std::string Row(const ControlInfo& info) {
    std::ostringstream row;
    row << info.name << '|' << (info.continuous ? "continuous" : "discrete") << '|' << info.steps
        << '|' << info.minimumText << '|' << info.maximumText << '|' << info.automatable;
    return row.str();
}

class ControlsTest : public HostFixture {
  protected:
    Insert& stereo_ = MakeInsert("StRT");
};

TEST_F(ControlsTest, NumbersTheMasterBypassThenEveryParameterByItsId) {
    ASSERT_EQ(stereo_.CountControls(), 34);
    std::string ids;
    for (std::int32_t control = 1; control <= 34; ++control) {
        if (control > 1) ids += ' ';
        ids += IdText(stereo_.DescribeControl(control).id);
        EXPECT_EQ(stereo_.FindControl(IdText(stereo_.DescribeControl(control).id)), control);
    }
    EXPECT_EQ(ids, kControlIds);
    EXPECT_EQ(stereo_.Process().MasterBypassControl(), 1);
}

TEST_F(ControlsTest, GivesEachParameterTheControlOfItsType) {
    EXPECT_EQ(Row(stereo_.DescribeControl(1)), "Master Bypass|discrete|2|0|1|1");
    for (std::int32_t index = 0; index < 30; ++index) {
        const RoleControl& role = kRoles[index % 3];
        const std::string expected = std::string(1, static_cast<char>('A' + index / 3)) +
                                     role.name + "|continuous|" + std::to_string(role.steps) + "|" +
                                     role.minimum + "|" + role.maximum + "|1";
        EXPECT_EQ(Row(stereo_.DescribeControl(index + 2)), expected) << index;
    }
    EXPECT_EQ(Row(stereo_.DescribeControl(32)), "L Output Trim|continuous|96|-24.0 dB|24.0 dB|1");
    EXPECT_EQ(Row(stereo_.DescribeControl(33)), "R Output Trim|continuous|96|-24.0 dB|24.0 dB|1");
    EXPECT_EQ(Row(stereo_.DescribeControl(34)), "<n/a>|discrete|1000001|0|1000000|0");
}

TEST_F(ControlsTest, HandsTheHostTheWholeNameSetOfEachControl) {
    std::string names;
    for (const std::int32_t size : {64, 8, 7, 6, 5, 4}) {
        char buffer[64] = {};
        ASSERT_EQ(stereo_.Process().ControlName(2, buffer, size), 0);
        names += std::string(buffer) + "|";
    }
    EXPECT_EQ(names, "A: Frequency|A: Freq|A:Freq|A: Fc|A: F|A:F|");
    Insert& mono = MakeInsert("mnRT");
    EXPECT_EQ(mono.DescribeControl(32).name, "Output Trim");
    EXPECT_EQ(mono.DescribeControl(33).name, " ");
}

TEST_F(ControlsTest, StartsEachControlAtTheEnginesValue) {
    std::string values;
    for (const std::int32_t control : {1, 2, 3, 4, 5, 8, 32, 34}) {
        const ControlInfo info = stereo_.DescribeControl(control);
        EXPECT_EQ(info.value, info.defaultValue) << control;
        values += info.valueText + "|";
    }
    EXPECT_EQ(values, "0|100.00 Hz|0.0 dB|1.0|1000.00 Hz|10.00 kHz|0.0 dB|0|");
}

using ProbeControlsTest = ProbeFixture;

// The probe engine starts A's frequency below its range, A's gain at no number, B's frequency
// above its range and the left trim inside it.
TEST_F(ProbeControlsTest, StartsAControlAtItsDefaultWhenTheEnginesValueLiesOutsideTheRange) {
    Insert& insert = MakeInsert("StRT");
    std::string values;
    for (const std::int32_t control : {2, 3, 5, 32})
        values += insert.DescribeControl(control).valueText + "|";
    EXPECT_EQ(values, "1000.00 Hz|0.0 dB|1000.00 Hz|6.0 dB|");
}

// The probe's table adds, behind the product's 33 parameters, one of each kind the product does
// not use: a list, a switch, a level, two plain stepped values, two times and a ratio.
TEST_F(ProbeControlsTest, GivesEveryKindOfParameterItsControl) {
    Insert& insert = MakeInsert("mnRT");
    ASSERT_EQ(insert.CountControls(), 42);
    std::string rows;
    for (std::int32_t control = 35; control <= 42; ++control) {
        const ControlInfo info = insert.DescribeControl(control);
        rows += IdText(info.id) + " " + Row(info).substr(Row(info).find('|') + 1) + "|" +
                info.valueText + "\n";
    }
    EXPECT_EQ(rows,
              "ctbh discrete|3|Off|High|1|Low\n"
              "ctbi discrete|2|0|1|1|1\n"
              "ctbj continuous|144|-60.0 dB|12.0 dB|1|0.0 dB\n"
              "ctbk continuous|20|0.00|10.00|1|5.00\n"
              "ctbl continuous|16|0.00|4.00|1|1.00\n"
              "ctbm continuous|500|0.0 ms|500.0 ms|1|20.0 ms\n"
              "ctbn continuous|4999|1.0 ms|5.0 s|1|100.0 ms\n"
              "ctbo continuous|190|1.0:1|20.0:1|1|4.0:1\n");
    // A label shows where it fits, else its number does.
    const std::int32_t high = insert.ControlTextValue(35, "High");
    char text[8] = {};
    EXPECT_EQ(insert.Process().ControlValueText(35, high, text, 5), 0);
    EXPECT_STREQ(text, "High");
    EXPECT_EQ(insert.Process().ControlValueText(35, high, text, 4), 0);
    EXPECT_STREQ(text, "2");
}

}  // namespace
}  // namespace vorix::test
