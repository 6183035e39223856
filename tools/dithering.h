// The kinds of dithering by the names that people type.
#pragma once

#include <map>
#include <string>

#include "raster.h"

namespace pxl::tool {

const std::map<std::string, int>& ditherTypes();

// All of them on a ramp and on a picture of RGB bytes, at 2, 4 and 16 levels, in one picture.
Image drawDitherings(const Image& picture);

}  // namespace pxl::tool
