// The arithmetic from YCbCr 4:2:0 and 4:1:1 to RGB, on lanes of any width. What depends on chroma alone is computed
// once a chroma sample (terms) and added to the luma of each pixel that shares it (pixel). Luma comes as even and odd
// pixels, so that lane i of both belongs to chroma sample i.
#pragma once

#include "ycbcr/ycbcr_forms.h"

PXL_BEGIN_TARGET

// Samples 0..255.
template <class V>
struct Chroma {
    V cb, cr;
};

// ---- forms in 16-bit lanes with a few fractional bits

// No sum leaves 16 bits.
template <int kShift>
struct LanePixel {
    template <int N>
    PXL_INLINE static Rgb<I16<N>> pixel(I16<N> luma, Rgb<I16<N>> terms) {
        return {shiftRight<kShift>(addWrap(luma, terms.r)), shiftRight<kShift>(addWrap(luma, terms.g)),
                shiftRight<kShift>(addWrap(luma, terms.b))};
    }
};

// The group forms: samples are centred before they are multiplied. The rounding goes in with the chroma terms.
template <DecoderLanes k>
struct DecodeCentred : LanePixel<k.shift> {
    template <int N>
    PXL_INLINE static EvenOdd<I16<N>> luma(U8<N> y) {
        const auto y64 = evenOdd64(y);
        const auto black = fill<I16<N>>(16 * 64);
        return {term64<k.y>(subWrap(y64.even, black)), term64<k.y>(subWrap(y64.odd, black))};
    }
    template <int N>
    PXL_INLINE static Rgb<I16<N>> terms(Chroma<I16<N>> c) {
        const auto middle = fill<I16<N>>(128 * 64), rounding = fill<I16<N>>(k.rounding);
        const auto cb = subWrap(shiftLeft<6>(c.cb), middle), cr = subWrap(shiftLeft<6>(c.cr), middle);
        return {addWrap(rounding, term64<k.crToR>(cr)),
                subWrap(subWrap(rounding, term64<k.cbToG>(cb)), term64<k.crToG>(cr)),
                addWrap(rounding, term64<k.cbToB>(cb))};
    }
};

// The form of whole rows: samples are multiplied as they are, and black level, middle and rounding are one constant a
// channel.
struct DecoderFolded {
    int y, crToR, cbToG, crToG, cbToB;
    int offsetR, offsetG, offsetB;
};
// ITU-R BT.601. The two sets, which belong to the two orders of chroma, differ in last digits, and -1084 stands where
// -1089 would be expected. Deliberate.
constexpr DecoderFolded kDecodeCbCr = {4769, 6537, 1605, 3330, 8263, -1779, -1089, -2211};
constexpr DecoderFolded kDecodeCrCb = {4768, 6537, 1606, 3330, 8262, -1779, -1084, -2210};

template <DecoderFolded k>
struct DecodeFolded : LanePixel<3> {
    template <int N>
    PXL_INLINE static EvenOdd<I16<N>> luma(U8<N> y) {
        const auto y64 = evenOdd64(y);
        return {term64<k.y>(y64.even), term64<k.y>(y64.odd)};
    }
    template <int N>
    PXL_INLINE static Rgb<I16<N>> terms(Chroma<I16<N>> c) {
        const auto cb = shiftLeft<6>(c.cb), cr = shiftLeft<6>(c.cr);
        return {addWrap(term64<k.crToR>(cr), fill<I16<N>>(k.offsetR)),
                subWrap(subWrap(fill<I16<N>>(-k.offsetG), term64<k.cbToG>(cb)), term64<k.crToG>(cr)),
                addWrap(term64<k.cbToB>(cb), fill<I16<N>>(k.offsetB))};
    }
};

// ---- forms with one exact Q16 sum

// ITU-R BT.709
constexpr DecoderQ16 kDecode709CSC = {76284, 117506, -13959, -34996, 138609, 32768};
// The pixels of a 4:1:1 row that fill no group of four. Luma and Cb to G differ from kDecode601b: deliberate.
constexpr DecoderQ16 kDecode411Tail = {76294, 104595, -25625, -53281, 132186, 32768};
// Q12 coefficients, sixteen times.
constexpr DecoderQ16 kDecodeFilter = {16 * 4769, 16 * 6537, -16 * 1605, -16 * 3330, 16 * 8263, 0};

// whole + fraction / 65536
template <int N>
struct Q16 {
    I16<N> whole;
    U16<N> fraction;
};

