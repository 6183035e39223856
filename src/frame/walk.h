// The walk of a function over its region, top to bottom, one kernel call a row.
#pragma once

#include "frame/views.h"

namespace pxl {

// Calls kernel(row of each view ..., width) for each row.
template <class Kernel, class... Views>
PxlStatus eachRow(PxlSize size, Kernel kernel, Views... views) {
    for (Index y = 0; y < size.height; ++y) kernel(views.row(y)..., Index{size.width});
    return pxlStatusOk;
}

}  // namespace pxl
