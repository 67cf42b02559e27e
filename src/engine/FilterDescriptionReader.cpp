// The description part of the filter settings reader.
#include "engine/FilterSettingsReader.h"

#include <algorithm>
#include <cmath>

#include "core/PluginCore.h"
#include "core/SettingsLines.h"
#include "engine/FilterSettingsLines.h"
#include "engine/FilterSettingsTags.h"

namespace vorix {
namespace {

// A negative frequency turns a section's poles outward, so a damaged document could make a
// filter that runs away; it is taken as 0 Hz, where every design cancels its poles.
constexpr float kLowestDocumentHz = 0.0f;

// Parameter lines are tested in this order, so that a line holding two keys counts as the
// first: "gain_db" before anything else.
constexpr FilterParameterId kRecognitionOrder[] = {
    FilterParameterId::Gain,
    FilterParameterId::Frequency,
    FilterParameterId::Q,
    FilterParameterId::Bandwidth,
    FilterParameterId::Slope,
    FilterParameterId::HarmonicComponents,
    FilterParameterId::ComponentGain,
    FilterParameterId::ReverseGainDecay,
};

// One entry per id, in ascending bit order: with eight ids at most, a hostile document with
// millions of parameter lines costs a constant amount per line.
void StoreParameter(FilterDescription& d, FilterParameterId id, float value) {
    auto at = std::lower_bound(
        d.parameters.begin(), d.parameters.end(), id,
        [](const auto& entry, FilterParameterId key) { return Bit(entry.first) < Bit(key); });
    if (at != d.parameters.end() && at->first == id) {
        at->second = value;
    } else {
        d.parameters.insert(at, {id, value});
    }
}

float ComponentsFromText(std::string_view text) {
    int components = 0;
    if (Holds(text, kFundamentalWord)) components |= kFundamentalComponent;
    if (Holds(text, kOddWord)) components |= kOddComponents;
    if (Holds(text, kEvenWord)) components |= kEvenComponents;
    return static_cast<float>(components);
}

// The value of a parameter line; `withinLimit` turns false for a frequency the rate cannot carry.
float ParameterValue(FilterParameterId id, std::string_view text, float sampleRate,
                     bool& withinLimit) {
    switch (id) {
        case FilterParameterId::Frequency: {
            const float hz =
                std::clamp(ParseSettingsNumber(text), kLowestDocumentHz, kHighestDocumentHz);
            const float normalised = hz / sampleRate;
            if (normalised >= kFrequencyLimit) withinLimit = false;
            return normalised;
        }
        case FilterParameterId::HarmonicComponents:
            return ComponentsFromText(text);
        case FilterParameterId::ComponentGain:
            return Holds(text, kDecayStem) ? 1.0f : 0.0f;
        case FilterParameterId::ReverseGainDecay:
            return Holds(text, kTrueText) ? 1.0f : 0.0f;
        default:
            return ParseSettingsNumber(text);
    }
}

// False if the line was a parameter line whose frequency lies beyond the limit.
bool ReadParameterLine(std::string_view line, FilterDescription& d, float sampleRate) {
    for (FilterParameterId id : kRecognitionOrder) {
        if (!Holds(line, FilterParameterKey(id))) continue;
        bool withinLimit = true;
        StoreParameter(d, id,
                       ParameterValue(id, GetLineElementText(line), sampleRate, withinLimit));
        return withinLimit;
    }
    return true;
}

// "<bN" or "<aN" at `at`: N must be 0, 1 or 2, the line must have element text, and a section
// must have been opened.
void StoreCoefficient(std::vector<std::array<float, 3>>& target, std::string_view line,
                      std::size_t at, std::size_t tagLength) {
    const std::size_t digit = at + tagLength;
    if (digit >= line.size() || line[digit] < '0' || line[digit] >= '0' + kCoefficientsPerSection ||
        target.empty()) {
        VORIX_THROW(PluginCore::InvalidSettingsData);
    }
    target.back()[static_cast<std::size_t>(line[digit] - '0')] =
        ParseSettingsNumber(RequiredElementText(line));
}

// Whether a section can run: its poles strictly inside the unit circle (the kernel takes a0 as 1)
// and its numerator within what any equalizer section needs. A document with a section that would
// ring up to infinity is damaged, whoever wrote it.
bool IsPlayableSection(const std::array<float, 3>& b, const std::array<float, 3>& a) {
    constexpr float kLargestNumerator = 1000.0f;
    for (float coefficient : b) {
        if (!(std::fabs(coefficient) <= kLargestNumerator)) return false;
    }
    return std::fabs(a[2]) < 1.0f && std::fabs(a[1]) < 1.0f + a[2];
}

void CheckSections(const FilterDescription& d) {
    for (std::size_t i = 0; i < d.numerators.size(); ++i) {
        if (!IsPlayableSection(d.numerators[i], d.denominators[i])) {
            VORIX_THROW(PluginCore::InvalidSettingsData);
        }
    }
}

// The lines after "<section_list>" up to "</section_list>" or the end of the stream.
void ReadSectionLines(std::istream& in, FilterDescription& d) {
    std::string line;
    while (ReadSettingsLine(in, line)) {
        if (Holds(line, kSectionListClosing)) return;
        if (Holds(line, kSectionClosing)) continue;
        if (Holds(line, kSectionOpening)) {
            if (d.numerators.size() == kMaxSectionsPerFilter) {
                VORIX_THROW(PluginCore::InvalidSettingsData);
            }
            d.numerators.push_back({0.0f, 0.0f, 0.0f});
            d.denominators.push_back({0.0f, 0.0f, 0.0f});
        } else if (const std::size_t b = line.find(kNumeratorOpening); b != std::string::npos) {
            StoreCoefficient(d.numerators, line, b, kNumeratorOpening.size());
        } else if (const std::size_t a = line.find(kDenominatorOpening); a != std::string::npos) {
            StoreCoefficient(d.denominators, line, a, kDenominatorOpening.size());
        }
    }
}

void ReadSections(std::istream& in, FilterDescription& d) {
    ReadSectionLines(in, d);
    CheckSections(d);
}

}  // namespace

bool ReadFilterDescription(std::istream& in, FilterDescription& out, float sampleRate) {
    out.type = kNoFilterType;
    out.name.clear();
    out.parameters.clear();
    out.numerators.clear();
    out.denominators.clear();
    bool withinLimit = true;
    bool inParameters = false;
    std::string line;
    while (ReadSettingsLine(in, line) && !Holds(line, kDescriptionClosing)) {
        if (inParameters) {
            if (Holds(line, kParameterListClosing)) {
                inParameters = false;
            } else if (Holds(line, kSectionListName)) {
                ReadSections(in, out);
            } else if (!ReadParameterLine(line, out, sampleRate)) {
                withinLimit = false;
            }
        } else if (Holds(line, kTypeTag)) {
            out.type = FilterTypeFromKey(GetLineElementText(line).c_str());
        } else if (Holds(line, kNameTag)) {
            out.name = GetLineElementText(line).substr(0, kMaxFilterNameLength);
        } else if (Holds(line, kParameterListTag)) {
            inParameters = true;
        }
    }
    return withinLimit;
}

}  // namespace vorix
