#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "framework/Exceptions.h"
#include "hostlib/ChunkDataParser.h"
#include "hostlib/PlugInChunk.h"

namespace vorix {
namespace {

using Bytes = std::vector<std::uint8_t>;
using Kind = ChunkDataParser::Kind;

Bytes Write(const ChunkDataParser& parser) {
    Bytes out(parser.GetChunkDataSize());
    parser.WriteChunkData(out);
    return out;
}

// A parser holding one item of every kind, names of every length modulo 4.
ChunkDataParser EveryKind() {
    ChunkDataParser parser;
    parser.AddDouble("ctaa", -1234567.0);
    parser.AddLong("bypa", INT32_MIN);
    parser.AddFloat("abc", 0.1f);
    parser.AddShort("ab", -2);
    parser.AddLong("a", 7);
    parser.AddDouble("", 2.5);
    return parser;
}

TEST(ChunkDataParser, LayoutOfItemsIsTagNamePaddingAndBigEndianValue) {
    ChunkDataParser parser;
    parser.AddLong("ctaa", 0x01020304);
    parser.AddDouble("dirt", 1.0);
    parser.AddShort("s", -2);
    const Bytes expected = {
        1,    1,    1,   1,                                  // marker
        'l',  '_',  'c', 't', 'a',  'a',  0, 0, 1, 2, 3, 4,  // tag, name, pad to 12, long
        'd',  '_',  'd', 'i', 'r',  't',  0, 0,              // pad to 24
        0x3F, 0xF0, 0,   0,   0,    0,    0, 0,              // 1.0, high byte first
        's',  '_',  's', 0,   0xFF, 0xFE, 0, 0,              // short in a 4-byte slot
    };
    EXPECT_EQ(Write(parser), expected);
    EXPECT_EQ(parser.GetChunkDataSize(), expected.size());
}

TEST(ChunkDataParser, EveryKindRoundTrips) {
    const Bytes data = Write(EveryKind());
    ChunkDataParser reader;
    ASSERT_TRUE(reader.ParseChunkData(data));
    EXPECT_EQ(reader.GetLastParsedPosition(), static_cast<std::int64_t>(data.size()));
    EXPECT_EQ(reader.GetItemCount(), 6u);
    const auto check = [&](const char* name, Kind kind, double value) {
        const auto item = reader.Find(name);
        ASSERT_TRUE(item) << name;
        EXPECT_EQ(item->kind, kind) << name;
        EXPECT_EQ(item->value, value) << name;
    };
    check("ctaa", Kind::kDouble, -1234567.0);
    check("bypa", Kind::kLong, INT32_MIN);
    check("abc", Kind::kFloat, 0.1f);
    check("ab", Kind::kShort, -2);
    check("a", Kind::kLong, 7);
    check("", Kind::kDouble, 2.5);
    EXPECT_FALSE(reader.Find("zzzz"));
}

TEST(ChunkDataParser, NoItemsIsAnEmptyPayloadWithoutMarker) {
    ChunkDataParser parser;
    EXPECT_EQ(parser.GetChunkDataSize(), 0u);
    EXPECT_TRUE(Write(parser).empty());
    EXPECT_EQ(parser.GetLastParsedPosition(), ChunkDataParser::kNotParsed);
    EXPECT_TRUE(parser.ParseChunkData({}));
    EXPECT_EQ(parser.GetLastParsedPosition(), 0);
    EXPECT_EQ(parser.GetItemCount(), 0u);
}

TEST(ChunkDataParser, ANameFiledTwiceKeepsTheLastValue) {
    ChunkDataParser parser;
    parser.AddLong("ctaa", 1);
    parser.AddDouble("ctaa", 2.0);
    EXPECT_EQ(parser.GetItemCount(), 1u);
    EXPECT_EQ(parser.Find("ctaa")->kind, Kind::kDouble);
    EXPECT_EQ(parser.Find("ctaa")->value, 2.0);
}

TEST(ChunkDataParser, NamesTheReaderCouldNotFindAgainAreRefused) {
    ChunkDataParser parser;
    EXPECT_THROW(parser.AddLong(std::string(256, 'x'), 1), AppFrame::BadParameter);
    EXPECT_THROW(parser.AddLong(std::string("a\0b", 3), 1), AppFrame::BadParameter);
    parser.AddLong(std::string(255, 'x'), 1);  // the longest the reader looks at
    ChunkDataParser reader;
    EXPECT_TRUE(reader.ParseChunkData(Write(parser)));
    EXPECT_TRUE(reader.Find(std::string(255, 'x')));
    Bytes out(3);
    EXPECT_THROW(parser.WriteChunkData(out), AppFrame::BadParameter);
}

// A refused payload leaves the parser empty and unparsed, whatever it held before.
void ExpectRefused(const Bytes& data, const std::string& why) {
    ChunkDataParser parser = EveryKind();
    EXPECT_FALSE(parser.ParseChunkData(data)) << why;
    EXPECT_EQ(parser.GetItemCount(), 0u) << why;
    EXPECT_EQ(parser.GetLastParsedPosition(), ChunkDataParser::kNotParsed) << why;
}

TEST(ChunkDataParser, EveryTruncationIsRefused) {
    const Bytes whole = Write(EveryKind());
    // Cutting inside an item refuses; cutting exactly between items reads a shorter state,
    // as the format has no count.
    std::vector<std::size_t> itemEnds;
    ChunkDataParser prefix;
    for (std::size_t length = 1; length < whole.size(); ++length) {
        const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        if (prefix.ParseChunkData(cut)) {
            itemEnds.push_back(length);
        } else {
            ExpectRefused(cut, "cut at " + std::to_string(length));
        }
    }
    EXPECT_EQ(itemEnds, (std::vector<std::size_t>{4, 20, 32, 44, 56, 64}));
}

TEST(ChunkDataParser, WrongMarkerUnknownTagOrEndlessNameIsRefused) {
    Bytes data = Write(EveryKind());
    Bytes badMarker = data;
    badMarker[3] = 2;
    ExpectRefused(badMarker, "marker");
    ExpectRefused({1, 1, 1}, "short of a marker");
    Bytes badTag = data;
    badTag[4] = 'x';
    ExpectRefused(badTag, "tag");
    Bytes endless = {1, 1, 1, 1, 'l', '_'};
    endless.insert(endless.end(), 300, 'n');
    endless.insert(endless.end(), {0, 0, 0, 0, 0, 0, 0, 0});
    ExpectRefused(endless, "a name of 300 characters");
    Bytes trailing = data;
    trailing.push_back('l');
    ExpectRefused(trailing, "half a tag behind the items");
}

// Random bytes behind a valid marker: the parser must refuse or accept without reading a byte
// outside the data (the sanitizer builds check the reads).
TEST(ChunkDataParser, RandomPayloadsNeverReadOutsideTheData) {
    std::mt19937 random(11);
    std::uniform_int_distribution<int> length(0, 64);
    std::uniform_int_distribution<int> byte(0, 255);
    const std::uint8_t likely[] = {'l', '_', 'd', 's', 'f', 0, 'a'};
    std::uniform_int_distribution<std::size_t> pick(0, sizeof likely - 1);
    int accepted = 0;
    for (int i = 0; i < 20000; ++i) {
        Bytes data = {1, 1, 1, 1};
        const int n = length(random);
        for (int k = 0; k < n; ++k) {
            data.push_back(byte(random) < 200 ? likely[pick(random)]
                                              : static_cast<std::uint8_t>(byte(random)));
        }
        // Parse from an exactly sized heap block so that any overread is caught.
        auto exact = std::make_unique<std::uint8_t[]>(data.size());
        std::copy(data.begin(), data.end(), exact.get());
        ChunkDataParser parser;
        if (parser.ParseChunkData({exact.get(), data.size()})) ++accepted;
    }
    EXPECT_GT(accepted, 0);
}

TEST(PlugInChunk, HeaderFieldsAndSizeStayConsistent) {
    PlugInChunk chunk;
    EXPECT_EQ(chunk.GetSize(), PlugInChunk::kHeaderSize);
    EXPECT_TRUE(chunk.Payload().empty());
    chunk.SetSize(60);
    chunk.Payload()[3] = 7;
    chunk.SetIdentity({1, 2, 3, 4, std::string(40, 'n')});
    const Bytes bytes(chunk.Bytes().begin(), chunk.Bytes().end());
    ASSERT_EQ(bytes.size(), 60u);
    EXPECT_EQ(bytes[3], 60);
    EXPECT_EQ(chunk.GetName(), std::string(31, 'n'));  // cut, and still terminated
    EXPECT_EQ(bytes[55], 0);
    const PlugInChunk copy = PlugInChunk::FromBytes(bytes);
    EXPECT_EQ(copy.GetChunkId(), 4);
    EXPECT_EQ(copy.Payload()[3], 7);
    EXPECT_THROW(chunk.SetSize(55), AppFrame::BadParameter);
    EXPECT_THROW(PlugInChunk::FromBytes({bytes.data(), 59}), AppFrame::BadParameter);
    EXPECT_THROW(PlugInChunk::FromBytes({bytes.data(), 40}), AppFrame::BadParameter);
}

}  // namespace
}  // namespace vorix
