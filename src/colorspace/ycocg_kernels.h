// Row kernels of YCoCg, plain and reversible, one table for each target.
#pragma once

#include "frame/rows.h"

namespace pxl {

struct YcocgKernels {
    template <class Sample, class PlaneSample>
    using ToPlanes = void (*)(const Sample* src, RowOf<PlaneSample, 3> dst, Index width);
    template <class PlaneSample, class Sample>
    using FromPlanes = void (*)(RowOf<const PlaneSample, 3> src, Sample* dst, Index width);
    template <class PlaneSample, class Sample>
    using FromPlanesAlpha = void (*)(RowOf<const PlaneSample, 3> src, Sample* dst, Sample alpha, Index width);

    // Interleaved samples and planes, there and back.
    template <class Sample, class PlaneSample>
    struct Between {
        ToPlanes<Sample, PlaneSample> c3ToPlanes, c4ToPlanes;
        FromPlanes<PlaneSample, Sample> planesToC3;
        FromPlanesAlpha<PlaneSample, Sample> planesToC4;
    };
    struct Transform {
        Between<Pxl8u, Pxl16s> u8s16;
        Between<Pxl16s, Pxl16s> s16;
        Between<Pxl16s, Pxl32s> s16s32;
    };

    Transform plain, reversible;  // blue first
    ToPlanes<Pxl8u, Pxl8u> rgbToOffsetPlanes;
    FromPlanes<Pxl8u, Pxl8u> offsetPlanesToRgb;
};

namespace sse42 {
extern const YcocgKernels kYcocgKernels;
}
namespace avx2 {
extern const YcocgKernels kYcocgKernels;
}
namespace avx512 {
extern const YcocgKernels kYcocgKernels;
}

}  // namespace pxl
