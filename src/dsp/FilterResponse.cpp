#include "dsp/FilterResponse.h"

#include <cmath>

#include "dsp/FilterChainOps.h"
#include "dsp/HarmonicFilter.h"

namespace vorix {
namespace {

constexpr double kTwoPi = 6.283185307179586;

struct Response {
    float magnitude = 1.0f;
    float phase = 0.0f;

    void Cascade(const Response& r) {
        magnitude *= r.magnitude;
        phase += r.phase;
    }
};

Response SectionResponse(const float* b, const float* a, int order, double w) {
    float br, bi, ar, ai;
    EvaluatePolynomialOnUnitCircle(b, order, w, &br, &bi);
    EvaluatePolynomialOnUnitCircle(a, order, w, &ar, &ai);
    Response r;
    r.magnitude = static_cast<float>(std::sqrt(static_cast<double>(br) * br + static_cast<double>(bi) * bi) /
                                     std::sqrt(static_cast<double>(ar) * ar + static_cast<double>(ai) * ai));
    r.phase = static_cast<float>(std::atan(static_cast<double>(br) / bi) -
                                 std::atan(static_cast<double>(ai) / ar));
    return r;
}

Response ExternalResponse(const ExternalFilterData* e, double w) {
    Response total;
    for (const FilterSection& s : e->sections) {
        const float b[3] = {s.b[0], s.b[1], s.b[2]};
        const float a[3] = {s.a[0], s.a[1], s.a[2]};
        total.Cascade(SectionResponse(b, a, 2, w));
    }
    return total;
}

Response SubFilterResponse(const OpaqueFilterData* sub, double w) {
    return SectionResponse(sub->numerator, sub->denominator, sub->order, w);
}

Response HarmonicResponse(const HarmonicFilterData* h, double w) {
    Response total;
    const int32_t components = h->components;
    const OpaqueFilterData* sub = FirstFilter(h->subFilters);
    if (sub == nullptr) return total;
    if (HarmonicSelected(components, 1)) total = SubFilterResponse(sub, w);
    int k = 2;
    for (sub = NextFilter(sub); sub != nullptr; sub = NextFilter(sub), ++k) {
        if (HarmonicSelected(components, k) && static_cast<int32_t>(sub->flags.Load()) > 0) {
            total.Cascade(SubFilterResponse(sub, w));
        }
    }
    return total;
}

}  // namespace

void EvaluatePolynomialOnUnitCircle(const float* c, int order, double w, float* re, float* im) {
    const double cw = std::cos(w);
    const double sw = std::sin(w);
    double r = 0.0;
    double i = 0.0;
    for (int k = 0; k < order; ++k) {
        const double t = c[k] + r;
        r = t * cw - i * sw;
        i = t * sw + i * cw;
    }
    *re = static_cast<float>(c[order] + r);
    *im = static_cast<float>(i);
}

void EvaluateFilterResponse(const OpaqueFilterData* filter, double frequency, float* magnitude,
                            float* phase) {
    const double w = frequency * kTwoPi;
    Response r;
    switch (KindOf(filter)) {
        case FilterKind::SingleSection: r = SubFilterResponse(filter, w); break;
        case FilterKind::External: r = ExternalResponse(AsExternal(filter), w); break;
        case FilterKind::Harmonic: r = HarmonicResponse(AsHarmonic(filter), w); break;
        case FilterKind::None: break;
    }
    if (magnitude != nullptr) *magnitude = r.magnitude;
    if (phase != nullptr) *phase = r.phase;
}

}  // namespace vorix
