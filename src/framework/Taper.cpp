#include "framework/Taper.h"

#include <cmath>

namespace vorix {

double ApplyTaper(double taper, bool inverse, double fraction) {
    if (!(taper > 0.0)) return fraction;
    const double low = std::log10(taper);
    const double span = std::log10(taper + 1.0) - low;
    if (inverse) return (std::log10(fraction + taper) - low) / span;
    if (fraction >= 1.0) return 1.0;
    return std::pow(10.0, span * fraction + low) - taper;
}

}  // namespace vorix
