// The arithmetic between 8-bit R'G'B' and analog YUV, on lanes of any width: luma of ITU-R BT.601 over the full range,
// U = 0.492 (B - Y) and V = 0.877 (R - Y) around 128. Three channels are R, G, B or Y, U, V.
#pragma once

#include "simd/fixed_point.h"

PXL_BEGIN_TARGET

// (factor * x) >> 16, exact
template <int kFactor, int N>
PXL_INLINE I16<N> timesQ16Floor(I16<N> x) {
    constexpr SplitFactor factor = split(kFactor);
    return plusTimes<factor.whole>(mulHigh(x, fill<I16<N>>(factor.rest)), x);
}

// ---- luma, in byte products
//
// With the bytes of the factors, 256 * upper + lower, two sums of byte products fit 16 bits, and
// floor((256 * upperSum + lowerSum) / 2^s) = floor((upperSum + floor(lowerSum / 256)) / 2^(s - 8)).

// (r * R + g * G + b * B + rounding) >> bits
struct LumaFactors {
    int r, g, b, rounding, bits;
};
constexpr LumaFactors kLumaQ15 = {9798, 19235, 3736, 16384, 15};
// 2 is 1/8192 of a code, so that both cut. Deliberate.
constexpr LumaFactors kLumaQ14 = {4899, 9617, 1868, 2, 14};
constexpr LumaFactors kLumaQ14Truncating = {4899, 9617, 1868, 0, 14};

// Samples times signed bytes. A 1 beside blue takes the rounding.
template <LumaFactors k, int N>
PXL_INLINE U8<N> lumaOf(Channels3<U8<N>> p) {
    static_assert(upperByte(k.r) + upperByte(k.g) + upperByte(k.b) <= 128);  // no sum leaves unsigned 16 bits
    const auto half = [](U8<N> rg, U8<N> b1) {
        const auto upper = addWrap(pairSumsSat(rg, fillBytePairs<N>(upperByte(k.r), upperByte(k.g))),
                                   pairSumsSat(b1, fillBytePairs<N>(upperByte(k.b), k.rounding / 256)));
        const auto lower = addWrap(pairSumsSat(rg, fillBytePairs<N>(lowerByte(k.r), lowerByte(k.g))),
                                   pairSumsSat(b1, fillBytePairs<N>(lowerByte(k.b), k.rounding % 256)));
        return as<I16<N>>(shiftRight<k.bits - 8>(as<U16<N>>(addWrap(upper, shiftRight<8>(lower)))));
    };
    const auto one = fill<U8<N>>(1);
    return packSatU8(half(interleaveLow(p.c0, p.c1), interleaveLow(p.c2, one)),
                     half(interleaveHigh(p.c0, p.c1), interleaveHigh(p.c2, one)));
}

// (19595 R + 38470 G + 7471 B + rounding) >> 16. The samples minus 128 as signed bytes times unsigned bytes: those of
// the upper sum are 255 together and those of the lower one 256, which is what 16 bits hold.
template <int N>
struct LumaQ16 {
    Halves<I16<N>> upper, lower;

    PXL_INLINE static LumaQ16 of(Channels3<U8<N>> p) {
        const auto top = fill<U8<N>>(128);
        const auto r = bitXor(p.c0, top), g = bitXor(p.c1, top), b = bitXor(p.c2, top);
        const auto weigh = [](int weightR, int weightG, int weightB, U8<N> rg, U8<N> bb) {
            return addWrap(pairSumsSat(fillBytePairs<N>(weightR, weightG), rg),
                           pairSumsSat(fillBytePairs<N>(weightB, 0), bb));
        };
        const auto rgLow = interleaveLow(r, g), rgHigh = interleaveHigh(r, g);
        const auto bLow = interleaveLow(b, b), bHigh = interleaveHigh(b, b);
        return {{weigh(76, 150, 29, rgLow, bLow), weigh(76, 150, 29, rgHigh, bHigh)},
                {weigh(139, 70, 47, rgLow, bLow), weigh(139, 70, 47, rgHigh, bHigh)}};
    }

