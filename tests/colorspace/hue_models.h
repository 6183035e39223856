// HLS and HSV of single pixels: plain models of what each function computes. Colours are R, G, B; H, L, S or H, S, V.
#pragma once

#include <xmmintrin.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "pxlcc.h"

namespace pxl::test {

using Colour = std::array<float, 3>;

inline float larger(float a, float b) { return a > b ? a : b; }  // b if either is a NaN
inline float smaller(float a, float b) { return a < b ? a : b; }
inline float largestOf(const Colour& c) { return larger(larger(c[0], c[1]), c[2]); }
inline float smallestOf(const Colour& c) { return smaller(smaller(c[0], c[1]), c[2]); }

inline float estimate(float x) { return _mm_cvtss_f32(_mm_rcp_ss(_mm_set_ss(x))); }
inline float refined(float x) {
    const float r = estimate(x);
    return r + r - x * r * r;
}

// ---- models

// Of the functions' sample types: bytes, words, floats.
struct HueScale {
    float full, hueCode, degrees, fromCode, grayRange;
};
constexpr HueScale kByteScale = {255, 0.7083333f, 1.4117647f, 0.003921569f, 0};
constexpr HueScale kWordScale = {65535, 182.04167f, 0.005493248f, 1.5259022e-5f, 0};
constexpr HueScale kUnitScale = {1, 0.0027777778f, 360, 1, 1.1920929e-7f};

template <class Divide>
Colour hlsModel(const HueScale& scale, Colour rgb, const Divide& divide) {
    const auto [r, g, b] = rgb;
    const float mx = largestOf(rgb), mn = smallestOf(rgb), d = mx - mn, l = (mx + mn) * 0.5f;
    if (d <= scale.grayRange) return {0, l, 0};
    const float s = divide(d, l <= scale.full / 2 ? mx + mn : 2 * scale.full - (mx + mn)) * scale.full;
    float h;
    if (r == mx) {
        h = divide((g - b) * 60, d);
    } else if (g == mx) {
        h = divide((b - r) * 60, d) + 120;
    } else {
        h = divide((r - g) * 60, d) + 240;
    }
    if (h < 0) h += 360;
    return {h * scale.hueCode, l, s};
}

inline float trapezoid(float m1, float m2, float hue) {
    if (hue < 60) return m1 + (m2 - m1) * hue * 0.016666668f;
    if (hue < 180) return m2;
    if (hue < 240) return m1 + (m2 - m1) * (240 - hue) * 0.016666668f;
    return m1;
}

inline Colour rgbOfHlsModel(const HueScale& scale, Colour hls, bool bytesLeftOver) {
    const float h = hls[0] * scale.degrees, l = hls[1] * scale.fromCode, s = hls[2] * scale.fromCode;
    if (s == 0) return {l * scale.full, l * scale.full, l * scale.full};
    const float m2 = l <= 0.5f ? l * (1 + s) : l + s - l * s, m1 = 2 * l - m2;
    const float red = h + 120 > 360 ? h + 120 - 360 : h + 120, blue = h - 120 < 0 ? h - 120 + 360 : h - 120;
    float green = trapezoid(m1, m2, h);
    if (bytesLeftOver && h < 60) green = m1 + (m2 - m1) * (hls[0] * 0.023529414f);
    if (bytesLeftOver && h >= 180 && h < 240) green = m1 + (m2 - m1) * (4 - hls[0] * 0.023529414f);
    return {trapezoid(m1, m2, red) * scale.full, green * scale.full, trapezoid(m1, m2, blue) * scale.full};
}

inline Colour hsvByteModel(Colour rgb) {
    const auto [r, g, b] = rgb;
    const float mx = largestOf(rgb), d = mx - smallestOf(rgb);
    if (d == 0) return {0, 0, mx};
    const float k = estimate(d);
    float t = 0;
    if (r == mx) t = (mx - b) * k - (mx - g) * k;
    if (g == mx) t = (mx - r) * k - (mx - b) * k + 2;
    if (b == mx) t = (mx - g) * k - (mx - r) * k + 4;
    const float h = t * 42.5f;
    return {h < 0 ? h + 255 : h, estimate(mx) * d * 255, mx};
}

inline Colour hsvWordModel(Colour rgb) {
    const auto [r, g, b] = rgb;
    const float mx = largestOf(rgb), d = mx - smallestOf(rgb);
    if (d == 0) return {0, 0, mx};
    const float k = 1 / d, a = (mx - g) * k, bb = (mx - b) * k, c = (mx - r) * k;
    float t = 0;
    if (r == mx) t = bb - a;
    if (g == mx) t = c + 2 - bb;
    if (larger(r, g) <= b) t = a + 4 - c;
    if (t + 1.1920929e-7f < 0) t += 6;
    return {std::trunc(t * 10922.5f + 0.5f), std::trunc(d * 65535 / mx + 0.5f), mx};
}

inline Colour rgbOfHsvModel(const HueScale& scale, Colour hsv) {
    const auto [hue, saturation, v] = hsv;
    if (saturation == 0) return {v, v, v};
    const float h6 = hue < scale.full ? hue * 0.016666668f * scale.degrees : 0, i = std::trunc(h6), f = h6 - i;
    const float s = saturation * scale.fromCode, p = v - s * v, q = v - s * v * f, t = s * v * f + p;
    switch (static_cast<int>(i)) {
        case 0:
            return {v, t, p};
        case 1:
            return {q, v, p};
        case 2:
            return {p, v, t};
        case 3:
            return {p, q, v};
        case 4:
            return {t, p, v};
        case 5:
            return {v, p, q};
        default:
            return {0, 0, 0};
    }
}

}  // namespace pxl::test
