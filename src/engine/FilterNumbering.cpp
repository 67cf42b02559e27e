#include "engine/FilterNumbering.h"

#include <algorithm>

namespace vorix {

namespace {

// The lowest number from 1 that the sorted list lacks.
int32_t LowestFree(const std::vector<int32_t>& used) {
    int32_t candidate = 1;
    for (int32_t number : used) {
        if (number > candidate) break;
        if (number == candidate) ++candidate;
    }
    return candidate;
}

}  // namespace

bool AssignFilterNumber(FilterNumbering& numbering, const OpaqueFilterData* left,
                        const OpaqueFilterData* right, int32_t number) {
    auto& used = numbering.usedNumbers;
    const auto place = std::lower_bound(used.begin(), used.end(), number);
    if (number < 1 || (place != used.end() && *place == number)) return false;
    used.insert(place, number);
    numbering.filterNumbers[left] = number;
    if (right != nullptr) numbering.filterNumbers[right] = number;
    numbering.nextFilterNumber = LowestFree(used);
    return true;
}

int32_t AllocateFilterNumber(FilterNumbering& numbering, const OpaqueFilterData* left,
                             const OpaqueFilterData* right) {
    const int32_t number = numbering.nextFilterNumber;
    AssignFilterNumber(numbering, left, right, number);
    return number;
}

void ReleaseFilterNumber(FilterNumbering& numbering, const OpaqueFilterData* left,
                         const OpaqueFilterData* right) {
    const int32_t number = FilterNumberOf(numbering, left);
    numbering.filterNumbers.erase(left);
    if (right != nullptr) numbering.filterNumbers.erase(right);
    if (number == 0) return;
    std::erase(numbering.usedNumbers, number);
    numbering.nextFilterNumber = LowestFree(numbering.usedNumbers);
}

int32_t FilterNumberOf(const FilterNumbering& numbering, const OpaqueFilterData* filter) {
    const auto found = numbering.filterNumbers.find(filter);
    return found != numbering.filterNumbers.end() ? found->second : 0;
}

void ClearFilterNumbers(FilterNumbering& numbering) {
    numbering.filterNumbers.clear();
    numbering.usedNumbers.clear();
    numbering.nextFilterNumber = 1;
}

}  // namespace vorix
