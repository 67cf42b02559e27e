#include <gtest/gtest.h>

#include <string>

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
    std::string NameSet(int32_t id, ChannelConfig config = kStereo) const {
        std::string out;
        GetControlNameSet(out, id, config);
        return out;
    }
};

// A product of the same family that keeps no session chunk.
class ChunklessRtasVorix : public RtasVorix {
  public:
    bool HasNoChunk() const override { return true; }
};

TEST(RtasMetaClassNameSets, FilterControlsListFallingLengthsBehindTheirLetter) {
    const RtasVorix meta;
    EXPECT_EQ(meta.NameSet(4), "B: Gain\nB:Gain\nB: G\nB:G");
    EXPECT_EQ(meta.NameSet(27, kMono), "J: Frequency\nJ: Freq\nJ:Freq\nJ: Fc\nJ: F\nJ:F");
    EXPECT_EQ(meta.NameSet(2),
              "A: Q/BW/Slope\nA:Q/BW/Slope\nA: Shape\nA:Shape\nA: Shp\nA:Shp\nA: S\nA:S");
}

TEST(RtasMetaClassNameSets, TrimsEndInATabTheMonoRightTrimIsABlankAndOtherIdsHaveNone) {
    const RtasVorix meta;
    EXPECT_EQ(meta.NameSet(FourCC("LGan")), "L Output Trim\nL Out Trim\nL Out\nL\t");
    EXPECT_EQ(meta.NameSet(FourCC("RGan")), "R Output Trim\nR Out Trim\nR Out\nR\t");
    EXPECT_EQ(meta.NameSet(FourCC("LGan"), kMono), "Output Trim\nOut Trim\nOut\n\t");
    EXPECT_EQ(meta.NameSet(FourCC("RGan"), kMono), " ");
    EXPECT_EQ(meta.NameSet(FourCC("dirt")), "<n/a>");
    EXPECT_EQ(meta.NameSet(30, kMono), "<n/a>");
}

TEST(RtasMetaClassIdentity, PlugInIdVersionNameSetsAndInsertKinds) {
    const RtasVorix meta;
    EXPECT_EQ(meta.GetPlugInId(), 0x566F7278);
    EXPECT_EQ(meta.GetPlugInVersion(), 1);
    std::string product, mono, stereo;
    meta.GetProductNameSet(product);
    meta.GetMonoNameSet(mono);
    meta.GetStereoNameSet(stereo);
    EXPECT_EQ(product, "Vorix\nVrx");
    EXPECT_EQ(mono, "Vorix 1ch\nVorix 1\nVrx1\nVrx");
    EXPECT_EQ(stereo, "Vorix 2ch\nVorix 2\nVrx2\nVrx");
    EXPECT_FALSE(meta.SupportsAudioSuiteTypes());
    EXPECT_FALSE(meta.SupportsAudioSuitePreview());
    EXPECT_TRUE(meta.SupportsRtasTypes());
    EXPECT_FALSE(meta.HasSideChain());
    EXPECT_FALSE(meta.HasProgramBank());
    int32_t typeId = 0;
    EXPECT_FALSE(meta.GetCustomEffectType(kStereo, typeId, product, stereo));
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

TEST(RtasMetaClassCast, HostLayerReachesTheInterfaceFromTheMetaClass) {
    const RtasVorix vorix;
    const ZORPluginMetaClass& meta = vorix;
    const auto* rtas = dynamic_cast<const RTASPluginMetaClassInterface*>(&meta);
    ASSERT_NE(rtas, nullptr);
    EXPECT_EQ(rtas->GetPlugInId(), static_cast<int32_t>(FourCC("Vorx")));
    std::string text;
    meta.FormatValueWithUnits(text, 0, 1000.0f, -1);
    EXPECT_EQ(text, "1000 Hz");
    meta.GetControlNameSet(text, FourCC("RGan"), kMono);
    EXPECT_EQ(text, " ");
}

}  // namespace
}  // namespace vorix
