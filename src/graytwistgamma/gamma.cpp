// Gamma correction after ITU-R BT.709: the exported functions.

#include "frame/checks.h"
#include "frame/gamma_tables.h"
#include "frame/target.h"
#include "frame/walk.h"
#include "graytwistgamma/gamma_kernels.h"
#include "pxlcc.h"

using namespace pxl;

namespace {

const GammaKernels& kernels() {
    return forActiveTarget(sse42::kGammaKernels, avx2::kGammaKernels, avx512::kGammaKernels);
}

// A range that is not a number is not empty; every sample becomes NaN then.
auto valid(GammaRange range) {
    return Check{[=]() -> PxlStatus { return range.span <= 0 ? pxlStatusBadRange : pxlStatusOk; }};
}
template <class T>
auto valid(const T*) {  // a table
    return Check{[]() -> PxlStatus { return pxlStatusOk; }};
}

GammaRange between(Pxl32f vMin, Pxl32f vMax) { return {vMin, vMax - vMin}; }

// The shapes that the functions share, with their checks. An in-place function is one whose source is its destination.

template <class T, class Argument>
PxlStatus convertC3(GammaRows<T, Argument> rows, Argument argument, const T* pSrc, int srcStep, T* pDst, int dstStep,
                    PxlSize roiSize) {
    if (const PxlStatus bad =
            firstBad(valid(argument), notNull(pSrc, pDst), atLeast(roiSize, 1, 1), positiveSteps(srcStep, dstStep)))
        return bad;
    const auto row = [&](const T* src, T* dst, Index width) { rows.run(src, dst, argument, 3 * width); };
    return eachRunOfGroups<1>(roiSize, row, packed<3>(pSrc, srcStep), packed<3>(pDst, dstStep));
}

template <class T, class Argument>
PxlStatus convertAC4(GammaRows<T, Argument> rows, Argument argument, const T* pSrc, int srcStep, T* pDst, int dstStep,
                     PxlSize roiSize) {
    if (const PxlStatus bad =
            firstBad(valid(argument), notNull(pSrc, pDst), atLeast(roiSize, 1, 1), positiveSteps(srcStep, dstStep)))
        return bad;
    const auto row = [&](const T* src, T* dst, Index width) { rows.pixels(src, dst, argument, width); };
    return eachRunOfGroups<1>(roiSize, row, packed<4>(pSrc, srcStep), packed<4>(pDst, dstStep));
}

template <class T, class Argument>
PxlStatus convertP3(GammaRows<T, Argument> rows, Argument argument, const T* const* pSrc, int srcStep, T* const* pDst,
                    int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(valid(argument), notNull(pSrc, pDst), noNullIn<3>(pSrc, pDst),
                                       atLeast(roiSize, 1, 1), positiveSteps(srcStep, dstStep)))
        return bad;
    const auto row = [&](const T* src, T* dst, Index width) { rows.run(src, dst, argument, width); };
    for (int i = 0; i < 3; ++i)
        eachRunOfGroups<1>(roiSize, row, packed<1>(pSrc[i], srcStep), packed<1>(pDst[i], dstStep));
    return pxlStatusOk;
}

}  // namespace

// ---- forward, 8u

