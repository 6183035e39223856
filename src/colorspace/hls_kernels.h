// Row kernels between RGB and HLS, one table for each target.
#pragma once

#include "frame/rows.h"

namespace pxl {

struct HlsKernels {
    template <class Source, class Destination>
    using Row = void (*)(Source src, Destination dst, Index width);

    template <class T>
    struct Layouts {
        Row<const T*, T*> c3, ac4;
    };
    struct Direction {
        Layouts<Pxl8u> u8;
        Layouts<Pxl16u> u16;
        Layouts<Pxl16s> s16;
        Layouts<Pxl32f> f32;
    };
    Direction fromRgb, toRgb;

    using ConstRow3 = RowOf<const Pxl8u, 3>;
    using Row3 = RowOf<Pxl8u, 3>;
    using ConstRow4 = RowOf<const Pxl8u, 4>;
    using Row4 = RowOf<Pxl8u, 4>;
    struct BgrDirection {
        Row<const Pxl8u*, Row3> c3p3;
        Row<ConstRow3, Pxl8u*> p3c3;
        Row<ConstRow3, Row3> p3;
        Row<const Pxl8u*, Row4> ac4p4;
        Row<ConstRow4, Pxl8u*> ap4c4;
        Row<ConstRow4, Row4> ap4;
    };
    BgrDirection fromBgr, toBgr;
    Row<const Pxl8u*, Pxl8u*> fromBgrAC4;
};

namespace sse42 {
extern const HlsKernels kHlsKernels;
}
namespace avx2 {
extern const HlsKernels kHlsKernels;
}
namespace avx512 {
extern const HlsKernels kHlsKernels;
}

}  // namespace pxl
