// Row kernels of the colour twist, one table for each target.
#pragma once

#include "frame/rows.h"

namespace pxl {

// Working copies of the caller's matrix, row by row: row i makes output channel i.
struct Twist {
    Pxl32f t[3][4];     // columns: the input channels and the offset
    bool fitsIntegers;  // 32-bit integers hold every sum that the image's samples can give
};
struct Twist4 {
    Pxl32f t[4][4];  // columns: the input channels
};

// Source and destination may be the same row.
struct TwistKernels {
    template <class T>
    using Interleaved = void (*)(const T* src, T* dst, Twist twist, Index width);
    template <class T>
    using Planes = void (*)(RowOf<const T, 3> src, RowOf<T, 3> dst, Twist twist, Index width);

    // One sample type in the three layouts.
    template <class T>
    struct Layouts {
        Interleaved<T> c3, ac4;
        Planes<T> p3;
    };

    Layouts<Pxl8u> u8;
    Layouts<Pxl16u> u16;
    Layouts<Pxl16s> s16;
    Layouts<Pxl32f> f32;
    void (*c4)(const Pxl32f* src, Pxl32f* dst, Twist4 twist, Index width);
};

namespace sse42 {
extern const TwistKernels kTwistKernels;
}
namespace avx2 {
extern const TwistKernels kTwistKernels;
}
namespace avx512 {
extern const TwistKernels kTwistKernels;
}

}  // namespace pxl
