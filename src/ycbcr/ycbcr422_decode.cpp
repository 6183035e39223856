// YCbCr 4:2:2 to RGB: the exported functions.

#include "frame/checks.h"
#include "frame/target.h"
#include "frame/walk.h"
#include "pxlcc.h"
#include "ycbcr/ycbcr422_decode_kernels.h"

using namespace pxl;

namespace {

using Kernels = Ycbcr422DecodeKernels;

const Kernels& kernels() {
    return forActiveTarget(sse42::kYcbcr422DecodeKernels, avx2::kYcbcr422DecodeKernels, avx512::kYcbcr422DecodeKernels);
}

// The last pixel of an odd width has no chroma of its own and is left out.
PxlStatus fromPlanes(Kernels::FromPlanes kernel, const Pxl8u* pSrc[3], const int srcStep[3], Pxl8u* pDst, int dstStep,
                     PxlSize roiSize) {
    return eachRunOfGroups<16>({roiSize.width & ~1, roiSize.height}, kernel, subsampled<2>(pSrc, srcStep),
                               packed<3>(pDst, dstStep));
}

}  // namespace

PxlStatus pxliYCbCr422ToRGB_8u_C2C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return eachRunOfGroups<16>(roiSize, kernels().ycbcrToRgbC3, packed<2>(pSrc, srcStep), packed<3>(pDst, dstStep));
}

PxlStatus pxliYCbCr422ToRGB_8u_C2C4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                     Pxl8u aval) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return eachRunOfGroups<16>(roiSize, kernels().ycbcrToRgbC4, packed<2>(pSrc, srcStep), packed<4>(pDst, dstStep),
                               same(aval));
}

PxlStatus pxliYCbCr422ToRGB_8u_C2P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1), noNullIn<3>(pDst))) return bad;
    return eachRunOfGroups<16>(roiSize, kernels().ycbcrToRgbP3, packed<2>(pSrc, srcStep), planes<3>(pDst, dstStep));
}

PxlStatus pxliYCbCr422ToRGB_8u_P3C3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), noNullIn<3>(pSrc), atLeast(roiSize, 2, 1))) return bad;
    return fromPlanes(kernels().planesToRgbC3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliYCbCr422ToBGR_8u_C2C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return eachRunOfGroups<16>(roiSize, kernels().ycbcrToBgrC3, packed<2>(pSrc, srcStep), packed<3>(pDst, dstStep));
}

PxlStatus pxliYCbCr422ToBGR_8u_C2C4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                     Pxl8u aval) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 2, 1))) return bad;
    return eachRunOfGroups<16>(roiSize, kernels().ycbcrToBgrC4, packed<2>(pSrc, srcStep), packed<4>(pDst, dstStep),
                               same(aval));
}

PxlStatus pxliYCbCr422ToBGR_8u_P3C3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), noNullIn<3>(pSrc), atLeast(roiSize, 2, 1))) return bad;
    return fromPlanes(kernels().planesToBgrC3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliYCrCb422ToRGB_8u_C2C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return eachRunOfGroups<16>(roiSize, kernels().ycrcbToRgbC3, packed<2>(pSrc, srcStep), packed<3>(pDst, dstStep));
}

PxlStatus pxliYCrCb422ToRGB_8u_C2C4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                     Pxl8u aval) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return eachRunOfGroups<16>(roiSize, kernels().ycrcbToRgbC4, packed<2>(pSrc, srcStep), packed<4>(pDst, dstStep),
                               same(aval));
}

PxlStatus pxliYCrCb422ToRGB_8u_C2P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1), noNullIn<3>(pDst))) return bad;
    return eachRunOfGroups<16>(roiSize, kernels().ycrcbToRgbP3, packed<2>(pSrc, srcStep), planes<3>(pDst, dstStep));
}

PxlStatus pxliYCrCb422ToBGR_8u_C2C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return eachRunOfGroups<16>(roiSize, kernels().ycrcbToBgrC3, packed<2>(pSrc, srcStep), packed<3>(pDst, dstStep));
}

PxlStatus pxliYCrCb422ToBGR_8u_C2C4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                     Pxl8u aval) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return eachRunOfGroups<16>(roiSize, kernels().ycrcbToBgrC4, packed<2>(pSrc, srcStep), packed<4>(pDst, dstStep),
                               same(aval));
}

PxlStatus pxliCbYCr422ToRGB_8u_C2C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return eachRunOfGroups<16>(roiSize, kernels().cbycrToRgbC3, packed<2>(pSrc, srcStep), packed<3>(pDst, dstStep));
}

PxlStatus pxliCbYCr422ToBGR_8u_C2C4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                     Pxl8u aval) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return eachRunOfGroups<16>(roiSize, kernels().cbycrToBgrC4, packed<2>(pSrc, srcStep), packed<4>(pDst, dstStep),
                               same(aval));
}

PxlStatus pxliCbYCr422ToBGR_709HDTV_8u_C2C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep,
                                             PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return eachRunOfGroups<16>(roiSize, kernels().cbycr709HdtvToBgrC3, packed<2>(pSrc, srcStep),
                               packed<3>(pDst, dstStep));
}

PxlStatus pxliCbYCr422ToBGR_709HDTV_8u_C2C4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                             Pxl8u aval) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return eachRunOfGroups<16>(roiSize, kernels().cbycr709HdtvToBgrC4, packed<2>(pSrc, srcStep),
                               packed<4>(pDst, dstStep), same(aval));
}
