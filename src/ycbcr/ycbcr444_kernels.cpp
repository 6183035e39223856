#include "ycbcr/ycbcr444_kernels.h"

#include "simd/pixels.h"
#include "ycbcr/ycbcr444_forms.h"

PXL_BEGIN_TARGET
namespace {

template <class Form, int N>
PXL_INLINE Channels3<U8<N>> encode(Channels3<U8<N>> px) {
    const auto [low, high] = Form::halves(Rgb<U8<N>>{px.c0, px.c1, px.c2});
    return {packSatU8(low.y, high.y), packSatU8(low.cb, high.cb), packSatU8(low.cr, high.cr)};
}

template <class Form, int N>
PXL_INLINE Channels3<U8<N>> decode(Channels3<U8<N>> px) {
    const auto [low, high] = Form::halves(Ycc<U8<N>>{px.c0, px.c1, px.c2});
    return {packSatU8(low.r, high.r), packSatU8(low.g, high.g), packSatU8(low.b, high.b)};
}

template <int kGroup, class GroupForm, class TailForm, class Source, class Destination, class TailDestination>
PXL_INLINE void encodeRow(Source src, Destination dst, TailDestination tailDst, Index width) {
    groupsAndTail<kGroup>(
        width, [&](auto how, Index x) PXL_BODY { dst.store(how, x, encode<GroupForm>(src.load(how, x))); },
        [&](Part how, Index x) PXL_BODY { tailDst.store(how, x, encode<TailForm>(src.load(how, x))); });
}

template <int kGroup, class GroupForm, class TailForm, class Source, class Destination>
PXL_INLINE void decodeRow(Source src, Destination dst, Index width) {
    groupsAndTail<kGroup>(
        width, [&](auto how, Index x) PXL_BODY { dst.store(how, x, decode<GroupForm>(src.load(how, x))); },
        [&](Part how, Index x) PXL_BODY { dst.store(how, x, decode<TailForm>(src.load(how, x))); });
}

using DecodeQ12 = DecodeLanes<kDecodeQ12>;
using DecodeQ13 = DecodeLanes<kDecodeQ13>;
using DecodeQ13Truncating = DecodeLanes<kDecodeQ13Truncating>;
using Decode709 = DecodeLanes<kDecode709>;
using Decode601 = DecodeReference<kDecode601>;
using Decode601b = DecodeReference<kDecode601b>;
using Decode601Truncating = DecodeReference<kDecode601Truncating>;

void rgbToYcbcrC3(const Pxl8u* src, Pxl8u* dst, Index width) {
    encodeRow<16, EncodeQ14, EncodeReference>(PackedC3{src}, PackedC3{dst}, PackedC3{dst}, width);
}

// The groups clear the fourth byte and the tail leaves it: deliberate.
void rgbToYcbcrAC4(const Pxl8u* src, Pxl8u* dst, Index width) {
    encodeRow<16, EncodeQ14, EncodeReference>(PackedAC4{src}, PackedC4{dst, 0}, PackedAC4{dst}, width);
}

void rgbToYcbcrC3P3(const Pxl8u* src, Row3 dst, Index width) {
    encodeRow<8, EncodeQ16, EncodeReference>(PackedC3{src}, Planar3{dst}, Planar3{dst}, width);
}

void rgbToYcbcrAC4P3(const Pxl8u* src, Row3 dst, Index width) {
    encodeRow<8, EncodeQ16, EncodeReference>(PackedAC4{src}, Planar3{dst}, Planar3{dst}, width);
}

void rgbToYcbcrP3Aligned(ConstRow3 src, Row3 dst, Index width) {
    encodeRow<16, EncodeQ16, EncodeReference>(Planar3{src}, Planar3{dst}, Planar3{dst}, width);
}

void rgbToYcbcrP3(ConstRow3 src, Row3 dst, Index width) {
    encodeRow<16, EncodeReference, EncodeReference>(Planar3{src}, Planar3{dst}, Planar3{dst}, width);
}

void ycbcrToRgbC3(const Pxl8u* src, Pxl8u* dst, Index width) {
    decodeRow<8, DecodeQ12, Decode601>(PackedC3{src}, PackedC3{dst}, width);
}

void ycbcrToRgbAC4(const Pxl8u* src, Pxl8u* dst, Index width) {
    decodeRow<16, Decode601Truncating, Decode601Truncating>(PackedAC4{src}, PackedAC4{dst}, width);
}

void ycbcrToRgbP3C3(ConstRow3 src, Pxl8u* dst, Index width) {
    decodeRow<8, DecodeQ12, Decode601>(Planar3{src}, PackedC3{dst}, width);
}

void ycbcrToRgbP3C4(ConstRow3 src, Pxl8u* dst, Pxl8u alpha, Index width) {
    decodeRow<8, DecodeQ13, Decode601>(Planar3{src}, PackedC4{dst, alpha}, width);
}

void ycbcrToRgbP3(ConstRow3 src, Row3 dst, Index width) {
    decodeRow<8, DecodeQ13Truncating, Decode601b>(Planar3{src}, Planar3{dst}, width);
}

void ycbcrToBgrP3C3(ConstRow3 src, Pxl8u* dst, Index width) {
    decodeRow<8, DecodeQ12, Decode601>(Planar3{src}, Reversed{PackedC3{dst}}, width);
}

void ycbcrToBgrP3C4(ConstRow3 src, Pxl8u* dst, Pxl8u alpha, Index width) {
    decodeRow<16, DecodeQ13, DecodeQ13>(Planar3{src}, Reversed{PackedC4{dst, alpha}}, width);
}

void ycbcr709ToBgrP3C3(ConstRow3 src, Pxl8u* dst, Index width) {
    decodeRow<16, Decode709, Decode709>(Planar3{src}, Reversed{PackedC3{dst}}, width);
}

void ycbcr709ToBgrP3C4(ConstRow3 src, Pxl8u* dst, Pxl8u alpha, Index width) {
    decodeRow<16, Decode709, Decode709>(Planar3{src}, Reversed{PackedC4{dst, alpha}}, width);
}

}  // namespace

constexpr Ycbcr444Kernels kYcbcr444Kernels = {
    .rgbToYcbcrC3 = unlessStreaming(rgbToYcbcrC3),
    .rgbToYcbcrAC4 = unlessStreaming(rgbToYcbcrAC4),
    .rgbToYcbcrC3P3 = unlessStreaming(rgbToYcbcrC3P3),
    .rgbToYcbcrAC4P3 = unlessStreaming(rgbToYcbcrAC4P3),
    .rgbToYcbcrP3Aligned = unlessStreaming(rgbToYcbcrP3Aligned),
    .rgbToYcbcrP3 = unlessStreaming(rgbToYcbcrP3),
    .ycbcrToRgbC3 = unlessStreaming(ycbcrToRgbC3),
    .ycbcrToRgbAC4 = unlessStreaming(ycbcrToRgbAC4),
    .ycbcrToRgbP3C3 = ycbcrToRgbP3C3,
    .ycbcrToRgbP3C4 = ycbcrToRgbP3C4,
    .ycbcrToRgbP3 = unlessStreaming(ycbcrToRgbP3),
    .ycbcrToBgrP3C3 = ycbcrToBgrP3C3,
    .ycbcrToBgrP3C4 = ycbcrToBgrP3C4,
    .ycbcr709ToBgrP3C3 = ycbcr709ToBgrP3C3,
    .ycbcr709ToBgrP3C4 = ycbcr709ToBgrP3C4,
};

PXL_END_TARGET
