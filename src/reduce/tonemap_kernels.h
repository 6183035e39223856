// Row kernels of the tone mapping and its byte fill, one table for each target.
#pragma once

#include "frame/rows.h"

namespace pxl {

struct ToneMapKernels {
    // The largest sample of the row and `largest`, which is no NaN; samples that are NaN count for nothing.
    Pxl32f (*maximum)(const Pxl32f* row, Index width, Pxl32f largest);
    // Adds sample x to sums[x mod 16].
    void (*addToSums)(const Pxl32f* row, Index width, Pxl64f (&sums)[16]);

    // The first `fours` samples, a multiple of 4, saturate; the others keep the low 8 bits.
    void (*linear)(const Pxl32f* src, Pxl8u* dst, Pxl32f reciprocal, Index fours, Index width);
    void (*mean)(const Pxl32f* src, Pxl8u* dst, Pxl32f factor, Index width);

    // Fills bytes past the caches.
    void (*fillStreaming)(Pxl8u* dst, Pxl8u value, Index count);
};

namespace sse42 {
extern const ToneMapKernels kToneMapKernels;
}
namespace avx2 {
extern const ToneMapKernels kToneMapKernels;
}
namespace avx512 {
extern const ToneMapKernels kToneMapKernels;
}

}  // namespace pxl
