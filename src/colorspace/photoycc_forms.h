// The arithmetic between RGB and PhotoYCC, on lanes of any width: luma by the weights of ITU-R BT.601 over 1.402, and
// differences to it by 111.4 / 255 around 156 / 255 (C1, blue) and 135.64 / 255 around 137 / 255 (C2, red). Floats
// round each operation to single precision, in the order that stands here; bytes take integers.
#pragma once

#include "simd/fixed_point.h"

PXL_BEGIN_TARGET

// ---- floats, with 1 or 65535 as white

struct FloatOffsets {
    float c1, c2;              // added by the encoder
    float scaledC1, scaledC2;  // subtracted by the decoder
};
constexpr FloatOffsets kUnitOffsets = {0.6117647F, 0.5372549F, 1.356833F, 0.9786098F};
constexpr FloatOffsets kOffsets16 = {156 * 257, 137 * 257, static_cast<float>(1.356833 * 65535),
                                     static_cast<float>(0.9786098 * 65535)};

template <int N>
PXL_INLINE F32<N> times(F32<N> a, float factor) {
    return mul(a, fill<F32<N>>(factor));
}

template <int N>
PXL_INLINE Channels3<F32<N>> encodeFloats(Channels3<F32<N>> rgb, const FloatOffsets& offsets) {
    const auto luma = add(times(rgb.c2, 0.114F), add(times(rgb.c1, 0.587F), times(rgb.c0, 0.299F)));
    return {times(luma, 0.7132668F), add(times(sub(rgb.c2, luma), 0.4368627F), fill<F32<N>>(offsets.c1)),
            add(times(sub(rgb.c0, luma), 0.53192F), fill<F32<N>>(offsets.c2))};
}

template <int N>
PXL_INLINE Channels3<F32<N>> decodeFloats(Channels3<F32<N>> ycc, const FloatOffsets& offsets) {
    const auto c1 = sub(times(ycc.c1, 2.2179F), fill<F32<N>>(offsets.scaledC1));
    const auto c2 = sub(times(ycc.c2, 1.8215F), fill<F32<N>>(offsets.scaledC2));
    const auto y = times(ycc.c0, 1.3584F);
    return {add(y, c2), sub(sub(y, times(c2, 0.509F)), times(c1, 0.194F)), add(y, c1)};
}

// A NaN is neither below 0 nor above 1: it stays.
template <int N>
PXL_INLINE F32<N> unitRange(F32<N> a) {
    return minimum(fill<F32<N>>(1.0F), maximum(fill<F32<N>>(0.0F), a));
}

// ---- bytes
//
// Sums with coefficients of 14 bits, exact in lanes of 16: for coefficients 256 * u + l with bytes u and l,
// (256 * upper + lower) >> 8 = upper + (lower >> 8), where `upper` and `lower` are the sums with the u and the l.

template <int kA, int kB, int N>
PXL_INLINE I16<N> upperSums(U8<N> pairs) {
    return pairSumsSat(pairs, fillBytePairs<N>(upperByte(kA), upperByte(kB)));
}
template <int kA, int kB, int N>
PXL_INLINE I16<N> lowerSums(U8<N> pairs) {
    return pairSumsSat(pairs, fillBytePairs<N>(lowerByte(kA), lowerByte(kB)));
}

// From pairs R, G and pairs B, 0. The luma weights are Q14; 4898 and 1867 are not the nearest ones: deliberate.
template <int N>
PXL_INLINE Channels3<I16<N>> encodeLanes(U8<N> rg, U8<N> b0) {
    const auto upper = addWrap(upperSums<4898, 9617>(rg), upperSums<1867, 0>(b0));
    const auto lower = addWrap(lowerSums<4898, 9617>(rg), lowerSums<1867, 0>(b0));
    const auto luma = shiftRight<2>(addWrap(upper, shiftRight<8>(lower)));  // Q4, rounded down
    // And rounded up, which its negative is in (16 * 1024 * B - luma) >> 10. |lower| + 1023 stays below 2^15.
    const auto ceiling = shiftRight<2>(addWrap(upper, shiftRight<8>(addWrap(lower, fill<I16<N>>(1023)))));
    const auto red = pairSumsSat(rg, fillBytePairs<N>(16, 0)), blue = shiftLeft<4>(as<I16<N>>(b0));
    return {mulHigh(luma, fill<I16<N>>(2921)),
            addWrap(mulHigh(subWrap(blue, ceiling), fill<I16<N>>(1789)), fill<I16<N>>(156)),
            addWrap(mulHigh(subWrap(red, ceiling), fill<I16<N>>(2178)), fill<I16<N>>(137))};
}

template <int N>
PXL_INLINE Channels3<U8<N>> encodeBytes(Channels3<U8<N>> rgb) {
    const auto zero = fill<U8<N>>(0);
    const auto low = encodeLanes(interleaveLow(rgb.c0, rgb.c1), interleaveLow(rgb.c2, zero));
    const auto high = encodeLanes(interleaveHigh(rgb.c0, rgb.c1), interleaveHigh(rgb.c2, zero));
    return {packSatU8(low.c0, high.c0), packSatU8(low.c1, high.c1), packSatU8(low.c2, high.c2)};
}

