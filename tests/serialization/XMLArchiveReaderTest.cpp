#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "ArchiveTestSupport.h"
#include "serialization/ObjectId.h"

namespace vorix::Serialization::test {
namespace {

using Int32 = std::numeric_limits<std::int32_t>;
using Int64 = std::numeric_limits<std::int64_t>;

// ---- Values ------------------------------------------------------------------------------

TEST(XMLArchiveReader, EveryValueKindReadsBackInAnyOrder) {
    std::vector<std::uint8_t> data(33);
    for (std::size_t i = 0; i < data.size(); ++i)
        data[i] = static_cast<std::uint8_t>(255 - i * 7);
    Reader reader(WriteDocument([&data](XMLArchive& a) {
        a.WriteBool("yes", true);
        a.WriteBool("no", false);
        a.WriteInt("min", Int32::min());
        a.WriteInt64("big", Int64::min());
        a.WriteFloat("f", -1234.5678901234567);
        a.WriteString("s", "line one\n\tline two");
        a.WriteString("empty", "");
        a.WriteBinary("bin", data.data(), data.size());
        a.WriteObjectRef("p", 987654321012ULL);
    }));
    XMLArchive& a = reader.archive;
    EXPECT_EQ(a.ReadObjectRef("p"), 987654321012ULL);
    std::size_t size = 0;
    const auto bytes = a.ReadBinary("bin", size);
    EXPECT_EQ(std::vector<std::uint8_t>(bytes.get(), bytes.get() + size + 1), [&data] {
        auto d = data;
        d.push_back(0);
        return d;
    }());
    EXPECT_EQ(a.ReadString("empty") + a.ReadString("s"), "line one\n\tline two");
    EXPECT_DOUBLE_EQ(a.ReadFloat("f"), -1234.5678901234567);
    EXPECT_EQ(a.ReadInt64("big"), Int64::min());
    EXPECT_EQ(a.ReadInt("min"), Int32::min());
    EXPECT_FALSE(a.ReadBool("no"));
    EXPECT_TRUE(a.ReadBool("yes"));
    EXPECT_EQ(a.GetType(), "test");
}

TEST(XMLArchiveReader, FloatsKeepFifteenDigitsButTinyValuesLoseThem) {
    const std::vector<double> values = {0.1, 1.0 / 3.0, 123456.789012345, -9.87654321e9};
    Reader reader(WriteDocument([&values](XMLArchive& a) {
        for (std::size_t i = 0; i < values.size(); ++i)
            a.WriteFloat(std::to_string(i), values[i]);
        a.WriteFloat("tiny", 1.23456789e-12);
    }));
    for (std::size_t i = 0; i < values.size(); ++i) {
        EXPECT_NEAR(reader.archive.ReadFloat(std::to_string(i)), values[i],
                    std::abs(values[i]) * 1e-15);
    }
    EXPECT_DOUBLE_EQ(reader.archive.ReadFloat("tiny"), 1.2346e-12);
}

TEST(XMLArchiveReader, ReadWithDefaultAnswersTheDefaultOnlyForAnAbsentName) {
    Reader reader(Document("<att name=\"i\" type=\"i\">4</att>\n"));
    XMLArchive& a = reader.archive;
    EXPECT_EQ(a.ReadInt("i", -7), 4);
    EXPECT_EQ(a.ReadInt("x", -7), -7);
    EXPECT_TRUE(a.ReadBool("x", true));
    EXPECT_EQ(a.ReadInt64("x", 1LL << 40), 1LL << 40);
    EXPECT_EQ(a.ReadFloat("x", 2.5), 2.5);
    EXPECT_EQ(a.ReadString("x", "fallback"), "fallback");
}

TEST(XMLArchiveReader, IntegersReadWithBaseZeroAndReferencesAsDecimal) {
    Reader reader(
        Document("<att name=\"octal\" type=\"i\">010</att>\n"
                 "<att name=\"hex\" type=\"i\">0x1F</att>\n"
                 "<att name=\"spaced\" type=\"i\"> -12</att>\n"
                 "<att name=\"huge\" type=\"i\">99999999999</att>\n"
                 "<att name=\"junk\" type=\"i\">abc</att>\n"
                 "<att name=\"hex64\" type=\"i64\">0x7FFFFFFFFFFFFFFF</att>\n"
                 "<att name=\"ref\" type=\"ptr\">010</att>\n"));
    XMLArchive& a = reader.archive;
    EXPECT_EQ(a.ReadInt("octal"), 8);
    EXPECT_EQ(a.ReadInt("hex"), 31);
    EXPECT_EQ(a.ReadInt("spaced"), -12);
    EXPECT_EQ(a.ReadInt("huge"), Int32::max());
    EXPECT_EQ(a.ReadInt("junk"), 0);
    EXPECT_EQ(a.ReadInt64("hex64"), Int64::max());
    EXPECT_EQ(a.ReadObjectRef("ref"), 10u);
}

TEST(XMLArchiveReader, BinaryReadsDigitsAcrossWhiteSpaceAndLeavesMissingBytesZero) {
    Reader reader(
        Document("<att name=\"b\" type=\"bin\" bin_size=\"4\">\n\t0A F\n\tF10 7F\n</att>\n"
                 "<att name=\"lower\" type=\"bin\" bin_size=\"1\">ab</att>\n"
                 "<att name=\"short\" type=\"bin\" bin_size=\"3\">0102</att>\n"
                 "<att name=\"long\" type=\"bin\" bin_size=\"1\">0102</att>\n"));
    const auto bytesOf = [&reader](const char* name) {
        std::size_t size = 99;
        const auto block = reader.archive.ReadBinary(name, size);
        return std::vector<int>(block.get(), block.get() + size + 1);
    };
    EXPECT_EQ(bytesOf("b"), (std::vector<int>{0x0A, 0xFF, 0x10, 0x7F, 0}));
    EXPECT_EQ(bytesOf("lower"), (std::vector<int>{0xCB, 0}));  // 'a' counts as 42
    EXPECT_EQ(bytesOf("short"), (std::vector<int>{1, 2, 0, 0}));
    EXPECT_EQ(bytesOf("long"), (std::vector<int>{1, 0}));
}

// ---- Finding the document ------------------------------------------------------------------

const std::string kBody = "<att name=\"v\" type=\"i\">3</att>\n";

class DocumentFraming : public ::testing::TestWithParam<std::string> {};

TEST_P(DocumentFraming, ReadsAlike) {
    Reader reader(GetParam() + Document(kBody) + "trailing words <b>");
    EXPECT_EQ(reader.archive.GetType(), "test");
    EXPECT_EQ(reader.archive.ReadInt("v"), 3);
}

INSTANTIATE_TEST_SUITE_P(
    XMLArchiveReader, DocumentFraming,
    ::testing::Values("", "<?xml version=\"1.0\"?>\n", "<!-- saved by hand -->\n",
                      "<?xml version=\"1.0\"?>\n<!-- one --><!-- two -->\n",
                      "Some settings text > with marks\n<!DOCTYPE x>\n<3 hearts>\n"));

TEST(XMLArchiveReader, EmbeddedWriterOutputReadsAsTheFullDocument) {
    Reader reader(WriteDocument([](XMLArchive& a) { a.WriteInt("v", 3); }, true));
    EXPECT_EQ(reader.archive.ReadInt("v"), 3);
}

TEST(XMLArchiveReader, RootMustBeAmongTheFirstThousandTags) {
    std::string comments;
    for (int i = 0; i < 999; ++i)
        comments += "<!---->";
    EXPECT_EQ(Reader(comments + Document(kBody)).archive.ReadInt("v"), 3);
    const std::string tooLate = comments + "<!---->" + Document(kBody);
    EXPECT_EQ(CatchFailure([&tooLate] { XMLArchive(tooLate.data(), tooLate.size()); }).words,
              "cant find root node, may not be archive data");
}

TEST(XMLArchiveReader, AnyFirstElementIsTakenAsTheRoot) {
    Reader reader("<settings kind=\"x\" type=\"other\">" + kBody + "</obj_archive>");
    EXPECT_EQ(reader.archive.GetType(), "other");
    EXPECT_EQ(reader.archive.ReadInt("v"), 3);
}

TEST(XMLArchiveReader, SmallestDocumentAndEmptyObjectHaveNoNodes) {
    Reader reader(
        "<obj_archive type=\"t\"><obj id=\"1\" name=\"e\" type=\"T\">\n</obj></obj_archive>");
    EXPECT_FALSE(reader.archive.HasNode("") || reader.archive.HasNode("t"));
    reader.archive.BeginReadObject("e", "T");
    EXPECT_FALSE(reader.archive.HasNode("") || reader.archive.HasNode("e"));
}

TEST(XMLArchiveReader, CommentsAndUnknownTagsBetweenValuesArePassedOver) {
    Reader reader(
        Document("<att name=\"a\" type=\"i\">1</att>\n<!-- note -->\n<br/>\n"
                 "<att name=\"b\" type=\"i\">2</att>\n"));
    EXPECT_EQ(reader.archive.ReadInt("a") + reader.archive.ReadInt("b"), 3);
}

// ---- Names and scopes ----------------------------------------------------------------------

TEST(XMLArchiveReader, NamesAreLookedUpInTheInnermostObjectOnly) {
    Reader reader(
        Document("<att name=\"outer\" type=\"i\">1</att>\n"
                 "<obj id=\"0000000001\" name=\"o\" type=\"Sample\">\n"
                 "\t<att name=\"inner\" type=\"i\">2</att>\n</obj>\n"));
    XMLArchive& a = reader.archive;
    EXPECT_FALSE(a.HasNode("inner"));
    a.BeginReadObject("o", "Sample");
    EXPECT_FALSE(a.HasNode("outer"));
    EXPECT_EQ(a.ReadInt("inner"), 2);
    a.EndReadObject();
    a.EndReadObject();  // the root stays open
    EXPECT_EQ(a.ReadInt("outer"), 1);
}

TEST(XMLArchiveReader, FirstOfEqualNamesIsTakenAndKeysAreFoundInNames) {
    // The key search is plain text, so "type" inside a name is taken for the type key.
    Reader reader(
        Document("<att name=\"v\" type=\"i\">1</att>\n<att name=\"v\" type=\"i\">2</att>\n"
                 "<att name=\"prototype\" type=\"i\">1</att>\n"));
    EXPECT_EQ(reader.archive.ReadInt("v"), 1);
    EXPECT_EQ(CatchFailure([&reader] { reader.archive.ReadInt("prototype"); }).words,
              "wrong type for attribute 'prototype'");
}

TEST(XMLArchiveReader, SavedObjectsLoadByNameWithTheirValues) {
    Sample first(1, "one");
    Sample second(2, "two");
    Reader reader(WriteDocument([&](XMLArchive& a) {
        first.Save(a, "first");
        second.Save(a, "second");
    }));
    Sample readSecond;
    Sample readFirst;
    readSecond.Load(reader.archive, "second");
    readFirst.Load(reader.archive, "first");
    EXPECT_EQ(readFirst.count + readSecond.count, 3);
    EXPECT_EQ(readFirst.label + readSecond.label, "onetwo");
}

// ---- References ----------------------------------------------------------------------------

// Reads `name` as a reference from a document whose ids are numbered as in a fresh process.
struct ReferenceReader {
    explicit ReferenceReader(const std::function<void(XMLArchive&)>& body)
        : reader(RenumberIds(WriteDocument(body)), pool.Factory()) {}
    Sample* Read(std::string_view name) {
        Serializable* object = nullptr;
        reader.archive.ReadObject(name, object);
        return static_cast<Sample*>(object);
    }
    SamplePool pool;
    Reader reader;
};

TEST(XMLArchiveReader, ObjectReferredTwiceIsMadeOnceAndCounted) {
    Sample shared(9);
    ReferenceReader references([&shared](XMLArchive& a) {
        a.WriteObject("first", &shared);
        a.WriteObject("second", &shared);
    });
    Sample* second = references.Read("second");
    EXPECT_EQ(references.Read("first"), second);
    ASSERT_EQ(references.pool.made.size(), 1u);
    EXPECT_EQ(second->count, 9);
    EXPECT_EQ(references.reader.archive.FindRecord(1)->mRefCount, 2u);
}

TEST(XMLArchiveReader, CycleOfReferencesResolvesToTheObjectUnderConstruction) {
    Sample a(1);
    Sample b(2);
    a.link = &b;
    b.link = &a;
    ReferenceReader references([&a](XMLArchive& archive) { archive.WriteObject("top", &a); });
    Sample* readA = references.Read("top");
    ASSERT_EQ(references.pool.made.size(), 2u);
    const Sample* readB = static_cast<Sample*>(readA->link);
    EXPECT_EQ(readA->count * 10 + readB->count, 12);
    EXPECT_EQ(readB->link, readA);
}

TEST(XMLArchiveReader, ObjectsReferredFromOneScopeOrAnotherKeepTheirOwnValues) {
    Sample first(10);
    Sample second(20);
    Sample holder;
    holder.link = &second;
    ReferenceReader references([&](XMLArchive& a) {
        a.WriteObject("first", &first);
        a.WriteObject("second", &second);
        holder.Save(a, "holder");
    });
    Sample readHolder;
    readHolder.Load(references.reader.archive, "holder");
    EXPECT_EQ(static_cast<Sample*>(readHolder.link)->count, 20);
    EXPECT_EQ(references.Read("second"), readHolder.link);
    EXPECT_EQ(references.Read("first")->count, 10);
}

TEST(XMLArchiveReader, ReferenceReadsAsNullWithoutFactoryOrForAnUnknownType) {
    Sample object;
    const std::string text =
        RenumberIds(WriteDocument([&object](XMLArchive& a) { a.WriteObject("top", &object); }));
    for (auto factory :
         {std::optional<ObjectFactory>{}, std::optional<ObjectFactory>(ObjectFactory{})}) {
        Serializable* read = &object;
        Reader(text, factory).archive.ReadObject("top", read);
        EXPECT_EQ(read, nullptr);
    }
}

TEST(XMLArchiveReader, PaddedIdsFromEightOnDoNotMeetTheirReferences) {
    // An object's id is read with base 0, so "0000000010" is 8: a reference "10" misses it and
    // "8" meets it. Documents have always read so.
    SamplePool pool;
    Reader reader(Document("<obj id=\"0000000010\" name=\"\" type=\"Sample\">\n"
                           "\t<att name=\"count\" type=\"i\">4</att>\n</obj>\n"
                           "<att name=\"ten\" type=\"ptr\">10</att>\n"
                           "<att name=\"eight\" type=\"ptr\">8</att>\n"),
                  pool.Factory());
    Serializable* read = nullptr;
    EXPECT_EQ(CatchFailure([&] { reader.archive.ReadObject("ten", read); }).words,
              "cant find requested node for id = '10'");
    reader.archive.ReadObject("eight", read);
    EXPECT_EQ(static_cast<Sample*>(read)->count, 4);
}

TEST(XMLArchiveReader, WriterOutputWithIdsFromEightOnDoesNotReadBack) {
    while (NextObjectId() < 8) {
    }
    Sample object;
    SamplePool pool;
    Reader reader(WriteDocument([&object](XMLArchive& a) { a.WriteObject("top", &object); }),
                  pool.Factory());
    Serializable* read = nullptr;
    EXPECT_EQ(CatchFailure([&] { reader.archive.ReadObject("top", read); }).words,
              "cant find requested node for id = '" + std::to_string(object.Id()) + "'");
}

}  // namespace
}  // namespace vorix::Serialization::test
