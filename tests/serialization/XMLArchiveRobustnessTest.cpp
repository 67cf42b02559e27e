// Damaged and hostile documents: every one must end in the archive's own failure, never in a
// crash, a stray read (the address sanitizer build watches) or another kind of exception.

#include <cstring>
#include <random>

#include "ArchiveTestSupport.h"

namespace vorix::Serialization::test {
namespace {

// Tries every kind of read of likely names, one level into objects.
void TouchEverything(Archive& a, int depth = 0) {
    for (const char* name : {"", "0", "yes", "big", "s", "bin", "p", "link", "list", "count"}) {
        const std::function<void()> reads[] = {
            [&] { a.ReadBool(name); },          [&] { a.ReadInt(name, 1); },
            [&] { a.ReadInt64(name); },         [&] { a.ReadFloat(name); },
            [&] { a.ReadString(name); },        [&] { ReadBlock(a, name); },
            [&] { SamplePool::Read(a, name); }, [&] { ArchiveSequence{a, name}; }};
        for (const auto& read : reads)
            CatchFailure(read);
        if (depth == 0 && !CatchFailure([&] { a.BeginReadObject(name, "Sample"); }).raised) {
            TouchEverything(a, depth + 1);
            a.EndReadObject();
        }
    }
}

// Opens `text` from a block of exactly its size, so that any read past it is caught, and reads
// all it can. Answers how opening failed.
Failure OpenAndTouch(const std::string& text) {
    const std::vector<char> exact(text.begin(), text.end());
    SamplePool pool;
    return CatchFailure([&] {
        XMLArchive archive(exact.data(), exact.size(), pool.Factory());
        archive.BeginReading();
        TouchEverything(archive);
    });
}

// A document fails to open at every length short of its root's close tag.
TEST(XMLArchiveRobustness, TruncatedDocumentsAndBinaryGarbageFailCleanly) {
    const std::string document = "<!-- kept -->\n" + Unpadded(SampleDocument().Text());
    const std::size_t complete = document.find("</obj_archive>") + std::strlen("</obj_archive>");
    for (std::size_t length = 0; length <= document.size(); ++length)
        EXPECT_EQ(OpenAndTouch(document.substr(0, length)).raised, length < complete) << length;
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
        std::string text;
        for (auto length = random() % 300; length > 0; --length)
            text += static_cast<char>(random() & 0xFF);
        OpenAndTouch(text);
    }
}

TEST(XMLArchiveRobustness, DeepNestingIsScannedWithoutExhaustingTheStack) {
    std::string text = "<obj_archive type=\"deep\">";
    for (int i = 0; i < 200000; ++i)
        text += "<obj id=\"1\" name=\"\" type=\"Sample\">";
    for (int i = 0; i < 200000; ++i)
        text += "</obj>";
    Reader reader(text + "</obj_archive>");
    reader.archive.BeginReadObject("", "Sample");
    EXPECT_TRUE(reader.archive.HasNode(""));
}

// A chain of objects each referring to the next, the last one to one that is not there.
TEST(XMLArchiveRobustness, ChainOfReferencesIsFollowedOnlyToALimitedDepth) {
    const auto followChain = [](int length) {
        std::string body = "<att name=\"top\" type=\"ptr\">1</att>\n";
        for (int id = 1; id <= length; ++id)
            body += "<obj id=\"" + std::to_string(id) + "\" name=\"\" type=\"Sample\">" +
                    "<att name=\"link\" type=\"ptr\">" + std::to_string(id + 1) + "</att></obj>\n";
        SamplePool pool;
        Reader reader(Document(body), pool.Factory());
        return CatchFailure([&] { pool.Read(reader.archive, "top"); });
    };
    EXPECT_EQ(followChain(Archive::kMaxReferenceDepth - 1).words,
              "cant find requested node for id = '1000'");
    const Failure tooDeep = followChain(Archive::kMaxReferenceDepth + 5);
    EXPECT_EQ(std::tuple(tooDeep.words, tooDeep.isParseError),
              std::tuple("object references nested too deeply", false));
}

}  // namespace
}  // namespace vorix::Serialization::test
