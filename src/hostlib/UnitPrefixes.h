#pragma once

#include <array>

namespace vorix {

// One row of the table of unit prefixes that controls use to shorten their values.
struct UnitPrefix {
    const char* text;
    double factor;
};

// The prefixes, in ascending factor.
inline constexpr std::array<UnitPrefix, 12> kUnitPrefixes{{
    {"f", 1e-15},
    {"p", 1e-12},
    {"n", 1e-09},
    {"u", 1e-06},
    {"m", 0.001},
    {"", 1.0},
    {"k", 1000.0},
    {"M", 1e+06},
    {"G", 1e+09},
    {"T", 1e+12},
    {"P", 1e+15},
    {"E", 1e+18},
}};

// The rows a control uses: from factor 1 up to "E". The small prefixes stand in the table but are
// neither shown nor typed, so "m" never competes with the "m" of a unit such as "ms".
inline constexpr int kPrefixRowUnity = 5;
inline constexpr int kPrefixRowLast = 11;

}  // namespace vorix
