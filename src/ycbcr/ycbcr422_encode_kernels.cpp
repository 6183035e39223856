#include "ycbcr/ycbcr422_encode_kernels.h"

#include "frame/gamma_tables.h"
#include "simd/lookup.h"
#include "simd/pairs.h"
#include "ycbcr/subsampled_encode_rows.h"
#include "ycbcr/ycbcr422_encode_forms.h"

PXL_BEGIN_TARGET
namespace {

using RgbC3 = PackedC3<const Pxl8u>;
using RgbP3 = Planar3<const Pxl8u>;
using BgrC3 = Reversed<RgbC3>;
using BgrAC4 = Reversed<PackedAC4<const Pxl8u>>;

// ---- destinations of the pixels from x on; chroma comes as [Cb x 8, Cr x 8] in each block

alignas(16) constexpr Bytes16 kUpperHalfFirst = {{8, 0, 9, 1, 10, 2, 11, 3, 12, 4, 13, 5, 14, 6, 15, 7}};

enum class Order { kYCbCr, kYCrCb, kCbYCr };

template <Order kOrder>
struct PackedPairs {
    Pxl8u* row;
    template <class How>
    PXL_INLINE void store(How how, Index x, U8<How::kN> luma, U8<How::kN> chroma) const {
        if constexpr (kOrder == Order::kYCrCb) {
            storePairs(how, row + 2 * x, interleave(Channels2{luma, pick(chroma, pattern<How::kN>(kUpperHalfFirst))}));
        } else if constexpr (kOrder == Order::kYCbCr) {
            storePairs(how, row + 2 * x, interleave(Channels2{luma, interleaveHalves(chroma)}));
        } else {
            storePairs(how, row + 2 * x, interleave(Channels2{interleaveHalves(chroma), luma}));
        }
    }
};

struct Planes422 {
    RowOf<Pxl8u, 3> row;
    template <class How>
    PXL_INLINE void store(How how, Index x, U8<How::kN> luma, U8<How::kN> chroma) const {
        PXL_TARGET::store(how, row.plane[0] + x, luma);
        PlanarChroma{{{row.plane[1], row.plane[2]}}}.store(how, x, chroma);
    }
};

// ---- rows

template <class Form, class How, class Destination>
PXL_INLINE void encode(How how, Index x, Rgb<U8<How::kN>> p, Destination dst) {
    dst.store(how, x, Form::luma(p), Form::chroma(pairSums<Form>(p)));
}

// Whole groups of kGroup pixels (16 or 8) with one form, the whole pairs left over with another.
template <class Group, class Tail, int kGroup = 16, class Pixels, class Destination>
PXL_INLINE void encodePairs(Pixels src, Destination dst, Index width) {
    const auto convert = [&]<class Form>(Form, auto how, Index x)
                             PXL_BODY { encode<Form>(how, x, loadRgb(src, how, x), dst); };
    groupsAndTail<kGroup>(
        width / 2 * 2, [&](auto how, Index x) PXL_BODY { convert(Group{}, how, x); },
        [&](Part how, Index x) PXL_BODY { convert(Tail{}, how, x); });
}

// An odd last pixel as a half pair: its luma and the first chroma sample of a pair of two such pixels.
template <class Form, class Pixels, class Destination>
PXL_INLINE void encodeHalfPair(Pixels src, Destination dst, Index width) {
    if (width % 2 == 0) return;
    const auto last = loadRgb(src, Part{1}, width - 1);
    const auto first = fill<U8<1>>(0);
    encode<Form>(Part{1}, width - 1, Rgb<U8<1>>{pick(last.r, first), pick(last.g, first), pick(last.b, first)}, dst);
}

template <EncoderSet k, Sharing s, class Pixels, class Destination>
PXL_INLINE void encodeShared(Pixels src, Destination dst, Index width) {
    encodePairs<EncodeShared<k, s>, EncodeSharedReference<k, s>>(src, dst, width);
}

template <EncoderSet k, Sharing s, class Pixels>
PXL_INLINE void encodeToCbycr(Pixels src, Pxl8u* dst, Index width) {
    encodeShared<k, s>(src, PackedPairs<Order::kCbYCr>{dst}, width);
    encodeHalfPair<EncodeSharedReference<k, s>>(src, PackedPairs<Order::kCbYCr>{dst}, width);
}

// ---- chroma filtered along the row

struct Unchanged {
    PXL_INLINE static Pxl8u of(Pxl8u sample) { return sample; }
    template <int N>
    PXL_INLINE Channels3<U8<N>> operator()(Channels3<U8<N>> px) const {
        return px;
    }
};

struct GammaCorrected {
    ByteTable table{kGammaForward8u};
    PXL_INLINE static Pxl8u of(Pxl8u sample) { return kGammaForward8u[sample]; }
    template <int N>
    PXL_INLINE Channels3<U8<N>> operator()(Channels3<U8<N>> px) const {
        if constexpr (N == 1) return lookUp(table, px);
        return {table[px.c0], table[px.c1], table[px.c2]};
    }
};

// Pixels with their samples through a curve.
template <class Curve>
struct Mapped {
    const Curve& curve;
    RgbC3 pixels;
    template <class How>
    PXL_INLINE auto load(How how, Index x) const {
        return curve(pixels.load(how, x));
    }
    // The pixel at x in every lane.
    PXL_INLINE Rgb<U8<1>> everywhere(Index x) const {
        const Pxl8u* p = pixels.row + 3 * x;
        return {fill<U8<1>>(Curve::of(p[0])), fill<U8<1>>(Curve::of(p[1])), fill<U8<1>>(Curve::of(p[2]))};
    }
};

// Lane i of the pairs before: lane i - 1, and for the first one the last lane of `before`.
template <int N>
PXL_INLINE I16<N> lanesBefore(I16<N> a, I16<1> before) {
    return as<I16<N>>(straddle<14>(blocksBefore(as<U8<N>>(a), as<U8<1>>(before)), as<U8<N>>(a)));
}

template <int N>
PXL_INLINE Rgb<I16<N>> ownThree(Rgb<U8<N>> p) {
    return {EncodeFiltered::ownThree(p.r), EncodeFiltered::ownThree(p.g), EncodeFiltered::ownThree(p.b)};
}
template <int N>
PXL_INLINE Rgb<I16<N>> second(Rgb<U8<N>> p) {
    return {EncodeFiltered::second(p.r), EncodeFiltered::second(p.g), EncodeFiltered::second(p.b)};
}
template <int N>
PXL_INLINE Rgb<I16<N>> lanesBefore(Rgb<I16<N>> a, Rgb<I16<1>> before) {
    return {lanesBefore(a.r, before.r), lanesBefore(a.g, before.g), lanesBefore(a.b, before.b)};
}
template <int N>
PXL_INLINE I16<1> lastBlock(I16<N> a) {
    return as<I16<1>>(PXL_TARGET::lastBlock(as<U8<N>>(a)));
}

template <class Pixels>
PXL_INLINE void encodeFiltered(Pixels src, Pxl8u* dst, Index width) {
    const PackedPairs<Order::kCbYCr> out = {dst};
    // the first pair of a row has no pixel before it and takes its own first one
    Rgb<I16<1>> before = second(src.everywhere(0));
    const Index x = eachGroup<16>(width, [&](auto how, Index at) PXL_BODY {
        const auto p = loadRgb(src, how, at);
        const auto seconds = second(p);
        out.store(how, at, EncodeFiltered::luma(p),
                  EncodeFiltered::chroma(added(ownThree(p), lanesBefore(seconds, before))));
        before = {lastBlock(seconds.r), lastBlock(seconds.g), lastBlock(seconds.b)};
    });
    using Reference = EncodeFilteredReference;
    if (x < width / 2 * 2) {
        const Part part = {static_cast<int>(width / 2 * 2 - x)};
        const auto p = loadRgb(src, part, x);
        const auto q = src.everywhere(x == 0 ? 0 : x - 1);
        const Rgb<U8<1>> shifted = {straddle<15>(q.r, p.r), straddle<15>(q.g, p.g), straddle<15>(q.b, p.b)};
        out.store(part, x, Reference::luma(p), Reference::filteredChroma(shifted, p));
    }
    encodeHalfPair<EncodeSharedReference<kEncode601, kPair>>(src, out, width);
}

// ---- the kernels

template <Sharing s, Order kOrder, class Pixels>
void toPairs(const Pxl8u* src, Pxl8u* dst, Index width) {
    encodeShared<kEncode601, s>(Pixels{src}, PackedPairs<kOrder>{dst}, width);
}

void rgbP3ToYcbcr(RowOf<const Pxl8u, 3> src, Pxl8u* dst, Index width) {
    using Tail = EncodeSharedReference<kEncode601, kPairOddLumaTruncated>;
    encodePairs<EncodePairsQ14, Tail, 8>(RgbP3{src}, PackedPairs<Order::kYCbCr>{dst}, width);
}

void rgbP3ToYcrcb(RowOf<const Pxl8u, 3> src, Pxl8u* dst, Index width) {
    encodeShared<kEncode601, kPairOddLumaTruncated>(RgbP3{src}, PackedPairs<Order::kYCrCb>{dst}, width);
}

template <Sharing s, class Pixels>
void toPlanes(const Pxl8u* src, RowOf<Pxl8u, 3> dst, Index width) {
    encodeShared<kEncode601, s>(Pixels{src}, Planes422{dst}, width);
}

template <EncoderSet k, Sharing s, class Pixels>
void toCbycr(const Pxl8u* src, Pxl8u* dst, Index width) {
    encodeToCbycr<k, s>(Pixels{src}, dst, width);
}

template <class Curve>
void toCbycrFiltered(const Pxl8u* src, Index srcStep, Pxl8u* dst, Index dstStep, PxlSize size) {
    const Curve curve;
    for (Index y = 0; y < size.height; ++y) {
        encodeFiltered(Mapped<Curve>{curve, RgbC3{src + y * srcStep}}, dst + y * dstStep, size.width);
    }
}

}  // namespace

