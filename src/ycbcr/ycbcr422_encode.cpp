// RGB to YCbCr 4:2:2: the exported functions.

#include "frame/checks.h"
#include "frame/target.h"
#include "frame/walk.h"
#include "pxlcc.h"
#include "ycbcr/ycbcr422_encode_kernels.h"

using namespace pxl;

namespace {

const Ycbcr422EncodeKernels& kernels() {
    return forActiveTarget(sse42::kYcbcr422EncodeKernels, avx2::kYcbcr422EncodeKernels, avx512::kYcbcr422EncodeKernels);
}

}  // namespace

PxlStatus pxliRGBToYCbCr422_8u_C3C2R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return eachRunOfGroups<16>(roiSize, kernels().rgbC3ToYcbcr, packed<3>(pSrc, srcStep), packed<2>(pDst, dstStep));
}

PxlStatus pxliRGBToYCbCr422_8u_C3P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3], PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), noNullIn<3>(pDst), atLeast(roiSize, 2, 1))) return bad;
    return eachRunOfGroups<16>(roiSize, kernels().rgbC3P3, packed<3>(pSrc, srcStep), subsampled<2>(pDst, dstStep));
}

PxlStatus pxliRGBToYCbCr422_8u_P3C2R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1), noNullIn<3>(pSrc))) return bad;
    return eachRunOfGroups<16>(roiSize, kernels().rgbP3ToYcbcr, planes<3>(pSrc, srcStep), packed<2>(pDst, dstStep));
}

PxlStatus pxliRGBToYCrCb422_8u_C3C2R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return eachRunOfGroups<16>(roiSize, kernels().rgbC3ToYcrcb, packed<3>(pSrc, srcStep), packed<2>(pDst, dstStep));
}

PxlStatus pxliRGBToYCrCb422_8u_P3C2R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1), noNullIn<3>(pSrc))) return bad;
    return eachRunOfGroups<16>(roiSize, kernels().rgbP3ToYcrcb, planes<3>(pSrc, srcStep), packed<2>(pDst, dstStep));
}

PxlStatus pxliBGRToYCbCr422_8u_C3C2R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 2, 1))) return bad;
    return eachRunOfGroups<16>(roiSize, kernels().bgrC3ToYcbcr, packed<3>(pSrc, srcStep), packed<2>(pDst, dstStep));
}

PxlStatus pxliBGRToYCbCr422_8u_AC4C2R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 2, 1))) return bad;
    return eachRunOfGroups<16>(roiSize, kernels().bgrAC4ToYcbcr, packed<4>(pSrc, srcStep), packed<2>(pDst, dstStep));
}

PxlStatus pxliBGRToYCbCr422_8u_C3P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3], PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), noNullIn<3>(pDst), atLeast(roiSize, 2, 1))) return bad;
    return eachRunOfGroups<16>(roiSize, kernels().bgrC3P3, packed<3>(pSrc, srcStep), subsampled<2>(pDst, dstStep));
}

PxlStatus pxliBGRToYCbCr422_8u_AC4P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3], PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), noNullIn<3>(pDst), atLeast(roiSize, 2, 1))) return bad;
    return eachRunOfGroups<16>(roiSize, kernels().bgrAC4P3, packed<4>(pSrc, srcStep), subsampled<2>(pDst, dstStep));
}

PxlStatus pxliRGBToCbYCr422_8u_C3C2R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    kernels().rgbC3ToCbycrFiltered(pSrc, srcStep, pDst, dstStep, roiSize);
    return pxlStatusOk;
}

PxlStatus pxliRGBToCbYCr422Gamma_8u_C3C2R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    kernels().rgbC3ToCbycrGamma(pSrc, srcStep, pDst, dstStep, roiSize);
    return pxlStatusOk;
}

PxlStatus pxliBGRToCbYCr422_8u_AC4C2R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return eachRunOfGroups<16>(roiSize, kernels().bgrAC4ToCbycr, packed<4>(pSrc, srcStep), packed<2>(pDst, dstStep));
}

PxlStatus pxliBGRToCbYCr422_709HDTV_8u_C3C2R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep,
                                             PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return eachRunOfGroups<16>(roiSize, kernels().bgrC3ToCbycr709Hdtv, packed<3>(pSrc, srcStep),
                               packed<2>(pDst, dstStep));
}

PxlStatus pxliBGRToCbYCr422_709HDTV_8u_AC4C2R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep,
                                              PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return eachRunOfGroups<16>(roiSize, kernels().bgrAC4ToCbycr709Hdtv, packed<4>(pSrc, srcStep),
                               packed<2>(pDst, dstStep));
}
