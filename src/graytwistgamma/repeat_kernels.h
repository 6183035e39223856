// Row kernels from gray to colour, one table for each target.
#pragma once

#include "frame/rows.h"

namespace pxl {

// The sample in each of three channels, and a value in a fourth.
struct RepeatKernels {
    template <class T>
    using Repeat = void (*)(const T* src, T* dst, Index width);
    template <class T>
    using RepeatAlpha = void (*)(const T* src, T* dst, T alpha, Index width);

    Repeat<Pxl8u> toC3U8;
    Repeat<Pxl16u> toC3U16;
    Repeat<Pxl32f> toC3F32;
    RepeatAlpha<Pxl8u> toC4U8;
    RepeatAlpha<Pxl16u> toC4U16;
    RepeatAlpha<Pxl32f> toC4F32;
};

namespace sse42 {
extern const RepeatKernels kRepeatKernels;
}
namespace avx2 {
extern const RepeatKernels kRepeatKernels;
}
namespace avx512 {
extern const RepeatKernels kRepeatKernels;
}
// past the caches
namespace avx2_streaming {
extern const RepeatKernels kRepeatKernels;
}
namespace avx512_streaming {
extern const RepeatKernels kRepeatKernels;
}

}  // namespace pxl
