// RGB <-> YCbCr 4:4:4: the exported functions.

#include "frame/checks.h"
#include "frame/streaming.h"
#include "frame/walk.h"
#include "pxlcc.h"
#include "ycbcr/ycbcr444_kernels.h"

using namespace pxl;

namespace {

const Ycbcr444Kernels& kernels() {
    return forActiveTarget(sse42::kYcbcr444Kernels, avx2::kYcbcr444Kernels, avx512::kYcbcr444Kernels);
}

const Ycbcr444Kernels& kernels(const Streaming& how) {
    return how.choose(kernels(), avx2_streaming::kYcbcr444Kernels, avx512_streaming::kYcbcr444Kernels);
}

// The shapes that several functions share; the checks stand in each function. The groups of all are 8 or 16 pixels.

template <class Kernel, class... Alpha>
PxlStatus fromPlanes(Kernel Ycbcr444Kernels::*kernel, const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst, int dstStep,
                     PxlSize roiSize, Alpha... aval) {
    const auto dst = packed<3 + sizeof...(aval)>(pDst, dstStep);
    const Streaming how(dst, roiSize);
    return eachRunOfGroups<16>(roiSize, kernels(how).*kernel, planes<3>(pSrc, srcStep), dst, same(aval)...);
}

}  // namespace

PxlStatus pxliRGBToYCbCr_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return eachRunOfGroups<16>(roiSize, kernels().rgbToYcbcrC3, packed<3>(pSrc, srcStep), packed<3>(pDst, dstStep));
}

PxlStatus pxliRGBToYCbCr_8u_AC4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return eachRunOfGroups<16>(roiSize, kernels().rgbToYcbcrAC4, packed<4>(pSrc, srcStep), packed<4>(pDst, dstStep));
}

PxlStatus pxliRGBToYCbCr_8u_C3P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), noNullIn<3>(pDst), atLeast(roiSize, 1, 1))) return bad;
    return eachRunOfGroups<8>(roiSize, kernels().rgbToYcbcrC3P3, packed<3>(pSrc, srcStep), planes<3>(pDst, dstStep));
}

PxlStatus pxliRGBToYCbCr_8u_AC4P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), noNullIn<3>(pDst), atLeast(roiSize, 1, 1))) return bad;
    return eachRunOfGroups<8>(roiSize, kernels().rgbToYcbcrAC4P3, packed<4>(pSrc, srcStep), planes<3>(pDst, dstStep));
}

PxlStatus pxliRGBToYCbCr_8u_P3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst[3], int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1), noNullIn<3>(pSrc, pDst)))
        return bad;
    // Only fully aligned images get the group form; this changes values and is part of the definition.
    const bool aligned = multiplesOf16(pSrc[0], pSrc[1], pSrc[2], pDst[0], pDst[1], pDst[2]) &&
                         multiplesOf16(Index{srcStep}, Index{dstStep}, Index{roiSize.width});
    return eachRunOfGroups<1>(roiSize, aligned ? kernels().rgbToYcbcrP3Aligned : kernels().rgbToYcbcrP3,
                              planes<3>(pSrc, srcStep), planes<3>(pDst, dstStep));
}

PxlStatus pxliYCbCrToRGB_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return eachRunOfGroups<8>(roiSize, kernels().ycbcrToRgbC3, packed<3>(pSrc, srcStep), packed<3>(pDst, dstStep));
}

PxlStatus pxliYCbCrToRGB_8u_AC4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return eachRunOfGroups<1>(roiSize, kernels().ycbcrToRgbAC4, packed<4>(pSrc, srcStep), packed<4>(pDst, dstStep));
}

PxlStatus pxliYCbCrToRGB_8u_P3C3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), noNullIn<3>(pSrc), atLeast(roiSize, 1, 1))) return bad;
    return fromPlanes(&Ycbcr444Kernels::ycbcrToRgbP3C3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliYCbCrToRGB_8u_P3C4R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                  Pxl8u aval) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1), noNullIn<3>(pSrc))) return bad;
    return fromPlanes(&Ycbcr444Kernels::ycbcrToRgbP3C4, pSrc, srcStep, pDst, dstStep, roiSize, aval);
}

PxlStatus pxliYCbCrToRGB_8u_P3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst[3], int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1), noNullIn<3>(pSrc, pDst)))
        return bad;
    return eachRunOfGroups<8>(roiSize, kernels().ycbcrToRgbP3, planes<3>(pSrc, srcStep), planes<3>(pDst, dstStep));
}

PxlStatus pxliYCbCrToBGR_8u_P3C3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), noNullIn<3>(pSrc), atLeast(roiSize, 1, 1))) return bad;
    return fromPlanes(&Ycbcr444Kernels::ycbcrToBgrP3C3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliYCbCrToBGR_8u_P3C4R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                  Pxl8u aval) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), noNullIn<3>(pSrc), atLeast(roiSize, 1, 1))) return bad;
    return fromPlanes(&Ycbcr444Kernels::ycbcrToBgrP3C4, pSrc, srcStep, pDst, dstStep, roiSize, aval);
}

PxlStatus pxliYCbCrToBGR_709CSC_8u_P3C3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), noNullIn<3>(pSrc), atLeast(roiSize, 1, 1))) return bad;
    return fromPlanes(&Ycbcr444Kernels::ycbcr709ToBgrP3C3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliYCbCrToBGR_709CSC_8u_P3C4R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                         Pxl8u aval) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), noNullIn<3>(pSrc), atLeast(roiSize, 1, 1))) return bad;
    return fromPlanes(&Ycbcr444Kernels::ycbcr709ToBgrP3C4, pSrc, srcStep, pDst, dstStep, roiSize, aval);
}
