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
    eachRunOfGroups<1>(
        size, [&](const Pxl32f* row, Index width) { largest = kernels().maximum(row, width, largest); }, image);
    return largest;
}

Pxl64f sumOf(View<const Pxl32f> image, PxlSize size) {
    Pxl64f sums[16] = {}, total = 0;
    eachRunOfGroups<16>(
        size, [&](const Pxl32f* row, Index width) { kernels().addToSums(row, width, sums); }, image);
    for (const Pxl64f sum : sums) total += sum;
    return total;
}

bool overlap(const Pxl32f* src, const Pxl8u* dst, Index count) {
    const auto from = reinterpret_cast<uintptr_t>(src), to = reinterpret_cast<uintptr_t>(dst);
    const auto samples = static_cast<uintptr_t>(count);
    return from < to + samples && to < from + sizeof(Pxl32f) * samples;
}

// Samples in fours saturate. What is left of a row, and all of a row that overlaps its destination, keeps the low 8
// bits: a negative sample wraps there, deliberately. So rows make one only where they are fours that overlap nothing.
PxlStatus mapLinear(View<const Pxl32f> src, View<Pxl8u> dst, PxlSize size, Pxl32f reciprocal) {
    const auto row = [&](const Pxl32f* from, Pxl8u* to, Index width) {
        kernels().linear(from, to, reciprocal, overlap(from, to, width) ? 0 : width / 4 * 4, width);
    };
    const bool dense = size.width % 4 == 0 && src.gapless(size.width) && dst.gapless(size.width) &&
                       !overlap(src.first, dst.first, Index{size.width} * size.height);
    return eachRun(dense, size, row, src, dst);
}

}  // namespace

PxlStatus pxliToneMapLinear_32f8u_C1R(const Pxl32f* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    const auto src = packed<1>(pSrc, srcStep);
    const Pxl32f maximum = maximumOf(src, roiSize);
    if (maximum < 0) return pxlStatusNoOperation;
    if (!(maximum > kSmallestNormal)) return fillImage8u(kernels(), 0, pDst, dstStep, roiSize);
    return mapLinear(src, packed<1>(pDst, dstStep), roiSize, 1.0f / maximum);
}

PxlStatus pxliToneMapMean_32f8u_C1R(const Pxl32f* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    const auto src = packed<1>(pSrc, srcStep);
    const Pxl64f mean = sumOf(src, roiSize) / wrappedPixels(roiSize);
    if (2 * mean < 0) return pxlStatusNoOperation;
    // a NaN among the samples ends here as well
    if (!(2 * mean > kSmallestNormal)) return fillImage8u(kernels(), 0, pDst, dstStep, roiSize);
    return eachRunOfGroups<1>(roiSize, kernels().mean, src, packed<1>(pDst, dstStep),
                              same(static_cast<Pxl32f>(127.5 / mean)));
}
