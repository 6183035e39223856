// YCoCg, plain and reversible: the exported functions.

#include "colorspace/ycocg_kernels.h"
#include "frame/checks.h"
#include "frame/target.h"
#include "frame/walk.h"
#include "pxlcc.h"

using namespace pxl;

namespace {

const YcocgKernels& kernels() {
    return forActiveTarget(sse42::kYcocgKernels, avx2::kYcocgKernels, avx512::kYcocgKernels);
}

// All functions look at the pointers, those of the planes among them, and then at the size. An empty region is an error
// to some and nothing to do to others: deliberate.
constexpr PxlStatus kEmptyIsBad = pxlStatusBadSize, kEmptyIsOk = pxlStatusOk;

template <int kChannels, class Sample, class PlaneSample>
PxlStatus toPlanes(PxlStatus ofEmpty, YcocgKernels::ToPlanes<Sample, PlaneSample> kernel, const Sample* pSrc,
                   int srcStep, PlaneSample* const* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), noNullIn<3>(pDst))) return bad;
    if (firstBad(atLeast(roiSize, 1, 1))) return ofEmpty;
    return eachRunOfGroups<1>(roiSize, kernel, packed<kChannels>(pSrc, srcStep), planes<3>(pDst, dstStep));
}

// With the value of the fourth channel, if there is one.
template <class Kernel, class Sample, class PlaneSample, class... Alpha>
PxlStatus fromPlanes(PxlStatus ofEmpty, Kernel kernel, const PlaneSample* const* pSrc, int srcStep, Sample* pDst,
                     int dstStep, PxlSize roiSize, Alpha... aval) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), noNullIn<3>(pSrc))) return bad;
    if (firstBad(atLeast(roiSize, 1, 1))) return ofEmpty;
    return eachRunOfGroups<1>(roiSize, kernel, planes<3>(pSrc, srcStep), packed<3 + sizeof...(aval)>(pDst, dstStep),
                              same(aval)...);
}

}  // namespace

