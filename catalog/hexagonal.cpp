#include "hexagonal.h"

#include <algorithm>
#include <cmath>

namespace pxl::catalog {
namespace {

double hueOf(const Colour3& c, double largest, double range) {
    if (range == 0) return 0;
    const double sixths = largest == c[0]   ? (c[1] - c[2]) / range
                          : largest == c[1] ? 2 + (c[2] - c[0]) / range
                                            : 4 + (c[0] - c[1]) / range;
    return sixths < 0 ? sixths / 6 + 1 : sixths / 6;
}

// A channel goes down from `low` plus chroma where it is further than a sixth of the circle from its own hue.
Colour3 rgbOfHue(double hue, double low, double chroma) {
    Colour3 rgb;
    for (std::size_t i = 0; i < 3; ++i) {
        const double turn = hue - static_cast<double>(i) / 3, sixths = 6 * std::abs(turn - std::round(turn));
        rgb[i] = low + chroma * std::clamp(2 - sixths, 0.0, 1.0);
    }
    return rgb;
}

}  // namespace

bool isHexagonal(std::string_view space) { return space == "HLS" || space == "HSV"; }

Colour3 hexagonalOfRgb(std::string_view space, const Colour3& c) {
    const auto [smallest, largest] = std::minmax({c[0], c[1], c[2]});
    const double range = largest - smallest, hue = hueOf(c, largest, range);
    if (space == "HSV") return {hue, largest == 0 ? 0 : range / largest, largest};
    const double lightness = (largest + smallest) / 2;
    const double widest = lightness <= 0.5 ? largest + smallest : 2 - largest - smallest;
    return {hue, lightness, range == 0 ? 0 : range / widest};
}

Colour3 rgbOfHexagonal(std::string_view space, const Colour3& c) {
    if (space == "HSV") return rgbOfHue(c[0], c[2] * (1 - c[1]), c[2] * c[1]);
    const double chroma = (1 - std::abs(2 * c[1] - 1)) * c[2];
    return rgbOfHue(c[0], c[1] - chroma / 2, chroma);
}

}  // namespace pxl::catalog
