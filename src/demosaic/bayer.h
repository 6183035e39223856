// Where the colours of a Bayer image stand, and which of its pixels a call converts.
#pragma once

#include <algorithm>

#include "frame/checks.h"
#include "frame/views.h"

namespace pxl {

// The colours of the 2x2 cells. The code is read as bits: a caller may pass one that no enumerator has.
class BayerGrid {
public:
    explicit BayerGrid(const PxlBayerGrid& grid) { __builtin_memcpy(&code_, &grid, sizeof code_); }
    bool valid() const { return code_ <= pxlBayGRBG; }
    // Row y has red and green pixels, or else blue and green ones.
    bool redRow(Index y) const { return ((code_ ^ y) & 1) != 0; }
    bool green(Index x, Index y) const { return ((x ^ y) & 1) == (code_ < pxlBayGBRG ? 1 : 0); }

private:
    Pxl32u code_;
};

inline auto valid(BayerGrid grid) {
    return Check{[=]() -> PxlStatus { return grid.valid() ? pxlStatusOk : pxlStatusBadArgument; }};
}

// A coordinate mirrored at the first and the last of n >= 2 pixels until it is inside. Colours repeat every two pixels,
// so that a pixel and its image have the same.
inline Index mirrored(Index x, Index n) {
    while (x < 0 || x >= n) x = x < 0 ? -x : 2 * (n - 1) - x;
    return x;
}

// The pixels first .. last of an axis.
struct Span {
    Index first, last;
    bool empty() const { return last < first; }
    bool has(Index x) const { return first <= x && x <= last; }
    Index count() const { return last - first + 1; }
};

// Those of a rectangle's pixels that are in an image of `size` pixels. Of what lies outside nothing is converted.
inline Span insideImage(Index first, Index count, Index size) {
    if (first >= size) return {0, -1};
    return {std::max<Index>(first, 0), std::min(first + count, size) - 1};
}

}  // namespace pxl
