#pragma once

#include <cmath>
#include <cstring>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "engine/FilterChainOps.h"
#include "engine/FilterParameters.h"
#include "engine/SectionKernel.h"

namespace vorix::test {

// Bitwise equality of float blocks: the kernels must agree to the last bit. NaNs match any NaN:
// which operand's payload and sign x86 passes on depends on the order the compiler put them in,
// and a NaN carries no signal either way.
inline ::testing::AssertionResult SameBits(const float* a, const float* b, int count) {
    for (int i = 0; i < count; ++i) {
        if (std::isnan(a[i]) && std::isnan(b[i])) continue;
        if (std::memcmp(&a[i], &b[i], sizeof(float)) != 0) {
            return ::testing::AssertionFailure()
                   << "sample " << i << " differs: " << a[i] << " vs " << b[i];
        }
    }
    return ::testing::AssertionSuccess();
}

inline ::testing::AssertionResult SameState(const SectionFilterData* a, const SectionFilterData* b) {
    const SectionState sa = LoadState(a), sb = LoadState(b);
    if (std::memcmp(&sa.x1, &sb.x1, sizeof(float)) || std::memcmp(&sa.x2, &sb.x2, sizeof(float)) ||
        std::memcmp(&sa.y1, &sb.y1, sizeof(double)) || std::memcmp(&sa.y2, &sb.y2, sizeof(double))) {
        return ::testing::AssertionFailure() << "filter state differs";
    }
    return ::testing::AssertionSuccess();
}

// A chain of random single-section filters of every type 1 to 9, designed and settled: the
// ramp to the random parameters has been applied and the history is non-zero.
class RandomSections {
public:
    RandomSections(int count, uint32_t seed) : chain_(AcquireFilterChain(&pool_)) {
        std::mt19937 rng(seed);
        std::uniform_int_distribution<int> type(kParametric, kNotch);
        std::uniform_real_distribution<float> unit(0.0f, 1.0f);
        std::vector<float> warmUp(64);
        for (float& s : warmUp) s = unit(rng) - 0.5f;
        for (int i = 0; i < count; ++i) {
            OpaqueFilterData* f = CreateFilterInChain(chain_, 0, static_cast<FilterType>(type(rng)));
            SetFilterParameter(f, FilterParameterId::Frequency, 0.001f + 0.4f * unit(rng) * unit(rng));
            SetFilterParameter(f, FilterParameterId::Gain, 48.0f * unit(rng) - 24.0f);
            SetFilterParameter(f, FilterParameterId::Bandwidth, 0.1f + 3.0f * unit(rng));
            SetFilterParameter(f, FilterParameterId::Q, 0.2f + 3.0f * unit(rng));
            SetFilterParameter(f, FilterParameterId::Slope, 0.4f + 0.6f * unit(rng));
            ProcessFilterBlock(f, warmUp.data(), warmUp.data(), static_cast<int>(warmUp.size()));
            sections_.push_back(AsSection(f));
        }
    }

    SectionFilterData* const* data() { return sections_.data(); }
    SectionFilterData* operator[](size_t i) { return sections_[i]; }
    int size() const { return static_cast<int>(sections_.size()); }

private:
    FilterPool pool_;
    FilterChain* chain_;
    std::vector<SectionFilterData*> sections_;
};

inline std::vector<float> RandomBlock(int count, uint32_t seed, float scale = 0.5f) {
    std::mt19937 rng(seed);
    std::uniform_real_distribution<float> sample(-scale, scale);
    std::vector<float> block(static_cast<size_t>(count));
    for (float& s : block) s = sample(rng);
    return block;
}

// The block sizes that catch edge handling in unrolled and pipelined loops.
inline std::vector<int> OddBlockSizes() {
    std::vector<int> sizes;
    for (int n = 0; n <= 17; ++n) sizes.push_back(n);
    for (int n : {31, 64, 511}) sizes.push_back(n);
    return sizes;
}

}  // namespace vorix::test
