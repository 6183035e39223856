// The scales of the hexagonal colour models: a hue of 360 degrees and a lightness, saturation or value of 1 are the
// largest code. The constants are single-precision numbers, and every operation rounds to single precision.
#pragma once

#include "simd/operations.h"

PXL_BEGIN_TARGET

struct ByteScale {
    static constexpr bool kIntegers = true, kBytes = true;
    static constexpr float kFull = 255, kFromCode = 0.003921569f;                 // 1 / 255
    static constexpr float kHueCode = 0.7083333f, kDegreesFromCode = 1.4117647f;  // 255 / 360, 360 / 255
    static constexpr float kSextantsFromCode = 0.023529414f;                      // 6 / 255
};

struct WordScale {
    static constexpr bool kIntegers = true, kBytes = false;
    static constexpr float kFull = 65535, kFromCode = 1.5259022e-5f;
    static constexpr float kHueCode = 182.04167f, kDegreesFromCode = 0.005493248f;
};

struct UnitScale {
    static constexpr bool kIntegers = false, kBytes = false;
    static constexpr float kFull = 1, kFromCode = 1;
    static constexpr float kHueCode = 0.0027777778f, kDegreesFromCode = 360;
};

// How floats become integers, and two bytes their mean. The floats of here are numbers within
// 32-bit integers, or NaN.
struct ToNearestEven {
    template <int N>
    PXL_INLINE static I32<N> integer(F32<N> a) {
        return toInt(a);
    }
    // where the sum is odd, of the two bytes beside its half the even one
    template <int N>
    PXL_INLINE static U8<N> mean(U8<N> a, U8<N> b) {
        const auto up = average(a, b);
        return subWrap(up, bitAnd(bitAnd(bitXor(a, b), up), fill<U8<N>>(1)));
    }
};
struct Truncated {
    template <int N>
    PXL_INLINE static I32<N> integer(F32<N> a) {
        return truncateToInt(a);
    }
    template <int N>
    PXL_INLINE static U8<N> mean(U8<N> a, U8<N> b) {
        return subWrap(average(a, b), bitAnd(bitXor(a, b), fill<U8<N>>(1)));
    }
};

// Saturated; NaN becomes 0, since as an integer it is the least of all.
template <class Rounding, class V, int kCount>
PXL_INLINE V samplesOf(Parts<F32<V::kN>, kCount> a) {
    if constexpr (kCount == 1) {
        return a.at[0];
    } else {
        Parts<I32<V::kN>, kCount> whole;
        for (int k = 0; k < kCount; ++k) whole.at[k] = Rounding::integer(a.at[k]);
        return packSatSamples<V>(whole);
    }
}

// The largest and the smallest of three channels.
template <class V>
struct Extremes {
    V largest, smallest;
};
template <class V>
PXL_INLINE Extremes<V> extremesOf(Channels3<V> px) {
    return {maximum(maximum(px.c0, px.c1), px.c2), minimum(minimum(px.c0, px.c1), px.c2)};
}

// a where the mask is set, 0 elsewhere, and the opposite.
template <int N>
PXL_INLINE F32<N> onlyWhere(F32<N> mask, F32<N> a) {
    if constexpr (N == 4) return choose(mask, fill<F32<N>>(0.0f), a);  // one instruction with a mask register
    return as<F32<N>>(bitAnd(as<I32<N>>(mask), as<I32<N>>(a)));
}
template <int N>
PXL_INLINE F32<N> zeroWhere(F32<N> mask, F32<N> a) {
    if constexpr (N == 4) return choose(mask, a, fill<F32<N>>(0.0f));
    return as<F32<N>>(bitAnd(bitXor(as<I32<N>>(mask), fill<I32<N>>(-1)), as<I32<N>>(a)));
}

PXL_END_TARGET
