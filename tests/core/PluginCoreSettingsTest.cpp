// Settings: the host's chunks, the archive form, the messages of a failed load, and the
// settings lines themselves.

#include <cstring>

#include "CoreTestSupport.h"
#include "core/ErrorDisplay.h"
#include "core/SettingsLines.h"

namespace vorix::test {
namespace {

using Errors = std::vector<RecordedError>;

class PluginCoreSettings : public CoreTest {
  protected:
    // The chunk of `core` as bytes, the zero tail included.
    static std::string Chunk(TestCore& core, bool isPreset) {
        void* data = nullptr;
        const std::int32_t size = core.GetChunk(&data, isPreset);
        return data != nullptr ? std::string(static_cast<const char*>(data), size) : std::string();
    }
    static void Offer(TestCore& core, const std::string& bytes, bool isPreset = true) {
        core.SetChunk(bytes.data(), static_cast<std::int32_t>(bytes.size()), isPreset);
    }
};

TEST_F(PluginCoreSettings, PresetChunkIsTheTextWithSixteenZeroBytesAndLoadsElsewhere) {
    auto source = MakeCore();
    source->state = "saved";
    source->GetAttribute("zoom") = std::string("2");  // the entry itself, not a copy
    EXPECT_EQ(source->GetIntAttribute("sort"), 0);
    EXPECT_FALSE(source->HasAttribute("sort"));  // asking for a number makes no entry
    const std::string text =
        "<!-- Zorvane Sound Works probe -->\n<probe_settings>\n\t<state>saved</state>\n\t"
        "<attributes>zoom=2</attributes>\n</probe_settings>\n";
    const std::string chunk = Chunk(*source, true);
    EXPECT_EQ(chunk, text + std::string(16, '\0'));

    auto target = MakeCore();
    target->SetAttribute("sort", "1");
    Offer(*target, chunk);
    EXPECT_EQ(target->state, "saved");
    EXPECT_EQ(target->FormatAttributes(), "<attributes>zoom=2</attributes>");
    EXPECT_EQ(target->readDepths.back(), 1);  // loaded as an internal change
    EXPECT_TRUE(Messages().empty());
}

TEST_F(PluginCoreSettings, MakerNameMustStandInTheFirst500Bytes) {
    auto core = MakeCore();
    const std::string body = "\n<probe_settings>\n\t<state>late</state>\n</probe_settings>\n";
    Offer(*core, std::string(500 - std::strlen(kMakerName), ' ') + kMakerName + body);
    EXPECT_EQ(core->state, "late");
    Offer(*core, std::string(501 - std::strlen(kMakerName), ' ') + kMakerName + body);
    EXPECT_EQ(Messages(), Errors{SettingsMessage(kSettingsCorrupted)});
}

TEST_F(PluginCoreSettings, CarriageReturnAnywhereRefusesTheChunkAndASecondBadOneIsNotShown) {
    auto core = MakeCore();
    core->SetChunk(nullptr, 10, true);
    core->SetChunk("x", 0, true);
    EXPECT_TRUE(Messages().empty());  // empty chunks are no error
    std::string chunk = SettingsFor("crlf");
    chunk.insert(chunk.size() - 1, "\r");
    Offer(*core, chunk);
    Offer(*core, "garbage");
    EXPECT_EQ(core->state, "initial");
    EXPECT_EQ(Messages(), Errors{SettingsMessage(kSettingsCarriageReturns)});
}

TEST_F(PluginCoreSettings, TextEndsAtTheFirstZeroByteOrTheEndOfTheChunk) {
    auto core = MakeCore();
    Offer(*core, SettingsFor("cut") + std::string(1, '\0') + "<state>after</state>\n");
    EXPECT_EQ(core->readTexts.back(), SettingsFor("cut"));
    // No zero byte at all: read up to the size and no further.
    const std::string text = SettingsFor("whole");
    const std::vector<char> unterminated(text.begin(), text.end());
    core->SetChunk(unterminated.data(), static_cast<std::int32_t>(text.size()), true);
    EXPECT_EQ(core->state, "whole");
}

// Settings beyond any real document's size are damage, refused before the engine reads them,
// whichever way they come: a chunk whose text runs on, a chunk far beyond the size, or a text
// handed to the load itself.
TEST_F(PluginCoreSettings, TextBeyondTheLargestSettingsIsRefusedAndChangesNothing) {
    const auto padded = [](const std::string& state, std::size_t size) {
        std::string text = SettingsFor(state);
        text.append(size - text.size() - 1, ' ').append("\n");
        return text;
    };
    auto core = MakeCore();
    Offer(*core, padded("largest", kMaxSettingsTextBytes) + std::string(16, '\0'));
    EXPECT_EQ(core->state, "largest");
    core->SetAttribute("zoom", "3");

    Offer(*core, padded("runs on", kMaxSettingsTextBytes + 1));
    EXPECT_THROW(core->LoadSettings(padded("too long", kMaxSettingsTextBytes + 1)),
                 PluginCore::InvalidSettingsData);
    EXPECT_EQ(core->state, "largest");
    EXPECT_EQ(core->FormatAttributes(), "<attributes>zoom=3</attributes>");
    EXPECT_EQ(core->readTexts.size(), 1u);
    EXPECT_EQ(Messages(),
              (Errors{SettingsMessage(kSettingsCorrupted), SettingsMessage(kSettingsCorrupted)}));

    // A short text in a chunk of gigantic size: not even scanned for carriage returns.
    auto other = MakeCore();
    std::string huge = SettingsFor("short") + std::string(kMaxSettingsTextBytes, '\0');
    huge.back() = '\r';
    Offer(*other, huge);
    EXPECT_EQ(other->state, "initial");
    EXPECT_EQ(Messages().back(), SettingsMessage(kSettingsCorrupted));
}

TEST_F(PluginCoreSettings, DocumentChunkCarriesEveryProgram) {
    auto source = MakeCore();
    source->SetProgramName("First");
    source->SetProgram(1);
    source->SetProgramName("Second");
    source->state = "second state";
    const std::string chunk = Chunk(*source, false);
    ASSERT_EQ(chunk.substr(chunk.size() - 16), std::string(16, '\0'));

    auto target = MakeCore();
    Offer(*target, chunk, false);
    EXPECT_EQ(target->GetProgramName(0), "First");
    EXPECT_EQ(target->GetProgramName(1), "Second");
    EXPECT_EQ(target->state, "initial");  // program 0, the target's current one, was loaded
    target->SetProgram(1);
    EXPECT_EQ(target->state, "second state");
    Offer(*target, "<!-- Zorvane Sound Works Elsewhere -->\n", false);
    EXPECT_EQ(Messages(), Errors{SettingsMessage(kSettingsHeaderMissing)});
}

TEST_F(PluginCoreSettings, ArchiveFormCarriesTheMakersNoticeAndMetadataAndReadsBack) {
    auto source = MakeCore();
    source->frameworkSettings = true;
    source->extraValue = 17;
    std::string text;
    source->CaptureSettings(text);
    EXPECT_NE(text.find("type=\"ZOR Plugin Settings ((c) Zorvane Sound Works)\""),
              std::string::npos);
    EXPECT_EQ(text.find('\0'), std::string::npos);  // the text travels inside chunks

    auto target = MakeCore();
    target->frameworkSettings = true;
    target->LoadSettings(text);
    EXPECT_EQ(target->extraValue, 17);
    ASSERT_NE(target->readMetadata, nullptr);
    EXPECT_EQ(*target->readMetadata, ZORPluginSettingsMetaData(*source));
    EXPECT_TRUE(Messages().empty());
    target->ReadSettings("<obj_archive type=\"x\">\n\t<att name=\"a\" type=\"i\">1");
    target->ReadSettings("<obj_archive type=\"x\">\n</obj_archive>\n");  // no metadata object
    EXPECT_EQ(Messages(), (Errors{SettingsMessage(kSettingsCorrupted), SettingsMessage("")}));
}

TEST_F(PluginCoreSettings, MessageGoesToTheHostServiceOrElseTheProcessDefault) {
    RecordingErrorMessageService fallback;
    SetDefaultErrorMessageService(&fallback);
    auto core = MakeCore();
    ReportError(core.get(), "First", "Second", nullptr, 2);
    EXPECT_EQ(Messages(), (Errors{{"First", "Second", "", 2}}));
    ReportError(nullptr, "No core", "", "", 1);
    platform.silent = true;
    ReportError(core.get(), "Silent host", nullptr, nullptr, 2);
    EXPECT_EQ(fallback.Messages(), (Errors{{"No core", "", "", 1}, {"Silent host", "", "", 2}}));
    SetDefaultErrorMessageService(nullptr);
}

TEST(SettingsLines, IntegersReadLikeTheCLibraryButNeverOverflow) {
    const std::vector<std::pair<const char*, std::int32_t>> cases{
        {" -42abc", -42},
        {"+7", 7},
        {"+-7", 0},
        {"x1", 0},
        {"99999999999", 2147483647},
        {"-99999999999999999999999", -2147483647 - 1}};
    for (const auto& [text, value] : cases)
        EXPECT_EQ(ParseLineInteger(text), value) << text;
    // A plain substring search: "name" is found inside "filename" first.
    EXPECT_EQ(GetLineAttribute("<f filename=\"a.vrx\" name=\"b\">", "name"), "a.vrx");
}

TEST(SettingsLines, AttributesLineListsEntriesInKeyOrderAndReadsBack) {
    const SettingsAttributes written{{"zoom", "1"}, {"handles", "1"}, {"sort", "0"}};
    std::string line = "\t";  // appended: GCC 12 misreads "\t" + text
    line += FormatAttributeLine(written);
    EXPECT_EQ(line, "\t<attributes>handles=1,sort=0,zoom=1</attributes>");
    SettingsAttributes read{{"kept", "yes"}};
    ParseAttributeLine(line, read);
    ParseAttributeLine("<attributes>zoom=1,,zoom==3,sort</attributes>", read);
    EXPECT_EQ(read, (SettingsAttributes{
                        {"handles", "1"}, {"kept", "yes"}, {"sort", "0"}, {"zoom", "3"}}));
}

}  // namespace
}  // namespace vorix::test