PxlStatus pxliGammaFwd_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return convertC3(kernels().bytes, kGammaForward8u, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliGammaFwd_8u_AC4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return convertAC4(kernels().bytes, kGammaForward8u, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliGammaFwd_8u_P3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst[3], int dstStep, PxlSize roiSize) {
    return convertP3(kernels().bytes, kGammaForward8u, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliGammaFwd_8u_C3IR(Pxl8u* pSrcDst, int srcDstStep, PxlSize roiSize) {
    return convertC3(kernels().bytes, kGammaForward8u, pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize);
}

PxlStatus pxliGammaFwd_8u_AC4IR(Pxl8u* pSrcDst, int srcDstStep, PxlSize roiSize) {
    return convertAC4(kernels().bytes, kGammaForward8u, pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize);
}

PxlStatus pxliGammaFwd_8u_IP3R(Pxl8u* pSrcDst[3], int srcDstStep, PxlSize roiSize) {
    return convertP3(kernels().bytes, kGammaForward8u, pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize);
}

// ---- forward, 16u

PxlStatus pxliGammaFwd_16u_C3R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize) {
    return convertC3(kernels().words, kGammaForward16u, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliGammaFwd_16u_AC4R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize) {
    return convertAC4(kernels().words, kGammaForward16u, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliGammaFwd_16u_P3R(const Pxl16u* pSrc[3], int srcStep, Pxl16u* pDst[3], int dstStep, PxlSize roiSize) {
    return convertP3(kernels().words, kGammaForward16u, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliGammaFwd_16u_C3IR(Pxl16u* pSrcDst, int srcDstStep, PxlSize roiSize) {
    return convertC3(kernels().words, kGammaForward16u, pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize);
}

PxlStatus pxliGammaFwd_16u_AC4IR(Pxl16u* pSrcDst, int srcDstStep, PxlSize roiSize) {
    return convertAC4(kernels().words, kGammaForward16u, pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize);
}

PxlStatus pxliGammaFwd_16u_IP3R(Pxl16u* pSrcDst[3], int srcDstStep, PxlSize roiSize) {
    return convertP3(kernels().words, kGammaForward16u, pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize);
}

// ---- forward, 32f

PxlStatus pxliGammaFwd_32f_C3R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize, Pxl32f vMin,
                               Pxl32f vMax) {
    return convertC3(kernels().forwardFloats, between(vMin, vMax), pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliGammaFwd_32f_AC4R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize,
                                Pxl32f vMin, Pxl32f vMax) {
    return convertAC4(kernels().forwardFloats, between(vMin, vMax), pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliGammaFwd_32f_P3R(const Pxl32f* pSrc[3], int srcStep, Pxl32f* pDst[3], int dstStep, PxlSize roiSize,
                               Pxl32f vMin, Pxl32f vMax) {
    return convertP3(kernels().forwardFloats, between(vMin, vMax), pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliGammaFwd_32f_C3IR(Pxl32f* pSrcDst, int srcDstStep, PxlSize roiSize, Pxl32f vMin, Pxl32f vMax) {
    return convertC3(kernels().forwardFloats, between(vMin, vMax), pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize);
}

PxlStatus pxliGammaFwd_32f_AC4IR(Pxl32f* pSrcDst, int srcDstStep, PxlSize roiSize, Pxl32f vMin, Pxl32f vMax) {
    return convertAC4(kernels().forwardFloats, between(vMin, vMax), pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize);
}

PxlStatus pxliGammaFwd_32f_IP3R(Pxl32f* pSrcDst[3], int srcDstStep, PxlSize roiSize, Pxl32f vMin, Pxl32f vMax) {
    return convertP3(kernels().forwardFloats, between(vMin, vMax), pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize);
}

// ---- inverse, 8u

PxlStatus pxliGammaInv_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return convertC3(kernels().bytes, kGammaInverse8u, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliGammaInv_8u_AC4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return convertAC4(kernels().bytes, kGammaInverse8u, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliGammaInv_8u_P3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst[3], int dstStep, PxlSize roiSize) {
    return convertP3(kernels().bytes, kGammaInverse8u, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliGammaInv_8u_C3IR(Pxl8u* pSrcDst, int srcDstStep, PxlSize roiSize) {
    return convertC3(kernels().bytes, kGammaInverse8u, pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize);
}

PxlStatus pxliGammaInv_8u_AC4IR(Pxl8u* pSrcDst, int srcDstStep, PxlSize roiSize) {
    return convertAC4(kernels().bytes, kGammaInverse8u, pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize);
}

PxlStatus pxliGammaInv_8u_IP3R(Pxl8u* pSrcDst[3], int srcDstStep, PxlSize roiSize) {
    return convertP3(kernels().bytes, kGammaInverse8u, pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize);
}

// ---- inverse, 16u

PxlStatus pxliGammaInv_16u_C3R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize) {
    return convertC3(kernels().words, kGammaInverse16u, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliGammaInv_16u_AC4R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize) {
    return convertAC4(kernels().words, kGammaInverse16u, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliGammaInv_16u_P3R(const Pxl16u* pSrc[3], int srcStep, Pxl16u* pDst[3], int dstStep, PxlSize roiSize) {
    return convertP3(kernels().words, kGammaInverse16u, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliGammaInv_16u_C3IR(Pxl16u* pSrcDst, int srcDstStep, PxlSize roiSize) {
    return convertC3(kernels().words, kGammaInverse16u, pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize);
}

PxlStatus pxliGammaInv_16u_AC4IR(Pxl16u* pSrcDst, int srcDstStep, PxlSize roiSize) {
    return convertAC4(kernels().words, kGammaInverse16u, pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize);
}

PxlStatus pxliGammaInv_16u_IP3R(Pxl16u* pSrcDst[3], int srcDstStep, PxlSize roiSize) {
    return convertP3(kernels().words, kGammaInverse16u, pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize);
}

// ---- inverse, 32f

PxlStatus pxliGammaInv_32f_C3R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize, Pxl32f vMin,
                               Pxl32f vMax) {
    return convertC3(kernels().inverseFloats, between(vMin, vMax), pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliGammaInv_32f_AC4R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize,
                                Pxl32f vMin, Pxl32f vMax) {
    return convertAC4(kernels().inverseFloats, between(vMin, vMax), pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliGammaInv_32f_P3R(const Pxl32f* pSrc[3], int srcStep, Pxl32f* pDst[3], int dstStep, PxlSize roiSize,
                               Pxl32f vMin, Pxl32f vMax) {
    return convertP3(kernels().inverseFloats, between(vMin, vMax), pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliGammaInv_32f_C3IR(Pxl32f* pSrcDst, int srcDstStep, PxlSize roiSize, Pxl32f vMin, Pxl32f vMax) {
    return convertC3(kernels().inverseFloats, between(vMin, vMax), pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize);
}

PxlStatus pxliGammaInv_32f_AC4IR(Pxl32f* pSrcDst, int srcDstStep, PxlSize roiSize, Pxl32f vMin, Pxl32f vMax) {
    return convertAC4(kernels().inverseFloats, between(vMin, vMax), pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize);
}

PxlStatus pxliGammaInv_32f_IP3R(Pxl32f* pSrcDst[3], int srcDstStep, PxlSize roiSize, Pxl32f vMin, Pxl32f vMax) {
    return convertP3(kernels().inverseFloats, between(vMin, vMax), pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize);
}
