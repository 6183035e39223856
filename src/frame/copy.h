// The plain copy of a plane: of the luma, wherever a conversion changes the chroma alone.
#pragma once

#include <cstdint>
#include <cstring>
#include <utility>

#include "frame/views.h"

namespace pxl {

// A row that may be so short that a call costs more than the copy: two pieces that overlap.
template <class Piece>
void copyTwoPieces(Pxl8u* dst, const Pxl8u* src, Index bytes) {
    const Index second = bytes - Index{sizeof(Piece)};
    Piece first, last;
    std::memcpy(&first, src, sizeof first);
    std::memcpy(&last, src + second, sizeof last);
    std::memcpy(dst, &first, sizeof first);
    std::memcpy(dst + second, &last, sizeof last);
}
inline void copyRow(Pxl8u* dst, const Pxl8u* src, Index bytes) {
    struct Sixteen {
        std::uint64_t low, high;
    };
    if (bytes > 32 || bytes < 4) return void(std::memcpy(dst, src, static_cast<std::size_t>(bytes)));
    if (bytes >= 16) return copyTwoPieces<Sixteen>(dst, src, bytes);
    if (bytes >= 8) return copyTwoPieces<std::uint64_t>(dst, src, bytes);
    copyTwoPieces<std::uint32_t>(dst, src, bytes);
}

// Rows that follow each other without a gap in both planes are copied as one run.
inline void copyRows(View<const Pxl8u> src, View<Pxl8u> dst, Index rowBytes, Index rows) {
    if (rows <= 0) return;
    if (isDense(src, rowBytes) && isDense(dst, rowBytes)) rowBytes *= std::exchange(rows, 1);
    for (Index y = 0; y < rows; ++y) copyRow(dst.row(y), src.row(y), rowBytes);
}

}  // namespace pxl
