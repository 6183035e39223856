// The arithmetic of bilinear demosaicing, on unsigned samples of 8 or 16 bits.
#pragma once

#include "simd/operations.h"

PXL_BEGIN_TARGET

// (a + b + c + d + 2) >> 2. The averages of pairs round up, each by the lowest bit of a sum; where their own average
// rounds up as well and one of them did, it is one too high.
template <class V>
PXL_INLINE V averageOf4(V a, V b, V c, V d) {
    const auto ab = average(a, b), cd = average(c, d);
    const auto excess = bitAnd(bitAnd(bitXor(ab, cd), bitOr(bitXor(a, b), bitXor(c, d))), fill<V>(1));
    return subWrap(average(ab, cd), excess);
}

template <class V>
PXL_INLINE V distance(V a, V b) {
    return bitOr(subSat(a, b), subSat(b, a));
}

template <int N>
PXL_INLINE U8<N> isZero(U8<N> a) {
    return equal(a, fill<U8<N>>(0));
}
template <int N>
PXL_INLINE U8<N> isZero(U16<N> a) {
    return as<U8<N>>(equal(as<I16<N>>(a), fill<I16<N>>(0)));
}

// b where the mask is set, a elsewhere.
template <class V>
PXL_INLINE V chooseSamples(U8<V::kN> mask, V a, V b) {
    return as<V>(choose(mask, as<U8<V::kN>>(a), as<U8<V::kN>>(b)));
}

// Green at a red or blue pixel, along the direction in which the pixel's own colour changes less, or from all four
// neighbours where it changes as much in both.
template <class V>
PXL_INLINE V directedGreen(V verticalChange, V horizontalChange, V vertical, V horizontal, V allFour) {
    const auto notMoreAcross = isZero(subSat(horizontalChange, verticalChange));
    const auto notMoreAlong = isZero(subSat(verticalChange, horizontalChange));
    return chooseSamples(notMoreAcross, vertical, chooseSamples(notMoreAlong, horizontal, allFour));
}

PXL_END_TARGET
