#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <vector>

#include "dsp/FilterSectionList.h"
#include "dsp/FilterTypes.h"
#include "dsp/RelaxedAtomic.h"

namespace vorix {

struct OpaqueFilterData;
struct FilterChain;
struct FilterPool;

// Runs a filter over `count` samples; input and output may be the same buffer.
// Audio thread; must not allocate, lock or throw.
using FilterProcessFunction = void (*)(OpaqueFilterData* filter, const float* input, float* output,
                                       int count);

// Designs a coefficient set: selector 0 the edit set from the targets, 1 the audio set from the
// current parameters.
using FilterDesignFunction = void (*)(OpaqueFilterData* filter, uint8_t selector);

constexpr uint8_t kDesignEditSet = 0;
constexpr uint8_t kDesignAudioSet = 1;

// One second-order section's coefficients, normalised so that a[0] is 1.
struct BiquadCoefficients {
    float b[3] = {1.0f, 0.0f, 0.0f};
    float a[3] = {1.0f, 0.0f, 0.0f};
};

// The common head of every filter record. Records are plain data living in pool blocks; the
// kind-specific bodies below extend it, and the type says which body a record has.
//
// Everything the audio thread reads while the editor side may write it is a relaxed atomic;
// `next`, `partner` and the chain's `first` are published with release stores so that a record
// is complete before the audio thread can reach it.
struct OpaqueFilterData {
    std::atomic<OpaqueFilterData*> next{nullptr};
    uint8_t inUse = 0;
    std::atomic<OpaqueFilterData*> partner{nullptr};
    RelaxedAtomic<FilterType> type{kNoFilterType};
    std::string name;
    RelaxedAtomic<uint32_t> flags{0};
    RelaxedAtomic<FilterProcessFunction> process{nullptr};
    RelaxedAtomic<FilterDesignFunction> design{nullptr};
    FilterChain* chain = nullptr;
    uint16_t order = 2;
    const float* numerator = nullptr;
    const float* denominator = nullptr;
    // A parameter write is bracketed by these: `changeStarted` rises first and `changeFinished`
    // follows when the write is complete; the audio thread ramps when the two agree and differ
    // from `changeApplied`.
    std::atomic<uint32_t> changeStarted{0};
    std::atomic<uint32_t> changeFinished{0};
    std::atomic<uint32_t> changeApplied{0};
};

// Targets shared by the single-section and the harmonic bodies: written by the editor side.
struct ParametricFilterData : OpaqueFilterData {
    RelaxedAtomic<float> gain{1.0f};       // linear ratio
    RelaxedAtomic<float> frequency{0.0f};  // normalised
    RelaxedAtomic<float> q{0.0f};          // Q, or slope for the shelves of types 2 and 3
    RelaxedAtomic<float> bandwidth{0.0f};  // octaves
};

// Body of types 1 to 9: one biquad in direct form I.
struct SectionFilterData : ParametricFilterData {
    // Where the audio thread's ramp stands; the audio set is designed from these.
    RelaxedAtomic<float> currentGain{1.0f};
    RelaxedAtomic<float> currentFrequency{0.0f};
    RelaxedAtomic<float> currentQ{0.0f};
    // Delay state: input history in single, output history in double precision.
    RelaxedAtomic<float> x1, x2;
    RelaxedAtomic<double> y1, y2;
    // The edit set follows the targets at once and is what the plot reads.
    BiquadCoefficients edit;
    // The audio set belongs to the audio thread (and to InitFilterDefaults before linking).
    RelaxedAtomic<float> b[3] = {1.0f, 0.0f, 0.0f};
    RelaxedAtomic<float> a[3] = {1.0f, 0.0f, 0.0f};
    // Set on the sub-filters of a harmonic filter, whose bandwidth goes below type 1's range.
    uint8_t subFilterBandwidth = 0;
};

// Body of types 10 and 11: a fundamental and its overtones as a chain of Parametric sub-filters.
struct HarmonicFilterData : ParametricFilterData {
    int32_t harmonicCount = 0;             // 4 or 8
    RelaxedAtomic<int32_t> components{0};  // 1 fundamental, 2 odd, 4 even harmonics
    RelaxedAtomic<int32_t> decay{0};       // component gain: 0 constant, 1 decaying
    RelaxedAtomic<int32_t> reverse{0};     // reverse gain decay
    RelaxedAtomic<FilterChain*> subFilters{nullptr};
};

// Body of type -1: raw sections in cascade, fixed from load.
struct ExternalFilterData : OpaqueFilterData {
    FilterSectionList sections;
};

// Links records; owns none of them.
struct FilterChain {
    FilterChain* next = nullptr;  // link in the pool's free list
    FilterPool* pool = nullptr;
    std::atomic<OpaqueFilterData*> first{nullptr};
    int32_t count = 0;
};

// Kind-checked views of a record. Callers know the kind from the type.
inline SectionFilterData* AsSection(OpaqueFilterData* f) {
    return static_cast<SectionFilterData*>(f);
}
inline const SectionFilterData* AsSection(const OpaqueFilterData* f) {
    return static_cast<const SectionFilterData*>(f);
}
inline HarmonicFilterData* AsHarmonic(OpaqueFilterData* f) {
    return static_cast<HarmonicFilterData*>(f);
}
inline const HarmonicFilterData* AsHarmonic(const OpaqueFilterData* f) {
    return static_cast<const HarmonicFilterData*>(f);
}
inline ExternalFilterData* AsExternal(OpaqueFilterData* f) {
    return static_cast<ExternalFilterData*>(f);
}
inline const ExternalFilterData* AsExternal(const OpaqueFilterData* f) {
    return static_cast<const ExternalFilterData*>(f);
}
inline ParametricFilterData* AsParametric(OpaqueFilterData* f) {
    return static_cast<ParametricFilterData*>(f);
}
inline const ParametricFilterData* AsParametric(const OpaqueFilterData* f) {
    return static_cast<const ParametricFilterData*>(f);
}

inline FilterKind KindOf(const OpaqueFilterData* f) { return FilterKindOf(f->type); }

}  // namespace vorix