    template <int kRounding>
    PXL_INLINE U8<N> rounded() const {
        static_assert(kRounding == 0 || kRounding == 32767 || kRounding == 32768);
        const auto half = [](I16<N> upperSum, I16<N> lowerSum) {
            // where taking 1 off saturates, for black, it changes nothing
            if constexpr (kRounding == 32767) lowerSum = subSat(lowerSum, fill<I16<N>>(1));
            const auto sum = addWrap(upperSum, shiftRight<8>(lowerSum));
            return as<U16<N>>(kRounding == 0 ? sum : addWrap(sum, fill<I16<N>>(128)));
        };
        return bitXor(highBytes(half(upper.low, lower.low), half(upper.high, lower.high)), fill<U8<N>>(128));
    }
};

// ---- encoders 4:4:4

// a - b
template <int N>
PXL_INLINE Halves<I16<N>> differences(U8<N> a, U8<N> b) {
    const auto signs = fillBytePairs<N>(1, -1);
    return {pairSumsSat(interleaveLow(a, b), signs), pairSumsSat(interleaveHigh(a, b), signs)};
}

// Chroma codes 0..255 from chroma around 0, saturated.
template <int N>
PXL_INLINE U8<N> chromaCodes(I16<N> low, I16<N> high) {
    return bitXor(packSatS8(low, high), fill<U8<N>>(128));
}

// The group form.
struct EncodeQ15 {
    template <int N>
    PXL_INLINE static U8<N> chroma(Halves<I16<N>> difference, int factor) {
        const auto factors = fill<I16<N>>(factor);
        return chromaCodes(mulRound15(difference.low, factors), mulRound15(difference.high, factors));
    }
    template <int N>
    PXL_INLINE static Channels3<U8<N>> pixels(Channels3<U8<N>> p) {
        const auto y = lumaOf<kLumaQ15>(p);
        return {y, chroma(differences(p.c2, y), 16121), chroma(differences(p.c0, y), 28737)};
    }
};

// The forms of single pixels: luma, and the differences B - Y and R - Y with a rounding of their own. Only the sum of
// luma is rounded; the products are cut.
template <int kLumaRounding, int kDifferenceRounding>
struct EncodeQ16 {
    template <int N>
    PXL_INLINE static Channels3<U8<N>> pixels(Channels3<U8<N>> p) {
        const auto luma = LumaQ16<N>::of(p);
        // (x * 65536 - luma + rounding) >> 16 = x - ((luma + 65535 - rounding) >> 16)
        const auto subtracted = luma.template rounded<65535 - kDifferenceRounding>();
        const auto u = differences(p.c2, subtracted), v = differences(p.c0, subtracted);
        return {luma.template rounded<kLumaRounding>(),
                chromaCodes(timesQ16Floor<32244>(u.low), timesQ16Floor<32244>(u.high)),
                chromaCodes(timesQ16Floor<57475>(v.low), timesQ16Floor<57475>(v.high))};
    }
};
using EncodeRounded = EncodeQ16<32768, 32768>;
using EncodeTruncated = EncodeQ16<0, 32767>;

// The form of planar pixels: each channel is one sum. The weights of luma are 65535 together (so that gray loses one
// code), those of U and V, which are Q15, 1 (so that gray stays 128). Deliberate.
struct EncodePlanar {
    template <int N>
    PXL_INLINE static Channels3<I16<N>> half(I16<N> r, I16<N> g, I16<N> b) {
        return {sumQ16<19595, 38469, 7471>(r, g, b, 0), sumQ16<2 * -4816, 2 * -9469, 2 * 14286>(r, g, b, 0),
                sumQ16<2 * 20152, 2 * -16875, 2 * -3276>(r, g, b, 0)};
    }
    template <int N>
    PXL_INLINE static Channels3<U8<N>> pixels(Channels3<U8<N>> p) {
        const auto r = widen(p.c0), g = widen(p.c1), b = widen(p.c2);
        const auto low = half(r.low, g.low, b.low), high = half(r.high, g.high, b.high);
        return {packSatU8(low.c0, high.c0), chromaCodes(low.c1, high.c1), chromaCodes(low.c2, high.c2)};
    }
};

