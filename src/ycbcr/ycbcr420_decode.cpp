// YCbCr 4:2:0 and 4:1:1 to RGB: the exported functions.

#include "frame/checks.h"
#include "frame/streaming.h"
#include "frame/walk.h"
#include "pxlcc.h"
#include "ycbcr/ycbcr420_decode_kernels.h"

using namespace pxl;

namespace {

using Kernels = Ycbcr420DecodeKernels;

const Kernels& kernels() {
    return forActiveTarget(sse42::kYcbcr420DecodeKernels, avx2::kYcbcr420DecodeKernels, avx512::kYcbcr420DecodeKernels);
}

const Kernels& kernels(const Streaming& how) {
    return how.choose(kernels(), avx2_streaming::kYcbcr420DecodeKernels, avx512_streaming::kYcbcr420DecodeKernels);
}

template <class Kernel, class Chroma, class... Alpha>
PxlStatus decoded420(Kernel Kernels::*kernel, const Pxl8u* pLuma, int lumaStep, const Chroma& chroma, Pxl8u* pDst,
                     int dstStep, PxlSize roiSize, Alpha... aval) {
    const auto dst = packed<3 + sizeof...(aval)>(pDst, dstStep);
    const Streaming how(dst, roiSize, 2);
    return eachRowPair(roiSize, kernels(how).*kernel, pairs(pLuma, lumaStep), chroma, PairView<Pxl8u>{dst},
                       same(aval)...);
}

// The shapes that several functions share; the checks stand in each function. Arguments after the size go to the
// kernel.

struct ChromaPlanes {
    const Pxl8u *cb, *cr;
    int cbStep, crStep;
};

template <class Kernel, class... Alpha>
PxlStatus fromPlanes(Kernel Kernels::*kernel, const Pxl8u* pLuma, int lumaStep, const ChromaPlanes& chroma, Pxl8u* pDst,
                     int dstStep, PxlSize roiSize, Alpha... aval) {
    const PlanarView<const Pxl8u, 2> chromaView = {{{chroma.cb, chroma.cbStep}, {chroma.cr, chroma.crStep}}};
    return decoded420(kernel, pLuma, lumaStep, chromaView, pDst, dstStep, roiSize, aval...);
}

// Y, Cb, Cr
template <class Kernel, class... Alpha>
PxlStatus fromYcbcr(Kernel Kernels::*kernel, const Pxl8u* pSrc[3], const int srcStep[3], Pxl8u* pDst, int dstStep,
                    PxlSize roiSize, Alpha... aval) {
    const ChromaPlanes chroma = {pSrc[1], pSrc[2], srcStep[1], srcStep[2]};
    return fromPlanes(kernel, pSrc[0], srcStep[0], chroma, pDst, dstStep, roiSize, aval...);
}

// Y, Cr, Cb
template <class Kernel, class... Alpha>
PxlStatus fromYcrcb(Kernel Kernels::*kernel, const Pxl8u* pSrc[3], const int srcStep[3], Pxl8u* pDst, int dstStep,
                    PxlSize roiSize, Alpha... aval) {
    const ChromaPlanes chroma = {pSrc[2], pSrc[1], srcStep[2], srcStep[1]};
    return fromPlanes(kernel, pSrc[0], srcStep[0], chroma, pDst, dstStep, roiSize, aval...);
}

template <class Kernel, class... Alpha>
PxlStatus fromPairs(Kernel Kernels::*kernel, const Pxl8u* pSrcY, int srcYStep, const Pxl8u* pSrcChroma,
                    int srcChromaStep, Pxl8u* pDst, int dstStep, PxlSize roiSize, Alpha... aval) {
    return decoded420(kernel, pSrcY, srcYStep, view(pSrcChroma, srcChromaStep), pDst, dstStep, roiSize, aval...);
}

template <class Kernel, class... Alpha>
PxlStatus from411(Kernel Kernels::*kernel, const Pxl8u* pSrc[3], const int srcStep[3], Pxl8u* pDst, int dstStep,
                  PxlSize roiSize, Alpha... aval) {
    const auto dst = packed<3 + sizeof...(aval)>(pDst, dstStep);
    const Streaming how(dst, roiSize);
    return eachRunOfGroups<4>(roiSize, kernels(how).*kernel, subsampled<4>(pSrc, srcStep), dst, same(aval)...);
}

}  // namespace

