// PhotoYCC: the exported functions.

#include "colorspace/photoycc_kernels.h"
#include "frame/checks.h"
#include "frame/target.h"
#include "frame/walk.h"
#include "pxlcc.h"

using namespace pxl;

namespace {

const PhotoyccKernels& kernels() {
    return forActiveTarget(sse42::kPhotoyccKernels, avx2::kPhotoyccKernels, avx512::kPhotoyccKernels);
}

// All functions make the same checks, steps not among them.
template <int kChannels, class T>
PxlStatus convert(PhotoyccKernels::Interleaved<T> kernel, const T* pSrc, int srcStep, T* pDst, int dstStep,
                  PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    const Index rowBytes = kChannels * Index{roiSize.width} * Index{sizeof(T)};
    return eachRun(srcStep == rowBytes && dstStep == rowBytes, roiSize, kernel, view(pSrc, srcStep),
                   view(pDst, dstStep));
}

}  // namespace

PxlStatus pxliRGBToYCC_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return convert<3>(kernels().rgbToYcc.c3.u8, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToYCC_8u_AC4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return convert<4>(kernels().rgbToYcc.ac4.u8, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToYCC_16u_C3R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize) {
    return convert<3>(kernels().rgbToYcc.c3.u16, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToYCC_16u_AC4R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize) {
    return convert<4>(kernels().rgbToYcc.ac4.u16, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToYCC_16s_C3R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize) {
    return convert<3>(kernels().rgbToYcc.c3.s16, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToYCC_16s_AC4R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize) {
    return convert<4>(kernels().rgbToYcc.ac4.s16, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToYCC_32f_C3R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize) {
    return convert<3>(kernels().rgbToYcc.c3.f32, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToYCC_32f_AC4R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize) {
    return convert<4>(kernels().rgbToYcc.ac4.f32, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliYCCToRGB_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return convert<3>(kernels().yccToRgb.c3.u8, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliYCCToRGB_8u_AC4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return convert<4>(kernels().yccToRgb.ac4.u8, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliYCCToRGB_16u_C3R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize) {
    return convert<3>(kernels().yccToRgb.c3.u16, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliYCCToRGB_16u_AC4R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize) {
    return convert<4>(kernels().yccToRgb.ac4.u16, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliYCCToRGB_16s_C3R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize) {
    return convert<3>(kernels().yccToRgb.c3.s16, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliYCCToRGB_16s_AC4R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize) {
    return convert<4>(kernels().yccToRgb.ac4.s16, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliYCCToRGB_32f_C3R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize) {
    return convert<3>(kernels().yccToRgb.c3.f32, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliYCCToRGB_32f_AC4R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize) {
    return convert<4>(kernels().yccToRgb.ac4.f32, pSrc, srcStep, pDst, dstStep, roiSize);
}
