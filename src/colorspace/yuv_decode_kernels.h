// Row kernels from analog YUV to RGB, one table for each target. Where chroma is shared, a last odd column has a sample
// of its own.
#pragma once

#include "frame/rows.h"

namespace pxl {

struct YuvDecodeKernels {
    using Interleaved = void (*)(const Pxl8u* src, Pxl8u* dst, Index width);
    using FromPlanes = void (*)(RowOf<const Pxl8u, 3> src, Pxl8u* dst, Index width);
    using PlanesToPlanes = void (*)(RowOf<const Pxl8u, 3> src, RowOf<Pxl8u, 3> dst, Index width);
    using From420 = void (*)(RowPair<const Pxl8u> luma, RowOf<const Pxl8u, 2> chroma, RowPair<Pxl8u> dst, Index width);
    using From420ToPlanes = void (*)(RowPair<const Pxl8u> luma, RowOf<const Pxl8u, 2> chroma,
                                     const RowPairOf<Pxl8u, 3>& dst, Index width);

    Interleaved c3;
    Interleaved ac4;
    Interleaved c3ToAC4;
    FromPlanes planesToC3;
    PlanesToPlanes planes;

    Interleaved packed422ToC3;
    FromPlanes from422ToC3;
    FromPlanes from422ToAC4;
    PlanesToPlanes from422ToPlanes;

    From420 from420ToC3;
    From420 from420ToAC4;
    From420 from420ToBgrC3;
    From420ToPlanes from420ToPlanes;
};

namespace sse42 {
extern const YuvDecodeKernels kYuvDecodeKernels;
}
namespace avx2 {
extern const YuvDecodeKernels kYuvDecodeKernels;
}
namespace avx512 {
extern const YuvDecodeKernels kYuvDecodeKernels;
}
// past the caches
namespace avx2_streaming {
extern const YuvDecodeKernels kYuvDecodeKernels;
}
namespace avx512_streaming {
extern const YuvDecodeKernels kYuvDecodeKernels;
}

}  // namespace pxl
