// Parameters both ways, and the audio configuration.

#include <cmath>
#include <limits>

#include "CoreTestSupport.h"

namespace vorix::test {
namespace {

using Reports = std::vector<std::pair<std::int32_t, float>>;
using Log = std::vector<std::string>;

class PluginCoreParameters : public CoreTest {};

TEST_F(PluginCoreParameters, FirstReportGoesOutWhateverTheValueAndIsClamped) {
    auto core = MakeCore();
    const float nan = std::numeric_limits<float>::quiet_NaN();
    core->ReportParameter(kGainId, 0.0f, false);
    core->ReportParameter(kFreqId, 3.40282347e+38f, false);
    core->ReportParameter(kTrimId, -100.0f, false);
    core->ReportParameter(12345, 1.0f, true);  // not in the table
    core->ReportParameter(kGainId, nan, false);
    core->ReportParameter(kGainId, nan, false);  // NaN never equals the last report
    ASSERT_EQ(platform.reports.size(), 5u);
    EXPECT_TRUE(std::isnan(platform.reports[4].second));
    platform.reports.resize(3);
    EXPECT_EQ(platform.reports, (Reports{{1, 0.0f}, {0, 20000.0f}, {2, -24.0f}}));
}

TEST_F(PluginCoreParameters, SameValueIsReportedOnceUnlessForcedOrChangedByTheHost) {
    auto core = MakeCore();
    core->ReportParameter(kGainId, 6.0f, false);
    core->ReportParameter(kGainId, 6.0f, false);
    core->ReportParameter(kGainId, 6.0f, true);
    core->SetForceReport(true);
    core->ReportParameter(kGainId, 6.0f, false);
    core->SetForceReport(false);
    core->SetParameterByIndex(1, 7.0f);
    core->ReportParameter(kGainId, 6.0f, false);
    EXPECT_EQ(platform.reports, Reports(4, {1, 6.0f}));
}

TEST_F(PluginCoreParameters, InternalChangesAreSilentUnlessReportsAreForced) {
    auto core = MakeCore();
    core->SetForceReport(false);  // a surplus release stops at 0 and outweighs nothing
    {
        const PluginCore::InternalChange loading(*core);
        core->ReportParameter(kGainId, 3.0f, true);
        core->SetForceReport(true);
        core->ReportParameter(kGainId, 4.0f, false);
        core->SetForceReport(false);
        core->ReportParameter(kGainId, 5.0f, false);
    }
    EXPECT_EQ(platform.reports, (Reports{{1, 4.0f}}));
}

TEST_F(PluginCoreParameters, HostEchoOfAReportIsDroppedOnce) {
    auto core = MakeCore();
    platform.echoTo = core.get();
    core->ReportParameter(kGainId, 5.0f, false);
    core->DispatchPendingParameters();
    EXPECT_TRUE(core->applied.empty());
    EXPECT_TRUE(core->editorChanges.empty());
    core->SetParameterByIndex(1, 7.0f);  // the echo window closed with the report
    EXPECT_EQ(core->applied.size(), 1u);
}

TEST_F(PluginCoreParameters, HostChangeReachesTheEngineAtOnceAndTheEditorOnceOnDispatch) {
    auto core = MakeCore();
    core->SetParameterByIndex(1, -3.0f);
    ASSERT_EQ(core->applied.size(), 1u);
    EXPECT_EQ(core->applied[0].internalDepth, 1);
    EXPECT_TRUE(core->editorChanges.empty());
    core->DispatchPendingParameters();
    core->SetParameterByIndex(2, 1.0f);
    core->SetParameterByIndex(2, 2.0f);
    core->applyAnswer = false;  // a refused change does not reach the editor
    core->SetParameterByIndex(0, 100.0f);
    core->DispatchPendingParameters();
    ASSERT_EQ(core->editorChanges.size(), 2u);
    EXPECT_EQ(core->editorChanges[0].id, kGainId);
    EXPECT_EQ(core->editorChanges[0].value, -3.0f);
    EXPECT_EQ(core->editorChanges[0].internalDepth, 1);
    EXPECT_EQ(core->editorChanges[1].id, kTrimId);
    EXPECT_EQ(core->editorChanges[1].value, 2.0f);
}

TEST_F(PluginCoreParameters, EditorOnlyParameterWaitsForTheEditorAndUnknownOnesAreIgnored) {
    auto core = MakeCore();
    core->SetParameterByIndex(3, 1.0f);
    core->SetParameterByIndex(4, 1.0f);
    core->SetParameterByIndex(-1, 1.0f);
    EXPECT_TRUE(core->applied.empty());
    platform.editorOpen = true;
    core->SetParameterByIndex(3, 1.0f);
    EXPECT_EQ(core->applied.size(), 1u);
}

TEST_F(PluginCoreParameters, ConfigurationIsStoredAroundItsHooksAndBadBlockSizesRefused) {
    auto core = MakeCore();
    EXPECT_THROW(core->SetBlockSize(0), AppFrame::BadParameter);
    EXPECT_EQ(core->GetBlockSize(), 1024);
    core->SetSampleRate(96000.0f);
    core->SetBlockSize(256);
    EXPECT_EQ(core->log, (Log{std::to_string(44100.0f), "256"}));
    EXPECT_EQ(core->GetSampleRate(), 96000.0f);
}

}  // namespace
}  // namespace vorix::test
