#include "colorspace/yuv_encode_kernels.h"

#include "colorspace/yuv_forms.h"
#include "simd/pairs.h"
#include "simd/two_rows.h"

PXL_BEGIN_TARGET
namespace {

using ConstRow3 = RowOf<const Pxl8u, 3>;
using Row3 = RowOf<Pxl8u, 3>;
using Row2 = RowOf<Pxl8u, 2>;

// ---- 4:4:4

// Groups of kGroup pixels (16 or 8) with one form, the pixels left over with another.
template <int kGroup, class Group, class Tail, class Source, class Destination>
PXL_INLINE void encodeRow(Source src, Destination dst, Index width) {
    groupsAndTail<kGroup>(
        width, [&](auto how, Index x) PXL_BODY { dst.store(how, x, Group::pixels(src.load(how, x))); },
        [&](Part how, Index x) PXL_BODY { dst.store(how, x, Tail::pixels(src.load(how, x))); });
}

void c3(const Pxl8u* src, Pxl8u* dst, Index width) {
    encodeRow<16, EncodeQ15, EncodeTruncated>(PackedC3{src}, PackedC3{dst}, width);
}

void ac4(const Pxl8u* src, Pxl8u* dst, Index width) {
    encodeRow<16, EncodeRounded, EncodeRounded>(PackedAC4{src}, PackedAC4{dst}, width);
}

void c3ToPlanes(const Pxl8u* src, Row3 dst, Index width) {
    encodeRow<8, EncodeQ15, EncodeTruncated>(PackedC3{src}, Planar3{dst}, width);
}

void ac4ToPlanes(const Pxl8u* src, RowOf<Pxl8u, 4> dst, Index width) {
    const Planar3<Pxl8u> yuv = {{{dst.plane[0], dst.plane[1], dst.plane[2]}}};
    eachGroupAndPart<16>(width, [&](auto how, Index x) PXL_BODY {
        const auto px = load4(how, src + 4 * x);
        yuv.store(how, x, EncodeRounded::pixels(Channels3{px.c0, px.c1, px.c2}));
        store(how, dst.plane[3] + x, px.c3);
    });
}

void planes(ConstRow3 src, Row3 dst, Index width) {
    encodeRow<16, EncodeQ15, EncodePlanar>(Planar3{src}, Planar3{dst}, width);
}

// ---- 4:2:2 and 4:2:0

alignas(16) constexpr Bytes16 kInOrder = {{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15}};

// Pixels of which the last of a row stands a second time behind itself.
template <class Pixels>
struct LastRepeated {
    Pixels pixels;
    template <int N>
    PXL_INLINE Channels3<U8<N>> load(Blocks<N> how, Index x) const {
        return pixels.load(how, x);
    }
    PXL_INLINE Channels3<U8<1>> load(Part part, Index x) const {
        const auto px = pixels.load(part, x);
        const auto order = minimum(pattern<1>(kInOrder), fill<U8<1>>(part.count - 1));
        return {pick(px.c0, order), pick(px.c1, order), pick(px.c2, order)};
    }
};

template <int N>
PXL_INLINE Channels3<I16<N>> pairSums(Channels3<U8<N>> p) {
    const auto one = fill<U8<N>>(1);
    return {pairSumsSat(p.c0, one), pairSumsSat(p.c1, one), pairSumsSat(p.c2, one)};
}

template <int N>
PXL_INLINE Channels3<I16<N>> added(Channels3<I16<N>> a, Channels3<I16<N>> b) {
    return {addWrap(a.c0, b.c0), addWrap(a.c1, b.c1), addWrap(a.c2, b.c2)};
}

// Chroma of the pixels from x on, which comes as [U x 8, V x 8] in each block.
template <int N>
PXL_INLINE void storeChroma(Blocks<N> all, Row2 row, Index x, U8<N> chroma) {
    storeHalves(all, row.plane[0] + x / 2, row.plane[1] + x / 2, chroma);
}
PXL_INLINE void storeChroma(Part part, Row2 row, Index x, U8<1> chroma) {
    storeHalves(Part{(part.count + 1) / 2}, row.plane[0] + x / 2, row.plane[1] + x / 2, chroma);
}

struct Planar422 {
    Row3 row;
    template <class How>
    PXL_INLINE void store(How how, Index x, U8<How::kN> luma, U8<How::kN> chroma) const {
        PXL_TARGET::store(how, row.plane[0] + x, luma);
        storeChroma(how, {row.plane[1], row.plane[2]}, x, chroma);
    }
};

struct Packed422 {
    Pxl8u* row;
    template <class How>
    PXL_INLINE void store(How how, Index x, U8<How::kN> luma, U8<How::kN> chroma) const {
        storePairs(how, row + 2 * x, interleave(Channels2{luma, interleaveHalves(chroma)}));
    }
};

template <class Pixels, class Destination>
PXL_INLINE void encode422(Pixels src, Destination dst, Index width) {
    eachGroupAndPart<16>(width, [&](auto how, Index x) PXL_BODY {
        const auto px = LastRepeated<Pixels>{src}.load(how, x);
        constexpr int N = decltype(how)::kN;
        dst.store(how, x, LumaQ16<N>::of(px).template rounded<32768>(), chromaOfSums<1>(pairSums(px)));
    });
}

void c3To422Packed(const Pxl8u* src, Pxl8u* dst, Index width) { encode422(PackedC3{src}, Packed422{dst}, width); }
void c3To422(const Pxl8u* src, Row3 dst, Index width) { encode422(PackedC3{src}, Planar422{dst}, width); }
void planesTo422(ConstRow3 src, Row3 dst, Index width) { encode422(Planar3{src}, Planar422{dst}, width); }

template <LumaFactors k>
struct CutLuma {
    template <int N>
    PXL_INLINE static U8<N> of(Channels3<U8<N>> px) {
        return lumaOf<k>(px);
    }
};
struct RoundedLuma {
    template <int N>
    PXL_INLINE static U8<N> of(Channels3<U8<N>> px) {
        return LumaQ16<N>::of(px).template rounded<32768>();
    }
};

template <class Luma, class Pixels>
PXL_INLINE void encode420(Pixels upper, Pixels lower, RowPair<Pxl8u> luma, Row2 chroma, Index width) {
    const auto convert = [&](auto how, Index x) PXL_BODY {
        const auto above = LastRepeated<Pixels>{upper}.load(how, x), below = LastRepeated<Pixels>{lower}.load(how, x);
        store(how, luma.upper + x, Luma::of(above));
        store(how, luma.lower + x, Luma::of(below));
        storeChroma(how, chroma, x, chromaOfSums<2>(added(pairSums(above), pairSums(below))));
    };
    const Index x = eachGroupOfTwoRows(width, convert, [&](Index at) PXL_BODY {
        const auto px = loadTwoRows(upper, lower, at);
        storeTwoRows(luma.upper + at, luma.lower + at, Luma::of(px));
        const auto sums = pairSums(px);
        storeChroma(Blocks<1>{}, chroma, at,
                    chromaOfSums<2>(Channels3{sumOfRows(sums.c0), sumOfRows(sums.c1), sumOfRows(sums.c2)}));
    });
    if (x < width) convert(Part{static_cast<int>(width - x)}, x);
}

void c3To420(RowPair<const Pxl8u> src, RowPair<Pxl8u> luma, Row2 chroma, Index width) {
    encode420<CutLuma<kLumaQ14>>(PackedC3{src.upper}, PackedC3{src.lower}, luma, chroma, width);
}

void planesTo420(const RowPairOf<const Pxl8u, 3>& src, RowPair<Pxl8u> luma, Row2 chroma, Index width) {
    encode420<CutLuma<kLumaQ14Truncating>>(Planar3{src.upper}, Planar3{src.lower}, luma, chroma, width);
}

void bgrAC4To420(RowPair<const Pxl8u> src, RowPair<Pxl8u> luma, Row2 chroma, Index width) {
    encode420<RoundedLuma>(Reversed{PackedAC4{src.upper}}, Reversed{PackedAC4{src.lower}}, luma, chroma, width);
}

}  // namespace

constexpr YuvEncodeKernels kYuvEncodeKernels = {
    .c3 = c3,
    .ac4 = ac4,
    .c3ToPlanes = c3ToPlanes,
    .ac4ToPlanes = ac4ToPlanes,
    .planes = planes,
    .c3To422Packed = c3To422Packed,
    .c3To422 = c3To422,
    .planesTo422 = planesTo422,
    .c3To420 = c3To420,
    .planesTo420 = planesTo420,
    .bgrAC4To420 = bgrAC4To420,
};

PXL_END_TARGET
