#include "HostTestSupport.h"
#include "vorix-host/Renderer.h"

namespace vorix::test {
namespace {

using HostAutomationTest = HostFixture;

TEST_F(HostAutomationTest, CarriesAHostControlChangeIntoTheFilterWithoutAReport) {
    Insert& insert = MakeInsert("StRT");
    SetControl(insert, "ctae", "6");
    SetControl(insert, "ctad", "2k");
    const std::string settings = PayloadOf(ChunkOf(insert.SaveChunks(), Id("zorc")));
    EXPECT_NE(settings.find("<gain_db>6</gain_db>\n\t\t\t\t\t<frequency_hz>2000.000"),
              std::string::npos)
        << settings;
    EXPECT_TRUE(insert.Reports().empty());
}

class EngineReportTest : public ProbeFixture {
  protected:
    Insert& insert_ = MakeInsert("StRT");
    const std::int32_t counter_ = insert_.FindControl("ctbg");
};

TEST_F(EngineReportTest, ReachesTheHostControlOnce) {
    EngineReports(0, 2500.0f);  // A's frequency
    ASSERT_EQ(insert_.Reports().size(), 1u);
    const ControlReport report = insert_.Reports().front();
    EXPECT_EQ(report.control, 2);
    EXPECT_EQ(insert_.ControlText(2, report.value), "2.50 kHz");
    EXPECT_EQ(insert_.ReadControl(2), report.value);
}

// The probe engine takes host changes of its session counter as its latency: the echo of its
// own report must not arrive there, while a change of the host's own does.
TEST_F(EngineReportTest, DropsTheHostsEchoOfTheReport) {
    EngineReports(Id("dirt"), 100.0f);
    EXPECT_EQ(insert_.Reports(),
              (std::vector<ControlReport>{{counter_, insert_.ControlTextValue(counter_, "100")}}));
    EXPECT_EQ(insert_.ReadLatency(), 0);
    insert_.WriteControl(counter_, insert_.ReadControl(counter_));
    EXPECT_EQ(insert_.ReadLatency(), 68);
}

TEST_F(EngineReportTest, ReportsAWholeNumberTruncated) {
    EngineReports(Id("dirt"), 41.9f);
    ASSERT_EQ(insert_.Reports().size(), 1u);
    EXPECT_EQ(insert_.ControlText(counter_, insert_.Reports().front().value), "41");
}

using RenderAutomationTest = ProbeFixture;

TEST_F(RenderAutomationTest, ChangesAControlAtTheFirstBlockAtOrAfterItsTime) {
    Insert& insert = MakeInsert("mnRT");
    AudioData track;
    track.channels.assign(1, std::vector<float>(4500, 0.25f));
    const std::int32_t bypass = insert.FindControl("bypa");
    const AudioData output = RenderThrough(insert, track, 1024,
                                           {{3000, bypass, insert.ControlTextValue(bypass, "0")},
                                            {1025, bypass, insert.ControlTextValue(bypass, "1")}});
    EXPECT_EQ(TakeCalls(), (Calls{{1024, 0}, {1024, 0}, {1024, 3}, {1024, 4}, {404, 0}}));
    EXPECT_EQ(output.channels, track.channels);
}

}  // namespace
}  // namespace vorix::test
