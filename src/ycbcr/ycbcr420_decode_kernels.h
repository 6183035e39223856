// Row kernels from YCbCr 4:2:0 and 4:1:1 to RGB, one table for each target.
#pragma once

#include "frame/rows.h"

namespace pxl {

// A 4:2:0 kernel converts a pair of rows, which share one row of chroma; width is even. Chroma planes come as Cb, Cr.
struct Ycbcr420DecodeKernels {
    using Luma = RowPair<const Pxl8u>;
    using Planes = RowOf<const Pxl8u, 2>;
    using Destination = RowPair<Pxl8u>;
    using FromPlanes = void (*)(Luma luma, Planes chroma, Destination dst, Index width);
    using FromPlanesAlpha = void (*)(Luma luma, Planes chroma, Destination dst, Pxl8u alpha, Index width);
    using FromPairs = void (*)(Luma luma, const Pxl8u* chroma, Destination dst, Index width);
    using FromPairsAlpha = void (*)(Luma luma, const Pxl8u* chroma, Destination dst, Pxl8u alpha, Index width);
    using From411 = void (*)(RowOf<const Pxl8u, 3> src, Pxl8u* dst, Index width);
    using From411Alpha = void (*)(RowOf<const Pxl8u, 3> src, Pxl8u* dst, Pxl8u alpha, Index width);

    FromPlanes ycbcr420ToRgbP3C3;
    FromPlanes ycbcr420ToBgrP3C3;
    FromPlanes ycbcr420ToBgr709CscP3C3;
    FromPlanesAlpha ycbcr420ToBgrP3C4;
    FromPlanesAlpha ycbcr420ToBgr709HdtvP3C4;
    FromPlanesAlpha ycrcb420ToRgbP3C4;
    FromPlanesAlpha ycrcb420ToBgrFilterP3C4;

    FromPairs ycbcr420ToRgbP2C3;
    FromPairs ycbcr420ToBgrP2C3;
    FromPairs ycrcb420ToRgbP2C3;
    FromPairs ycrcb420ToBgrP2C3;
    FromPairsAlpha ycbcr420ToRgbP2C4;
    FromPairsAlpha ycbcr420ToBgrP2C4;
    FromPairsAlpha ycrcb420ToRgbP2C4;
    FromPairsAlpha ycrcb420ToBgrP2C4;

    From411 ycbcr411ToBgrP3C3;
    From411Alpha ycbcr411ToBgrP3C4;
};

namespace sse42 {
extern const Ycbcr420DecodeKernels kYcbcr420DecodeKernels;
}
namespace avx2 {
extern const Ycbcr420DecodeKernels kYcbcr420DecodeKernels;
}
namespace avx512 {
extern const Ycbcr420DecodeKernels kYcbcr420DecodeKernels;
}
// past the caches
namespace avx2_streaming {
extern const Ycbcr420DecodeKernels kYcbcr420DecodeKernels;
}
namespace avx512_streaming {
extern const Ycbcr420DecodeKernels kYcbcr420DecodeKernels;
}

}  // namespace pxl
