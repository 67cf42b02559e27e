#include "CliTestSupport.h"
#include "engine/VorixParameterIds.h"
#include "vorix/Arguments.h"
#include "vorix/ParameterSettings.h"
#include "vorix/ProgramLookup.h"
#include "vorix/ToolErrors.h"

namespace vorix::test {
namespace {

TEST(Arguments, ValuesFollowAsNextWordOrAfterEqualsAndDoubleDashEndsOptions) {
    const std::vector<std::string> words{"in.wav", "--block=512", "--set", "a=1",    "-3",
                                         "--set",  "b=2",         "--",    "--quiet"};
    const cli::OptionDefinition definitions[] = {
        {"--block", true}, {"--set", true, true}, {"--quiet"}};
    const cli::ParsedArguments parsed = cli::ParseArguments(words, definitions);
    EXPECT_EQ(parsed.positionals, (std::vector<std::string>{"in.wav", "-3", "--quiet"}));
    EXPECT_EQ(parsed.Value("--block"), "512");
    EXPECT_EQ(parsed.Values("--set"), (std::vector<std::string>{"a=1", "b=2"}));
    EXPECT_FALSE(parsed.Has("--quiet"));
}

class UsageErrors : public ::testing::TestWithParam<std::vector<std::string>> {};

TEST_P(UsageErrors, ExitOneWithOneLineAndNoOutput) {
    const RunResult result = RunTool(GetParam());
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(LineCount(result.err), 1) << result.err;
    EXPECT_EQ(result.out, "");
}

using Words = std::vector<std::string>;
INSTANTIATE_TEST_SUITE_P(
    CommandLines, UsageErrors,
    ::testing::Values(
        Words{}, Words{"frobnicate"}, Words{"help", "frobnicate"}, Words{"render", "in.wav"},
        Words{"render", "a.wav", "b.wav", "c.wav"}, Words{"render", "a.wav", "b.wav", "--bogus"},
        Words{"render", "a.wav", "b.mp3"}, Words{"render", "a.wav", "b.wav", "--program"},
        Words{"render", "a.wav", "b.wav", "--program", "1", "--settings", "x.vrx"},
        Words{"render", "a.wav", "b.wav", "--block", "1", "--block", "2"},
        Words{"render", "a.wav", "b.wav", "--set", "prmLeftGain"},
        Words{"render", "a.wav", "b.wav", "--set", "prmLeftGain=loud"},
        Words{"render", "a.wav", "b.wav", "--set", "prmLeftGain=inf"},
        Words{"response", "--set", "prmLeftGain=nan"}, Words{"response", "--set", "Gain=1"},
        Words{"render", "a.wav", "b.wav", "--quiet=yes"}, Words{"programs", "all"},
        Words{"show-program"}, Words{"show-program", "19"},
        Words{"show-program", "1", "--channels", "3"}, Words{"response", "--rate", "0"},
        Words{"response", "--points", "1"}, Words{"response", "--points", "10", "--freqs", "100"},
        Words{"response", "--freqs", "60,,120"},
        Words{"response", "--rate", "48000", "--freqs", "24001"}, Words{"demo", "one", "two"}));

TEST(CommandLine, HelpGoesToStandardOutput) {
    for (const Words& words : {Words{"--help"}, Words{"help", "render"}, Words{"response", "-h"},
                               Words{"render", "--program", "x", "--help"}}) {
        const RunResult result = RunTool(words);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.err, "");
        EXPECT_NE(result.out.find("usage: vorix"), std::string::npos) << result.out;
    }
}

TEST(CommandLine, ProgramsListsNumberTabName) {
    const RunResult result = RunTool({"programs"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(LineCount(result.out), 19);
    EXPECT_EQ(result.out.rfind("0\tBasic EQ\n1\tChannel EQ\n", 0), 0u);
    EXPECT_NE(result.out.find("\n18\tTelephone (96k)\n"), std::string::npos);
}

TEST(CommandLine, ShowProgramPrintsTheLoadedProgramNotTheStartingFilters) {
    const RunResult basic = RunTool({"show-program", "Basic EQ"});
    ASSERT_EQ(basic.status, 0) << basic.err;
    EXPECT_NE(
        basic.out.find("<attributes>handles=1,labels=1,selected=1,sort=0,zoom=1</attributes>"),
        std::string::npos)
        << basic.out;
    const RunResult stereo = RunTool({"show-program", "7", "--rate", "48000"});
    const RunResult mono = RunTool({"show-program", "7", "--channels", "1"});
    EXPECT_NE(stereo.out.find("channel=\"right\""), std::string::npos);
    EXPECT_EQ(mono.out.find("channel=\"right\""), std::string::npos);
}

class ProgramNames : public ::testing::Test {
  protected:
    ZORVorixMetaClass product;
    cli::ProgramCatalog catalog{product};

    std::string Refusal(const std::string& text) {
        try {
            catalog.Resolve(text);
        } catch (const cli::UsageError& e) {
            return e.what();
        }
        return "accepted";
    }
};

TEST_F(ProgramNames, MatchByNumberFullNameOrUniquePrefixAnyCase) {
    EXPECT_EQ(catalog.Resolve("10"), 10);
    EXPECT_EQ(catalog.Resolve("Low Cut"), 4);
    EXPECT_EQ(catalog.Resolve("low c"), 4);
    EXPECT_EQ(catalog.Resolve("am radio"), 15);
    EXPECT_EQ(catalog.Resolve("10-band"), 2);
    EXPECT_EQ(catalog.Resolve("TELEPHONE (48"), 17);
}

TEST_F(ProgramNames, RefusalsNameTheCandidates) {
    const std::string ambiguous = Refusal("hum");
    EXPECT_NE(ambiguous.find("\"Hum Suppression (50Hz)\""), std::string::npos) << ambiguous;
    EXPECT_NE(ambiguous.find("\"Hum Suppression (60Hz)\""), std::string::npos) << ambiguous;
    const std::string misspelt = Refusal("Psuedo Stereo");
    EXPECT_NE(misspelt.find("\"Pseudo Stereo\""), std::string::npos) << misspelt;
    EXPECT_EQ(misspelt.find("Basic EQ"), std::string::npos) << misspelt;
    const std::string inside = Refusal("Rolloff");
    EXPECT_NE(inside.find("\"Half-Band Steep Rolloff\""), std::string::npos) << inside;
    EXPECT_NE(Refusal("19"), "accepted");
    EXPECT_NE(Refusal(""), "accepted");
}

// A wrong name is the first thing to tell, whatever the value: the value means nothing without
// a parameter to hold it.
TEST(ParameterNames, NameIsCheckedBeforeTheValue) {
    const RunResult result = RunTool({"response", "--set", "prmControl_1_Q=nan"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(
        result.err.rfind("vorix response: there is no parameter called \"prmControl_1_Q\"", 0), 0u)
        << result.err;
    ZORVorixMetaClass product;
    EXPECT_THROW(cli::ParseParameterSetting("Output Gain=nan", product), cli::UsageError);
    const cli::ParameterSetting mono = cli::ParseParameterSetting("Output Gain=-1e30", product);
    EXPECT_EQ(mono.value, -1e30);
    EXPECT_EQ(mono.valueText, "-1e30");
}

TEST(ParameterNames, InternalOrEditorNameForTheLayout) {
    ZORVorixMetaClass product;
    const ChannelConfig stereo{2, 2}, mono{1, 1};
    EXPECT_EQ(cli::FindParameterByName(product, "prmControl_1_Gain", stereo).id, 4);
    EXPECT_EQ(cli::FindParameterByName(product, "b: gain", stereo).id, 4);
    EXPECT_EQ(cli::FindParameterByName(product, "J: Q/BW/Slope", mono).id, 29);
    EXPECT_EQ(cli::FindParameterByName(product, "Left Gain", stereo).id, kLeftGainId);
    EXPECT_EQ(cli::FindParameterByName(product, "Output Gain", mono).id, kLeftGainId);
    EXPECT_THROW(cli::FindParameterByName(product, "Output Gain", stereo), cli::UsageError);
    EXPECT_THROW(cli::FindParameterByName(product, "n/a", mono), cli::UsageError);
    EXPECT_THROW(cli::FindParameterByName(product, "<EMPTY>", stereo), cli::UsageError);
}

}  // namespace
}  // namespace vorix::test
