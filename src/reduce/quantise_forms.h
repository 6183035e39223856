// The common quantiser of ReduceBits on lanes of any width: the largest level that is not above the work value, or the
// next one where the rest is above a threshold. All conversions to integers truncate.
#pragma once

#include "reduce/levels.h"
#include "simd/operations.h"

PXL_BEGIN_TARGET

template <int N>
PXL_INLINE F32<N> nearestLevel(F32<N> v, Levels levels, F32<N> threshold) {
    const auto step = fill<F32<N>>(levels.step);
    const auto q = mul(toFloat(truncateToInt(mul(v, fill<F32<N>>(levels.inverse)))), step);
    const auto up = greater(sub(v, q), threshold);
    return add(q, as<F32<N>>(bitAnd(as<I32<N>>(up), as<I32<N>>(step))));
}

// a where the mask is set, else 0.
template <int N>
PXL_INLINE I32<N> where(F32<N> mask, I32<N> a) {
    return bitAnd(as<I32<N>>(mask), a);
}

// Samples from 0 on, signed ones shifted.
template <class T, int N>
PXL_INLINE F32<N> fromZero(F32<N> s) {
    if constexpr (static_cast<T>(-1) < 0 && sizeof(T) == 2) return add(s, fill<F32<N>>(32768.0f));
    return s;
}
template <class T, int N>
PXL_INLINE I32<N> backFromZero(I32<N> out) {
    if constexpr (static_cast<T>(-1) < 0) return subWrap(out, fill<I32<N>>(32768));
    return out;
}

// The largest value of a type, from 0 on; of floats 1.
template <class T>
constexpr Pxl32f kTop = sizeof(T) == 1   ? 255.0f
                        : sizeof(T) == 2 ? 65535.0f
                                         : 1.0f;
template <class T>
constexpr bool kIsFloat = sizeof(T) == 4;

// Without dithering: plain rounding to the nearest level, in units of 0..1. Samples that are NaN count as 0 and those
// above 2, which end at the top anyway, as 2.
template <class Source, class Destination, int N>
PXL_INLINE I32<N> withoutDithering(F32<N> s, Levels levels) {
    F32<N> x;
    if constexpr (kIsFloat<Source>) {
        x = minimum(maximum(s, fill<F32<N>>(0.0f)), fill<F32<N>>(2.0f));
    } else {
        x = mul(fromZero<Source>(s), fill<F32<N>>(sizeof(Source) == 1 ? 0.003921569f : 1.5259022e-5f));
    }
    const auto q = nearestLevel(x, levels, fill<F32<N>>(levels.step * 0.5f));
    const auto out = truncateToInt(mul(q, fill<F32<N>>(kTop<Destination>)));
    return backFromZero<Destination>(minimum(out, fill<I32<N>>(static_cast<int>(kTop<Destination>))));
}

// What below counts as saturated at 0: in floats anything under one unit in the last place of 1, and NaN.
template <class Source>
constexpr Pxl32f kBottom = kIsFloat<Source> ? 1.1920929e-7f : 0.0f;

// Ordered dithering, in the work units of the source.
template <class Source, class Destination, int N>
PXL_INLINE I32<N> orderedDithering(F32<N> s, Levels levels, F32<N> threshold) {
    const auto v = fromZero<Source>(s), q = nearestLevel(v, levels, threshold);
    constexpr int kMost = static_cast<int>(kTop<Destination>);
    I32<N> out;
    if constexpr (kIsFloat<Source>) {
        out = truncateToInt(mul(q, fill<F32<N>>(kTop<Destination>)));
    } else {
        out = truncateToInt(q);
        if constexpr (sizeof(Source) > sizeof(Destination)) out = shiftRight<8>(out);
    }
    out = minimum(out, fill<I32<N>>(kMost));
    if constexpr (kIsFloat<Source>) out = where(atMost(fill<F32<N>>(kBottom<Source>), v), out);
    out = choose(as<I32<N>>(atMost(fill<F32<N>>(kTop<Source>), v)), out, fill<I32<N>>(kMost));
    return backFromZero<Destination>(out);
}

PXL_END_TARGET
