#include "CliTestSupport.h"
#include "core/SettingsTexts.h"
#include "vorix/Interrupt.h"

namespace vorix::test {
namespace {

// One render: what the tool is told, and what the in-process reference is told to match it.
struct RenderCase {
    const char* label;
    int channels;
    int rate;
    int fileFormat;  // the input's, and so the output's unless asFloat
    bool asFloat;
    std::vector<std::string> options;  // besides IN, OUT and --float
    ReferenceRender reference;

    friend void PrintTo(const RenderCase& c, std::ostream* os) { *os << c.label; }
};

ReferenceRender Program(int program, int32_t block,
                        std::vector<std::pair<int32_t, float>> changes = {}) {
    return ReferenceRender{FactoryProgramText(program), std::move(changes), block};
}

const int kWav16 = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
const int kWavFloat = SF_FORMAT_WAV | SF_FORMAT_FLOAT;

// clang-format off
std::vector<RenderCase> RenderCases() {
    return {
        {"split_pairs_stereo_float", 2, 48000, kWavFloat, false,
         {"--program", "Pseudo Stereo"}, Program(7, 4096)},
        {"harmonic_mono_16bit_block64", 1, 44100, kWav16, false,
         {"--program", "14", "--block", "64"}, Program(14, 64)},
        {"external_stereo_16bit_odd_block_clipped", 2, 44100, kWav16, false,
         {"--program", "telephone (44", "--block", "1000", "--set", "Left Gain=18"},
         Program(16, 1000, {{30, 18.0f}})},
        {"16bit_in_float_out_with_trim", 2, 44100, kWav16, true,
         {"--program", "Controlled Bass Boost", "--block", "257", "--set", "prmLeftGain=-6"},
         Program(3, 257, {{30, -6.0f}})},
        {"slot_changes_by_both_names_mono", 1, 48000, kWavFloat, false,
         {"--program", "0", "--set", "a: gain=9", "--set", "prmControl_2_Freq=8000"},
         Program(0, 4096, {{1, 9.0f}, {6, 8000.0f}})},
        {"aiff_24bit_stereo", 2, 48000, SF_FORMAT_AIFF | SF_FORMAT_PCM_24, false,
         {"--program", "AM Radio", "--block", "512"}, Program(15, 512)},
    };
}
// clang-format on

class RenderMatchesCore : public ::testing::TestWithParam<RenderCase> {};

// The tool's output, read back as the file stores it, against the reference's floats written the
// way the tool writes them: identical bits in every encoding.
TEST_P(RenderMatchesCore, BitForBit) {
    const RenderCase& c = GetParam();
    TempFolder folder;
    const bool aiff = (c.fileFormat & SF_FORMAT_TYPEMASK) == SF_FORMAT_AIFF;
    const std::string in = folder / (aiff ? "in.aiff" : "in.wav");
    const std::string out = folder / (aiff ? "out.aiff" : "out.wav");
    WriteAudio(in, TestAudio(c.channels, c.rate, 1.2), c.fileFormat);
    std::vector<std::string> args{"render", in, out};
    args.insert(args.end(), c.options.begin(), c.options.end());
    if (c.asFloat) args.push_back("--float");

    const RunResult result = RunTool(args);
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, "");

    const int outputFormat =
        c.asFloat ? (c.fileFormat & ~SF_FORMAT_SUBMASK) | SF_FORMAT_FLOAT : c.fileFormat;
    WriteLikeTheTool(folder / "reference", c.reference.Render(ReadAudio(in)), outputFormat);
    int toolFormat = 0;
    const Audio tool = ReadAudio(out, &toolFormat);
    const Audio reference = ReadAudio(folder / "reference");
    EXPECT_EQ(toolFormat, outputFormat);
    ASSERT_EQ(tool.samples.size(), reference.samples.size());
    EXPECT_EQ(tool.rate, c.rate);
    EXPECT_EQ(0, std::memcmp(tool.samples.data(), reference.samples.data(),
                             tool.samples.size() * sizeof(float)));
    EXPECT_NE(tool.samples, ReadAudio(in).samples) << "the program changed nothing";
}

INSTANTIATE_TEST_SUITE_P(Programs, RenderMatchesCore, ::testing::ValuesIn(RenderCases()),
                         [](const auto& info) { return std::string(info.param.label); });

TEST(Render, FixedRateProgramOnAnotherRateWarnsWithItsRate) {
    TempFolder folder;
    WriteAudio(folder / "in.wav", TestAudio(2, 48000, 0.2), kWav16);
    const RunResult wrong =
        RunTool({"render", folder / "in.wav", folder / "out.wav", "--program", "16"});
    EXPECT_EQ(wrong.status, 0);
    EXPECT_EQ(LineCount(wrong.err), 1);
    EXPECT_NE(wrong.err.find("44100 Hz"), std::string::npos) << wrong.err;
    EXPECT_EQ(RunTool({"render", folder / "in.wav", folder / "out.wav", "--program", "17"}).err,
              "");
}

// Bad input of every kind: the status, one sentence, and nothing new in the folder.
struct BadInput {
    const char* label;
    int status;
    std::vector<std::string> options;
    std::string input = "in.wav";
    std::string mustSay = "";
    std::string output = "out.wav";

