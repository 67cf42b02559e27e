#include "dsp/FilterRecovery.h"

#include <cmath>
#include <limits>

#include "dsp/FilterChainOps.h"

namespace vorix {
namespace {

constexpr double kLargestFloat = std::numeric_limits<float>::max();

// False for NaN as well as for anything beyond the largest float.
bool Carried(double value) noexcept { return std::fabs(value) <= kLargestFloat; }

void RecoverSection(SectionFilterData* s) noexcept {
    if (Carried(s->x1) && Carried(s->x2) && Carried(s->y1) && Carried(s->y2)) return;
    s->x1 = 0.0f;
    s->x2 = 0.0f;
    s->y1 = 0.0;
    s->y2 = 0.0;
}

void RecoverExternalSection(FilterSection& section) noexcept {
    bool carried = true;
    for (int i = 0; i < 3; ++i) carried = carried && Carried(section.x[i]) && Carried(section.y[i]);
    if (carried) return;
    for (int i = 0; i < 3; ++i) {
        section.x[i] = 0.0f;
        section.y[i] = 0.0;
    }
}

}  // namespace

void RecoverFilterState(OpaqueFilterData* filter) noexcept {
    switch (KindOf(filter)) {
        case FilterKind::SingleSection: RecoverSection(AsSection(filter)); break;
        case FilterKind::Harmonic:
            for (OpaqueFilterData* sub = FirstFilter(AsHarmonic(filter)->subFilters); sub != nullptr;
                 sub = NextFilter(sub)) {
                RecoverSection(AsSection(sub));
            }
            break;
        case FilterKind::External:
            for (FilterSection& section : AsExternal(filter)->sections.View()) RecoverExternalSection(section);
            break;
        case FilterKind::None: break;
    }
}

}  // namespace vorix
