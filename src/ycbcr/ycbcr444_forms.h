// The arithmetic between RGB and YCbCr 4:4:4, on lanes of any width. A group form works in 16-bit lanes with a rounding
// of its own in each product; a reference form sums exact products in 32 bits and rounds once. The two may differ by
// one code.
#pragma once

#include "ycbcr/ycbcr_forms.h"

PXL_BEGIN_TARGET

// ---- encoders, ITU-R BT.601: R'G'B' 0..255 to Y 16..235, Cb and Cr 16..240

template <class V>
struct Ycc {
    V y, cb, cr;
};

// Q16 coefficients. Luma weighs 0.257, 0.504, 0.098.
struct EncoderWeights {
    int r, g, b;
};
constexpr EncoderWeights kLumaQ16 = {16843, 33030, 6423};
constexpr EncoderWeights kCbQ16 = {-9699, -19071, 28770};
constexpr EncoderWeights kCrQ16 = {28770, -24117, -4653};
constexpr int kLumaOffsetQ16 = 16 * 65536 + 32768;
constexpr int kChromaOffsetQ16 = 128 * 65536 + 32768;

// (w.r * r + w.g * g + w.b * b + offset) >> 16 from exact 32-bit sums. Green is split in two so that its factor fits 16
// bits.
template <int N>
PXL_INLINE I32<N> weighQ16(I16<N> rg, I16<N> gb, EncoderWeights w, int offset) {
    const int upperGreen = w.g / 2, lowerGreen = w.g - upperGreen;
    const auto sum = addWrap(pairSums(rg, fillPairs<N>(w.r, upperGreen)), pairSums(gb, fillPairs<N>(lowerGreen, w.b)));
    return shiftRight<16>(addWrap(sum, fill<I32<N>>(offset)));
}

template <int N>
PXL_INLINE I16<N> weighQ16(Rgb<I16<N>> p, EncoderWeights w, int offset) {
    return packSatI16(weighQ16(interleaveLow(p.r, p.g), interleaveLow(p.g, p.b), w, offset),
                      weighQ16(interleaveHigh(p.r, p.g), interleaveHigh(p.g, p.b), w, offset));
}

// The reference form: one rounding.
struct EncodeReference {
    template <int N>
    PXL_INLINE static Ycc<I16<N>> lanes(Rgb<I16<N>> p) {
        return {weighQ16(p, kLumaQ16, kLumaOffsetQ16), weighQ16(p, kCbQ16, kChromaOffsetQ16),
                weighQ16(p, kCrQ16, kChromaOffsetQ16)};
    }
    template <int N>
    PXL_INLINE static Halves<Ycc<I16<N>>> halves(Rgb<U8<N>> p) {
        const auto r = widen(p.r), g = widen(p.g), b = widen(p.b);
        return {lanes(Rgb<I16<N>>{r.low, g.low, b.low}), lanes(Rgb<I16<N>>{r.high, g.high, b.high})};
    }
};

// The group forms start from samples times 256, the cheapest way to widen a byte, and where they want signed products
// from samples times 128.
template <class Form, int N>
PXL_INLINE Halves<Ycc<I16<N>>> halvesFrom256(Rgb<U8<N>> p) {
    const auto r = widenTimes256(p.r), g = widenTimes256(p.g), b = widenTimes256(p.b);
    return {Form::lanes(Rgb<U16<N>>{r.low, g.low, b.low}), Form::lanes(Rgb<U16<N>>{r.high, g.high, b.high})};
}

template <int N>
PXL_INLINE Rgb<I16<N>> halved(Rgb<U16<N>> p256) {
    return {as<I16<N>>(shiftRight<1>(p256.r)), as<I16<N>>(shiftRight<1>(p256.g)), as<I16<N>>(shiftRight<1>(p256.b))};
}

// Group form of the planar encoders. Products keep 16 bits: unsigned 8.8 for luma, signed 9.7 for chroma.
struct EncodeQ16 {
    template <int N>
    PXL_INLINE static I16<N> chroma(Rgb<I16<N>> p128, EncoderWeights w) {
        const auto term = [](I16<N> x128, int factor) { return mulHigh(x128, fill<I16<N>>(factor)); };
        const auto sum = addSat(addSat(term(p128.r, w.r), term(p128.g, w.g)), term(p128.b, w.b));
        // |sum| stays below 14400, so that the rounding 64 and the offset 128 go in before the shift
        return shiftRight<7>(addSat(sum, fill<I16<N>>(64 + 128 * 128)));
    }
    template <int N>
    PXL_INLINE static Ycc<I16<N>> lanes(Rgb<U16<N>> p256) {
        const auto term = [](U16<N> x256, int factor) { return mulHigh(x256, fill<U16<N>>(factor)); };
        const auto luma = addSat(addSat(term(p256.r, kLumaQ16.r), term(p256.g, kLumaQ16.g)), term(p256.b, kLumaQ16.b));
        const auto p128 = halved(p256);
        // the sum stays below 56100: the same holds for its rounding 128 and the offset 16
        return {as<I16<N>>(shiftRight<8>(addSat(luma, fill<U16<N>>(128 + 16 * 256)))), chroma(p128, kCbQ16),
                chroma(p128, kCrQ16)};
    }
    template <int N>
    PXL_INLINE static Halves<Ycc<I16<N>>> halves(Rgb<U8<N>> p) {
        return halvesFrom256<EncodeQ16>(p);
    }
};