PxlStatus pxliYCbCr420ToRGB_8u_P3C3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1), noNullIn<3>(pSrc))) return bad;
    return fromYcbcr(&Kernels::ycbcr420ToRgbP3C3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliYCbCr420ToRGB_8u_P2C3R(const Pxl8u* pSrcY, int srcYStep, const Pxl8u* pSrcCbCr, int srcCbCrStep,
                                     Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrcY, pSrcCbCr, pDst), atLeast(roiSize, 1, 1))) return bad;
    return fromPairs(&Kernels::ycbcr420ToRgbP2C3, pSrcY, srcYStep, pSrcCbCr, srcCbCrStep, pDst, dstStep, roiSize);
}

PxlStatus pxliYCbCr420ToRGB_8u_P2C4R(const Pxl8u* pSrcY, int srcYStep, const Pxl8u* pSrcCbCr, int srcCbCrStep,
                                     Pxl8u* pDst, int dstStep, PxlSize roiSize, Pxl8u aval) {
    if (const PxlStatus bad = firstBad(notNull(pSrcY, pSrcCbCr, pDst), atLeast(roiSize, 1, 1))) return bad;
    return fromPairs(&Kernels::ycbcr420ToRgbP2C4, pSrcY, srcYStep, pSrcCbCr, srcCbCrStep, pDst, dstStep, roiSize, aval);
}

PxlStatus pxliYCbCr420ToBGR_8u_P3C3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1), noNullIn<3>(pSrc))) return bad;
    return fromYcbcr(&Kernels::ycbcr420ToBgrP3C3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliYCbCr420ToBGR_8u_P3C4R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                     Pxl8u aval) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1), noNullIn<3>(pSrc))) return bad;
    return fromYcbcr(&Kernels::ycbcr420ToBgrP3C4, pSrc, srcStep, pDst, dstStep, roiSize, aval);
}

PxlStatus pxliYCbCr420ToBGR_8u_P2C3R(const Pxl8u* pSrcY, int srcYStep, const Pxl8u* pSrcCbCr, int srcCbCrStep,
                                     Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrcY, pSrcCbCr, pDst), atLeast(roiSize, 1, 1))) return bad;
    return fromPairs(&Kernels::ycbcr420ToBgrP2C3, pSrcY, srcYStep, pSrcCbCr, srcCbCrStep, pDst, dstStep, roiSize);
}

PxlStatus pxliYCbCr420ToBGR_8u_P2C4R(const Pxl8u* pSrcY, int srcYStep, const Pxl8u* pSrcCbCr, int srcCbCrStep,
                                     Pxl8u* pDst, int dstStep, PxlSize roiSize, Pxl8u aval) {
    if (const PxlStatus bad = firstBad(notNull(pSrcY, pSrcCbCr, pDst), atLeast(roiSize, 1, 1))) return bad;
    return fromPairs(&Kernels::ycbcr420ToBgrP2C4, pSrcY, srcYStep, pSrcCbCr, srcCbCrStep, pDst, dstStep, roiSize, aval);
}

PxlStatus pxliYCbCr420ToBGR_709CSC_8u_P3C3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep,
                                            PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1), noNullIn<3>(pSrc))) return bad;
    return fromYcbcr(&Kernels::ycbcr420ToBgr709CscP3C3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliYCbCr420ToBGR_709HDTV_8u_P3C4R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep,
                                             PxlSize roiSize, Pxl8u aval) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1), noNullIn<3>(pSrc))) return bad;
    return fromYcbcr(&Kernels::ycbcr420ToBgr709HdtvP3C4, pSrc, srcStep, pDst, dstStep, roiSize, aval);
}

