// RGB to YCbCr 4:2:0 and 4:1:1: the exported functions.

#include "frame/checks.h"
#include "frame/target.h"
#include "frame/walk.h"
#include "pxlcc.h"
#include "ycbcr/ycbcr420_encode_kernels.h"

using namespace pxl;

namespace {

using Kernels = Ycbcr420EncodeKernels;

const Kernels& kernels() {
    return forActiveTarget(sse42::kYcbcr420EncodeKernels, avx2::kYcbcr420EncodeKernels, avx512::kYcbcr420EncodeKernels);
}

// The shapes; the checks stand in each function. Columns and rows that fill no block are left out and reported.

template <class Kernel, class Chroma>
PxlStatus to420(Kernel kernel, const Pxl8u* pSrc, int srcStep, Pxl8u* pLuma, int lumaStep, Chroma chroma,
                PxlSize size) {
    return eachRowPair(size, kernel, pairs(pSrc, srcStep), pairs(pLuma, lumaStep), chroma);
}

PxlStatus toPlanes(Kernels::ToPlanes kernel, const Pxl8u* pSrc, int srcStep, Pxl8u* const pDst[3], const int dstStep[3],
                   PxlSize roiSize) {
    return to420(kernel, pSrc, srcStep, pDst[0], dstStep[0], planes<2>(pDst + 1, dstStep + 1), roiSize);
}

// The same with Cr in the second plane and Cb in the third.
PxlStatus toPlanesCrFirst(Kernels::ToPlanes kernel, const Pxl8u* pSrc, int srcStep, Pxl8u* const pDst[3],
                          const int dstStep[3], PxlSize roiSize) {
    Pxl8u* const exchanged[3] = {pDst[0], pDst[2], pDst[1]};
    const int exchangedStep[3] = {dstStep[0], dstStep[2], dstStep[1]};
    return toPlanes(kernel, pSrc, srcStep, exchanged, exchangedStep, roiSize);
}

PxlStatus toSemiPlanar(Kernels::ToSemiPlanar kernel, const Pxl8u* pSrc, int srcStep, Pxl8u* pDstY, int dstYStep,
                       Pxl8u* pDstCbCr, int dstCbCrStep, PxlSize roiSize) {
    return to420(kernel, pSrc, srcStep, pDstY, dstYStep, view(pDstCbCr, dstCbCrStep), roiSize);
}

template <int kChannels>
PxlStatus to411(Kernels::To411 kernel, const Pxl8u* pSrc, int srcStep, Pxl8u* const pDst[3], const int dstStep[3],
                PxlSize roiSize) {
    eachRunOfGroups<16>({roiSize.width & ~3, roiSize.height}, kernel, packed<kChannels>(pSrc, srcStep),
                        packed<1>(pDst[0], dstStep[0]), chromaPlanes<4>(pDst + 1, dstStep + 1));
    return (roiSize.width & 3) != 0 ? pxlStatusOddSize : pxlStatusOk;
}

}  // namespace

PxlStatus pxliRGBToYCbCr420_8u_C3P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3], PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1), noNullIn<3>(pDst))) return bad;
    return toPlanes(kernels().rgbC3P3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToYCbCr420_8u_C3P2R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDstY, int dstYStep, Pxl8u* pDstCbCr,
                                     int dstCbCrStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pDstY, pDstCbCr, pSrc), atLeast(roiSize, 1, 1))) return bad;
    return toSemiPlanar(kernels().rgbC3P2, pSrc, srcStep, pDstY, dstYStep, pDstCbCr, dstCbCrStep, roiSize);
}

PxlStatus pxliRGBToYCbCr420_8u_C4P2R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDstY, int dstYStep, Pxl8u* pDstCbCr,
                                     int dstCbCrStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pDstY, pDstCbCr, pSrc), atLeast(roiSize, 1, 1))) return bad;
    return toSemiPlanar(kernels().rgbC4P2, pSrc, srcStep, pDstY, dstYStep, pDstCbCr, dstCbCrStep, roiSize);
}

