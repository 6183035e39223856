#include "cie.h"

#include <algorithm>
#include <cmath>

namespace pxl::catalog {
namespace {

using Matrix = double[3][3];

constexpr Matrix kRgbToXyz = {
    {0.412453, 0.35758, 0.180423}, {0.212671, 0.71516, 0.072169}, {0.019334, 0.119193, 0.950227}};
constexpr Matrix kXyzToRgb = {
    {3.240479, -1.53715, -0.498535}, {-0.969256, 1.875991, 0.041556}, {0.055648, -0.204043, 1.057311}};

constexpr double kWhiteX = 0.950456, kWhiteZ = 1.088754;
constexpr double kWhiteSum = kWhiteX + 15 + 3 * kWhiteZ, kWhiteU = 4 * kWhiteX / kWhiteSum, kWhiteV = 9 / kWhiteSum;

// (6/29)^3 and (29/3)^3
constexpr double kEpsilon = 216.0 / 24389, kKappa = 24389.0 / 27;

Colour3 product(const Matrix& m, const Colour3& c) {
    Colour3 out = {};
    for (std::size_t i = 0; i < 3; ++i) {
        for (std::size_t j = 0; j < 3; ++j) out[i] += m[i][j] * c[j];
    }
    return out;
}

double f(double s) { return s > kEpsilon ? std::cbrt(s) : (kKappa * s + 16) / 116; }
double inverseOfF(double f) { return f * f * f > kEpsilon ? f * f * f : (116 * f - 16) / kKappa; }

Colour3 luvOf(const Colour3& xyz) {
    const double l = 116 * f(xyz[1]) - 16, sum = xyz[0] + 15 * xyz[1] + 3 * xyz[2];
    if (sum == 0) return {};
    return {l, 13 * l * (4 * xyz[0] / sum - kWhiteU), 13 * l * (9 * xyz[1] / sum - kWhiteV)};
}
Colour3 xyzOfLuv(const Colour3& luv) {
    if (luv[0] <= 0) return {};
    const double y = inverseOfF((luv[0] + 16) / 116);
    const double u = luv[1] / (13 * luv[0]) + kWhiteU, v = luv[2] / (13 * luv[0]) + kWhiteV;
    return {y * 9 * u / (4 * v), y, y * (12 - 3 * u - 20 * v) / (4 * v)};
}

Colour3 labOf(const Colour3& xyz) {
    const double fx = f(xyz[0] / kWhiteX), fy = f(xyz[1]), fz = f(xyz[2] / kWhiteZ);
    return {116 * fy - 16, 500 * (fx - fy), 200 * (fy - fz)};
}
Colour3 xyzOfLab(const Colour3& lab) {
    const double fy = (lab[0] + 16) / 116;
    return {kWhiteX * inverseOfF(fy + lab[1] / 500), inverseOfF(fy), kWhiteZ * inverseOfF(fy - lab[2] / 200)};
}

// code = (value - low) * full / span
struct Range {
    double low, span;
};
std::array<Range, 3> rangesOf(std::string_view space, Element element) {
    if (space == "LUV") return {{{0, 100}, {-134, 354}, {-140, 262}}};
    // 16-bit codes of a and b are 255 for each 8-bit one
    const double span = bytesOf(element) == 1 ? 255 : 257;
    if (space == "Lab") return {{{0, 100}, {-128, span}, {-128, span}}};
    return {{{0, 1}, {0, 1}, {0, 1}}};
}

bool isReal(Element element) { return element == Element::f32 || element == Element::f64; }

}  // namespace

bool isCie(std::string_view space) { return space == "XYZ" || space == "LUV" || space == "Lab"; }

Colour3 cieOfRgb(std::string_view space, const Colour3& rgb) {
    const Colour3 xyz = product(kRgbToXyz, rgb);
    return space == "LUV" ? luvOf(xyz) : space == "Lab" ? labOf(xyz) : xyz;
}

Colour3 rgbOfCie(std::string_view space, const Colour3& c) {
    return product(kXyzToRgb, space == "LUV" ? xyzOfLuv(c) : space == "Lab" ? xyzOfLab(c) : c);
}

Colour3 codesOf(std::string_view space, Element element, const Colour3& colour) {
    if (isReal(element)) return colour;
    const double full = bytesOf(element) == 1 ? 255 : 65535, offset = element == Element::s16 ? 32768 : 0;
    const auto ranges = rangesOf(space, element);
    Colour3 codes;
    for (std::size_t i = 0; i < 3; ++i) codes[i] = (colour[i] - ranges[i].low) * full / ranges[i].span - offset;
    return codes;
}

Colour3 valuesOf(std::string_view space, Element element, const Colour3& codes) {
    if (isReal(element)) return codes;
    const double full = bytesOf(element) == 1 ? 255 : 65535, offset = element == Element::s16 ? 32768 : 0;
    const auto ranges = rangesOf(space, element);
    Colour3 colour;
    for (std::size_t i = 0; i < 3; ++i) colour[i] = (codes[i] + offset) * ranges[i].span / full + ranges[i].low;
    return colour;
}

}  // namespace pxl::catalog
