#include "CliTestSupport.h"
#include "dsp/FilterChainOps.h"
#include "dsp/FilterRecord.h"
#include "dsp/HarmonicFilter.h"
#include "engine/Ombrel.h"
#include "engine/VorixParameterIds.h"

namespace vorix::test {
namespace {

using Complex = std::complex<double>;

// b0 + b1 z^-1 + b2 z^-2 over a0 + a1 z^-1 + a2 z^-2, at z = e^(jw), in complex double.
template <typename Coefficient>
Complex Section(const Coefficient* b, const Coefficient* a, double w) {
    const Complex z1 = std::polar(1.0, -w), z2 = std::polar(1.0, -2.0 * w);
    return (double(b[0]) + double(b[1]) * z1 + double(b[2]) * z2) /
           (double(a[0]) + double(a[1]) * z1 + double(a[2]) * z2);
}

// A record's response from the coefficients the audio thread runs with.
Complex AudioResponse(const OpaqueFilterData* f, double w) {
    switch (KindOf(f)) {
        case FilterKind::SingleSection:
            return Section(AsSection(f)->b, AsSection(f)->a, w);
        case FilterKind::External: {
            Complex h = 1.0;
            for (const FilterSection& s : AsExternal(f)->sections)
                h *= Section(s.b, s.a, w);
            return h;
        }
        case FilterKind::Harmonic: {
            const HarmonicFilterData* harmonic = AsHarmonic(f);
            Complex h = 1.0;
            int k = 1;
            for (const OpaqueFilterData* sub = FirstFilter(harmonic->subFilters); sub != nullptr;
                 sub = NextFilter(sub), ++k) {
                const bool inRange = k == 1 || static_cast<int32_t>(sub->flags.Load()) > 0;
                if (HarmonicSelected(harmonic->components, k) && inRange)
                    h *= AudioResponse(sub, w);
            }
            return h;
        }
        case FilterKind::None:
            break;
    }
    return 1.0;
}

// The engine after loading a program and running one block, so that every filter's audio
// coefficients have ramped to what the user set.
class SettledEngine {
  public:
    SettledEngine(int program, int channels, float rate) {
        SetMetaClassMaker([] { return std::make_unique<ZORVorixMetaClass>(); });
        core_ = product_.get()->CreateCore(&platform_, {channels, channels});
        core_->SetSampleRate(rate);
        const std::string text = FactoryProgramText(program);
        core_->SetChunk(text.data(), static_cast<int32_t>(text.size()), true);
        std::vector<float> silence(1024 * 2, 0.0f);
        float* buffers[2] = {silence.data(), silence.data() + 1024};
        core_->Process(buffers, buffers, 1024, false, 0);
    }

    double Decibels(int channel, double frequency) {
        auto& engine = dynamic_cast<Ombrel&>(*core_);
        const double w = 6.283185307179586 * frequency / engine.GetSampleRate();
        Complex h = 1.0;
        for (const OpaqueFilterData* f = FirstFilter(engine.Chain(channel)); f != nullptr;
             f = NextFilter(f))
            if ((f->flags.Load() & FilterFlags::NotProcessing) == 0) h *= AudioResponse(f, w);
        const int32_t gainId = channel == 0 ? kLeftGainId : kRightGainId;
        const double gainDb = engine.GetParameter(engine.MetaClass().FindParameterInfo(gainId));
        return 20.0 * std::log10(std::abs(h)) + gainDb;
    }

