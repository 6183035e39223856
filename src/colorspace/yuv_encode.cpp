// RGB to analog YUV: the exported functions.

#include "colorspace/yuv_dense.h"
#include "colorspace/yuv_encode_kernels.h"
#include "frame/checks.h"
#include "frame/target.h"
#include "pxlcc.h"

using namespace pxl;

namespace {

const YuvEncodeKernels& kernels() {
    return forActiveTarget(sse42::kYuvEncodeKernels, avx2::kYuvEncodeKernels, avx512::kYuvEncodeKernels);
}

// The shapes of 4:2:0; the checks stand in each function.

template <class Kernel, class Pairs>
PxlStatus to420(Kernel kernel, Pairs src, Pxl8u* const pDst[3], const int dstStep[3], PxlSize roiSize) {
    return eachRowPair(roiSize, kernel, src, pairs(pDst[0], dstStep[0]), planes<2>(pDst + 1, dstStep + 1));
}

template <class Kernel, class Pairs>
PxlStatus toDense420(Kernel kernel, Pairs src, Pxl8u* const pDst[3], PxlSize size) {
    return eachDenseRowPair(size, kernel, LumaRows<Pairs>{src}, LumaRows<PairView<Pxl8u>>{pairs(pDst[0], size.width)},
                            ChromaRows<Pxl8u, 2>{planes<2>(pDst + 1, denseChromaStep(size))});
}

}  // namespace

PxlStatus pxliRGBToYUV_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return eachRunOfGroups<16>(roiSize, kernels().c3, packed<3>(pSrc, srcStep), packed<3>(pDst, dstStep));
}

PxlStatus pxliRGBToYUV_8u_AC4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return eachRunOfGroups<16>(roiSize, kernels().ac4, packed<4>(pSrc, srcStep), packed<4>(pDst, dstStep));
}

PxlStatus pxliRGBToYUV_8u_C3P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1), noNullIn<3>(pDst))) return bad;
    return eachRunOfGroups<16>(roiSize, kernels().c3ToPlanes, packed<3>(pSrc, srcStep), planes<3>(pDst, dstStep));
}

PxlStatus pxliRGBToYUV_8u_AC4P4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[4], int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1), noNullIn<4>(pDst))) return bad;
    return eachRunOfGroups<16>(roiSize, kernels().ac4ToPlanes, packed<4>(pSrc, srcStep), planes<4>(pDst, dstStep));
}

PxlStatus pxliRGBToYUV_8u_P3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst[3], int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1), noNullIn<3>(pSrc, pDst)))
        return bad;
    return eachRunOfGroups<16>(roiSize, kernels().planes, planes<3>(pSrc, srcStep), planes<3>(pDst, dstStep));
}

PxlStatus pxliRGBToYUV422_8u_C3C2R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return eachRunOfGroups<16>(roiSize, kernels().c3To422Packed, packed<3>(pSrc, srcStep), packed<2>(pDst, dstStep));
}

PxlStatus pxliRGBToYUV422_8u_C3P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3], PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1), noNullIn<3>(pDst))) return bad;
    return eachRunOfGroups<2>(roiSize, kernels().c3To422, packed<3>(pSrc, srcStep), subsampled<2>(pDst, dstStep));
}

PxlStatus pxliRGBToYUV422_8u_P3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst[3], int dstStep[3], PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1), noNullIn<3>(pSrc, pDst)))
        return bad;
    return eachRunOfGroups<2>(roiSize, kernels().planesTo422, planes<3>(pSrc, srcStep), subsampled<2>(pDst, dstStep));
}

PxlStatus pxliRGBToYUV422_8u_C3P3(const Pxl8u* pSrc, Pxl8u* pDst[3], PxlSize imgSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(imgSize, 1, 1), noNullIn<3>(pDst))) return bad;
    return eachDenseRow(imgSize, kernels().c3To422, denseRgb(pSrc, imgSize), denseYuv(pDst, imgSize));
}

PxlStatus pxliRGBToYUV422_8u_P3(const Pxl8u* pSrc[3], Pxl8u* pDst[3], PxlSize imgSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(imgSize, 1, 1), noNullIn<3>(pSrc, pDst)))
        return bad;
    return eachDenseRow(imgSize, kernels().planesTo422, denseRgbPlanes(pSrc, imgSize), denseYuv(pDst, imgSize));
}

PxlStatus pxliRGBToYUV420_8u_C3P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3], PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1), noNullIn<3>(pDst))) return bad;
    return to420(kernels().c3To420, pairs(pSrc, srcStep), pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToYUV420_8u_P3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst[3], int dstStep[3], PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1), noNullIn<3>(pSrc, pDst)))
        return bad;
    return to420(kernels().planesTo420, pairs(planes<3>(pSrc, srcStep)), pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToYUV420_8u_C3P3(const Pxl8u* pSrc, Pxl8u* pDst[3], PxlSize imgSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(imgSize, 1, 1), noNullIn<3>(pDst))) return bad;
    return toDense420(kernels().c3To420, PairView<const Pxl8u>{denseRgb(pSrc, imgSize)}, pDst, imgSize);
}

PxlStatus pxliRGBToYUV420_8u_P3(const Pxl8u* pSrc[3], Pxl8u* pDst[3], PxlSize imgSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(imgSize, 1, 1), noNullIn<3>(pSrc, pDst)))
        return bad;
    return toDense420(kernels().planesTo420, pairs(denseRgbPlanes(pSrc, imgSize)), pDst, imgSize);
}

PxlStatus pxliBGRToYUV420_8u_AC4P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3], PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1), noNullIn<3>(pDst))) return bad;
    return to420(kernels().bgrAC4To420, pairs(pSrc, srcStep), pDst, dstStep, roiSize);
}
