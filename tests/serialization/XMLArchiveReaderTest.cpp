#include "ArchiveTestSupport.h"

namespace vorix::Serialization::test {
namespace {

// "self" is read first: a reference is found by its id, not as the first object of its (empty)
// name, which is "top". Each object is made once, however often it is referred to; without a
// maker for its type, a reference reads as null.
TEST(XMLArchiveReader, EverythingWrittenReadsBackWithEachObjectMadeOnce) {
    SampleDocument sample;
    SamplePool pool;
    Reader reader(Unpadded(sample.Text()), pool.Factory());
    XMLArchive& a = reader.archive;
    sample.bytes.push_back(0);  // the block has one byte more than the value, and it is zero
    EXPECT_EQ(ReadBlock(a, "bin"), sample.bytes);
    EXPECT_EQ(std::tuple(a.ReadObjectRef("p"), a.ReadString("s"), a.GetType()),
              std::tuple(987654321012ULL, "two words\nand a line", "test"));
    // Sixteen places give an ordinary double back exactly, but lose digits of a tiny one.
    EXPECT_EQ(std::tuple(a.ReadFloat("0"), a.ReadFloat("1"), a.ReadFloat("2")),
              std::tuple(-2.5, 1.0 / 3.0, 1.2346e-12));
    EXPECT_EQ(std::tuple(a.ReadInt64("big"), a.ReadBool("no"), a.ReadBool("yes")),
              std::tuple(INT64_MIN, false, true));
    Sample* self = pool.Read(a, "self");
    Sample* outer = pool.Read(a, "top");
    ASSERT_EQ(pool.made.size(), 3u);
    const auto* inner = static_cast<Sample*>(outer->link);
    EXPECT_EQ(std::tuple(outer->link, inner->link, self->link), std::tuple(inner, outer, self));
    EXPECT_EQ(std::tuple(outer->count, inner->count, self->count), std::tuple(1, 2, 3));
    EXPECT_EQ(pool.Read(a, "top"), outer);
    EXPECT_EQ(a.FindRecord(sample.outer.Id())->mRefCount, 3u);
    for (auto factory : {std::optional<ObjectFactory>{}, std::optional(ObjectFactory{})})
        EXPECT_EQ(SamplePool::Read(Reader(reader.text, factory).archive, "top"), nullptr);
}

// Integers read with base 0 and saturate, references as decimal, and an object's id with base 0
// too: "0000000010" is 8, met by a reference "8" and missed by "10". Binary is read up to the
// stated size, missing bytes zero, a lower-case letter counting as the digit its upper case would
// be. Saved documents have always read so.
TEST(XMLArchiveReader, HandWrittenValuesReadAsTheyAlwaysHaveAndDefaultsOnlyForAbsentNames) {
    const std::string text = Document(
        "<att name=\"octal\" type=\"i\">010</att><att name=\"hex\" type=\"i\">0x1F</att>\n"
        "<att name=\"spaced\" type=\"i\"> -12</att><att name=\"junk\" type=\"i\">abc</att>\n"
        "<att name=\"huge\" type=\"i\">99999999999</att><att name=\"ref\" type=\"ptr\">010</att>\n"
        "<att name=\"hex64\" type=\"i64\">0x7FFFFFFFFFFFFFFF</att>\n"
        "<obj id=\"0000000010\" name=\"\" type=\"Sample\">\n"
        "\t<att name=\"count\" type=\"i\">4</att>\n</obj>\n"
        "<att name=\"ten\" type=\"ptr\">10</att><att name=\"eight\" type=\"ptr\">8</att>\n"
        "<att name=\"lower\" type=\"bin\" bin_size=\"1\">ab</att>\n"
        "<att name=\"short\" type=\"bin\" bin_size=\"3\">0102</att>\n"
        "<att name=\"long\" type=\"bin\" bin_size=\"1\">0102</att>\n");
    SamplePool pool;
    Reader reader(text, pool.Factory());
    XMLArchive& a = reader.archive;
    EXPECT_EQ(std::tuple(a.ReadInt("octal"), a.ReadInt("hex", 0), a.ReadInt("spaced"),
                         a.ReadInt("huge"), a.ReadInt("junk"), a.ReadInt64("hex64")),
              std::tuple(8, 31, -12, INT32_MAX, 0, INT64_MAX));
    EXPECT_EQ(std::tuple(a.ReadObjectRef("ref"), pool.Read(a, "eight")->count), std::tuple(10u, 4));
    EXPECT_EQ(CatchFailure([&] { pool.Read(a, "ten"); }).words,
              "cant find requested node for id = '10'");
    EXPECT_EQ(ReadBlock(a, "lower"), (std::vector<std::uint8_t>{0xCB, 0}));  // 'a' counts as 42
    EXPECT_EQ(ReadBlock(a, "short"), (std::vector<std::uint8_t>{1, 2, 0, 0}));
    EXPECT_EQ(ReadBlock(a, "long"), (std::vector<std::uint8_t>{1, 0}));
    EXPECT_EQ(std::tuple(a.ReadInt("x", -7), a.ReadBool("x", true), a.ReadInt64("x", 1LL << 40),
                         a.ReadFloat("x", 2.5), a.ReadString("x", "fallback")),
              std::tuple(-7, true, 1LL << 40, 2.5, "fallback"));
}

// Comments and unknown tags before the root and between values are passed over; the root is
// the first element among the first thousand tags.
TEST(XMLArchiveReader, DocumentIsFoundAfterDeclarationCommentsAndStrayText) {
    const std::string body =
        "<att name=\"a\" type=\"i\">1</att>\n<!-- note -->\n<br/>\n"
        "<att name=\"b\" type=\"i\">2</att>\n";
    using namespace std::string_literals;
    std::string comments;
    for (int i = 0; i < 999; ++i)
        comments += "<!---->";
    for (const std::string& prefix :
         {""s, comments, "<?xml version=\"1.0\"?>\n<!-- by hand -->\n"s,
          "<!-- one --><!-- two -->\n"s, "Stray > text\n<!DOCTYPE x>\n<3>\n"s}) {
        Reader reader(prefix + Document(body) + "trailing words <b>");
        EXPECT_EQ(reader.archive.ReadInt("a") * 10 + reader.archive.ReadInt("b"), 12) << prefix;
    }
    Reader embedded(WriteDocument([](XMLArchive& a) { a.WriteInt("v", 3); }, true));
    EXPECT_EQ(embedded.archive.ReadInt("v"), 3);
    EXPECT_EQ(CatchFailure([&] { Reader(comments + "<!---->" + Document(body)); }).words,
              "cant find root node, may not be archive data");
}

// Inside the object the root's "link" is not seen; back at the root, the first "count" is.
TEST(XMLArchiveReader, NamesAreLookedUpInTheInnermostObjectAndTheFirstOfEqualNamesWins) {
    Reader reader(Document(
        "<att name=\"count\" type=\"i\">1</att>\n<att name=\"count\" type=\"i\">5</att>\n"
        "<att name=\"link\" type=\"i\">0</att>\n<obj id=\"1\" name=\"o\" type=\"Sample\">\n"
        "\t<att name=\"count\" type=\"i\">2</att><att name=\"inner\" type=\"i\">2</att></obj>\n"));
    Sample object;
    object.Load(reader.archive, "o");
    reader.archive.EndReadObject();  // the root stays open
    EXPECT_EQ(std::tuple(object.count, reader.archive.ReadInt("count")), std::tuple(2, 1));
    EXPECT_FALSE(reader.archive.HasNode("inner"));
}

}  // namespace
}  // namespace vorix::Serialization::test
