#include <stdexcept>

#include "ArchiveTestSupport.h"
#include "serialization/XMLValueText.h"

namespace vorix::Serialization::test {
namespace {

// A Sample whose writing fails after its first value.
struct Failing : Sample {
    void Write(Archive& archive) override {
        archive.WriteInt("n", 1);
        throw std::runtime_error("disk full");
    }
};

// Ids are written "#0" to "#3" here: they are given in the order the objects are first met, and
// a second save gives new ones, writing every object again.
TEST(XMLArchiveWriter, DocumentHasOneLinePerValueAndEveryObjectOnceWhereFirstMet) {
    SampleDocument sample;
    std::string expected = Written(
        "<att name=\"yes\" type=\"bool\">true</att>\n"
        "<att name=\"no\" type=\"bool\">false</att>\n"
        "<att name=\"big\" type=\"i64\">-9223372036854775808</att>\n"
        "<att name=\"0\" type=\"f\">-2.5000000000000000</att>\n"
        "<att name=\"1\" type=\"f\">0.3333333333333333</att>\n"
        "<att name=\"2\" type=\"f\">0.0000000000012346</att>\n"
        "<att name=\"s\" type=\"str\">two words\nand a line</att>\n"
        "<att name=\"bin\" type=\"bin\" bin_size=\"33\">\n"
        "\t070F171F272F373F474F575F676F777F878F979FA7AFB7BFC7CFD7DFE7EFF7FF\n\t07\n</att>\n"
        "<att name=\"p\" type=\"ptr\">987654321012</att>\n"
        "<obj id=\"#0\" name=\"\" type=\"Sample\">\n"
        "\t<att name=\"count\" type=\"i\">1</att>\n"
        "\t<obj id=\"#1\" name=\"\" type=\"Sample\">\n"
        "\t\t<att name=\"count\" type=\"i\">2</att>\n"
        "\t\t<att name=\"link\" type=\"ptr\">#0</att>\n"
        "\t</obj>\n"
        "\t<att name=\"link\" type=\"ptr\">#1</att>\n"
        "</obj>\n"
        "<att name=\"top\" type=\"ptr\">#0</att>\n"
        "<obj id=\"#2\" name=\"\" type=\"Sample\">\n"
        "\t<att name=\"count\" type=\"i\">3</att>\n"
        "\t<att name=\"link\" type=\"ptr\">#2</att>\n"
        "</obj>\n"
        "<att name=\"self\" type=\"ptr\">#2</att>\n"
        "<obj id=\"#3\" name=\"list\" type=\"__archive_sequence__\">\n"
        "\t<att name=\"__size__\" type=\"i\">1</att>\n"
        "\t<att name=\"0\" type=\"str\">element</att>\n"
        "</obj>\n");
    const std::string text = sample.Text();
    for (std::uint64_t i = 0; i < 4; ++i) {
        const std::string key = "#" + std::to_string(i), id = std::to_string(sample.outer.Id() + i);
        expected = std::regex_replace(expected, std::regex("id=\"" + key),
                                      "id=\"" + std::string(10 - id.size(), '0') + id);
        expected = std::regex_replace(expected, std::regex(key), id);
    }
    EXPECT_EQ(text, expected);
    const std::uint64_t firstId = sample.outer.Id();
    sample.Text();
    EXPECT_GT(sample.outer.Id(), firstId);
    EXPECT_EQ(WriteDocument([](XMLArchive&) {}, true), Document("") + '\0');
    EXPECT_EQ(FormatPaddedId(12345678901ULL), "12345678901");  // ten digits is the least
    std::ostringstream stream;
    XMLArchive(stream, "test").WriteFloat("f", 1.0);  // the float format stays set on the stream
    EXPECT_EQ(std::tuple(stream.precision(), stream.flags() & std::ios::floatfield),
              std::tuple(16, std::ios::fixed));
}

// "n" is free in the object's scope; the failing object is closed, and "n" stays taken at the
// root, for values and binary alike.
TEST(XMLArchiveWriter, NamesAreUniquePerScopeAFailingObjectIsStillClosedAndNullIsRefused) {
    const std::string notUnique = "attribute name is not unique within current scope: n";
    Failing failing;
    const std::string text = WriteDocument([&](XMLArchive& a) {
        a.WriteInt("n", 0);
        EXPECT_THROW(failing.Save(a, "f"), std::runtime_error);
        const Failure twice = CatchFailure([&a] { a.WriteBool("n", true); });
        EXPECT_EQ(std::tuple(twice.words, twice.isParseError), std::tuple(notUnique, false));
        EXPECT_EQ(CatchFailure([&a] { a.WriteBinary("n", "x", 1); }).words, notUnique);
        EXPECT_ANY_THROW(a.WriteObject("none", nullptr));
        EXPECT_TRUE(CatchFailure([&] { a.WriteBinary("", nullptr, 1); }).raised);
    });
    const std::string id = std::to_string(failing.Id());
    EXPECT_EQ(Unpadded(text), Written("<att name=\"n\" type=\"i\">0</att>\n<obj id=\"" + id +
                                      "\" name=\"f\" type=\"Sample\">\n"
                                      "\t<att name=\"n\" type=\"i\">1</att>\n</obj>\n"));
}

TEST(XMLArchiveWriter, StringWithAnyMarkupCharacterIsRefusedAndWritesNothing) {
    for (const char* value : {"a&b", "a<b", "a>b", "a\"b", "it's"}) {
        const std::string text = WriteDocument([value](XMLArchive& a) {
            const Failure refused = CatchFailure([&a, value] { a.WriteString("s", value); });
            EXPECT_EQ(std::tuple(refused.words, refused.isParseError),
                      std::tuple("illegal character in 's'", true));
            a.WriteString("s", "clean");  // the refused write did not take the name
        });
        EXPECT_EQ(text, Written("<att name=\"s\" type=\"str\">clean</att>\n")) << value;
    }
}

}  // namespace
}  // namespace vorix::Serialization::test
