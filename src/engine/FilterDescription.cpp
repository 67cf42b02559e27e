#include "engine/FilterDescription.h"

#include "engine/FilterParameters.h"

namespace vorix {

FilterDescription DescribeFilter(const OpaqueFilterData* filter) {
    FilterDescription d;
    d.flags = filter->flags;
    d.type = filter->type;
    d.name = filter->name;
    const uint32_t mask = FilterParameterMask(d.type);
    for (FilterParameterId id : kAllFilterParameters) {
        if (mask & Bit(id)) {
            d.parameters.emplace_back(id, static_cast<float>(GetFilterParameter(filter, id)));
        }
    }
    if (d.type == kExternalFilter) {
        for (const FilterSection& s : AsExternal(filter)->sections) {
            d.numerators.push_back({s.b[0], s.b[1], s.b[2]});
            d.denominators.push_back({s.a[0], s.a[1], s.a[2]});
        }
    }
    return d;
}

}  // namespace vorix
