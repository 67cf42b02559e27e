#include <gtest/gtest.h>

#include <atomic>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "core/PluginCore.h"
#include "core/ZORPluginMetaClass.h"

namespace vorix {
namespace {

using Names = std::vector<std::string>;

// A product whose table the tests fill row by row.
class TestMetaClass : public ZORPluginMetaClass {
  public:
    using ZORPluginMetaClass::validateParameter;
    std::unique_ptr<PluginCore> CreateCore(PluginPlatform*, const ChannelConfig&) override {
        return nullptr;
    }
    std::string GetProductName() const override { return "Test"; }
    std::string GetProductFileName() const override { return "Test"; }
    std::string GetVersion() const override { return "1.0"; }
    std::string GetCopyright() const override { return "Zorvane Sound Works"; }
    void GetChannelConfigs(std::vector<ChannelConfig>& out) const override { out = {{1, 1}}; }
    int32_t GetProgramCount() const override { return 1; }
    const char* GetFactoryPrograms() const override { return document.c_str(); }

    // Adds a row and answers the index it has, -1 if it was not added.
    int32_t Add(int32_t id, int32_t type, Names labels = {}) {
        ZORParameterInfo info;
        info.id = id;
        info.type = type;
        info.discreteValues = std::move(labels);
        AddParameter(info);
        int32_t index = -1;
        FindParameterIndex(index, id);
        return index;
    }
    ZORParameterInfo& Row(int32_t index) {
        return const_cast<ZORParameterInfo&>(*GetParameterInfo(index));
    }
    std::string Text(int32_t index, float value, int32_t maxChars = -1, bool units = false) const {
        std::string out;
        units ? FormatValueWithUnits(out, index, value, maxChars)
              : FormatValue(out, index, value, maxChars);
        return out;
    }
    Names ProgramNames(std::string text) {
        document = std::move(text);
        Names names = {"kept"};
        GetFactoryProgramNames(names);
        return names;
    }
    std::string document;
};

TEST(MetaClassAddParameter, IndexesInOrderKeepsIdsUniqueHonoursRefusalsAndLabels) {
    TestMetaClass meta;
    meta.validateParameter = [](const ZORParameterInfo& info) { return info.id != 5; };
    EXPECT_EQ(meta.Add(5, kParamContinuous), -1);
    EXPECT_EQ(meta.Add(7, kParamDiscrete), 0);
    EXPECT_EQ(meta.Add(3, kParamInteger), 1);
    EXPECT_EQ(meta.Add(7, kParamFrequency), 0);
    EXPECT_EQ(meta.Add(9, kParamDiscrete, {"Low;-2", "Mid", "High;10", "Odd;x"}), 2);
    EXPECT_EQ(meta.GetParameterCount(), 3);
    EXPECT_EQ(meta.Row(0).type, kParamDiscrete);
    EXPECT_EQ(meta.Row(0).discreteValues, (Names{"Off;0", "On;1"}));
    EXPECT_TRUE(meta.Row(1).discreteValues.empty());
    EXPECT_EQ(meta.Row(2).labelsByValue,
              (std::map<int32_t, std::string>{{-2, "Low"}, {10, "High"}}));
    EXPECT_EQ(meta.FindParameterInfo(4), nullptr);
    EXPECT_EQ(meta.GetParameterInfo(-1), nullptr);
    EXPECT_EQ(meta.GetParameterInfo(3), nullptr);
}

TEST(MetaClassFormatValue, ReadsLabelsByWidthAndSetElseDecimalsByTypeThenUnits) {
    TestMetaClass meta;
    for (int32_t type = 0; type <= 13; ++type)
        meta.Add(type, type);
    meta.Add(20, kParamDiscrete);             // 14: Off/On
    meta.Add(21, kParamInteger, {"Low;-2"});  // 15
    meta.Add(22, kParamDiscrete);             // 16: forms by width
    meta.Row(16).labelSets = {{"", "", "Lo", "Low", "", "Lower"}};
    meta.Add(23, kParamInteger);  // 17: label set by distance from the minimum
    meta.Row(17).min = 2.0f;
    meta.Row(17).labelSets = {{"A"}, {"B"}, {"C"}};
    meta.Add(24, kParamFrequency);  // 18: a star means no units
    meta.Row(18).units = "*";
    meta.Add(25, kParamContinuous);  // 19
    meta.Row(19).units = "%";
    const float nan = std::numeric_limits<float>::quiet_NaN();
    struct Case {
        int32_t index;
        float value;
        int32_t width;
        bool units;
        const char* text;
    };
    // clang-format off
    const Case cases[] = {{14, 1, -1, 0, "On"}, {14, 0, -1, 0, "Off"}, {15, -2, -1, 0, "Low"},
        {15, -2.5f, -1, 0, "-2.5"}, {16, 0, -1, 0, "Lower"}, {16, 0, 9, 0, "Lower"},
        {16, 0, 4, 0, "Low"}, {16, 0, 2, 0, "Lo"}, {16, 0, 1, 0, "L"}, {17, 3.9f, -1, 0, "B"},
        {17, 9, -1, 0, "C"}, {17, -5, -1, 0, "A"}, {17, nan, -1, 0, "A"},
        {kParamFrequency, 440.4f, -1, 0, "440"}, {kParamStepByCount, 0.126f, -1, 0, "0.13"},
        {kParamTimeLog, 12.34f, -1, 0, "12.3"}, {kParamBoostCutDb, -12.25f, 3, 0, "-12"},
        {kParamBoostCutDb, -0.04f, -1, 0, "-0.0"}, {kParamBoostCutDb, 0.04f, -1, 0, "0.0"},
        {kParamFrequency, -0.4f, -1, 0, "-0"}, {kParamStepByCount, -0.004f, -1, 0, "-0.00"},
        {99, 1, -1, 0, ""}, {99, 1, -1, 1, ""},
        {kParamFrequency, 1000, -1, 1, "1000 Hz"}, {kParamFrequency, 1500, 2, 1, "2k Hz"},
        {18, 1000, -1, 1, "1000 "}, {kParamContinuous, 0.5f, -1, 1, "0.5 "},
        {19, 50, -1, 1, "50.0 %"}, {kParamBoostCutDb, -0.04f, -1, 1, "-0.0 dB"}};
    // clang-format on
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.index << " " << c.value << " width " << c.width);
        EXPECT_EQ(meta.Text(c.index, c.value, c.width, c.units), c.text);
    }
    Names units(15, "stale");
    for (size_t index = 0; index < units.size(); ++index)
        meta.GetUnits(units[index], static_cast<int32_t>(index));
    EXPECT_EQ(units, (Names{"", "", "", "", "dB", "dB", "Hz", "", "oct", "", "", "", "", "", ""}));
}

