#include <gtest/gtest.h>

#include <cmath>

#include "EngineTestSupport.h"
#include "engine/VorixFilterParameterChangeTracker.h"
#include "support/AllocationHook.h"
#include "support/AudioPathFixture.h"

namespace vorix::test {
namespace {

using F = FilterFlags;
using Strings = std::vector<std::string>;

bool Has(const OpaqueFilterData* f, uint32_t flag) {
    return (f->flags.Load() & flag) != 0;
}

// ---- Construction ----

TEST(OmbrelConstructionTest, StereoEngineStartsWithThreeNumberedPairsInEachConfiguration) {
    EngineHarness h;
    for (int c : {1, 0}) {
        h.engine->SelectConfiguration(c, false);
        EXPECT_EQ(h.Types(0), (std::vector<FilterType>{kLowShelf, kParametric, kHiShelf}));
        EXPECT_EQ(h.Types(1), h.Types(0));
        for (int i = 0; i < 3; ++i) {
            OpaqueFilterData* left = h.Filter(i);
            EXPECT_EQ(left->partner.load(), h.Filter(i, 1));
            EXPECT_EQ(h.Filter(i, 1)->partner.load(), left);
            EXPECT_EQ(h.engine->FilterNumber(left), i + 1);
            EXPECT_EQ(h.engine->FilterNumber(h.Filter(i, 1)), i + 1);
            EXPECT_EQ(h.engine->ControlManager().FilterOfSlot(i), left);
        }
        EXPECT_EQ(h.engine->SelectedFilter(), h.Filter(0));
    }
    EXPECT_NEAR(h.Hz(h.Filter(0)), 100.0, 1e-3);
    EXPECT_NEAR(h.Hz(h.Filter(2)), 10000.0, 1e-2);
    EXPECT_EQ(h.engine->DirtyCounter(), 0);
}

TEST(OmbrelConstructionTest, MonoEngineHasOneChainAndNoPartners) {
    EngineHarness h(kMono);
    EXPECT_EQ(h.Chain(1), nullptr);
    EXPECT_EQ(h.engine->GainLink(0), nullptr);
    for (OpaqueFilterData* f : h.Filters())
        EXPECT_EQ(f->partner.load(), nullptr);
    h.engine->SplitFilter(h.Filter(1), true);
    EXPECT_FALSE(Has(h.Filter(1), F::LeftOnly | F::RightOnly));
}

TEST(OmbrelConstructionTest, NewFiltersTakeTheirTypesDefaultsWithinTheFrequencyLimit) {
    EngineHarness h(kStereo, 16000.0f);
    OpaqueFilterData* hiShelf = h.engine->NewFilter(kHiShelf);
    EXPECT_EQ(GetFilterParameter(hiShelf, FilterParameterId::Frequency), kFrequencyLimit);
    OpaqueFilterData* harmonic = h.engine->NewFilter(kHarmonic8);
    EXPECT_NEAR(h.Hz(harmonic), 60.0, 1e-4);
    EXPECT_EQ(GetFilterParameter(harmonic, FilterParameterId::HarmonicComponents), 7.0);
    OpaqueFilterData* notch = h.engine->NewFilter(kNotch);
    EXPECT_FLOAT_EQ(GetFilterParameter(notch, FilterParameterId::Bandwidth), 0.125f);
    EXPECT_FLOAT_EQ(GetFilterParameter(notch->partner.load(), FilterParameterId::Bandwidth), 0.125f);
    EXPECT_EQ(h.engine->NewFilter(kNoFilterType), nullptr);
    ASSERT_EQ(h.platform.messages.Messages().size(), 1u);
    EXPECT_EQ(h.platform.messages.Messages()[0].first, "Unable create new filter.");
    EXPECT_EQ(h.platform.messages.Messages()[0].second, "There is not enough memory available.");
}

// ---- Delete, split, combine ----

TEST(OmbrelFilterTest, DeletingHalvesOfASplitPairHollowsFirstAndRemovesBoth) {
    EngineHarness h;
    OpaqueFilterData* left = h.Filter(1);
    OpaqueFilterData* right = h.Filter(1, 1);
    h.engine->SplitFilter(left, false);
    h.log.entries.clear();

    h.engine->DeleteFilter(left);
    EXPECT_EQ(h.log.Codes(), (Strings{"cdel"}));
    EXPECT_TRUE(Has(left, F::ChannelDeleted | F::Disabled));
    EXPECT_FALSE(Has(right, F::Disabled));
    EXPECT_EQ(h.Filters().size(), 3u);
    EXPECT_EQ(h.engine->ControlManager().SlotOfFilter(left), -1);

    h.log.entries.clear();
    h.engine->DeleteFilter(right);
    EXPECT_EQ(h.log.Codes(), (Strings{"del "}));
    EXPECT_EQ(h.Types(0), (std::vector<FilterType>{kLowShelf, kHiShelf}));
    EXPECT_EQ(h.Types(1), h.Types(0));
}

TEST(OmbrelFilterTest, NumbersSurviveDeletionsAndGapsAreFilledFirst) {
    EngineHarness h;
    OpaqueFilterData* third = h.Filter(2);
    h.engine->DeleteFilter(h.Filter(1));
    EXPECT_EQ(h.engine->FilterNumber(third), 3);
    OpaqueFilterData* added = h.engine->NewFilter(kBandpass);
    EXPECT_EQ(h.engine->FilterNumber(added), 2);
    EXPECT_EQ(h.engine->FilterNumber(h.engine->NewFilter(kNotch)), 4);
    // The freed slot goes to the next new filter.
    EXPECT_EQ(h.engine->ControlManager().SlotOfFilter(added), 1);
}

TEST(OmbrelFilterTest, DeletingTheSoloedOrSelectedFilterEndsSoloAndSelection) {
    EngineHarness h;
    OpaqueFilterData* f = h.Filter(0);
    h.engine->SoloFilter(f);
    h.log.entries.clear();
    h.engine->DeleteFilter(f);
    EXPECT_EQ(h.log.Codes(), (Strings{"solo", "del "}));
    EXPECT_EQ(h.engine->Solo(), nullptr);
    EXPECT_EQ(h.engine->SelectedFilter(), nullptr);
}

TEST(OmbrelFilterTest, SplitGivesThePartnerTheOppositeSideTheStateAndTheLocks) {
    EngineHarness h;
    OpaqueFilterData* left = h.Filter(1);
    OpaqueFilterData* right = left->partner.load();
    left->flags = left->flags.Load() | F::Disabled | F::GainLock;
    SetFilterParameter(left, FilterParameterId::Gain, 6.0f);
    h.engine->SplitFilter(left, true);
    EXPECT_EQ(h.log.Codes(), (Strings{"splt"}));
    EXPECT_EQ(std::get<2>(h.log.entries[0]), right);
    EXPECT_TRUE(Has(left, F::LeftOnly));
    EXPECT_TRUE(Has(right, F::RightOnly | F::Disabled | F::GainLock));
    EXPECT_FALSE(Has(right, F::LeftOnly));
    EXPECT_NEAR(GetFilterParameter(right, FilterParameterId::Gain), 6.0, 1e-5);
}

TEST(OmbrelFilterTest, CombineCopiesTheFilterOverItsPartnerAndKeepsTheSlotOnTheLeft) {
    EngineHarness h;
    OpaqueFilterData* left = h.Filter(1);
    OpaqueFilterData* right = left->partner.load();
    h.engine->SplitFilter(left, false);
    SetFilterParameter(right, FilterParameterId::Gain, -4.0f);
    h.log.entries.clear();
    EXPECT_EQ(h.engine->CombineFilter(right), right);
    EXPECT_EQ(h.log.Codes().back(), "comb");
    EXPECT_FALSE(Has(left, F::LeftOnly | F::RightOnly) || Has(right, F::LeftOnly | F::RightOnly));
    EXPECT_NEAR(GetFilterParameter(left, FilterParameterId::Gain), -4.0, 1e-5);
    EXPECT_EQ(h.engine->ControlManager().SlotOfFilter(left), 1);
}

TEST(OmbrelFilterTest, CombiningWithAHollowHalfRevivesAndSelectsIt) {
    EngineHarness h;
    OpaqueFilterData* left = h.Filter(0);
    OpaqueFilterData* right = left->partner.load();
    h.engine->SplitFilter(left, false);
    h.engine->DeleteFilter(left);
    h.log.entries.clear();
    h.engine->CombineFilter(right);
    EXPECT_FALSE(Has(left, F::ChannelDeleted | F::Disabled));
    const Strings codes = h.log.Codes();
    ASSERT_FALSE(codes.empty());
    EXPECT_EQ(codes.front(), "splt");
    EXPECT_EQ(codes.back(), "comb");
    EXPECT_TRUE(Has(left, F::Selected));
}

TEST(OmbrelFilterTest, EnablingABothChannelFilterMovesItsPartnerButNotASplitOne) {
    EngineHarness h;
    OpaqueFilterData* f = h.Filter(0);
    h.engine->SetFilterEnabled(f, false);
    EXPECT_TRUE(Has(f->partner.load(), F::Disabled));
    EXPECT_EQ(h.log.Codes(), (Strings{"enab"}));
    h.engine->SetFilterEnabled(f, true);
    h.engine->SplitFilter(f, false);
    h.engine->SetFilterEnabled(f, false);
    EXPECT_FALSE(Has(f->partner.load(), F::Disabled));
}

// ---- Selection and solo ----

TEST(OmbrelSelectionTest, SelectingARightRecordOfABothPairSelectsItsLeftRecord) {
    EngineHarness h;
    h.engine->SelectFilter(h.Filter(2, 1), false);
    EXPECT_EQ(h.engine->SelectedFilter(), h.Filter(2));
    EXPECT_TRUE(Has(h.Filter(2), F::Selected));
    EXPECT_FALSE(Has(h.Filter(0), F::Selected));
    const Strings codes = h.log.Codes();
    // Solo cleared, six records cleared, one selected, then the edit.
    EXPECT_EQ(codes.size(), 9u);
    EXPECT_EQ(codes.front(), "solo");
    EXPECT_EQ(h.log.entries[7], (MessageLog::Entry{"selt", 1, h.Filter(2)}));
    EXPECT_EQ(codes.back(), "edit");
}

TEST(OmbrelSelectionTest, SelectingAnotherFilterOrConfigurationEndsTheSolo) {
    EngineHarness h;
    h.engine->SoloFilter(h.Filter(1));
    h.engine->SelectFilter(h.Filter(1), true);
    EXPECT_EQ(h.engine->Solo(), h.Filter(1));
    h.engine->SelectFilter(h.Filter(2), true);
    EXPECT_EQ(h.engine->Solo(), nullptr);
    h.engine->SoloFilter(h.Filter(2));
    h.engine->SelectConfiguration(0, false);
    EXPECT_EQ(h.engine->Solo(), nullptr);
}

TEST(OmbrelSelectionTest, SwitchingConfigurationsSelectsTheFirstSelectedOrFirstInRangeFilter) {
    EngineHarness h;
    h.engine->SelectConfiguration(1, true);
    h.engine->SelectFilter(h.Filter(2), true);
    OpaqueFilterData* hollow = h.Filter(0);
    h.engine->SplitFilter(hollow, false);
    h.engine->DeleteFilter(hollow);
    h.engine->SelectConfiguration(0, false);
    h.log.entries.clear();
    h.engine->SelectConfiguration(1, true);
    EXPECT_EQ(h.engine->SelectedFilter(), h.Filter(2));
    const Strings codes = h.log.Codes();
    EXPECT_EQ(codes.front(), "satt");
    EXPECT_EQ(*(codes.end() - 2), "nset");
    EXPECT_EQ(codes.back(), "edit");

    // Nothing selected: the first filter that is shown and in range. The hollow left record of the
    // deleted half is never shown, so the selection passes over it and the out-of-range one.
    for (OpaqueFilterData* f : h.Filters())
        f->flags = f->flags.Load() & ~F::Selected;
    h.Filter(1)->flags = h.Filter(1)->flags.Load() | F::OutOfRange;
    h.engine->SelectConfiguration(1, false);
    EXPECT_EQ(h.engine->SelectedFilter(), h.Filter(2));
}

TEST(OmbrelSelectionTest, OnlyRecordsOfTheCurrentConfigurationAreValid) {
    EngineHarness h;
    OpaqueFilterData* first = h.Filter(0);
    EXPECT_TRUE(h.engine->IsFilterValid(nullptr));
    EXPECT_TRUE(h.engine->IsFilterValid(first->partner.load()));
    h.engine->SelectConfiguration(1, false);
    EXPECT_FALSE(h.engine->IsFilterValid(first));
    h.engine->SelectConfiguration(0, false);
    h.engine->DeleteFilter(first);
    EXPECT_FALSE(h.engine->IsFilterValid(first));
}

// ---- Configurations ----

TEST(OmbrelConfigurationTest, CopyRebuildsTheTargetAsAnIndependentCopy) {
    EngineHarness h;
    h.engine->SplitFilter(h.Filter(1), false);
    SetFilterParameter(h.Filter(1, 1), FilterParameterId::Gain, 5.0f);
    h.engine->DeleteFilter(h.Filter(0));
    h.engine->CompensationGain(0, 0).SetValue(7);
    h.engine->CopyConfiguration(0, 1);
    h.engine->SelectConfiguration(1, false);
    EXPECT_EQ(h.Types(0), (std::vector<FilterType>{kParametric, kHiShelf}));
    EXPECT_TRUE(Has(h.Filter(0, 1), F::RightOnly));
    EXPECT_NEAR(GetFilterParameter(h.Filter(0, 1), FilterParameterId::Gain), 5.0, 1e-5);
    EXPECT_EQ(h.engine->FilterNumber(h.Filter(0)), 2);
    EXPECT_EQ(h.engine->ControlManager().SlotOfFilter(h.Filter(1)), 2);
    // The output gains belong to each configuration and are not part of the copy.
    EXPECT_EQ(h.engine->CompensationGain(1, 0).GetValue(), 0);
    SetFilterParameter(h.Filter(0), FilterParameterId::Gain, -9.0f);
    h.engine->SelectConfiguration(0, false);
    EXPECT_NEAR(GetFilterParameter(h.Filter(0), FilterParameterId::Gain), 0.0, 1e-5);
}

TEST(OmbrelConfigurationTest, ClearEmptiesTheConfigurationAndRestartsNumbering) {
    EngineHarness h;
    h.engine->CompensationGain(0, 0).SetValue(-6);
    h.engine->ClearConfiguration(true);
    EXPECT_TRUE(h.Filters().empty());
    EXPECT_EQ(h.engine->CompensationGain(0, 1).GetValue(), 0);
    EXPECT_EQ(h.engine->ControlManager().FirstFreeSlot(), 0);
    EXPECT_EQ(h.engine->FilterNumber(h.engine->NewFilter(kParametric)), 1);
    EXPECT_GT(h.engine->DirtyCounter(), 0);
}

// ---- Host parameters ----

TEST(OmbrelParameterTest, GainsMoveInHalfDecibelsAndTheLinkRefusesTheRightSide) {
    EngineHarness h;
    h.SetHost(kLeftGainId, 3.25f);
    EXPECT_EQ(h.GetHost(kLeftGainId), 3.0);
    EXPECT_EQ(h.GetHost(kRightGainId), 3.0);
    h.SetHost(kRightGainId, -5.0f);
    EXPECT_EQ(h.GetHost(kRightGainId), 3.0);
    h.engine->GainLink(0)->SetValue(0);
    h.SetHost(kRightGainId, -30.0f);
    EXPECT_EQ(h.GetHost(kRightGainId), -24.0);
    EXPECT_EQ(h.GetHost(kLeftGainId), 3.0);
    h.SetHost(kLeftGainId, std::nanf(""));
    EXPECT_EQ(h.GetHost(kLeftGainId), 3.0);
    // Linking again brings the right side to the left.
    h.engine->GainLink(0)->SetValue(1);
    EXPECT_EQ(h.GetHost(kRightGainId), 3.0);
}

TEST(OmbrelParameterTest, MonoHasNoRightGain) {
    EngineHarness h(kMono);
    h.SetHost(kRightGainId, 6.0f);
    EXPECT_EQ(h.GetHost(kRightGainId), 0.0);
    h.SetHost(kLeftGainId, -1.5f);
    EXPECT_EQ(h.GetHost(kLeftGainId), -1.5);
}

TEST(OmbrelParameterTest, CompensationGainScalesTheOutput) {
    EngineHarness h;
    h.engine->ClearConfiguration(false);
    h.engine->GainLink(0)->SetValue(0);
    h.SetHost(kLeftGainId, -6.0f);
    h.SetHost(kRightGainId, 6.0f);
    const Block input{std::vector<float>(4096, 0.25f), std::vector<float>(4096, 0.25f)};
    Block out;
    for (int i = 0; i < 4; ++i)
        out = h.Process(input);
    EXPECT_NEAR(out[0].back(), 0.25 * std::pow(10.0, -6.0 / 20.0), 1e-4);
    EXPECT_NEAR(out[1].back(), 0.25 * std::pow(10.0, 6.0 / 20.0), 1e-4);
}

TEST(OmbrelParameterTest, StructuralChangesCountAndTheCounterWrapsAfterItsLimit) {
    EngineHarness h;
    h.engine->NewFilter(kNotch);
    EXPECT_GE(h.engine->DirtyCounter(), 1);
    EXPECT_EQ(h.ReportsOf(kDirtyId).back(), static_cast<float>(h.engine->DirtyCounter()));
    h.SetHost(kDirtyId, 1000000.0f);
    h.engine->SetFilterEnabled(h.Filter(0), false);
    EXPECT_EQ(h.engine->DirtyCounter(), 0);
    EXPECT_EQ(h.ReportsOf(kDirtyId).back(), 0.0f);
}

// ---- Change tracking and metering ----

TEST(OmbrelTrackingTest, TrackerKeepsOneEntryPerFilterAndForgetsDeletedOnes) {
    EngineHarness h;
    VorixFilterParameterChangeTracker tracker(h.engine.get(), true, false);
    OpaqueFilterData* f = h.Filter(1);
    h.engine->NotifyFilterParameterChanged(f, Bit(FilterParameterId::Gain), false);
    h.engine->NotifyFilterParameterChanged(f, Bit(FilterParameterId::Gain), false);
    h.engine->NotifyFilterParameterChanged(f, Bit(FilterParameterId::Frequency), false);
    h.engine->NotifyFilterParameterChanged(h.Filter(0), Bit(FilterParameterId::Gain), true);
    ASSERT_EQ(tracker.Changes().size(), 1u);
    EXPECT_EQ(tracker.Changes()[0].second, 3u);
    h.engine->DeleteFilter(f);
    EXPECT_TRUE(tracker.Changes().empty());
}

TEST(OmbrelTrackingTest, EditorChangesOfABoundFilterReachTheHostUnderItsSlot) {
    EngineHarness h;
    OpaqueFilterData* f = h.Filter(1);  // slot 1
    SetFilterParameter(f, FilterParameterId::Gain, 4.5f);
    h.engine->NotifyFilterParameterChanged(f, Bit(FilterParameterId::Gain), false);
    EXPECT_EQ(h.ReportsOf(FilterControlId(1, FilterControlRole::Gain)), (std::vector<float>{4.5f}));
    EXPECT_EQ(h.log.Codes(), (Strings{"parm"}));
}

TEST(OmbrelMeterTest, MetersReadFullScaleAsOneAnOverAsTheClipSignAndFallAfterTheHold) {
    EngineHarness h;
    h.engine->ClearConfiguration(false);
    gMeterNow = 100;
    h.Process({std::vector<float>(64, 1.0f), std::vector<float>(64, 1.0000001f)});
    EXPECT_EQ(h.engine->GetMeterValue(kFirstOutputMeterId), 1.0f);
    EXPECT_EQ(h.engine->GetMeterValue(kSecondOutputMeterId), -1.0f);
    EXPECT_EQ(h.engine->GetMeterValue(static_cast<int32_t>(FourCC("out3"))), 0.0f);
    gMeterNow += Ombrel::kMeterHoldTicks + 1;
    EXPECT_EQ(h.engine->GetMeterValue(kFirstOutputMeterId), 0.0f);
    h.Process({std::vector<float>(64, 0.5f), std::vector<float>(64, 0.5f)});
    h.engine->ResetClipIndicators();
    EXPECT_EQ(h.engine->GetMeterValue(kSecondOutputMeterId), 0.0f);
}

TEST(OmbrelAudioTest, SamplesThatAreNotNumbersPlayAsSilenceAndLeaveNoTrace) {
    EngineHarness h;
    SetFilterParameter(h.Filter(1), FilterParameterId::Gain, 12.0f);
    Block poisoned(2, std::vector<float>(256, 0.25f));
    poisoned[0][10] = std::nanf("");
    poisoned[1][20] = INFINITY;
    const Block out = h.Process(poisoned);
    for (const auto& channel : out) {
        for (float sample : channel)
            ASSERT_TRUE(std::isfinite(sample));
    }
    Block silence;
    for (int block = 0; block < 40; ++block)
        silence = h.Process(Block(2, std::vector<float>(256, 0.0f)));
    EXPECT_LT(std::fabs(silence[0].back()), 1e-6f);
}

TEST(OmbrelAudioTest, TheAudioCallAllocatesNothingAlsoWhileParametersChange) {
    if (!AllocationCounter::Available()) GTEST_SKIP() << "the sanitizer owns operator new";
    EngineHarness h;
    h.engine->NewFilter(kHarmonic8);
    const Block input{std::vector<float>(512, 0.1f), std::vector<float>(512, -0.1f)};
    Block output = input;
    std::vector<float*> in{const_cast<float*>(input[0].data()), const_cast<float*>(input[1].data())};
    std::vector<float*> out{output[0].data(), output[1].data()};
    for (int block = 0; block < 8; ++block) {
        SetFilterParameter(h.Filter(1), FilterParameterId::Gain, static_cast<float>(block));
        const AllocationCounter counter;
        h.engine->Process(in.data(), out.data(), 512, false, block % 3 == 2 ? 1 : 0);
        EXPECT_EQ(counter.Count(), 0u);
    }
}

}  // namespace
}  // namespace vorix::test
