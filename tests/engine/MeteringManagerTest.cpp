#include "engine/MeteringManager.h"

#include <gtest/gtest.h>

namespace vorix {
namespace {

int32_t gNow = 0;
int32_t FakeTicks() noexcept {
    return gNow;
}

class MeteringTest : public ::testing::Test {
  protected:
    void SetUp() override {
        gNow = 1000;
        client_->SetHold(15);
    }
    MeteringManager linear_{true, &FakeTicks};
    MeterClient* client_ = linear_.AddClient();
};

TEST_F(MeteringTest, HighestPeakBetweenReadsSurvivesAndALowerOneFollowsARead) {
    linear_.SetPeak(0.5f);
    linear_.SetPeak(0.9f);
    linear_.SetPeak(0.2f);
    EXPECT_EQ(0.9f, client_->Read());
    linear_.SetPeak(0.2f);  // after a read any peak replaces the held one
    EXPECT_EQ(0.2f, client_->Read());
    EXPECT_EQ(1.0f, (linear_.SetPeak(1.0f), client_->Read()));  // full scale reads exactly 1
}

TEST_F(MeteringTest, HoldRunsOutToTheFloorAndTheNextPeakRestoresIt) {
    linear_.SetPeak(0.7f);
    gNow += 15;
    EXPECT_EQ(0.7f, client_->Read());  // still within the hold
    gNow += 1;
    EXPECT_EQ(0.0f, client_->Read());
    linear_.SetPeak(0.3f);
    EXPECT_EQ(0.3f, client_->Read());
}

TEST_F(MeteringTest, ResetGivesEveryClientTheFloor) {
    MeterClient* second = linear_.AddClient();
    linear_.SetPeak(0.8f);
    linear_.Reset();
    EXPECT_EQ(0.0f, client_->Read());
    EXPECT_EQ(0.0f, second->Read());
}

TEST(MeteringDecibels, DecibelManagerReadsLinearAndFloorsAtMinus1000) {
    gNow = 0;
    MeteringManager decibels(false, &FakeTicks);
    MeterClient* client = decibels.AddClient();
    EXPECT_EQ(-1000.0f, decibels.Floor());
    decibels.SetPeak(-6.0f);
    EXPECT_NEAR(0.501187f, client->Read(), 1e-5f);
    decibels.Reset();
    EXPECT_EQ(0.0f, client->Read());
}

}  // namespace
}  // namespace vorix
