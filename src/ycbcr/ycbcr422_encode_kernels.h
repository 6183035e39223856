// Row kernels from RGB to YCbCr 4:2:2, one table for each target.
#pragma once

#include "frame/rows.h"

namespace pxl {

// Planes come as R, G, B and as Y, Cb, Cr. The kernels to chroma-first pairs convert an odd last pixel, the others
// leave it out.
struct Ycbcr422EncodeKernels {
    using Packed = void (*)(const Pxl8u* src, Pxl8u* dst, Index width);
    using FromPlanes = void (*)(RowOf<const Pxl8u, 3> src, Pxl8u* dst, Index width);
    // All rows of an image, whose tables and constants serve them all.
    using Image = void (*)(const Pxl8u* src, Index srcStep, Pxl8u* dst, Index dstStep, PxlSize size);
    using ToPlanes = void (*)(const Pxl8u* src, RowOf<Pxl8u, 3> dst, Index width);

    Packed rgbC3ToYcbcr;
    Packed rgbC3ToYcrcb;
    Packed bgrC3ToYcbcr;
    Packed bgrAC4ToYcbcr;
    FromPlanes rgbP3ToYcbcr;
    FromPlanes rgbP3ToYcrcb;
    ToPlanes rgbC3P3;
    ToPlanes bgrC3P3;
    ToPlanes bgrAC4P3;
    Image rgbC3ToCbycrFiltered;
    Image rgbC3ToCbycrGamma;
    Packed bgrAC4ToCbycr;
    Packed bgrC3ToCbycr709Hdtv;
    Packed bgrAC4ToCbycr709Hdtv;
};

namespace sse42 {
extern const Ycbcr422EncodeKernels kYcbcr422EncodeKernels;
}
namespace avx2 {
extern const Ycbcr422EncodeKernels kYcbcr422EncodeKernels;
}
namespace avx512 {
extern const Ycbcr422EncodeKernels kYcbcr422EncodeKernels;
}

}  // namespace pxl
