#include "dsp/FilterDesign.h"

#include <bit>
#include <cmath>
#include <utility>

namespace vorix {
namespace {

constexpr double kTwoPi = 6.283185307179586;

// The parameters a design reads, taken once from the record.
struct DesignInput {
    double gain;
    double frequency;
    double q;
    FilterType type;
};

DesignInput ReadInput(const SectionFilterData* s, uint8_t selector) {
    if (selector == kDesignEditSet) return {s->gain, DesignFrequency(s->frequency), s->q, s->type};
    return {s->currentGain, DesignFrequency(s->currentFrequency), s->currentQ, s->type};
}

// Rounding to single precision can move a pole of a very low or very narrow design onto or just
// beyond the unit circle. The smallest change that keeps it inside moves a1 towards 0 by as many
// units in the last place as the stability triangle |a2| < 1, |a1| < 1 + a2 needs; a set that is
// not numbers at all becomes a wire. Designs of ordinary frequencies are never touched.
bool KeepPolesInside(float& a1, float& a2) {
    if (!std::isfinite(a1) || !std::isfinite(a2)) return false;
    if (!(a2 < 1.0f)) a2 = std::nextafter(1.0f, 0.0f);
    if (!(a2 > -1.0f)) a2 = std::nextafter(-1.0f, 0.0f);
    const double bound = 1.0 + static_cast<double>(a2);
    if (std::fabs(static_cast<double>(a1)) < bound) return true;
    float inside = std::copysign(static_cast<float>(bound), a1);
    while (!(std::fabs(static_cast<double>(inside)) < bound)) inside = std::nextafter(inside, 0.0f);
    a1 = inside;
    return true;
}

// How a design normalises by a0. The designs differ in whether they divide or multiply by the
// reciprocal, which can move the last bit of a stored coefficient, so each keeps its own way.
enum class Normalise { DivideAll, DivideNumerator, MultiplyAll };

// Normalises by a0 and stores into the selected set, with a[0] exactly 1. The way is fixed when
// this is built, so that no design divides for a reciprocal it does not use.
template <Normalise how>
void Store(SectionFilterData* s, uint8_t selector, const double b[3], const double a[3]) {
    const double inverse = 1.0 / a[0];
    float nb[3];
    float na[3] = {1.0f, 0.0f, 0.0f};
    for (int i = 0; i < 3; ++i) {
        nb[i] = static_cast<float>(how == Normalise::MultiplyAll ? b[i] * inverse : b[i] / a[0]);
    }
    for (int i = 1; i < 3; ++i) {
        na[i] = static_cast<float>(how == Normalise::DivideAll ? a[i] / a[0] : a[i] * inverse);
    }
    bool numbers = KeepPolesInside(na[1], na[2]);
    for (float coefficient : nb) numbers = numbers && std::isfinite(coefficient);
    if (!numbers) {
        nb[0] = 1.0f, nb[1] = 0.0f, nb[2] = 0.0f;
        na[1] = 0.0f, na[2] = 0.0f;
    }
    if (selector == kDesignEditSet) {
        for (int i = 0; i < 3; ++i) {
            s->edit.b[i] = nb[i];
            s->edit.a[i] = na[i];
        }
    } else {
        for (int i = 0; i < 3; ++i) {
            s->b[i] = nb[i];
            s->a[i] = na[i];
        }
    }
}

void StoreIdentity(SectionFilterData* s, uint8_t selector) {
    const double b[3] = {1.0, 0.0, 0.0};
    const double a[3] = {1.0, 0.0, 0.0};
    Store<Normalise::DivideAll>(s, selector, b, a);
}

// An exact 0 dB makes a wire rather than a numerically near-unity section.
bool IsUnityGain(const DesignInput& in) { return static_cast<float>(in.gain) == 1.0f; }

// The slope-controlled shelf of types 2 and 3. `high` mirrors the low shelf.
void DesignSlopeShelf(SectionFilterData* s, uint8_t selector, const DesignInput& in, bool high) {
    const double w = in.frequency * kTwoPi;
    const double c = high ? -std::cos(w) : std::cos(w);
    const double A = std::sqrt(in.gain);
    const double beta = std::sin(w) * std::sqrt((A * A + 1.0) / in.q - (A - 1.0) * (A - 1.0));
    const double sign = high ? -1.0 : 1.0;
    const double b[3] = {A * ((A + 1.0) - (A - 1.0) * c + beta),
                         sign * 2.0 * A * ((A - 1.0) - (A + 1.0) * c),
                         A * ((A + 1.0) - (A - 1.0) * c - beta)};
    const double a[3] = {(A + 1.0) + (A - 1.0) * c + beta, sign * -2.0 * ((A - 1.0) + (A + 1.0) * c),
                         (A + 1.0) + (A - 1.0) * c - beta};
    Store<Normalise::DivideAll>(s, selector, b, a);
}

// Shelf II: the dry signal plus a resonant second-order pass, H = 1 + K L, so the shelf can
// overshoot at its corner as Q rises; a cut is the exact inverse of the same boost.
void DesignResonantShelf(SectionFilterData* s, uint8_t selector, const DesignInput& in, bool high) {
    const double w = in.frequency * kTwoPi;
    const double c = std::cos(w);
    const double alpha = std::sin(w) / (2.0 * in.q);
    const double d[3] = {1.0 + alpha, -2.0 * c, 1.0 - alpha};
    const double n[3] = {high ? (1.0 + c) / 2.0 : (1.0 - c) / 2.0, high ? -(1.0 + c) : 1.0 - c,
                         high ? (1.0 + c) / 2.0 : (1.0 - c) / 2.0};
    const double K = std::pow(10.0, std::fabs(20.0 * std::log10(in.gain)) * 0.05) - 1.0;
    double b[3] = {d[0] + K * n[0], d[1] + K * n[1], d[2] + K * n[2]};
    double a[3] = {d[0], d[1], d[2]};
    if (in.gain < 1.0) std::swap(b, a);
    Store<Normalise::MultiplyAll>(s, selector, b, a);
}

}  // namespace

double DesignFrequency(double frequency) noexcept {
    if (!(frequency >= kLowestDesignFrequency)) return kLowestDesignFrequency;
    return frequency > kFrequencyLimit ? kFrequencyLimit : frequency;
}

double BandwidthToQ(const OpaqueFilterData* filter, double bandwidth) noexcept {
    constexpr float c0 = std::bit_cast<float>(0x3F7FDAEEu);  // 0.99943435
    constexpr float c1 = std::bit_cast<float>(0xBF357AA5u);  // -0.70890266
    constexpr float c2 = std::bit_cast<float>(0xC0159545u);  // -2.3372357
    const double f = DesignFrequency(AsParametric(filter)->frequency);
    const double p = (static_cast<double>(c2) * f + c1) * f + c0;
    return p / (2.0 * bandwidth);
}

void DesignPeak(OpaqueFilterData* filter, uint8_t selector) noexcept {
    SectionFilterData* s = AsSection(filter);
    const DesignInput in = ReadInput(s, selector);
    if (IsUnityGain(in)) return StoreIdentity(s, selector);
    const double w = in.frequency * kTwoPi;
    const double c = std::cos(w);
    const double A = std::sqrt(in.gain);
    const double alpha = std::sin(w) / (2.0 * in.q);
    const double b[3] = {1.0 + alpha * A, -2.0 * c, 1.0 - alpha * A};
    const double a[3] = {1.0 + alpha / A, -2.0 * c, 1.0 - alpha / A};
    Store<Normalise::DivideAll>(s, selector, b, a);
}

void DesignLowShelf(OpaqueFilterData* filter, uint8_t selector) noexcept {
    SectionFilterData* s = AsSection(filter);
    const DesignInput in = ReadInput(s, selector);
    if (IsUnityGain(in)) return StoreIdentity(s, selector);
    if (in.type == kLowShelf2) return DesignResonantShelf(s, selector, in, false);
    DesignSlopeShelf(s, selector, in, false);
}

void DesignHighShelf(OpaqueFilterData* filter, uint8_t selector) noexcept {
    SectionFilterData* s = AsSection(filter);
    const DesignInput in = ReadInput(s, selector);
    if (IsUnityGain(in)) return StoreIdentity(s, selector);
    if (in.type == kHiShelf2) return DesignResonantShelf(s, selector, in, true);
    DesignSlopeShelf(s, selector, in, true);
}

void DesignPassReject(OpaqueFilterData* filter, uint8_t selector) noexcept {
    SectionFilterData* s = AsSection(filter);
    const DesignInput in = ReadInput(s, selector);
    const double w = in.frequency * kTwoPi;
    const double c = std::cos(w);
    const double alpha = std::sin(w) / (2.0 * in.q);
    const double a[3] = {1.0 + alpha, -2.0 * c, 1.0 - alpha};
    double b[3] = {1.0, 0.0, 0.0};
    switch (in.type) {
        case kLowPass: b[0] = (1.0 - c) / 2.0, b[1] = 1.0 - c, b[2] = (1.0 - c) / 2.0; break;
        case kHiPass: b[0] = (1.0 + c) / 2.0, b[1] = -(1.0 + c), b[2] = (1.0 + c) / 2.0; break;
        case kBandpass: b[0] = alpha, b[1] = 0.0, b[2] = -alpha; break;
        case kNotch: b[0] = 1.0, b[1] = -2.0 * c, b[2] = 1.0; break;
        default: break;
    }
    Store<Normalise::DivideNumerator>(s, selector, b, a);
}

FilterDesignFunction DesignFunctionFor(FilterType type) noexcept {
    switch (type) {
        case kParametric: return &DesignPeak;
        case kLowShelf:
        case kLowShelf2: return &DesignLowShelf;
        case kHiShelf:
        case kHiShelf2: return &DesignHighShelf;
        case kLowPass:
        case kHiPass:
        case kBandpass:
        case kNotch: return &DesignPassReject;
        default: return nullptr;
    }
}

}  // namespace vorix
