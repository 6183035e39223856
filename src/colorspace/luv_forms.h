// RGB and CIE 1976 L*u*v* on lanes. RGB is linear light with the primaries of ITU-R BT.709 and white D65; a form of
// integer samples decodes its codes first and encodes them last.
#pragma once

#include "colorspace/xyz_forms.h"
#include "simd/cube_root.h"

PXL_BEGIN_TARGET

// The chromaticity of white.
constexpr Pxl32f kWhiteU = 0.197839f, kWhiteV = 0.468342f;

// L* of a luminance.
constexpr Pxl32f kLinearBelow = 0.008856f, kLinearSlope = 903.3f;

// ---- RGB in 0..1 to L*, u*, v*

// The terms of the cube root's series in bytes: the last coefficient belongs to the next power, deliberately.
struct LuvByteSeries {
    static constexpr Pxl32f kTerms[] = {1, 0.33333334f, -0.11111111f, 0.061728396f, -0.030178327f};
};

// The processor's estimate and one Newton step.
template <int N>
PXL_INLINE F32<N> reciprocal(F32<N> a) {
    const auto r = reciprocalEstimate(a);
    return sub(add(r, r), mul(a, mul(r, r)));
}

template <class Series, int N>
PXL_INLINE F32<N> lightness(F32<N> y) {
    const auto root = sub(mul(cubeRoot<Series>(y), fill<F32<N>>(116.0f)), fill<F32<N>>(16.0f));
    return choose(greater(y, fill<F32<N>>(kLinearBelow)), mul(y, fill<F32<N>>(kLinearSlope)), root);
}

template <class Series, int N>
PXL_INLINE Channels3<F32<N>> luvOf(Channels3<F32<N>> rgb) {
    const auto value = [](float x) { return fill<F32<N>>(x); };
    const auto xyz = product(kRgbToXyz, rgb);
    const auto x = xyz.c0, y = xyz.c1, z = xyz.c2;
    const auto l = lightness<Series>(y), l13 = mul(l, value(13));
    // black is known by its Z; without it the chromaticity counts as 0
    const auto black = equal(z, value(0));
    const auto r = reciprocal(add(add(mul(y, value(15)), mul(z, value(3))), x));
    const auto u = zeroWhere(black, mul(mul(x, value(4)), r));
    const auto v = zeroWhere(black, mul(mul(y, value(9)), r));
    return {l, mul(l13, sub(u, value(kWhiteU))), mul(l13, sub(v, value(kWhiteV)))};
}

// ---- L*, u*, v* to RGB

// With t = 1 / (13 L) and ranges of 0..1: Y, the Y / v' that X and Z follow from, and the factor of X.
template <int N>
struct LuvTerms {
    F32<N> y;
    F32<N> denominator;  // v' = v t + v'n
    F32<N> factorX;      // 2.25 u' = 2.25 u t + 2.25 u'n
};

template <int N>
PXL_INLINE F32<N> luminance(F32<N> l) {
    const auto linear = mul(l, fill<F32<N>>(0.001107052f));
    const auto f = add(mul(l, fill<F32<N>>(0.00862069f)), fill<F32<N>>(0.13793103f));
    const auto threshold = fill<F32<N>>(7.9996247f);  // 903.3 * 0.008856
    return choose(greater(threshold, l), mul(mul(f, f), f), linear);
}

// Without a guard for codes that never make v' vanish.
template <bool kGuarded, int N>
PXL_INLINE LuvTerms<N> luvTerms(Channels3<F32<N>> luv) {
    const auto value = [](float x) { return fill<F32<N>>(x); };
    const auto t = div(value(1), mul(luv.c0, value(13)));
    const auto vt = mul(luv.c2, t);
    auto denominator = add(vt, value(kWhiteV));
    if constexpr (kGuarded) {
        // not 0.468342: two digits are exchanged, deliberately
        const auto vanishes = greater(value(1.1920929e-7f), magnitude(denominator));
        denominator = choose(vanishes, denominator, add(vt, value(0.468432f)));
    }
    return {luminance(luv.c0), denominator, add(mul(mul(luv.c1, value(2.25f)), t), value(0.44513777f))};
}

// What is darker than 9e-5 is black, whatever its colour.
template <int N>
PXL_INLINE Channels3<F32<N>> blackWhereDark(F32<N> l, Channels3<F32<N>> rgb) {
    const auto dark = greater(fill<F32<N>>(9e-5f), l);
    return {zeroWhere(dark, rgb.c0), zeroWhere(dark, rgb.c1), zeroWhere(dark, rgb.c2)};
}

template <int N>
PXL_INLINE Channels3<F32<N>> xyzOfTerms(LuvTerms<N> terms) {
    const auto value = [](float x) { return fill<F32<N>>(x); };
    const auto q = div(terms.y, terms.denominator), x = mul(terms.factorX, q);
    const auto z = add(mul(x, value(-0.33333334f)), add(mul(terms.y, value(-5)), mul(q, value(3))));
    return {x, terms.y, z};
}

