// The functions without steps: every plane lies in memory without gaps, its rows behind each other.
#pragma once

#include <stdint.h>

#include "frame/walk.h"

namespace pxl {

template <class T>
View<T> denseRgb(T* p, PxlSize size) {
    return packed<3>(p, Index{3} * size.width);
}

template <class T>
PlanarView<T, 3> denseRgbPlanes(T* const* p, PxlSize size) {
    return planes<3>(p, size.width);
}

// Chroma rows have a sample for a last odd column as well.
inline Index denseChromaStep(PxlSize size) { return (size.width >> 1) + (size.width & 1); }

template <class T>
PlanarView<T, 3> denseYuv(T* const* p, PxlSize size) {
    const Index chroma = denseChromaStep(size);
    return {{{p[0], size.width}, {p[1], chroma}, {p[2], chroma}}};
}

// 4:2:2 images of some size are one long row. The product is one of 32 bits: an image of 2^32 pixels
// goes row by row.
template <class Kernel, class... Views>
PxlStatus eachDenseRow(PxlSize size, Kernel kernel, Views... views) {
    const uint32_t pixels = static_cast<uint32_t>(size.width) * static_cast<uint32_t>(size.height);
    return eachRun(pixels >= 256 && size.width % 2 == 0, size, kernel, views...);
}

template <class T>
RowPair<T> twice(T* row) {
    return {row, row};
}
template <class T, int kPlanes>
RowPairOf<T, kPlanes> twice(const RowOf<T, kPlanes>& row) {
    return {row, row};
}

// One argument of a 4:2:0 kernel: an image of which it takes two rows at a time, the last odd one twice; or chroma.
template <class Pairs>
struct LumaRows {
    Pairs pairs;
    auto row(Index k) const { return pairs.row(k); }
    auto last(Index y) const { return twice(pairs.image.row(y)); }
};
template <class T, int kPlanes>
struct ChromaRows {
    PlanarView<T, kPlanes> view;
    auto row(Index k) const { return view.row(k); }
    auto last(Index y) const { return view.row(y / 2); }
};

// 4:2:0: an odd last row makes a pair with itself.
template <class Kernel, class... Views>
PxlStatus eachDenseRowPair(PxlSize size, Kernel kernel, Views... views) {
    eachRow(PxlSize{size.width, size.height / 2}, kernel, views...);
    if (size.height % 2 != 0) kernel(views.last(size.height - 1)..., Index{size.width});
    return pxlStatusOk;
}

}  // namespace pxl
