#include <algorithm>
#include <filesystem>
#include <sstream>
#include <tuple>

#include <sndfile.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "HostTestSupport.h"
#include "vorix-host/AudioFile.h"
#include "vorix-host/HostCommands.h"
#include "vorix-host/SessionFile.h"

namespace vorix::test {
namespace {

class CommandLineTest : public ::testing::Test {
  protected:
    CommandLineTest() {
        const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
        directory_ = std::filesystem::temp_directory_path() /
                     (std::string("vorix-host-") + test->name() + "-" + std::to_string(getpid()));
        std::filesystem::create_directories(directory_);
    }
    ~CommandLineTest() override { std::filesystem::remove_all(directory_); }

    int Run(std::vector<std::string> args) {
        out_.str("");
        err_.str("");
        return RunHostCommand(args, out_, err_, kModulePath);
    }
    std::string File(const char* name) const { return (directory_ / name).string(); }
    // A stereo input file.
    std::string Input() {
        WriteAudioFile(File("in.wav"), TrackWithoutZeros(), 0);
        return File("in.wav");
    }
    std::vector<std::vector<float>> Samples(const std::string& path) {
        AudioFileFormat format = 0;
        return ReadAudioFile(path, format).channels;
    }

    std::filesystem::path directory_;
    std::ostringstream out_;
    std::ostringstream err_;
};

TEST_F(CommandLineTest, RendersAGeneratedSine) {
    EXPECT_EQ(Run({"render", "--type", "mnRT", "sine:1000:0.25:0.5", File("sine.wav"), "--rate",
                   "44100"}),
              0);
    AudioFileFormat format = 0;
    const AudioData sine = ReadAudioFile(File("sine.wav"), format);
    EXPECT_EQ(std::tuple(sine.sampleRate, sine.ChannelCount(), sine.Frames()),
              std::tuple(44100, 1, 22050));
    EXPECT_NEAR(*std::max_element(sine.channels[0].begin(), sine.channels[0].end()), 0.25f, 0.01f);
}

TEST_F(CommandLineTest, RefusesASineItCannotMake) {
    for (const char* sine : {"sine:fast", "sine:1000:0.5:0", "sine:1000:", "sine:1:2:3:4"}) {
        EXPECT_EQ(Run({"render", "--type", "mnRT", sine, File("sine.wav")}), kExitUsage) << sine;
    }
    EXPECT_EQ(
        err_.str(),
        "A sine takes at most a frequency, an amplitude and a length. See vorix-host --help.\n");
    EXPECT_FALSE(std::filesystem::exists(File("sine.wav")));
}

TEST_F(CommandLineTest, ListsTheEffectTypes) {
    EXPECT_EQ(Run({"types"}), 0);
    EXPECT_EQ(out_.str(), "StRT\tVorix\tStereoPageTables\nmnRT\tVorix\tMonoPageTables\n");
}

TEST_F(CommandLineTest, ListsTheControlsOfAnInsert) {
    EXPECT_EQ(Run({"--module", kModulePath, "controls", "--type", "mnRT"}), 0);
    std::istringstream lines(out_.str());
    std::vector<std::string> rows;
    for (std::string row; std::getline(lines, row);)
        rows.push_back(row);
    ASSERT_EQ(rows.size(), 34u);
    EXPECT_EQ(rows[0], "1\tbypa\tMaster Bypass\tdiscrete\t0\t1\t0");
    EXPECT_EQ(rows[1], "2\tctaa\tA: Frequency\tcontinuous\t16.00 Hz\t20.00 kHz\t100.00 Hz");
    EXPECT_EQ(rows[31], "32\tctbe\tOutput Trim\tcontinuous\t-24.0 dB\t24.0 dB\t0.0 dB");
}

TEST_F(CommandLineTest, SavesASessionThatRendersTheSameInAnotherBlockSize) {
    const std::string input = Input();
    EXPECT_EQ(Run({"render", "--type", "StRT", input, File("first.wav"), "--control", "ctae=9",
                   "--control", "5=2k", "--save", File("s.vxs"), "--meters"}),
              0);
    EXPECT_EQ(out_.str().rfind("latency\t0\nmeter\tL Out\t", 0), 0u);
    EXPECT_EQ(Run({"render", "--load", File("s.vxs"), input, File("again.wav"), "--block", "333"}),
              0);
    EXPECT_EQ(Samples(File("again.wav")), Samples(File("first.wav")));
    EXPECT_NE(Samples(File("again.wav")), Samples(input));
    EXPECT_EQ(err_.str(), "");
}

TEST_F(CommandLineTest, WritesTheOutputInTheInputsFormat) {
    const int pcm24 = SF_FORMAT_WAV | SF_FORMAT_PCM_24;
    WriteAudioFile(File("in.aiff"), TrackWithoutZeros(), SF_FORMAT_AIFF | SF_FORMAT_PCM_16);
    WriteAudioFile(File("in.wav"), TrackWithoutZeros(), pcm24);
    for (const char* name : {"in.aiff", "in.wav"}) {
        EXPECT_EQ(Run({"render", "--type", "StRT", File(name), File("out")}), 0);
        AudioFileFormat in = 0, out = 0;
        EXPECT_EQ(ReadAudioFile(File("out"), out).Frames(), ReadAudioFile(File(name), in).Frames());
        EXPECT_EQ(out, in) << name;
    }
}

TEST_F(CommandLineTest, ListsTheControlsOfARestoredInsert) {
    EXPECT_EQ(Run({"render", "--type", "mnRT", "sine:", File("x.wav"), "--control", "ctae=-3.5",
                   "--control", "bypa=1", "--save", File("s.vxs")}),
              0);
    EXPECT_EQ(Run({"controls", "--load", File("s.vxs")}), 0);
    EXPECT_NE(out_.str().find("\n6\tctae\tB: Gain\tcontinuous\t-18.0 dB\t18.0 dB\t-3.5 dB\n"),
              std::string::npos);
    // The control state leaves the master bypass alone.
    EXPECT_EQ(out_.str().rfind("1\tbypa\tMaster Bypass\tdiscrete\t0\t1\t0\n", 0), 0u);
}

TEST_F(CommandLineTest, TellsWhatWentWrongAndLeavesNoOutput) {
    const std::string input = Input();
    const std::string output = File("out.wav");
    EXPECT_EQ(Run({"render", "--type", "StRT", input}), kExitUsage);
    EXPECT_EQ(err_.str(),
              "The command render needs an input and an output. See vorix-host --help.\n");
    EXPECT_EQ(Run({"render", "--type", "mnRT", input, output}), kExitFailure);
    EXPECT_EQ(err_.str(), "The input has 2 channels, but the insert takes 1 channel.\n");
    EXPECT_EQ(Run({"render", "--type", "StRT", input, output, "--block", "0"}), kExitUsage);
    EXPECT_EQ(Run({"render", "--type", "StRT", input, output, "--save", File("no/s.vxs")}),
              kExitFailure);
    EXPECT_EQ(err_.str(), "The file " + File("no/s.vxs") +
                              " could not be written: No such file or directory.\n");
    EXPECT_FALSE(std::filesystem::exists(output));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(directory_), {}), 1);
}