    friend void PrintTo(const BadInput& c, std::ostream* os) { *os << c.label; }
};

// clang-format off
std::vector<BadInput> BadInputs() {
    return {
        {"missing_file", 2, {}, "absent.wav", "no such file"},
        {"text_named_wav", 2, {}, "text.wav", "is not an audio file that can be read"},
        {"folder_as_input", 2, {}, "sub"},
        {"three_channels", 2, {}, "three.wav", "3 channels"},
        {"sample_rate_zero", 2, {}, VORIX_REGRESSIONS_DIR "/audio/sample-rate-zero.wav",
         "sample-rate-zero.wav\" is not an audio file that can be read: its kind is unknown, or "
         "its header is damaged.\n"},
        {"corrupt_settings", 2, {"--settings", "corrupt.vrx"}, "in.wav", "corrupted"},
        {"wrong_version_settings", 2, {"--settings", "future.vrx"}, "in.wav",
         "Unable to load settings. These settings are not readable by this version of Vorix."},
        {"settings_not_settings", 2, {"--settings", "text.wav"}, "in.wav", "Unable to load"},
        {"settings_folder", 2, {"--settings", "sub"}, "in.wav",
         "sub\" is a folder, not a settings file."},
        {"settings_without_end", 2, {"--settings", "/dev/zero"}, "in.wav",
         "vorix render: Unable to load settings. These are not valid settings or the settings "
         "have been corrupted.\n"},
        {"unknown_program", 1, {"--program", "Jazz"}, "in.wav", "no factory program"},
        {"unknown_parameter", 1, {"--set", "prmVolume=3"}, "in.wav", "prmVolume"},
        {"block_of_zero", 1, {"--block", "0"}},
        {"block_beyond_limit", 1, {"--block", "4097"}, "in.wav", "4096"},
        {"float_into_flac", 2, {"--float"}, "in.wav", ".flac", "out.flac"},
        {"output_folder_missing", 2, {}, "in.wav", "no such file", "absent/out.wav"},
        {"output_is_a_folder", 2, {}, "in.wav", "folder", "sub.wav"},
    };
}
// clang-format on

class RenderRefuses : public ::testing::TestWithParam<BadInput> {};

TEST_P(RenderRefuses, WithOneSentenceAndNoOutput) {
    const BadInput& c = GetParam();
    TempFolder folder;
    WriteAudio(folder / "in.wav", TestAudio(1, 44100, 0.1), kWav16);
    WriteAudio(folder / "three.wav", TestAudio(3, 44100, 0.1), kWav16);
    WriteText(folder / "text.wav", "just some notes\n");
    WriteText(folder / "corrupt.vrx", "<!-- Zorvane Sound Works -->\n<vorix_filter_sett");
    std::string future = FactoryProgramText(4);
    future.replace(future.find("v1.0"), 4, "v9.0");
    WriteText(folder / "future.vrx", future);
    fs::create_directory(folder / "sub");
    fs::create_directory(folder / "sub.wav");
    const std::vector<std::string> before = folder.Names();

    std::vector<std::string> args{"render", folder / c.input, folder / c.output};
    for (const std::string& option : c.options)
        args.push_back(fs::exists(folder / option) ? folder / option : option);
    const RunResult result = RunTool(args);

    EXPECT_EQ(result.status, c.status) << result.err;
    EXPECT_EQ(LineCount(result.err), 1) << result.err;
    EXPECT_NE(result.err.find(c.mustSay), std::string::npos) << result.err;
    EXPECT_EQ(folder.Names(), before);
}

INSTANTIATE_TEST_SUITE_P(Inputs, RenderRefuses, ::testing::ValuesIn(BadInputs()),
                         [](const auto& info) { return std::string(info.param.label); });

// Settings files are read up to the longest settings text the core takes and one byte more: a
// file of that length loads, a longer one is refused as corrupted without being read to its end.
TEST(Render, SettingsFileOfTheLargestSizeLoadsAndOneByteMoreIsRefused) {
    TempFolder folder;
    WriteAudio(folder / "in.wav", TestAudio(2, 44100, 0.1), kWav16);
    std::string text = FactoryProgramText(4);
    text.append(kMaxSettingsTextBytes - text.size(), '\n');
    WriteText(folder / "largest.vrx", text);
    WriteText(folder / "longer.vrx", text + "\n");
    const RunResult largest = RunTool(
        {"render", folder / "in.wav", folder / "a.wav", "--settings", folder / "largest.vrx"});
    EXPECT_EQ(largest.status, 0) << largest.err;
    const RunResult longer = RunTool(
        {"render", folder / "in.wav", folder / "b.wav", "--settings", folder / "longer.vrx"});
    EXPECT_EQ(longer.status, 2);
    EXPECT_EQ(longer.err,
              "vorix render: Unable to load settings. These are not valid settings or the "
              "settings have been corrupted.\n");
    EXPECT_FALSE(fs::exists(folder / "b.wav"));
}

// A render stopped after its output file was begun removes it, and an older file of the name
// stays as it was.
TEST(Render, InterruptedRenderLeavesTheOlderOutputAlone) {
    TempFolder folder;
    WriteAudio(folder / "in.wav", TestAudio(2, 44100, 0.5), kWav16);
    WriteText(folder / "out.wav", "older");
    const std::vector<std::string> before = folder.Names();
    cli::RequestInterrupt();
    const RunResult result = RunTool({"render", folder / "in.wav", folder / "out.wav"});
    cli::ClearInterrupt();
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(LineCount(result.err), 1) << result.err;
    EXPECT_EQ(folder.Names(), before);
    std::ifstream older(folder / "out.wav");
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(older), {}), "older");
}

