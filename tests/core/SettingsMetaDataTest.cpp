#include "core/ZORPluginSettingsMetaData.h"

#include <regex>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "serialization/EelException.h"
#include "serialization/XMLArchive.h"

namespace vorix {
namespace {

// Saving is not const, so the record is written from a copy.
std::string WriteRecord(ZORPluginSettingsMetaData record) {
    std::ostringstream stream;
    Serialization::XMLArchive archive(stream, "ZOR Plugin Settings (test)");
    archive.BeginWriting();
    record.Save(archive, "Settings Metadata");
    archive.EndWriting();
    return stream.str();
}

void ReadRecord(const std::string& document, ZORPluginSettingsMetaData& record) {
    Serialization::XMLArchive archive(document.data(), document.size());
    archive.BeginReading();
    record.Load(archive, "Settings Metadata");
}

ZORPluginSettingsMetaData SampleRecord() {
    ZORPluginSettingsMetaData record;
    record.signature = "Vorix";
    record.name = "Vorix File";
    record.version = "2.1";
    record.copyright = "(c) Zorvane Sound Works";
    record.manufacturer = "Zorvane Sound";
    record.inputs = 1;
    record.outputs = 2;
    return record;
}

TEST(SettingsMetaDataTest, IsWrittenAsOneObjectWithItsFieldsInOrderAndReadsBackEqual) {
    const ZORPluginSettingsMetaData written = SampleRecord();
    const std::string document = WriteRecord(written);
    const std::string expected(
        "<\\?xml version=\"1.0\"\\?>\n"
        "<obj_archive type=\"ZOR Plugin Settings \\(test\\)\">\n"
        "<obj id=\"[0-9]{10}\" name=\"Settings Metadata\" type=\"PluginCore_SettingsMetaData\">\n"
        "\t<att name=\"signature\" type=\"str\">Vorix</att>\n"
        "\t<att name=\"name\" type=\"str\">Vorix File</att>\n"
        "\t<att name=\"version\" type=\"str\">2.1</att>\n"
        "\t<att name=\"copyright\" type=\"str\">\\(c\\) Zorvane Sound Works</att>\n"
        "\t<att name=\"manufacturer\" type=\"str\">Zorvane Sound</att>\n"
        "\t<att name=\"IOConfig.inputs\" type=\"i\">1</att>\n"
        "\t<att name=\"IOConfig.outputs\" type=\"i\">2</att>\n"
        "</obj>\n"
        "</obj_archive>\n");
    // The archive ends its text with a zero byte.
    EXPECT_TRUE(std::regex_match(document, std::regex(expected + '\0'))) << document;

    ZORPluginSettingsMetaData read;
    ReadRecord(document, read);
    EXPECT_TRUE(read == written);
    EXPECT_EQ(read.outputs, 2);
}

// A record with a field missing is not one this framework wrote; the target keeps what it had.
TEST(SettingsMetaDataTest, RecordWithAFieldMissingIsRefusedAndChangesNothing) {
    const std::string document = std::regex_replace(
        WriteRecord(SampleRecord()), std::regex("\t<att name=\"IOConfig.outputs\"[^\n]*\n"), "");
    ZORPluginSettingsMetaData target = SampleRecord();
    target.signature = "Before";
    EXPECT_THROW(ReadRecord(document, target), Eel::Exception);
    EXPECT_EQ(target.signature, "Before");
}

}  // namespace
}  // namespace vorix
