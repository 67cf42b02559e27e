#pragma once

#include <cstdint>
#include <map>
#include <vector>

namespace vorix {

struct OpaqueFilterData;

// The numbers by which the user knows the filters of one configuration. A number names a pair
// (both halves share it) and stays with it while other filters come and go; a new filter takes
// the lowest number not in use, so a gap left by a deletion is filled first. Main thread only.
struct FilterNumbering {
    int32_t nextFilterNumber = 1;                        // the lowest number not in use
    std::map<const OpaqueFilterData*, int32_t> filterNumbers;
    std::vector<int32_t> usedNumbers;                    // sorted
};

// Gives `left` and its partner (null on mono) the lowest free number; returns it.
int32_t AllocateFilterNumber(FilterNumbering& numbering, const OpaqueFilterData* left,
                             const OpaqueFilterData* right);
// Gives the pair a number chosen elsewhere (a copied configuration); true if it was free.
bool AssignFilterNumber(FilterNumbering& numbering, const OpaqueFilterData* left,
                        const OpaqueFilterData* right, int32_t number);
// Frees the number of the record and forgets both halves of its pair.
void ReleaseFilterNumber(FilterNumbering& numbering, const OpaqueFilterData* left,
                         const OpaqueFilterData* right);
// The record's number, 0 if it has none.
int32_t FilterNumberOf(const FilterNumbering& numbering, const OpaqueFilterData* filter);
// Forgets every number; the next is 1.
void ClearFilterNumbers(FilterNumbering& numbering);

}  // namespace vorix
