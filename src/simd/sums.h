// Sums and maxima over runs of floats, the same on every target.
#pragma once

#include "simd/memory.h"

PXL_BEGIN_TARGET

// 2 * N floats, widened.
PXL_INLINE F64<1> loadDoubles(Blocks<1>, const Pxl32f* p) {
    return {_mm_cvtps_pd(_mm_castsi128_ps(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p))))};
}
#if PXL_BLOCKS == 2
PXL_INLINE F64<2> loadDoubles(Blocks<2>, const Pxl32f* p) { return {_mm256_cvtps_pd(_mm_loadu_ps(p))}; }
#elif PXL_BLOCKS == 4
PXL_INLINE F64<4> loadDoubles(Blocks<4>, const Pxl32f* p) { return {_mm512_cvtps_pd(_mm256_loadu_ps(p))}; }
#endif

// Adds sample i to sums[i mod 16].
PXL_INLINE void addToSums(const Pxl32f* p, Index count, Pxl64f (&sums)[16]) {
    constexpr Blocks<kBlocks> kAll;
    constexpr int kLanes = F64<kBlocks>::kSize, kVectors = 16 / kLanes;
    F64<kBlocks> sum[kVectors];
#pragma GCC unroll 8
    for (int k = 0; k < kVectors; ++k) sum[k] = load(kAll, sums + kLanes * k);
    Index i = 0;
    for (; i + 16 <= count; i += 16) {
#pragma GCC unroll 8
        for (int k = 0; k < kVectors; ++k) sum[k] = add(sum[k], loadDoubles(kAll, p + i + kLanes * k));
    }
#pragma GCC unroll 8
    for (int k = 0; k < kVectors; ++k) store(kAll, sums + kLanes * k, sum[k]);
    for (; i < count; ++i) sums[i % 16] += Pxl64f{p[i]};
}

// The largest of the samples and `largest`, which is no NaN; samples that are count for nothing.
PXL_INLINE Pxl32f maximumOf(const Pxl32f* p, Index count, Pxl32f largest) {
    constexpr int kLanes = F32<kBlocks>::kSize;
    constexpr Blocks<kBlocks> kAll;
    F32<kBlocks> found[4];
#pragma GCC unroll 4
    for (int k = 0; k < 4; ++k) found[k] = fill<F32<kBlocks>>(largest);
    Index i = 0;
    for (; i + 4 * kLanes <= count; i += 4 * kLanes) {
#pragma GCC unroll 4
        for (int k = 0; k < 4; ++k) found[k] = maximum(load(kAll, p + i + kLanes * k), found[k]);
    }
    for (; i + kLanes <= count; i += kLanes) found[0] = maximum(load(kAll, p + i), found[0]);
    Pxl32f lanes[kLanes];
    store(kAll, lanes, maximum(maximum(found[0], found[1]), maximum(found[2], found[3])));
    for (int k = 0; k < kLanes; ++k) largest = lanes[k] > largest ? lanes[k] : largest;
    for (; i < count; ++i) largest = p[i] > largest ? p[i] : largest;
    return largest;
}

PXL_END_TARGET
