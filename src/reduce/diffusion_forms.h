// Error diffusion on lanes of any width, in pull form: what a pixel takes over from its neighbours. e(dx, dy) are the
// errors of the pixels dx columns and dy rows away, the upper rows as far right as the weights reach. Every product and
// every sum is rounded, in the order that stands here; weights of 1 need no product.
#pragma once

#include "reduce/diffusion_kernels.h"
#include "reduce/quantise_forms.h"

PXL_BEGIN_TARGET

template <int N>
PXL_INLINE F32<N> times(F32<N> a, Pxl32f weight) {
    return mul(a, fill<F32<N>>(weight));
}

// Floyd and Steinberg, An adaptive algorithm for spatial grey scale (1976).
struct FloydSteinberg {
    static constexpr int kReach = 1;  // columns to either side, and rows up
    template <int N, class Errors>
    PXL_INLINE static F32<N> from(const Errors& e) {
        auto sum = add(times(e(-1, 0), 7), e(-1, -1));
        sum = add(sum, times(e(0, -1), 5));
        sum = add(sum, times(e(1, -1), 3));
        return times(sum, 0.0625f);
    }
};

// Jarvis, Judice and Ninke, A survey of techniques for the display of continuous tone pictures on bilevel displays
// (1976).
struct JarvisJudiceNinke {
    static constexpr int kReach = 2;
    template <int N, class Errors>
    PXL_INLINE static F32<N> from(const Errors& e) {
        auto sum = add(times(e(-1, 0), 7), times(e(-2, 0), 5));
        sum = add(add(sum, times(e(-2, -1), 3)), times(e(-1, -1), 5));
        sum = add(add(sum, times(e(0, -1), 7)), times(e(1, -1), 5));
        sum = add(add(sum, times(e(2, -1), 3)), e(-2, -2));
        sum = add(add(sum, times(e(-1, -2), 3)), times(e(0, -2), 5));
        sum = add(add(sum, times(e(1, -2), 3)), e(2, -2));
        return times(sum, 0.020833334f);
    }
};

// Stucki, MECCA - a multiple-error correction computation algorithm for bilevel image hardcopy reproduction (1981).
struct Stucki {
    static constexpr int kReach = 2;
    template <int N, class Errors>
    PXL_INLINE static F32<N> from(const Errors& e) {
        auto sum = add(times(e(-1, 0), 8), times(e(-2, 0), 4));
        sum = add(add(sum, times(e(-2, -1), 2)), times(e(-1, -1), 4));
        sum = add(add(sum, times(e(0, -1), 8)), times(e(1, -1), 4));
        sum = add(add(sum, times(e(2, -1), 2)), e(-2, -2));
        sum = add(add(sum, times(e(-1, -2), 2)), times(e(0, -2), 4));
        sum = add(add(sum, times(e(1, -2), 2)), e(2, -2));
        return times(sum, 0.023809524f);
    }
};

template <class V, class Error>
struct Diffused {
    V out;
    Error error;
};

// The output and the error of the work value v. Saturated pixels deliberately pass no error on; neither does a NaN,
// which becomes 0. kFloats: in units of 0..1, with the output rounded; integers are truncated.
template <bool kFloats, int N>
PXL_INLINE Diffused<I32<N>, F32<N>> diffused(F32<N> v, F32<N> threshold, const DiffusionUnits& units) {
    const auto top = fill<F32<N>>(units.top), bottom = fill<F32<N>>(units.bottom);
    const auto most = fill<I32<N>>(units.largest);
    const auto q = nearestLevel(v, units.levels, threshold);
    I32<N> out;
    if constexpr (kFloats) {
        out = truncateToInt(add(mul(q, fill<F32<N>>(static_cast<Pxl32f>(units.largest))), fill<F32<N>>(0.5f)));
    } else {
        out = truncateToInt(q);
    }
    const auto notBelow = atMost(bottom, v), above = atMost(top, v);
    out = choose(as<I32<N>>(above), where(notBelow, minimum(out, most)), most);
    const auto inside = bitAnd(as<I32<N>>(notBelow), as<I32<N>>(greater(top, v)));
    return {out, as<F32<N>>(where(as<F32<N>>(inside), as<I32<N>>(sub(v, q))))};
}

// Stucki's weights for two levels in fixed point: 8192 units are one of 8 bits, 1024 units of the sum one of the
// errors. A sample below 0 stands outside the image and has no error. The factor 23 (1024 / 42 is 24.4) and the offset
// 2047 (8 * 255 is 2040) are what they are, deliberately.
struct StuckiBilevel {
    static constexpr int kReach = 2;
    template <int N, class Errors>
    PXL_INLINE static I32<N> from(const Errors& e) {
        const auto twos = addWrap(addWrap(e(-2, -1), e(2, -1)), addWrap(e(-1, -2), e(1, -2)));
        const auto fours = addWrap(addWrap(e(-2, 0), e(-1, -1)), addWrap(e(1, -1), e(0, -2)));
        const auto eights = addWrap(e(-1, 0), e(0, -1)), ones = addWrap(e(-2, -2), e(2, -2));
        const auto sum = addWrap(addWrap(ones, shiftLeft<1>(twos)), addWrap(shiftLeft<2>(fours), shiftLeft<3>(eights)));
        return subWrap(addWrap(shiftLeft<4>(sum), shiftLeft<3>(sum)), sum);
    }
    template <int N>
    PXL_INLINE static Diffused<I32<N>, I32<N>> diffused(I32<N> s, I32<N> sum, I32<N> threshold) {
        const auto acc = addWrap(shiftLeft<13>(s), sum), bit = greater(acc, threshold);
        const auto error = subWrap(shiftRight<10>(acc), bitAnd(bit, fill<I32<N>>(2047)));
        return {bit, bitAnd(error, greater(s, fill<I32<N>>(-1)))};
    }
};

PXL_END_TARGET
