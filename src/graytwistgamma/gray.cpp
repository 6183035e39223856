// Conversions between colour and gray: the exported functions.

#include "frame/checks.h"
#include "frame/target.h"
#include "frame/walk.h"
#include "graytwistgamma/gray_kernels.h"
#include "graytwistgamma/gray_weights.h"
#include "pxlcc.h"

using namespace pxl;

namespace {

const GrayKernels& kernels() { return forActiveTarget(sse42::kGrayKernels, avx2::kGrayKernels, avx512::kGrayKernels); }

// All functions here make the same checks, steps not among them; the weights may be null.

template <int kChannels, class T, class Weights>
PxlStatus toGray(GrayKernels::ToGray<T, Weights> kernel, const T* pSrc, int srcStep, T* pDst, int dstStep,
                 PxlSize roiSize, const typename Weights::Given* coeffs = nullptr) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return eachRunOfGroups<1>(roiSize, kernel, packed<kChannels>(pSrc, srcStep), packed<1>(pDst, dstStep),
                              same(weightsFrom<Weights>(coeffs)));
}

template <int kFrom, int kTo, class Kernel, class T, class... Alpha>
PxlStatus copied(Kernel kernel, const T* pSrc, int srcStep, T* pDst, int dstStep, PxlSize roiSize, Alpha... aval) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return eachRunOfGroups<1>(roiSize, kernel, packed<kFrom>(pSrc, srcStep), packed<kTo>(pDst, dstStep), same(aval)...);
}

}  // namespace

PxlStatus pxliRGBToGray_8u_C3C1R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return toGray<3>(kernels().c3U8, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToGray_8u_AC4C1R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return toGray<4>(kernels().ac4U8, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToGray_16u_C3C1R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize) {
    return toGray<3>(kernels().c3U16, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToGray_16u_AC4C1R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize) {
    return toGray<4>(kernels().ac4U16, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToGray_16s_C3C1R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize) {
    return toGray<3>(kernels().c3S16, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToGray_16s_AC4C1R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize) {
    return toGray<4>(kernels().ac4S16, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToGray_32f_C3C1R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize) {
    return toGray<3>(kernels().c3F32, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToGray_32f_AC4C1R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize) {
    return toGray<4>(kernels().ac4F32, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliColorToGray_8u_C3C1R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                   const Pxl32f coeffs[3]) {
    return toGray<3>(kernels().c3U8, pSrc, srcStep, pDst, dstStep, roiSize, coeffs);
}

PxlStatus pxliColorToGray_8u_AC4C1R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                    const Pxl32f coeffs[3]) {
    return toGray<4>(kernels().ac4U8, pSrc, srcStep, pDst, dstStep, roiSize, coeffs);
}

PxlStatus pxliColorToGray_16u_C3C1R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize,
                                    const Pxl32f coeffs[3]) {
    return toGray<3>(kernels().c3U16, pSrc, srcStep, pDst, dstStep, roiSize, coeffs);
}

PxlStatus pxliColorToGray_16u_AC4C1R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize,
                                     const Pxl32f coeffs[3]) {
    return toGray<4>(kernels().ac4U16, pSrc, srcStep, pDst, dstStep, roiSize, coeffs);
}

PxlStatus pxliColorToGray_16s_C3C1R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize,
                                    const Pxl32f coeffs[3]) {
    return toGray<3>(kernels().c3S16, pSrc, srcStep, pDst, dstStep, roiSize, coeffs);
}

PxlStatus pxliColorToGray_16s_AC4C1R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize,
                                     const Pxl32f coeffs[3]) {
    return toGray<4>(kernels().ac4S16, pSrc, srcStep, pDst, dstStep, roiSize, coeffs);
}

PxlStatus pxliColorToGray_32f_C3C1R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize,
                                    const Pxl32f coeffs[3]) {
    return toGray<3>(kernels().c3F32, pSrc, srcStep, pDst, dstStep, roiSize, coeffs);
}

PxlStatus pxliColorToGray_32f_AC4C1R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize,
                                     const Pxl32f coeffs[3]) {
    return toGray<4>(kernels().ac4F32, pSrc, srcStep, pDst, dstStep, roiSize, coeffs);
}

PxlStatus pxliColorToGray_64f_C3C1R(const Pxl64f* pSrc, int srcStep, Pxl64f* pDst, int dstStep, PxlSize roiSize,
                                    const Pxl64f coeffs[3]) {
    return toGray<3>(kernels().c3F64, pSrc, srcStep, pDst, dstStep, roiSize, coeffs);
}

PxlStatus pxliColorToGray_64f_AC4C1R(const Pxl64f* pSrc, int srcStep, Pxl64f* pDst, int dstStep, PxlSize roiSize,
                                     const Pxl64f coeffs[3]) {
    return toGray<4>(kernels().ac4F64, pSrc, srcStep, pDst, dstStep, roiSize, coeffs);
}

PxlStatus pxliGrayToRGB_8u_C1C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return copied<1, 3>(kernels().toC3U8, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliGrayToRGB_8u_C1C4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                 Pxl8u aval) {
    return copied<1, 4>(kernels().toC4U8, pSrc, srcStep, pDst, dstStep, roiSize, aval);
}

PxlStatus pxliGrayToRGB_16u_C1C3R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize) {
    return copied<1, 3>(kernels().toC3U16, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliGrayToRGB_16u_C1C4R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize,
                                  Pxl16u aval) {
    return copied<1, 4>(kernels().toC4U16, pSrc, srcStep, pDst, dstStep, roiSize, aval);
}

PxlStatus pxliGrayToRGB_32f_C1C3R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize) {
    return copied<1, 3>(kernels().toC3F32, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliGrayToRGB_32f_C1C4R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize,
                                  Pxl32f aval) {
    return copied<1, 4>(kernels().toC4F32, pSrc, srcStep, pDst, dstStep, roiSize, aval);
}

PxlStatus pxliYCbCr422ToGray_8u_C2C1R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return copied<2, 1>(kernels().luma422, pSrc, srcStep, pDst, dstStep, roiSize);
}
