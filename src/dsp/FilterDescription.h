#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "dsp/FilterRecord.h"

namespace vorix {

// The longest filter name that is kept; a longer one is cut.
constexpr std::size_t kMaxFilterNameLength = 13;

// One filter apart from any chain, in the units of GetFilterParameter (gain in decibels,
// frequency normalised). Sections are filled for External filters only.
struct FilterDescription {
    uint32_t flags = 0;
    FilterType type = kNoFilterType;
    std::vector<std::pair<FilterParameterId, float>> parameters;  // ascending bit order
    std::string name;
    std::vector<std::array<float, 3>> numerators;
    std::vector<std::array<float, 3>> denominators;
};

// Describes a filter: its flags, type, name, every parameter of its mask, and its sections.
// Editor side.
FilterDescription DescribeFilter(const OpaqueFilterData* filter);

// Makes a record of the description's type from the chain's pool, applies the parameters in list
// order through SetFilterParameter (so every clamp applies), sets the name (cut to
// kMaxFilterNameLength), an External filter's sections and the flags, and only then appends it to
// `chain`, complete, with one pointer write. Null, with the chain untouched, for a type that has
// no records. Editor side, also while the audio thread walks `chain`; allocates.
OpaqueFilterData* CreateFilterFromDescription(FilterChain* chain, const FilterDescription& d);

}  // namespace vorix
