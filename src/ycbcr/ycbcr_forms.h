// What the conversions between RGB and YCbCr of all samplings share: coefficients of more than one of them, and
// products in 16-bit lanes.
#pragma once

#include "simd/operations.h"

PXL_BEGIN_TARGET

template <class V>
struct Rgb {
    V r, g, b;
};

// ---- decoders with 32-bit arithmetic

// Q16 coefficients of a reference form, for Y - 16, Cr - 128 and Cb - 128, and what is added before the shift.
struct DecoderQ16 {
    int y, crToR, cbToG, crToG, cbToB, rounding;
};
// ITU-R BT.601
constexpr DecoderQ16 kDecode601b = {76284, 104595, -25690, -53281, 132186, 32768};

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
    if constexpr (kWhole == -1) return subWrap(sum, x);
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

// ---- decoders with 16-bit arithmetic

// Coefficients of a group form in Q12 (shift 3) or Q13 (shift 4), on samples times 128; the products keep 16 bits.
struct DecoderLanes {
    int y, crToR, cbToG, crToG, cbToB, rounding, shift;
};
constexpr DecoderLanes kDecodeQ12 = {4769, 6537, 1605, 3330, 8263, 4, 3};
constexpr DecoderLanes kDecodeQ13 = {9535, 13074, 3211, 6660, 16523, 8, 4};
constexpr DecoderLanes kDecode709 = {9535, 14688, 1745, 4375, 17326, 8, 4};  // ITU-R BT.709

// (128 * x * factor) >> 16 of x64 = 64 * x. Twice a factor may need 17 bits; the part that 16 lack is x64 itself.
template <int kFactor, int N>
PXL_INLINE I16<N> term64(I16<N> x64) {
    if constexpr (2 * kFactor < 32768) return mulHigh(x64, fill<I16<N>>(2 * kFactor));
    return addWrap(mulHigh(x64, fill<I16<N>>(2 * kFactor - 65536)), x64);
}

PXL_END_TARGET
