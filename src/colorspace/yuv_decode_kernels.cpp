#include "colorspace/yuv_decode_kernels.h"

#include "colorspace/yuv_forms.h"
#include "simd/pairs.h"
#include "simd/two_rows.h"

PXL_BEGIN_TARGET
namespace {

using ConstRow3 = RowOf<const Pxl8u, 3>;
using ConstRow2 = RowOf<const Pxl8u, 2>;
using Row3 = RowOf<Pxl8u, 3>;
using Rounding = Decode<kDecodeRounding>;
using Truncating = Decode<kDecodeTruncating>;

// ---- 4:4:4

template <class Form, class Source, class Destination>
PXL_INLINE void decodeRow(Source src, Destination dst, Index width) {
    eachGroupAndPart<16>(width, [&](auto how, Index x) PXL_BODY { dst.store(how, x, Form::pixels(src.load(how, x))); });
}

void c3(const Pxl8u* src, Pxl8u* dst, Index width) { decodeRow<Rounding>(PackedC3{src}, PackedC3{dst}, width); }
void ac4(const Pxl8u* src, Pxl8u* dst, Index width) { decodeRow<Rounding>(PackedAC4{src}, PackedAC4{dst}, width); }
void c3ToAC4(const Pxl8u* src, Pxl8u* dst, Index width) { decodeRow<Rounding>(PackedC3{src}, PackedAC4{dst}, width); }
void planesToC3(ConstRow3 src, Pxl8u* dst, Index width) { decodeRow<Truncating>(Planar3{src}, PackedC3{dst}, width); }
void planes(ConstRow3 src, Row3 dst, Index width) { decodeRow<Truncating>(Planar3{src}, Planar3{dst}, width); }

// ---- 4:2:2 and 4:2:0

PXL_INLINE ConstRow2 chromaOf(ConstRow3 src) { return {{src.plane[1], src.plane[2]}}; }

template <class How>
PXL_INLINE Channels3<I16<How::kN>> loadTerms(How how, ConstRow2 chroma, Index x) {
    return Rounding::terms(loadHalf(how, chroma.plane[0] + x / 2), loadHalf(how, chroma.plane[1] + x / 2));
}

template <class Destination>
PXL_INLINE void decode422(ConstRow3 src, Destination dst, Index width) {
    eachGroupAndPart<16>(width, [&](auto how, Index x) PXL_BODY {
        dst.store(how, x, Rounding::pairs(load(how, src.plane[0] + x), loadTerms(how, chromaOf(src), x)));
    });
}

void from422ToC3(ConstRow3 src, Pxl8u* dst, Index width) { decode422(src, PackedC3{dst}, width); }
void from422ToAC4(ConstRow3 src, Pxl8u* dst, Index width) { decode422(src, PackedAC4{dst}, width); }
void from422ToPlanes(ConstRow3 src, Row3 dst, Index width) { decode422(src, Planar3{dst}, width); }

// Y and U are the last pixel's own; V is that of the pair before it. A row of one pixel has no V: it gets 128.
PXL_INLINE void decodeLoneLast(const Pxl8u* src, Pxl8u* dst, Index x) {
    const Pxl8u pair[4] = {src[2 * x], src[2 * x + 1], 0, x > 0 ? src[2 * x - 1] : Pxl8u{128}};
    const auto yuv = separate(loadPairs(Part{2}, pair));
    const auto chroma = evenOdd(yuv.c1);
    PackedC3{dst}.store(Part{1}, x, Rounding::pairs(yuv.c0, Rounding::terms(chroma.even, chroma.odd)));
}

void packed422ToC3(const Pxl8u* src, Pxl8u* dst, Index width) {
    eachGroupAndPart<16>(width / 2 * 2, [&](auto how, Index x) PXL_BODY {
        const auto yuv = separate(loadPairs(how, src + 2 * x));
        const auto chroma = evenOdd(yuv.c1);
        PackedC3{dst}.store(how, x, Rounding::pairs(yuv.c0, Rounding::terms(chroma.even, chroma.odd)));
    });
    if (width % 2 != 0) decodeLoneLast(src, dst, width - 1);
}

template <class Destination>
PXL_INLINE void decode420(RowPair<const Pxl8u> luma, ConstRow2 chroma, Destination upper, Destination lower,
                          Index width) {
    const auto convert = [&](auto how, Index x) PXL_BODY {
        const auto terms = loadTerms(how, chroma, x);
        upper.store(how, x, Rounding::pairs(load(how, luma.upper + x), terms));
        lower.store(how, x, Rounding::pairs(load(how, luma.lower + x), terms));
    };
    const Index x = eachGroupOfTwoRows(width, convert, [&](Index at) PXL_BODY {
        const auto t = loadTerms(Blocks<1>{}, chroma, at);
        const Channels3<I16<kTwoRows>> terms = {forBothRows(t.c0), forBothRows(t.c1), forBothRows(t.c2)};
        storeTwoRows(upper, lower, at, Rounding::pairs(loadTwoRows(luma.upper + at, luma.lower + at), terms));
    });
    if (x < width) convert(Part{static_cast<int>(width - x)}, x);
}

void from420ToC3(RowPair<const Pxl8u> luma, ConstRow2 chroma, RowPair<Pxl8u> dst, Index width) {
    decode420(luma, chroma, PackedC3{dst.upper}, PackedC3{dst.lower}, width);
}

void from420ToAC4(RowPair<const Pxl8u> luma, ConstRow2 chroma, RowPair<Pxl8u> dst, Index width) {
    decode420(luma, chroma, PackedAC4{dst.upper}, PackedAC4{dst.lower}, width);
}

void from420ToBgrC3(RowPair<const Pxl8u> luma, ConstRow2 chroma, RowPair<Pxl8u> dst, Index width) {
    decode420(luma, chroma, Reversed{PackedC3{dst.upper}}, Reversed{PackedC3{dst.lower}}, width);
}

void from420ToPlanes(RowPair<const Pxl8u> luma, ConstRow2 chroma, const RowPairOf<Pxl8u, 3>& dst, Index width) {
    decode420(luma, chroma, Planar3{dst.upper}, Planar3{dst.lower}, width);
}

}  // namespace

constexpr YuvDecodeKernels kYuvDecodeKernels = {
    .c3 = unlessStreaming(c3),
    .ac4 = unlessStreaming(ac4),
    .c3ToAC4 = unlessStreaming(c3ToAC4),
    .planesToC3 = planesToC3,
    .planes = unlessStreaming(planes),
    .packed422ToC3 = packed422ToC3,
    .from422ToC3 = from422ToC3,
    .from422ToAC4 = unlessStreaming(from422ToAC4),
    .from422ToPlanes = unlessStreaming(from422ToPlanes),
    .from420ToC3 = from420ToC3,
    .from420ToAC4 = unlessStreaming(from420ToAC4),
    .from420ToBgrC3 = from420ToBgrC3,
    .from420ToPlanes = unlessStreaming(from420ToPlanes),
};

PXL_END_TARGET