PxlStatus pxliRGBToYCrCb420_8u_AC4P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3], PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), noNullIn<3>(pDst), atLeast(roiSize, 2, 2))) return bad;
    return toPlanesCrFirst(kernels().rgbAC4P3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliBGRToYCbCr420_8u_C3P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3], PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), noNullIn<3>(pDst), atLeast(roiSize, 2, 2))) return bad;
    return toPlanes(kernels().bgrC3P3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliBGRToYCbCr420_8u_AC4P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3], PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), noNullIn<3>(pDst), atLeast(roiSize, 2, 2))) return bad;
    return toPlanes(kernels().bgrAC4P3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliBGRToYCbCr420_8u_C3P2R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDstY, int dstYStep, Pxl8u* pDstCbCr,
                                     int dstCbCrStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pDstY, pDstCbCr, pSrc), atLeast(roiSize, 1, 1))) return bad;
    return toSemiPlanar(kernels().bgrC3P2, pSrc, srcStep, pDstY, dstYStep, pDstCbCr, dstCbCrStep, roiSize);
}

PxlStatus pxliBGRToYCbCr420_8u_AC4P2R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDstY, int dstYStep, Pxl8u* pDstCbCr,
                                      int dstCbCrStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pDstY, pDstCbCr, pSrc), atLeast(roiSize, 1, 1))) return bad;
    return toSemiPlanar(kernels().bgrAC4P2, pSrc, srcStep, pDstY, dstYStep, pDstCbCr, dstCbCrStep, roiSize);
}

PxlStatus pxliBGRToYCbCr420_709CSC_8u_C3P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3],
                                            PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), noNullIn<3>(pDst), atLeast(roiSize, 2, 2))) return bad;
    return toPlanes(kernels().bgr709C3P3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliBGRToYCbCr420_709CSC_8u_AC4P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3],
                                             PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), noNullIn<3>(pDst), atLeast(roiSize, 2, 2))) return bad;
    return toPlanes(kernels().bgr709AC4P3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliBGRToYCbCr420_709CSC_8u_C3P2R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDstY, int dstYStep, Pxl8u* pDstCbCr,
                                            int dstCbCrStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDstY, pDstCbCr), atLeast(roiSize, 2, 2))) return bad;
    return toSemiPlanar(kernels().bgr709C3P2, pSrc, srcStep, pDstY, dstYStep, pDstCbCr, dstCbCrStep, roiSize);
}

PxlStatus pxliBGRToYCbCr420_709CSC_8u_AC4P2R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDstY, int dstYStep,
                                             Pxl8u* pDstCbCr, int dstCbCrStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDstY, pDstCbCr), atLeast(roiSize, 2, 2))) return bad;
    return toSemiPlanar(kernels().bgr709AC4P2, pSrc, srcStep, pDstY, dstYStep, pDstCbCr, dstCbCrStep, roiSize);
}

PxlStatus pxliBGRToYCbCr420_709HDTV_8u_AC4P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3],
                                              PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), noNullIn<3>(pDst), atLeast(roiSize, 2, 2))) return bad;
    return toPlanes(kernels().bgr709HdtvAC4P3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliBGRToYCrCb420_8u_C3P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3], PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), noNullIn<3>(pDst), atLeast(roiSize, 2, 2))) return bad;
    return toPlanesCrFirst(kernels().bgrC3P3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliBGRToYCrCb420_8u_AC4P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3], PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), noNullIn<3>(pDst), atLeast(roiSize, 2, 2))) return bad;
    return toPlanesCrFirst(kernels().bgrAC4P3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliBGRToYCrCb420_709CSC_8u_C3P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3],
                                            PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), noNullIn<3>(pDst), atLeast(roiSize, 2, 2))) return bad;
    return toPlanesCrFirst(kernels().bgr709C3P3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliBGRToYCrCb420_709CSC_8u_AC4P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3],
                                             PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), noNullIn<3>(pDst), atLeast(roiSize, 2, 2))) return bad;
    return toPlanesCrFirst(kernels().bgr709AC4P3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliBGRToYCbCr411_8u_C3P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3], PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), noNullIn<3>(pDst), atLeast(roiSize, 4, 1))) return bad;
    return to411<3>(kernels().bgrC3To411, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliBGRToYCbCr411_8u_AC4P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3], PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), noNullIn<3>(pDst), atLeast(roiSize, 4, 1))) return bad;
    return to411<4>(kernels().bgrAC4To411, pSrc, srcStep, pDst, dstStep, roiSize);
}
