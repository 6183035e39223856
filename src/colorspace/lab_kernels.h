// Row kernels of RGB and Lab, one table for each target.
#pragma once

#include "frame/rows.h"

namespace pxl {

// Both directions; From and To are the samples of RGB and Lab or of Lab and RGB.
struct LabKernels {
    template <class From, class To = From>
    using Row = void (*)(const From* src, To* dst, Index width);
    template <class T>
    using Planes = void (*)(RowOf<const T, 3> src, RowOf<T, 3> dst, Index width);

    template <class T>
    struct Interleaved {
        Row<T> rgb, bgr;
    };
    struct Direction {
        Interleaved<Pxl8u> u8;
        Interleaved<Pxl32f> f32;
        Planes<Pxl32f> f32P3;
        Planes<Pxl64f> f64P3;
    };

    Direction toLab, fromLab;
    Row<Pxl8u, Pxl16u> bgrToLab16u;
    Row<Pxl16u, Pxl8u> lab16uToBgr;
};

namespace sse42 {
extern const LabKernels kLabKernels;
}
namespace avx2 {
extern const LabKernels kLabKernels;
}
namespace avx512 {
extern const LabKernels kLabKernels;
}

}  // namespace pxl
