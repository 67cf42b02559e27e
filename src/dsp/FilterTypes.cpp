#include "dsp/FilterTypes.h"

#include <cstring>

namespace vorix {
namespace {

struct TypeRow {
    const char* name;
    const char* key;
    uint32_t mask;
    FilterKind kind;
};

constexpr uint32_t kGainBit = Bit(FilterParameterId::Gain);
constexpr uint32_t kFreqBit = Bit(FilterParameterId::Frequency);
constexpr uint32_t kQBit = Bit(FilterParameterId::Q);
constexpr uint32_t kSlopeBit = Bit(FilterParameterId::Slope);
constexpr uint32_t kBwBit = Bit(FilterParameterId::Bandwidth);
constexpr uint32_t kHarmonicBits = Bit(FilterParameterId::HarmonicComponents) |
                                   Bit(FilterParameterId::ComponentGain) |
                                   Bit(FilterParameterId::ReverseGainDecay);

// Row 0 is "no type"; its key "invalid" is what an unknown type reports.
constexpr TypeRow kTypeRows[] = {
    {"-ERROR-", "invalid", 0, FilterKind::None},
    {"Parametric", "ParametricEQ", kGainBit | kFreqBit | kBwBit, FilterKind::SingleSection},
    {"Low Shelf", "LoShelfEQ", kGainBit | kFreqBit | kSlopeBit, FilterKind::SingleSection},
    {"Hi Shelf", "HiShelfEQ", kGainBit | kFreqBit | kSlopeBit, FilterKind::SingleSection},
    {"Low Shelf II", "LoShelfEQ2", kGainBit | kFreqBit | kQBit, FilterKind::SingleSection},
    {"Hi Shelf II", "HiShelfEQ2", kGainBit | kFreqBit | kQBit, FilterKind::SingleSection},
    {"Low Pass", "2ndOrdLowpass", kFreqBit | kQBit, FilterKind::SingleSection},
    {"Hi Pass", "2ndOrdHipass", kFreqBit | kQBit, FilterKind::SingleSection},
    {"Bandpass", "2ndOrdBandpass", kFreqBit | kBwBit, FilterKind::SingleSection},
    {"Notch", "2ndOrdBandReject", kFreqBit | kBwBit, FilterKind::SingleSection},
    {"Harmonic 4", "4HarmonicParEQ", kGainBit | kFreqBit | kHarmonicBits | kBwBit,
     FilterKind::Harmonic},
    {"Harmonic 8", "8HarmonicParEQ", kGainBit | kFreqBit | kHarmonicBits | kBwBit,
     FilterKind::Harmonic},
};

// The inline FilterKindOf of the header must say what the table says.
constexpr bool KindsAgree() {
    for (FilterType type = kNoFilterType; type <= kLastFilterType; ++type) {
        if (FilterKindOf(type) != kTypeRows[type].kind) return false;
    }
    return true;
}
static_assert(KindsAgree(), "FilterKindOf disagrees with the type table");

constexpr const char* kExternalName = "External";

bool InTable(FilterType type) { return type >= kParametric && type <= kLastFilterType; }

constexpr ParameterRange kGainRange{-24.0f, 24.0f};
constexpr ParameterRange kBandwidthRange{0.02f, 4.0f};
constexpr ParameterRange kHarmonicBandwidthRange{0.005f, 0.104f};
constexpr ParameterRange kSlopeRange{0.33333334f, 1.0f};
constexpr ParameterRange kShelf2QRange{0.1f, 4.0f};
constexpr ParameterRange kPassRejectQRange{0.1f, 10.0f};

}  // namespace

const char* FilterTypeName(FilterType type) {
    if (type == kExternalFilter) return kExternalName;
    return InTable(type) ? kTypeRows[type].name : kTypeRows[0].name;
}

const char* FilterTypeKey(FilterType type) {
    if (type == kExternalFilter) return kExternalName;
    return InTable(type) ? kTypeRows[type].key : kTypeRows[0].key;
}

FilterType FilterTypeFromKey(const char* key) {
    if (key == nullptr) return kNoFilterType;
    if (std::strcmp(key, kExternalName) == 0) return kExternalFilter;
    for (FilterType type = 0; type <= kLastFilterType; ++type) {
        if (std::strcmp(key, kTypeRows[type].key) == 0) return type;
    }
    return kNoFilterType;
}

const char* FilterParameterKey(FilterParameterId id) {
    switch (id) {
        case FilterParameterId::Gain: return "gain_db";
        case FilterParameterId::Frequency: return "frequency_hz";
        case FilterParameterId::Q: return "q_factor";
        case FilterParameterId::HarmonicComponents: return "harmonic_components";
        case FilterParameterId::ComponentGain: return "component_gain";
        case FilterParameterId::ReverseGainDecay: return "rev_gain_decay";
        case FilterParameterId::Slope: return "slope";
        case FilterParameterId::Bandwidth: return "bandwidth_oct";
    }
    return "invalid_param";
}

uint32_t FilterParameterMask(FilterType type) { return InTable(type) ? kTypeRows[type].mask : 0; }

bool FilterParameterRange(FilterType type, FilterParameterId id, ParameterRange* range) {
    const ParameterRange* found = nullptr;
    switch (id) {
        case FilterParameterId::Gain:
            if (FilterParameterMask(type) & kGainBit) found = &kGainRange;
            break;
        case FilterParameterId::Bandwidth:
            if (type == kParametric || type == kBandpass || type == kNotch) {
                found = &kBandwidthRange;
            } else if (type == kHarmonic4 || type == kHarmonic8) {
                found = &kHarmonicBandwidthRange;
            }
            break;
        case FilterParameterId::Slope:
            if (type == kLowShelf || type == kHiShelf) found = &kSlopeRange;
            break;
        case FilterParameterId::Q:
            if (type == kLowShelf2 || type == kHiShelf2) {
                found = &kShelf2QRange;
            } else if (type >= kLowPass && type <= kNotch) {
                found = &kPassRejectQRange;
            }
            break;
        default: break;
    }
    if (found == nullptr) return false;
    if (range != nullptr) *range = *found;
    return true;
}

float FilterParameterToUnit(FilterType type, FilterParameterId id, float value, bool toUnit) {
    if (id == FilterParameterId::Gain) return value;
    ParameterRange range;
    if (!FilterParameterRange(type, id, &range)) return value;
    const float span = range.upper - range.lower;
    if (toUnit) {
        const float unit = (value - range.lower) / span;
        return unit < 0.0f ? 0.0f : (unit > 1.0f ? 1.0f : unit);
    }
    const float mapped = range.lower + span * value;
    return mapped < range.lower ? range.lower : (mapped > range.upper ? range.upper : mapped);
}

}  // namespace vorix
