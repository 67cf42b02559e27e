#include "engine/FilterTypes.h"

#include <bit>
#include <climits>
#include <string>

#include <gtest/gtest.h>

#include "FilterTestHelpers.h"

namespace vorix {
namespace {

using test::P;

struct TypeRow {
    FilterType type;
    const char* name;
    const char* key;
    uint32_t mask;
};

constexpr TypeRow kRows[] = {
    {-1, "External", "External", 0},           {1, "Parametric", "ParametricEQ", 131},
    {2, "Low Shelf", "LoShelfEQ", 67},         {3, "Hi Shelf", "HiShelfEQ", 67},
    {4, "Low Shelf II", "LoShelfEQ2", 7},      {5, "Hi Shelf II", "HiShelfEQ2", 7},
    {6, "Low Pass", "2ndOrdLowpass", 6},       {7, "Hi Pass", "2ndOrdHipass", 6},
    {8, "Bandpass", "2ndOrdBandpass", 130},    {9, "Notch", "2ndOrdBandReject", 130},
    {10, "Harmonic 4", "4HarmonicParEQ", 187}, {11, "Harmonic 8", "8HarmonicParEQ", 187},
};

TEST(FilterTypesTest, EveryRowHasItsNameKeyAndMaskAndItsKeyLeadsBack) {
    for (const TypeRow& row : kRows) {
        SCOPED_TRACE(row.type);
        EXPECT_STREQ(FilterTypeName(row.type), row.name);
        EXPECT_STREQ(FilterTypeKey(row.type), row.key);
        EXPECT_EQ(FilterParameterMask(row.type), row.mask);
        EXPECT_EQ(FilterTypeFromKey(row.key), row.type);
    }
}

TEST(FilterTypesTest, OutsideTheTableNumbersHaveNoRowAndKeysNoType) {
    for (FilterType type : {0, -2, 12, 100, INT_MIN, INT_MAX}) {
        EXPECT_STREQ(FilterTypeName(type), "-ERROR-") << type;
        EXPECT_STREQ(FilterTypeKey(type), "invalid") << type;
        EXPECT_EQ(FilterParameterMask(type), 0u) << type;
    }
    for (const char* key : {"invalid", "", "parametriceq", "ParametricEQ ", "Parametric",
                            "ParametricEQ2", "-ERROR-", "external", "Harmonic 8"}) {
        EXPECT_EQ(FilterTypeFromKey(key), kNoFilterType) << key;
    }
}

TEST(FilterTypesTest, ParameterKeysAndTheWordForAnyOtherId) {
    const std::pair<uint32_t, const char*> keys[] = {
        {1, "gain_db"},         {2, "frequency_hz"},
        {4, "q_factor"},        {8, "harmonic_components"},
        {16, "component_gain"}, {32, "rev_gain_decay"},
        {64, "slope"},          {128, "bandwidth_oct"},
        {0, "invalid_param"},   {3, "invalid_param"},
        {256, "invalid_param"}, {0x80000000u, "invalid_param"},
    };
    for (const auto& [bit, key] : keys) {
        EXPECT_STREQ(FilterParameterKey(static_cast<FilterParameterId>(bit)), key) << bit;
    }
}

TEST(FilterTypesTest, FrequencyLimitIsTwentyKilohertzAt44100) {
    EXPECT_EQ(std::bit_cast<uint32_t>(kFrequencyLimit), 0x3EE83315u);
}

// The ranges of the clamp table, seen through the unit mapping of the controls.
struct RangeRow {
    FilterType type;
    FilterParameterId id;
    float lower, upper;
};

// clang-format off
constexpr RangeRow kRanges[] = {
    {1, P::Bandwidth, 0.02f, 4.0f},     {8, P::Bandwidth, 0.02f, 4.0f},
    {9, P::Bandwidth, 0.02f, 4.0f},     {10, P::Bandwidth, 0.005f, 0.104f},
    {11, P::Bandwidth, 0.005f, 0.104f}, {2, P::Slope, 0.33333334f, 1.0f},
    {3, P::Slope, 0.33333334f, 1.0f},   {4, P::Q, 0.1f, 4.0f},
    {5, P::Q, 0.1f, 4.0f},              {6, P::Q, 0.1f, 10.0f},
    {7, P::Q, 0.1f, 10.0f},             {8, P::Q, 0.1f, 10.0f},
    {9, P::Q, 0.1f, 10.0f},
};
// clang-format on

TEST(FilterTypesTest, UnitMappingIsLinearOverEachTypesRangeAndClampedBothWays) {
    for (const RangeRow& r : kRanges) {
        SCOPED_TRACE(std::to_string(r.type) + " " + FilterParameterKey(r.id));
        auto toUnit = [&](float v) { return FilterParameterToUnit(r.type, r.id, v, true); };
        auto fromUnit = [&](float v) { return FilterParameterToUnit(r.type, r.id, v, false); };
        EXPECT_FLOAT_EQ(toUnit(r.lower), 0.0f);
        EXPECT_FLOAT_EQ(toUnit(r.upper), 1.0f);
        EXPECT_NEAR(toUnit(0.75f * r.lower + 0.25f * r.upper), 0.25f, 1e-6f);
        EXPECT_EQ(toUnit(r.lower * 0.5f), 0.0f);
        EXPECT_EQ(toUnit(r.upper * 3.0f), 1.0f);
        EXPECT_FLOAT_EQ(fromUnit(0.0f), r.lower);
        EXPECT_FLOAT_EQ(fromUnit(1.0f), r.upper);
        EXPECT_NEAR(fromUnit(0.5f), 0.5f * (r.lower + r.upper), 1e-6f);
        EXPECT_EQ(fromUnit(-0.5f), r.lower);
        EXPECT_EQ(fromUnit(1.5f), r.upper);
    }
}

TEST(FilterTypesTest, PairsWithoutARangePassThroughUnchanged) {
    const std::pair<FilterType, FilterParameterId> pairs[] = {
        {1, P::Gain},  {1, P::Frequency},           {1, P::Q},          {2, P::Q},
        {4, P::Slope}, {4, P::Bandwidth},           {6, P::Bandwidth},  {7, P::Slope},
        {10, P::Q},    {11, P::HarmonicComponents}, {-1, P::Bandwidth}, {0, P::Bandwidth},
        {12, P::Q},
    };
    for (const auto& [type, id] : pairs) {
        SCOPED_TRACE(std::to_string(type) + " " + FilterParameterKey(id));
        for (float value : {-3.0f, 0.37f, 55.0f}) {
            EXPECT_EQ(FilterParameterToUnit(type, id, value, true), value);
            EXPECT_EQ(FilterParameterToUnit(type, id, value, false), value);
        }
    }
}

}  // namespace
}  // namespace vorix
