// Every failure is an Eel::Exception whose first line is the failure's own words and whose
// second names the check that refused.

#include "ArchiveTestSupport.h"

namespace vorix::Serialization::test {
namespace {

TEST(EelException, TextIsTheWordsThenTheFailedExpressionAndItsPlace) {
    const Eel::Exception failure("it broke", "a < b", "/home/build/src/Thing.cpp", 42);
    EXPECT_STREQ(static_cast<const std::runtime_error&>(failure).what(),
                 "it broke\nExpression 'a < b' failed in Thing.cpp:42");
    EXPECT_EQ(failure.Words(), "it broke");
}

// The words are built only on failure: once here, so the text starts with a single '!'.
TEST(EelException, CheckRaisesWithTheConditionTextAndBuildsTheWordsOnlyWhenItFails) {
    int built = 0;
    const auto words = [&built] { return std::string(++built, '!'); };
    EXPECT_NO_THROW(VORIX_EEL_CHECK(built == 0, Eel::Exception, words()));
    const Failure fail = CatchFailure([&] { VORIX_EEL_CHECK(built > 0, Eel::Exception, words()); });
    EXPECT_EQ(fail.text.find("!\nExpression 'built > 0' failed in FailureTextTest.cpp:"), 0u);
}

const std::string kValues = Document(
    "<att name=\"bare\">1</att>\n<att name=\"blob\" type=\"bin\">00</att>\n"
    "<att name=\"prototype\" type=\"i\">1</att>\n<att name=\"flag\" type=\"bool\">yes</att>\n"
    "<att name=\"negative\" type=\"bin\" bin_size=\"-1\">00</att>\n"
    "<att name=\"oversized\" type=\"bin\" bin_size=\"99999999999999\">00</att>\n"
    "<att name=\"lost\" type=\"ptr\">5</att>\n<att name=\"anon\" type=\"ptr\">2</att>\n"
    "<obj id=\"1\" name=\"o\" type=\"Sample\">\n</obj>\n<obj id=\"2\" name=\"u\">\n</obj>\n");

// What is done with a crafted document once it is open (nothing: opening fails), and the failure.
struct ErrorCase {
    std::function<void(Archive&)> use;
    std::string words;
    bool isParseError = false;
    std::string document = kValues;
};

void ExpectFailures(const std::vector<ErrorCase>& cases) {
    for (const ErrorCase& c : cases) {
        const Failure failure = CatchFailure([&c] {
            SamplePool pool;
            Reader reader(c.document, pool.Factory());
            if (c.use) c.use(reader.archive);
        });
        EXPECT_EQ(std::tuple(failure.words, failure.isParseError),
                  std::tuple(c.words, c.isParseError));
    }
}

TEST(XMLArchiveParseError, DamagedDocumentsFailToOpenWithTheScannersWords) {
    const std::string root = "<obj_archive type=\"t\">";
    const std::string noRoot = "cant find root node, may not be archive data";
    const std::string noGreater = "expected '>', got to end of archive";
    const std::string noLess = "expected '<', got to end of archive";
    const std::string noQuotes = "cant find any attribute value in quotes \"*\"";
    const std::string noTypeQuotes =
        noQuotes + " for attribute 'type'\ncurrent node is : \n<obj_archive type>";
    ExpectFailures({
        {{}, noRoot, true, ""},
        {{}, noRoot, true, "plain words < a> <1> <"},
        {{}, noGreater, true, "<obj_archive type=\"t\""},
        {{}, noGreater, true, root + "<att name=\"a\" type=\"i\""},
        {{}, noGreater, true, root + "<!-- open comment"},
        {{}, noGreater, true, root + "</obj_archiv"},
        {{}, noLess, true, root + "<att name=\"a\" type=\"i\">1</att>\n"},
        {{}, noLess, true, Document("<obj id=\"1\" name=\"o\" type=\"T\">")},
        {{}, "expected '</att>', got to end of archive", true, root + "<att name=\"a\">1</at>"},
        {{}, noTypeQuotes, true, "<obj_archive type>"},
        {{}, noQuotes, true, "<obj_archive type=\"t>"},
    });
}

TEST(XMLArchiveParseError, MisusedOrMismatchedNodesFailWithTheirWordsAndClass) {
    const std::string noSize = "cant find size for binary element";
    const std::string readOnly = "archive created as read-only";
    ExpectFailures({
        {[](auto& a) { a.BeginReadObject("x", "Sample"); }, "cant find node 'x'"},
        {[](auto& a) { a.ReadInt("x"); }, "cant find node with name = 'x'"},
        {[](auto& a) { SamplePool::Read(a, "lost"); }, "cant find requested node for id = '5'"},
        {[](auto& a) { a.BeginReadObject("flag", "Sample"); }, "node is not an object"},
        {[](auto& a) { a.ReadInt("o"); }, "node is not an attribute 'o'", true},
        // A root ended by an object's close tag stands in the id map, but is not an object.
        {[](auto& a) { SamplePool::Read(a, "p"); }, "node is not an object ''", true,
         "<obj_archive id=\"3\" type=\"t\"><att name=\"p\" type=\"ptr\">3</att></obj>"},
        {[](auto& a) { a.ReadInt("bare"); }, "cant find type for attribute 'bare'", true},
        {[](auto& a) { a.BeginReadObject("u", "Sample"); }, "cant find type for object 'u'", true},
        {[](auto& a) { SamplePool::Read(a, "anon"); }, "cant find type for object 'u'", true},
        {[](auto& a) { a.BeginReadObject("o", "X"); },
         "wrong type for object 'o', expected type to be 'X'"},
        {[](auto& a) { ArchiveSequence list(a, "o"); },
         "wrong type for object 'o', expected type to be '__archive_sequence__'"},
        {[](auto& a) { a.ReadString("flag"); }, "wrong type for attribute 'flag'"},
        {[](auto& a) { a.ReadInt64("flag", 0); }, "wrong type for attribute 'flag'"},
        // Keys are found by plain text search, so "type" inside a name is taken for the key.
        {[](auto& a) { a.ReadInt("prototype"); }, "wrong type for attribute 'prototype'"},
        {[](auto& a) { a.ReadBool("flag"); }, "boolean has unknown value of 'flag'"},
        {[](auto& a) { ReadBlock(a, "blob"); }, noSize},
        {[](auto& a) { ReadBlock(a, "negative"); }, noSize},
        {[](auto& a) { ReadBlock(a, "oversized"); }, noSize},
        {[](auto& a) { a.BeginWriting(); }, readOnly},
        {[](auto& a) { a.EndWriting(); }, readOnly},
        {[](auto& a) { a.WriteInt("i", 1); }, readOnly},
        {[](auto& a) { a.WriteFloat("f", 1.0); }, readOnly},
        {[](auto& a) { a.WriteString("s", "x"); }, readOnly},
        {[](auto& a) { a.WriteBinary("b", "x", 1); }, readOnly},
        {[](auto& a) { Sample().Save(a, "o"); }, readOnly},
    });
}

TEST(XMLArchiveParseError, ArchiveWithoutTextOrNodeFailsWithoutAParseError) {
    EXPECT_EQ(CatchFailure([] { XMLArchive archive(nullptr, 10); }).words,
              "the input stream is null!");
    std::ostringstream stream;
    const Failure noNode = CatchFailure([&stream] { XMLArchive(stream, "t").BeginReading(); });
    EXPECT_EQ(std::tuple(noNode.words, noNode.isParseError),
              std::tuple("node is null, or start is null", false));
}

}  // namespace
}  // namespace vorix::Serialization::test
