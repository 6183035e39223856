// The picture that the demonstration converts when the user brings none.
#pragma once

#include "raster.h"

namespace pxl::tool {

// 960 x 640 pixels of what conversions find hard: smooth ramps, a colour wheel, detail down to single pixels, saturated
// patches side by side, and text in colour on colour.
Image drawScene();

}  // namespace pxl::tool
