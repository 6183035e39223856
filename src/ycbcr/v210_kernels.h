// Row kernels from v210, one table for each target.
#pragma once

#include "frame/rows.h"

namespace pxl {

struct V210Kernels {
    using Kernel = void (*)(const Pxl32u* src, Pxl16u* dst, Index width);
    Kernel toGray;
    Kernel toRgb;  // red in the low bits
    Kernel toBgr;
};

namespace sse42 {
extern const V210Kernels kV210Kernels;
}
namespace avx2 {
extern const V210Kernels kV210Kernels;
}
namespace avx512 {
extern const V210Kernels kV210Kernels;
}

}  // namespace pxl