PxlStatus pxliYCrCb420ToRGB_8u_P2C3R(const Pxl8u* pSrcY, int srcYStep, const Pxl8u* pSrcCbCr, int srcCbCrStep,
                                     Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrcY, pSrcCbCr, pDst), atLeast(roiSize, 1, 1))) return bad;
    return fromPairs(&Kernels::ycrcb420ToRgbP2C3, pSrcY, srcYStep, pSrcCbCr, srcCbCrStep, pDst, dstStep, roiSize);
}

PxlStatus pxliYCrCb420ToRGB_8u_P2C4R(const Pxl8u* pSrcY, int srcYStep, const Pxl8u* pSrcCbCr, int srcCbCrStep,
                                     Pxl8u* pDst, int dstStep, PxlSize roiSize, Pxl8u aval) {
    // the size before the pointers: deliberate
    if (const PxlStatus bad = firstBad(atLeast(roiSize, 1, 1), notNull(pSrcY, pSrcCbCr, pDst))) return bad;
    return fromPairs(&Kernels::ycrcb420ToRgbP2C4, pSrcY, srcYStep, pSrcCbCr, srcCbCrStep, pDst, dstStep, roiSize, aval);
}

PxlStatus pxliYCrCb420ToRGB_8u_P3C4R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                     Pxl8u aval) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1), noNullIn<3>(pSrc))) return bad;
    return fromYcrcb(&Kernels::ycrcb420ToRgbP3C4, pSrc, srcStep, pDst, dstStep, roiSize, aval);
}

PxlStatus pxliYCrCb420ToBGR_8u_P2C3R(const Pxl8u* pSrcY, int srcYStep, const Pxl8u* pSrcCbCr, int srcCbCrStep,
                                     Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrcY, pSrcCbCr, pDst), atLeast(roiSize, 1, 1))) return bad;
    return fromPairs(&Kernels::ycrcb420ToBgrP2C3, pSrcY, srcYStep, pSrcCbCr, srcCbCrStep, pDst, dstStep, roiSize);
}

PxlStatus pxliYCrCb420ToBGR_8u_P2C4R(const Pxl8u* pSrcY, int srcYStep, const Pxl8u* pSrcCbCr, int srcCbCrStep,
                                     Pxl8u* pDst, int dstStep, PxlSize roiSize, Pxl8u aval) {
    // the size before the pointers: deliberate
    if (const PxlStatus bad = firstBad(atLeast(roiSize, 1, 1), notNull(pSrcY, pSrcCbCr, pDst))) return bad;
    return fromPairs(&Kernels::ycrcb420ToBgrP2C4, pSrcY, srcYStep, pSrcCbCr, srcCbCrStep, pDst, dstStep, roiSize, aval);
}

PxlStatus pxliYCrCb420ToBGR_Filter_8u_P3C4R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep,
                                            PxlSize roiSize, Pxl8u aval) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1), noNullIn<3>(pSrc))) return bad;
    return fromYcrcb(&Kernels::ycrcb420ToBgrFilterP3C4, pSrc, srcStep, pDst, dstStep, roiSize, aval);
}

PxlStatus pxliYCbCr411ToBGR_8u_P3C3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), noNullIn<3>(pSrc), atLeast(roiSize, 4, 1))) return bad;
    return from411(&Kernels::ycbcr411ToBgrP3C3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliYCbCr411ToBGR_8u_P3C4R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                     Pxl8u aval) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), noNullIn<3>(pSrc), atLeast(roiSize, 4, 1))) return bad;
    return from411(&Kernels::ycbcr411ToBgrP3C4, pSrc, srcStep, pDst, dstStep, roiSize, aval);
}