// ---- encoders 4:2:2 and 4:2:0

// Chroma from the sums of 2^kBits pixels, U of the eight lanes in the lower half of each block and V in the upper. The
// rounding, half of 2^(16 + kBits) minus 1, is that of a sum; the products are cut.
template <int kBits, int N>
PXL_INLINE U8<N> chromaOfSums(Channels3<I16<N>> sums) {
    constexpr int kRounding = (1 << (15 + kBits)) - 1;
    const auto luma = sumQ16<19595, 38470, 7471>(sums.c0, sums.c1, sums.c2, 65535 - kRounding);
    return chromaCodes(shiftRight<kBits>(timesQ16Floor<32244>(subWrap(sums.c2, luma))),
                       shiftRight<kBits>(timesQ16Floor<57475>(subWrap(sums.c0, luma))));
}

// ---- decoders

// Q16 factors of V and U, and what is added to R and B before the shift; G is never rounded.
struct DecoderFactors {
    int vToR, uToG, vToG, uToB, rounding;
};
constexpr DecoderFactors kDecodeRounding = {74711, -25821, -38076, 133169, 32768};
constexpr DecoderFactors kDecodeTruncating = {74710, -25820, -38075, 133168, 0};

// A factor f with (x * f + 16384) >> 15 = (x * rest + 32768) >> 16 for every chroma sample x; -1 if there is none.
constexpr int roundingFactor(int rest) {
    for (int f = rest / 2; f <= rest / 2 + 1; ++f) {
        bool same = true;
        for (int x = -128; x < 128; ++x) same = same && (x * f + 16384) >> 15 == (x * rest + 32768) >> 16;
        if (same) return f;
    }
    return -1;
}

template <DecoderFactors k>
struct Decode {
    template <int kFactor, int N>
    PXL_INLINE static I16<N> term(I16<N> x) {
        constexpr SplitFactor factor = split(kFactor);
        constexpr int kRounding = roundingFactor(factor.rest);
        static_assert((k.rounding == 0 || k.rounding == 32768) && factor.rest > 0 && kRounding >= 0);
        if constexpr (k.rounding == 0) return timesQ16Floor<kFactor>(x);
        return plusTimes<factor.whole>(mulRound15(x, fill<I16<N>>(kRounding)), x);
    }
    // What a pair of chroma samples 0..255 adds to luma, for R, G and B.
    template <int N>
    PXL_INLINE static Channels3<I16<N>> terms(I16<N> sampleU, I16<N> sampleV) {
        const auto middle = fill<I16<N>>(128);
        const auto u = subWrap(sampleU, middle), v = subWrap(sampleV, middle);
        return {term<k.vToR>(v), sumQ16<k.uToG, k.vToG>(u, v, 0), term<k.uToB>(u)};
    }
    template <int N>
    PXL_INLINE static Channels3<U8<N>> pixels(Channels3<U8<N>> p) {
        const auto y = widen(p.c0), u = widen(p.c1), v = widen(p.c2);
        const auto low = terms(u.low, v.low), high = terms(u.high, v.high);
        return {packSatU8(addWrap(y.low, low.c0), addWrap(y.high, high.c0)),
                packSatU8(addWrap(y.low, low.c1), addWrap(y.high, high.c1)),
                packSatU8(addWrap(y.low, low.c2), addWrap(y.high, high.c2))};
    }
    // Pixels that share the chroma of their pair of columns.
    template <int N>
    PXL_INLINE static Channels3<EvenOdd<I16<N>>> pairs(U8<N> luma, Channels3<I16<N>> t) {
        const auto y = evenOdd(luma);
        return {{addWrap(y.even, t.c0), addWrap(y.odd, t.c0)},
                {addWrap(y.even, t.c1), addWrap(y.odd, t.c1)},
                {addWrap(y.even, t.c2), addWrap(y.odd, t.c2)}};
    }
};

PXL_END_TARGET