PxlStatus pxliRGBToYCoCg_8u_C3P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep, PxlSize roiSize) {
    return toPlanes<3>(kEmptyIsBad, kernels().rgbToOffsetPlanes, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliYCoCgToRGB_8u_P3C3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return fromPlanes(kEmptyIsOk, kernels().offsetPlanesToRgb, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliBGRToYCoCg_8u16s_C3P3R(const Pxl8u* pSrc, int srcStep, Pxl16s* pDst[3], int dstStep, PxlSize roiSize) {
    return toPlanes<3>(kEmptyIsBad, kernels().plain.u8s16.c3ToPlanes, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliBGRToYCoCg_8u16s_C4P3R(const Pxl8u* pSrc, int srcStep, Pxl16s* pDst[3], int dstStep, PxlSize roiSize) {
    return toPlanes<4>(kEmptyIsBad, kernels().plain.u8s16.c4ToPlanes, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliBGRToYCoCg_Rev_8u16s_C3P3R(const Pxl8u* pSrc, int srcStep, Pxl16s* pDst[3], int dstStep,
                                         PxlSize roiSize) {
    return toPlanes<3>(kEmptyIsBad, kernels().reversible.u8s16.c3ToPlanes, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliBGRToYCoCg_Rev_8u16s_C4P3R(const Pxl8u* pSrc, int srcStep, Pxl16s* pDst[3], int dstStep,
                                         PxlSize roiSize) {
    return toPlanes<4>(kEmptyIsBad, kernels().reversible.u8s16.c4ToPlanes, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliSBGRToYCoCg_16s_C3P3R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst[3], int dstStep, PxlSize roiSize) {
    return toPlanes<3>(kEmptyIsOk, kernels().plain.s16.c3ToPlanes, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliSBGRToYCoCg_16s_C4P3R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst[3], int dstStep, PxlSize roiSize) {
    return toPlanes<4>(kEmptyIsOk, kernels().plain.s16.c4ToPlanes, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliSBGRToYCoCg_Rev_16s_C3P3R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst[3], int dstStep,
                                        PxlSize roiSize) {
    return toPlanes<3>(kEmptyIsOk, kernels().reversible.s16.c3ToPlanes, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliSBGRToYCoCg_Rev_16s_C4P3R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst[3], int dstStep,
                                        PxlSize roiSize) {
    return toPlanes<4>(kEmptyIsOk, kernels().reversible.s16.c4ToPlanes, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliSBGRToYCoCg_16s32s_C3P3R(const Pxl16s* pSrc, int srcStep, Pxl32s* pDst[3], int dstStep, PxlSize roiSize) {
    return toPlanes<3>(kEmptyIsOk, kernels().plain.s16s32.c3ToPlanes, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliSBGRToYCoCg_16s32s_C4P3R(const Pxl16s* pSrc, int srcStep, Pxl32s* pDst[3], int dstStep, PxlSize roiSize) {
    return toPlanes<4>(kEmptyIsOk, kernels().plain.s16s32.c4ToPlanes, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliSBGRToYCoCg_Rev_16s32s_C3P3R(const Pxl16s* pSrc, int srcStep, Pxl32s* pDst[3], int dstStep,
                                           PxlSize roiSize) {
    return toPlanes<3>(kEmptyIsOk, kernels().reversible.s16s32.c3ToPlanes, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliSBGRToYCoCg_Rev_16s32s_C4P3R(const Pxl16s* pSrc, int srcStep, Pxl32s* pDst[3], int dstStep,
                                           PxlSize roiSize) {
    return toPlanes<4>(kEmptyIsOk, kernels().reversible.s16s32.c4ToPlanes, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliYCoCgToBGR_16s8u_P3C3R(const Pxl16s* pSrc[3], int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return fromPlanes(kEmptyIsOk, kernels().plain.u8s16.planesToC3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliYCoCgToBGR_16s8u_P3C4R(const Pxl16s* pSrc[3], int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                     Pxl8u aval) {
    return fromPlanes(kEmptyIsOk, kernels().plain.u8s16.planesToC4, pSrc, srcStep, pDst, dstStep, roiSize, aval);
}

PxlStatus pxliYCoCgToBGR_Rev_16s8u_P3C3R(const Pxl16s* pSrc[3], int srcStep, Pxl8u* pDst, int dstStep,
                                         PxlSize roiSize) {
    return fromPlanes(kEmptyIsOk, kernels().reversible.u8s16.planesToC3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliYCoCgToBGR_Rev_16s8u_P3C4R(const Pxl16s* pSrc[3], int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                         Pxl8u aval) {
    return fromPlanes(kEmptyIsOk, kernels().reversible.u8s16.planesToC4, pSrc, srcStep, pDst, dstStep, roiSize, aval);
}

PxlStatus pxliYCoCgToSBGR_16s_P3C3R(const Pxl16s* pSrc[3], int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize) {
    return fromPlanes(kEmptyIsBad, kernels().plain.s16.planesToC3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliYCoCgToSBGR_16s_P3C4R(const Pxl16s* pSrc[3], int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize,
                                    Pxl16s aval) {
    return fromPlanes(kEmptyIsBad, kernels().plain.s16.planesToC4, pSrc, srcStep, pDst, dstStep, roiSize, aval);
}

PxlStatus pxliYCoCgToSBGR_Rev_16s_P3C3R(const Pxl16s* pSrc[3], int srcStep, Pxl16s* pDst, int dstStep,
                                        PxlSize roiSize) {
    return fromPlanes(kEmptyIsBad, kernels().reversible.s16.planesToC3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliYCoCgToSBGR_Rev_16s_P3C4R(const Pxl16s* pSrc[3], int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize,
                                        Pxl16s aval) {
    return fromPlanes(kEmptyIsBad, kernels().reversible.s16.planesToC4, pSrc, srcStep, pDst, dstStep, roiSize, aval);
}

PxlStatus pxliYCoCgToSBGR_32s16s_P3C3R(const Pxl32s* pSrc[3], int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize) {
    return fromPlanes(kEmptyIsBad, kernels().plain.s16s32.planesToC3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliYCoCgToSBGR_32s16s_P3C4R(const Pxl32s* pSrc[3], int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize,
                                       Pxl16s aval) {
    return fromPlanes(kEmptyIsBad, kernels().plain.s16s32.planesToC4, pSrc, srcStep, pDst, dstStep, roiSize, aval);
}

PxlStatus pxliYCoCgToSBGR_Rev_32s16s_P3C3R(const Pxl32s* pSrc[3], int srcStep, Pxl16s* pDst, int dstStep,
                                           PxlSize roiSize) {
    return fromPlanes(kEmptyIsBad, kernels().reversible.s16s32.planesToC3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliYCoCgToSBGR_Rev_32s16s_P3C4R(const Pxl32s* pSrc[3], int srcStep, Pxl16s* pDst, int dstStep,
                                           PxlSize roiSize, Pxl16s aval) {
    return fromPlanes(kEmptyIsBad, kernels().reversible.s16s32.planesToC4, pSrc, srcStep, pDst, dstStep, roiSize, aval);
}
