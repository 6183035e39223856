// The arithmetic from RGB to YCbCr with subsampled chroma, on lanes of any width. Luma is made for each pixel, chroma
// for the sum of the pixels that share it: a block of 2 x 2 (4:2:0), a run of 4 x 1 (4:1:1) or a pair (4:2:2). The
// reference form sums exact products in 32 bits and rounds once; the group form works in 16-bit lanes, rounds each
// product to 1/256 of a code and stays within one code of it.
#pragma once

#include "ycbcr/ycbcr444_forms.h"

PXL_BEGIN_TARGET

// A set of coefficients in Q16.
struct EncoderSet {
    EncoderWeights luma, cb, cr;
    int black;     // the luma code of black
    bool limited;  // codes 0 and 255 give way to 1 and 254
};
constexpr EncoderSet kEncode601 = {kLumaQ16, kCbQ16, kCrQ16, 16, false};
// ITU-R BT.709 in studio range, and with full-range luma.
constexpr EncoderSet kEncode709 = {{11993, 40239, 4063}, {-6619, -22151, 28770}, {28770, -26149, -2621}, 16, false};
constexpr EncoderSet kEncode709Hdtv = {{13959, 46858, 4719}, {-7668, -25821, 33489}, {33489, -30409, -3080}, 0, true};

// What shares a chroma sample, and what is added to exact sums before the shift: to those of chroma, of 16 + logPixels
// fractional bits, and to the luma of odd pixels (even ones get 32768, a half).
struct Sharing {
    int logPixels;  // 4 or 2 pixels: 2 or 1
    int cbRounding, crRounding;
    int oddLumaRounding;
};
// One eighth of a code and not a half. Deliberate.
constexpr Sharing kFourPixels = {2, 32768, 32768, 32768};

template <bool kLimited, int N>
PXL_INLINE U8<N> limitCodes(U8<N> codes) {
    if constexpr (!kLimited) return codes;
    return minimum(maximum(codes, fill<U8<N>>(1)), fill<U8<N>>(254));
}

// w.r * r + w.g * g + w.b * b, exact. Coefficients go in two parts, which fit 16 bits.
template <int N>
PXL_INLINE Halves<I32<N>> weigh(Rgb<I16<N>> p, EncoderWeights w) {
    const auto factors = [](int c) { return fillPairs<N>(c / 2, c - c / 2); };
    const auto low = [&](I16<N> x, int c) { return pairSums(interleaveLow(x, x), factors(c)); };
    const auto high = [&](I16<N> x, int c) { return pairSums(interleaveHigh(x, x), factors(c)); };
    return {addWrap(addWrap(low(p.r, w.r), low(p.g, w.g)), low(p.b, w.b)),
            addWrap(addWrap(high(p.r, w.r), high(p.g, w.g)), high(p.b, w.b))};
}

// The sums plus offset, shifted.
template <int kShift, int N>
PXL_INLINE I16<N> rounded(Halves<I32<N>> sums, I32<N> offset) {
    return packSatI16(shiftRight<kShift>(addWrap(sums.low, offset)), shiftRight<kShift>(addWrap(sums.high, offset)));
}

// Both forms: centred() makes of samples what the other functions take; pairSums() adds neighbours, and sums of four
// are the sum of two such. chroma() gives Cb of the eight lanes in the lower half of each block and Cr in the upper.
// chromaOfTwins() takes each sum in two neighbouring lanes and gives four Cb and four Cr in the lower half.

alignas(16) constexpr Bytes16 kEvenBytes = {{0, 2, 4, 6, 8, 10, 12, 14, 128, 128, 128, 128, 128, 128, 128, 128}};
alignas(16) constexpr Bytes16 kHighBytesOfTwins = {{1, 5, 9, 13, 3, 7, 11, 15, 128, 128, 128, 128, 128, 128, 128, 128}};

template <EncoderSet k, Sharing s>
struct EncodeSharedReference {
    static constexpr int kShift = 16 + s.logPixels;

    template <int N>
    PXL_INLINE static Rgb<U8<N>> centred(Rgb<U8<N>> p) {
        return p;
    }
    template <int N>
    PXL_INLINE static U8<N> luma(Rgb<U8<N>> p) {
        const auto r = widen(p.r), g = widen(p.g), b = widen(p.b);
        const auto offset = fillPairs32<N>(k.black * 65536 + 32768, k.black * 65536 + s.oddLumaRounding);
        return limitCodes<k.limited>(
            packSatU8(rounded<16>(weigh(Rgb<I16<N>>{r.low, g.low, b.low}, k.luma), offset),
                      rounded<16>(weigh(Rgb<I16<N>>{r.high, g.high, b.high}, k.luma), offset)));
    }
    template <int N>
    PXL_INLINE static I16<N> pairSums(U8<N> x) {
        return pairSumsSat(x, fill<U8<N>>(1));
    }
    template <int N>
    PXL_INLINE static U8<N> chroma(Rgb<I16<N>> sums) {
        const auto offset = [](int rounding) { return fill<I32<N>>((128 << kShift) + rounding); };
        return limitCodes<k.limited>(packSatU8(rounded<kShift>(weigh(sums, k.cb), offset(s.cbRounding)),
                                               rounded<kShift>(weigh(sums, k.cr), offset(s.crRounding))));
    }
    template <int N>
    PXL_INLINE static U8<N> chromaOfTwins(Rgb<I16<N>> sums) {
        return pick(chroma(sums), pattern<N>(kEvenBytes));
    }
};