  private:
    MetaClassReference product_;
    TestPlatform platform_;
    std::unique_ptr<PluginCore> core_;
};

const char* kProbeFrequencies =
    "20,50,60,100,120,180,240,300,400,800,1000,1600,3000,6400,9000,12800,20000,24000";

class ResponseAgrees : public ::testing::TestWithParam<std::tuple<int, int>> {};

// Disabled filters, split pairs, a compensation gain, harmonic and notch filters, External
// sections, in mono and stereo.
TEST_P(ResponseAgrees, WithTheAudioCoefficients) {
    const auto [program, channels] = GetParam();
    const RunResult result =
        RunTool({"response", "--program", std::to_string(program), "--rate", "48000", "--channels",
                 std::to_string(channels), "--freqs", kProbeFrequencies});
    ASSERT_EQ(result.status, 0) << result.err;
    SettledEngine engine(program, channels, 48000.0f);
    for (const auto& [frequency, left, right] : CsvRows(result.out)) {
        const double expected[2] = {engine.Decibels(0, frequency),
                                    engine.Decibels(channels - 1, frequency)};
        const double tool[2] = {left, right};
        for (int c = 0; c < 2; ++c) {
            // Deep in a notch single-precision arithmetic rules; there both must be deep.
            if (expected[c] < -80.0) {
                EXPECT_LT(tool[c], -70.0) << frequency << " Hz, channel " << c;
            } else {
                EXPECT_NEAR(tool[c], expected[c], 0.01) << frequency << " Hz, channel " << c;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Programs, ResponseAgrees,
                         ::testing::Combine(::testing::Values(1, 7, 8, 14, 17),
                                            ::testing::Values(1, 2)));

TEST(Response, DefaultGridRunsLogarithmicallyToHalfTheRateAndMonoRepeatsLeft) {
    const RunResult result =
        RunTool({"response", "--program", "Half-Band", "--rate", "32000", "--channels", "1"});
    ASSERT_EQ(result.status, 0) << result.err;
    const auto rows = CsvRows(result.out);
    ASSERT_EQ(rows.size(), 200u);
    EXPECT_EQ(rows.front()[0], 10.0);
    EXPECT_EQ(rows.back()[0], 16000.0);
    for (std::size_t i = 1; i < rows.size(); ++i) {
        EXPECT_NEAR(rows[i][0] / rows[i - 1][0], std::pow(1600.0, 1.0 / 199), 1e-6);
        EXPECT_EQ(rows[i][1], rows[i][2]);
    }
    EXPECT_LT(rows.back()[1], -60.0) << "a steep low pass reads as such at the top";
}

TEST(Response, StopsAtTwentyKilohertzAndFloorsSilence) {
    const auto grid = CsvRows(RunTool({"response", "--rate", "96000", "--points", "3"}).out);
    ASSERT_EQ(grid.size(), 3u);
    EXPECT_EQ(grid.back()[0], 20000.0);
    // A stack of low passes has no gain left at half the rate; the floor is what reads there.
    const auto top =
        CsvRows(RunTool({"response", "--program", "AM Radio", "--freqs", "22050"}).out);
    ASSERT_EQ(top.size(), 1u);
    EXPECT_GE(top[0][1], -240.0);
}

// A program's settings document, read back from a file, gives the program's own response.
TEST(Response, OfAShownProgramsFileEqualsTheProgramsOwn) {
    TempFolder folder;
    for (const char* program : {"7", "12", "16"}) {
        const RunResult shown = RunTool({"show-program", program, "--rate", "48000"});
        ASSERT_EQ(shown.status, 0) << shown.err;
        WriteText(folder / "program.vrx", shown.out);
        const RunResult fromFile =
            RunTool({"response", "--settings", folder / "program.vrx", "--rate", "48000"});
        const RunResult fromProgram =
            RunTool({"response", "--program", program, "--rate", "48000"});
        EXPECT_EQ(fromFile.status, 0) << fromFile.err;
        EXPECT_EQ(fromFile.out, fromProgram.out) << "program " << program;
    }
}

// Parameter changes reach the response as they reach a render: held to the parameter's range,
// with the warning, and an A-slot boost that shows where its filter now stands.
TEST(Response, TakesParameterChangesHeldToTheirRanges) {
    const RunResult held = RunTool({"response", "--freqs", "16,1000", "--set",
                                    "prmControl_0_Freq=-5", "--set", "prmControl_0_Gain=9"});
    const RunResult atEnd = RunTool({"response", "--freqs", "16,1000", "--set",
                                     "prmControl_0_Freq=16", "--set", "prmControl_0_Gain=9"});
    ASSERT_EQ(held.status, 0) << held.err;
    EXPECT_EQ(held.err,
              "vorix response: warning: prmControl_0_Freq takes 16 Hz to 20000 Hz, so it is set to "
              "16 Hz rather than -5.\n");
    EXPECT_EQ(held.out, atEnd.out);
    EXPECT_NE(held.out, RunTool({"response", "--freqs", "16,1000"}).out);
}

}  // namespace
}  // namespace vorix::test
