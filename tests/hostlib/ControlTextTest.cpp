#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ControlTestSupport.h"
#include "framework/Exceptions.h"
#include "hostlib/UnitPrefixes.h"
#include "hostlib/ValueText.h"

namespace vorix {
namespace {

using test::Range;
using test::RealOf;
using test::TextOf;

std::string Format(double real, int digits, const char* unit, int maxChars) {
    return FormatValue(real, digits, unit, maxChars, true, kPrefixRowUnity, kPrefixRowLast);
}

TEST(FormatValue, PrefixIsTheLargestFactorNotAboveTheValue) {
    EXPECT_EQ(Format(12500.0, 2, "Hz", 12), "12.50 kHz");
    EXPECT_EQ(Format(999.0, 1, "Hz", 12), "999.0 Hz");
    EXPECT_EQ(Format(-2.5e6, 1, "Hz", 12), "-2.5 MHz");
    EXPECT_EQ(Format(3e21, 0, "Hz", 12), "3000 EHz");
    // Below 1 there is no small prefix, and 0 keeps the first row of the range.
    EXPECT_EQ(Format(0.5, 2, "Hz", 12), "0.50 Hz");
    EXPECT_EQ(Format(0.0, 1, "dB", 12), "0.0 dB");
}

TEST(FormatValue, PrecisionDropsUntilTheTextFitsThenTheUnitGoes) {
    // Room for 6 is five characters and a terminator: "12.50k" is one too many.
    EXPECT_EQ(Format(12500.0, 2, "Hz", 6), "12.5k");
    EXPECT_EQ(Format(12500.0, 2, "Hz", 4), "12k");
    // Even precision 0 does not fit: the text is cut to the buffer.
    EXPECT_EQ(Format(12500.0, 2, "Hz", 3), "12");
    EXPECT_EQ(Format(-6.25, 2, "dB", 8), "-6.25");
    EXPECT_EQ(Format(-6.25, 2, "dB", 9), "-6.25 dB");
    EXPECT_EQ(Format(1.0, 1, "Hz", 0), "");
}

TEST(FormatValue, NoUnitMeansNoTrailingBlank) {
    EXPECT_EQ(FormatValue(0.5, 2, "", 10, true, kPrefixRowUnity, kPrefixRowLast), "0.50");
    EXPECT_EQ(FormatValue(2000.0, 1, "Hz", 20, false, kPrefixRowUnity, kPrefixRowLast), "2.0k");
}

TEST(ContinuousText, ValueStringsOfTheUnitClasses) {
    EXPECT_EQ(TextOf(test::Frequency(), 12500.0, 6), "12.5k");
    EXPECT_EQ(TextOf(test::Frequency(), 12500.0, 12), "12.50 kHz");
    EXPECT_EQ(TextOf(test::BoostCut(), -18.0, 10), "-18.0 dB");
    const CPluginControl_LogTimeS time(Range(1.0, 10000.0), ControlStepCount{100});
    EXPECT_EQ(TextOf(time, 250.0, 12), "250.0 ms");
    EXPECT_EQ(TextOf(time, 2500.0, 12), "2.5 s");
    const CPluginControl_LogRatio ratio(Range(0.1, 100.0), ControlStepCount{100});
    EXPECT_EQ(TextOf(ratio, 4.0, 12), "4.0:1");
    EXPECT_EQ(TextOf(ratio, 0.25, 12), "1:4.0");
    EXPECT_EQ(TextOf(ratio, 4.0, 4), "4:1");
}

TEST(ContinuousText, ReadsNumbersWithPrefixesAndIgnoresUnits) {
    const auto frequency = test::Frequency();
    EXPECT_NEAR(RealOf(frequency, "1.5k"), 1500.0, 1e-6);
    EXPECT_NEAR(RealOf(frequency, "  1.5 kHz"), 1500.0, 1e-6);
    EXPECT_NEAR(RealOf(frequency, "440 Hz"), 440.0, 1e-6);
    EXPECT_NEAR(RealOf(frequency, "+.5k"), 500.0, 1e-6);
    EXPECT_EQ(RealOf(frequency, "1M"), 20000.0);  // clamped
    const auto gain = test::BoostCut();
    EXPECT_NEAR(RealOf(gain, "-6.5 dB"), -6.5, 1e-6);
    // A small prefix is no prefix: the "m" of "ms" is part of the unit.
    const CPluginControl_LinearTime time(Range(0.0, 5000.0), ControlStepSize{1.0});
    EXPECT_NEAR(RealOf(time, "250 ms"), 250.0, 1e-6);
}

TEST(ContinuousText, SecondsAndRatiosHaveTheirOwnForms) {
    const CPluginControl_LogTimeS time(Range(1.0, 10000.0), ControlStepCount{100});
    EXPECT_NEAR(RealOf(time, "1.5 s"), 1500.0, 1e-6);
    EXPECT_NEAR(RealOf(time, "1.5s"), 1500.0, 1e-6);
    EXPECT_NEAR(RealOf(time, "20 ms"), 20.0, 1e-6);
    EXPECT_NEAR(RealOf(time, "20"), 20.0, 1e-6);
    const CPluginControl_LogRatio ratio(Range(0.1, 100.0), ControlStepCount{100});
    EXPECT_NEAR(RealOf(ratio, "1:1"), 1.0, 1e-6);
    EXPECT_NEAR(RealOf(ratio, "4:1"), 4.0, 1e-6);
    EXPECT_NEAR(RealOf(ratio, "1:4"), 0.25, 1e-6);
    EXPECT_NEAR(RealOf(ratio, "3/2"), 1.5, 1e-6);
    EXPECT_NEAR(RealOf(ratio, ":5"), 0.2, 1e-6);
    EXPECT_NEAR(RealOf(ratio, "8"), 8.0, 1e-6);
    EXPECT_EQ(RealOf(ratio, "1:0"), 100.0);  // an endless ratio is the largest one
}

TEST(ContinuousText, TextWithoutANumberIsRefused) {
    const auto frequency = test::Frequency();
    const CPluginControl_LogRatio ratio(Range(0.1, 100.0), ControlStepCount{100});
    for (const char* text : {"", "  ", "kHz", "-", ".", "+k"}) {
        EXPECT_THROW(frequency.TextToControlValue(text), AppFrame::BadParameter) << text;
    }
    EXPECT_THROW(ratio.TextToControlValue(":"), AppFrame::BadParameter);
    EXPECT_THROW(ratio.TextToControlValue("0:0"), AppFrame::BadParameter);
    // The reader is locale-free and takes no exponent: "2E" is two exa, clamped.
    EXPECT_EQ(RealOf(frequency, "2E3"), 20000.0);
}

TEST(DiscreteText, DigitsOrTheOverflowText) {
    const CPluginControl_Discrete control(1, "Count", -100, 100000, 0, true);
    char buffer[16];
    control.GetValueString(buffer, 16, control.ValueToControl(-100));
    EXPECT_STREQ(buffer, "-100");
    control.GetValueString(buffer, 6, control.ValueToControl(100000));
    EXPECT_STREQ(buffer, "#");
    control.GetValueString(buffer, 7, control.ValueToControl(100000));
    EXPECT_STREQ(buffer, "100000");
}

TEST(DiscreteText, ReadsTheLeadingWholeNumberClamped) {
    const CPluginControl_Discrete control(1, "Count", 0, 10, 0, true);
    EXPECT_EQ(control.ControlToValue(control.TextToControlValue(" 7 items")), 7);
    EXPECT_EQ(control.ControlToValue(control.TextToControlValue("3.9")), 3);
    EXPECT_EQ(control.ControlToValue(control.TextToControlValue("99999999999999")), 10);
    EXPECT_EQ(control.ControlToValue(control.TextToControlValue("-5")), 0);
    EXPECT_THROW(control.TextToControlValue("seven"), AppFrame::BadParameter);
}

// The keys of each family; "k" is a key everywhere a prefix is, "m" nowhere.
TEST(KeyTables, EachFamilyTakesItsUnitKeysAndTheCommonOnes) {
    const auto frequency = test::Frequency();
    const auto boost = test::BoostCut();
    const CPluginControl_LinearLevel level(Range(-60.0, 12.0), ControlStepSize{0.5});
    const CPluginControl_LinearTime time(Range(0.0, 5000.0), ControlStepSize{1.0});
    const CPluginControl_LogTimeS timeS(Range(1.0, 10000.0), ControlStepCount{100});
    const CPluginControl_LogRatio ratio(Range(0.1, 100.0), ControlStepCount{100});
    const CPluginControl_Linear plain(Range(0.0, 1.0), ControlStepCount{10});
    const std::vector<std::pair<const CPluginControl_Continuous*, std::string>> families = {
        {&frequency, "HhZz "}, {&boost, "dB "}, {&level, "dB "}, {&time, "s "},
        {&timeS, "s "},        {&ratio, ":/"},  {&plain, ""},
    };
    const std::string common = "0123456789.-+kMGTPE\x1c\x1d\x08";
    for (const auto& [control, unitKeys] : families) {
        for (int key = 1; key < 128; ++key) {
            const char c = static_cast<char>(key);
            const bool expected =
                common.find(c) != std::string::npos || unitKeys.find(c) != std::string::npos;
            EXPECT_EQ(control->IsKeyValid(c), expected) << unitKeys << " key " << key;
        }
        EXPECT_FALSE(control->IsKeyValid('\0'));
    }
}

TEST(KeyTables, DiscreteControlsTakeNoPrefixes) {
    const CPluginControl_Discrete control(1, "Count", 0, 10, 0, true);
    const std::string valid = "0123456789.+-\x1c\x1d\x08";
    for (int key = 1; key < 128; ++key) {
        const char c = static_cast<char>(key);
        EXPECT_EQ(control.IsKeyValid(c), valid.find(c) != std::string::npos) << key;
    }
}

TEST(ControlNames, TheLongestNameThatFits) {
    const auto control = test::Frequency();  // "Frequency\nFreq\nF"
    char buffer[16];
    control.GetName(buffer, 16);
    EXPECT_STREQ(buffer, "Frequency");
    control.GetName(buffer, 9);
    EXPECT_STREQ(buffer, "Freq");
    control.GetName(buffer, 2);
    EXPECT_STREQ(buffer, "F");
    const CPluginControl_Discrete single(1, "Bypass", 0, 1, 0, true);
    single.GetName(buffer, 4);
    EXPECT_STREQ(buffer, "Byp");
}

}  // namespace
}  // namespace vorix
