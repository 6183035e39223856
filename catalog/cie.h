// The equations of the CIE spaces in double precision, to judge conversions by: XYZ, CIE 1976 L*u*v* (LUV) and L*a*b*
// (Lab) of linear RGB in 0..1 with the primaries of ITU-R BT.709 and white D65, and what codes stand for. Written from
// the definitions, not from the library's arithmetic.
#pragma once

#include <array>
#include <string_view>

#include "catalog.h"

namespace pxl::catalog {

using Colour3 = std::array<double, 3>;

// Whether a space is one of the three.
bool isCie(std::string_view space);

Colour3 cieOfRgb(std::string_view space, const Colour3& rgb);
Colour3 rgbOfCie(std::string_view space, const Colour3& colour);

// Between values and codes, which are not rounded; floats are the values themselves. Spaces: the three, "RGB" and "BGR"
// (in the order of R, G, B here).
Colour3 codesOf(std::string_view space, Element element, const Colour3& colour);
Colour3 valuesOf(std::string_view space, Element element, const Colour3& codes);

}  // namespace pxl::catalog
