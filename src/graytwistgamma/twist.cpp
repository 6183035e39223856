// The colour twist: the exported functions.

#include "frame/checks.h"
#include "frame/target.h"
#include "frame/walk.h"
#include "graytwistgamma/twist_kernels.h"
#include "graytwistgamma/twist_matrix.h"
#include "pxlcc.h"
#include "simd/control_word.h"

using namespace pxl;

namespace {

const TwistKernels& kernels() {
    return forActiveTarget(sse42::kTwistKernels, avx2::kTwistKernels, avx512::kTwistKernels);
}

// All functions here check in the same order: pointers, those of planes and of the matrix among them, size, steps.

template <int kChannels, class T>
PxlStatus twistImage(TwistKernels::Interleaved<T> kernel, const T* pSrc, int srcStep, T* pDst, int dstStep,
                     PxlSize roiSize, const Pxl32f (*twist)[4]) {
    if (const PxlStatus bad =
            firstBad(notNull(pSrc, pDst, twist), atLeast(roiSize, 1, 1), positiveSteps(srcStep, dstStep)))
        return bad;
    return eachRunOfGroups<1>(roiSize, kernel, packed<kChannels>(pSrc, srcStep), packed<kChannels>(pDst, dstStep),
                              same(twistFrom<T>(twist)));
}

template <class T>
PxlStatus twistPlanes(TwistKernels::Planes<T> kernel, const T* const* pSrc, int srcStep, T* const* pDst, int dstStep,
                      PxlSize roiSize, const Pxl32f (*twist)[4]) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst, twist), noNullIn<3>(pSrc, pDst), atLeast(roiSize, 1, 1),
                                       positiveSteps(srcStep, dstStep)))
        return bad;
    return eachRunOfGroups<1>(roiSize, kernel, planes<3>(pSrc, srcStep), planes<3>(pDst, dstStep),
                              same(twistFrom<T>(twist)));
}

}  // namespace

PxlStatus pxliColorTwist_32f_C3R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize,
                                 const Pxl32f twist[3][4]) {
    return twistImage<3>(kernels().f32.c3, pSrc, srcStep, pDst, dstStep, roiSize, twist);
}

PxlStatus pxliColorTwist_32f_C3IR(Pxl32f* pSrcDst, int srcDstStep, PxlSize roiSize, const Pxl32f twist[3][4]) {
    return twistImage<3, Pxl32f>(kernels().f32.c3, pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize, twist);
}

PxlStatus pxliColorTwist_32f_AC4R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize,
                                  const Pxl32f twist[3][4]) {
    return twistImage<4>(kernels().f32.ac4, pSrc, srcStep, pDst, dstStep, roiSize, twist);
}

PxlStatus pxliColorTwist_32f_AC4IR(Pxl32f* pSrcDst, int srcDstStep, PxlSize roiSize, const Pxl32f twist[3][4]) {
    return twistImage<4, Pxl32f>(kernels().f32.ac4, pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize, twist);
}

PxlStatus pxliColorTwist_32f_P3R(const Pxl32f* pSrc[3], int srcStep, Pxl32f* pDst[3], int dstStep, PxlSize roiSize,
                                 const Pxl32f twist[3][4]) {
    return twistPlanes(kernels().f32.p3, pSrc, srcStep, pDst, dstStep, roiSize, twist);
}

PxlStatus pxliColorTwist_32f_IP3R(Pxl32f* pSrcDst[3], int srcDstStep, PxlSize roiSize, const Pxl32f twist[3][4]) {
    return twistPlanes<Pxl32f>(kernels().f32.p3, pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize, twist);
}

PxlStatus pxliColorTwist_32f_C4R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize,
                                 const Pxl32f twist[4][4]) {
    if (const PxlStatus bad =
            firstBad(notNull(pSrc, pDst, twist), atLeast(roiSize, 1, 1), positiveSteps(srcStep, dstStep)))
        return bad;
    // Steps of a quarter of a row convert the first row only: part of the definition.
    if (srcStep == dstStep && srcStep == Index{roiSize.width} * 4) roiSize.height = 1;
    return eachRunOfGroups<1>(roiSize, kernels().c4, packed<4>(pSrc, srcStep), packed<4>(pDst, dstStep),
                              same(twist4From(twist)));
}

PxlStatus pxliColorTwist32f_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                   const Pxl32f twist[3][4]) {
    const RoundToNearest mode;
    return twistImage<3>(kernels().u8.c3, pSrc, srcStep, pDst, dstStep, roiSize, twist);
}

PxlStatus pxliColorTwist32f_8u_C3IR(Pxl8u* pSrcDst, int srcDstStep, PxlSize roiSize, const Pxl32f twist[3][4]) {
    const RoundToNearest mode;
    return twistImage<3, Pxl8u>(kernels().u8.c3, pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize, twist);
}

