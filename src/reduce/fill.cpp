#include "reduce/fill.h"

#include <string.h>

#include "frame/checks.h"
#include "frame/walk.h"
#include "pxlcore.h"

namespace pxl {
namespace {

constexpr Pxl32s kAskFrom = 524289;  // bytes

bool bypassesCaches(Pxl32s bytes) {
    int cacheBytes = 0;
    return bytes >= kAskFrom && pxlGetMaxCacheSizeB(&cacheBytes) == pxlStatusOk && bytes >= cacheBytes;
}

}  // namespace

PxlStatus fillImage8u(const ToneMapKernels& kernels, Pxl8u value, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pDst), atLeast(roiSize, 1, 1))) return bad;
    const bool streams = bypassesCaches(wrappedPixels(roiSize));
    const auto fillRow = [&](Pxl8u* dst, Index width) {
        if (streams) {
            kernels.fillStreaming(dst, value, width);
        } else {
            memset(dst, value, static_cast<size_t>(width));
        }
    };
    return eachRun(dstStep == roiSize.width, roiSize, fillRow, view(pDst, dstStep));
}

}  // namespace pxl
