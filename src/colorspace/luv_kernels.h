// Row kernels of RGB and LUV, one table for each target.
#pragma once

#include "frame/rows.h"

namespace pxl {

struct LuvKernels {
    template <class T>
    using Row = void (*)(const T* src, T* dst, Index width);

    // One sample type in the layouts that it comes in.
    template <class T>
    struct Layouts {
        Row<T> c3, ac4;
    };
    template <class T>
    struct LayoutsAndBgr {
        Row<T> c3, ac4, bgrC3;
    };
    struct Direction {
        LayoutsAndBgr<Pxl8u> u8;
        Layouts<Pxl16u> u16;
        Layouts<Pxl16s> s16;
        LayoutsAndBgr<Pxl32f> f32;
    };

    Direction rgbToLuv, luvToRgb;
};

namespace sse42 {
extern const LuvKernels kLuvKernels;
}
namespace avx2 {
extern const LuvKernels kLuvKernels;
}
namespace avx512 {
extern const LuvKernels kLuvKernels;
}

}  // namespace pxl
