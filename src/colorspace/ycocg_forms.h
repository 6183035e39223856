// The arithmetic of YCoCg and of its reversible form, on lanes of any width. It is written for 32-bit integers with
// arithmetic shifts; what stands here gives the same values in the narrowest lanes. Two shifts in a row are one by
// both, so that luma, ((R + B) >> 1) + G ..., and green chroma, G - ((R + B + 1) >> 1) ..., are averages of averages.
#pragma once

#include "simd/memory.h"

PXL_BEGIN_TARGET

template <class V>
struct Rgb {
    V r, g, b;
};
template <class V>
Rgb(V, V, V) -> Rgb<V>;

template <class V>
struct Ycocg {
    V y, co, cg;
};
template <class V>
Ycocg(V, V, V) -> Ycocg<V>;

// Encoders work on unsigned samples: bytes as they are, signed 16-bit samples offset by 32768.
template <int N>
PXL_INLINE U8<N> unsignedLanes(U8<N> a) {
    return a;
}
template <int N>
PXL_INLINE U16<N> unsignedLanes(I16<N> a) {
    return bitXor(as<U16<N>>(a), fill<U16<N>>(0x8000));
}
template <int N>
PXL_INLINE I16<N> signedLanes(U16<N> a) {
    return as<I16<N>>(bitXor(a, fill<U16<N>>(0x8000)));
}

// ---- what planes hold: `whole` an unsigned lane, `difference` a - b, `half` (a - b + 1) >> 1

// Bytes: chroma offset by 128, and the one value above 255 limited.
struct OffsetBytes {
    template <int N>
    PXL_INLINE static U8<N> whole(U8<N> a) {
        return a;
    }
    template <int N>
    PXL_INLINE static U8<N> half(U8<N> a, U8<N> b) {
        const auto negated = average(b, bitNot(a));  // ((b - a) >> 1) + 128
        return addSat(bitNot(negated), fill<U8<N>>(1));
    }
};

// The low 16 bits.
struct Narrow {
    template <int N>
    PXL_INLINE static I16<N> whole(U16<N> a) {
        return signedLanes(a);
    }
    template <int N>
    PXL_INLINE static I16<N> difference(U16<N> a, U16<N> b) {
        return as<I16<N>>(subWrap(a, b));
    }
    template <int N>
    PXL_INLINE static I16<N> half(U16<N> a, U16<N> b) {
        const auto negated = average(b, bitNot(a));  // ((b - a) >> 1) + 32768
        return as<I16<N>>(subWrap(fill<U16<N>>(0x8000), negated));
    }
};

// Lanes twice as wide as the samples, which hold every value. Takes lanes that are spread for interleaving.
struct Wide {
    template <class V>
    PXL_INLINE static Consecutive<V> consecutive(Halves<V> a) {
        return {a.low, a.high};
    }
    template <int N>
    PXL_INLINE static Consecutive<I16<N>> whole(U8<N> a) {
        return consecutive(widen(a));
    }
    template <int N>
    PXL_INLINE static Consecutive<I32<N>> whole(U16<N> a) {
        return consecutive(widen(signedLanes(a)));
    }
    template <int N>
    PXL_INLINE static Consecutive<I16<N>> difference(U8<N> a, U8<N> b) {
        const auto factors = as<U8<N>>(fill<I16<N>>(0xFF01));  // bytes 1, -1
        return {pairSumsSat(interleaveLow(a, b), factors), pairSumsSat(interleaveHigh(a, b), factors)};
    }
    template <int N>
    PXL_INLINE static Consecutive<I32<N>> difference(U16<N> a, U16<N> b) {
        const auto factors = fillPairs<N>(1, -1);
        const auto first = signedLanes(a), second = signedLanes(b);
        return {pairSums(interleaveLow(first, second), factors), pairSums(interleaveHigh(first, second), factors)};
    }
    template <class V>
    PXL_INLINE static V halved(V a) {
        return shiftRight<1>(addWrap(a, fill<V>(1)));
    }
    template <class V>
    PXL_INLINE static auto half(V a, V b) {
        const auto whole = difference(a, b);
        return Consecutive{halved(whole.first), halved(whole.second)};
    }
};

