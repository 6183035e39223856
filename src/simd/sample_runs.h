// Runs of 16 * N samples of any type as four vectors of floats, and four vectors of integers as such a run. In memory
// order, unlike floatsOf: lane j of part k is sample 4 * N * k + j.
#pragma once

#include "simd/quads.h"

PXL_BEGIN_TARGET

// ---- one vector of floats from 4 * N samples

#define PXL_WIDEN_RUN(N, prefix, half, word)                           \
    PXL_INLINE F32<N> floatsAt(Blocks<N>, const Pxl8u* p) {            \
        return {prefix##cvtepi32_ps(prefix##cvtepu8_epi32(half(p)))};  \
    }                                                                  \
    PXL_INLINE F32<N> floatsAt(Blocks<N>, const Pxl16u* p) {           \
        return {prefix##cvtepi32_ps(prefix##cvtepu16_epi32(word(p)))}; \
    }                                                                  \
    PXL_INLINE F32<N> floatsAt(Blocks<N>, const Pxl16s* p) {           \
        return {prefix##cvtepi32_ps(prefix##cvtepi16_epi32(word(p)))}; \
    }
template <class E>
PXL_INLINE __m128i load32Bits(const E* p) {
    int bits;
    __builtin_memcpy(&bits, p, 4);
    return _mm_cvtsi32_si128(bits);
}
template <class E>
PXL_INLINE __m128i load64Bits(const E* p) {
    return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(p));
}
template <class E>
PXL_INLINE __m128i load128Bits(const E* p) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
}
PXL_WIDEN_RUN(1, _mm_, load32Bits, load64Bits)
#if PXL_BLOCKS == 2
PXL_WIDEN_RUN(2, _mm256_, load64Bits, load128Bits)
#elif PXL_BLOCKS == 4
PXL_INLINE __m256i load256Bits(const void* p) { return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p)); }
PXL_WIDEN_RUN(4, _mm512_, load128Bits, load256Bits)
#endif
template <int N>
PXL_INLINE F32<N> floatsAt(Blocks<N> all, const Pxl32f* p) {
    return load(all, p);
}

template <int N, class E>
PXL_INLINE Parts<F32<N>, 4> loadRun(Blocks<N> all, const E* p) {
    return {{floatsAt(all, p), floatsAt(all, p + 4 * N), floatsAt(all, p + 8 * N), floatsAt(all, p + 12 * N)}};
}

// ---- and back, saturated to the type of the samples

// Two consecutive vectors packed inside each block, in the order of their samples.
template <class V>
PXL_INLINE V inMemoryOrder(V packed) {
    return as<V>(sortedAfterPacking(as<U8<V::kN>>(packed)));
}

template <int N>
PXL_INLINE void storeRun(Blocks<N> all, Pxl8u* p, Parts<I32<N>, 4> a) {
    store(all, p, packSatQuads(a));
}
template <int N>
PXL_INLINE void storeRun(Blocks<N> all, Pxl16u* p, Parts<I32<N>, 4> a) {
    store(all, p, inMemoryOrder(packSatU16(a.at[0], a.at[1])));
    store(all, p + 8 * N, inMemoryOrder(packSatU16(a.at[2], a.at[3])));
}
template <int N>
PXL_INLINE void storeRun(Blocks<N> all, Pxl16s* p, Parts<I32<N>, 4> a) {
    store(all, p, inMemoryOrder(packSatI16(a.at[0], a.at[1])));
    store(all, p + 8 * N, inMemoryOrder(packSatI16(a.at[2], a.at[3])));
}

// The samples of four-channel pixels, of which the fourth ones keep the value that they have in memory.
template <int N>
PXL_INLINE void storeRunKeep4th(Blocks<N> all, Pxl8u* p, Parts<I32<N>, 4> a) {
    storeKeep4th(all, p, packSatQuads(a));
}
template <int N>
PXL_INLINE void storeRunKeep4th(Blocks<N> all, Pxl16u* p, Parts<I32<N>, 4> a) {
    storeKeep4th(all, p, inMemoryOrder(packSatU16(a.at[0], a.at[1])));
    storeKeep4th(all, p + 8 * N, inMemoryOrder(packSatU16(a.at[2], a.at[3])));
}
template <int N>
PXL_INLINE void storeRunKeep4th(Blocks<N> all, Pxl16s* p, Parts<I32<N>, 4> a) {
    storeKeep4th(all, p, inMemoryOrder(packSatI16(a.at[0], a.at[1])));
    storeKeep4th(all, p + 8 * N, inMemoryOrder(packSatI16(a.at[2], a.at[3])));
}

// ---- part of a run: through a buffer

template <class E>
PXL_INLINE Parts<F32<1>, 4> loadRun(Part part, const E* p) {
    E samples[16];
    takeFirst(samples, p, part.count);
    return loadRun(Blocks<1>{}, samples);
}

template <class E>
PXL_INLINE void storeRun(Part part, E* p, Parts<I32<1>, 4> a) {
    E samples[16];
    storeRun(Blocks<1>{}, samples, a);
    giveFirst(p, samples, part.count);
}

template <class E>
PXL_INLINE void storeRunKeep4th(Part part, E* p, Parts<I32<1>, 4> a) {
    E samples[16];
    storeRun(Blocks<1>{}, samples, a);
    for (int i = 0; i < part.count; i += 4) __builtin_memcpy(p + i, samples + i, 3 * sizeof(E));
}

PXL_END_TARGET
