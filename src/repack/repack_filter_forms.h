// Weighted sums of chroma rows, each rounded as its formula says. A byte average rounds one bit at a time: rounding
// down inside and up at the end is one rounding of the whole sum.
#pragma once

#include "simd/pairs.h"

PXL_BEGIN_TARGET

// (5 * near + 3 * far + 4) >> 3
struct FiveThree {
    template <int N>
    PXL_INLINE static U8<N> of(U8<N> near, U8<N> far) {
        return average(near, floorAverage(far, floorAverage(near, far)));
    }
};

// (7 * near + far + 4) >> 3
struct SevenOne {
    template <int N>
    PXL_INLINE static U8<N> of(U8<N> near, U8<N> far) {
        return average(near, floorAverage(near, floorAverage(near, far)));
    }
};

// (3 * near + far + 2) >> 2
struct ThreeOne {
    template <int N>
    PXL_INLINE static U8<N> of(U8<N> near, U8<N> far) {
        return average(near, floorAverage(near, far));
    }
};

// (above + 2 * centre + below) >> 2
struct OneTwoOne {
    template <int N>
    PXL_INLINE static U8<N> of(U8<N> above, U8<N> centre, U8<N> below) {
        return floorAverage(centre, floorAverage(above, below));
    }
};

struct MeanUp {
    template <int N>
    PXL_INLINE static U8<N> of(U8<N> a, U8<N> b) {
        return average(a, b);
    }
};

struct MeanDown {
    template <int N>
    PXL_INLINE static U8<N> of(U8<N> a, U8<N> b) {
        return floorAverage(a, b);
    }
};

// (9 * (b + c) - (a + d) + 8) >> 4, saturated: half-way between b and c
struct FourTap {
    template <int N>
    PXL_INLINE static I16<N> sum(U8<N> inside, U8<N> outside) {
        const auto nine = fill<U8<N>>(9), minusOne = fill<U8<N>>(-1);
        const auto sum = addWrap(pairSumsSat(inside, nine), pairSumsSat(outside, minusOne));
        return shiftRight<4>(addWrap(sum, fill<I16<N>>(8)));
    }
    template <int N>
    PXL_INLINE static U8<N> of(U8<N> a, U8<N> b, U8<N> c, U8<N> d) {
        return packSatU8(sum(interleaveLow(b, c), interleaveLow(a, d)),
                         sum(interleaveHigh(b, c), interleaveHigh(a, d)));
    }
};

// A form on whatever readers give.
template <class Form, int N, class... More>
PXL_INLINE U8<N> blend(U8<N> a, More... more) {
    return Form::of(a, more...);
}
template <class Form, int N, class... More>
PXL_INLINE Pairs<N> blend(Pairs<N> a, More... more) {
    return {Form::of(a.low, more.low...), Form::of(a.high, more.high...)};
}
template <class Form, int N, class... More>
PXL_INLINE Channels2<U8<N>> blend(Channels2<U8<N>> a, More... more) {
    return {Form::of(a.c0, more.c0...), Form::of(a.c1, more.c1...)};
}

PXL_END_TARGET