// (kA * a + kB * b + kOffset) >> 8
template <int kA, int kB, int kOffset, int N>
PXL_INLINE I16<N> sumQ8(U8<N> pairs) {
    const auto lower = addWrap(lowerSums<kA, kB>(pairs), fill<I16<N>>(kOffset & 255));
    return addWrap(addWrap(upperSums<kA, kB>(pairs), fill<I16<N>>(kOffset >> 8)), shiftRight<8>(lower));
}

// R = (7460 * C2 + 5564 * Y - 1022020) >> 12, B likewise, and with c1 = (9084 * C1 - 1417104) >> 8, c2 likewise,
// G = (89024 * Y - 794 * c1 - 2084 * c2) >> 16, where 89024 = 78 * 794 + 13 * 2084: luma goes in with chroma.
template <int N>
PXL_INLINE Channels3<I16<N>> decodeLanes(U8<N> c1y, U8<N> c2y) {
    constexpr int kY = 5564, kC1 = 9084, kC2 = 7460, kC1Offset = -1417104, kC2Offset = -1022020;
    const auto c1 = sumQ8<kC1, -78 * 256, kC1Offset>(c1y), c2 = sumQ8<kC2, -13 * 256, kC2Offset>(c2y);
    const auto factors = fillPairs<N>(-794, -2084);
    const auto green = packSatI16(shiftRight<16>(pairSums(interleaveLow(c1, c2), factors)),
                                  shiftRight<16>(pairSums(interleaveHigh(c1, c2), factors)));
    return {shiftRight<4>(sumQ8<kC2, kY, kC2Offset>(c2y)), green, shiftRight<4>(sumQ8<kC1, kY, kC1Offset>(c1y))};
}

template <int N>
PXL_INLINE Channels3<U8<N>> decodeBytes(Channels3<U8<N>> ycc) {
    const auto low = decodeLanes(interleaveLow(ycc.c1, ycc.c0), interleaveLow(ycc.c2, ycc.c0));
    const auto high = decodeLanes(interleaveHigh(ycc.c1, ycc.c0), interleaveHigh(ycc.c2, ycc.c0));
    return {packSatU8(low.c0, high.c0), packSatU8(low.c1, high.c1), packSatU8(low.c2, high.c2)};
}

// ---- one direction on samples of any type

struct EncodeYcc {
    template <int N>
    PXL_INLINE static Channels3<U8<N>> samples(Channels3<U8<N>> rgb) {
        return encodeBytes(rgb);
    }
    template <int N>
    PXL_INLINE static Channels3<F32<N>> samples(Channels3<F32<N>> rgb) {
        return encodeFloats(rgb, kUnitOffsets);
    }
    template <int N>
    PXL_INLINE static Channels3<F32<N>> floats16(Channels3<F32<N>> rgb) {
        return encodeFloats(rgb, kOffsets16);
    }
};

struct DecodeYcc {
    template <int N>
    PXL_INLINE static Channels3<U8<N>> samples(Channels3<U8<N>> ycc) {
        return decodeBytes(ycc);
    }
    template <int N>
    PXL_INLINE static Channels3<F32<N>> samples(Channels3<F32<N>> ycc) {
        const auto rgb = decodeFloats(ycc, kUnitOffsets);
        return {unitRange(rgb.c0), unitRange(rgb.c1), unitRange(rgb.c2)};
    }
    template <int N>
    PXL_INLINE static Channels3<F32<N>> floats16(Channels3<F32<N>> ycc) {
        return decodeFloats(ycc, kOffsets16);
    }
};

template <class Form, class V>
PXL_INLINE Channels3<V> converted(Channels3<V> px) {
    return Form::samples(px);
}

// One rounding, by the current mode, and saturation.
template <class Form, int N>
PXL_INLINE Channels3<U16<N>> converted(Channels3<U16<N>> px) {
    auto a = floatsOf(px.c0), b = floatsOf(px.c1), c = floatsOf(px.c2);
    for (int k = 0; k < 2; ++k) {
        const auto out = Form::floats16(Channels3{a.at[k], b.at[k], c.at[k]});
        a.at[k] = out.c0, b.at[k] = out.c1, c.at[k] = out.c2;
    }
    return {saturatedSamples<U16<N>, false>(a), saturatedSamples<U16<N>, false>(b), saturatedSamples<U16<N>, false>(c)};
}

// Signed samples are unsigned ones less 32768.
template <class Form, int N>
PXL_INLINE Channels3<I16<N>> converted(Channels3<I16<N>> px) {
    const auto middle = fill<U16<N>>(0x8000);
    const auto out = converted<Form>(Channels3{bitXor(as<U16<N>>(px.c0), middle), bitXor(as<U16<N>>(px.c1), middle),
                                               bitXor(as<U16<N>>(px.c2), middle)});
    return {as<I16<N>>(bitXor(out.c0, middle)), as<I16<N>>(bitXor(out.c1, middle)), as<I16<N>>(bitXor(out.c2, middle))};
}

PXL_END_TARGET