template <int N>
PXL_INLINE Channels3<F32<N>> rgbOfLuv(Channels3<F32<N>> luv) {
    const auto rgb = product(kXyzToRgb, xyzOfTerms(luvTerms<true>(luv)));
    return blackWhereDark(luv.c0, Channels3{clamp01(rgb.c0), clamp01(rgb.c1), clamp01(rgb.c2)});
}

// ---- the same for codes: floats of the codes in, integers out, which are still to be saturated

struct EncodeLuv8u {
    template <int N>
    PXL_INLINE Channels3<I32<N>> operator()(Channels3<F32<N>> rgb) const {
        const auto value = [](float x) { return fill<F32<N>>(x); };
        const auto scaled = [&](F32<N> a) { return mul(a, value(0.003921569f)); };
        const auto luv = luvOf<LuvByteSeries>(Channels3{scaled(rgb.c0), scaled(rgb.c1), scaled(rgb.c2)});
        return {toInt(mul(luv.c0, value(2.55f))), toInt(mul(add(luv.c1, value(134)), value(0.720339f))),
                toInt(mul(add(luv.c2, value(140)), value(0.97328246f)))};
    }
};

// v* alone gets one half and is truncated, the others are rounded.
struct EncodeLuv16u {
    template <int N>
    PXL_INLINE Channels3<I32<N>> operator()(Channels3<F32<N>> rgb) const {
        const auto value = [](float x) { return fill<F32<N>>(x); };
        const auto scaled = [&](F32<N> a) { return mul(a, value(1.5259022e-5f)); };
        const auto luv = luvOf<CubeRootSeries>(Channels3{scaled(rgb.c0), scaled(rgb.c1), scaled(rgb.c2)});
        return {toInt(mul(luv.c0, value(655.35f))), toInt(mul(add(luv.c1, value(134)), value(185.12712f))),
                truncateToInt(add(mul(add(luv.c2, value(140)), value(250.13359f)), value(0.5f)))};
    }
};

// Of no pair of bytes is v' nearer to 0 than 4.9e-5: there is nothing to guard against.
template <int N>
PXL_INLINE Channels3<F32<N>> luvOfBytes(Channels3<F32<N>> codes) {
    const auto value = [](float x) { return fill<F32<N>>(x); };
    return {mul(codes.c0, value(0.3921569f)), sub(mul(codes.c1, value(1.3882353f)), value(134)),
            sub(mul(codes.c2, value(1.027451f)), value(140))};
}

template <int N>
PXL_INLINE Channels3<I32<N>> roundedHalfUp(Channels3<F32<N>> rgb) {
    const auto half = fill<F32<N>>(0.5f);
    return {truncateToInt(add(rgb.c0, half)), truncateToInt(add(rgb.c1, half)), truncateToInt(add(rgb.c2, half))};
}

constexpr Rows3<Pxl32f> timesByteRange(Rows3<Pxl32f> matrix, bool c0, bool c1, bool c2) {
    for (auto& row : matrix.row) {
        if (c0) row[0] *= 255.0f;
        if (c1) row[1] *= 255.0f;
        if (c2) row[2] *= 255.0f;
    }
    return matrix;
}

// In groups of four pixels the matrix has the range of the bytes ...
struct DecodeLuv8u {
    static constexpr auto kMatrix = timesByteRange(kXyzToRgb, true, true, true);
    template <int N>
    PXL_INLINE Channels3<I32<N>> operator()(Channels3<F32<N>> codes) const {
        const auto luv = luvOfBytes(codes);
        return roundedHalfUp(blackWhereDark(luv.c0, product(kMatrix, xyzOfTerms(luvTerms<false>(luv)))));
    }
};

// ... and in the pixels left over X and Z have it, and the factors of Y.
struct DecodeLuv8uTail {
    static constexpr auto kMatrix = timesByteRange(kXyzToRgb, false, true, false);
    template <int N>
    PXL_INLINE Channels3<I32<N>> operator()(Channels3<F32<N>> codes) const {
        const auto value = [](float x) { return fill<F32<N>>(x); };
        const auto luv = luvOfBytes(codes);
        const auto terms = luvTerms<false>(luv);
        const auto q = div(mul(terms.y, value(255)), terms.denominator), x = mul(terms.factorX, q);
        const auto z = add(mul(x, value(-0.33333334f)), add(mul(terms.y, value(-1275)), mul(q, value(3))));
        return roundedHalfUp(blackWhereDark(luv.c0, product(kMatrix, Channels3{x, terms.y, z})));
    }
};

// The floats of the decoded codes, rounded to the nearest code.
struct DecodeLuv16u {
    template <int N>
    PXL_INLINE Channels3<I32<N>> operator()(Channels3<F32<N>> codes) const {
        const auto value = [](float x) { return fill<F32<N>>(x); };
        const auto rgb = rgbOfLuv(Channels3{mul(codes.c0, value(0.0015259022f)),
                                            sub(mul(codes.c1, value(354.0f / 65535)), value(134)),
                                            sub(mul(codes.c2, value(262.0f / 65535)), value(140))});
        const auto code = [&](F32<N> a) { return toInt(mul(a, value(65535))); };
        return {code(rgb.c0), code(rgb.c1), code(rgb.c2)};
    }
};

PXL_END_TARGET
