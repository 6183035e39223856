// The files of pxlcc run: one or several for each side of an export.
#pragma once

#include <string>
#include <vector>

#include "raster.h"

namespace pxl::tool {

// One file for all planes or one for each, in the order of the export's name: raw samples, pictures, gray pictures of
// single planes. Chroma of odd sizes is rounded up.
Image readSide(const catalog::Export& function, const std::vector<std::string>& paths, const std::string& size);

// An error if files of these names cannot hold the destination.
void checkSide(const catalog::Export& function, const std::vector<std::string>& paths);
void writeSide(const Image& image, const std::vector<std::string>& paths);

// The side of an export as files hold it: chroma of odd sizes is rounded up.
ImageShape shapeInFiles(ImageShape shape);

}  // namespace pxl::tool
