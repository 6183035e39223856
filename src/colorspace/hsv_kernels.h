// Row kernels between RGB and HSV, one table for each target.
#pragma once

#include "frame/rows.h"

namespace pxl {

struct HsvKernels {
    template <class T>
    using Row = void (*)(const T* src, T* dst, Index width);

    template <class T>
    struct Layouts {
        Row<T> c3, ac4;
    };
    struct Direction {
        Layouts<Pxl8u> u8;
        Layouts<Pxl16u> u16;
    };
    Direction fromRgb, toRgb;
};

namespace sse42 {
extern const HsvKernels kHsvKernels;
}
namespace avx2 {
extern const HsvKernels kHsvKernels;
}
namespace avx512 {
extern const HsvKernels kHsvKernels;
}

}  // namespace pxl
