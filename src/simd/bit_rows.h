// Packed bits, most significant first, from comparisons of bytes.
#pragma once

#include "simd/memory.h"

PXL_BEGIN_TARGET

alignas(16) constexpr Bytes16 kFromTheLast = {{7, 6, 5, 4, 3, 2, 1, 0, 15, 14, 13, 12, 11, 10, 9, 8}};

// 2 * N bytes: bit 7 of the first is whether byte 0 of a is above that of b.
#if PXL_BLOCKS == 4
PXL_INLINE void storeBits(Blocks<4>, Pxl8u* p, U8<4> a, U8<4> b) {
    const auto order = pattern<4>(kFromTheLast);
    const __mmask64 bits = _mm512_cmpgt_epu8_mask(pick(a, order).v, b.v);
    __builtin_memcpy(p, &bits, 8);
}
#endif
template <int N>
PXL_INLINE void storeBits(Blocks<N>, Pxl8u* p, U8<N> a, U8<N> b) {
    // the instruction takes the sign of each byte, byte 0 to bit 0
    const auto notAbove = pick(equal(subSat(a, b), fill<U8<N>>(0)), pattern<N>(kFromTheLast));
#if PXL_BLOCKS == 2
    if constexpr (N == 2) {
        const unsigned bits = ~static_cast<unsigned>(_mm256_movemask_epi8(notAbove.v));
        __builtin_memcpy(p, &bits, 4);
    }
#endif
    if constexpr (N == 1) {
        const auto bits = static_cast<Pxl16u>(~_mm_movemask_epi8(notAbove.v));
        __builtin_memcpy(p, &bits, 2);
    }
}

PXL_END_TARGET
