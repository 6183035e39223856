// Weighted sums in fixed point, on 16-bit lanes.
#pragma once

#include "simd/operations.h"

PXL_BEGIN_TARGET

// A factor of 16 bits as 256 * upper + lower with signed bytes.
constexpr int upperByte(int factor) { return (factor + 128) >> 8; }
constexpr int lowerByte(int factor) { return factor - 256 * upperByte(factor); }

// A Q16 factor as whole + rest / 65536, so that rest fits 16 bits: the whole part is taken outside the shift, exactly.
struct SplitFactor {
    int whole, rest;
};
constexpr SplitFactor split(int factor) {
    const int whole = (factor + 32768) >> 16;
    return {whole, factor - whole * 65536};
}

template <int kWhole, int N>
PXL_INLINE I16<N> plusTimes(I16<N> sum, I16<N> x) {
    if constexpr (kWhole == 0) return sum;
    if constexpr (kWhole == 1) return addWrap(sum, x);
    if constexpr (kWhole == 2) return addWrap(sum, addWrap(x, x));
    if constexpr (kWhole == 3) return addWrap(addWrap(sum, x), addWrap(x, x));
    if constexpr (kWhole == -1) return subWrap(sum, x);
    if constexpr (kWhole == -2) return subWrap(sum, addWrap(x, x));
}

// (a * x + b * y + offset) >> 16, exact
template <int kA, int kB, int N>
PXL_INLINE I16<N> sumQ16(I16<N> x, I16<N> y, int offset) {
    constexpr SplitFactor a = split(kA), b = split(kB);
    const auto factors = fillPairs<N>(a.rest, b.rest);
    const auto constant = fill<I32<N>>(offset);
    const auto fraction = packSatI16(shiftRight<16>(addWrap(pairSums(interleaveLow(x, y), factors), constant)),
                                     shiftRight<16>(addWrap(pairSums(interleaveHigh(x, y), factors), constant)));
    return plusTimes<b.whole>(plusTimes<a.whole>(fraction, x), y);
}

// (a * x + b * y + c * z + offset) >> 16, exact
template <int kA, int kB, int kC, int N>
PXL_INLINE I16<N> sumQ16(I16<N> x, I16<N> y, I16<N> z, int offset) {
    constexpr SplitFactor a = split(kA), b = split(kB), c = split(kC);
    const auto factors = fillPairs<N>(a.rest, b.rest), third = fillPairs<N>(c.rest, 0);
    const auto constant = fill<I32<N>>(offset);
    const auto low = addWrap(pairSums(interleaveLow(x, y), factors), pairSums(interleaveLow(z, z), third));
    const auto high = addWrap(pairSums(interleaveHigh(x, y), factors), pairSums(interleaveHigh(z, z), third));
    const auto fraction = packSatI16(shiftRight<16>(addWrap(low, constant)), shiftRight<16>(addWrap(high, constant)));
    return plusTimes<c.whole>(plusTimes<b.whole>(plusTimes<a.whole>(fraction, x), y), z);
}

PXL_END_TARGET
