// Row kernels between RGB and YCbCr 4:4:4, one table for each target.
#pragma once

#include "frame/rows.h"

namespace pxl {

using Row3 = RowOf<Pxl8u, 3>;
using ConstRow3 = RowOf<const Pxl8u, 3>;

struct Ycbcr444Kernels {
    using Interleaved = void (*)(const Pxl8u* src, Pxl8u* dst, Index width);
    using ToPlanes = void (*)(const Pxl8u* src, Row3 dst, Index width);
    using FromPlanes = void (*)(ConstRow3 src, Pxl8u* dst, Index width);
    using FromPlanesAlpha = void (*)(ConstRow3 src, Pxl8u* dst, Pxl8u alpha, Index width);
    using Planes = void (*)(ConstRow3 src, Row3 dst, Index width);

    Interleaved rgbToYcbcrC3;
    Interleaved rgbToYcbcrAC4;
    ToPlanes rgbToYcbcrC3P3;
    ToPlanes rgbToYcbcrAC4P3;
    Planes rgbToYcbcrP3Aligned;  // width a multiple of 16
    Planes rgbToYcbcrP3;

    Interleaved ycbcrToRgbC3;
    Interleaved ycbcrToRgbAC4;
    FromPlanes ycbcrToRgbP3C3;
    FromPlanesAlpha ycbcrToRgbP3C4;
    Planes ycbcrToRgbP3;
    FromPlanes ycbcrToBgrP3C3;
    FromPlanesAlpha ycbcrToBgrP3C4;
    FromPlanes ycbcr709ToBgrP3C3;
    FromPlanesAlpha ycbcr709ToBgrP3C4;
};

namespace sse42 {
extern const Ycbcr444Kernels kYcbcr444Kernels;
}
namespace avx2 {
extern const Ycbcr444Kernels kYcbcr444Kernels;
}
namespace avx512 {
extern const Ycbcr444Kernels kYcbcr444Kernels;
}
// past the caches
namespace avx2_streaming {
extern const Ycbcr444Kernels kYcbcr444Kernels;
}
namespace avx512_streaming {
extern const Ycbcr444Kernels kYcbcr444Kernels;
}

}  // namespace pxl
