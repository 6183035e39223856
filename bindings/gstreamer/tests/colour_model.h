// Pictures of flat blocks and what a conversion has to make of them, in double precision: written from the definitions
// of BT.601 and BT.709, not from the library's arithmetic.
#pragma once

#include <gst/video/video.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

namespace pxl::gst::test {

using Codes = std::array<double, 4>;  // by component; the fourth is alpha

struct Picture {
    const GstVideoFormatInfo* format;
    int width, height;
    std::vector<std::vector<std::uint8_t>> planes = {};
    std::vector<int> steps = {};
    std::vector<std::size_t> offsets = {};  // of the first rows
};

inline constexpr int kBlock = 16;
inline constexpr int kReach = 5;  // of the widest chroma filter, in pixels

// Which field of an interlaced picture, or 0.
inline int fieldOf(int y, bool interlaced) { return interlaced ? y & 1 : 0; }

// A colour for each square block of each field, R, G, B in 0..1.
inline std::array<double, 3> colourAt(int x, int y, bool interlaced) {
    const unsigned row = static_cast<unsigned>(interlaced ? y / 2 : y) / kBlock;
    unsigned seed = static_cast<unsigned>(x) / kBlock * 7919u + row * 104729u +
                    static_cast<unsigned>(fieldOf(y, interlaced)) * 1299709u + 12345u;
    std::array<double, 3> colour;
    for (double& channel : colour) {
        seed = seed * 1664525u + 1013904223u;
        channel = (seed >> 16) % 256 / 255.0;
    }
    return colour;
}

// Whether nothing within the reach of a filter along both axes has another colour.
inline bool isInside(const Picture& picture, int x, int y, bool interlaced) {
    const auto inside = [](int at, int extent) {
        return (at < kBlock || at % kBlock >= kReach) &&
               (at % kBlock < kBlock - kReach || at / kBlock == (extent - 1) / kBlock);
    };
    return inside(x, picture.width) && (interlaced ? inside(y / 2, picture.height / 2) : inside(y, picture.height));
}

inline double fullScale(const GstVideoFormatInfo* format) { return format->depth[0] == 16 ? 65535 : 255; }

inline Codes codesOf(const GstVideoFormatInfo* format, const GstVideoColorimetry& c, const std::array<double, 3>& rgb) {
    const bool studio = c.range == GST_VIDEO_COLOR_RANGE_16_235;
    const double full = fullScale(format);
    const auto level = [&](double v) { return studio ? (16 + 219 * v) * (full + 1) / 256 : v * full; };
    if (GST_VIDEO_FORMAT_INFO_IS_RGB(format)) return {level(rgb[0]), level(rgb[1]), level(rgb[2]), full};
    gdouble kr = 0, kb = 0;
    gst_video_color_matrix_get_Kr_Kb(c.matrix, &kr, &kb);
    const double y = kr * rgb[0] + (1 - kr - kb) * rgb[1] + kb * rgb[2];
    const double cb = (rgb[2] - y) / (2 * (1 - kb)), cr = (rgb[0] - y) / (2 * (1 - kr));
    const double scale = studio ? 224 : 255;
    return {level(y), 128 + scale * cb, 128 + scale * cr, full};
}

inline std::array<double, 3> rgbOf(const GstVideoFormatInfo* format, const GstVideoColorimetry& c, const Codes& codes) {
    const bool studio = c.range == GST_VIDEO_COLOR_RANGE_16_235;
    const double full = fullScale(format);
    const auto value = [&](double code) { return studio ? (code * 256 / (full + 1) - 16) / 219 : code / full; };
    if (GST_VIDEO_FORMAT_INFO_IS_RGB(format)) return {value(codes[0]), value(codes[1]), value(codes[2])};
    const double y = value(codes[0]);
    if (GST_VIDEO_FORMAT_INFO_IS_GRAY(format)) return {y, y, y};
    gdouble kr = 0, kb = 0;
    gst_video_color_matrix_get_Kr_Kb(c.matrix, &kr, &kb);
    const double scale = studio ? 224 : 255;
    const double cb = (codes[1] - 128) / scale, cr = (codes[2] - 128) / scale;
    const double r = y + 2 * (1 - kr) * cr, b = y + 2 * (1 - kb) * cb;
    return {r, (y - kr * r - kb * b) / (1 - kr - kb), b};
}

inline int samplesOf(const GstVideoFormatInfo* format, int component) {
    return GST_VIDEO_FORMAT_INFO_N_COMPONENTS(format) > static_cast<guint>(component) ? 1 : 0;
}

inline std::uint8_t* sampleAt(Picture& picture, int component, int column, int row) {
    const auto* format = picture.format;
    const auto plane = static_cast<std::size_t>(GST_VIDEO_FORMAT_INFO_PLANE(format, component));
    return picture.planes[plane].data() + picture.offsets[plane] + std::ptrdiff_t{row} * picture.steps[plane] +
           std::ptrdiff_t{column} * GST_VIDEO_FORMAT_INFO_PSTRIDE(format, component) +
           GST_VIDEO_FORMAT_INFO_POFFSET(format, component);
}

inline double read(Picture& picture, int component, int x, int y, bool interlaced) {
    const auto* format = picture.format;
    const int shift = static_cast<int>(GST_VIDEO_FORMAT_INFO_H_SUB(format, component));
    // Rows of chroma belong to fields in turns, as rows of luma do.
    const int row = interlaced && shift > 0 ? (y / 2 >> shift) * 2 + (y & 1) : y >> shift;
    const std::uint8_t* at = sampleAt(picture, component, x >> GST_VIDEO_FORMAT_INFO_W_SUB(format, component), row);
    return fullScale(format) == 255 ? *at : *reinterpret_cast<const std::uint16_t*>(at);
}

inline void fill(Picture& picture, const GstVideoColorimetry& c, bool interlaced) {
    const auto* format = picture.format;
    for (int component = 0; component < static_cast<int>(GST_VIDEO_FORMAT_INFO_N_COMPONENTS(format)); ++component) {
        const int right = static_cast<int>(GST_VIDEO_FORMAT_INFO_W_SUB(format, component));
        const int down = static_cast<int>(GST_VIDEO_FORMAT_INFO_H_SUB(format, component));
        for (int y = 0; y < picture.height; ++y)
            for (int x = 0; x < picture.width; ++x) {
                const Codes codes = codesOf(format, c, colourAt(x, y, interlaced));
                const int row = interlaced && down > 0 ? (y / 2 >> down) * 2 + (y & 1) : y >> down;
                std::uint8_t* at = sampleAt(picture, component, x >> right, row);
                const double code =
                    std::round(std::clamp(codes[static_cast<std::size_t>(component)], 0.0, fullScale(format)));
                if (fullScale(format) == 255) {
                    *at = static_cast<std::uint8_t>(code);
                } else {
                    *reinterpret_cast<std::uint16_t*>(at) = static_cast<std::uint16_t>(code);
                }
            }
    }
}

}  // namespace pxl::gst::test
