// The arithmetic of adaptive homogeneity-directed demosaicing (Hirakawa and Parks, 2005). Samples are in signed lanes
// that hold sums of several: 16 bits wide for bytes, 32 for 16-bit samples.
#pragma once

#include "simd/operations.h"

PXL_BEGIN_TARGET

// Green at a red or blue pixel along one direction: the five-tap filter (-1 2 2 2 -1) / 4, rounded, and kept between
// the two green neighbours, without which it makes up dots next to edges.
template <class V>
PXL_INLINE V greenAlong(V own, V before, V after, V twoBefore, V twoAfter) {
    const auto inner = addWrap(addWrap(before, after), own), outer = addWrap(twoBefore, twoAfter);
    const auto sum = addWrap(subWrap(addWrap(inner, inner), outer), fill<V>(2));
    return minimum(maximum(shiftRight<2>(sum), minimum(before, after)), maximum(before, after));
}

template <class V>
PXL_INLINE V meanOf2(V a, V b) {
    return shiftRight<1>(addWrap(addWrap(a, b), fill<V>(1)));
}
template <class V>
PXL_INLINE V meanOf4(V a, V b, V c, V d) {
    return shiftRight<2>(addWrap(addWrap(addWrap(a, b), addWrap(c, d)), fill<V>(2)));
}

// ---- CIELAB with the primaries of ITU-R BT.709 and their white, D65

// t^(1/3) for t from 0.008 to 2, to 1e-5: two Newton steps towards t^(-1/3) from a straight line through its logarithm.
template <int N>
PXL_INLINE F32<N> cubeRoot(F32<N> t) {
    const auto third = toInt(mul(toFloat(as<I32<N>>(t)), fill<F32<N>>(1.0f / 3)));
    auto y = as<F32<N>>(subWrap(fill<I32<N>>(0x54A2FA8C), third));
    for (int step = 0; step < 2; ++step) {
        const auto cube = mul(mul(mul(y, y), y), t);
        y = mul(y, sub(fill<F32<N>>(4.0f / 3), mul(cube, fill<F32<N>>(1.0f / 3))));
    }
    return mul(t, mul(y, y));
}

// The cube root with the straight segment of CIELAB below 216 / 24389.
template <int N>
PXL_INLINE F32<N> labCurve(F32<N> t) {
    const auto knee = fill<F32<N>>(216.0f / 24389);
    const auto below = mul(sub(minimum(t, knee), knee), fill<F32<N>>(841.0f / 108));
    return add(cubeRoot(maximum(t, knee)), below);
}

// Weights of R, G and B in X / Xn, Y and Z / Zn.
constexpr float kXyzOfWhite[3][3] = {
    {0.433953f, 0.376219f, 0.189828f}, {0.212671f, 0.715160f, 0.072169f}, {0.017758f, 0.109477f, 0.872765f}};

template <int N>
struct Lab {
    F32<N> lightness, a, b;
};

// In 1/128 units, from samples of 0..top.
template <int N>
PXL_INLINE Lab<N> labOf(F32<N> red, F32<N> green, F32<N> blue, float top) {
    const auto weighted = [&](const float(&weights)[3]) PXL_BODY {
        return labCurve(add(add(mul(red, fill<F32<N>>(weights[0] / top)), mul(green, fill<F32<N>>(weights[1] / top))),
                            mul(blue, fill<F32<N>>(weights[2] / top))));
    };
    const auto x = weighted(kXyzOfWhite[0]), y = weighted(kXyzOfWhite[1]), z = weighted(kXyzOfWhite[2]);
    return {mul(y, fill<F32<N>>(116.0f * 128)), mul(sub(x, y), fill<F32<N>>(500.0f * 128)),
            mul(sub(y, z), fill<F32<N>>(200.0f * 128))};
}

// ---- homogeneity

// How far a neighbour is away in lightness, and squared in the plane of a and b.
template <int N>
struct LabDistance {
    I16<N> lightness;
    Halves<I32<N>> chroma;
};

template <int N>
PXL_INLINE LabDistance<N> smaller(LabDistance<N> a, LabDistance<N> b) {
    return {minimum(a.lightness, b.lightness),
            {minimum(a.chroma.low, b.chroma.low), minimum(a.chroma.high, b.chroma.high)}};
}
template <int N>
PXL_INLINE LabDistance<N> larger(LabDistance<N> a, LabDistance<N> b) {
    return {maximum(a.lightness, b.lightness),
            {maximum(a.chroma.low, b.chroma.low), maximum(a.chroma.high, b.chroma.high)}};
}

// -1 where a neighbour is beyond the tolerance, else 0.
template <int N>
PXL_INLINE I16<N> beyond(LabDistance<N> a, LabDistance<N> tolerance) {
    return bitOr(greater(a.lightness, tolerance.lightness), packSatI16(greater(a.chroma.low, tolerance.chroma.low),
                                                                       greater(a.chroma.high, tolerance.chroma.high)));
}

// Of 36 votes. A smaller majority is chance more often than not, and the mean of both directions has less noise.
constexpr int kMajority = 4;

// ---- medians

template <class V>
struct Sorted3 {
    V low, middle, high;
};
template <class V>
PXL_INLINE Sorted3<V> sorted(V a, V b, V c) {
    const auto low = minimum(a, b), high = maximum(a, b);
    return {minimum(low, c), maximum(low, minimum(high, c)), maximum(high, c)};
}

// Of nine numbers in three sorted columns.
template <class V>
PXL_INLINE V medianOf(const Sorted3<V>& a, const Sorted3<V>& b, const Sorted3<V>& c) {
    const auto lows = maximum(maximum(a.low, b.low), c.low), highs = minimum(minimum(a.high, b.high), c.high);
    return sorted(lows, sorted(a.middle, b.middle, c.middle).middle, highs).middle;
}

PXL_END_TARGET
