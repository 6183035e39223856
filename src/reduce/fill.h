// The byte fill of the tone mapping.
#pragma once

#include "pxlcc.h"
#include "reduce/tonemap_kernels.h"

namespace pxl {

// Width times height as a 32-bit integer, in which sizes of 2^31 and more wrap.
inline Pxl32s wrappedPixels(PxlSize size) {
    return static_cast<Pxl32s>(static_cast<Pxl32u>(size.width) * static_cast<Pxl32u>(size.height));
}

// Sets every byte of the region: pxlStatusNullPointer, pxlStatusBadSize (below 1 x 1) or pxlStatusOk. An image of
// 524289 bytes or more that no processor cache holds, as pxlGetMaxCacheSizeB() tells, is written past the caches; where
// that function fails, it is not.
PxlStatus fillImage8u(const ToneMapKernels& kernels, Pxl8u value, Pxl8u* pDst, int dstStep, PxlSize roiSize);

}  // namespace pxl
