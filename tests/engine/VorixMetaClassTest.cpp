#include <gtest/gtest.h>

#include <array>
#include <iomanip>
#include <sstream>
#include <string>
#include <vector>

#include "core/PluginCore.h"
#include "engine/ZORVorixMetaClass.h"
#include "framework/FourCC.h"

namespace vorix {
namespace {

constexpr ChannelConfig kStereo{2, 2};
constexpr ChannelConfig kMono{1, 1};

// The product's description as it can be made before the engine exists.
class Vorix : public ZORVorixMetaClass {
  public:
    std::unique_ptr<PluginCore> CreateCore(PluginPlatform*, const ChannelConfig&) override {
        return nullptr;
    }
    std::string Name(int32_t id, ChannelConfig config = kStereo) const {
        std::string out;
        GetParameterName(out, id, config);
        return out;
    }
    // Each meter as name, id, position and kind.
    std::string Meters(ChannelConfig config) const {
        std::vector<ZORMeterInfo> meters = {{"stale", 0, 0, 0}};
        GetMeterNames(config, meters);
        std::string text;
        for (const ZORMeterInfo& meter : meters) {
            const int32_t id = meter.id;
            const char code[] = {char(id >> 24), char(id >> 16), char(id >> 8), char(id), 0};
            text += meter.name + " " + code + " " + std::to_string(meter.position) + " " +
                    std::to_string(meter.kind) + ";";
        }
        return text;
    }
    std::string ValueText(int32_t index, float value) const {
        std::string out;
        FormatValueWithUnits(out, index, value, -1);
        return out;
    }
};

// One row as a line of text, so that a wrong row reads plainly in a failure.
std::string Line(int32_t index, int32_t id, const std::string& name, int32_t type,
                 const std::string& units, std::array<float, 4> range, bool automatable,
                 int32_t flags = 0) {
    std::ostringstream text;
    text << std::setprecision(9) << index << " " << id << " " << name << " " << type << " ["
         << units << "]";
    for (float value : range)
        text << " " << value;
    text << (automatable ? " automatable" : " fixed") << " flags " << flags;
    return text.str();
}

std::string Line(const ZORParameterInfo& row) {
    return Line(row.index, row.id, row.name, row.type, row.units,
                {row.min, row.max, row.defaultValue, row.step}, row.automatable, row.flags);
}

TEST(VorixMetaClassTable, HoldsThe33RowsInOrder) {
    std::vector<std::string> expected;
    for (int n = 0; n < 10; ++n) {
        const std::string prefix = "prmControl_" + std::to_string(n) + "_";
        expected.push_back(
            Line(3 * n, 3 * n, prefix + "Freq", 6, "Hz", {16, 20000, 1000, 1}, true));
        expected.push_back(
            Line(3 * n + 1, 3 * n + 1, prefix + "Gain", 5, "dB", {-18, 18, 0, 0.05f}, true));
        expected.push_back(
            Line(3 * n + 2, 3 * n + 2, prefix + "Poly", 2, "", {0, 1, 0.5f, 0.001f}, true));
    }
    expected.push_back(Line(30, 0x4C47616E, "prmLeftGain", 5, "dB", {-24, 24, 0, 0.5f}, true));
    expected.push_back(Line(31, 0x5247616E, "prmRightGain", 5, "dB", {-24, 24, 0, 0.5f}, true));
    expected.push_back(Line(32, 0x64697274, "prmDirty", 3, "", {0, 1000000, 0, 1}, false));
    const Vorix meta;
    std::vector<std::string> actual;
    for (int32_t index = 0; index < meta.GetParameterCount(); ++index) {
        actual.push_back(Line(*meta.GetParameterInfo(index)));
    }
    EXPECT_EQ(actual, expected);
}

TEST(VorixMetaClassTable, LooksUpByIdAndReadsValuesWithUnits) {
    const Vorix meta;
    EXPECT_EQ(meta.GetParameterInfo(33), nullptr);
    EXPECT_EQ(meta.GetParameterInfo(-1), nullptr);
    ASSERT_NE(meta.FindParameterInfo(FourCC("LGan")), nullptr);
    EXPECT_EQ(meta.FindParameterInfo(FourCC("LGan"))->index, 30);
    EXPECT_EQ(meta.ValueText(0, 1000.0f), "1000 Hz");
    EXPECT_EQ(meta.ValueText(32, 17.0f), "17.0");
}

TEST(VorixMetaClassNames, EditorNamesFollowRoleAndOutputChannelsAndKnowTheirRows) {
    const Vorix meta;
    EXPECT_EQ(meta.Name(0), "A: Frequency");
    EXPECT_EQ(meta.Name(4), "B: Gain");
    EXPECT_EQ(meta.Name(29, kMono), "J: Q/BW/Slope");
    EXPECT_EQ(meta.Name(FourCC("LGan")), "Left Gain");
    EXPECT_EQ(meta.Name(FourCC("LGan"), kMono), "Output Gain");
    EXPECT_EQ(meta.Name(FourCC("RGan"), kMono), "n/a");
    EXPECT_EQ(meta.Name(FourCC("RGan"), ChannelConfig{1, 2}), "Right Gain");
    EXPECT_EQ(meta.Name(FourCC("dirt")), "<EMPTY>");
    EXPECT_EQ(meta.Name(30), "INVALID ID");
}

TEST(VorixMetaClassIdentity, NamesVersionAndChannels) {
    const Vorix meta;
    EXPECT_EQ(meta.GetProductName(), "Vorix");
    EXPECT_EQ(meta.GetProductFileName(), "Vorix");
    EXPECT_EQ(meta.GetVersion(), "2.1");
    EXPECT_EQ(meta.GetCopyright().size(), 25u);
    EXPECT_NE(meta.GetCopyright().find("Zorvane Sound Works"), std::string::npos);
    EXPECT_EQ(meta.GetCompanyShortName(), "Zorvane Sound");
    std::string preferences;
    meta.GetPreferencesName(preferences);
    EXPECT_EQ(preferences, "ZOR Vorix Prefs");
    std::vector<ChannelConfig> configs;
    meta.GetChannelConfigs(configs);
    EXPECT_EQ(configs, (std::vector<ChannelConfig>{kStereo, kMono}));
}

TEST(VorixMetaClassIdentity, OneMeterPerOutputChannel) {
    const Vorix meta;
    EXPECT_EQ(meta.Meters(kMono), "Out out1 1 0;");
    EXPECT_EQ(meta.Meters(kStereo), "L Out out1 1 0;R Out out2 1 0;");
}

}  // namespace
}  // namespace vorix
