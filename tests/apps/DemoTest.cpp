#include "CliTestSupport.h"

namespace vorix::test {
namespace {

// The demonstration's hum components fall by what the program's filter gives at their
// frequencies: the expectation comes from the response command, the measurement from the two
// files the demonstration leaves, over its last 15 seconds.
TEST(Demo, HumFallsByWhatTheProgramsFilterGives) {
    TempFolder folder;
    const RunResult demo = RunTool({"demo", folder / "out"});
    ASSERT_EQ(demo.status, 0) << demo.err;
    EXPECT_EQ(demo.err, "");

    const RunResult response = RunTool({"response", "--program", "Hum Suppression (60Hz)", "--rate",
                                        "48000", "--freqs", "60,120,180,240,300"});
    ASSERT_EQ(response.status, 0) << response.err;
    const Audio before = ReadAudio(folder / "out/hum-recording.wav");
    const Audio after = ReadAudio(folder / "out/hum-removed.wav");
    ASSERT_EQ(before.rate, 48000);
    ASSERT_EQ(before.channels, 2);
    ASSERT_EQ(before.Frames(), 20u * 48000u);
    const std::size_t settled = 5 * 48000;
    for (const auto& [frequency, expectedDb, rightDb] : CsvRows(response.out)) {
        for (int channel = 0; channel < 2; ++channel) {
            const double a = ToneAmplitudeOf(before, channel, frequency, settled);
            const double b = ToneAmplitudeOf(after, channel, frequency, settled);
            EXPECT_GT(a, 0.003) << "hum at " << frequency << " Hz is there to be removed";
            EXPECT_NEAR(20.0 * std::log10(b / a), expectedDb, 0.2) << frequency << " Hz";
        }
        // The table's own measurement says the same.
        const std::string label = "hum " + std::to_string(static_cast<int>(frequency)) + " Hz";
        const std::size_t row = demo.out.find(label);
        ASSERT_NE(row, std::string::npos) << label;
        double before = 0, after = 0, change = 0, filter = 0;
        ASSERT_EQ(std::sscanf(demo.out.c_str() + row + label.size(), " %lf dB %lf dB %lf dB %lf",
                              &before, &after, &change, &filter),
                  4);
        EXPECT_NEAR(change, expectedDb, 0.25) << label;
        EXPECT_NEAR(filter, expectedDb, 0.05) << label;
    }
}

}  // namespace
}  // namespace vorix::test
