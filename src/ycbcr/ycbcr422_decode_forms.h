// The forms from YCbCr 4:2:2 to RGB that no other sampling has.
#pragma once

#include "ycbcr/subsampled_decode_forms.h"

PXL_BEGIN_TARGET

// ITU-R BT.601 in groups. The offsets hold no rounding term: with truncation they centre the sums as the sets with one
// exact sum do. Those of the last two are the ones that meet kDecodeUnsigned in most colours.
constexpr DecoderFolded kDecodePacked = {4768, 6537, 1606, 3330, 8262, -1783, -1085, -2214};
constexpr DecoderFolded kDecodePackedToPlanes = {4768, 6537, 1606, 3330, 8262, -1783, -1084, -2214};
constexpr DecoderFolded kDecodePackedToBgrAlpha = {4767, 6537, 1605, 3330, 8261, -1783, -1084, -2214};

// ITU-R BT.709 in groups: luma in Q4, chroma in Q13.
struct Decode709HdtvGroup : WholeLuma {
    static constexpr int kCrToR = 12616, kCbToG = 1499, kCrToG = 3760, kCbToB = 14877, kRounding = 8;
    template <class B, class R>
    PXL_INLINE static auto terms(Chroma<B, R> c) {
        using V = I16<B::kN>;
        const auto middle = fill<V>(128 * 64), rounding = fill<V>(kRounding);
        const auto cb = subWrap(times64(c.cb), middle), cr = subWrap(times64(c.cr), middle);
        return Rgb<V>{shiftRight<4>(addWrap(rounding, term64<kCrToR>(cr))),
                      shiftRight<4>(subWrap(subWrap(rounding, term64<kCbToG>(cb)), term64<kCrToG>(cr))),
                      shiftRight<4>(addWrap(rounding, term64<kCbToB>(cb)))};
    }
};

// The coefficients of kDecode601b on Cb and Cr as they are, with one constant a channel: below 76284 * 16 and 128
// times the chroma factors by 57, 14 and 13, so that sums are truncated with a small bias. Deliberate.
struct DecodeUnsigned {
    static constexpr DecoderQ16 k = kDecode601b;
    static constexpr int kOffsetR = -14608761, kOffsetG = 8887730, kOffsetB = -18140365;
    template <int N>
    PXL_INLINE static EvenOdd<I16<N>> luma(U8<N> y) {
        return evenOdd(y);
    }
    template <class B, class R>
    PXL_INLINE static auto terms(Chroma<B, R> c) {
        return Chroma{lanesOf(c.cb), lanesOf(c.cr)};
    }
    template <int N>
    PXL_INLINE static Rgb<I16<N>> pixel(I16<N> y, Chroma<I16<N>, I16<N>> c) {
        return {sumQ16<k.y, k.crToR>(y, c.cr, kOffsetR), sumQ16<k.y, k.cbToG, k.crToG>(y, c.cb, c.cr, kOffsetG),
                sumQ16<k.y, k.cbToB>(y, c.cb, kOffsetB)};
    }
};

PXL_END_TARGET
