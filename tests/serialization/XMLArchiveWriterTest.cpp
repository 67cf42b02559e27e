#include <gtest/gtest.h>

#include <cstdint>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "ArchiveTestSupport.h"
#include "serialization/XMLValueText.h"

namespace vorix::Serialization::test {
namespace {

const std::string kHeader = "<?xml version=\"1.0\"?>\n<obj_archive type=\"test\">\n";
const std::string kFooter = std::string("</obj_archive>\n") + '\0';

std::string Body(const std::function<void(XMLArchive&)>& body) {
    const std::string text = WriteDocument(body);
    EXPECT_EQ(text.rfind(kHeader, 0), 0u);
    EXPECT_EQ(text.substr(text.size() - kFooter.size()), kFooter);
    return text.substr(kHeader.size(), text.size() - kHeader.size() - kFooter.size());
}

// An object whose values and children are given by the test.
class Probe : public Serializable {
  public:
    explicit Probe(std::function<void(Archive&)> write = {}) : write_(std::move(write)) {}
    const char* GetTypeName() const override { return "Probe"; }
    void Write(Archive& archive) override {
        if (write_) write_(archive);
    }
    void Read(Archive&) override {}

  private:
    std::function<void(Archive&)> write_;
};

// The id as the document spells it: zero-filled to ten digits.
std::string PaddedId(const Serializable& object) {
    const std::string digits = std::to_string(object.Id());
    return std::string(digits.size() < 10 ? 10 - digits.size() : 0, '0') + digits;
}

TEST(XMLArchiveWriter, DocumentIsDeclarationRootAndCloseEndingInLineFeedAndZeroByte) {
    EXPECT_EQ(WriteDocument([](XMLArchive&) {}, false, "My Type"),
              std::string("<?xml version=\"1.0\"?>\n<obj_archive type=\"My Type\">\n"
                          "</obj_archive>\n") +
                  '\0');
}

TEST(XMLArchiveWriter, EmbeddedDocumentHasNoDeclaration) {
    EXPECT_EQ(WriteDocument([](XMLArchive&) {}, true),
              std::string("<obj_archive type=\"test\">\n</obj_archive>\n") + '\0');
}

TEST(XMLArchiveWriter, EveryValueKindIsOneLineWithItsTypeText) {
    EXPECT_EQ(Body([](XMLArchive& a) {
                  a.WriteBool("on", true);
                  a.WriteBool("off", false);
                  a.WriteInt("i", -2147483647 - 1);
                  a.WriteInt64("big", INT64_MIN);
                  a.WriteFloat("f", -2.5);
                  a.WriteString("s", "two words\nand a line");
                  a.WriteObjectRef("p", 12);
              }),
              "<att name=\"on\" type=\"bool\">true</att>\n"
              "<att name=\"off\" type=\"bool\">false</att>\n"
              "<att name=\"i\" type=\"i\">-2147483648</att>\n"
              "<att name=\"big\" type=\"i64\">-9223372036854775808</att>\n"
              "<att name=\"f\" type=\"f\">-2.5000000000000000</att>\n"
              "<att name=\"s\" type=\"str\">two words\nand a line</att>\n"
              "<att name=\"p\" type=\"ptr\">12</att>\n");
}

TEST(XMLArchiveWriter, FloatIsFixedWithSixteenPlacesAndLeavesTheStreamSo) {
    std::ostringstream stream;
    XMLArchive archive(stream, "test");
    archive.WriteFloat("f", 1e20);
    archive.WriteFloat("g", 1e-20);
    EXPECT_EQ(stream.str(),
              "<att name=\"f\" type=\"f\">100000000000000000000.0000000000000000</att>\n"
              "<att name=\"g\" type=\"f\">0.0000000000000000</att>\n");
    EXPECT_EQ(stream.precision(), 16);
    EXPECT_EQ(stream.flags() & std::ios::floatfield, std::ios::fixed);
}

TEST(XMLArchiveWriter, BinaryIsUpperCaseHexInLinesOf32BytesOneTabDeeper) {
    std::vector<std::uint8_t> data(33);
    for (std::size_t i = 0; i < data.size(); ++i)
        data[i] = static_cast<std::uint8_t>(i * 8 + 7);
    Probe object([&data](Archive& a) { a.WriteBinary("b", data.data(), data.size()); });
    const std::string body = Body([&object](XMLArchive& a) { object.Save(a, "o"); });
    EXPECT_EQ(body, "<obj id=\"" + PaddedId(object) +
                        "\" name=\"o\" type=\"Probe\">\n"
                        "\t<att name=\"b\" type=\"bin\" bin_size=\"33\">\n"
                        "\t\t070F171F272F373F474F575F676F777F878F979FA7AFB7BFC7CFD7DFE7EFF7FF\n"
                        "\t\t07\n"
                        "\t</att>\n"
                        "</obj>\n");
}

TEST(XMLArchiveWriter, EmptyBinaryClosesOnTheNextLine) {
    EXPECT_EQ(Body([](XMLArchive& a) { a.WriteBinary("b", nullptr, 0); }),
              "<att name=\"b\" type=\"bin\" bin_size=\"0\">\n</att>\n");
}

TEST(XMLArchiveWriter, ObjectChildrenAreOneTabDeeperAndAnEmptyObjectTakesTwoLines) {
    Probe inner;
    Probe outer([&inner](Archive& a) {
        a.WriteInt("x", 1);
        inner.Save(a, "in");
        a.WriteInt("y", 2);
    });
    const std::string body = Body([&outer](XMLArchive& a) {
        outer.Save(a, "out");
        a.WriteInt("z", 3);
    });
    EXPECT_EQ(body, "<obj id=\"" + PaddedId(outer) +
                        "\" name=\"out\" type=\"Probe\">\n"
                        "\t<att name=\"x\" type=\"i\">1</att>\n"
                        "\t<obj id=\"" +
                        PaddedId(inner) +
                        "\" name=\"in\" type=\"Probe\">\n"
                        "\t</obj>\n"
                        "\t<att name=\"y\" type=\"i\">2</att>\n"
                        "</obj>\n"
                        "<att name=\"z\" type=\"i\">3</att>\n");
}

TEST(XMLArchiveWriter, IdsAreZeroFilledToTenDigitsAndNewForEverySave) {
    Probe object;
    const std::string first = Body([&object](XMLArchive& a) { object.Save(a, "o"); });
    const std::uint64_t firstId = object.Id();
    EXPECT_EQ(first.rfind("<obj id=\"" + PaddedId(object) + "\" name=\"o\"", 0), 0u);
    const std::string second = Body([&object](XMLArchive& a) { object.Save(a, "o"); });
    EXPECT_GT(object.Id(), firstId);
    EXPECT_EQ(second.rfind("<obj id=\"" + PaddedId(object) + "\" name=\"o\"", 0), 0u);
    EXPECT_EQ(FormatPaddedId(7), "0000000007");
    EXPECT_EQ(FormatPaddedId(12345678901ULL), "12345678901");  // the field is a minimum
}

TEST(XMLArchiveWriter, NameUsedTwiceInOneScopeIsRefusedButFreeInAnother) {
    Probe object([](Archive& a) {
        a.WriteInt("n", 1);
        const Failure twice = CatchFailure([&a] { a.WriteBool("n", true); });
        EXPECT_EQ(twice.words, "attribute name is not unique within current scope: n");
        EXPECT_FALSE(twice.isParseError);
    });
    const std::string body = Body([&object](XMLArchive& a) {
        a.WriteInt("n", 0);
        object.Save(a, "o");
        EXPECT_EQ(CatchFailure([&a] { a.WriteObjectRef("n", 1); }).words,
                  "attribute name is not unique within current scope: n");
        EXPECT_EQ(CatchFailure([&a] { a.WriteBinary("n", "x", 1); }).words,
                  "attribute name is not unique within current scope: n");
    });
    EXPECT_EQ(body.find("type=\"bool\""), std::string::npos);
    EXPECT_EQ(body.find("type=\"ptr\""), std::string::npos);
}

TEST(XMLArchiveWriter, StringWithAnyMarkupCharacterIsRefusedAndWritesNothing) {
    for (const char* value : {"a&b", "a<b", "a>b", "a\"b", "it's"}) {
        const std::string body = Body([value](XMLArchive& a) {
            const Failure refused = CatchFailure([&a, value] { a.WriteString("s", value); });
            EXPECT_EQ(refused.words, "illegal character in 's'") << value;
            EXPECT_TRUE(refused.isParseError);
            a.WriteString("s", "clean");  // the refused write did not take the name
        });
        EXPECT_EQ(body, "<att name=\"s\" type=\"str\">clean</att>\n");
    }
}

TEST(XMLArchiveWriter, ObjectWrittenTwiceIsStoredOnceAndReferencedTwice) {
    Probe shared([](Archive& a) { a.WriteInt("v", 5); });
    const std::string body = Body([&shared](XMLArchive& a) {
        a.WriteObject("first", &shared);
        a.WriteObject("second", &shared);
        const ObjectRecord* record = a.FindRecord(shared.Id());
        ASSERT_NE(record, nullptr);
        EXPECT_TRUE(record->mComplete);
        EXPECT_EQ(record->mObject, &shared);
    });
    const std::string id = std::to_string(shared.Id());
    EXPECT_EQ(body, "<obj id=\"" + PaddedId(shared) +
                        "\" name=\"\" type=\"Probe\">\n"
                        "\t<att name=\"v\" type=\"i\">5</att>\n"
                        "</obj>\n"
                        "<att name=\"first\" type=\"ptr\">" +
                        id +
                        "</att>\n"
                        "<att name=\"second\" type=\"ptr\">" +
                        id + "</att>\n");
}

TEST(XMLArchiveWriter, ObjectReferringToItselfStaysOpenUntilItsOwnEnd) {
    Probe self;
    Probe* selfPointer = &self;
    self = Probe([selfPointer](Archive& a) {
        a.WriteObject("me", selfPointer);
        a.WriteInt("after", 1);
    });
    const std::string body = Body([&self](XMLArchive& a) { self.Save(a, "s"); });
    EXPECT_EQ(body, "<obj id=\"" + PaddedId(self) +
                        "\" name=\"s\" type=\"Probe\">\n"
                        "\t<att name=\"me\" type=\"ptr\">" +
                        std::to_string(self.Id()) +
                        "</att>\n"
                        "\t<att name=\"after\" type=\"i\">1</att>\n"
                        "</obj>\n");
}

TEST(XMLArchiveWriter, ObjectWhoseWriteFailsIsStillClosed) {
    Probe failing([](Archive& a) {
        a.WriteInt("v", 1);
        throw std::runtime_error("disk full");
    });
    const std::string body = Body([&failing](XMLArchive& a) {
        EXPECT_THROW(failing.Save(a, "f"), std::runtime_error);
        a.WriteInt("v", 2);  // back in the root scope, where "v" is still free
    });
    EXPECT_EQ(body, "<obj id=\"" + PaddedId(failing) +
                        "\" name=\"f\" type=\"Probe\">\n"
                        "\t<att name=\"v\" type=\"i\">1</att>\n"
                        "</obj>\n"
                        "<att name=\"v\" type=\"i\">2</att>\n");
}

TEST(XMLArchiveWriter, NullObjectCannotBeWritten) {
    Body([](XMLArchive& a) {
        EXPECT_THROW(a.WriteObject("none", nullptr), Archive::ObjectNotRecorded);
    });
}

TEST(XMLArchiveWriter, EveryWriteOnAReaderIsRefused) {
    const std::string text = Document("");
    XMLArchive reader(text.data(), text.size());
    Probe object;
    const std::vector<std::function<void()>> writes = {
        [&] { reader.BeginWriting(); },         [&] { reader.EndWriting(); },
        [&] { reader.WriteBool("b", true); },   [&] { reader.WriteInt("i", 1); },
        [&] { reader.WriteInt64("j", 1); },     [&] { reader.WriteFloat("f", 1.0); },
        [&] { reader.WriteString("s", "x"); },  [&] { reader.WriteBinary("b", "x", 1); },
        [&] { reader.WriteObjectRef("p", 1); }, [&] { reader.WriteObject("o", &object); },
        [&] { object.Save(reader, "o"); },
    };
    for (const auto& write : writes) {
        const Failure refused = CatchFailure(write);
        EXPECT_EQ(refused.words, "archive created as read-only");
        EXPECT_FALSE(refused.isParseError);
    }
}

}  // namespace
}  // namespace vorix::Serialization::test