// ---- the two transforms. Their decoders are exact in lanes of 16 bits, saturated to these; in lanes of 32 bits sums
// wrap.

// Y = (R + 2G + B + 2) >> 2, Co = (R - B + 1) >> 1, Cg = (2G - R - B + 2) >> 2
struct Plain {
    template <class Planes, class V>
    PXL_INLINE static auto encode(Rgb<V> p) {
        return Channels3{Planes::whole(average(floorAverage(p.r, p.b), p.g)), Planes::half(p.r, p.b),
                         Planes::half(p.g, average(p.r, p.b))};
    }

    // R = Y + Co - Cg, G = Y + Cg, B = Y - Co - Cg
    template <int N>
    PXL_INLINE static Rgb<I32<N>> decode(Ycocg<I32<N>> p) {
        const auto middle = subWrap(p.y, p.cg);
        return {addWrap(middle, p.co), addWrap(p.y, p.cg), subWrap(middle, p.co)};
    }
    template <int N>
    PXL_INLINE static Rgb<I16<N>> decode(Ycocg<I16<N>> p) {
        const auto middle = subSat(p.y, p.cg);
        // What saturating took away, subtracted: -32768 .. 32767. It comes back last, after Co may have made room.
        const auto excess = subWrap(middle, subWrap(p.y, p.cg));
        return {subSat(addSat(middle, p.co), excess), addSat(p.y, p.cg), subSat(subSat(middle, p.co), excess)};
    }
};

// Co = R - B, t = B + (Co >> 1), Cg = G - t, Y = t + (Cg >> 1)
struct Reversible {
    template <class Planes, class V>
    PXL_INLINE static auto encode(Rgb<V> p) {
        const auto t = floorAverage(p.r, p.b);
        return Channels3{Planes::whole(floorAverage(p.g, t)), Planes::difference(p.r, p.b), Planes::difference(p.g, t)};
    }

    // t = Y - (Cg >> 1), G = Cg + t, B = t - (Co >> 1), R = B + Co
    template <int N>
    PXL_INLINE static Rgb<I32<N>> decode(Ycocg<I32<N>> p) {
        const auto t = subWrap(p.y, shiftRight<1>(p.cg)), b = subWrap(t, shiftRight<1>(p.co));
        return {addWrap(b, p.co), addWrap(p.cg, t), b};
    }
    // The sums of halves fit 16 bits, so that only the last step saturates.
    template <int N>
    PXL_INLINE static Rgb<I16<N>> decode(Ycocg<I16<N>> p) {
        const auto halfCo = shiftRight<1>(p.co), halfCg = shiftRight<1>(p.cg);
        const auto otherHalfCo = subWrap(p.co, halfCo), otherHalfCg = subWrap(p.cg, halfCg);
        return {subSat(p.y, subWrap(halfCg, otherHalfCo)), addSat(p.y, otherHalfCg),
                subSat(p.y, addWrap(halfCg, halfCo))};
    }
};

// ---- plain, from bytes with chroma offset by 128

// a + (b - c), limited to bytes
template <int N>
PXL_INLINE U8<N> plusDifference(U8<N> a, U8<N> b, U8<N> c) {
    return subSat(addSat(a, subSat(b, c)), subSat(c, b));
}

// R = Y + Co - Cg, G = Y + Cg - 128, B = Y - Co - Cg + 256
template <int N>
PXL_INLINE Rgb<U8<N>> decodeOffsetBytes(Ycocg<U8<N>> p) {
    const auto one = fill<U8<N>>(1), negatedCg = bitNot(p.cg);  // 255 - Cg, so that 1 is still to be added
    const auto more = subSat(negatedCg, p.co), less = subSat(p.co, negatedCg);
    const auto notLess = bitAnd(equal(less, fill<U8<N>>(0)), one);
    return {plusDifference(p.y, p.co, p.cg), plusDifference(p.y, p.cg, fill<U8<N>>(128)),
            addSat(subSat(addSat(p.y, more), subSat(less, one)), notLess)};
}

PXL_END_TARGET
