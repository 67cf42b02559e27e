#pragma once

#include <cstdint>

#include "dsp/FilterRecord.h"

namespace vorix {

// Second-order designs from normalised frequency. Each reads the targets and writes the edit set
// (selector 0), or reads the current parameters and writes the audio set (selector 1).
// Selector 0 runs on the editor side; selector 1 on the audio thread during a ramp, so these
// allocate nothing, lock nothing and never throw.
void DesignPeak(OpaqueFilterData* filter, uint8_t selector) noexcept;        // type 1
void DesignLowShelf(OpaqueFilterData* filter, uint8_t selector) noexcept;    // types 2 and 4
void DesignHighShelf(OpaqueFilterData* filter, uint8_t selector) noexcept;   // types 3 and 5
void DesignPassReject(OpaqueFilterData* filter, uint8_t selector) noexcept;  // types 6 to 9

// Q for a bandwidth in octaves at the record's target frequency. Vorix defines bandwidth by this
// relation: it corrects the bilinear warping towards high frequencies, so bandwidth 1 is a Q of
// about 0.5 at low frequency. Any thread.
double BandwidthToQ(const OpaqueFilterData* filter, double bandwidth) noexcept;

// The lowest normalised frequency a design uses: 16 Hz, the lowest a user can set, at 192 kHz.
// Below it the coefficients of a narrow design, rounded to single precision, no longer describe
// the filter asked for. A record's frequency is not clamped, so a document or a caller
// can leave 0, a negative value or NaN in it, where every design would put its poles on or beyond
// the unit circle and the filter would run away while its response claimed 0 dB.
inline constexpr double kLowestDesignFrequency = 16.0 / 192000.0;

// The frequency a design uses for a record's frequency: within the lowest design frequency and
// the system's frequency limit, NaN taken as the lowest. Designs, Q from bandwidth and the
// response all go through it, so what is drawn and printed is what plays. Any thread.
double DesignFrequency(double frequency) noexcept;

// The design function of a single-section type; null for any other type.
FilterDesignFunction DesignFunctionFor(FilterType type) noexcept;

}  // namespace vorix
