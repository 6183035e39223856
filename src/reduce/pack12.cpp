// Packing of 12-bit samples: the exported functions.

#include "frame/checks.h"
#include "frame/target.h"
#include "frame/walk.h"
#include "pxlcc.h"
#include "reduce/pack12_kernels.h"

using namespace pxl;

namespace {

const Pack12Kernels& kernels() {
    return forActiveTarget(sse42::kPack12Kernels, avx2::kPack12Kernels, avx512::kPack12Kernels);
}

// Rows of whole pairs without gaps on both sides are one row.
bool isDense(int wordStep, int packedStep, int width) {
    return width % 2 == 0 && wordStep == Index{2} * width && packedStep == Index{width} / 2 * 3;
}

}  // namespace

PxlStatus pxliPack_16u12u_C1R(const Pxl16u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1), positiveSteps(srcStep, dstStep)))
        return bad;
    return eachRun(isDense(srcStep, dstStep, roiSize.width), roiSize, kernels().pack, view(pSrc, srcStep),
                   view(pDst, dstStep));
}

PxlStatus pxliUnpack_12u16u_C1R(const Pxl8u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1), positiveSteps(srcStep, dstStep)))
        return bad;
    return eachRun(isDense(dstStep, srcStep, roiSize.width), roiSize, kernels().unpack, view(pSrc, srcStep),
                   view(pDst, dstStep));
}
