// YCbCr 4:2:2 to RGB: the exported functions.

#include "frame/checks.h"
#include "frame/streaming.h"
#include "frame/walk.h"
#include "pxlcc.h"
#include "ycbcr/ycbcr422_decode_kernels.h"

using namespace pxl;

namespace {

using Kernels = Ycbcr422DecodeKernels;

const Kernels& kernels() {
    return forActiveTarget(sse42::kYcbcr422DecodeKernels, avx2::kYcbcr422DecodeKernels, avx512::kYcbcr422DecodeKernels);
}

const Kernels& kernels(const Streaming& how) {
    return how.choose(kernels(), avx2_streaming::kYcbcr422DecodeKernels, avx512_streaming::kYcbcr422DecodeKernels);
}

template <class Kernel, class... Alpha>
PxlStatus fromPacked(Kernel Kernels::*kernel, const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                     Alpha... aval) {
    const auto dst = packed<3 + sizeof...(aval)>(pDst, dstStep);
    const Streaming how(dst, roiSize);
    return eachRunOfGroups<16>(roiSize, kernels(how).*kernel, packed<2>(pSrc, srcStep), dst, same(aval)...);
}

// The last pixel of an odd width has no chroma of its own and is left out.
PxlStatus fromPlanes(Kernels::FromPlanes Kernels::*kernel, const Pxl8u* pSrc[3], const int srcStep[3], Pxl8u* pDst,
                     int dstStep, PxlSize roiSize) {
    const auto dst = packed<3>(pDst, dstStep);
    const Streaming how(dst, roiSize);
    return eachRunOfGroups<16>({roiSize.width & ~1, roiSize.height}, kernels(how).*kernel, subsampled<2>(pSrc, srcStep),
                               dst);
}

}  // namespace

PxlStatus pxliYCbCr422ToRGB_8u_C2C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return fromPacked(&Kernels::ycbcrToRgbC3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliYCbCr422ToRGB_8u_C2C4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                     Pxl8u aval) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return fromPacked(&Kernels::ycbcrToRgbC4, pSrc, srcStep, pDst, dstStep, roiSize, aval);
}

PxlStatus pxliYCbCr422ToRGB_8u_C2P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1), noNullIn<3>(pDst))) return bad;
    return eachRunOfGroups<16>(roiSize, kernels().ycbcrToRgbP3, packed<2>(pSrc, srcStep), planes<3>(pDst, dstStep));
}

PxlStatus pxliYCbCr422ToRGB_8u_P3C3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), noNullIn<3>(pSrc), atLeast(roiSize, 2, 1))) return bad;
    return fromPlanes(&Kernels::planesToRgbC3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliYCbCr422ToBGR_8u_C2C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return fromPacked(&Kernels::ycbcrToBgrC3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliYCbCr422ToBGR_8u_C2C4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                     Pxl8u aval) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 2, 1))) return bad;
    return fromPacked(&Kernels::ycbcrToBgrC4, pSrc, srcStep, pDst, dstStep, roiSize, aval);
}

PxlStatus pxliYCbCr422ToBGR_8u_P3C3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), noNullIn<3>(pSrc), atLeast(roiSize, 2, 1))) return bad;
    return fromPlanes(&Kernels::planesToBgrC3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliYCrCb422ToRGB_8u_C2C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return fromPacked(&Kernels::ycrcbToRgbC3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliYCrCb422ToRGB_8u_C2C4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                     Pxl8u aval) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return fromPacked(&Kernels::ycrcbToRgbC4, pSrc, srcStep, pDst, dstStep, roiSize, aval);
}

PxlStatus pxliYCrCb422ToRGB_8u_C2P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1), noNullIn<3>(pDst))) return bad;
    return eachRunOfGroups<16>(roiSize, kernels().ycrcbToRgbP3, packed<2>(pSrc, srcStep), planes<3>(pDst, dstStep));
}

PxlStatus pxliYCrCb422ToBGR_8u_C2C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return fromPacked(&Kernels::ycrcbToBgrC3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliYCrCb422ToBGR_8u_C2C4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                     Pxl8u aval) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return fromPacked(&Kernels::ycrcbToBgrC4, pSrc, srcStep, pDst, dstStep, roiSize, aval);
}

PxlStatus pxliCbYCr422ToRGB_8u_C2C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return fromPacked(&Kernels::cbycrToRgbC3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliCbYCr422ToBGR_8u_C2C4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                     Pxl8u aval) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return fromPacked(&Kernels::cbycrToBgrC4, pSrc, srcStep, pDst, dstStep, roiSize, aval);
}

PxlStatus pxliCbYCr422ToBGR_709HDTV_8u_C2C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep,
                                             PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return fromPacked(&Kernels::cbycr709HdtvToBgrC3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliCbYCr422ToBGR_709HDTV_8u_C2C4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                             Pxl8u aval) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return fromPacked(&Kernels::cbycr709HdtvToBgrC4, pSrc, srcStep, pDst, dstStep, roiSize, aval);
}
