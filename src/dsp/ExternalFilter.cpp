#include "dsp/ExternalFilter.h"

#include <algorithm>
#include <memory>

#include "dsp/FilterRetirement.h"

namespace vorix {

void RunExternalSection(FilterSection& section, const float* input, float* output,
                        int count) noexcept {
    const double b0 = section.b[0], b1 = section.b[1], b2 = section.b[2];
    const double a1 = section.a[1], a2 = section.a[2];
    float x1 = section.x[1], x2 = section.x[2];
    double y1 = section.y[1], y2 = section.y[2];
    float x = section.x[0];
    for (int i = 0; i < count; ++i) {
        x = input[i];
        const double y = b0 * x + b1 * x1 + b2 * x2 - a1 * y1 - a2 * y2;
        x2 = x1;
        x1 = x;
        y2 = y1;
        y1 = y;
        output[i] = static_cast<float>(y);
    }
    section.x[0] = x;
    section.x[1] = x1;
    section.x[2] = x2;
    section.y[0] = y1;
    section.y[1] = y1;
    section.y[2] = y2;
}

void ProcessSectionsBlock(OpaqueFilterData* filter, const float* input, float* output,
                          int count) noexcept {
    for (FilterSection& section : AsExternal(filter)->sections.View()) {
        RunExternalSection(section, input, output, count);
    }
}

void LoadExternalSections(OpaqueFilterData* filter, const FilterDescription& description) {
    auto sections = std::make_unique<FilterSectionList::Sections>(description.numerators.size());
    for (size_t i = 0; i < sections->size(); ++i) {
        for (int k = 0; k < 3; ++k) {
            (*sections)[i].b[k] = description.numerators[i][k];
            if (i < description.denominators.size()) {
                (*sections)[i].a[k] = description.denominators[i][k];
            }
        }
    }
    RetireSections(filter->chain->pool, AsExternal(filter)->sections.Replace(std::move(sections)));
}

void CopyExternalSections(const ExternalFilterData* source, ExternalFilterData* target) {
    const std::span<FilterSection> from = source->sections.View();
    const std::span<FilterSection> to = target->sections.View();
    if (from.size() == to.size()) {
        std::copy(from.begin(), from.end(), to.begin());  // word by word, where it stands
        return;
    }
    auto copy = std::make_unique<FilterSectionList::Sections>(from.begin(), from.end());
    RetireSections(target->chain->pool, target->sections.Replace(std::move(copy)));
}

}  // namespace vorix
