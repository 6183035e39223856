// The arithmetic from YCbCr with subsampled chroma to RGB that more than one sampling uses, on lanes of any width. What
// depends on chroma alone is computed once a chroma sample (terms) and added to the luma of each pixel that shares it
// (pixel). Luma comes as even and odd pixels, so that lane i of both belongs to chroma sample i.
#pragma once

#include "ycbcr/ycbcr_forms.h"

PXL_BEGIN_TARGET

// ---- samples 0..255 in 16-bit lanes: alone (I16), or as loads leave them, the lower or the upper of two bytes

template <int N>
struct LowerBytes {
    static constexpr int kN = N;
    U8<N> bytes;
};
template <int N>
struct UpperBytes {
    static constexpr int kN = N;
    U8<N> bytes;
};

template <int N>
PXL_INLINE I16<N> lanesOf(I16<N> samples) {
    return samples;
}
template <int N>
PXL_INLINE I16<N> lanesOf(LowerBytes<N> samples) {
    return evenOdd(samples.bytes).even;
}
template <int N>
PXL_INLINE I16<N> lanesOf(UpperBytes<N> samples) {
    return evenOdd(samples.bytes).odd;
}

template <int N>
PXL_INLINE I16<N> times64(I16<N> samples) {
    return shiftLeft<6>(samples);
}
template <int N>
PXL_INLINE I16<N> times64(LowerBytes<N> samples) {
    return evenOdd64(samples.bytes).even;
}
template <int N>
PXL_INLINE I16<N> times64(UpperBytes<N> samples) {
    return evenOdd64(samples.bytes).odd;
}

template <class B, class R>
struct Chroma {
    static constexpr int kN = B::kN;
    B cb;
    R cr;
};
template <class B, class R>
Chroma(B, R) -> Chroma<B, R>;

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
    template <class B, class R>
    PXL_INLINE static auto terms(Chroma<B, R> c) {
        using V = I16<B::kN>;
        const auto middle = fill<V>(128 * 64), rounding = fill<V>(k.rounding);
        const auto cb = subWrap(times64(c.cb), middle), cr = subWrap(times64(c.cr), middle);
        return Rgb<V>{addWrap(rounding, term64<k.crToR>(cr)),
                      subWrap(subWrap(rounding, term64<k.cbToG>(cb)), term64<k.crToG>(cr)),
                      addWrap(rounding, term64<k.cbToB>(cb))};
    }
};

// Samples are multiplied as they are in Q12, and black level, middle and rounding are one constant a channel.
struct DecoderFolded {
    int y, crToR, cbToG, crToG, cbToB;
    int offsetR, offsetG, offsetB;
};

template <DecoderFolded k>
struct DecodeFolded : LanePixel<3> {
    template <int N>
    PXL_INLINE static EvenOdd<I16<N>> luma(U8<N> y) {
        const auto y64 = evenOdd64(y);
        return {term64<k.y>(y64.even), term64<k.y>(y64.odd)};
    }
    template <class B, class R>
    PXL_INLINE static auto terms(Chroma<B, R> c) {
        using V = I16<B::kN>;
        const auto cb = times64(c.cb), cr = times64(c.cr);
        return Rgb<V>{addWrap(term64<k.crToR>(cr), fill<V>(k.offsetR)),
                      subWrap(subWrap(fill<V>(-k.offsetG), term64<k.cbToG>(cb)), term64<k.crToG>(cr)),
                      addWrap(term64<k.cbToB>(cb), fill<V>(k.offsetB))};
    }
};

// ---- forms with one exact Q16 sum

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
    template <class B, class R>
    PXL_INLINE static auto terms(Chroma<B, R> c) {
        constexpr int N = B::kN;
        const auto middle = fill<I16<N>>(128);
        const auto cb = subWrap(lanesOf(c.cb), middle), cr = subWrap(lanesOf(c.cr), middle);
        const auto b = timesQ16<k.cbToG>(cb), r = timesQ16<k.crToG>(cr);
        // multiples of 16 / 65536 can be summed with wholeOfSum() here too
        const auto green = k.rounding == 0 ? wholeOfSum(b, r) : sumQ16<k.cbToG, k.crToG>(cb, cr, 0);
        return Rgb<Q16<N>>{timesQ16<k.crToR>(cr), {green, addWrap(b.fraction, r.fraction)}, timesQ16<k.cbToB>(cb)};
    }
    template <int N>
    PXL_INLINE static Rgb<I16<N>> pixel(Q16<N> luma, Rgb<Q16<N>> terms) {
        return {wholeOfSum(luma, terms.r), wholeOfSum(luma, terms.g), wholeOfSum(luma, terms.b)};
    }
};

// ---- luma at unit gain is whole, so chroma terms can be rounded alone

struct WholeLuma {
    template <int N>
    PXL_INLINE static EvenOdd<I16<N>> luma(U8<N> y) {
        return evenOdd(y);
    }
    template <int N>
    PXL_INLINE static Rgb<I16<N>> pixel(I16<N> luma, Rgb<I16<N>> terms) {
        return {addWrap(luma, terms.r), addWrap(luma, terms.g), addWrap(luma, terms.b)};
    }
};

// ITU-R BT.709
struct Decode709Hdtv : WholeLuma {
    static constexpr int kCrToR = 100925, kCbToG = -11993, kCrToG = -30081, kCbToB = 119013, kRounding = 32768;
    template <class B, class R>
    PXL_INLINE static auto terms(Chroma<B, R> c) {
        using V = I16<B::kN>;
        const auto middle = fill<V>(128);
        const auto cb = subWrap(lanesOf(c.cb), middle), cr = subWrap(lanesOf(c.cr), middle);
        return Rgb<V>{sumQ16<kCrToR, 0>(cr, cr, kRounding), sumQ16<kCbToG, kCrToG>(cb, cr, kRounding),
                      sumQ16<kCbToB, 0>(cb, cb, kRounding)};
    }
};

PXL_END_TARGET
