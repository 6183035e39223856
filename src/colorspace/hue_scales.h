// The scales of the hexagonal colour models: a hue of 360 degrees and a lightness, saturation or value of 1 are the
// largest code. The constants are single-precision numbers, and every operation rounds to single precision.
#pragma once

#include "simd/operations.h"

PXL_BEGIN_TARGET

struct ByteScale {
    static constexpr float kFull = 255, kFromCode = 0.003921569f;                 // 1 / 255
    static constexpr float kHueCode = 0.7083333f, kDegreesFromCode = 1.4117647f;  // 255 / 360, 360 / 255
    static constexpr float kSextantsFromCode = 0.023529414f;                      // 6 / 255
    static constexpr float kLargestGrayRange = 0;
};

struct WordScale {
    static constexpr float kFull = 65535, kFromCode = 1.5259022e-5f;
    static constexpr float kHueCode = 182.04167f, kDegreesFromCode = 0.005493248f;
    static constexpr float kLargestGrayRange = 0;
};

struct UnitScale {
    static constexpr float kFull = 1, kFromCode = 1;
    static constexpr float kHueCode = 0.0027777778f, kDegreesFromCode = 360;
    static constexpr float kLargestGrayRange = 1.1920929e-7f;
};

// The largest and the smallest of three channels.
template <int N>
struct Extremes {
    F32<N> largest, smallest;
};
template <int N>
PXL_INLINE Extremes<N> extremesOf(Channels3<F32<N>> px) {
    return {maximum(maximum(px.c0, px.c1), px.c2), minimum(minimum(px.c0, px.c1), px.c2)};
}

template <int N>
PXL_INLINE F32<N> zeroWhere(F32<N> mask, F32<N> a) {
    return choose(mask, a, fill<F32<N>>(0.0f));
}

PXL_END_TARGET
