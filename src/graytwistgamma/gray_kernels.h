// Row kernels from colour to gray, one table for each target.
#pragma once

#include "frame/rows.h"

namespace pxl {

// Weights of the three channels: as the caller gives them, or for bytes in Q15.
template <class T>
struct GrayWeights {
    using Given = T;
    T of[3];
};
struct GrayWeightsQ15 {
    using Given = Pxl32f;
    Pxl16u of[3];
};

struct GrayKernels {
    template <class T, class Weights>
    using ToGray = void (*)(const T* src, T* dst, Weights weights, Index width);

    ToGray<Pxl8u, GrayWeightsQ15> c3U8, ac4U8;
    ToGray<Pxl16u, GrayWeights<Pxl32f>> c3U16, ac4U16;
    ToGray<Pxl16s, GrayWeights<Pxl32f>> c3S16, ac4S16;
    ToGray<Pxl32f, GrayWeights<Pxl32f>> c3F32, ac4F32;
    ToGray<Pxl64f, GrayWeights<Pxl64f>> c3F64, ac4F64;

    void (*luma422)(const Pxl8u* src, Pxl8u* dst, Index width);  // from Y0 Cb Y1 Cr
};

namespace sse42 {
extern const GrayKernels kGrayKernels;
}
namespace avx2 {
extern const GrayKernels kGrayKernels;
}
namespace avx512 {
extern const GrayKernels kGrayKernels;
}

}  // namespace pxl
