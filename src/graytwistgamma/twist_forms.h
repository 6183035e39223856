// A colour matrix on lanes of any width. Every product and every sum is rounded to single precision, in the order that
// stands here.
#pragma once

#include "graytwistgamma/twist_kernels.h"
#include "simd/operations.h"

PXL_BEGIN_TARGET

// Output channel i: offset and first product, second and third product, then the two sums.
template <int N>
PXL_INLINE F32<N> twisted(const Twist& twist, int i, F32<N> c0, F32<N> c1, F32<N> c2) {
    const auto t = [&](int j) { return fill<F32<N>>(twist.t[i][j]); };
    return add(add(t(3), mul(c0, t(0))), add(mul(c2, t(2)), mul(c1, t(1))));
}

// Without an offset: from left to right.
template <int N>
PXL_INLINE F32<N> twisted(const Twist4& twist, int i, Channels4<F32<N>> px) {
    const auto t = [&](int j) { return fill<F32<N>>(twist.t[i][j]); };
    return add(add(add(mul(px.c0, t(0)), mul(px.c1, t(1))), mul(px.c2, t(2))), mul(px.c3, t(3)));
}

// Three channels of any samples; integers are rounded by the current mode and saturated.
template <bool kLimit, class V>
PXL_INLINE Channels3<V> twisted(const Twist& twist, Channels3<V> px) {
    const auto c0 = floatsOf(px.c0), c1 = floatsOf(px.c1), c2 = floatsOf(px.c2);
    auto r0 = c0, r1 = c1, r2 = c2;
    for (int k = 0; k < c0.kParts; ++k) {
        r0.at[k] = twisted(twist, 0, c0.at[k], c1.at[k], c2.at[k]);
        r1.at[k] = twisted(twist, 1, c0.at[k], c1.at[k], c2.at[k]);
        r2.at[k] = twisted(twist, 2, c0.at[k], c1.at[k], c2.at[k]);
    }
    return {saturatedSamples<V, kLimit>(r0), saturatedSamples<V, kLimit>(r1), saturatedSamples<V, kLimit>(r2)};
}

PXL_END_TARGET
