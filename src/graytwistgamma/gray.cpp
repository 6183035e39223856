// Conversions between colour and gray: the exported functions.

#include "frame/checks.h"
#include "frame/streaming.h"
#include "frame/walk.h"
#include "graytwistgamma/gray_kernels.h"
#include "graytwistgamma/gray_weights.h"
#include "graytwistgamma/repeat_kernels.h"
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

template <class T, class Kernel, class... Alpha>
PxlStatus toColor(Kernel RepeatKernels::*kernel, const T* pSrc, int srcStep, T* pDst, int dstStep, PxlSize roiSize,
                  Alpha... aval) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    const auto dst = packed<3 + sizeof...(aval)>(pDst, dstStep);
    const Streaming how(dst, roiSize);
    const RepeatKernels& kernels =
        how.choose(forActiveTarget(sse42::kRepeatKernels, avx2::kRepeatKernels, avx512::kRepeatKernels),
                   avx2_streaming::kRepeatKernels, avx512_streaming::kRepeatKernels);
    return eachRunOfGroups<1>(roiSize, kernels.*kernel, packed<1>(pSrc, srcStep), dst, same(aval)...);
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
    return toColor(&RepeatKernels::toC3U8, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliGrayToRGB_8u_C1C4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                 Pxl8u aval) {
    return toColor(&RepeatKernels::toC4U8, pSrc, srcStep, pDst, dstStep, roiSize, aval);
}

PxlStatus pxliGrayToRGB_16u_C1C3R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize) {
    return toColor(&RepeatKernels::toC3U16, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliGrayToRGB_16u_C1C4R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize,
                                  Pxl16u aval) {
    return toColor(&RepeatKernels::toC4U16, pSrc, srcStep, pDst, dstStep, roiSize, aval);
}

PxlStatus pxliGrayToRGB_32f_C1C3R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize) {
    return toColor(&RepeatKernels::toC3F32, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliGrayToRGB_32f_C1C4R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize,
                                  Pxl32f aval) {
    return toColor(&RepeatKernels::toC4F32, pSrc, srcStep, pDst, dstStep, roiSize, aval);
}

PxlStatus pxliYCbCr422ToGray_8u_C2C1R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return eachRunOfGroups<1>(roiSize, kernels().luma422, packed<2>(pSrc, srcStep), packed<1>(pDst, dstStep));
}
