#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "core/PluginCore.h"
#include "framework/FourCC.h"
#include "host/ZORRtasVorixMetaClass.h"

namespace vorix {
namespace {

constexpr ChannelConfig kStereo{2, 2};
constexpr ChannelConfig kMono{1, 1};

// The final class as it can be made before the engine exists.
class RtasVorix : public ZORRtasVorixMetaClass {
  public:
    std::unique_ptr<PluginCore> CreateCore(PluginPlatform*, const ChannelConfig&) override {
        return nullptr;
    }
};

// A product of the same family that keeps no session chunk.
class ChunklessRtasVorix : public RtasVorix {
  public:
    bool HasNoChunk() const override { return true; }
};

// Trims end in a tab; the mono right trim is a single blank.
TEST(RtasMetaClassNameSets, ListFallingLengthsPerControlAndNoneForOtherIds) {
    // clang-format off
    struct Case { int32_t id; ChannelConfig config; const char* names; };
    const Case cases[] = {{4, kStereo, "B: Gain\nB:Gain\nB: G\nB:G"},
        {27, kMono, "J: Frequency\nJ: Freq\nJ:Freq\nJ: Fc\nJ: F\nJ:F"},
        {2, kStereo, "A: Q/BW/Slope\nA:Q/BW/Slope\nA: Shape\nA:Shape\nA: Shp\nA:Shp\nA: S\nA:S"},
        {FourCC("LGan"), kStereo, "L Output Trim\nL Out Trim\nL Out\nL\t"},
        {FourCC("RGan"), kStereo, "R Output Trim\nR Out Trim\nR Out\nR\t"},
        {FourCC("LGan"), kMono, "Output Trim\nOut Trim\nOut\n\t"}, {FourCC("RGan"), kMono, " "},
        {FourCC("dirt"), kStereo, "<n/a>"}, {30, kMono, "<n/a>"}};
    // clang-format on
    const RtasVorix vorix;
    const ZORPluginMetaClass& meta = vorix;  // the host layer asks through the generic class
    for (const Case& c : cases) {
        std::string names;
        meta.GetControlNameSet(names, c.id, c.config);
        EXPECT_EQ(names, c.names) << c.id << " outputs " << c.config.outputs;
    }
}

TEST(RtasMetaClassIdentity, PlugInIdVersionNameSetsAndInsertKinds) {
    const RtasVorix vorix;
    const ZORPluginMetaClass& generic = vorix;
    const auto* meta = dynamic_cast<const RTASPluginMetaClassInterface*>(&generic);
    ASSERT_NE(meta, nullptr);
    EXPECT_EQ(meta->GetPlugInId(), static_cast<int32_t>(FourCC("Vorx")));
    std::string text;
    generic.FormatValueWithUnits(text, 0, 1000.0f, -1);
    EXPECT_EQ(text, "1000 Hz");
    EXPECT_EQ(meta->GetPlugInVersion(), 1);
    std::string product, mono, stereo;
    meta->GetProductNameSet(product);
    meta->GetMonoNameSet(mono);
    meta->GetStereoNameSet(stereo);
    EXPECT_EQ(product + "|" + mono + "|" + stereo,
              "Vorix\nVrx|Vorix 1ch\nVorix 1\nVrx1\nVrx|Vorix 2ch\nVorix 2\nVrx2\nVrx");
    int32_t typeId = 0;
    // Plain insert effect only: no offline processing, side chain, program bank or custom type.
    EXPECT_EQ(std::tuple(meta->SupportsAudioSuiteTypes(), meta->SupportsAudioSuitePreview(),
                         meta->SupportsRtasTypes(), meta->HasSideChain(), generic.HasProgramBank(),
                         meta->GetCustomEffectType(kStereo, typeId, product, stereo)),
              std::tuple(false, false, true, false, false, false));
}

TEST(RtasMetaClassChunk, NamesTheSessionChunkUnlessTheProductKeepsNone) {
    int32_t id = 0;
    std::string name;
    ASSERT_TRUE(RtasVorix().GetChunkInfo(id, name));
    EXPECT_EQ(id, 0x7A6F7263);
    EXPECT_EQ(name, "ZOR Plug-In Chunk");
    EXPECT_FALSE(RtasVorix().HasNoChunkInterface());
    EXPECT_FALSE(ChunklessRtasVorix().GetChunkInfo(id, name));
    EXPECT_TRUE(ChunklessRtasVorix().HasNoChunkInterface());
}

}  // namespace
}  // namespace vorix
