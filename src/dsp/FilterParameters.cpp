#include "dsp/FilterParameters.h"

#include <atomic>
#include <bit>
#include <cmath>
#include <limits>

#include "dsp/ExternalFilter.h"
#include "dsp/FilterChainOps.h"
#include "dsp/FilterDesign.h"
#include "dsp/HarmonicFilter.h"
#include "dsp/SectionKernel.h"

namespace vorix {
namespace {

constexpr float k1000HzAt44100 = std::bit_cast<float>(0x3CB9C278u);  // 0.022675738
constexpr float k100HzAt44100 = std::bit_cast<float>(0x3B149B93u);   // 0.0022675737
constexpr float kButterworthQ = 0.70710677f;

constexpr uint32_t kBandwidthBit = Bit(FilterParameterId::Bandwidth);

// Opens a parameter write: the counters tell the audio thread a change is under way until the
// bracket closes, and it leaves the targets alone until then.
class ParameterWrite {
public:
    explicit ParameterWrite(OpaqueFilterData* filter) : filter_(filter) {
        ticket_ = filter->changeStarted.load(std::memory_order_relaxed) + 1;
        filter->changeStarted.store(ticket_, std::memory_order_relaxed);
        std::atomic_thread_fence(std::memory_order_release);
    }
    ~ParameterWrite() { filter_->changeFinished.store(ticket_, std::memory_order_release); }
    ParameterWrite(const ParameterWrite&) = delete;
    ParameterWrite& operator=(const ParameterWrite&) = delete;

private:
    OpaqueFilterData* filter_;
    uint32_t ticket_;
};

// Clamps into the type's range for the id; a NaN takes the lower bound, so it never reaches a
// design.
float ClampToRange(FilterType type, FilterParameterId id, float value) {
    ParameterRange range;
    if (!FilterParameterRange(type, id, &range)) return value;
    if (!(value >= range.lower)) return range.lower;
    return value > range.upper ? range.upper : value;
}

// Bandwidth is clamped with the range of the given type (harmonic types have their own).
float ClampBandwidth(FilterType rangeType, float value) {
    return ClampToRange(rangeType, FilterParameterId::Bandwidth, value);
}

int32_t TruncateToWhole(float value) {
    if (!(value == value)) return 0;
    if (value <= static_cast<float>(std::numeric_limits<int32_t>::min())) {
        return std::numeric_limits<int32_t>::min();
    }
    if (value >= static_cast<float>(std::numeric_limits<int32_t>::max())) {
        return std::numeric_limits<int32_t>::max();
    }
    return static_cast<int32_t>(value);
}

void StoreGain(ParametricFilterData* p, float decibels) {
    p->gain = DecibelsToRatio(ClampToRange(p->type, FilterParameterId::Gain, decibels));
}

// Q follows the bandwidth through BandwidthToQ, which bends with the target frequency.
void StoreBandwidthAndQ(ParametricFilterData* p, float bandwidth) {
    p->bandwidth = bandwidth;
    p->q = static_cast<float>(BandwidthToQ(p, bandwidth));
}

void RederiveQ(ParametricFilterData* p) {
    p->q = static_cast<float>(BandwidthToQ(p, p->bandwidth));
}

void ApplyParametric(SectionFilterData* s, FilterParameterId id, float value) {
    switch (id) {
        case FilterParameterId::Gain: StoreGain(s, value); break;
        case FilterParameterId::Frequency:
            s->frequency = value;
            RederiveQ(s);
            break;
        case FilterParameterId::Bandwidth:
            StoreBandwidthAndQ(s, s->subFilterBandwidth ? value : ClampBandwidth(kParametric, value));
            break;
        default: break;
    }
}

void ApplySlopeShelf(SectionFilterData* s, FilterParameterId id, float value) {
    switch (id) {
        case FilterParameterId::Gain: StoreGain(s, value); break;
        case FilterParameterId::Frequency: s->frequency = value; break;
        case FilterParameterId::Slope: s->q = ClampToRange(s->type, id, value); break;
        default: break;
    }
}

void ApplyResonantShelf(SectionFilterData* s, FilterParameterId id, float value) {
    switch (id) {
        case FilterParameterId::Gain: StoreGain(s, value); break;
        case FilterParameterId::Frequency: s->frequency = value; break;
        case FilterParameterId::Q: s->q = ClampToRange(s->type, id, value); break;
        default: break;
    }
}

void ApplyPassReject(SectionFilterData* s, FilterParameterId id, float value) {
    switch (id) {
        case FilterParameterId::Frequency:
            s->frequency = value;
            if (FilterParameterMask(s->type) & kBandwidthBit) RederiveQ(s);
            break;
        case FilterParameterId::Q: s->q = ClampToRange(kLowPass, id, value); break;
        case FilterParameterId::Bandwidth:
            StoreBandwidthAndQ(s, ClampBandwidth(kBandpass, value));
            break;
        default: break;
    }
}

void ApplyHarmonic(HarmonicFilterData* h, FilterParameterId id, float value) {
    switch (id) {
        case FilterParameterId::Gain: StoreGain(h, value); break;
        case FilterParameterId::Frequency:
            h->frequency = value;
            RederiveQ(h);
            break;
        case FilterParameterId::HarmonicComponents: h->components = TruncateToWhole(value); break;
        case FilterParameterId::ComponentGain: h->decay = TruncateToWhole(value); break;
        case FilterParameterId::ReverseGainDecay: h->reverse = TruncateToWhole(value); break;
        case FilterParameterId::Bandwidth:
            StoreBandwidthAndQ(h, ClampBandwidth(h->type, value));
            break;
        default: break;
    }
}

// Which ids a type answers on reading: wider than its mask, so that a Q derived from a
// bandwidth can be read back.
uint32_t ReadableParameters(FilterType type) {
    using P = FilterParameterId;
    switch (type) {
        case kParametric:
        case kLowShelf2:
        case kHiShelf2: return Bit(P::Gain) | Bit(P::Frequency) | Bit(P::Q) | Bit(P::Bandwidth);
        case kLowShelf:
        case kHiShelf: return Bit(P::Gain) | Bit(P::Frequency) | Bit(P::Slope);
        case kLowPass:
        case kHiPass:
        case kBandpass:
        case kNotch: return Bit(P::Frequency) | Bit(P::Q) | Bit(P::Bandwidth);
        case kHarmonic4:
        case kHarmonic8:
            return Bit(P::Gain) | Bit(P::Frequency) | Bit(P::HarmonicComponents) |
                   Bit(P::ComponentGain) | Bit(P::ReverseGainDecay) | Bit(P::Bandwidth);
        default: return 0;
    }
}

struct Defaults {
    float gain;
    float frequency;
    bool qFromBandwidth;  // else Q is kButterworthQ
    float bandwidth;
};

Defaults DefaultsFor(FilterType type) {
    switch (type) {
        case kLowShelf:
        case kHiShelf:
        case kLowShelf2:
        case kHiShelf2: return {1.0f, k100HzAt44100, false, 0.0f};
        case kLowPass:
        case kHiPass: return {1.0f, k1000HzAt44100, false, 0.0f};
        default: return {1.0f, k1000HzAt44100, true, 1.0f};
    }
}

void InitSectionDefaults(SectionFilterData* s) {
    const Defaults d = DefaultsFor(s->type);
    s->gain = d.gain;
    s->frequency = d.frequency;
    s->bandwidth = d.bandwidth;
    s->q = d.qFromBandwidth ? static_cast<float>(BandwidthToQ(s, d.bandwidth)) : kButterworthQ;
    s->currentGain = s->gain.Load();
    s->currentFrequency = s->frequency.Load();
    s->currentQ = s->q.Load();
    s->subFilterBandwidth = 0;
    // A reused slot starts silent rather than ringing with its former filter's history.
    ResetFilterState(s);
    s->process = &ProcessFilterBlock;
    s->design = DesignFunctionFor(s->type);
    s->design.Load()(s, kDesignEditSet);
    s->design.Load()(s, kDesignAudioSet);
    s->numerator = s->edit.b;
    s->denominator = s->edit.a;
}

void InitHarmonicDefaults(HarmonicFilterData* h, FilterPool* pool) {
    h->gain = 1.0f;
    h->frequency = k1000HzAt44100;
    h->bandwidth = 1.0f;
    h->q = static_cast<float>(BandwidthToQ(h, 1.0));
    h->harmonicCount = h->type == kHarmonic4 ? 4 : 8;
    h->components = 7;
    h->decay = 0;
    h->reverse = 0;
    h->process = &ProcessHarmonicBlock;
    h->design = nullptr;
    h->numerator = nullptr;
    h->denominator = nullptr;
    FilterChain* subFilters = AcquireFilterChain(pool);
    for (int n = 1; n <= h->harmonicCount; ++n) {
        OpaqueFilterData* sub = CreateFilterInChain(subFilters, static_cast<uint32_t>(n), kParametric);
        AsSection(sub)->subFilterBandwidth = 1;
    }
    h->subFilters = subFilters;
    DesignHarmonic(h, kDesignEditSet);
}

// The record comes fresh out of the pool, out of any audio block's reach, so its old sections can
// go at once.
void InitExternalDefaults(ExternalFilterData* e) {
    (void)e->sections.Replace(nullptr);
    e->process = &ProcessSectionsBlock;
    e->design = nullptr;
    e->numerator = nullptr;
    e->denominator = nullptr;
}

}  // namespace

double GetFilterParameter(const OpaqueFilterData* filter, FilterParameterId id) {
    if ((ReadableParameters(filter->type) & Bit(id)) == 0) return 0.0;
    const ParametricFilterData* p = AsParametric(filter);
    switch (id) {
        case FilterParameterId::Gain: return 20.0 * std::log10(static_cast<double>(p->gain));
        case FilterParameterId::Frequency: return p->frequency;
        case FilterParameterId::Q:
        case FilterParameterId::Slope: return p->q;
        case FilterParameterId::Bandwidth: return p->bandwidth;
        case FilterParameterId::HarmonicComponents: return AsHarmonic(filter)->components;
        case FilterParameterId::ComponentGain: return AsHarmonic(filter)->decay;
        case FilterParameterId::ReverseGainDecay: return AsHarmonic(filter)->reverse;
    }
    return 0.0;
}

void SetFilterParameter(OpaqueFilterData* filter, FilterParameterId id, float value) {
    ParameterWrite write(filter);
    const FilterType type = filter->type;
    switch (type) {
        case kParametric: ApplyParametric(AsSection(filter), id, value); break;
        case kLowShelf:
        case kHiShelf: ApplySlopeShelf(AsSection(filter), id, value); break;
        case kLowShelf2:
        case kHiShelf2: ApplyResonantShelf(AsSection(filter), id, value); break;
        case kLowPass:
        case kHiPass:
        case kBandpass:
        case kNotch: ApplyPassReject(AsSection(filter), id, value); break;
        case kHarmonic4:
        case kHarmonic8: ApplyHarmonic(AsHarmonic(filter), id, value); break;
        default: return;  // External and unknown types hold no parameters
    }
    if (FilterKindOf(type) == FilterKind::Harmonic) {
        DesignHarmonic(filter, kDesignEditSet);
    } else {
        filter->design.Load()(filter, kDesignEditSet);
    }
}

void CopyFilterParameters(const OpaqueFilterData* source, OpaqueFilterData* target) {
    const uint32_t shared = FilterParameterMask(source->type) & FilterParameterMask(target->type);
    for (FilterParameterId id : kAllFilterParameters) {
        if (shared & Bit(id)) {
            SetFilterParameter(target, id, static_cast<float>(GetFilterParameter(source, id)));
        }
    }
    if (source->type == kExternalFilter && target->type == kExternalFilter) {
        CopyExternalSections(AsExternal(source), AsExternal(target));
    }
    target->name = source->name;
}

void ResetFilterState(OpaqueFilterData* filter) {
    switch (KindOf(filter)) {
        case FilterKind::SingleSection: {
            SectionFilterData* s = AsSection(filter);
            s->x1 = 0.0f;
            s->x2 = 0.0f;
            s->y1 = 0.0;
            s->y2 = 0.0;
            break;
        }
        case FilterKind::Harmonic:
            for (OpaqueFilterData* sub = FirstFilter(AsHarmonic(filter)->subFilters); sub != nullptr;
                 sub = NextFilter(sub)) {
                ResetFilterState(sub);
            }
            break;
        case FilterKind::External:
            for (FilterSection& section : AsExternal(filter)->sections) {
                for (int i = 0; i < 3; ++i) {
                    section.x[i] = 0.0f;
                    section.y[i] = 0.0;
                }
            }
            break;
        case FilterKind::None: break;
    }
}

void InitFilterDefaults(OpaqueFilterData* filter, FilterPool* pool) {
    filter->order = 2;
    switch (KindOf(filter)) {
        case FilterKind::SingleSection: InitSectionDefaults(AsSection(filter)); break;
        case FilterKind::Harmonic: InitHarmonicDefaults(AsHarmonic(filter), pool); break;
        case FilterKind::External: InitExternalDefaults(AsExternal(filter)); break;
        case FilterKind::None: break;
    }
}

float DecibelsToRatio(float decibels) {
    return static_cast<float>(std::pow(10.0, static_cast<double>(decibels) * 0.05));
}

}  // namespace vorix