TEST(Render, ContainerFollowsTheOutputNameAndHoldsTheSameSamples) {
    TempFolder folder;
    WriteAudio(folder / "in.wav", TestAudio(2, 44100, 0.3), kWav16);
    const std::vector<std::pair<std::string, int>> outputs = {
        {"out.wav", SF_FORMAT_WAV}, {"out.FLAC", SF_FORMAT_FLAC}, {"out.aif", SF_FORMAT_AIFF}};
    std::vector<Audio> rendered;
    for (const auto& [name, container] : outputs) {
        ASSERT_EQ(RunTool({"render", folder / "in.wav", folder / name, "--program", "4"}).status,
                  0);
        int format = 0;
        rendered.push_back(ReadAudio(folder / name, &format));
        EXPECT_EQ(format & SF_FORMAT_TYPEMASK, container) << name;
        EXPECT_EQ(format & SF_FORMAT_SUBMASK, SF_FORMAT_PCM_16) << name;
    }
    EXPECT_EQ(rendered[0].samples, rendered[1].samples);
    EXPECT_EQ(rendered[0].samples, rendered[2].samples);
}

// Each integer sample is the float render rounded to the nearest step of the file's depth, and
// clipped at full scale where the trim drives the sound beyond it.
TEST(Render, IntegerOutputIsTheFloatRenderRoundedAndClipped) {
    TempFolder folder;
    for (const auto& [format, bits] :
         {std::pair{kWav16, 16}, {SF_FORMAT_FLAC | SF_FORMAT_PCM_24, 24}}) {
        const std::string in = folder / (bits == 16 ? "in.wav" : "in.flac");
        WriteAudio(in, TestAudio(2, 44100, 0.2), format);
        const std::string options[] = {"--program", "Basic EQ", "--set", "prmLeftGain=12"};
        std::vector<std::string> words{"render", in, folder / "float.wav", "--float"};
        words.insert(words.end(), std::begin(options), std::end(options));
        ASSERT_EQ(RunTool(words).status, 0);
        words[2] = folder / (bits == 16 ? "int.wav" : "int.flac");
        words.erase(words.begin() + 3);
        ASSERT_EQ(RunTool(words).status, 0);
        const Audio exact = ReadAudio(folder / "float.wav");
        const std::vector<int> stored = ReadIntegers(words[2]);
        ASSERT_EQ(stored.size(), exact.samples.size());
        const double steps = std::ldexp(1.0, bits - 1);
        int clipped = 0;
        for (std::size_t i = 0; i < stored.size(); ++i) {
            const double expected =
                std::clamp(std::nearbyint(exact.samples[i] * steps), -steps, steps - 1);
            clipped += std::abs(exact.samples[i]) > 1.0f;
            ASSERT_EQ(stored[i] / std::ldexp(1.0, 32 - bits), expected) << "sample " << i;
        }
        EXPECT_GT(clipped, 0) << "the trim drives some samples beyond full scale";
    }
}

