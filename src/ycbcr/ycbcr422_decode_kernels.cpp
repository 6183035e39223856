#include "ycbcr/ycbcr422_decode_kernels.h"

#include "simd/pairs.h"
#include "ycbcr/packed_decode_forms.h"
#include "ycbcr/subsampled_decode_rows.h"

PXL_BEGIN_TARGET
namespace {

// ---- packed rows: two bytes a pixel, of which one belongs to the pair

template <int N, class C>
struct LumaAndChroma {
    U8<N> luma;
    C chroma;
};
template <int N, class C>
LumaAndChroma(U8<N>, C) -> LumaAndChroma<N, C>;

// kFirst and kSecond: where the chroma samples of a pair stand in its four bytes.
struct LumaCbCr {
    using Order = PackedOrder<0, 0>;
    static constexpr int kFirst = 1, kSecond = 3;
    const Pxl8u* row;
    template <class How>
    PXL_INLINE auto load(How how, Index x) const {
        const auto px = separate(loadPairs(how, row + 2 * x));
        return LumaAndChroma{px.c0, cbCr(px.c1)};
    }
};

struct LumaCrCb {
    using Order = PackedOrder<0, 1>;
    static constexpr int kFirst = 1, kSecond = 3;
    const Pxl8u* row;
    template <class How>
    PXL_INLINE auto load(How how, Index x) const {
        const auto px = separate(loadPairs(how, row + 2 * x));
        return LumaAndChroma{px.c0, crCb(px.c1)};
    }
};

struct CbLumaCr {
    using Order = PackedOrder<1, 0>;
    static constexpr int kFirst = 0, kSecond = 2;
    const Pxl8u* row;
    template <class How>
    PXL_INLINE auto load(How how, Index x) const {
        const auto px = separate(loadPairs(how, row + 2 * x));
        return LumaAndChroma{px.c1, cbCr(px.c0)};
    }
};

// When the last pixel of an odd width takes its one chroma sample for the missing one as well, and not the sample of
// the pair before: in a row of a single pixel. kOnePairBefore asks for a single whole pair instead, so that a row of
// three does it and a row of one takes the byte that a pair before would have, in front of the row. Deliberate.
enum class Alone { kOnePixel, kOnePairBefore };

template <Alone kAlone, class Source>
PXL_INLINE Pxl8u missingChroma(const Pxl8u* row, Index width) {
    const Pxl8u* last = row + 2 * (width - 1);
    const bool alone = kAlone == Alone::kOnePixel ? width == 1 : width / 2 == 1;
    return alone ? last[Source::kFirst] : last[Source::kSecond - 4];
}

template <class Form, class How, class Source>
PXL_INLINE auto decodePacked(How how, Source source, Index x) {
    const auto px = source.load(how, x);
    return decode<Form>(px.luma, termsOf<Form>(px.chroma));
}

// The last pixels of a row, fewer than 16.
template <class Form, Alone kAlone, class Source, class Pixels>
PXL_INLINE void decodeLast(Source source, Pixels dst, Index x, Index width) {
    const int count = static_cast<int>(width - x);
    Pxl8u pairs[32] = {};
    __builtin_memcpy(pairs, source.row + 2 * x, 2 * static_cast<size_t>(count));
    if (count % 2 != 0) pairs[2 * (count - 1) + Source::kSecond] = missingChroma<kAlone, Source>(source.row, width);
    dst.store(Part{count}, x, decodePacked<Form>(Blocks<1>{}, Source{pairs}, 0));
}

// Whole groups of kGroup pixels (16 or 8) with one form, the pixels left over with another.
template <class Group, class Tail, int kGroup = 16, Alone kAlone = Alone::kOnePixel, class Source, class Pixels>
PXL_INLINE void decodePackedRow(Source source, Pixels dst, Index width) {
    groupsAndTail<kGroup>(
        width, [&](auto how, Index x) PXL_BODY { dst.store(how, x, decodePacked<Group>(how, source, x)); },
        [&](Part, Index x) PXL_BODY { decodeLast<Tail, kAlone>(source, dst, x, width); });
}

// The same values by the shorter way to bytes of single pixels. Four blocks, which have permutes across a vector, take
// the usual one.
template <class Form, class Source, class How>
PXL_INLINE auto decodePackedBytes(How how, Source source, Index x) {
    constexpr int N = How::kN;
    if constexpr (N == 4) {
        return decodePacked<Form>(how, source, x);
    } else {
        U8<N> halves[2];
        loadBlocks(how, source.row + 2 * x, halves);
        using Order = typename Source::Order;
        const auto low = decodePacked<Form, Order>(halves[0]), high = decodePacked<Form, Order>(halves[1]);
        return Channels3{packSatU8(low.r, high.r), packSatU8(low.g, high.g), packSatU8(low.b, high.b)};
    }
}

// Four channels, or planes.
template <class Group, class Tail, class Source, class Pixels>
PXL_INLINE void decodePackedToBytes(Source source, Pixels dst, Index width) {
    groupsAndTail<16>(
        width, [&](auto how, Index x) PXL_BODY { dst.store(how, x, decodePackedBytes<Group>(how, source, x)); },
        [&](Part, Index x) PXL_BODY { decodeLast<Tail, Alone::kOnePixel>(source, dst, x, width); });
}

using CentredQ12 = DecodeCentred<kDecodeQ12>;
using CentredQ13 = DecodeCentred<kDecodeQ13>;
using Packed = DecodeFolded<kDecodePacked>;
using PackedToPlanes = DecodeFolded<kDecodePackedToPlanes>;
using PackedToBgrAlpha = DecodeFolded<kDecodePackedToBgrAlpha>;
using Exact601 = DecodeExact<kDecode601>;
using Exact601b = DecodeExact<kDecode601b>;

template <class Source, class Pixels>
PXL_INLINE void decodeByPairs(Source source, Pixels dst, Index width) {
    decodePackedRow<CentredQ12, Exact601, 8, Alone::kOnePairBefore>(source, dst, width);
}

// The last pixel of an odd width alone is written as B,G,R: deliberate.
void ycbcrToRgbC3(const Pxl8u* src, Pxl8u* dst, Index width) {
    decodeByPairs(LumaCbCr{src}, rgb(dst), width);
    if (width % 2 == 0) return;
    Pxl8u* last = dst + 3 * (width - 1);
    const Pxl8u red = last[0];
    last[0] = last[2];
    last[2] = red;
}

void ycbcrToBgrC3(const Pxl8u* src, Pxl8u* dst, Index width) { decodeByPairs(LumaCbCr{src}, bgr(dst), width); }

void ycrcbToRgbC3(const Pxl8u* src, Pxl8u* dst, Index width) {
    decodePackedRow<Packed, Exact601b>(LumaCrCb{src}, rgb(dst), width);
}

void ycrcbToBgrC3(const Pxl8u* src, Pxl8u* dst, Index width) {
    decodePackedRow<Packed, Exact601b>(LumaCrCb{src}, bgr(dst), width);
}

void cbycrToRgbC3(const Pxl8u* src, Pxl8u* dst, Index width) { decodeByPairs(CbLumaCr{src}, rgb(dst), width); }

void cbycr709HdtvToBgrC3(const Pxl8u* src, Pxl8u* dst, Index width) {
    decodePackedRow<Decode709HdtvGroup, Decode709Hdtv>(CbLumaCr{src}, bgr(dst), width);
}

void ycbcrToRgbC4(const Pxl8u* src, Pxl8u* dst, Pxl8u alpha, Index width) {
    decodePackedToBytes<Packed, Exact601b>(LumaCbCr{src}, rgb(dst, alpha), width);
}

void ycbcrToBgrC4(const Pxl8u* src, Pxl8u* dst, Pxl8u alpha, Index width) {
    decodePackedToBytes<PackedToBgrAlpha, DecodeUnsigned>(LumaCbCr{src}, bgr(dst, alpha), width);
}

void ycrcbToRgbC4(const Pxl8u* src, Pxl8u* dst, Pxl8u alpha, Index width) {
    decodePackedToBytes<Packed, Exact601b>(LumaCrCb{src}, rgb(dst, alpha), width);
}

void ycrcbToBgrC4(const Pxl8u* src, Pxl8u* dst, Pxl8u alpha, Index width) {
    decodePackedToBytes<Packed, Exact601b>(LumaCrCb{src}, bgr(dst, alpha), width);
}

void cbycrToBgrC4(const Pxl8u* src, Pxl8u* dst, Pxl8u alpha, Index width) {
    decodePackedToBytes<CentredQ13, Exact601>(CbLumaCr{src}, bgr(dst, alpha), width);
}

void cbycr709HdtvToBgrC4(const Pxl8u* src, Pxl8u* dst, Pxl8u alpha, Index width) {
    decodePackedToBytes<Decode709HdtvGroup, Decode709Hdtv>(CbLumaCr{src}, bgr(dst, alpha), width);
}

void ycbcrToRgbP3(const Pxl8u* src, RowOf<Pxl8u, 3> dst, Index width) {
    decodePackedToBytes<PackedToPlanes, DecodeUnsigned>(LumaCbCr{src}, Planar3{dst}, width);
}

void ycrcbToRgbP3(const Pxl8u* src, RowOf<Pxl8u, 3> dst, Index width) {
    decodePackedToBytes<PackedToPlanes, DecodeUnsigned>(LumaCrCb{src}, Planar3{dst}, width);
}

template <class Pixels>
PXL_INLINE void decodePlanes(RowOf<const Pxl8u, 3> src, Pixels dst, Index width) {
    const ChromaPlanes chroma = {{{src.plane[1], src.plane[2]}}};
    decodeRows<CentredQ12, DecodeUnsigned>(Rows<1, ChromaPlanes, Pixels>{{src.plane[0]}, chroma, {dst}}, width);
}

void planesToRgbC3(RowOf<const Pxl8u, 3> src, Pxl8u* dst, Index width) { decodePlanes(src, rgb(dst), width); }

void planesToBgrC3(RowOf<const Pxl8u, 3> src, Pxl8u* dst, Index width) { decodePlanes(src, bgr(dst), width); }

}  // namespace

