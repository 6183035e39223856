// Row kernels of RGB and XYZ, one table for each target.
#pragma once

#include "frame/rows.h"

namespace pxl {

struct XyzKernels {
    template <class T>
    using Row = void (*)(const T* src, T* dst, Index width);

    // One sample type in both layouts.
    template <class T>
    struct Layouts {
        Row<T> c3, ac4;
    };
    struct Direction {
        Layouts<Pxl8u> u8;
        Layouts<Pxl16u> u16;
        Layouts<Pxl16s> s16;
        Layouts<Pxl32f> f32;
    };

    Direction rgbToXyz, xyzToRgb;
};

namespace sse42 {
extern const XyzKernels kXyzKernels;
}
namespace avx2 {
extern const XyzKernels kXyzKernels;
}
namespace avx512 {
extern const XyzKernels kXyzKernels;
}

}  // namespace pxl