TEST(MetaClassFormatNumber, RoundsToWholeKilohertzOnlyAbove1000) {
    struct Case {
        float value;
        int decimals;
        bool kilo;
        const char* text;
    };
    // clang-format off
    const Case cases[] = {{1000, 0, 1, "1000"}, {1499, 0, 1, "1k"}, {1500, 0, 1, "2k"},
        {-5000, 0, 1, "-5000"}, {1000, 2, 1, "1000.00"}, {1000.5f, 2, 1, "1k"},
        {1500.4f, 0, 0, "1500"}};
    // clang-format on
    for (const Case& c : cases) {
        SCOPED_TRACE(c.value);
        EXPECT_EQ(FormatNumber(c.value, c.decimals, c.kilo), c.text);
    }
}

TEST(MetaClassFactoryProgramNames, AppendsNamesAfterOwnHeaderAndRefusesForeignOrOverlong) {
    TestMetaClass meta;
    const std::string header = "<!-- Zorvane Sound Works Test Program Settings -->\n";
    const std::string program = "<program number=\"0\" name=\"P\">\n</program>\n";
    const std::string body =
        "<program number=\"0\" name=\"First\">\n<program inside>\n</program>\n";
    const std::string unnamed = "<program number=\"5\">\n</program>\n";
    EXPECT_EQ(meta.ProgramNames(program + header + body + unnamed + program),
              (Names{"kept", "First", "", "P"}));
    EXPECT_EQ(meta.ProgramNames("<!-- Zorvane Sound Works Other Program Settings -->\n" + program),
              Names{"kept"});
    EXPECT_EQ(meta.ProgramNames(header + std::string(254, ' ') + "\n" + program).size(), 2u);
    EXPECT_EQ(meta.ProgramNames(header + program + std::string(255, ' ') + "\n"), Names{"kept"});
}

std::atomic<int> alive{0};

class CountedMetaClass : public TestMetaClass {
  public:
    CountedMetaClass() { ++alive; }
    ~CountedMetaClass() override { --alive; }
};

TEST(MetaClassSingleton, LivesFromFirstAcquireToLastReleaseOnAnyThreadAndNeedsAMaker) {
    int made = 0;
    SetMetaClassMaker([&made] { return ++made, std::make_unique<CountedMetaClass>(); });
    ZORPluginMetaClass* first = AcquireMetaClass();
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([first] {
            for (int i = 0; i < 200; ++i) {
                EXPECT_EQ(AcquireMetaClass(), first);
                ReleaseMetaClass();
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(GetMetaClass(), first);
    ReleaseMetaClass();
    EXPECT_EQ(GetMetaClass(), nullptr);
    EXPECT_EQ(alive, 0);
    ReleaseMetaClass();  // none held: the count must not go below zero
    EXPECT_NE(AcquireMetaClass(), nullptr);
    ReleaseMetaClass();
    EXPECT_EQ(made, 2);
    EXPECT_EQ(GetMetaClass(), nullptr);
    SetMetaClassMaker(nullptr);
    EXPECT_THROW(AcquireMetaClass(), ZORPluginMetaClass::NoMetaClass);
    SetMetaClassMaker([] { return std::unique_ptr<ZORPluginMetaClass>(); });
    EXPECT_THROW(AcquireMetaClass(), ZORPluginMetaClass::NoMetaClass);
    EXPECT_EQ(GetMetaClass(), nullptr);
    SetMetaClassMaker(nullptr);
}

}  // namespace
}  // namespace vorix
