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

// Both forms: pairSums() adds neighbours, and sums of four are the sum of two such. chroma() gives Cb of the eight
// lanes in the lower half of each block and Cr in the upper. chromaOfTwins() takes each sum in two neighbouring lanes
// and gives four Cb and four Cr in the lower half.

alignas(16) constexpr Bytes16 kEvenBytes = {{0, 2, 4, 6, 8, 10, 12, 14, 128, 128, 128, 128, 128, 128, 128, 128}};
alignas(16) constexpr Bytes16 kHighBytesOfTwins = {{1, 5, 9, 13, 3, 7, 11, 15, 128, 128, 128, 128, 128, 128, 128, 128}};

template <EncoderSet k, Sharing s>
struct EncodeSharedReference {
    static constexpr int kShift = 16 + s.logPixels;

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

// Samples, and sums of them, are scaled so far up that the products come out in 1/256 of a code:
// mulRound15(-128 * x, -2 * c) = (x * c + 64) >> 7,
// for a sum s of four mulRound15(32 * s, 2 * c) = (s * c + 256) >> 9, of two mulRound15(64 * s, 2 * c).
// Where 2 * c needs more than 16 bits, samples are centred: mulRound15(256 * (x - 128), c) = ((x * c + 64) >> 7) - c
// and, for four, mulRound15(64 * (s - 512), c) = ((s * c + 256) >> 9) - c. Offsets take back what centring took away.
template <EncoderSet k, Sharing s>
struct EncodeShared {
    static constexpr EncoderWeights kLuma = halves(k.luma), kCb = halves(k.cb), kCr = halves(k.cr);

    // ---- luma: no sum leaves 16 bits. Green, whose weight is the largest, is centred.

    static constexpr int kLumaOffset = kLuma.g + 256 * k.black + 128;
    static constexpr int kOddLumaOffset = kLuma.g + 256 * k.black + s.oddLumaRounding / 256;
    static_assert(2 * kLuma.r < 32768 && 2 * kLuma.b < 32768);

    template <int kWeight, int N>
    PXL_INLINE static EvenOdd<I16<N>> lumaProducts(U8<N> x) {
        const auto factor = fill<I16<N>>(-2 * kWeight);
        return {mulRound15(pairSumsSat(x, fillBytePairs<N>(-128, 0)), factor),
                mulRound15(pairSumsSat(x, fillBytePairs<N>(0, -128)), factor)};
    }
    template <int kWeight, int N>
    PXL_INLINE static EvenOdd<I16<N>> centredLumaProducts(U8<N> x) {
        const auto factor = fill<I16<N>>(kWeight), x256 = as<I16<N>>(bitXor(x, fill<U8<N>>(128)));
        return {mulRound15(shiftLeft<8>(x256), factor), mulRound15(bitAnd(x256, fill<I16<N>>(0xFF00)), factor)};
    }
    template <int N>
    PXL_INLINE static U8<N> luma(Rgb<U8<N>> p) {
        const auto r = lumaProducts<kLuma.r>(p.r), g = centredLumaProducts<kLuma.g>(p.g),
                   b = lumaProducts<kLuma.b>(p.b);
        const auto sum = [](I16<N> x, I16<N> y, I16<N> z, int offset) {
            return as<U16<N>>(addWrap(addWrap(x, y), addWrap(z, fill<I16<N>>(offset))));
        };
        const auto even = sum(r.even, b.even, g.even, kLumaOffset), odd = sum(r.odd, b.odd, g.odd, kOddLumaOffset);
        return limitCodes<k.limited>(as<U8<N>>(bitOr(shiftRight<8>(even), bitAnd(odd, fill<U16<N>>(0xFF00)))));
    }

    // ---- chroma

    static constexpr bool kCentred = 2 * kCb.b > 32767;
    static constexpr int kScale = (kCentred ? 256 : 128) >> s.logPixels, kFactor = kCentred ? 1 : 2;
    static constexpr int kCbOffset = (kCentred ? total(kCb) : 0) + (s.cbRounding >> (8 + s.logPixels));
    static constexpr int kCrOffset = (kCentred ? total(kCr) : 0) + (s.crRounding >> (8 + s.logPixels));

    // kEven times the even and kOdd times the odd samples, on the scale that chroma() takes when they are 1 together
    // for each of the pixels that share a sample.
    template <int kEven, int kOdd, int N>
    PXL_INLINE static I16<N> weighedPairs(U8<N> x) {
        if constexpr (kCentred) {
            return pairSumsSat(fillBytePairs<N>(kEven * kScale, kOdd * kScale), bitXor(x, fill<U8<N>>(128)));
        } else {
            return pairSumsSat(x, fillBytePairs<N>(kEven * kScale, kOdd * kScale));
        }
    }
    template <int N>
    PXL_INLINE static I16<N> pairSums(U8<N> x) {
        return weighedPairs<1, 1>(x);
    }
    // Only centred samples can leave 16 bits, and then the code is limited anyway.
    template <int N>
    PXL_INLINE static I16<N> sum(I16<N> a, I16<N> b) {
        if constexpr (kCentred) return addSat(a, b);
        return addWrap(a, b);
    }
    template <int N>
    PXL_INLINE static I16<N> weigh256(Rgb<I16<N>> p, Rgb<I16<N>> factors, I16<N> offset) {
        return sum(sum(sum(mulRound15(p.r, factors.r), mulRound15(p.g, factors.g)), mulRound15(p.b, factors.b)),
                   offset);
    }
    template <int N>
    PXL_INLINE static Rgb<I16<N>> factors(EncoderWeights cb, EncoderWeights cr) {
        return {fillPairs<N>(kFactor * cb.r, kFactor * cr.r), fillPairs<N>(kFactor * cb.g, kFactor * cr.g),
                fillPairs<N>(kFactor * cb.b, kFactor * cr.b)};
    }
    // From 256 * (chroma - 128), rounding included.
    template <int N>
    PXL_INLINE static U8<N> chromaCodes(U8<N> fromMiddle) {
        return limitCodes<k.limited>(bitXor(fromMiddle, fill<U8<N>>(128)));
    }
    template <int N>
    PXL_INLINE static U8<N> chroma(Rgb<I16<N>> sums) {
        const auto cb = weigh256(sums, factors<N>(kCb, kCb), fill<I16<N>>(kCbOffset));
        const auto cr = weigh256(sums, factors<N>(kCr, kCr), fill<I16<N>>(kCrOffset));
        return chromaCodes(highBytes(as<U16<N>>(cb), as<U16<N>>(cr)));
    }
    template <int N>
    PXL_INLINE static U8<N> chromaOfTwins(Rgb<I16<N>> sums) {
        const auto codes = weigh256(sums, factors<N>(kCb, kCr), fillPairs<N>(kCbOffset, kCrOffset));
        return chromaCodes(pick(as<U8<N>>(codes), pattern<N>(kHighBytesOfTwins)));
    }
};

PXL_END_TARGET