// Half a Q16 coefficient, which fits 16 bits where the coefficient does not; halves go away from zero.
constexpr int half(int coefficient) { return coefficient < 0 ? -half(-coefficient) : (coefficient + 1) / 2; }
constexpr EncoderWeights halves(EncoderWeights w) { return {half(w.r), half(w.g), half(w.b)}; }
constexpr int total(EncoderWeights w) { return w.r + w.g + w.b; }

// Samples are centred to x - 128 to fit signed bytes, and scaled so far up that the products come out in 1/256 of a
// code: mulRound15(256 * (x - 128), c) = ((x * c + 64) >> 7) - c
// and, for a sum s of four, mulRound15(64 * (s - 512), c) = ((s * c + 256) >> 9) - c,
// of two, mulRound15(128 * (s - 256), c) = ((s * c + 128) >> 8) - c.
// The offsets take back what centring took away.
template <EncoderSet k, Sharing s>
struct EncodeShared {
    static constexpr EncoderWeights kLuma = halves(k.luma), kCb = halves(k.cb), kCr = halves(k.cr);
    static constexpr int kLumaOffset = total(kLuma) + 256 * k.black + 128;
    static constexpr int kOddLumaOffset = total(kLuma) + 256 * k.black + s.oddLumaRounding / 256;

    template <int N>
    PXL_INLINE static Rgb<I16<N>> factors(EncoderWeights w) {
        return {fill<I16<N>>(w.r), fill<I16<N>>(w.g), fill<I16<N>>(w.b)};
    }
    // Where a sum saturates, the code is limited anyway or, for the luma of black, 1/256 of a code is lost in the
    // shift.
    template <int N>
    PXL_INLINE static I16<N> weigh256(Rgb<I16<N>> p, Rgb<I16<N>> factors) {
        return addSat(addSat(mulRound15(p.r, factors.r), mulRound15(p.g, factors.g)), mulRound15(p.b, factors.b));
    }

    template <int N>
    PXL_INLINE static Rgb<U8<N>> centred(Rgb<U8<N>> p) {
        const auto top = fill<U8<N>>(128);
        return {bitXor(p.r, top), bitXor(p.g, top), bitXor(p.b, top)};
    }
    // 256 * luma
    template <int N>
    PXL_INLINE static U16<N> luma256(U16<N> r, U16<N> g, U16<N> b) {
        const auto sum = weigh256(Rgb<I16<N>>{as<I16<N>>(r), as<I16<N>>(g), as<I16<N>>(b)}, factors<N>(kLuma));
        return as<U16<N>>(addWrap(sum, fillPairs<N>(kLumaOffset, kOddLumaOffset)));
    }
    template <int N>
    PXL_INLINE static U8<N> luma(Rgb<U8<N>> p) {
        const auto r = widenTimes256(p.r), g = widenTimes256(p.g), b = widenTimes256(p.b);
        return limitCodes<k.limited>(highBytes(luma256(r.low, g.low, b.low), luma256(r.high, g.high, b.high)));
    }
    // kEven times the even and kOdd times the odd samples; with both the same, sums of two on the scale that chroma()
    // takes.
    template <int kEven, int kOdd, int N>
    PXL_INLINE static I16<N> weighedPairs(U8<N> x) {
        return pairSumsSat(as<U8<N>>(fill<I16<N>>(kEven + 256 * kOdd)), x);
    }
    template <int N>
    PXL_INLINE static I16<N> pairSums(U8<N> x) {
        constexpr int kScale = 256 >> s.logPixels;
        return weighedPairs<kScale, kScale>(x);
    }
    // The sums become 256 * (chroma - 128), rounding included.
    static constexpr int kCbOffset = total(kCb) + (s.cbRounding >> (8 + s.logPixels));
    static constexpr int kCrOffset = total(kCr) + (s.crRounding >> (8 + s.logPixels));

    template <int N>
    PXL_INLINE static U8<N> chromaCodes(U8<N> fromMiddle) {
        return limitCodes<k.limited>(bitXor(fromMiddle, fill<U8<N>>(128)));
    }
    template <int N>
    PXL_INLINE static U8<N> chroma(Rgb<I16<N>> sums) {
        const auto cb = addSat(weigh256(sums, factors<N>(kCb)), fill<I16<N>>(kCbOffset));
        const auto cr = addSat(weigh256(sums, factors<N>(kCr)), fill<I16<N>>(kCrOffset));
        return chromaCodes(highBytes(as<U16<N>>(cb), as<U16<N>>(cr)));
    }
    template <int N>
    PXL_INLINE static U8<N> chromaOfTwins(Rgb<I16<N>> sums) {
        const Rgb<I16<N>> both = {fillPairs<N>(kCb.r, kCr.r), fillPairs<N>(kCb.g, kCr.g), fillPairs<N>(kCb.b, kCr.b)};
        const auto codes = addSat(weigh256(sums, both), fillPairs<N>(kCbOffset, kCrOffset));
        return chromaCodes(pick(as<U8<N>>(codes), pattern<N>(kHighBytesOfTwins)));
    }
};

PXL_END_TARGET
