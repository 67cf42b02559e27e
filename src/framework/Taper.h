#pragma once

namespace vorix {

// The taper that sliders and meters share: a fraction of a range bent so that the low end gets
// more room, as a level scale wants. `taper` at or below 0 (the sliders' -1, "linear") leaves
// the fraction as it is. The forward form maps a position to a value; the inverse maps back, so
// that the two undo each other over the range. Any thread; pure arithmetic.
double ApplyTaper(double taper, bool inverse, double fraction);

}  // namespace vorix
