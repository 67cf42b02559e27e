#include <gtest/gtest.h>

#include <cmath>

#include "EngineTestSupport.h"

namespace vorix::test {
namespace {

using P = FilterParameterId;

int32_t Id(int32_t slot, FilterControlRole role) {
    return FilterControlId(slot, role);
}

// Slot 0 holds the low shelf, slot 1 the parametric, slot 2 the high shelf of a fresh engine.
TEST(AutomationSlotTest, HostUnitsMapToTheFiltersOwnUnits) {
    EngineHarness h;
    OpaqueFilterData* parametric = h.Filter(1);
    h.SetHost(Id(1, FilterControlRole::Frequency), 2000.0f);
    h.SetHost(Id(1, FilterControlRole::Gain), -7.5f);
    h.SetHost(Id(1, FilterControlRole::Shape), 1.0f);
    EXPECT_NEAR(h.Hz(parametric), 2000.0, 1e-3);
    EXPECT_NEAR(h.Hz(parametric->partner.load()), 2000.0, 1e-3);
    EXPECT_NEAR(GetFilterParameter(parametric, P::Gain), -7.5, 1e-5);
    ParameterRange range{};
    ASSERT_TRUE(FilterParameterRange(kParametric, P::Bandwidth, &range));
    EXPECT_FLOAT_EQ(GetFilterParameter(parametric, P::Bandwidth), range.upper);
    EXPECT_NEAR(h.GetHost(Id(1, FilterControlRole::Frequency)), 2000.0, 1e-3);
    EXPECT_FLOAT_EQ(h.GetHost(Id(1, FilterControlRole::Shape)), 1.0f);
}

TEST(AutomationSlotTest, ValuesThatAreNotFiniteNeverReachAFilter) {
    EngineHarness h;
    const double hz = h.Hz(h.Filter(1));
    for (float bad : {std::nanf(""), INFINITY, -INFINITY}) {
        h.SetHost(Id(1, FilterControlRole::Frequency), bad);
        h.SetHost(Id(1, FilterControlRole::Gain), bad);
        h.SetHost(Id(1, FilterControlRole::Shape), bad);
    }
    EXPECT_EQ(h.Hz(h.Filter(1)), hz);
    EXPECT_EQ(GetFilterParameter(h.Filter(1), P::Gain), 0.0);
}

TEST(AutomationSlotTest, ShelfFrequenciesStopAtTheirSideOfOneKilohertz) {
    EngineHarness h;
    h.SetHost(Id(0, FilterControlRole::Frequency), 5000.0f);
    h.SetHost(Id(2, FilterControlRole::Frequency), 200.0f);
    EXPECT_NEAR(h.Hz(h.Filter(0)), 1000.0, 1e-3);
    EXPECT_NEAR(h.Hz(h.Filter(2)), 1000.0, 1e-3);
}

TEST(AutomationSlotTest, NotchGainRedesignsNothingAndReadsZero) {
    EngineHarness h;
    h.engine->ClearConfiguration(false);
    OpaqueFilterData* notch = h.engine->NewFilter(kNotch);
    const uint32_t before = notch->changeFinished.load();
    h.SetHost(Id(0, FilterControlRole::Gain), 12.0f);
    EXPECT_EQ(h.GetHost(Id(0, FilterControlRole::Gain)), 0.0);
    EXPECT_GT(notch->changeFinished.load(), before);
}

TEST(AutomationSlotTest, SplitHalvesMoveAlone) {
    EngineHarness h;
    OpaqueFilterData* left = h.Filter(1);
    h.engine->SplitFilter(left, false);
    h.SetHost(Id(1, FilterControlRole::Gain), 9.0f);
    EXPECT_NEAR(GetFilterParameter(left, P::Gain), 9.0, 1e-5);
    EXPECT_NEAR(GetFilterParameter(left->partner.load(), P::Gain), 0.0, 1e-5);
}

TEST(AutomationSlotTest, FreeSlotsAndIdsBeyondTheSlotsReadZeroAndDoNothing) {
    EngineHarness h;
    h.engine->DeleteFilter(h.Filter(2));
    for (FilterControlRole role :
         {FilterControlRole::Frequency, FilterControlRole::Gain, FilterControlRole::Shape}) {
        EXPECT_EQ(h.GetHost(Id(2, role)), 0.0);
        EXPECT_EQ(h.GetHost(Id(9, role)), 0.0);
    }
    VorixExtFilterControlManager& slots = h.engine->ControlManager();
    slots.SetControlValue(30, 5000.0f, 48000.0f);
    EXPECT_EQ(slots.FilterOfControl(30).first, nullptr);
    EXPECT_EQ(slots.GetControlValue(-1, 48000.0f), 0.0f);
    EXPECT_EQ(slots.FilterOfControl(29).first, nullptr);
}

TEST(AutomationSlotTest, BindingMovesAFilterAndEvictsTheSlotsFormerFilter) {
    EngineHarness h;
    VorixExtFilterControlManager& slots = h.engine->ControlManager();
    OpaqueFilterData* shelf = h.Filter(0);
    OpaqueFilterData* parametric = h.Filter(1);
    h.platform.reports.clear();
    slots.AssignFilter(shelf, 5);
    EXPECT_EQ(slots.SlotOfFilter(shelf), 5);
    EXPECT_EQ(slots.FilterOfSlot(0), nullptr);
    // Reports go to the new slot's three parameters only.
    for (const auto& [index, value] : h.platform.reports) {
        EXPECT_GE(index, 15);
        EXPECT_LE(index, 17);
    }
    EXPECT_EQ(h.ReportsOf(Id(5, FilterControlRole::Frequency)).size(), 1u);

    slots.AssignFilter(parametric, 5);
    EXPECT_EQ(slots.SlotOfFilter(shelf), -1);
    EXPECT_EQ(slots.SlotOfFilter(parametric), 5);
    EXPECT_EQ(slots.FilterOfSlot(1), nullptr);
    const auto [filter, bit] = slots.FilterOfControl(Id(5, FilterControlRole::Shape));
    EXPECT_EQ(filter, parametric);
    EXPECT_EQ(bit, Bit(P::Bandwidth));
}

TEST(AutomationSlotTest, HostChangesAreAnnouncedToTheEditorAndMarkedForReaders) {
    EngineHarness h;
    const int32_t id = Id(2, FilterControlRole::Gain);
    EXPECT_FALSE(h.engine->ControlManager().TakeChanged(id));
    h.SetHost(id, 3.0f);
    EXPECT_TRUE(h.engine->ControlManager().TakeChanged(id));
    EXPECT_FALSE(h.engine->ControlManager().TakeChanged(id));
    h.log.entries.clear();
    h.engine->DispatchPendingParameters();
    EXPECT_EQ(h.log.entries, (std::vector<MessageLog::Entry>{
                                 {"eprm", static_cast<MsgParam>(Bit(P::Gain)), h.Filter(2)}}));
    // The host's own change is not echoed back to it.
    EXPECT_TRUE(h.ReportsOf(id).empty());
}

}  // namespace
}  // namespace vorix::test
