// Row kernels of PhotoYCC, one table for each target.
#pragma once

#include "frame/rows.h"

namespace pxl {

struct PhotoyccKernels {
    template <class T>
    using Interleaved = void (*)(const T* src, T* dst, Index width);

    // One direction in all sample types, without and with a fourth channel.
    struct Layout {
        Interleaved<Pxl8u> u8;
        Interleaved<Pxl16u> u16;
        Interleaved<Pxl16s> s16;
        Interleaved<Pxl32f> f32;
    };
    struct Direction {
        Layout c3, ac4;
    };

    Direction rgbToYcc, yccToRgb;
};

namespace sse42 {
extern const PhotoyccKernels kPhotoyccKernels;
}
namespace avx2 {
extern const PhotoyccKernels kPhotoyccKernels;
}
namespace avx512 {
extern const PhotoyccKernels kPhotoyccKernels;
}

}  // namespace pxl