constexpr Ycbcr422DecodeKernels kYcbcr422DecodeKernels = {
    .ycbcrToRgbC3 = ycbcrToRgbC3,
    .ycbcrToBgrC3 = ycbcrToBgrC3,
    .ycrcbToRgbC3 = ycrcbToRgbC3,
    .ycrcbToBgrC3 = ycrcbToBgrC3,
    .cbycrToRgbC3 = cbycrToRgbC3,
    .cbycr709HdtvToBgrC3 = cbycr709HdtvToBgrC3,
    .ycbcrToRgbC4 = ycbcrToRgbC4,
    .ycbcrToBgrC4 = ycbcrToBgrC4,
    .ycrcbToRgbC4 = ycrcbToRgbC4,
    .ycrcbToBgrC4 = ycrcbToBgrC4,
    .cbycrToBgrC4 = cbycrToBgrC4,
    .cbycr709HdtvToBgrC4 = cbycr709HdtvToBgrC4,
    .ycbcrToRgbP3 = unlessStreaming(ycbcrToRgbP3),
    .ycrcbToRgbP3 = unlessStreaming(ycrcbToRgbP3),
    .planesToRgbC3 = planesToRgbC3,
    .planesToBgrC3 = planesToBgrC3,
};

PXL_END_TARGET
