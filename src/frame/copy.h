// The plain copy of a plane: of the luma, wherever a conversion changes the chroma alone.
#pragma once

#include <cstring>
#include <utility>

#include "frame/views.h"

namespace pxl {

// Rows that follow each other without a gap in both planes are copied as one run.
inline void copyRows(View<const Pxl8u> src, View<Pxl8u> dst, Index rowBytes, Index rows) {
    if (rows <= 0) return;
    if (isDense(src, rowBytes) && isDense(dst, rowBytes)) rowBytes *= std::exchange(rows, 1);
    for (Index y = 0; y < rows; ++y) std::memcpy(dst.row(y), src.row(y), static_cast<std::size_t>(rowBytes));
}

}  // namespace pxl
