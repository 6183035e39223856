// The first bytes of 16, loaded and stored in registers: for the parts of blocks that rows end with. A copy through
// memory would make the next load wait until it is complete.
#pragma once

#include "simd/registers.h"

PXL_BEGIN_TARGET

#if PXL_BLOCKS == 4
PXL_INLINE __mmask16 firstOf16(int count) {
    return static_cast<__mmask16>((1U << (count < 0 ? 0 : count > 16 ? 16 : count)) - 1);
}
// `count` bytes from p on and zeros behind them; none below 1, all from 16 on.
PXL_INLINE __m128i loadFirstBytes(const Pxl8u* p, int count) { return _mm_maskz_loadu_epi8(firstOf16(count), p); }
// The first `count` bytes to p.
PXL_INLINE void storeFirstBytes(Pxl8u* p, __m128i a, int count) { _mm_mask_storeu_epi8(p, firstOf16(count), a); }
#else
// Bits of a, moved by as many whole bytes; from 8 on none is left.
PXL_INLINE __m128i shiftedUp(__m128i a, int bytes) { return _mm_sll_epi64(a, _mm_cvtsi32_si128(8 * bytes)); }
PXL_INLINE __m128i shiftedDown(__m128i a, int bytes) { return _mm_srl_epi64(a, _mm_cvtsi32_si128(8 * bytes)); }

// Two pieces that overlap, the second of which ends with the bytes.
PXL_INLINE __m128i loadFirstBytes(const Pxl8u* p, int count) {
    if (count >= 16) return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
    if (count >= 8) {
        const __m128i last = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(p + count - 8));
        return _mm_unpacklo_epi64(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)), shiftedDown(last, 16 - count));
    }
    if (count >= 4) return _mm_or_si128(_mm_loadu_si32(p), shiftedUp(_mm_loadu_si32(p + count - 4), count - 4));
    if (count >= 2) return _mm_or_si128(_mm_loadu_si16(p), shiftedUp(_mm_loadu_si16(p + count - 2), count - 2));
    return count == 1 ? _mm_cvtsi32_si128(*p) : _mm_setzero_si128();
}
PXL_INLINE void storeFirstBytes(Pxl8u* p, __m128i a, int count) {
    if (count >= 16) return _mm_storeu_si128(reinterpret_cast<__m128i*>(p), a);
    if (count >= 8) {
        const __m128i upper = _mm_unpackhi_epi64(a, a);
        const __m128i last = _mm_or_si128(shiftedDown(a, count - 8), shiftedUp(upper, 16 - count));
        _mm_storel_epi64(reinterpret_cast<__m128i*>(p), a);
        _mm_storel_epi64(reinterpret_cast<__m128i*>(p + count - 8), last);
    } else if (count >= 4) {
        _mm_storeu_si32(p, a);
        _mm_storeu_si32(p + count - 4, shiftedDown(a, count - 4));
    } else if (count >= 2) {
        _mm_storeu_si16(p, a);
        _mm_storeu_si16(p + count - 2, shiftedDown(a, count - 2));
    } else if (count == 1) {
        *p = static_cast<Pxl8u>(_mm_cvtsi128_si32(a));
    }
}
#endif

// The first `count` samples into a buffer of whole blocks, zeros behind them ...
template <size_t kSize, class E>
PXL_INLINE void takeFirst(E (&buffer)[kSize], const E* p, int count) {
    static_assert(kSize * sizeof(E) % 16 == 0);
    const int bytes = count * static_cast<int>(sizeof(E));
    for (int i = 0; i < static_cast<int>(kSize * sizeof(E)); i += 16) {
        const __m128i block =
            bytes > i ? loadFirstBytes(reinterpret_cast<const Pxl8u*>(p) + i, bytes - i) : _mm_setzero_si128();
        _mm_storeu_si128(reinterpret_cast<__m128i*>(reinterpret_cast<Pxl8u*>(buffer) + i), block);
    }
}
// ... and out of one.
template <size_t kSize, class E>
PXL_INLINE void giveFirst(E* p, const E (&buffer)[kSize], int count) {
    const int bytes = count * static_cast<int>(sizeof(E));
    for (int i = 0; i < static_cast<int>(kSize * sizeof(E)) && i < bytes; i += 16) {
        const Pxl8u* block = reinterpret_cast<const Pxl8u*>(buffer) + i;
        storeFirstBytes(reinterpret_cast<Pxl8u*>(p) + i, _mm_loadu_si128(reinterpret_cast<const __m128i*>(block)),
                        bytes - i);
    }
}

PXL_END_TARGET
