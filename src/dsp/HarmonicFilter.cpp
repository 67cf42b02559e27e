#include "dsp/HarmonicFilter.h"

#include <cmath>
#include <cstdlib>

#include "dsp/FilterChainOps.h"
#include "dsp/FilterParameters.h"
#include "dsp/SectionKernel.h"

namespace vorix {
namespace {

// The sub-filter's harmonic number lives in its flag word, negative while out of range.
int32_t HarmonicNumber(const OpaqueFilterData* sub) {
    return static_cast<int32_t>(sub->flags.Load());
}

void SetHarmonicNumber(OpaqueFilterData* sub, int32_t number) {
    sub->flags = static_cast<uint32_t>(number);
}

struct HarmonicGains {
    double decibels;  // D, the parent's gain
    int32_t count;    // N
    bool decaying;
    bool reversed;

    double ForHarmonic(int32_t n) const {
        if (!decaying) return decibels;
        return reversed ? decibels / (count - n + 1) : decibels / n;
    }
};

}  // namespace

void DesignHarmonic(OpaqueFilterData* filter, uint8_t /*selector*/) {
    if (KindOf(filter) != FilterKind::Harmonic) return;
    HarmonicFilterData* h = AsHarmonic(filter);
    OpaqueFilterData* fundamental = FirstFilter(h->subFilters);
    if (fundamental == nullptr) return;

    const float f = h->frequency;
    const float bandwidth = h->bandwidth;
    const int32_t components = h->components;
    const HarmonicGains gains{20.0 * std::log10(static_cast<double>(h->gain)), h->harmonicCount,
                              h->decay != 0, h->decay != 0 && h->reverse != 0};

    // The fundamental is kept up to date whether or not it takes part.
    SetFilterParameter(fundamental, FilterParameterId::Gain, static_cast<float>(gains.ForHarmonic(1)));
    SetFilterParameter(fundamental, FilterParameterId::Frequency, f);
    SetFilterParameter(fundamental, FilterParameterId::Bandwidth, bandwidth);

    int k = 2;
    for (OpaqueFilterData* sub = NextFilter(fundamental); sub != nullptr; sub = NextFilter(sub), ++k) {
        if (!HarmonicSelected(components, k)) continue;  // keeps its former values
        const int32_t n = std::abs(HarmonicNumber(sub));
        const float harmonicFrequency = static_cast<float>(n) * f;
        SetFilterParameter(sub, FilterParameterId::Gain, static_cast<float>(gains.ForHarmonic(n)));
        SetFilterParameter(sub, FilterParameterId::Bandwidth, bandwidth);
        if (harmonicFrequency < kFrequencyLimit) {
            SetFilterParameter(sub, FilterParameterId::Frequency, harmonicFrequency);
            SetHarmonicNumber(sub, n);
        } else {
            SetHarmonicNumber(sub, -n);
        }
    }
}

void ProcessHarmonicBlock(OpaqueFilterData* filter, const float* input, float* output,
                          int count) noexcept {
    HarmonicFilterData* h = AsHarmonic(filter);
    const int32_t components = h->components;
    OpaqueFilterData* sub = FirstFilter(h->subFilters);
    const float* source = input;
    if (sub != nullptr && HarmonicSelected(components, 1)) {
        ProcessFilterBlock(sub, source, output, count);
        source = output;
    }
    int k = 2;
    for (sub = NextFilter(sub); sub != nullptr; sub = NextFilter(sub), ++k) {
        if (HarmonicSelected(components, k) && HarmonicNumber(sub) > 0) {
            ProcessFilterBlock(sub, source, output, count);
            source = output;
        }
    }
}

}  // namespace vorix