// Group form of the interleaved encoders: products rounded to 10.6.
struct EncodeQ14 {
    template <int N>
    PXL_INLINE static I16<N> term(I16<N> x128, int factor) {
        return mulRound15(x128, fill<I16<N>>(factor));
    }
    template <int N>
    PXL_INLINE static I16<N> luma(Rgb<I16<N>> p) {
        const auto sum = addWrap(addWrap(term(p.r, 4211), term(p.g, 8258)), term(p.b, 1606));
        return shiftRight<6>(addWrap(sum, fill<I16<N>>(16 * 64 + 32)));
    }
    template <int kRounding, int N>
    PXL_INLINE static I16<N> cb(Rgb<I16<N>> p) {
        const auto sum = subWrap(term(p.b, 7193), addWrap(term(p.r, 2425), term(p.g, 4768)));
        return shiftRight<6>(addWrap(sum, fill<I16<N>>(128 * 64 + kRounding)));
    }
    template <int kRounding, int N>
    PXL_INLINE static I16<N> cr(Rgb<I16<N>> p) {
        const auto sum = subWrap(term(p.r, 7193), addWrap(term(p.g, 6029), term(p.b, 1163)));
        return shiftRight<6>(addWrap(sum, fill<I16<N>>(128 * 64 + kRounding)));
    }
    template <int N>
    PXL_INLINE static Ycc<I16<N>> lanes(Rgb<U16<N>> p256) {
        const auto p = halved(p256);
        // 2, not 32: the terms have been rounded already. Deliberate.
        return {luma(p), cb<2>(p), cr<2>(p)};
    }
    template <int N>
    PXL_INLINE static Halves<Ycc<I16<N>>> halves(Rgb<U8<N>> p) {
        return halvesFrom256<EncodeQ14>(p);
    }
};

// ---- decoders: Y 16..235 and chroma around 128 to R'G'B' 0..255, saturated

// The second BT.601 set also exists without rounding. Deliberate.
constexpr DecoderQ16 kDecode601Truncating = {76284, 104595, -25690, -53281, 132186, 0};

// A reference form; DecoderQ16 as a type.
template <DecoderQ16 k>
struct DecodeReference {
    template <int N>
    PXL_INLINE static Rgb<I16<N>> lanes(Ycc<I16<N>> p) {
        const auto middle = fill<I16<N>>(128);
        const auto y = subWrap(p.y, fill<I16<N>>(16)), cb = subWrap(p.cb, middle), cr = subWrap(p.cr, middle);
        return {sumQ16<k.y, k.crToR>(y, cr, k.rounding), sumQ16<k.y, k.cbToG, k.crToG>(y, cb, cr, k.rounding),
                sumQ16<k.y, k.cbToB>(y, cb, k.rounding)};
    }
    template <int N>
    PXL_INLINE static Halves<Rgb<I16<N>>> halves(Ycc<U8<N>> p) {
        const auto y = widen(p.y), cb = widen(p.cb), cr = widen(p.cr);
        return {lanes(Ycc<I16<N>>{y.low, cb.low, cr.low}), lanes(Ycc<I16<N>>{y.high, cb.high, cr.high})};
    }
};

constexpr DecoderLanes kDecodeQ13Truncating = {9536, 13074, 3203, 6660, 16523, 0, 4};  // no rounding term: deliberate

// 64 * (samples - middle), which one multiplication widens and centres.
template <int N>
PXL_INLINE Halves<I16<N>> centred64(U8<N> samples, int middle) {
    const auto middles = fill<U8<N>>(middle);
    const auto factors = as<U8<N>>(fill<I16<N>>(64 - 64 * 256));  // bytes 64, -64
    return {pairSumsSat(interleaveLow(samples, middles), factors),
            pairSumsSat(interleaveHigh(samples, middles), factors)};
}

template <DecoderLanes k>
struct DecodeLanes {
    template <int N>
    PXL_INLINE static Rgb<I16<N>> lanes(Ycc<I16<N>> p64) {
        // no sum leaves 16 bits, so the rounding may go in with luma
        const auto luma = addSat(term64<k.y>(p64.y), fill<I16<N>>(k.rounding));
        return {shiftRight<k.shift>(addSat(luma, term64<k.crToR>(p64.cr))),
                shiftRight<k.shift>(subSat(subSat(luma, term64<k.cbToG>(p64.cb)), term64<k.crToG>(p64.cr))),
                shiftRight<k.shift>(addSat(luma, term64<k.cbToB>(p64.cb)))};
    }
    template <int N>
    PXL_INLINE static Halves<Rgb<I16<N>>> halves(Ycc<U8<N>> p) {
        const auto y = centred64(p.y, 16), cb = centred64(p.cb, 128), cr = centred64(p.cr, 128);
        return {lanes(Ycc<I16<N>>{y.low, cb.low, cr.low}), lanes(Ycc<I16<N>>{y.high, cb.high, cr.high})};
    }
};

PXL_END_TARGET
