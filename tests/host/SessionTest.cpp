#include <algorithm>
#include <cstring>
#include <numeric>

#include "HostTestSupport.h"
#include "vorix-host/HostError.h"
#include "vorix-host/Renderer.h"
#include "vorix-host/SessionFile.h"

namespace vorix::test {
namespace {

constexpr const char* kMaker = "Zorvane";

class SessionTest : public HostFixture {
  protected:
    // An insert whose settings and controls are all away from their defaults where it matters.
    Insert& EditedInsert() {
        Insert& insert = MakeInsert("StRT");
        SetControl(insert, "ctab", "-7.5");
        SetControl(insert, "ctae", "9");
        SetControl(insert, "ctad", "3456.7");
        SetControl(insert, "ctbe", "-4.5");
        return insert;
    }
    std::vector<std::int32_t> ControlValues(const Insert& insert) {
        std::vector<std::int32_t> values;
        for (std::int32_t control = 1; control <= insert.CountControls(); ++control) {
            values.push_back(insert.ReadControl(control));
        }
        return values;
    }
};

TEST_F(SessionTest, KeepsTheSettingsTextWithSixteenZerosBehindTheHeader) {
    Insert& insert = EditedInsert();
    const SavedChunk chunk = ChunkOf(insert.SaveChunks(), Id("zorc"));
    const std::string payload = PayloadOf(chunk);
    const std::size_t text = payload.find('\0');
    ASSERT_NE(text, std::string::npos);
    EXPECT_EQ(chunk.bytes.size(), text + 16 + 56);
    EXPECT_EQ(payload.substr(text), std::string(16, '\0'));
    std::int32_t measured = 0;
    EXPECT_EQ(insert.Process().MeasureChunk(Id("zorc"), measured), 0);
    EXPECT_EQ(measured, static_cast<std::int32_t>(chunk.bytes.size()));
    EXPECT_EQ(
        (chunk.bytes[0] << 24) | (chunk.bytes[1] << 16) | (chunk.bytes[2] << 8) | chunk.bytes[3],
        measured);
}

TEST_F(SessionTest, RestoresIntoAFreshInsertThatRendersTheSameBits) {
    Insert& original = EditedInsert();
    const std::vector<SavedChunk> chunks = original.SaveChunks();
    Insert& restored = MakeInsert("StRT");
    restored.RestoreChunks(chunks);
    EXPECT_EQ(ControlValues(restored), ControlValues(original));
    EXPECT_EQ(restored.SaveChunks(), chunks);
    const AudioData expected = RenderThrough(original, TrackWithoutZeros(), 512);
    EXPECT_EQ(RenderThrough(restored, TrackWithoutZeros(), 700).channels, expected.channels);
    EXPECT_NE(RenderThrough(MakeInsert("StRT"), TrackWithoutZeros(), 512).channels,
              expected.channels);
}

// A session that keeps only the settings chunk: the controls come from the engine's restored
// state, not from the new insert's start-up values, and the engine keeps its exact values
// rather than the controls' rounded ones.
TEST_F(SessionTest, ShowsTheEnginesRestoredValuesOnTheControlsWhenOnlyTheSettingsComeBack) {
    Insert& original = EditedInsert();
    const SavedChunk settings = ChunkOf(original.SaveChunks(), Id("zorc"));
    Insert& restored = MakeInsert("StRT");
    const std::vector<std::int32_t> startUp = ControlValues(restored);
    restored.RestoreChunks({settings});
    EXPECT_NE(ControlValues(restored), startUp);
    // The filters of the slots A and B and the trims, the right one following the left through
    // the link. (Free slots report the bottom of their ranges.)
    const std::pair<const char*, const char*> shown[] = {
        {"ctaa", "100.00 Hz"}, {"ctab", "-7.5 dB"}, {"ctac", "1.0"},     {"ctad", "3.46 kHz"},
        {"ctae", "9.0 dB"},    {"ctaf", "0.2"},     {"ctbe", "-4.5 dB"}, {"ctbf", "-4.5 dB"}};
    for (const auto& [id, text] : shown) {
        EXPECT_EQ(restored.DescribeControl(restored.FindControl(id)).valueText, text) << id;
    }
    EXPECT_EQ(PayloadOf(ChunkOf(restored.SaveChunks(), Id("zorc"))), PayloadOf(settings));
    EXPECT_EQ(RenderThrough(restored, TrackWithoutZeros(), 512).channels,
              RenderThrough(original, TrackWithoutZeros(), 512).channels);
}

TEST_F(SessionTest, RefusesAControlStateWithAWrongMarkerAndChangesNoControl) {
    SavedChunk state = ChunkOf(EditedInsert().SaveChunks(), Id("elck"));
    state.bytes[56] = 2;
    Insert& fresh = MakeInsert("StRT");
    const std::vector<std::int32_t> before = ControlValues(fresh);
    EXPECT_EQ(fresh.LoadChunk(state), kErrBadChunk);
    EXPECT_EQ(ControlValues(fresh), before);
    EXPECT_TRUE(fresh.Reports().empty());
}

TEST_F(SessionTest, ShowsOneMessageForDamagedSettingsAndKeepsWorking) {
    const std::vector<SavedChunk> chunks = EditedInsert().SaveChunks();
    SavedChunk damaged = ChunkOf(chunks, Id("zorc"));
    // The settings lose every mention of their maker.
    for (auto maker = damaged.bytes.begin();
         (maker = std::search(maker, damaged.bytes.end(), kMaker, kMaker + 7)) !=
         damaged.bytes.end();) {
        *maker = 'X';
    }
    Insert& insert = MakeInsert("StRT");
    const std::vector<SavedChunk> untouched = insert.SaveChunks();
    EXPECT_EQ(insert.LoadChunk(damaged), 0);
    EXPECT_EQ(insert.Messages(),
              (std::vector<RecordedError>{
                  {"Unable to load settings.",
                   "These are not valid settings or the settings have been corrupted.  ", "", 2}}));
    EXPECT_EQ(insert.SaveChunks(), untouched);
    insert.RestoreChunks({ChunkOf(chunks, Id("zorc"))});
    EXPECT_EQ(RenderThrough(insert, TrackWithoutZeros(), 1024).Frames(), 9000);
}

TEST(SessionFile, KeepsEveryChunkOfEveryInsert) {
    const std::vector<SessionInsert> inserts = {
        {Id("StRT"), {{Id("zorc"), {1, 2, 0, 3}}, {Id("elck"), {}}}}, {Id("mnRT"), {}}};
    EXPECT_EQ(DecodeSession(EncodeSession(inserts), "test"), inserts);
}

TEST(SessionFile, RefusesWhatIsNotAWholeSessionOfThisVersion) {
    const std::vector<std::uint8_t> good = EncodeSession({{Id("StRT"), {{Id("zorc"), {9, 9, 9}}}}});
    const auto refusal = [](std::vector<std::uint8_t> bytes) {
        try {
            DecodeSession(bytes, "s.vxs");
        } catch (const HostError& error) {
            return std::string(error.what());
        }
        return std::string("accepted");
    };
    std::vector<std::uint8_t> flipped = good;
    flipped[30] ^= 0x10;
    std::vector<std::uint8_t> newer = good;
    newer[11] = 2;
    std::vector<std::uint8_t> foreign = good;
    foreign[0] = 'W';
    const std::string damaged = "The session file s.vxs is damaged.";
    EXPECT_EQ(refusal(flipped), damaged);
    EXPECT_EQ(refusal({good.begin(), good.end() - 1}), damaged);
    EXPECT_EQ(refusal({good.begin(), good.begin() + 12}), damaged);
    EXPECT_EQ(refusal(newer), "The session file s.vxs has version 2; this host reads version 1.");
    EXPECT_EQ(refusal(foreign), "The file s.vxs is not a Vorix session file.");
}

}  // namespace
}  // namespace vorix::test
