#pragma once

#include <bit>
#include <cstdint>

namespace vorix {

// The kind of a filter record. 0 is no type; -1 is External; 1 to 11 are the parametric types.
using FilterType = int32_t;

constexpr FilterType kExternalFilter = -1;
constexpr FilterType kNoFilterType = 0;
constexpr FilterType kParametric = 1;
constexpr FilterType kLowShelf = 2;
constexpr FilterType kHiShelf = 3;
constexpr FilterType kLowShelf2 = 4;
constexpr FilterType kHiShelf2 = 5;
constexpr FilterType kLowPass = 6;
constexpr FilterType kHiPass = 7;
constexpr FilterType kBandpass = 8;
constexpr FilterType kNotch = 9;
constexpr FilterType kHarmonic4 = 10;
constexpr FilterType kHarmonic8 = 11;
constexpr FilterType kLastFilterType = kHarmonic8;

// One bit per filter parameter, in the order documents and masks use.
enum class FilterParameterId : uint32_t {
    Gain = 1,
    Frequency = 2,
    Q = 4,
    HarmonicComponents = 8,
    ComponentGain = 16,
    ReverseGainDecay = 32,
    Slope = 64,
    Bandwidth = 128,
};

constexpr uint32_t Bit(FilterParameterId id) { return static_cast<uint32_t>(id); }

// The eight parameter ids in ascending bit order.
constexpr FilterParameterId kAllFilterParameters[] = {
    FilterParameterId::Gain,          FilterParameterId::Frequency,
    FilterParameterId::Q,             FilterParameterId::HarmonicComponents,
    FilterParameterId::ComponentGain, FilterParameterId::ReverseGainDecay,
    FilterParameterId::Slope,         FilterParameterId::Bandwidth,
};

// The flag word of a filter record. Sub-filters of a harmonic filter use the word for their
// signed harmonic number instead.
struct FilterFlags {
    static constexpr uint32_t Selected = 1u << 0;
    static constexpr uint32_t Disabled = 1u << 1;
    static constexpr uint32_t LeftOnly = 1u << 2;
    static constexpr uint32_t RightOnly = 1u << 3;
    static constexpr uint32_t ChannelDeleted = 1u << 4;
    static constexpr uint32_t OutOfRange = 1u << 5;
    static constexpr uint32_t FreqLock = 1u << 6;
    static constexpr uint32_t GainLock = 1u << 7;
    static constexpr uint32_t QLock = 1u << 8;
    static constexpr uint32_t BwLock = 1u << 9;
    static constexpr uint32_t SlopeLock = 1u << 10;

    // A filter with any of these set does not process in the chain walk.
    static constexpr uint32_t NotProcessing = Disabled | ChannelDeleted | OutOfRange;
    static constexpr uint32_t Locks = FreqLock | GainLock | QLock | BwLock | SlopeLock;
};

// The highest normalised frequency anywhere in the system: 20000 Hz at 44100 Hz, rounded to the
// nearest float (the decimal literal 0.4535147f would land one bit lower).
constexpr float kFrequencyLimit = std::bit_cast<float>(0x3EE83315u);

// How a record is laid out and processed.
enum class FilterKind { None, SingleSection, Harmonic, External };

// Which body a record of the type has. Inline: the audio thread asks it of every record of every
// block, several times. Any thread; pure.
constexpr FilterKind FilterKindOf(FilterType type) {
    if (type == kExternalFilter) return FilterKind::External;
    if (type >= kParametric && type <= kNotch) return FilterKind::SingleSection;
    if (type == kHarmonic4 || type == kHarmonic8) return FilterKind::Harmonic;
    return FilterKind::None;
}

// Type table look-ups.
// Any thread; pure.
const char* FilterTypeName(FilterType type);
const char* FilterTypeKey(FilterType type);
FilterType FilterTypeFromKey(const char* key);
const char* FilterParameterKey(FilterParameterId id);
uint32_t FilterParameterMask(FilterType type);

// The closed interval that SetFilterParameter clamps a parameter to, for types that have one.
struct ParameterRange {
    float lower;
    float upper;
};

// The clamp range of gain, bandwidth, slope or Q for a type; false where the pair has none.
// Any thread; pure.
bool FilterParameterRange(FilterType type, FilterParameterId id, ParameterRange* range);

// Maps bandwidth, slope or Q linearly to 0..1 (toUnit) or back, clamped; other pairs pass
// through unchanged. Any thread; pure.
float FilterParameterToUnit(FilterType type, FilterParameterId id, float value, bool toUnit);

}  // namespace vorix