// Whatever the command line gets wrong is told as the user's mistake, status 1, in one sentence
// that points at the help, before any output appears.
TEST_F(CommandLineTest, CommandLineMistakesExitWithOne) {
    const std::string input = Input();
    const std::string output = File("out.wav");
    const std::vector<std::vector<std::string>> mistakes = {
        {"controls", "--type", "XXXX"},
        {"render", "--type", "XXXX", input, output},
        {"render", "--type", "StRT", input, output, "--control", "ctzz=1"},
        {"render", "--type", "StRT", input, output, "--control", "99=1"},
        {"render", "--type", "StRT", input, output, "--control", "ctae=loud"},
        {"render", "--type", "StRT", input, output, "--automate", "ctae=loud@1"},
        {"render", "--type", "StRT", input, output, "--automate", "ctzz=1@1"}};
    for (const std::vector<std::string>& words : mistakes) {
        SCOPED_TRACE(words.back());
        EXPECT_EQ(Run(words), kExitUsage);
        const std::string err = err_.str();
        EXPECT_EQ(std::count(err.begin(), err.end(), '\n'), 1) << err;
        EXPECT_TRUE(err.ends_with(". See vorix-host --help.\n")) << err;
    }
    EXPECT_EQ(err_.str(),
              "The insert has no control ctzz; give a number from 1 to 34 or a "
              "four-character id. See vorix-host --help.\n");
    EXPECT_FALSE(std::filesystem::exists(output));
}

