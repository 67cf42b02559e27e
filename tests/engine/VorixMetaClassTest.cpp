#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "core/PluginCore.h"
#include "host/ZORVorixMetaClass.h"
#include "framework/FourCC.h"

namespace vorix {
namespace {

constexpr ChannelConfig kStereo{2, 2};
constexpr ChannelConfig kMono{1, 1};

using Vorix = ZORVorixMetaClass;

using Row = std::tuple<int32_t, int32_t, std::string, int32_t, std::string, float, float, float,
                       float, bool, int32_t>;

Row Fields(const ZORParameterInfo& r) {
    // clang-format off
    return {r.index, r.id, r.name, r.type, r.units, r.min, r.max, r.defaultValue, r.step,
            r.automatable, r.flags};
    // clang-format on
}

TEST(VorixMetaClassTable, HoldsThe33RowsInOrderAndFindsThemById) {
    std::vector<Row> expected;
    for (int32_t n = 0, i = 0; n < 10; ++n, i += 3) {
        const std::string prefix = "prmControl_" + std::to_string(n) + "_";
        expected.push_back({i, i, prefix + "Freq", 6, "Hz", 16, 20000, 1000, 1, true, 0});
        expected.push_back({i + 1, i + 1, prefix + "Gain", 5, "dB", -18, 18, 0, 0.05f, true, 0});
        expected.push_back({i + 2, i + 2, prefix + "Poly", 2, "", 0, 1, 0.5f, 0.001f, true, 0});
    }
    expected.push_back({30, 0x4C47616E, "prmLeftGain", 5, "dB", -24, 24, 0, 0.5f, true, 0});
    expected.push_back({31, 0x5247616E, "prmRightGain", 5, "dB", -24, 24, 0, 0.5f, true, 0});
    expected.push_back({32, 0x64697274, "prmDirty", 3, "", 0, 1000000, 0, 1, false, 0});
    const Vorix meta;
    ASSERT_EQ(meta.GetParameterCount(), 33);
    for (int32_t index = 0; index < 33; ++index)
        EXPECT_EQ(Fields(*meta.GetParameterInfo(index)), expected[static_cast<size_t>(index)]);
    EXPECT_EQ(meta.GetParameterInfo(33), nullptr);
    EXPECT_EQ(meta.GetParameterInfo(-1), nullptr);
    ASSERT_NE(meta.FindParameterInfo(FourCC("LGan")), nullptr);
    EXPECT_EQ(meta.FindParameterInfo(FourCC("LGan"))->index, 30);
    std::string text;
    meta.FormatValueWithUnits(text, 0, 1000.0f, -1);
    EXPECT_EQ(text, "1000 Hz");
    meta.FormatValueWithUnits(text, 32, 17.0f, -1);
    EXPECT_EQ(text, "17.0 ");
}

TEST(VorixMetaClassNames, EditorNamesFollowRoleAndOutputChannelsAndKnowTheirRows) {
    // clang-format off
    struct Case { int32_t id; ChannelConfig config; const char* name; };
    const Case cases[] = {{0, kStereo, "A: Frequency"}, {4, kStereo, "B: Gain"},
        {29, kMono, "J: Q/BW/Slope"}, {FourCC("LGan"), kStereo, "Left Gain"},
        {FourCC("LGan"), kMono, "Output Gain"}, {FourCC("RGan"), kMono, "n/a"},
        {FourCC("RGan"), {1, 2}, "Right Gain"}, {FourCC("dirt"), kStereo, "<EMPTY>"},
        {30, kStereo, "INVALID ID"}};
    // clang-format on
    const Vorix meta;
    for (const Case& c : cases) {
        std::string name;
        meta.GetParameterName(name, c.id, c.config);
        EXPECT_EQ(name, c.name) << c.id << " outputs " << c.config.outputs;
    }
}

TEST(VorixMetaClassIdentity, NamesVersionChannelsAndOneMeterPerOutput) {
    const Vorix meta;
    std::string preferences;
    meta.GetPreferencesName(preferences);
    EXPECT_EQ(meta.GetProductName() + "|" + meta.GetProductFileName() + "|" + meta.GetVersion() +
                  "|" + meta.GetCompanyShortName() + "|" + preferences,
              "Vorix|Vorix|2.1|Zorvane Sound|ZOR Vorix Prefs");
    EXPECT_EQ(meta.GetCopyright().size(), 25u);
    EXPECT_NE(meta.GetCopyright().find("Zorvane Sound Works"), std::string::npos);
    std::vector<ChannelConfig> configs;
    meta.GetChannelConfigs(configs);
    EXPECT_EQ(configs, (std::vector<ChannelConfig>{kStereo, kMono}));
    using Meters = std::vector<std::tuple<std::string, uint32_t, int32_t, int32_t>>;
    for (const auto& [config, expected] :
         {std::pair{kMono, Meters{{"Out", FourCC("out1"), 1, 0}}},
          std::pair{kStereo,
                    Meters{{"L Out", FourCC("out1"), 1, 0}, {"R Out", FourCC("out2"), 1, 0}}}}) {
        std::vector<ZORMeterInfo> meters = {{"stale", 0, 0, 0}};
        meta.GetMeterNames(config, meters);
        Meters actual;
        for (const ZORMeterInfo& m : meters)
            actual.push_back({m.name, static_cast<uint32_t>(m.id), m.position, m.kind});
        EXPECT_EQ(actual, expected);
    }
}

}  // namespace
}  // namespace vorix
