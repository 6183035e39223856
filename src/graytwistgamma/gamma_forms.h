// The transfer characteristic of ITU-R BT.709 and its inverse on a normalised float n: a linear segment near 0 and a
// power above it. The constants are single-precision numbers, and every operation rounds to single precision.
#pragma once

#include "simd/operations.h"

PXL_BEGIN_TARGET

// 1.099 n^0.45 - 0.099, below 0.018: 4.5 n. The polynomial is ((1 + f)^p - 1) / f, p the single-precision 0.45 (here)
// or 2.2222223 (below), to 0.1 units of 2^-24 of (1 + f)^p for f in -0.293..0.415; lowest power first.
struct GammaForward {
    static constexpr Pxl32f kThreshold = 0.018f, kSlope = 4.5f;
    static constexpr Pxl32f kPolynomial[] = {0.449999988f,  -0.123750404f,  0.0639388561f, -0.0407265052f,
                                             0.0288476162f, -0.0226115417f, 0.0193611123f, -0.0113247382f};
};

// (0.9099181 n + 0.09008189)^2.2222223, below 0.0812 (not 0.081, deliberately): 0.2222222 n.
struct GammaInverse {
    static constexpr Pxl32f kThreshold = 0.0812f, kSlope = 0.2222222f;
    static constexpr Pxl32f kPolynomial[] = {2.22222233f,    1.35802484f,    0.100592777f,  -0.0195536464f,
                                             0.00700145308f, -0.0033724301f, 0.00146698568f};
};

// The members of GammaOctaves (frame/gamma_tables.h) for the octave of each lane.
template <int N>
struct Octaves {
    F32<N> centre, scale, gain, value;
};

// The terms of a polynomial with every other coefficient from the kFirst-th on: c0 + c2 x^2 + c4 x^4 ... for even
// kFirst, c1 + c3 x^2 + ... for odd.
template <class Curve, int kFirst, int N>
PXL_INLINE F32<N> everyOtherTerm(F32<N> square) {
    constexpr int kCount = sizeof(Curve::kPolynomial) / sizeof(Pxl32f);
    constexpr int kLast = kCount - 1 - (kCount - 1 - kFirst) % 2;
    auto sum = fill<F32<N>>(Curve::kPolynomial[kLast]);
#pragma GCC unroll 8
    for (int i = kLast - 2; i >= 0; i -= 2) sum = add(mul(sum, square), fill<F32<N>>(Curve::kPolynomial[i]));
    return sum;
}

// n' of a curve. Where n is a number of at least the threshold, its octave must be the right one.
template <class Curve, int N>
PXL_INLINE F32<N> gamma(F32<N> n, Octaves<N> octave) {
    const auto f = mul(sub(n, octave.centre), octave.scale), square = mul(f, f);
    // two short chains instead of a long one
    const auto sum = add(everyOtherTerm<Curve, 0>(square), mul(f, everyOtherTerm<Curve, 1>(square)));
    const auto power = add(octave.value, mul(sum, mul(octave.gain, f)));
    const auto linear = mul(n, fill<F32<N>>(Curve::kSlope));
    // as integers, floats of either sign compare with a positive one as they do as floats
    const auto below = greater(as<I32<N>>(fill<F32<N>>(Curve::kThreshold)), as<I32<N>>(n));
    return as<F32<N>>(choose(below, as<I32<N>>(power), as<I32<N>>(linear)));
}

PXL_END_TARGET
