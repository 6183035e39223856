#pragma once

#include "raster.h"

namespace pxl::tool {

// What 4:2:0 does to chroma down the columns, in one picture: an interlaced picture, whose fields show a bar in two
// places, through the plain conversions and through those that keep the fields apart; and a saturated edge with its
// rows repeated and with its rows interpolated. Everything is drawn larger.
Image drawChromaRows();

}  // namespace pxl::tool
