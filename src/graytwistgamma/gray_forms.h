// The weighted sum of three channels, on lanes of any width.
#pragma once

#include "graytwistgamma/gray_kernels.h"
#include "simd/quads.h"

PXL_BEGIN_TARGET

// Floats: each product and each sum rounded, in this order.
template <class V, class T>
PXL_INLINE V grayOf(V c0, V c1, V c2, GrayWeights<T> w) {
    return add(add(mul(c0, fill<V>(w.of[0])), mul(c1, fill<V>(w.of[1]))), mul(c2, fill<V>(w.of[2])));
}

// 16 bits: rounded by the current mode and cut to 16 bits without saturation. Deliberate. A sum that no 32-bit integer
// holds leaves 0.
template <int N>
PXL_INLINE U16<N> grayOf(U16<N> c0, U16<N> c1, U16<N> c2, GrayWeights<Pxl32f> w) {
    const auto f0 = floatsOf(c0), f1 = floatsOf(c1), f2 = floatsOf(c2);
    return packWrapU16(toInt(grayOf(f0.at[0], f1.at[0], f2.at[0], w)), toInt(grayOf(f0.at[1], f1.at[1], f2.at[1], w)));
}

// Signed samples are those of the unsigned form minus 32768.
template <int N>
PXL_INLINE I16<N> grayOf(I16<N> c0, I16<N> c1, I16<N> c2, GrayWeights<Pxl32f> w) {
    const auto sign = fill<I16<N>>(0x8000);
    const auto shifted = [&](I16<N> c) { return as<U16<N>>(bitXor(c, sign)); };
    return bitXor(as<I16<N>>(grayOf(shifted(c0), shifted(c1), shifted(c2), w)), sign);
}

// (c2 * w2 + (c1 * w1 + c0 * w0) + 16384) >> 15 for pixels in 32-bit lanes, exact: at most 1530, before saturation.
// The products take signed 16 bits, so a weight's uppermost bit, which is worth 1.0, goes beside the shift; kWholes
// says that a weight has it.
template <bool kWholes, int N>
PXL_INLINE I32<N> grayOf(U8<N> px, GrayWeightsQ15 w) {
    const auto c02 = bitAnd(as<I16<N>>(px), fill<I16<N>>(0xFF));
    const auto c1x = as<I16<N>>(shiftRight<8>(as<U16<N>>(px)));
    const auto sum = [&](int w0, int w1, int w2) {
        return addWrap(pairSums(c02, fillPairs<N>(w0, w2)), pairSums(c1x, fillPairs<N>(w1, 0)));
    };
    const auto parts = sum(w.of[0] & 0x7FFF, w.of[1] & 0x7FFF, w.of[2] & 0x7FFF);
    const auto gray = shiftRight<15>(addWrap(parts, fill<I32<N>>(16384)));
    if constexpr (!kWholes) return gray;
    return addWrap(gray, sum(w.of[0] >> 15, w.of[1] >> 15, w.of[2] >> 15));
}

// The same where the weights are small enough: each as 256 * upper + lower, two signed bytes.
struct SplitWeights {
    int upper[3], lower[3];
    int sum;

    explicit SplitWeights(GrayWeightsQ15 weights) : sum(0) {
        for (int i = 0; i < 3; ++i) {
            upper[i] = (weights.of[i] + 128) >> 8;
            lower[i] = weights.of[i] - 256 * upper[i];
            sum += weights.of[i];
        }
    }
    // The upper bytes are signed ones and no gray is above 255.
    bool areBytes() const { return upper[0] < 128 && upper[1] < 128 && upper[2] < 128 && 255 * sum + 16384 < 1 << 23; }
    // All sums below fit into signed 16 bits, for any pixel; those of the upper bytes then do as well.
    bool haveShortSums() const {
        int above = 0, below = 0;
        for (const int part : lower) (part > 0 ? above : below) += part;
        return above <= 128 && below >= -128;
    }
};

#if PXL_BLOCKS == 4
// 32768 times the gray.
template <int N>
PXL_INLINE I32<N> gray32768Of(U8<N> px, const SplitWeights& w) {
    const auto factors = [](const int(&of)[3]) { return fillQuads<N>(of[0], of[1], of[2], 0); };
    const auto upper = addQuadProducts(fill<I32<N>>(16384 / 256), px, factors(w.upper));
    return addQuadProducts(shiftLeft<8>(upper), px, factors(w.lower));
}
#else
// floor((256 * upper + lower + 16384) / 32768) = floor((upper + floor(lower / 256) + 64) / 128)
template <int N>
PXL_INLINE I16<N> grayOf(U8<N> c01, U8<N> c2x, const SplitWeights& w) {
    const auto sum = [&](const int(&of)[3]) {
        return addWrap(pairSumsSat(c01, fillQuads<N>(of[0], of[1], of[0], of[1])),
                       pairSumsSat(c2x, fillQuads<N>(of[2], 0, of[2], 0)));
    };
    return mulRound15(addWrap(sum(w.upper), shiftRight<8>(sum(w.lower))), fill<I16<N>>(32768 / 128));
}
#endif

PXL_END_TARGET
