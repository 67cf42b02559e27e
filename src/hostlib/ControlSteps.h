#pragma once

#include <cstdint>

namespace vorix {

// How finely the host steps a continuous control: by the size of one step in real units, or by
// the number of steps over the whole range.
struct ControlStepSize {
    double size;
};
struct ControlStepCount {
    std::int32_t count;
};

}  // namespace vorix
