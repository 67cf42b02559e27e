// A host that nobody on this project wrote: lv2apply renders a file through the plug-in, and the
// result must equal, bit for bit, the core's own render with the same host parameters.

#include <gtest/gtest.h>
#include <sndfile.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <limits>
#include <sstream>
#include <string>

#include "CoreRenderer.h"
#include "Lv2TestHost.h"
#include "lv2/Lv2Names.h"
#include "vorix/CommandLine.h"

namespace vorix::test {
namespace {

constexpr int kRate = 44100;
// lv2apply runs the plug-in one frame at a time.
constexpr int kLv2ApplyBlock = 1;

void WriteFloatWav(const std::string& path, const Audio& audio) {
    SF_INFO info{};
    info.samplerate = kRate;
    info.channels = static_cast<int>(audio.size());
    info.format = SF_FORMAT_WAV | SF_FORMAT_FLOAT;
    SNDFILE* file = sf_open(path.c_str(), SFM_WRITE, &info);
    ASSERT_NE(file, nullptr) << sf_strerror(nullptr);
    std::vector<float> frames;
    for (std::size_t i = 0; i < audio[0].size(); ++i)
        for (const auto& channel : audio)
            frames.push_back(channel[i]);
    sf_writef_float(file, frames.data(), static_cast<sf_count_t>(audio[0].size()));
    sf_close(file);
}

Audio ReadWav(const std::string& path) {
    SF_INFO info{};
    SNDFILE* file = sf_open(path.c_str(), SFM_READ, &info);
    if (file == nullptr) return {};
    std::vector<float> frames(static_cast<std::size_t>(info.frames * info.channels));
    sf_readf_float(file, frames.data(), info.frames);
    sf_close(file);
    Audio audio(static_cast<std::size_t>(info.channels));
    for (std::size_t i = 0; i < frames.size(); ++i)
        audio[i % audio.size()].push_back(frames[i]);
    return audio;
}

class Lv2Apply : public ::testing::TestWithParam<int> {
  protected:
    void SetUp() override {
        if (!std::string(VORIX_LV2APPLY_SKIP).empty()) GTEST_SKIP() << VORIX_LV2APPLY_SKIP;
        folder =
            std::filesystem::temp_directory_path() /
            ("vorix-lv2apply-" + std::to_string(::getpid()) + "-" + std::to_string(GetParam()));
        std::filesystem::create_directories(folder);
    }
    void TearDown() override { std::filesystem::remove_all(folder); }

    // lv2apply over `input` with `-c SYMBOL VALUE` for each parameter; empty after a failure.
    Audio RenderWithLv2Apply(const Audio& input, const std::vector<HostParameter>& set) {
        const std::string in = (folder / "in.wav").string();
        const std::string out = (folder / "out.wav").string();
        WriteFloatWav(in, input);
        std::string command = std::string(VORIX_LV2APPLY) + " -i " + in + " -o " + out;
        if (!std::string(VORIX_LV2APPLY_PRELOAD).empty()) {
            command = "env LD_PRELOAD=" + std::string(VORIX_LV2APPLY_PRELOAD) + " " + command;
        }
        for (const HostParameter& p : set)
            command += " -c " + p.symbol + " " + std::to_string(p.value);
        command += std::string(" ") + Lv2PluginUri(GetParam());
        const int status = std::system(command.c_str());
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << command;
        return ReadWav(out);
    }

    // The command-line tool over the same file with `--set SYMBOL=VALUE` for each parameter, one
    // frame per block as lv2apply runs.
    Audio RenderWithVorix(const Audio& input, const std::vector<HostParameter>& set) {
        const std::string in = (folder / "in.wav").string();
        const std::string out = (folder / "vorix.wav").string();
        WriteFloatWav(in, input);
        std::vector<std::string> args{
            "render", in, out, "--block", std::to_string(kLv2ApplyBlock), "--float", "--quiet"};
        for (const HostParameter& p : set) {
            args.push_back("--set");
            args.push_back(p.symbol + "=" + std::to_string(p.value));
        }
        std::ostringstream log;
        EXPECT_EQ(cli::RunVorix(args, log, log), 0) << log.str();
        return ReadWav(out);
    }

    std::filesystem::path folder;
};

TEST_P(Lv2Apply, RendersBitIdenticalToTheCommandLineToolWithTheSameHostParameters) {
    const Audio input = TestSignal(GetParam(), kRate / 5, kRate);
    for (const std::vector<HostParameter>& set : std::vector<std::vector<HostParameter>>{
             {{"prmControl_1_Gain", 6.0f}},
             {{"prmControl_0_Freq", 250.0f},
              {"prmControl_1_Gain", -4.5f},
              {"prmControl_2_Poly", 0.75f},
              {"prmLeftGain", 2.5f}},
         }) {
        const Audio out = RenderWithLv2Apply(input, set);
        ASSERT_EQ(out.size(), input.size());
        EXPECT_EQ(out, RenderWithVorix(input, set));
        EXPECT_NE(out, input);
    }
}

// "lv2apply -c prmControl_1_Freq -5" sounds as filter control B at the bottom of its range, and
// an infinite gain and trim as the tops and bottoms of theirs.
TEST_P(Lv2Apply, HoldsValuesBeyondTheRangeToItsEnds) {
    const Audio input = TestSignal(GetParam(), kRate / 5, kRate);
    const float inf = std::numeric_limits<float>::infinity();
    const Audio out = RenderWithLv2Apply(
        input, {{"prmControl_1_Freq", -5.0f}, {"prmControl_1_Gain", inf}, {"prmLeftGain", -inf}});
    ASSERT_EQ(out.size(), input.size());
    EXPECT_EQ(out, RenderWithVorix(input, {{"prmControl_1_Freq", 16.0f},
                                           {"prmControl_1_Gain", 18.0f},
                                           {"prmLeftGain", -24.0f}}));
}

INSTANTIATE_TEST_SUITE_P(MonoAndStereo, Lv2Apply, ::testing::Values(1, 2),
                         [](const auto& info) { return info.param == 1 ? "Mono" : "Stereo"; });

}  // namespace
}  // namespace vorix::test
