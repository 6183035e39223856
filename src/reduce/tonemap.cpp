// Tone mapping: the exported functions.

#include "frame/checks.h"
#include "frame/target.h"
#include "frame/walk.h"
#include "pxlcc.h"
#include "reduce/fill.h"

using namespace pxl;

namespace {

const ToneMapKernels& kernels() {
    return forActiveTarget(sse42::kToneMapKernels, avx2::kToneMapKernels, avx512::kToneMapKernels);
}

constexpr Pxl32f kSmallestNormal = 1.1754944e-38f;  // 2^-126, which as a double is 1.1754943508222875e-38

Pxl32f maximumOf(View<const Pxl32f> image, PxlSize size) {
    Pxl32f largest = -__builtin_inff();
    eachRow(
        size, [&](const Pxl32f* row, Index width) { largest = kernels().maximum(row, width, largest); }, image);
    return largest;
}

Pxl64f sumOf(View<const Pxl32f> image, PxlSize size) {
    Pxl64f sums[16] = {}, total = 0;
    eachRow(
        size, [&](const Pxl32f* row, Index width) { kernels().addToSums(row, width, sums); }, image);
    for (const Pxl64f sum : sums) total += sum;
    return total;
}

}  // namespace

PxlStatus pxliToneMapLinear_32f8u_C1R(const Pxl32f* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    const Pxl32f maximum = maximumOf(view(pSrc, srcStep), roiSize);
    if (maximum < 0) return pxlStatusNoOperation;
    if (!(maximum > kSmallestNormal)) return fillImage8u(kernels(), 0, pDst, dstStep, roiSize);
    return eachRow(roiSize, kernels().linear, view(pSrc, srcStep), view(pDst, dstStep), same(1.0f / maximum));
}

PxlStatus pxliToneMapMean_32f8u_C1R(const Pxl32f* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    const Pxl64f mean = sumOf(view(pSrc, srcStep), roiSize) / wrappedPixels(roiSize);
    if (2 * mean < 0) return pxlStatusNoOperation;
    // a NaN among the samples ends here as well
    if (!(2 * mean > kSmallestNormal)) return fillImage8u(kernels(), 0, pDst, dstStep, roiSize);
    return eachRow(roiSize, kernels().mean, view(pSrc, srcStep), view(pDst, dstStep),
                   same(static_cast<Pxl32f>(127.5 / mean)));
}
