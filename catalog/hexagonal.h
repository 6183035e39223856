// The definitions of the hexagonal colour models HLS and HSV in double precision, to judge conversions by. Channels are
// 0..1, the hue a part of the circle from red over green and blue. Written from the definitions, not from the library's
// arithmetic.
#pragma once

#include <string_view>

#include "cie.h"

namespace pxl::catalog {

// Whether a space is one of the two.
bool isHexagonal(std::string_view space);

Colour3 hexagonalOfRgb(std::string_view space, const Colour3& rgb);
Colour3 rgbOfHexagonal(std::string_view space, const Colour3& colour);

}  // namespace pxl::catalog
