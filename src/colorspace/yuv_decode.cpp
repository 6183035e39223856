// Analog YUV to RGB: the exported functions.

#include "colorspace/yuv_decode_kernels.h"
#include "colorspace/yuv_dense.h"
#include "frame/checks.h"
#include "frame/streaming.h"
#include "pxlcc.h"

using namespace pxl;

namespace {

const YuvDecodeKernels& kernels() {
    return forActiveTarget(sse42::kYuvDecodeKernels, avx2::kYuvDecodeKernels, avx512::kYuvDecodeKernels);
}

const YuvDecodeKernels& kernels(const Streaming& how) {
    return how.choose(kernels(), avx2_streaming::kYuvDecodeKernels, avx512_streaming::kYuvDecodeKernels);
}

// The shapes of 4:2:0; the checks stand in each function.

template <class Kernel, class Pairs>
PxlStatus from420(Kernel kernel, const Pxl8u* const pSrc[3], const int srcStep[3], Pairs dst, PxlSize roiSize) {
    return eachRowPair(roiSize, kernel, pairs(pSrc[0], srcStep[0]), planes<2>(pSrc + 1, srcStep + 1), dst);
}

template <class Kernel>
PxlStatus from420ToPacked(Kernel YuvDecodeKernels::*kernel, const Pxl8u* const pSrc[3], const int srcStep[3],
                          Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    const auto dst = packed<3>(pDst, dstStep);
    const Streaming how(dst, roiSize, 2);
    return from420(kernels(how).*kernel, pSrc, srcStep, PairView<Pxl8u>{dst}, roiSize);
}

template <class Kernel, class Pairs>
PxlStatus fromDense420(Kernel kernel, const Pxl8u* const pSrc[3], Pairs dst, PxlSize size) {
    return eachDenseRowPair(size, kernel, LumaRows<PairView<const Pxl8u>>{pairs(pSrc[0], size.width)},
                            ChromaRows<const Pxl8u, 2>{planes<2>(pSrc + 1, denseChromaStep(size))},
                            LumaRows<Pairs>{dst});
}

}  // namespace

PxlStatus pxliYUVToRGB_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return eachRunOfGroups<16>(roiSize, kernels().c3, packed<3>(pSrc, srcStep), packed<3>(pDst, dstStep));
}

PxlStatus pxliYUVToRGB_8u_AC4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return eachRunOfGroups<16>(roiSize, kernels().ac4, packed<4>(pSrc, srcStep), packed<4>(pDst, dstStep));
}

PxlStatus pxliYUVToRGB_8u_C3C4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return eachRunOfGroups<16>(roiSize, kernels().c3ToAC4, packed<3>(pSrc, srcStep), packed<4>(pDst, dstStep));
}

PxlStatus pxliYUVToRGB_8u_P3C3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1), noNullIn<3>(pSrc))) return bad;
    const auto dst = packed<3>(pDst, dstStep);
    const Streaming how(dst, roiSize);
    return eachRunOfGroups<16>(roiSize, kernels(how).planesToC3, planes<3>(pSrc, srcStep), dst);
}

PxlStatus pxliYUVToRGB_8u_P3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst[3], int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1), noNullIn<3>(pSrc, pDst)))
        return bad;
    return eachRunOfGroups<16>(roiSize, kernels().planes, planes<3>(pSrc, srcStep), planes<3>(pDst, dstStep));
}

PxlStatus pxliYUV422ToRGB_8u_C2C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    const auto dst = packed<3>(pDst, dstStep);
    const Streaming how(dst, roiSize);
    return eachRunOfGroups<16>(roiSize, kernels(how).packed422ToC3, packed<2>(pSrc, srcStep), dst);
}

PxlStatus pxliYUV422ToRGB_8u_P3C3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1), noNullIn<3>(pSrc))) return bad;
    const auto dst = packed<3>(pDst, dstStep);
    const Streaming how(dst, roiSize);
    return eachRunOfGroups<2>(roiSize, kernels(how).from422ToC3, subsampled<2>(pSrc, srcStep), dst);
}

PxlStatus pxliYUV422ToRGB_8u_P3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst[3], int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1), noNullIn<3>(pSrc, pDst)))
        return bad;
    return eachRunOfGroups<2>(roiSize, kernels().from422ToPlanes, subsampled<2>(pSrc, srcStep),
                              planes<3>(pDst, dstStep));
}

PxlStatus pxliYUV422ToRGB_8u_P3AC4R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1), noNullIn<3>(pSrc))) return bad;
    return eachRunOfGroups<2>(roiSize, kernels().from422ToAC4, subsampled<2>(pSrc, srcStep), packed<4>(pDst, dstStep));
}

PxlStatus pxliYUV422ToRGB_8u_P3C3(const Pxl8u* pSrc[3], Pxl8u* pDst, PxlSize imgSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(imgSize, 1, 1), noNullIn<3>(pSrc))) return bad;
    const auto dst = denseRgb(pDst, imgSize);
    const Streaming how(dst, imgSize);
    return eachDenseRow(imgSize, kernels(how).from422ToC3, denseYuv(pSrc, imgSize), dst);
}

PxlStatus pxliYUV422ToRGB_8u_P3(const Pxl8u* pSrc[3], Pxl8u* pDst[3], PxlSize imgSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(imgSize, 1, 1), noNullIn<3>(pSrc, pDst)))
        return bad;
    return eachDenseRow(imgSize, kernels().from422ToPlanes, denseYuv(pSrc, imgSize), denseRgbPlanes(pDst, imgSize));
}

PxlStatus pxliYUV420ToRGB_8u_P3C3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1), noNullIn<3>(pSrc))) return bad;
    return from420ToPacked(&YuvDecodeKernels::from420ToC3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliYUV420ToRGB_8u_P3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst[3], int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1), noNullIn<3>(pSrc, pDst)))
        return bad;
    return from420(kernels().from420ToPlanes, pSrc, srcStep, pairs(planes<3>(pDst, dstStep)), roiSize);
}

PxlStatus pxliYUV420ToRGB_8u_P3AC4R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1), noNullIn<3>(pSrc))) return bad;
    return from420(kernels().from420ToAC4, pSrc, srcStep, pairs(pDst, dstStep), roiSize);
}

PxlStatus pxliYUV420ToRGB_8u_P3C3(const Pxl8u* pSrc[3], Pxl8u* pDst, PxlSize imgSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(imgSize, 1, 1), noNullIn<3>(pSrc))) return bad;
    const auto dst = denseRgb(pDst, imgSize);
    const Streaming how(dst, imgSize, 2);
    return fromDense420(kernels(how).from420ToC3, pSrc, PairView<Pxl8u>{dst}, imgSize);
}

PxlStatus pxliYUV420ToRGB_8u_P3(const Pxl8u* pSrc[3], Pxl8u* pDst[3], PxlSize imgSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(imgSize, 1, 1), noNullIn<3>(pSrc, pDst)))
        return bad;
    return fromDense420(kernels().from420ToPlanes, pSrc, pairs(denseRgbPlanes(pDst, imgSize)), imgSize);
}

PxlStatus pxliYUV420ToBGR_8u_P3C3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 2, 2), noNullIn<3>(pSrc))) return bad;
    return from420ToPacked(&YuvDecodeKernels::from420ToBgrC3, pSrc, srcStep, pDst, dstStep, roiSize);
}
