#include "framework/ControlMapping.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

namespace vorix {
namespace {

constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();

TEST(ControlMapping, EndsLandExactlyOnEnds) {
    std::mt19937 random(17);
    std::uniform_int_distribution<std::int32_t> any(-100000, 100000);
    for (int i = 0; i < 1000; ++i) {
        const std::int32_t a = any(random);
        const std::int32_t c = any(random);
        const ControlRange control{a, a + 1 + (any(random) & 0xffff)};
        const ControlRange controller{c, c + 1 + (any(random) & 0xffff)};
        EXPECT_EQ(MapToControllerValue(control.minimum, control, controller), controller.minimum);
        EXPECT_EQ(MapToControllerValue(control.maximum, control, controller), controller.maximum);
        EXPECT_EQ(MapFromControllerValue(controller.minimum, controller, control), control.minimum);
        EXPECT_EQ(MapFromControllerValue(controller.maximum, controller, control), control.maximum);
    }
    EXPECT_EQ(MapToControllerValue(100, {0, 100}, {0, 1000}), 1000);
    EXPECT_EQ(MapToControllerValue(0, {0, 100}, {0, 1000}), 0);
}

TEST(ControlMapping, IdenticalRangesPassValuesThrough) {
    EXPECT_EQ(MapToControllerValue(37, {-50, 50}, {-50, 50}), 37);
    EXPECT_EQ(MapFromControllerValue(-12, {-50, 50}, {-50, 50}), -12);
}

// Whenever one span is a whole multiple of the other, a value that goes across and comes back
// keeps its step: the biases beat the truncation of products like 0.29 * 100.
TEST(ControlMapping, RoundTripsKeepEveryStep) {
    std::mt19937 random(5);
    std::uniform_int_distribution<std::int32_t> start(0, 1000);
    std::uniform_int_distribution<std::int32_t> span(1, 300);
    std::uniform_int_distribution<std::int32_t> factor(1, 60);
    for (int i = 0; i < 2000; ++i) {
        const std::int32_t steps = span(random);
        const std::int32_t a = start(random);
        const std::int32_t b = start(random);
        const ControlRange narrow{a, a + steps};
        const ControlRange wide{b, b + steps * factor(random)};
        for (std::int32_t v = narrow.minimum; v <= narrow.maximum; ++v) {
            // A narrow control under a wide controller, then a wide control under a narrow one.
            ASSERT_EQ(MapFromControllerValue(MapToControllerValue(v, narrow, wide), wide, narrow),
                      v);
            ASSERT_EQ(MapToControllerValue(MapFromControllerValue(v, narrow, wide), wide, narrow),
                      v);
        }
    }
}

TEST(ControlMapping, EachDirectionRoundsWithItsOwnBias) {
    // Upwards by 1e-05: 0.999995 becomes 1, 0.999985 does not.
    EXPECT_EQ(MapToControllerValue(999995, {0, 1000000}, {0, 1}), 1);
    EXPECT_EQ(MapToControllerValue(999985, {0, 1000000}, {0, 1}), 0);
    // Back by 5e-10: 1 - 2.3e-10 becomes 1, 1 - 7e-10 does not.
    EXPECT_EQ(MapFromControllerValue(-1, {kLowest, kHighest}, {0, 2}), 1);
    EXPECT_EQ(MapFromControllerValue(-2, {kLowest, kHighest}, {0, 2}), 0);
}

TEST(ControlMapping, WidestRangeMapsWithoutOverflow) {
    EXPECT_EQ(MapToControllerValue(0, {kLowest, kHighest}, {0, 2}), 1);
    EXPECT_EQ(MapFromControllerValue(1, {0, 2}, {kLowest, kHighest}), 0);
}

}  // namespace
}  // namespace vorix
