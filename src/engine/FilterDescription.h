#pragma once

#include <array>
#include <string>
#include <utility>
#include <vector>

#include "engine/FilterRecord.h"

namespace vorix {

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

}  // namespace vorix