// A short render on a terminal shows no progress bar, and an older file of the output's name is
// replaced whole.
TEST(Render, ShortRenderOnATerminalIsQuietAndReplacesAnOlderFile) {
    TempFolder folder;
    WriteAudio(folder / "in.wav", TestAudio(2, 48000, 0.5), kWav16);
    WriteText(folder / "out.wav", "an older file, not audio");
    std::ostringstream out, err;
    const std::vector<std::string> words{"render", folder / "in.wav", folder / "out.wav"};
    EXPECT_EQ(cli::RunVorix(words, out, err, /*errIsTerminal=*/true), 0);
    EXPECT_EQ(err.str(), "");
    EXPECT_EQ(ReadAudio(folder / "out.wav").Frames(), 24000u);
    EXPECT_EQ(folder.Names(), (std::vector<std::string>{"in.wav", "out.wav"}));
}

TEST(Render, EmptyInputGivesAnEmptyFileOfItsFormat) {
    TempFolder folder;
    WriteAudio(folder / "in.wav", TestAudio(1, 22050, 0.0), kWav16);
    ASSERT_EQ(RunTool({"render", folder / "in.wav", folder / "out.wav"}).status, 0);
    const Audio out = ReadAudio(folder / "out.wav");
    EXPECT_EQ(out.rate, 22050);
    EXPECT_EQ(out.Frames(), 0u);
}

// The right trim follows the left one while the two are linked, as in every program; a change of
// the right trim alone is not taken, and the user hears of it.
TEST(Render, ParameterValueTheEngineDoesNotTakeIsWarnedOf) {
    TempFolder folder;
    WriteAudio(folder / "in.wav", TestAudio(2, 44100, 0.2), kWav16);
    const RunResult refused = RunTool({"render", folder / "in.wav", folder / "a.wav", "--program",
                                       "4", "--set", "prmRightGain=-6"});
    EXPECT_EQ(refused.status, 0);
    EXPECT_EQ(LineCount(refused.err), 1);
    EXPECT_NE(refused.err.find("prmRightGain"), std::string::npos) << refused.err;
    ASSERT_EQ(RunTool({"render", folder / "in.wav", folder / "b.wav", "--program", "4"}).status, 0);
    EXPECT_EQ(ReadAudio(folder / "a.wav").samples, ReadAudio(folder / "b.wav").samples);
    EXPECT_EQ(
        RunTool({"render", folder / "in.wav", folder / "c.wav", "--set", "prmLeftGain=-6"}).err,
        "");
}

// A value outside a parameter's range is held to the nearer end of it, as a host's control holds
// it: the render is the one of that end, and a warning line names the range and the value set.
TEST(Render, ParameterValueOutsideItsRangeIsHeldToTheRangeWithAWarning) {
    TempFolder folder;
    WriteAudio(folder / "in.wav", TestAudio(2, 44100, 0.2), kWav16);
    const auto render = [&](const std::string& name, const std::string& setting) {
        return RunTool({"render", folder / "in.wav", folder / name, "--float", "--set", setting});
    };
    struct Case {
        const char* outside;
        const char* end;
        const char* warning;
    };
    const Case cases[] = {
        {"prmControl_1_Freq=-5", "prmControl_1_Freq=16",
         "vorix render: warning: prmControl_1_Freq takes 16 Hz to 20000 Hz, so it is set to 16 Hz "
         "rather than -5.\n"},
        {"prmControl_1_Freq=0", "prmControl_1_Freq=16", "rather than 0.\n"},
        {"prmControl_1_Freq=1e300", "prmControl_1_Freq=20000", "set to 20000 Hz rather than 1e300"},
        {"B: Gain=40", "B: Gain=18", "takes -18 dB to 18 dB, so it is set to 18 dB rather than 40"},
        {"prmControl_1_Poly=-0.5", "prmControl_1_Poly=0", "takes 0 to 1, so it is set to 0 rather"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.outside);
        const RunResult held = render("held.wav", c.outside);
        ASSERT_EQ(held.status, 0) << held.err;
        EXPECT_EQ(LineCount(held.err), 1);
        EXPECT_NE(held.err.find(c.warning), std::string::npos) << held.err;
        const RunResult atEnd = render("end.wav", c.end);
        ASSERT_EQ(atEnd.status, 0);
        EXPECT_EQ(atEnd.err, "");
        const Audio output = ReadAudio(folder / "held.wav");
        EXPECT_EQ(output.samples, ReadAudio(folder / "end.wav").samples);
        EXPECT_TRUE(std::all_of(output.samples.begin(), output.samples.end(),
                                [](float v) { return std::fabs(v) < 4.0f; }));
    }
}

}  // namespace
}  // namespace vorix::test
