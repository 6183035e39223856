// RGB and CIE 1976 L*a*b* on lanes. RGB is linear light with the primaries of ITU-R BT.709 and white D65.
#pragma once

#include "colorspace/xyz_forms.h"
#include "simd/cube_root.h"

PXL_BEGIN_TARGET

// ---- RGB to L*, a*, b*; V of floats or doubles, with the same single-precision constants

// From X, Y and Z relative to white. L* = 903.3 y below the threshold.
template <class Series, class V>
PXL_INLINE Channels3<V> labOfRelative(Channels3<V> xyz) {
    const auto value = [](Pxl32f x) { return fill<V>(x); };
    const auto above = [&](V s) { return greater(s, value(0.008856f)); };
    const auto f = [&](V s) {
        return choose(above(s), add(mul(s, value(7.787f)), value(0.13793103f)), cubeRoot<Series>(s));
    };
    const auto fx = f(xyz.c0), fy = f(xyz.c1), fz = f(xyz.c2);
    const auto l = choose(above(xyz.c1), mul(xyz.c1, value(903.3f)), sub(mul(fy, value(116)), value(16)));
    return {l, mul(sub(fx, fy), value(500)), mul(sub(fy, fz), value(200))};
}

template <class V>
PXL_INLINE Channels3<V> labOf(Channels3<V> rgb) {
    const auto xyz = product(kRgbToXyz, rgb);
    return labOfRelative<CubeRootSeries>(
        Channels3{mul(xyz.c0, fill<V>(1.0521265f)), xyz.c1, mul(xyz.c2, fill<V>(0.9184812f))});
}

// From bytes as floats; the range of the bytes is in the white point.
template <class Series, int N>
PXL_INLINE Channels3<F32<N>> labOfBytes(Channels3<F32<N>> rgb) {
    const auto xyz = product(kRgbToXyz, rgb);
    return labOfRelative<Series>(Channels3{mul(xyz.c0, fill<F32<N>>(0.0041259914f)),
                                           mul(xyz.c1, fill<F32<N>>(0.003921569f)),
                                           mul(xyz.c2, fill<F32<N>>(0.0036018905f))});
}

// ---- L*, a*, b* to RGB: cubes throughout, without the linear segment of the other direction, deliberately

// kRange: of the RGB values, 1 or 255.
template <int kRange, class V>
PXL_INLINE Channels3<V> rgbOfLab(Channels3<V> lab) {
    constexpr Pxl32f kX = 0.950456f * kRange, kY = kRange, kZ = 1.0887539f * kRange;
    const auto value = [](Pxl32f x) { return fill<V>(x); };
    const auto fy = mul(add(lab.c0, value(16)), value(0.00862069f));
    const auto fx = add(mul(lab.c1, value(0.002f)), fy), fz = add(mul(lab.c2, value(-0.005f)), fy);
    const auto cube = [](V a) { return mul(mul(a, a), a); };
    const auto y = kRange == 1 ? cube(fy) : mul(cube(fy), value(kY));
    return product(kXyzToRgb, Channels3{mul(cube(fx), value(kX)), y, mul(cube(fz), value(kZ))});
}

// ---- the same for codes: floats of the codes in, integers out, which are still to be saturated

template <int N>
PXL_INLINE Channels3<I32<N>> rounded(Channels3<F32<N>> a) {
    return {toInt(a.c0), toInt(a.c1), toInt(a.c2)};
}

struct EncodeLab8u {
    template <int N>
    PXL_INLINE Channels3<I32<N>> operator()(Channels3<F32<N>> rgb) const {
        const auto value = [](Pxl32f x) { return fill<F32<N>>(x); };
        const auto lab = labOfBytes<ShortCubeRootSeries>(rgb);
        return rounded(Channels3{mul(lab.c0, value(2.55f)), add(lab.c1, value(128)), add(lab.c2, value(128))});
    }
};

struct EncodeLab8u16u {
    template <int N>
    PXL_INLINE Channels3<I32<N>> operator()(Channels3<F32<N>> rgb) const {
        const auto value = [](Pxl32f x) { return fill<F32<N>>(x); };
        const auto lab = labOfBytes<CubeRootSeries>(rgb);
        return rounded(Channels3{mul(lab.c0, value(655.35f)), mul(add(lab.c1, value(128)), value(255)),
                                 mul(add(lab.c2, value(128)), value(255))});
    }
};

struct DecodeLab8u {
    template <int N>
    PXL_INLINE Channels3<I32<N>> operator()(Channels3<F32<N>> codes) const {
        const auto value = [](Pxl32f x) { return fill<F32<N>>(x); };
        return rounded(rgbOfLab<255>(
            Channels3{mul(codes.c0, value(0.39215687f)), sub(codes.c1, value(128)), sub(codes.c2, value(128))}));
    }
};

struct DecodeLab16u8u {
    template <int N>
    PXL_INLINE Channels3<I32<N>> operator()(Channels3<F32<N>> codes) const {
        const auto value = [](Pxl32f x) { return fill<F32<N>>(x); };
        const auto decoded = [&](F32<N> c) { return sub(mul(c, value(0.003921569f)), value(128)); };
        return rounded(
            rgbOfLab<255>(Channels3{mul(codes.c0, value(0.0015259022f)), decoded(codes.c1), decoded(codes.c2)}));
    }
};

PXL_END_TARGET
