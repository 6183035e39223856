// Two samples of twelve bits as three bytes, most significant bits first, and back: on lanes of any width.
#pragma once

#include "simd/twelve_bytes.h"

PXL_BEGIN_TARGET

// Bytes in the stream's order: of the 24-bit numbers that pack12() leaves in 32-bit lanes, and of the 16-bit lanes that
// unpack12() takes, which hold the two bytes that a sample has a part in, the first one above the other.
alignas(16) constexpr Bytes16 kPack12Order = {{2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12}};
alignas(16) constexpr Bytes16 kUnpack12Order = {{1, 0, 2, 1, 4, 3, 5, 4, 7, 6, 8, 7, 10, 9, 11, 10}};

// 4096 a + b of each pair of samples; their upper four bits do not count.
template <int N>
PXL_INLINE U8<N> pack12(U16<N> a) {
    return as<U8<N>>(pairSums(bitAnd(as<I16<N>>(a), fill<I16<N>>(0x0FFF)), fillPairs<N>(4096, 1)));
}

template <int N>
PXL_INLINE U16<N> unpack12(U8<N> a) {
    const auto first = shiftRight<4>(as<U16<N>>(a));
    const auto second = bitAnd(as<U16<N>>(a), fill<U16<N>>(0x0FFF));
    return as<U16<N>>(blend16<0xAA>(as<U8<N>>(first), as<U8<N>>(second)));
}

PXL_END_TARGET
