#include "serialization/ArchiveSequence.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "ArchiveTestSupport.h"

namespace vorix::Serialization::test {
namespace {

const std::string kIndexExceeded = "ArchiveSequence: index exceeded stated size of sequence";

TEST(ArchiveSequence, ElementsAreAnObjectOfNumberedValuesAfterItsSize) {
    const std::string text = WriteDocument([](XMLArchive& a) {
        ArchiveSequence list(a, 2, "list");
        list.WriteInt(5);
        list.WriteString("x");
    });
    const std::size_t open = text.find("<obj id=\"");
    ASSERT_NE(open, std::string::npos);
    EXPECT_EQ(text.substr(text.find('"', open + 9)),
              "\" name=\"list\" type=\"__archive_sequence__\">\n"
              "\t<att name=\"__size__\" type=\"i\">2</att>\n"
              "\t<att name=\"0\" type=\"i\">5</att>\n"
              "\t<att name=\"1\" type=\"str\">x</att>\n"
              "</obj>\n"
              "</obj_archive>\n" +
                  std::string(1, '\0'));
}

TEST(ArchiveSequence, EveryElementFormReadsBack) {
    const std::uint8_t bytes[] = {1, 2, 254};
    Sample object;
    object.count = 3;
    SamplePool pool;
    Reader reader(RenumberIds(WriteDocument([&](XMLArchive& a) {
                      ArchiveSequence list(a, 9, "list");
                      list.WriteBool(true);
                      list.WriteInt(-4);
                      list.WriteInt64(1LL << 50);
                      list.WriteFloat(0.25);
                      list.WriteString("s");
                      list.WriteBinary(bytes, sizeof bytes);
                      list.WriteObject(&object);
                      list.WriteObjectRef(object.Id());
                      list.WriteInt(8);
                  })),
                  pool.Factory());
    ArchiveSequence list(reader.archive, "list");
    EXPECT_EQ(list.Size(), 9);
    EXPECT_TRUE(list.ReadBool());
    EXPECT_EQ(list.ReadInt(), -4);
    EXPECT_EQ(list.ReadInt64(), 1LL << 50);
    EXPECT_EQ(list.ReadFloat(), 0.25);
    EXPECT_EQ(list.ReadString(), "s");
    std::size_t size = 0;
    const auto block = list.ReadBinary(size);
    EXPECT_EQ(std::vector<std::uint8_t>(block.get(), block.get() + size),
              std::vector<std::uint8_t>(bytes, bytes + sizeof bytes));
    Serializable* read = nullptr;
    list.ReadObject(read);
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(static_cast<Sample*>(read)->count, 3);
    EXPECT_EQ(list.ReadObjectRef(), 2u);  // renumbered: the list is 1, the object 2
    EXPECT_EQ(list.ReadInt(0), 8);
}

TEST(ArchiveSequence, WritingPastTheStatedSizeIsRefusedAndWritesNothing) {
    const std::string text = WriteDocument([](XMLArchive& a) {
        ArchiveSequence list(a, 1, "list");
        list.WriteInt(1);
        const Failure over = CatchFailure([&list] { list.WriteInt(2); });
        EXPECT_EQ(over.words, kIndexExceeded);
        EXPECT_FALSE(over.isParseError);
    });
    EXPECT_EQ(text.find("name=\"1\""), std::string::npos);
}

TEST(ArchiveSequence, ReadingPastTheStatedSizeIsRefusedThoughMoreIsStored) {
    Reader reader(
        Document("<obj id=\"0000000001\" name=\"list\" type=\"__archive_sequence__\">\n"
                 "\t<att name=\"__size__\" type=\"i\">1</att>\n"
                 "\t<att name=\"0\" type=\"i\">10</att>\n"
                 "\t<att name=\"1\" type=\"i\">11</att>\n"
                 "</obj>\n"));
    ArchiveSequence list(reader.archive, "list");
    EXPECT_EQ(list.ReadInt(), 10);
    EXPECT_EQ(CatchFailure([&list] { list.ReadInt(); }).words, kIndexExceeded);
    EXPECT_EQ(CatchFailure([&list] { list.ReadInt(0); }).words, kIndexExceeded);
}

TEST(ArchiveSequence, ReadingWithinTheSizeWhatWasNeverWrittenFindsNoElement) {
    Reader reader(WriteDocument([](XMLArchive& a) {
        ArchiveSequence list(a, 2, "list");
        list.WriteInt(1);
    }));
    ArchiveSequence list(reader.archive, "list");
    EXPECT_EQ(list.ReadInt(), 1);
    EXPECT_EQ(CatchFailure([&list] { list.ReadInt(); }).words, "cant find node with name = '1'");
}

TEST(ArchiveSequence, EmptySequenceRefusesEveryElementOperation) {
    Reader reader(WriteDocument([](XMLArchive& a) { ArchiveSequence list(a, 0, "list"); }));
    ArchiveSequence list(reader.archive, "list");
    EXPECT_EQ(list.Size(), 0);
    std::size_t size = 0;
    Serializable* object = nullptr;
    const std::vector<std::function<void()>> operations = {
        [&] { list.ReadBool(); },          [&] { list.ReadBool(true); },
        [&] { list.ReadInt(); },           [&] { list.ReadInt(1); },
        [&] { list.ReadInt64(); },         [&] { list.ReadInt64(1); },
        [&] { list.ReadFloat(); },         [&] { list.ReadFloat(1.0); },
        [&] { list.ReadString(); },        [&] { list.ReadString("x"); },
        [&] { list.ReadBinary(size); },    [&] { list.ReadObject(object); },
        [&] { list.ReadObjectRef(); },     [&] { list.WriteBool(true); },
        [&] { list.WriteInt(1); },         [&] { list.WriteInt64(1); },
        [&] { list.WriteFloat(1.0); },     [&] { list.WriteString("x"); },
        [&] { list.WriteBinary("x", 1); }, [&] { list.WriteObject(object); },
        [&] { list.WriteObjectRef(1); },
    };
    for (const auto& operation : operations) {
        EXPECT_EQ(CatchFailure(operation).words, kIndexExceeded);
    }
}

TEST(ArchiveSequence, SequenceWithoutSizeReadsAsEmpty) {
    Reader reader(
        Document("<obj id=\"0000000001\" name=\"list\" type=\"__archive_sequence__\">\n"
                 "\t<att name=\"0\" type=\"i\">10</att>\n"
                 "</obj>\n"));
    ArchiveSequence list(reader.archive, "list");
    EXPECT_EQ(list.Size(), 0);
    EXPECT_EQ(CatchFailure([&list] { list.ReadInt(); }).words, kIndexExceeded);
}

TEST(ArchiveSequence, ClosingTheSequenceReturnsToTheEnclosingScope) {
    Reader reader(WriteDocument([](XMLArchive& a) {
        { ArchiveSequence list(a, 1, "list"); }
        a.WriteInt("after", 1);
    }));
    {
        ArchiveSequence list(reader.archive, "list");
        EXPECT_FALSE(reader.archive.HasNode("after"));
    }
    EXPECT_EQ(reader.archive.ReadInt("after"), 1);
}

TEST(ArchiveSequence, WritingIntoASequenceOfAReaderIsRefused) {
    Reader reader(WriteDocument([](XMLArchive& a) { ArchiveSequence list(a, 1, "list"); }));
    ArchiveSequence list(reader.archive, "list");
    EXPECT_EQ(CatchFailure([&list] { list.WriteInt(1); }).words, "archive created as read-only");
}

TEST(ArchiveSequence, ListOfWrongTypeIsNotEntered) {
    Reader reader(Document("<obj id=\"0000000001\" name=\"list\" type=\"Sample\">\n</obj>\n"));
    EXPECT_EQ(CatchFailure([&reader] { ArchiveSequence list(reader.archive, "list"); }).words,
              "wrong type for object 'list', expected type to be '__archive_sequence__'");
}

}  // namespace
}  // namespace vorix::Serialization::test
