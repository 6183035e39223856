// pxlcc accuracy: how far conversions of colour science are from their equations.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>

#include "cie.h"
#include "commands.h"
#include "error.h"
#include "exports.h"

namespace pxl::tool {

namespace {

using catalog::Colour3;
using catalog::Element;
using catalog::Export;

// There and back; other layouts and the order BGR share their arithmetic.
struct Pair {
    const char *there, *back;
};
constexpr Pair kPairs[] = {
    {"pxliRGBToXYZ_8u_C3R", "pxliXYZToRGB_8u_C3R"},   {"pxliRGBToXYZ_16u_C3R", "pxliXYZToRGB_16u_C3R"},
    {"pxliRGBToXYZ_16s_C3R", "pxliXYZToRGB_16s_C3R"}, {"pxliRGBToXYZ_32f_C3R", "pxliXYZToRGB_32f_C3R"},
    {"pxliRGBToLUV_8u_C3R", "pxliLUVToRGB_8u_C3R"},   {"pxliRGBToLUV_16u_C3R", "pxliLUVToRGB_16u_C3R"},
    {"pxliRGBToLUV_16s_C3R", "pxliLUVToRGB_16s_C3R"}, {"pxliRGBToLUV_32f_C3R", "pxliLUVToRGB_32f_C3R"},
    {"pxliRGBToLab_8u_C3R", "pxliLabToRGB_8u_C3R"},   {"pxliBGRToLab_8u16u_C3R", "pxliLabToBGR_16u8u_C3R"},
    {"pxliRGBToLab_32f_C3R", "pxliLabToRGB_32f_C3R"}, {"pxliRGBToLab_64f_P3R", "pxliLabToRGB_64f_P3R"},
};

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
    void add(const Colour3& a, const Colour3& b) {
        for (std::size_t i = 0; i < 3; ++i) {
            largest = std::max(largest, std::fabs(a[i] - b[i]));
            sum += std::fabs(a[i] - b[i]);
            ++count;
        }
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
    const PxlSize size = {levels * levels, levels};
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
    Distance forth, inverse, trip;
    for (std::int64_t i = 0; i < pixels; ++i) {
        const Colour3 in = read(rgb, i), between = read(middle, i), out = read(again, i);
        forth.add(
            between,
            inRange(catalog::codesOf(space, to, catalog::cieOfRgb(space, catalog::valuesOf("RGB", from, in))), there));
        inverse.add(
            out, inRange(catalog::codesOf("RGB", from, catalog::rgbOfCie(space, catalog::valuesOf(space, to, between))),
                         back));
        trip.add(out, in);
    }
    const std::string_view name = there.name;
    std::printf("| %s `%.*s` |", space.c_str(), static_cast<int>(name.substr(13).find('_')), name.data() + 13);
    for (const Distance& d : {forth, inverse, trip}) std::printf(" %.3g | %.2g |", d.largest, d.sum / d.count);
    std::printf("\n");
}

void accuracy() {
    std::printf(
        "Distance of the samples from the equations in double precision (CIE 1976), over colours in equal steps "
        "through\n"
        "the RGB cube, 86^3 for bytes and 65^3 for the others: largest and mean of all channels, in codes of the "
        "samples\n"
        "and for floats in the units of the space (L* 0..100, RGB 0..1). Back: of the codes that the first direction "
        "gave.\n\n"
        "| | there: largest | mean | back: largest | mean | round trip: largest | mean |\n"
        "|---|---|---|---|---|---|---|\n");
    for (const Pair& pair : kPairs) measure(pair);
}

}  // namespace

void addAccuracy(CLI::App& program) {
    program
        .add_subcommand("accuracy", "Measure how far conversions to and from XYZ, LUV and Lab are from the equations")
        ->callback(accuracy);
}

}  // namespace pxl::tool
