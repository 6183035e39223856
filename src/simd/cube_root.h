// Cube roots without a power function: a table and a series of fixed length.
#pragma once

#include "frame/cube_root_table.h"
#include "simd/lookup.h"

PXL_BEGIN_TARGET

// The binomial series of (1 + d)^(1/3), all nine terms and the first five.
struct CubeRootSeries {
    static constexpr Pxl32f kTerms[] = {
        1,           0.33333334f,  -0.11111111f, 0.061728396f, -0.041152265f, 0.030178327f, -0.023472032f,
        0.01900117f, -0.015834307f};
};
struct ShortCubeRootSeries {
    static constexpr Pxl32f kTerms[] = {1, 0.33333334f, -0.11111111f, 0.061728396f, -0.041152265f};
};

// The entries of the table for each lane.
template <class V>
struct CubeRootEntry {
    V root, reciprocal;
};

template <int N>
PXL_INLINE CubeRootEntry<F32<N>> cubeRootEntry(F32<N> position) {
    // as unsigned numbers those below 0 and what no integer holds are the largest
    const auto i = minimumUnsigned(truncateToInt(position), fill<I32<N>>(kCubeRoots - 1));
    return {gather(kCubeRoots32f.root, i), gather(kCubeRoots32f.reciprocal, i)};
}
template <int N>
PXL_INLINE CubeRootEntry<F64<N>> cubeRootEntry(F64<N> position) {
    const auto i = maximum(minimum(position, fill<F64<N>>(kCubeRoots - 1.0)), fill<F64<N>>(0.0));
    return {gather(kCubeRoots64f.root, i), gather(kCubeRoots64f.reciprocal, i)};
}

// The cube root of t in 0..1, V of floats or doubles: with entry c, k of the table,
//
//     d = (t - c^3) * k    root = c * (((1 + s1 * d) + s2 * d^2) + s3 * d^3 ...)    d^n = d^(n - 1) * d
//
// What is above 1 takes the last entry, NaN too, and the series gives what it gives; below 0 nothing is defined.
template <class Series, class V>
PXL_INLINE V cubeRoot(V t) {
    constexpr int kTerms = sizeof(Series::kTerms) / sizeof(Pxl32f);
    constexpr Pxl32f kSteps = 127.998046875f;  // a little below 128: t = 1 takes the last entry but one
    const auto entry = cubeRootEntry(mul(t, fill<V>(kSteps)));
    const auto d = mul(sub(t, mul(mul(entry.root, entry.root), entry.root)), entry.reciprocal);
    auto sum = fill<V>(Series::kTerms[0]), power = d;
#pragma GCC unroll 8
    for (int i = 1; i < kTerms; ++i) {
        sum = add(sum, mul(power, fill<V>(Series::kTerms[i])));
        power = mul(power, d);
    }
    return mul(entry.root, sum);
}

PXL_END_TARGET
