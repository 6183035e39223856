// Row kernels from RGB to analog YUV, one table for each target. Where chroma is shared, a last odd column makes a pair
// with itself.
#pragma once

#include "frame/rows.h"

namespace pxl {

struct YuvEncodeKernels {
    using Interleaved = void (*)(const Pxl8u* src, Pxl8u* dst, Index width);
    using ToPlanes = void (*)(const Pxl8u* src, RowOf<Pxl8u, 3> dst, Index width);
    using ToPlanesAlpha = void (*)(const Pxl8u* src, RowOf<Pxl8u, 4> dst, Index width);
    using PlanesToPlanes = void (*)(RowOf<const Pxl8u, 3> src, RowOf<Pxl8u, 3> dst, Index width);
    using PairTo420 = void (*)(RowPair<const Pxl8u> src, RowPair<Pxl8u> luma, RowOf<Pxl8u, 2> chroma, Index width);
    using PlanesPairTo420 = void (*)(const RowPairOf<const Pxl8u, 3>& src, RowPair<Pxl8u> luma, RowOf<Pxl8u, 2> chroma,
                                     Index width);

    Interleaved c3;
    Interleaved ac4;
    ToPlanes c3ToPlanes;
    ToPlanesAlpha ac4ToPlanes;
    PlanesToPlanes planes;

    Interleaved c3To422Packed;
    ToPlanes c3To422;
    PlanesToPlanes planesTo422;

    PairTo420 c3To420;
    PlanesPairTo420 planesTo420;
    PairTo420 bgrAC4To420;
};

namespace sse42 {
extern const YuvEncodeKernels kYuvEncodeKernels;
}
namespace avx2 {
extern const YuvEncodeKernels kYuvEncodeKernels;
}
namespace avx512 {
extern const YuvEncodeKernels kYuvEncodeKernels;
}

}  // namespace pxl
