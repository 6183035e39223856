// Part of four blocks of six pixels, of which each block holds four 32-bit words in memory: whatever is left of a row
// in one step.
#pragma once

#include "simd/memory.h"

PXL_BEGIN_TARGET

#if PXL_BLOCKS == 4
// The first words of 16, zeros behind them.
PXL_INLINE U8<4> loadFirstWords(const Pxl8u* p, int words) {
    return {_mm512_maskz_loadu_epi32(static_cast<__mmask16>((1U << words) - 1), p)};
}
// As storeSixOfEight(), the first pixels of 24.
PXL_INLINE void storeSixOfEight(Pxl16u* p, U16<4> a, int pixels) {
    const __m512i order = _mm512_setr_epi32(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, 0, 0, 0, 0);
    const auto first = static_cast<__mmask32>((uint32_t{1} << pixels) - 1);
    _mm512_mask_storeu_epi16(p, first, _mm512_permutexvar_epi32(order, a.v));
}
#endif

PXL_END_TARGET