// Files that are no audio or no session fail the work with one sentence in the host's words:
// none of the audio library's wording, nothing read without end.
TEST_F(CommandLineTest, RefusesFilesOfTheWrongKindInItsOwnWords) {
    const std::string rateZero = VORIX_REGRESSIONS_DIR "/audio/sample-rate-zero.wav";
    std::filesystem::create_directory(File("folder"));
    const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {
        {{"render", "--type", "StRT", rateZero, File("out.wav")},
         "The file " + rateZero +
             " is not audio the host can read: its kind is unknown, or its header is damaged.\n"},
        {{"render", "--type", "StRT", File("folder"), File("out.wav")},
         "The audio file " + File("folder") + " is a folder.\n"},
        {{"controls", "--load", File("folder")},
         "The session file " + File("folder") + " is a folder.\n"},
        {{"controls", "--load", "/dev/zero"},
         "The file /dev/zero is larger than any Vorix session.\n"},
    };
    for (const auto& [words, message] : cases) {
        EXPECT_EQ(Run(words), kExitFailure);
        EXPECT_EQ(err_.str(), message);
    }
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(directory_), {}), 1);
}

// The host as a process whose output outgrows the file size it may write: the signal that ends
// it removes the half-written temporary file first.
TEST_F(CommandLineTest, EndedByASignalWhileWritingLeavesNoFile) {
    const std::string host = VORIX_HOST_PATH;
    const std::string output = File("out.wav");
    const pid_t child = fork();
    if (child == 0) {
        const rlimit smallFiles{65536, 65536};
        const rlimit noCore{0, 0};
        setrlimit(RLIMIT_FSIZE, &smallFiles);
        setrlimit(RLIMIT_CORE, &noCore);
        execl(host.c_str(), host.c_str(), "render", "--type", "StRT", "sine:1000:0.5:2",
              output.c_str(), static_cast<char*>(nullptr));
        _exit(127);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status)) << status;
    EXPECT_EQ(WTERMSIG(status), SIGXFSZ);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(directory_), {}), 0);
}

TEST_F(CommandLineTest, PrintsTheInsertsMessageAndRefusesADamagedSession) {
    const std::string input = Input();
    // A whole chunk whose settings are no settings.
    std::vector<std::uint8_t> header(56);
    header[3] = 80;
    header[20] = 'z', header[21] = 'o', header[22] = 'r', header[23] = 'c';
    std::vector<std::uint8_t> chunk(header);
    chunk.resize(80, 'x');
    WriteSessionFile(File("bad.vxs"), {{Id("StRT"), {{Id("zorc"), chunk}}}});
    EXPECT_EQ(Run({"render", "--load", File("bad.vxs"), input, File("out.wav")}), kExitFailure);
    EXPECT_EQ(err_.str(),
              "Unable to load settings. These are not valid settings or the settings have been "
              "corrupted.\nThe insert could not read its saved chunk zorc.\n");
    EXPECT_FALSE(std::filesystem::exists(File("out.wav")));
}

TEST_F(CommandLineTest, HelpsWithEveryCommand) {
    for (const char* command : {"types", "controls", "render"}) {
        EXPECT_EQ(Run({command, "--help"}), 0);
        EXPECT_EQ(out_.str().rfind(std::string("Usage: vorix-host [--module PATH] ") + command, 0),
                  0u);
    }
    EXPECT_EQ(Run({"controls", "--help"}), 0);
    EXPECT_NE(out_.str().find("--load SESSION"), std::string::npos);
    EXPECT_EQ(Run({"--help"}), 0);
    EXPECT_EQ(Run({}), kExitUsage);
    EXPECT_EQ(Run({"play"}), kExitUsage);
}

}  // namespace
}  // namespace vorix::test
