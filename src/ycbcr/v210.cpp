// v210 to gray and RGB: the exported functions.

#include "frame/checks.h"
#include "frame/target.h"
#include "frame/walk.h"
#include "pxlcc.h"
#include "ycbcr/v210_kernels.h"

using namespace pxl;

namespace {

const V210Kernels& kernels() { return forActiveTarget(sse42::kV210Kernels, avx2::kV210Kernels, avx512::kV210Kernels); }

// Steps count elements here, and a bad one is answered like a bad size.
PxlStatus convert(V210Kernels::Kernel kernel, const Pxl32u* pSrc, int srcStep, Pxl16u* pDst, int dstStep,
                  PxlSize roiSize) {
    if (const PxlStatus bad =
            firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1), positiveSteps<pxlStatusBadSize>(srcStep, dstStep)))
        return bad;
    return eachRow(roiSize, kernel, view(pSrc, Index{srcStep} * Index{sizeof(Pxl32u)}),
                   view(pDst, Index{dstStep} * Index{sizeof(Pxl16u)}));
}

}  // namespace

PxlStatus pxliYUV422v210ToGray_709HDTV_32u16u_C3C1(const Pxl32u* pSrc, int srcStep, Pxl16u* pDst, int dstStep,
                                                   PxlSize roiSize) {
    return convert(kernels().toGray, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliYUV422v210ToRGB_709HDTV_32u16u_C3(const Pxl32u* pSrc, int srcStep, Pxl16u* pDst, int dstStep,
                                                PxlSize roiSize) {
    return convert(kernels().toRgb, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliYUV422v210ToBGR_709HDTV_32u16u_C3(const Pxl32u* pSrc, int srcStep, Pxl16u* pDst, int dstStep,
                                                PxlSize roiSize) {
    return convert(kernels().toBgr, pSrc, srcStep, pDst, dstStep, roiSize);
}
