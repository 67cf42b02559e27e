#include "ArchiveTestSupport.h"

namespace vorix::Serialization::test {
namespace {

const std::string kIndexExceeded = "ArchiveSequence: index exceeded stated size of sequence";

std::string List(const std::string& elements, const std::string& after = "") {
    return Document("<obj id=\"1\" name=\"list\" type=\"__archive_sequence__\">\n" + elements +
                    "</obj>\n" + after);
}

// Elements are read inside braces, which fixes the order of the reads.
TEST(ArchiveSequence, EveryElementFormReadsBack) {
    const std::uint8_t bytes[] = {1, 2, 254};
    Sample object(3);
    SamplePool pool;
    Reader reader(Unpadded(WriteDocument([&](XMLArchive& a) {
                      ArchiveSequence list(a, 9, "list");
                      list.WriteBool(true);
                      list.WriteInt(-4);
                      list.WriteInt64(1LL << 50);
                      list.WriteFloat(0.25);
                      list.WriteString("s");
                      list.WriteBinary(bytes, sizeof bytes);
                      list.WriteObject(&object);
                      EXPECT_TRUE(a.FindRecord(object.Id())->mComplete);
                      list.WriteObjectRef(object.Id());
                      list.WriteInt(8);
                  })),
                  pool.Factory());
    ArchiveSequence list(reader.archive, "list");
    EXPECT_EQ((std::tuple{list.ReadBool(), list.ReadInt(), list.ReadInt64(), list.ReadFloat(),
                          list.ReadString()}),
              (std::tuple{true, -4, 1LL << 50, 0.25, "s"}));
    std::size_t size = 0;
    const auto block = list.ReadBinary(size);
    EXPECT_EQ(std::vector(block.get(), block.get() + size), std::vector(bytes, bytes + 3));
    Serializable* read = nullptr;
    list.ReadObject(read);
    EXPECT_EQ((std::tuple{read, pool.made.at(0)->count, list.ReadObjectRef(), list.ReadInt(0)}),
              (std::tuple{pool.made.at(0).get(), 3, object.Id(), 8}));
}

// A list without a stated size is empty, whatever it holds. The reads with a default are the
// forms the round trip does not reach.
TEST(ArchiveSequence, SequenceWithoutSizeRefusesReadsWithDefaultAndWrites) {
    Reader reader(List("\t<att name=\"0\" type=\"i\">10</att>\n"));
    ArchiveSequence list(reader.archive, "list");
    const std::function<void()> operations[] = {
        [&] { list.ReadInt(); },      [&] { list.ReadBool(true); },  [&] { list.ReadInt64(1); },
        [&] { list.ReadFloat(1.0); }, [&] { list.ReadString("x"); }, [&] { list.WriteInt(1); }};
    for (const auto& operation : operations)
        EXPECT_EQ(CatchFailure(operation).words, kIndexExceeded);
}

// Element "3" is stored, but the list says it has three. Writing into a reader's list reaches
// the reader, which refuses.
TEST(ArchiveSequence, ReadingStopsAtTheStatedSizeAndClosingReturnsToTheEnclosingScope) {
    Reader reader(
        List("\t<att name=\"__size__\" type=\"i\">3</att>\n"
             "\t<att name=\"0\" type=\"i\">10</att><att name=\"3\" type=\"i\">13</att>\n",
             "<att name=\"after\" type=\"i\">1</att>\n"));
    {
        ArchiveSequence list(reader.archive, "list");
        EXPECT_FALSE(reader.archive.HasNode("after"));
        EXPECT_EQ(list.ReadInt(), 10);
        EXPECT_EQ(CatchFailure([&] { list.ReadInt(); }).words, "cant find node with name = '1'");
        EXPECT_EQ(CatchFailure([&] { list.WriteInt(1); }).words, "archive created as read-only");
        const Failure over = CatchFailure([&list] { list.ReadInt(0); });
        EXPECT_EQ(std::tuple(over.words, over.isParseError), std::tuple(kIndexExceeded, false));
    }
    EXPECT_EQ(reader.archive.ReadInt("after"), 1);
}

}  // namespace
}  // namespace vorix::Serialization::test
