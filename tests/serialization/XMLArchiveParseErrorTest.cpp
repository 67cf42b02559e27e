#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "ArchiveTestSupport.h"
#include "serialization/XMLArchiveScanner.h"

namespace vorix::Serialization::test {
namespace {

// A crafted document, what is done with it (nothing: opening it fails), and the failure.
struct ErrorCase {
    std::string document;
    std::function<void(Archive&)> use;
    std::string words;
    bool isParseError;
};

void ExpectFailures(const std::vector<ErrorCase>& cases) {
    for (const ErrorCase& c : cases) {
        const Failure failure = CatchFailure([&c] {
            SamplePool pool;
            Reader reader(c.document, pool.Factory());
            if (c.use) c.use(reader.archive);
        });
        EXPECT_EQ(failure.words, c.words) << c.document;
        EXPECT_TRUE(failure.raised) << c.document;
        EXPECT_EQ(failure.isParseError, c.isParseError) << c.words;
    }
}

const std::string kRoot = "<obj_archive type=\"t\">";
const std::string kNoRoot = "cant find root node, may not be archive data";
const std::string kNoGreater = "expected '>', got to end of archive";
const std::string kNoLess = "expected '<', got to end of archive";
const std::string kNoQuotes = "cant find any attribute value in quotes \"*\"";

TEST(XMLArchiveParseError, DamagedDocumentsFailToOpenWithTheScannersWords) {
    ExpectFailures({
        {"", {}, kNoRoot, true},
        {"plain words < a> <1> <", {}, kNoRoot, true},
        {"<?xml version=\"1.0\"?><!-- never closed", {}, kNoRoot, true},
        {"<obj_archive type=\"t\"", {}, kNoGreater, true},
        {kRoot + "<att name=\"a\" type=\"i\"", {}, kNoGreater, true},
        {kRoot + "<!-- open comment", {}, kNoGreater, true},
        {kRoot + "</obj_archiv", {}, kNoGreater, true},
        {kRoot + "<att name=\"a\" type=\"i\">1</att>\n", {}, kNoLess, true},
        {Document("<obj id=\"1\" name=\"o\" type=\"T\">"), {}, kNoLess, true},
        {kRoot + "<att name=\"a\" type=\"i\">1</at>",
         {},
         "expected '</att>', got to end of archive",
         true},
        {"<obj_archive type>",
         {},
         kNoQuotes + " for attribute 'type'\ncurrent node is : \n"
                     "<obj_archive type>",
         true},
        {"<obj_archive type=\"t>", {}, kNoQuotes, true},
    });
}

const std::string kValues = Document(
    "<att name=\"n\" type=\"i\">1</att>\n"
    "<att name=\"bare\">1</att>\n"
    "<att name=\"flag\" type=\"bool\">yes</att>\n"
    "<att name=\"blob\" type=\"bin\">00</att>\n"
    "<att name=\"negative\" type=\"bin\" bin_size=\"-1\">00</att>\n"
    "<att name=\"oversized\" type=\"bin\" bin_size=\"99999999999999\">00</att>\n"
    "<att name=\"dangling\" type=\"ptr\">5</att>\n"
    "<obj id=\"0000000001\" name=\"o\" type=\"Sample\">\n</obj>\n"
    "<obj id=\"0000000002\" name=\"plain\">\n</obj>\n"
    "<att name=\"plain ref\" type=\"ptr\">2</att>\n");

void ReadObject(Archive& archive, std::string_view name) {
    Serializable* object = nullptr;
    archive.ReadObject(name, object);
}

TEST(XMLArchiveParseError, MisusedOrMismatchedNodesFailWithTheirWordsAndClass) {
    ExpectFailures({
        {kValues, [](Archive& a) { a.BeginReadObject("x", "Sample"); }, "cant find node 'x'",
         false},
        {kValues, [](Archive& a) { a.ReadInt("x"); }, "cant find node with name = 'x'", false},
        {kValues, [](Archive& a) { ReadObject(a, "dangling"); },
         "cant find requested node for id = '5'", false},
        {kValues, [](Archive& a) { a.BeginReadObject("n", "Sample"); }, "node is not an object",
         false},
        {kValues, [](Archive& a) { a.ReadInt("o"); }, "node is not an attribute 'o'", true},
        // A root ended by an object's close tag stands in the id map, but is not an object.
        {"<obj_archive id=\"3\" type=\"t\"><att name=\"p\" type=\"ptr\">3</att></obj>",
         [](Archive& a) { ReadObject(a, "p"); }, "node is not an object ''", true},
        {kValues, [](Archive& a) { a.ReadInt("bare"); }, "cant find type for attribute 'bare'",
         true},
        {kValues, [](Archive& a) { a.BeginReadObject("plain", "Sample"); },
         "cant find type for object 'plain'", true},
        {kValues, [](Archive& a) { ReadObject(a, "plain ref"); },
         "cant find type for object 'plain'", true},
        {kValues, [](Archive& a) { a.BeginReadObject("o", "Other"); },
         "wrong type for object 'o', expected type to be 'Other'", false},
        {kValues, [](Archive& a) { a.ReadString("n"); }, "wrong type for attribute 'n'", false},
        {kValues, [](Archive& a) { a.ReadInt64("n", 0); }, "wrong type for attribute 'n'", false},
        {kValues, [](Archive& a) { a.ReadBool("flag"); }, "boolean has unknown value of 'flag'",
         false},
    });
}

TEST(XMLArchiveParseError, BinaryWithoutAUsableSizeIsRefused) {
    for (const char* name : {"blob", "negative", "oversized"}) {
        ExpectFailures({{kValues,
                         [name](Archive& a) {
                             std::size_t size = 0;
                             a.ReadBinary(name, size);
                         },
                         "cant find size for binary element", false}});
    }
}

TEST(XMLArchiveParseError, ArchiveUsedWithoutTextOrNodeIsAUsageError) {
    EXPECT_EQ(CatchFailure([] { XMLArchive archive(nullptr, 10); }).words,
              "the input stream is null!");
    std::ostringstream stream;
    XMLArchive writer(stream, "t");
    const Failure noNode = CatchFailure([&writer] { writer.BeginReading(); });
    EXPECT_EQ(noNode.words, "node is null, or start is null");
    EXPECT_FALSE(noNode.isParseError);
}

TEST(XMLArchiveParseError, NodeOfUnknownKindIsAParseError) {
    const std::string text = "<x>";
    XMLArchiveScanner scanner(text.data(), text.size());
    ArchiveNode node;
    node.mKind = static_cast<ArchiveNode::Kind>(7);
    node.mStart = text.data();
    const Failure failure = CatchFailure([&] { scanner.ParseNode(&node, false); });
    EXPECT_EQ(failure.words, "encountered unknown node type: 7");
    EXPECT_TRUE(failure.isParseError);
}

TEST(XMLArchiveParseError, SecondLineNamesTheFailedCheck) {
    Reader reader(kValues);
    const std::string text = CatchFailure([&reader] { reader.archive.ReadInt("x"); }).text;
    EXPECT_EQ(text.substr(text.find('\n') + 1)
                  .rfind("Expression 'node != nullptr' failed in XMLArchiveReader.cpp:", 0),
              0u)
        << text;
}

}  // namespace
}  // namespace vorix::Serialization::test