// kFactor * x
template <int kFactor, int N>
PXL_INLINE Q16<N> timesQ16(I16<N> x) {
    constexpr SplitFactor factor = split(kFactor);
    const auto rest = fill<I16<N>>(factor.rest);
    return {plusTimes<factor.whole>(mulHigh(x, rest), x), as<U16<N>>(mulLow(x, rest))};
}

// The whole part of a + b + 1 / 65536: the average, which rounds up, has the carry of the fractions in its first bit.
template <int N>
PXL_INLINE I16<N> wholeOfSum(Q16<N> a, Q16<N> b) {
    const auto minusCarry = shiftRight<15>(as<I16<N>>(average(a.fraction, b.fraction)));
    return subWrap(addWrap(a.whole, b.whole), minusCarry);
}

template <DecoderQ16 k>
struct DecodeExact {
    static constexpr SplitFactor kLuma = split(k.y);
    static_assert(kLuma.whole == 1 && (k.rounding == 0 || k.rounding == 32768));
    // wholeOfSum() adds 1 / 65536 more than the formula says. Rounded luma leaves it out; sums that are not rounded
    // must be multiples of 16 / 65536, so that it changes nothing.
    static_assert(k.rounding != 0 ||
                  (k.y % 16 == 0 && k.crToR % 16 == 0 && k.cbToG % 16 == 0 && k.crToG % 16 == 0 && k.cbToB % 16 == 0));
    // For |y| < 256 no product kLuma.rest * y ends in 32768, so that taking 1 off after rounding needs no borrow.
    static_assert(kLuma.rest % 2 == 0 && kLuma.rest % 128 != 0);

    template <int N>
    PXL_INLINE static Q16<N> lumaOf(I16<N> sample) {
        const auto y = subWrap(sample, fill<I16<N>>(16));
        const auto rest = fill<I16<N>>(kLuma.rest);
        if constexpr (k.rounding == 0) return timesQ16<k.y>(y);
        return {addWrap(y, mulRound15(y, fill<I16<N>>(kLuma.rest / 2))),
                as<U16<N>>(addWrap(mulLow(y, rest), fill<I16<N>>(k.rounding - 1)))};
    }
    template <int N>
    PXL_INLINE static EvenOdd<Q16<N>> luma(U8<N> y) {
        const auto samples = evenOdd(y);
        return {lumaOf(samples.even), lumaOf(samples.odd)};
    }
    template <int N>
    PXL_INLINE static Rgb<Q16<N>> terms(Chroma<I16<N>> c) {
        const auto middle = fill<I16<N>>(128);
        const auto cb = subWrap(c.cb, middle), cr = subWrap(c.cr, middle);
        const auto b = timesQ16<k.cbToG>(cb), r = timesQ16<k.crToG>(cr);
        // multiples of 16 / 65536 can be summed with wholeOfSum() here too
        const auto green = k.rounding == 0 ? wholeOfSum(b, r) : sumQ16<k.cbToG, k.crToG>(cb, cr, 0);
        return {timesQ16<k.crToR>(cr), {green, addWrap(b.fraction, r.fraction)}, timesQ16<k.cbToB>(cb)};
    }
    template <int N>
    PXL_INLINE static Rgb<I16<N>> pixel(Q16<N> luma, Rgb<Q16<N>> terms) {
        return {wholeOfSum(luma, terms.r), wholeOfSum(luma, terms.g), wholeOfSum(luma, terms.b)};
    }
};

// ITU-R BT.709 with luma at unit gain: luma is whole, so chroma terms can be rounded alone.
struct Decode709Hdtv {
    static constexpr int kCrToR = 100925, kCbToG = -11993, kCrToG = -30081, kCbToB = 119013, kRounding = 32768;
    template <int N>
    PXL_INLINE static EvenOdd<I16<N>> luma(U8<N> y) {
        return evenOdd(y);
    }
    template <int N>
    PXL_INLINE static Rgb<I16<N>> terms(Chroma<I16<N>> c) {
        const auto middle = fill<I16<N>>(128);
        const auto cb = subWrap(c.cb, middle), cr = subWrap(c.cr, middle);
        return {sumQ16<kCrToR, 0>(cr, cr, kRounding), sumQ16<kCbToG, kCrToG>(cb, cr, kRounding),
                sumQ16<kCbToB, 0>(cb, cb, kRounding)};
    }
    template <int N>
    PXL_INLINE static Rgb<I16<N>> pixel(I16<N> luma, Rgb<I16<N>> terms) {
        return {addWrap(luma, terms.r), addWrap(luma, terms.g), addWrap(luma, terms.b)};
    }
};

PXL_END_TARGET
