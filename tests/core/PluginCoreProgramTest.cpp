// Programs: the list of a new core, switching, defaults, and the program document.

#include "CoreTestSupport.h"

namespace vorix::test {
namespace {

class PluginCorePrograms : public CoreTest {
  protected:
    std::unique_ptr<TestCore> CoreWithDefaults(const std::string& state) {
        auto core = MakeCore();
        core->state = state;
        core->CaptureDefaultSettings();
        return core;
    }
    // Loads `document`; true if it was taken, false if it was refused.
    static bool Load(TestCore& core, const std::string& document) {
        try {
            core.LoadProgramDocument(document.c_str());
            return true;
        } catch (const PluginCore::ProgramDocumentRefused&) {
            return false;
        }
    }
};

TEST_F(PluginCorePrograms, WithoutAFactoryDocumentProgramsAreUserConfigsOrTheProductName) {
    setup.factoryPrograms = "<program number=\"0\" name=\"Headless\">\nzero\n</program>\n";
    auto core = MakeCore();
    EXPECT_EQ(Messages(), std::vector{SettingsMessage(kSettingsHeaderMissing)});
    EXPECT_EQ(core->GetProgramName(0), "User Config 1");
    EXPECT_EQ(core->GetProgramName(2), "User Config 3");
    EXPECT_EQ(core->GetProgramName(3), "");
    EXPECT_EQ(core->GetPreferencesName(), "ZOR Probe Prefs");
    core.reset();
    setup.programCount = 1;
    EXPECT_EQ(MakeCore()->GetCurrentProgramName(), "Probe");
}

TEST_F(PluginCorePrograms, FactoryDocumentNamesItsProgramsAndItsProgramZeroIsTheDefault) {
    const std::string document = Document(
        "<program number=\"0\" name=\"Flat\">\nzero\n</program>\n"
        "<program number=\"2\" name=\"Bright\">\ntwo\n</program>\n");
    setup.factoryPrograms = document.c_str();
    auto core = MakeCore();
    EXPECT_EQ(core->GetProgramName(0), "Flat");
    EXPECT_EQ(core->GetProgramName(1), "User Config 2");
    EXPECT_EQ(core->GetProgramName(2), "Bright");
    core->CaptureDefaultSettings();  // changes nothing: the factory gave the defaults
    core->SetProgram(1);
    EXPECT_EQ(core->readTexts.back(), "zero\n");
}

TEST_F(PluginCorePrograms, SwitchStoresTheProgramLeftAndLoadsTheOneChosenSilently) {
    auto core = CoreWithDefaults("default");
    core->state = "edited zero";
    core->SetAttribute("zoom", "1");
    core->SetProgram(1);
    EXPECT_FALSE(core->HasAttribute("zoom"));  // the load empties the attributes
    EXPECT_EQ(core->readDepths, std::vector<std::int32_t>{1});
    EXPECT_EQ(core->GetInternalDepth(), 0);
    core->state = "edited one";
    core->SetProgram(0);
    EXPECT_EQ(core->state, "edited zero");
    core->SetProgram(1);
    EXPECT_EQ(core->state, "edited one");
}

TEST_F(PluginCorePrograms, UnknownProgramIsIgnoredAndEmptyOnesTakeTheFirstCapturedDefaults) {
    auto core = MakeCore();
    EXPECT_TRUE(Load(*core, Document("")));  // a header alone gives no defaults
    core->SetProgram(3);
    core->SetProgram(-1);
    core->SetProgram(1);  // empty, and no defaults to load
    EXPECT_TRUE(core->readTexts.empty());
    EXPECT_EQ(core->GetProgram(), 1);
    core->state = "default";
    core->CaptureDefaultSettings();
    core->state = "second";
    core->CaptureDefaultSettings();  // a second capture keeps the first
    core->SetProgram(2);
    EXPECT_EQ(core->state, "default");
    core->state = "changed";
    core->SetProgram(1);
    core->SetProgram(2);
    EXPECT_EQ(core->state, "changed");
}

TEST_F(PluginCorePrograms, WithoutProgramBankEditsAreNotStored) {
    setup.programBank = false;
    auto core = CoreWithDefaults("default");
    core->state = "edited";
    core->SetProgram(1);
    core->SetProgram(0);  // loads the defaults again, not the edit
    EXPECT_EQ(core->state, "default");
}

TEST_F(PluginCorePrograms, DocumentNumbersCountAsAbsoluteValuesAndTooLargeOnesAreSkipped) {
    auto core = MakeCore();
    EXPECT_TRUE(Load(*core, Document("<program number=\"-2\" name=\"Minus\">\nminus\n</program>\n"
                                     "<program number=\"3\" name=\"Beyond\">\nbeyond\n</program>\n"
                                     "<program number=\"1\">\n\tone\n</program>\n")));
    EXPECT_EQ(core->GetProgramName(0), "User Config 1");
    EXPECT_EQ(core->GetProgramName(1), "");  // no name attribute
    EXPECT_EQ(core->GetProgramName(2), "Minus");
    core->SetProgram(2);
    EXPECT_EQ(core->readTexts.back(), "minus\n");
    core->SetProgram(1);
    EXPECT_EQ(core->readTexts.back(), "\tone\n");
    EXPECT_TRUE(Messages().empty());
}

TEST_F(PluginCorePrograms, ForeignOrOverlongDocumentIsRefusedWholeAndShownEachTime) {
    auto core = MakeCore();
    const std::string foreign =
        "<!-- Zorvane Sound Works Other Program Settings -->\n"
        "<program number=\"0\" name=\"Foreign\">\nx\n</program>\n";
    const std::string longest(254, 'a');
    EXPECT_FALSE(Load(*core, foreign));
    EXPECT_FALSE(Load(*core, foreign));
    EXPECT_TRUE(Load(
        *core, Document("<program number=\"0\" name=\"Fits\">\n" + longest + "\n</program>\n")));
    EXPECT_FALSE(Load(*core, Document("<program number=\"1\" name=\"Early\">\nx\n</program>\n"
                                      "<program number=\"2\" name=\"Long\">\n" +
                                      longest + "a\n</program>\n")));
    EXPECT_EQ(Messages(), (std::vector<RecordedError>{SettingsMessage(kSettingsHeaderMissing),
                                                      SettingsMessage(kSettingsHeaderMissing),
                                                      SettingsMessage(kSettingsCorrupted)}));
    EXPECT_EQ(core->GetProgramName(0), "Fits");
    EXPECT_EQ(core->GetProgramName(1), "User Config 2");  // nothing of the long one was taken
}

}  // namespace
}  // namespace vorix::test
