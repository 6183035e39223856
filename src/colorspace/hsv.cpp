// HSV: the exported functions.

#include "colorspace/hsv_kernels.h"
#include "frame/checks.h"
#include "frame/target.h"
#include "frame/walk.h"
#include "pxlcc.h"

using namespace pxl;

namespace {

const HsvKernels& kernels() { return forActiveTarget(sse42::kHsvKernels, avx2::kHsvKernels, avx512::kHsvKernels); }

// Pointers, then the size; steps are not tested.
template <int kChannels, class T>
PxlStatus interleaved(HsvKernels::Row<T> kernel, const T* pSrc, int srcStep, T* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return eachRunOfGroups<16>(roiSize, kernel, packed<kChannels>(pSrc, wholeSamples<T>(srcStep)),
                               packed<kChannels>(pDst, wholeSamples<T>(dstStep)));
}

}  // namespace

PxlStatus pxliRGBToHSV_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(kernels().fromRgb.u8.c3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToHSV_8u_AC4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<4>(kernels().fromRgb.u8.ac4, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToHSV_16u_C3R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(kernels().fromRgb.u16.c3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToHSV_16u_AC4R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<4>(kernels().fromRgb.u16.ac4, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliHSVToRGB_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(kernels().toRgb.u8.c3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliHSVToRGB_8u_AC4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<4>(kernels().toRgb.u8.ac4, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliHSVToRGB_16u_C3R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(kernels().toRgb.u16.c3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliHSVToRGB_16u_AC4R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<4>(kernels().toRgb.u16.ac4, pSrc, srcStep, pDst, dstStep, roiSize);
}