constexpr Ycbcr422EncodeKernels kYcbcr422EncodeKernels = {
    .rgbC3ToYcbcr = toPairs<kPairOddLumaTruncated, Order::kYCbCr, RgbC3>,
    .rgbC3ToYcrcb = toPairs<kPairOddLumaTruncated, Order::kYCrCb, RgbC3>,
    .bgrC3ToYcbcr = toPairs<kPairEighth, Order::kYCbCr, BgrC3>,
    .bgrAC4ToYcbcr = toPairs<kPairEighth, Order::kYCbCr, BgrAC4>,
    .rgbP3ToYcbcr = rgbP3ToYcbcr,
    .rgbP3ToYcrcb = rgbP3ToYcrcb,
    .rgbC3P3 = toPlanes<kPair, RgbC3>,
    .bgrC3P3 = toPlanes<kPairEighth, BgrC3>,
    .bgrAC4P3 = toPlanes<kPairEighth, BgrAC4>,
    .rgbC3ToCbycrFiltered = toCbycrFiltered<Unchanged>,
    .rgbC3ToCbycrGamma = toCbycrFiltered<GammaCorrected>,
    .bgrAC4ToCbycr = toCbycr<kEncode601, kPairCrBelowHalf, BgrAC4>,
    .bgrC3ToCbycr709Hdtv = toCbycr<kEncode709Hdtv, kPairCrBelowHalf, BgrC3>,
    .bgrAC4ToCbycr709Hdtv = toCbycr<kEncode709Hdtv, kPairCrBelowHalf, BgrAC4>,
};

PXL_END_TARGET
