// RGB and CIE XYZ on lanes: the matrices for the primaries of ITU-R BT.709 and white D65. RGB is linear light.
#pragma once

#include "simd/fixed_point.h"

PXL_BEGIN_TARGET

template <class T>
struct Rows3 {
    T row[3][3];
};

// ---- floats and doubles

constexpr Rows3<Pxl32f> kRgbToXyz = {
    {{0.412453f, 0.35758f, 0.180423f}, {0.212671f, 0.71516f, 0.072169f}, {0.019334f, 0.119193f, 0.950227f}}};
constexpr Rows3<Pxl32f> kXyzToRgb = {
    {{3.240479f, -1.53715f, -0.498535f}, {-0.969256f, 1.875991f, 0.041556f}, {0.055648f, -0.204043f, 1.057311f}}};

// Each row from left to right, every product and sum rounded.
template <class V>
PXL_INLINE V dot(const Pxl32f (&row)[3], Channels3<V> px) {
    return add(add(mul(px.c0, fill<V>(row[0])), mul(px.c1, fill<V>(row[1]))), mul(px.c2, fill<V>(row[2])));
}
template <class V>
PXL_INLINE Channels3<V> product(const Rows3<Pxl32f>& matrix, Channels3<V> px) {
    return {dot(matrix.row[0], px), dot(matrix.row[1], px), dot(matrix.row[2], px)};
}

// To 0..1; 0 for NaN, and for -0.
template <class V>
PXL_INLINE V clamp01(V a) {
    return minimum(maximum(a, fill<V>(0.0f)), fill<V>(1.0f));
}

// Z alone is limited, deliberately: white becomes 0.950456, 1, 1.
template <class V>
PXL_INLINE Channels3<V> xyzOf(Channels3<V> rgb) {
    const auto xyz = product(kRgbToXyz, rgb);
    return {xyz.c0, xyz.c1, clamp01(xyz.c2)};
}
template <class V>
PXL_INLINE Channels3<V> rgbOfXyz(Channels3<V> xyz) {
    const auto rgb = product(kXyzToRgb, xyz);
    return {clamp01(rgb.c0), clamp01(rgb.c1), clamp01(rgb.c2)};
}

// Codes of 16 bits: towards zero, still to be saturated.
struct Xyz16u {
    const Rows3<Pxl32f>& matrix;
    template <int N>
    PXL_INLINE Channels3<I32<N>> operator()(Channels3<F32<N>> px) const {
        const auto r = product(matrix, px);
        return {truncateToInt(r.c0), truncateToInt(r.c1), truncateToInt(r.c2)};
    }
};

// ---- bytes: (c0 * row[0] + c1 * row[1] + c2 * row[2]) >> kShift, saturated

// For groups of four pixels. The second is no plain rounding of the matrix; these are its numbers.
struct XyzQ15 {
    static constexpr int kShift = 15;
    static constexpr Rows3<int> kMatrix = {{{13515, 11717, 5912}, {6969, 23434, 2365}, {634, 3906, 31137}}};
};
struct RgbQ13 {
    static constexpr int kShift = 13;
    static constexpr Rows3<int> kMatrix = {{{26546, -12591, -4083}, {-7939, 15368, 340}, {456, -1671, 8661}}};
};

// For the pixels left over: truncated and not rounded.
struct XyzQ16 {
    static constexpr int kShift = 16;
    static constexpr Rows3<int> kMatrix = {{{27030, 23434, 11824}, {13937, 46868, 4729}, {1267, 7811, 62274}}};
};
struct RgbQ16 {
    static constexpr int kShift = 16;
    static constexpr Rows3<int> kMatrix = {{{212368, -100738, -32671}, {-63521, 122944, 2723}, {3646, -13372, 69291}}};
};

template <class Form, int kRow, int N>
PXL_INLINE I16<N> integerDot(Channels3<I16<N>> px) {
    constexpr auto& row = Form::kMatrix.row[kRow];
    constexpr int kScale = 1 << (16 - Form::kShift);
    return sumQ16<row[0] * kScale, row[1] * kScale, row[2] * kScale>(px.c0, px.c1, px.c2, 0);
}

template <class Form, int N>
PXL_INLINE Channels3<U8<N>> integerProduct(Channels3<U8<N>> px) {
    const auto c0 = widen(px.c0), c1 = widen(px.c1), c2 = widen(px.c2);
    const Channels3<I16<N>> low = {c0.low, c1.low, c2.low}, high = {c0.high, c1.high, c2.high};
    return {packSatU8(integerDot<Form, 0>(low), integerDot<Form, 0>(high)),
            packSatU8(integerDot<Form, 1>(low), integerDot<Form, 1>(high)),
            packSatU8(integerDot<Form, 2>(low), integerDot<Form, 2>(high))};
}

PXL_END_TARGET
