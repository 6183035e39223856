// The forms from RGB to YCbCr 4:2:2 that no other sampling has.
#pragma once

#include "ycbcr/subsampled_encode_forms.h"

PXL_BEGIN_TARGET

// Pairs of pixels. The functions differ in how they round: chroma by a half or by an eighth of a code, one Cr by two
// parts in 65536 less than a half, and the luma of odd pixels from packed RGB not at all. All deliberate.
constexpr Sharing kPair = {1, 65536, 65536, 32768};
constexpr Sharing kPairOddLumaTruncated = {1, 65536, 65536, 0};
constexpr Sharing kPairEighth = {1, 16384, 16384, 32768};
constexpr Sharing kPairCrBelowHalf = {1, 65536, 65534, 32768};

// Products rounded to 10.6 with one offset for luma and one, with a half, for chroma.
struct EncodePairsQ14 {
    template <int N>
    PXL_INLINE static U8<N> luma(Rgb<U8<N>> p) {
        const auto r = widenTimes256(p.r), g = widenTimes256(p.g), b = widenTimes256(p.b);
        return packSatU8(EncodeQ14::luma(halved(Rgb<U16<N>>{r.low, g.low, b.low})),
                         EncodeQ14::luma(halved(Rgb<U16<N>>{r.high, g.high, b.high})));
    }
    // times 64
    template <int N>
    PXL_INLINE static I16<N> pairSums(U8<N> x) {
        return pairSumsSat(x, fill<U8<N>>(64));
    }
    template <int N>
    PXL_INLINE static U8<N> chroma(Rgb<I16<N>> sums64) {
        return packSatU8(EncodeQ14::cb<32>(sums64), EncodeQ14::cr<32>(sums64));
    }
};

// Chroma filtered along the row: a quarter of the pixel before the pair, a half of its first and a quarter of its
// second pixel. Each of the three is cut off on its own, and 32767 / 65536 rounds their sum.

// In groups the same from sums of four.
constexpr Sharing kFiltered = {2, 4 * 32767, 4 * 32767, 32768};

struct EncodeFiltered : EncodeShared<kEncode601, kFiltered> {
    // The first of the pair twice and the second, and the second alone for the pair that follows.
    template <int N>
    PXL_INLINE static I16<N> ownThree(U8<N> x) {
        return weighedPairs<2, 1>(x);
    }
    template <int N>
    PXL_INLINE static I16<N> second(U8<N> x) {
        return weighedPairs<0, 1>(x);
    }
};

struct EncodeFilteredReference : EncodeSharedReference<kEncode601, kFiltered> {
    template <int N>
    PXL_INLINE static I16<N> component(Rgb<I16<N>> before, Rgb<I16<N>> first, Rgb<I16<N>> second, EncoderWeights w) {
        const auto b = weigh(before, w), f = weigh(first, w), s = weigh(second, w);
        const auto sum = [](I32<N> q, I32<N> p0, I32<N> p1) {
            return addWrap(addWrap(shiftRight<2>(q), shiftRight<1>(p0)), shiftRight<2>(p1));
        };
        return rounded<16>(Halves<I32<N>>{sum(b.low, f.low, s.low), sum(b.high, f.high, s.high)},
                           fill<I32<N>>(128 * 65536 + 32767));
    }
    // `before`: each pixel's predecessor.
    template <int N>
    PXL_INLINE static U8<N> filteredChroma(Rgb<U8<N>> before, Rgb<U8<N>> p) {
        const auto r = evenOdd(p.r), g = evenOdd(p.g), b = evenOdd(p.b);
        const Rgb<I16<N>> q = {evenOdd(before.r).even, evenOdd(before.g).even, evenOdd(before.b).even};
        const Rgb<I16<N>> p0 = {r.even, g.even, b.even}, p1 = {r.odd, g.odd, b.odd};
        return packSatU8(component(q, p0, p1, kCbQ16), component(q, p0, p1, kCrQ16));
    }
};

PXL_END_TARGET
