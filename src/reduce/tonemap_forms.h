// Tone mapping on lanes of any width: float samples to integers, of which the lower 8 bits or the saturated value are
// the output.
#pragma once

#include "simd/operations.h"

PXL_BEGIN_TARGET

// Samples relative to the image's maximum m, as trunc(s * 255 * (1 / m)), each product rounded. What 32-bit integers do
// not hold, and NaN, becomes -2^31, so 0 either way.
template <int N>
PXL_INLINE I32<N> relativeToMaximum(F32<N> s, Pxl32f reciprocal) {
    return truncateToInt(mul(mul(s, fill<F32<N>>(255.0f)), fill<F32<N>>(reciprocal)));
}

// trunc(s * factor) within 0..255, NaN as 0.
template <int N>
PXL_INLINE I32<N> scaledWithin255(F32<N> s, Pxl32f factor) {
    const auto scaled = mul(s, fill<F32<N>>(factor));
    return truncateToInt(minimum(maximum(scaled, fill<F32<N>>(0.0f)), fill<F32<N>>(255.0f)));
}

PXL_END_TARGET
