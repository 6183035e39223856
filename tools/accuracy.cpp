// pxlcc accuracy: how far conversions of colour science are from their equations.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>

#include "cie.h"
#include "commands.h"
#include "error.h"
#include "exports.h"
#include "hexagonal.h"

namespace pxl::tool {

namespace {

using catalog::Colour3;
using catalog::Element;
using catalog::Export;

// There and back; other layouts and the order BGR share their arithmetic.
struct Pair {
    const char *there, *back;
};
constexpr Pair kHexagonal[] = {
    {"pxliRGBToHLS_8u_C3R", "pxliHLSToRGB_8u_C3R"},   {"pxliRGBToHLS_16u_C3R", "pxliHLSToRGB_16u_C3R"},
    {"pxliRGBToHLS_16s_C3R", "pxliHLSToRGB_16s_C3R"}, {"pxliRGBToHLS_32f_C3R", "pxliHLSToRGB_32f_C3R"},
    {"pxliRGBToHSV_8u_C3R", "pxliHSVToRGB_8u_C3R"},   {"pxliRGBToHSV_16u_C3R", "pxliHSVToRGB_16u_C3R"},
};
constexpr Pair kCie[] = {
    {"pxliRGBToXYZ_8u_C3R", "pxliXYZToRGB_8u_C3R"},   {"pxliRGBToXYZ_16u_C3R", "pxliXYZToRGB_16u_C3R"},
    {"pxliRGBToXYZ_16s_C3R", "pxliXYZToRGB_16s_C3R"}, {"pxliRGBToXYZ_32f_C3R", "pxliXYZToRGB_32f_C3R"},
    {"pxliRGBToLUV_8u_C3R", "pxliLUVToRGB_8u_C3R"},   {"pxliRGBToLUV_16u_C3R", "pxliLUVToRGB_16u_C3R"},
    {"pxliRGBToLUV_16s_C3R", "pxliLUVToRGB_16s_C3R"}, {"pxliRGBToLUV_32f_C3R", "pxliLUVToRGB_32f_C3R"},
    {"pxliRGBToLab_8u_C3R", "pxliLabToRGB_8u_C3R"},   {"pxliBGRToLab_8u16u_C3R", "pxliLabToBGR_16u8u_C3R"},
    {"pxliRGBToLab_32f_C3R", "pxliLabToRGB_32f_C3R"}, {"pxliRGBToLab_64f_P3R", "pxliLabToRGB_64f_P3R"},
};

Colour3 equationOfRgb(std::string_view space, const Colour3& rgb) {
    return catalog::isCie(space) ? catalog::cieOfRgb(space, rgb) : catalog::hexagonalOfRgb(space, rgb);
}
Colour3 rgbOfEquation(std::string_view space, const Colour3& colour) {
    return catalog::isCie(space) ? catalog::rgbOfCie(space, colour) : catalog::rgbOfHexagonal(space, colour);
}

// ---- samples of any type

template <class Work>
void withSample(Element element, std::uint8_t* at, const Work& work) {
    if (element == Element::u8) work(*at);
    if (element == Element::u16) work(*reinterpret_cast<std::uint16_t*>(at));
    if (element == Element::s16) work(*reinterpret_cast<std::int16_t*>(at));
    if (element == Element::f32) work(*reinterpret_cast<float*>(at));
    if (element == Element::f64) work(*reinterpret_cast<double*>(at));
}

Element elementOf(const Image& image) { return image.shape().planes[0].element; }

std::uint8_t* sampleOf(const Image& image, std::int64_t pixel, std::size_t channel) {
    const bool planar = image.shape().planes.size() > 1;
    const auto bytes = static_cast<std::int64_t>(bytesOf(elementOf(image)));
    const std::int64_t sample = planar ? pixel : 3 * pixel + static_cast<std::int64_t>(channel);
    return image.plane(planar ? channel : 0).first + sample * bytes;
}

// Channels in the order of the space's name, but R, G, B for BGR too.
std::size_t position(const Image& image, std::size_t channel) {
    return image.shape().space == "BGR" ? 2 - channel : channel;
}

Colour3 read(const Image& image, std::int64_t pixel) {
    Colour3 colour;
    for (std::size_t c = 0; c < 3; ++c) {
        withSample(elementOf(image), sampleOf(image, pixel, position(image, c)),
                   [&](auto sample) { colour[c] = static_cast<double>(sample); });
    }
    return colour;
}

void write(const Image& image, std::int64_t pixel, const Colour3& colour) {
    for (std::size_t c = 0; c < 3; ++c) {
        withSample(elementOf(image), sampleOf(image, pixel, position(image, c)),
                   [&](auto& sample) { sample = static_cast<std::decay_t<decltype(sample)>>(colour[c]); });
    }
}

// ---- distances

struct Distance {
    double largest = 0, sum = 0, count = 0;
};

struct Distances {
    std::array<Distance, 3> channels = {};
    void add(const Colour3& a, const Colour3& b, double circle = 0) {
        for (std::size_t i = 0; i < 3; ++i) {
            double d = std::fabs(a[i] - b[i]);
            if (i == 0 && circle > 0) d = std::min(d, std::fabs(circle - d));
            channels[i].largest = std::max(channels[i].largest, d);
            channels[i].sum += d;
            ++channels[i].count;
        }
    }
    void print(const std::string& what, double unit) const {
        std::printf("| %s |", what.c_str());
        for (const Distance& d : channels) std::printf(" %.3g, %.2g |", d.largest / unit, d.sum / d.count / unit);
        std::printf("\n");
    }
};

// Integers hold nothing outside their range, and where floats are limited the equation is as well.
Colour3 limited(Colour3 c, const Export& function, const Colour3& low, const Colour3& high) {
    const std::string& to = function.destination.space;
    const bool isInteger = function.destination.planes[0].element < Element::f32;
    const bool limitsFloats = to == "XYZ" || function.source.space == "XYZ" || function.source.space == "LUV";
    if (!isInteger && !limitsFloats) return c;
    for (std::size_t i = 0; i < 3; ++i) c[i] = std::clamp(c[i], low[i], high[i]);
    return c;
}

Colour3 inRange(const Colour3& codes, const Export& function) {
    const Element element = function.destination.planes[0].element;
    if (element >= Element::f32) return limited(codes, function, {0, 0, 0}, {1, 1, 1});
    const double low = element == Element::s16 ? -32768 : 0, high = low + (element == Element::u8 ? 255 : 65535);
    return limited(codes, function, {low, low, low}, {high, high, high});
}

void measure(const Pair& pair) {
    const Export &there = exportNamed(pair.there), &back = exportNamed(pair.back);
    const Element from = there.source.planes[0].element, to = there.destination.planes[0].element;
    const std::string& space = there.destination.space;
    // bytes in steps of 3, all others in steps of 1/64 of the range
    const int levels = from == Element::u8 ? 86 : 65;
    const PxlSize size = {levels * levels * levels, 1};
    Image rgb(there.source, size), middle(there.destination, size), again(back.destination, size);
    const auto pixels = std::int64_t{size.width} * size.height;
    for (std::int64_t i = 0; i < pixels; ++i) {
        const auto level = [&](std::int64_t n) { return static_cast<double>(n % levels) / (levels - 1); };
        Colour3 codes = catalog::codesOf("RGB", from, {level(i / levels / levels), level(i / levels), level(i)});
        if (from < Element::f32) {
            for (double& code : codes) code = std::round(code);
        }
        write(rgb, i, codes);
    }
    applyOrFail(there, rgb, middle);
    applyOrFail(back, middle, again);
    // the hue is a circle of so many codes
    const double circle = !catalog::isHexagonal(space) ? 0 : to == Element::f32 ? 1 : to == Element::u8 ? 255 : 65535;
    Distances forth, inverse, trip;
    for (std::int64_t i = 0; i < pixels; ++i) {
        const Colour3 in = read(rgb, i), between = read(middle, i), out = read(again, i);
        forth.add(between,
                  inRange(catalog::codesOf(space, to, equationOfRgb(space, catalog::valuesOf("RGB", from, in))), there),
                  circle);
        inverse.add(
            out,
            inRange(catalog::codesOf("RGB", from, rgbOfEquation(space, catalog::valuesOf(space, to, between))), back));
        trip.add(out, in);
    }
    const std::string_view name = there.name;
    const std::string type(name.substr(13, name.substr(13).find('_')));
    const bool isReal = from >= Element::f32;
    const std::string unit = isReal ? ", millionths" : "";
    forth.print("RGB to " + space + ", " + type + unit, isReal ? 1e-6 : 1);
    inverse.print(space + " to RGB, " + type + unit, isReal ? 1e-6 : 1);
    trip.print("there and back, " + type + unit, isReal ? 1e-6 : 1);
}

void accuracy() {
    std::printf(
        "Distance of the samples from the definitions in double precision, over colours in equal steps through the "
        "RGB\n"
        "cube, 86^3 for bytes and 65^3 for the others, in one row: largest and mean of each channel, in codes of the\n"
        "samples, for floats in millionths of the unit of the space (L* 0..100, all others 0..1); the hue along the\n"
        "circle. To RGB: of the codes that the first direction gave.\n");
    const auto table = [](const char* title, const auto& pairs) {
        std::printf("\n%s\n\n| Conversion | Channel 0: largest, mean | Channel 1 | Channel 2 |\n|---|---|---|---|\n",
                    title);
        for (const Pair& pair : pairs) measure(pair);
    };
    table("HLS and HSV:", kHexagonal);
    table("XYZ, LUV and Lab (CIE 1976):", kCie);
}

}  // namespace

void addAccuracy(CLI::App& program) {
    program.add_subcommand("accuracy", "Measure how far HLS, HSV, XYZ, LUV and Lab are from their definitions")
        ->callback(accuracy);
}

}  // namespace pxl::tool
