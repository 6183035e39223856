// The group forms from packed 4:2:2 to RGB on pixels as they stand in memory: each 16-bit lane holds the luma of a
// pixel in one byte and in the other Cb or Cr, which its pair shares. The same sums as from separate samples, with less
// moving about where every pixel becomes bytes of its own.
#pragma once

#include "ycbcr/ycbcr422_decode_forms.h"

PXL_BEGIN_TARGET

// kLuma: which byte is luma; kCb: which lane of a pair has Cb.
template <int kLuma, int kCb>
struct PackedOrder {
    static constexpr int kCbLane = kCb;
    // A constant for the lanes of Cb and one for those of Cr.
    template <int N>
    PXL_INLINE static I16<N> lanes(int ofCb, int ofCr) {
        return kCb == 0 ? fillPairs<N>(ofCb, ofCr) : fillPairs<N>(ofCr, ofCb);
    }
    template <int N>
    PXL_INLINE static I16<N> luma(U8<N> packed) {
        return kLuma == 0 ? evenOdd(packed).even : evenOdd(packed).odd;
    }
    template <int N>
    PXL_INLINE static I16<N> luma64(U8<N> packed) {
        return kLuma == 0 ? evenOdd64(packed).even : evenOdd64(packed).odd;
    }
    template <int N>
    PXL_INLINE static I16<N> chroma64(U8<N> packed) {
        return kLuma == 0 ? evenOdd64(packed).odd : evenOdd64(packed).even;
    }
    // 128 * (chroma - 128)
    template <int N>
    PXL_INLINE static I16<N> centred128(U8<N> packed) {
        const auto signedBytes = bitXor(packed, fill<U8<N>>(128));
        return pairSumsSat(kLuma == 0 ? fillBytePairs<N>(0, 128) : fillBytePairs<N>(128, 0), signedBytes);
    }
};

alignas(16) constexpr Bytes16 kEvenLaneTwice = {{0, 1, 0, 1, 4, 5, 4, 5, 8, 9, 8, 9, 12, 13, 12, 13}};
alignas(16) constexpr Bytes16 kOddLaneTwice = {{2, 3, 2, 3, 6, 7, 6, 7, 10, 11, 10, 11, 14, 15, 14, 15}};

template <int N>
PXL_INLINE I16<N> pickLanes(I16<N> a, const Bytes16& order) {
    return as<I16<N>>(pick(as<U8<N>>(a), pattern<N>(order)));
}

// The terms of B in the lanes of Cb and those of R in the lanes of Cr; those of G come from both lanes.
template <int N>
struct PairTerms {
    I16<N> blueAndRed, green;
};

// Factors for the lanes of Cb and for those of Cr.
struct PairFactors {
    int cbToB, crToR, cbToG, crToG;
};

// (chroma * factor) >> 16 and an offset for each channel.
template <class Order, PairFactors k, int N>
PXL_INLINE PairTerms<N> pairTerms(I16<N> chroma, int offsetB, int offsetR, int offsetG) {
    static_assert(k.cbToB < 32768 && k.crToR < 32768 && k.cbToG < 32768 && k.crToG < 32768);
    const auto blueAndRed = mulHigh(chroma, Order::template lanes<N>(k.cbToB, k.crToR));
    const auto green = mulHigh(chroma, Order::template lanes<N>(k.cbToG, k.crToG));
    return {addWrap(blueAndRed, Order::template lanes<N>(offsetB, offsetR)),
            subWrap(fill<I16<N>>(offsetG), withNeighbour(green))};
}

template <class Form>
struct FromPacked;

template <DecoderFolded k>
struct FromPacked<DecodeFolded<k>> : LanePixel<3> {
    template <class Order, int N>
    PXL_INLINE static I16<N> luma(U8<N> packed) {
        return term64<k.y>(Order::luma64(packed));
    }
    template <class Order, int N>
    PXL_INLINE static PairTerms<N> terms(U8<N> packed) {
        constexpr PairFactors kOf64 = {2 * k.cbToB, 2 * k.crToR, 2 * k.cbToG, 2 * k.crToG};
        return pairTerms<Order, kOf64>(Order::chroma64(packed), k.offsetB, k.offsetR, -k.offsetG);
    }
};

template <DecoderLanes k>
struct FromPacked<DecodeCentred<k>> : LanePixel<k.shift> {
    template <class Order, int N>
    PXL_INLINE static I16<N> luma(U8<N> packed) {
        return term64<k.y>(subWrap(Order::luma64(packed), fill<I16<N>>(16 * 64)));
    }
    template <class Order, int N>
    PXL_INLINE static PairTerms<N> terms(U8<N> packed) {
        constexpr PairFactors kOf128 = {k.cbToB, k.crToR, k.cbToG, k.crToG};
        return pairTerms<Order, kOf128>(Order::centred128(packed), k.rounding, k.rounding, k.rounding);
    }
};

template <>
struct FromPacked<Decode709HdtvGroup> : WholeLuma {
    using Form = Decode709HdtvGroup;
    template <class Order, int N>
    PXL_INLINE static I16<N> luma(U8<N> packed) {
        return Order::luma(packed);
    }
    template <class Order, int N>
    PXL_INLINE static PairTerms<N> terms(U8<N> packed) {
        constexpr PairFactors kOf128 = {Form::kCbToB, Form::kCrToR, Form::kCbToG, Form::kCrToG};
        const auto sums =
            pairTerms<Order, kOf128>(Order::centred128(packed), Form::kRounding, Form::kRounding, Form::kRounding);
        return {shiftRight<4>(sums.blueAndRed), shiftRight<4>(sums.green)};
    }
};

// R, G and B of the pixels of a vector.
template <class Form, class Order, int N>
PXL_INLINE Rgb<I16<N>> decodePacked(U8<N> packed) {
    const auto terms = FromPacked<Form>::template terms<Order>(packed);
    const auto even = pickLanes(terms.blueAndRed, kEvenLaneTwice), odd = pickLanes(terms.blueAndRed, kOddLaneTwice);
    const auto luma = FromPacked<Form>::template luma<Order>(packed);
    constexpr bool kBlueIsEven = Order::kCbLane == 0;
    return FromPacked<Form>::pixel(luma, Rgb<I16<N>>{kBlueIsEven ? odd : even, terms.green, kBlueIsEven ? even : odd});
}

PXL_END_TARGET
