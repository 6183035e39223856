// What the conversions between RGB and YCbCr of all samplings share: coefficients of more than one of them, and
// products in 16-bit lanes.
#pragma once

#include "simd/fixed_point.h"

PXL_BEGIN_TARGET

template <class V>
struct Rgb {
    V r, g, b;
};

alignas(16) constexpr Bytes16 kNeighbourLane = {{2, 3, 0, 1, 6, 7, 4, 5, 10, 11, 8, 9, 14, 15, 12, 13}};

// Each lane plus its neighbour in the pair of lanes.
template <int N>
PXL_INLINE I16<N> withNeighbour(I16<N> a) {
    return addWrap(a, as<I16<N>>(pick(as<U8<N>>(a), pattern<N>(kNeighbourLane))));
}

// ---- decoders with 32-bit arithmetic

// Q16 coefficients of a reference form, for Y - 16, Cr - 128 and Cb - 128, and what is added before the shift.
struct DecoderQ16 {
    int y, crToR, cbToG, crToG, cbToB, rounding;
};
// ITU-R BT.601. The two sets differ in the last digits: deliberate.
constexpr DecoderQ16 kDecode601 = {76282, 104593, -25689, -53279, 132184, 32768};
constexpr DecoderQ16 kDecode601b = {76284, 104595, -25690, -53281, 132186, 32768};

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
