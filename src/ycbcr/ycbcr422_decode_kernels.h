// Row kernels from YCbCr 4:2:2 to RGB, one table for each target.
#pragma once

#include "frame/rows.h"

namespace pxl {

// Planes come as Y, Cb, Cr and as R, G, B. Kernels from planes convert an even width.
struct Ycbcr422DecodeKernels {
    using Packed = void (*)(const Pxl8u* src, Pxl8u* dst, Index width);
    using PackedAlpha = void (*)(const Pxl8u* src, Pxl8u* dst, Pxl8u alpha, Index width);
    using PackedToPlanes = void (*)(const Pxl8u* src, RowOf<Pxl8u, 3> dst, Index width);
    using FromPlanes = void (*)(RowOf<const Pxl8u, 3> src, Pxl8u* dst, Index width);

    Packed ycbcrToRgbC3;
    Packed ycbcrToBgrC3;
    Packed ycrcbToRgbC3;
    Packed ycrcbToBgrC3;
    Packed cbycrToRgbC3;
    Packed cbycr709HdtvToBgrC3;
    PackedAlpha ycbcrToRgbC4;
    PackedAlpha ycbcrToBgrC4;
    PackedAlpha ycrcbToRgbC4;
    PackedAlpha ycrcbToBgrC4;
    PackedAlpha cbycrToBgrC4;
    PackedAlpha cbycr709HdtvToBgrC4;
    PackedToPlanes ycbcrToRgbP3;
    PackedToPlanes ycrcbToRgbP3;
    FromPlanes planesToRgbC3;
    FromPlanes planesToBgrC3;
};

namespace sse42 {
extern const Ycbcr422DecodeKernels kYcbcr422DecodeKernels;
}
namespace avx2 {
extern const Ycbcr422DecodeKernels kYcbcr422DecodeKernels;
}
namespace avx512 {
extern const Ycbcr422DecodeKernels kYcbcr422DecodeKernels;
}
// past the caches
namespace avx2_streaming {
extern const Ycbcr422DecodeKernels kYcbcr422DecodeKernels;
}
namespace avx512_streaming {
extern const Ycbcr422DecodeKernels kYcbcr422DecodeKernels;
}

}  // namespace pxl
