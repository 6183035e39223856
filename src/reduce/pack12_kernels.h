// Row kernels of the 12-bit packing, one table for each target. The width counts samples.
#pragma once

#include "frame/rows.h"

namespace pxl {

struct Pack12Kernels {
    void (*pack)(const Pxl16u* src, Pxl8u* dst, Index width);
    void (*unpack)(const Pxl8u* src, Pxl16u* dst, Index width);
};

namespace sse42 {
extern const Pack12Kernels kPack12Kernels;
}
namespace avx2 {
extern const Pack12Kernels kPack12Kernels;
}
namespace avx512 {
extern const Pack12Kernels kPack12Kernels;
}

}  // namespace pxl
