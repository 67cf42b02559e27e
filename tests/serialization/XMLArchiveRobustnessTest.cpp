// Damaged and hostile documents: every one must end in the archive's own failure, never in a
// crash, a stray read (the address sanitizer build watches) or another kind of exception.

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "ArchiveTestSupport.h"
#include "serialization/ArchiveSequence.h"

namespace vorix::Serialization::test {
namespace {

const std::vector<std::string> kNames = {"",     "b",   "i",    "top", "count",    "label",
                                         "link", "bin", "list", "0",   "__size__", "f"};

// Tries every kind of read of every likely name, one level into objects. Only archive failures
// are caught: anything else escapes and fails the test.
void TouchEverything(Archive& archive, int depth = 0) {
    for (const std::string& name : kNames) {
        std::size_t size = 0;
        Serializable* object = nullptr;
        archive.HasNode(name);
        CatchFailure([&] { archive.ReadBool(name); });
        CatchFailure([&] { archive.ReadInt(name, 1); });
        CatchFailure([&] { archive.ReadInt64(name); });
        CatchFailure([&] { archive.ReadFloat(name); });
        CatchFailure([&] { archive.ReadString(name); });
        CatchFailure([&] { archive.ReadBinary(name, size); });
        CatchFailure([&] { archive.ReadObject(name, object); });
        if (depth > 0) continue;
        const Failure entered = CatchFailure([&] { archive.BeginReadObject(name, "Sample"); });
        if (!entered.raised) {
            TouchEverything(archive, depth + 1);
            archive.EndReadObject();
        }
        CatchFailure([&] { ArchiveSequence list(archive, name); });
    }
    for (std::uint64_t id = 0; id < 4; ++id) {
        std::string type;
        CatchFailure([&] { archive.GetTypeOfId(id, type); });
    }
}

// Opens `text` from a heap block of exactly its size, so that any read past it is caught,
// and reads all it can. Answers how opening failed.
Failure OpenAndTouch(const std::string& text) {
    const std::unique_ptr<char[]> exact(new char[text.size()]);
    std::memcpy(exact.get(), text.data(), text.size());
    SamplePool pool;
    std::unique_ptr<XMLArchive> archive;
    const Failure opening = CatchFailure([&] {
        archive = std::make_unique<XMLArchive>(exact.get(), text.size(), pool.Factory());
        archive->BeginReading();
    });
    if (!opening.raised) TouchEverything(*archive);
    return opening;
}

// A document with every construct the format has, as a fresh process would write it, with a
// comment in front.
std::string RichDocument() {
    Sample inner;
    inner.count = 2;
    Sample outer;
    outer.count = 1;
    outer.label = "multi\nline";
    outer.link = &inner;
    inner.link = &outer;
    const std::uint8_t bytes[40] = {1, 2, 3, 250};
    return "<!-- kept by hand -->\n" + RenumberIds(WriteDocument([&](XMLArchive& a) {
               a.WriteBool("b", true);
               a.WriteInt("i", 12);
               a.WriteFloat("f", 0.5);
               a.WriteObject("top", &outer);
               a.WriteBinary("bin", bytes, sizeof bytes);
               ArchiveSequence list(a, 1, "list");
               list.WriteString("element");
           }));
}

TEST(XMLArchiveRobustness, EveryTruncationOfADocumentFailsCleanlyUntilTheRootIsClosed) {
    const std::string document = RichDocument();
    const std::size_t complete = document.find("</obj_archive>") + std::strlen("</obj_archive>");
    for (std::size_t length = 0; length <= document.size(); ++length) {
        const Failure failure = OpenAndTouch(document.substr(0, length));
        EXPECT_EQ(failure.raised, length < complete) << "length " << length;
    }
}

TEST(XMLArchiveRobustness, CompleteRichDocumentReadsBack) {
    SamplePool pool;
    Reader reader(RichDocument(), pool.Factory());
    Serializable* top = nullptr;
    reader.archive.ReadObject("top", top);
    ASSERT_EQ(pool.made.size(), 2u);
    EXPECT_EQ(pool.made[0]->label, "multi\nline");
    EXPECT_EQ(pool.made[1]->link, top);
    ArchiveSequence list(reader.archive, "list");
    EXPECT_EQ(list.ReadString(), "element");
}

// Documents assembled at random from the format's own pieces reach deep into the scanner.
TEST(XMLArchiveRobustness, DocumentsOfRandomArchivePiecesNeverEscapeAsAnythingElse) {
    const std::vector<std::string> pieces = {"<",
                                             ">",
                                             "/",
                                             "\"",
                                             "=",
                                             " ",
                                             "\n",
                                             "\t",
                                             "<obj",
                                             "<att",
                                             "</obj>",
                                             "</att>",
                                             "</obj_archive>",
                                             "<obj_archive",
                                             "name=\"",
                                             "type=\"",
                                             "id=\"",
                                             "bin_size=\"",
                                             "i",
                                             "ptr",
                                             "bin",
                                             "bool",
                                             "str",
                                             "f",
                                             "i64",
                                             "Sample",
                                             "0",
                                             "1",
                                             "0x1F",
                                             "-1",
                                             "true",
                                             "99999999999999999999",
                                             "<!--",
                                             "-->",
                                             "__size__",
                                             "__archive_sequence__",
                                             "link"};
    std::mt19937 random(20240611);
    for (int round = 0; round < 4000; ++round) {
        std::string text;
        const int count = static_cast<int>(random() % 80);
        for (int i = 0; i < count; ++i)
            text += pieces[random() % pieces.size()];
        OpenAndTouch(text);
    }
}

TEST(XMLArchiveRobustness, BinaryGarbageNeverEscapesAsAnythingElse) {
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
        std::string text(random() % 300, '\0');
        for (char& c : text)
            c = static_cast<char>(random() & 0xFF);
        OpenAndTouch(text);
    }
}

TEST(XMLArchiveRobustness, DamagedValidDocumentsNeverEscapeAsAnythingElse) {
    const std::string document = RichDocument();
    std::mt19937 random(99);
    for (int round = 0; round < 3000; ++round) {
        std::string text = document;
        for (int edit = 0; edit < 3; ++edit) {
            const std::size_t at = random() % text.size();
            switch (random() % 3) {
                case 0:
                    text[at] = static_cast<char>(random() & 0xFF);
                    break;
                case 1:
                    text.erase(at, 1 + random() % 8);
                    break;
                default:
                    text = text.substr(0, at) + "<>\"/"[random() % 4] + text.substr(at);
                    break;
            }
            if (text.empty()) text.push_back('<');
        }
        OpenAndTouch(text);
    }
}

TEST(XMLArchiveRobustness, DeepNestingIsScannedWithoutExhaustingTheStack) {
    const int depth = 200000;
    std::string text = "<obj_archive type=\"deep\">";
    for (int i = 0; i < depth; ++i)
        text += "<obj id=\"1\" name=\"\" type=\"Sample\">";
    for (int i = 0; i < depth; ++i)
        text += "</obj>";
    text += "</obj_archive>";
    Reader reader(text);
    reader.archive.BeginReadObject("", "Sample");
    EXPECT_TRUE(reader.archive.HasNode(""));

    const std::string unclosed = text.substr(0, text.find("</obj>"));
    EXPECT_EQ(OpenAndTouch(unclosed).words, "expected '<', got to end of archive");
}

// A chain of objects each referring to the next, with ids as a hand-made file may spell them.
std::string ReferenceChain(int length) {
    std::string body = "<att name=\"top\" type=\"ptr\">1</att>\n";
    for (int id = 1; id <= length; ++id) {
        body += "<obj id=\"" + std::to_string(id) + "\" name=\"\" type=\"Sample\">" +
                "<att name=\"count\" type=\"i\">" + std::to_string(id) + "</att>" +
                "<att name=\"link\" type=\"ptr\">" + std::to_string(id + 1) + "</att></obj>\n";
    }
    return Document(body);
}

TEST(XMLArchiveRobustness, ChainOfReferencesIsFollowedOnlyToALimitedDepth) {
    SamplePool pool;
    Reader shortChain(ReferenceChain(Archive::kMaxReferenceDepth - 1), pool.Factory());
    Serializable* top = nullptr;
    const Failure endOfChain = CatchFailure([&] { shortChain.archive.ReadObject("top", top); });
    EXPECT_EQ(endOfChain.words, "cant find requested node for id = '1000'");

    Reader longChain(ReferenceChain(Archive::kMaxReferenceDepth + 5), pool.Factory());
    const Failure tooDeep = CatchFailure([&] { longChain.archive.ReadObject("top", top); });
    EXPECT_EQ(tooDeep.words, "object references nested too deeply");
    EXPECT_FALSE(tooDeep.isParseError);
}

}  // namespace
}  // namespace vorix::Serialization::test