PxlStatus pxliColorTwist32f_8u_AC4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                    const Pxl32f twist[3][4]) {
    const RoundToNearest mode;
    return twistImage<4>(kernels().u8.ac4, pSrc, srcStep, pDst, dstStep, roiSize, twist);
}

PxlStatus pxliColorTwist32f_8u_AC4IR(Pxl8u* pSrcDst, int srcDstStep, PxlSize roiSize, const Pxl32f twist[3][4]) {
    const RoundToNearest mode;
    return twistImage<4, Pxl8u>(kernels().u8.ac4, pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize, twist);
}

PxlStatus pxliColorTwist32f_8u_P3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst[3], int dstStep, PxlSize roiSize,
                                   const Pxl32f twist[3][4]) {
    const RoundToNearest mode;
    return twistPlanes(kernels().u8.p3, pSrc, srcStep, pDst, dstStep, roiSize, twist);
}

PxlStatus pxliColorTwist32f_8u_IP3R(Pxl8u* pSrcDst[3], int srcDstStep, PxlSize roiSize, const Pxl32f twist[3][4]) {
    const RoundToNearest mode;
    return twistPlanes<Pxl8u>(kernels().u8.p3, pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize, twist);
}

PxlStatus pxliColorTwist32f_16u_C3R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize,
                                    const Pxl32f twist[3][4]) {
    const RoundToNearest mode;
    return twistImage<3>(kernels().u16.c3, pSrc, srcStep, pDst, dstStep, roiSize, twist);
}

PxlStatus pxliColorTwist32f_16u_C3IR(Pxl16u* pSrcDst, int srcDstStep, PxlSize roiSize, const Pxl32f twist[3][4]) {
    const RoundToNearest mode;
    return twistImage<3, Pxl16u>(kernels().u16.c3, pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize, twist);
}

PxlStatus pxliColorTwist32f_16u_AC4R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize,
                                     const Pxl32f twist[3][4]) {
    const RoundToNearest mode;
    return twistImage<4>(kernels().u16.ac4, pSrc, srcStep, pDst, dstStep, roiSize, twist);
}

PxlStatus pxliColorTwist32f_16u_AC4IR(Pxl16u* pSrcDst, int srcDstStep, PxlSize roiSize, const Pxl32f twist[3][4]) {
    const RoundToNearest mode;
    return twistImage<4, Pxl16u>(kernels().u16.ac4, pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize, twist);
}

PxlStatus pxliColorTwist32f_16u_P3R(const Pxl16u* pSrc[3], int srcStep, Pxl16u* pDst[3], int dstStep, PxlSize roiSize,
                                    const Pxl32f twist[3][4]) {
    const RoundToNearest mode;
    return twistPlanes(kernels().u16.p3, pSrc, srcStep, pDst, dstStep, roiSize, twist);
}

PxlStatus pxliColorTwist32f_16u_IP3R(Pxl16u* pSrcDst[3], int srcDstStep, PxlSize roiSize, const Pxl32f twist[3][4]) {
    const RoundToNearest mode;
    return twistPlanes<Pxl16u>(kernels().u16.p3, pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize, twist);
}

PxlStatus pxliColorTwist32f_16s_C3R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize,
                                    const Pxl32f twist[3][4]) {
    const RoundToNearest mode;
    return twistImage<3>(kernels().s16.c3, pSrc, srcStep, pDst, dstStep, roiSize, twist);
}

PxlStatus pxliColorTwist32f_16s_C3IR(Pxl16s* pSrcDst, int srcDstStep, PxlSize roiSize, const Pxl32f twist[3][4]) {
    const RoundToNearest mode;
    return twistImage<3, Pxl16s>(kernels().s16.c3, pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize, twist);
}

PxlStatus pxliColorTwist32f_16s_AC4R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize,
                                     const Pxl32f twist[3][4]) {
    const RoundToNearest mode;
    return twistImage<4>(kernels().s16.ac4, pSrc, srcStep, pDst, dstStep, roiSize, twist);
}

PxlStatus pxliColorTwist32f_16s_AC4IR(Pxl16s* pSrcDst, int srcDstStep, PxlSize roiSize, const Pxl32f twist[3][4]) {
    const RoundToNearest mode;
    return twistImage<4, Pxl16s>(kernels().s16.ac4, pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize, twist);
}

PxlStatus pxliColorTwist32f_16s_P3R(const Pxl16s* pSrc[3], int srcStep, Pxl16s* pDst[3], int dstStep, PxlSize roiSize,
                                    const Pxl32f twist[3][4]) {
    const RoundToNearest mode;
    return twistPlanes(kernels().s16.p3, pSrc, srcStep, pDst, dstStep, roiSize, twist);
}

PxlStatus pxliColorTwist32f_16s_IP3R(Pxl16s* pSrcDst[3], int srcDstStep, PxlSize roiSize, const Pxl32f twist[3][4]) {
    const RoundToNearest mode;
    return twistPlanes<Pxl16s>(kernels().s16.p3, pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize, twist);
}
