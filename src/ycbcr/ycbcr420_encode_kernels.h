// Row kernels from RGB to YCbCr 4:2:0 and 4:1:1, one table for each target. They convert whole blocks: the width is
// even, for 4:1:1 a multiple of 4.
#pragma once

#include "frame/rows.h"

namespace pxl {

struct Ycbcr420EncodeKernels {
    using ToPlanes = void (*)(RowPair<const Pxl8u> src, RowPair<Pxl8u> luma, RowOf<Pxl8u, 2> chroma, Index width);
    using ToSemiPlanar = void (*)(RowPair<const Pxl8u> src, RowPair<Pxl8u> luma, Pxl8u* chroma, Index width);
    using To411 = void (*)(const Pxl8u* src, Pxl8u* luma, RowOf<Pxl8u, 2> chroma, Index width);

    // ITU-R BT.601
    ToPlanes rgbC3P3;
    ToPlanes rgbAC4P3;
    ToPlanes bgrC3P3;
    ToPlanes bgrAC4P3;
    ToSemiPlanar rgbC3P2;
    ToSemiPlanar rgbC4P2;
    ToSemiPlanar bgrC3P2;
    ToSemiPlanar bgrAC4P2;
    To411 bgrC3To411;
    To411 bgrAC4To411;
    // ITU-R BT.709
    ToPlanes bgr709C3P3;
    ToPlanes bgr709AC4P3;
    ToPlanes bgr709HdtvAC4P3;
    ToSemiPlanar bgr709C3P2;
    ToSemiPlanar bgr709AC4P2;
};

namespace sse42 {
extern const Ycbcr420EncodeKernels kYcbcr420EncodeKernels;
}
namespace avx2 {
extern const Ycbcr420EncodeKernels kYcbcr420EncodeKernels;
}
namespace avx512 {
extern const Ycbcr420EncodeKernels kYcbcr420EncodeKernels;
}

}  // namespace pxl
