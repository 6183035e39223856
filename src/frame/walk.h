// The walk of a function over its region, top to bottom, one kernel call a row.
#pragma once

#include "frame/views.h"

// Views that lie in memory, and not in registers, would cost a small image half its time.
#define PXL_WALK [[gnu::always_inline]] inline

namespace pxl {

// Calls kernel(row of each view ..., width) for each row.
template <class Size = PxlSize, class Kernel, class... Views>
PXL_WALK PxlStatus eachRow(Size size, Kernel kernel, Views... views) {
    for (Index y = 0; y < size.height; ++y) kernel(views.row(y)..., Index{size.width});
    return pxlStatusOk;
}

// The same for two rows at a time, in whole pairs of columns. An odd last row or column is left out, with a warning.
template <class Kernel, class... Views>
PXL_WALK PxlStatus eachRowPair(PxlSize size, Kernel kernel, Views... views) {
    const PxlSize whole = {size.width & ~1, size.height & ~1};
    eachRow(PxlSize{whole.width, whole.height / 2}, kernel, views...);
    return whole.width == size.width && whole.height == size.height ? pxlStatusOk : pxlStatusOddSize;
}

// eachRow for a kernel that treats all pixels of a row alike, so that rows which follow each other without a gap in
// all images (`dense`) make one long row.
template <class Size = PxlSize, class Kernel, class... Views>
PXL_WALK PxlStatus eachRun(bool dense, Size size, Kernel kernel, Views... views) {
    if (!dense || size.height < 1) return eachRow(size, kernel, views...);
    kernel(views.row(0)..., Index{size.width} * size.height);
    return pxlStatusOk;
}

// eachRow for a kernel that treats whole groups of kGroup pixels alike: where rows hold whole groups and follow each
// other without a gap in all images, they make one long row.
template <int kGroup, class Kernel, class... Views>
PXL_WALK PxlStatus eachRunOfGroups(PxlSize size, Kernel kernel, Views... views) {
    return eachRun(size.width % kGroup == 0 && (views.gapless(size.width) && ...), size, kernel, views...);
}

}  // namespace pxl
