// The colour of light of one wavelength, for spectra drawn with line style 4.
#include <cmath>

#include "vyrbase/diagram/VyrDiagram.h"

namespace {

// The byte of one component: (f x c)^0.8 scaled to 0..255, then by the intensity in percent,
// kept to its low 8 bits.
unsigned char ComponentByte(double factor, double component, double intensityPercent) {
    const double gamma = std::pow(factor * component, 0.8);
    const double full = std::trunc(gamma * 255.0 + 0.5);
    double scaled = std::trunc(full * intensityPercent / 100.0);
    if (!std::isfinite(scaled))
        return 0;
    // The low 8 bits of the integer, as a two's complement conversion would keep them.
    scaled = std::fmod(scaled, 256.0);
    if (scaled < 0.0)
        scaled += 256.0;
    return static_cast<unsigned char>(scaled);
}

}  // namespace

wxColour VyrDiagram::WaveLengthToRGB(int nanometres, double intensityPercent, bool blackOutside) {
    const int l = nanometres;
    if (l < 0 || l > 2000)
        return wxColour(0, 0, 0);

    double r = 0.0;
    double g = 0.0;
    double b = 0.0;
    if (l >= 380 && l < 440) {
        r = (440 - l) / 60.0;
        b = 1.0;
    } else if (l >= 440 && l < 490) {
        g = (l - 440) / 50.0;
        b = 1.0;
    } else if (l >= 490 && l < 510) {
        g = 1.0;
        b = (510 - l) / 20.0;
    } else if (l >= 510 && l < 580) {
        r = (l - 510) / 70.0;
        g = 1.0;
    } else if (l >= 580 && l < 645) {
        r = 1.0;
        g = (645 - l) / 65.0;
    } else if (l >= 645 && l < 780) {
        r = 1.0;
    } else if (!blackOutside) {
        // The no-colour value that the spectrum painter skips.
        return wxColour(0, 0, 0, wxALPHA_TRANSPARENT);
    }

    // Light fades towards both ends of the visible range.
    double factor = 0.0;
    if (l >= 380 && l < 420)
        factor = 0.3 + 0.7 * (l - 380) / 40.0;
    else if (l >= 420 && l < 701)
        factor = 1.0;
    else if (l >= 701 && l < 781)
        factor = 0.3 + 0.7 * (780 - l) / 80.0;

    return wxColour(ComponentByte(factor, r, intensityPercent),
                    ComponentByte(factor, g, intensityPercent),
                    ComponentByte(factor, b, intensityPercent), wxALPHA_OPAQUE);
}
