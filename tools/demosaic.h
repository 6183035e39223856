// Raw pictures of a sensor behind a Bayer colour filter.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "raster.h"

namespace pxl::tool {

// rggb, bggr, grbg or gbrg: the colours of the first two pixels and of the two below them.
int bayerGrid(const std::string& name);
const std::vector<std::string>& bayerNames();

// bilinear, vng or ahd.
const std::vector<std::string>& demosaicingMethods();
// The export for gray pictures of 8 or 16 bits.
const catalog::Export& demosaicingExport(const std::string& method, Element element);

// A gray picture to RGB of the same element type.
Image demosaic(const Image& raw, const std::string& method, int grid);

// What such a sensor sees of an RGB picture.
Image mosaic(const Image& picture, int grid);

// For the demonstration: the picture at half its size mosaicked and reconstructed by each method, a line of the table
// for each, and a sheet of the places where the methods differ most.
void demonstrateDemosaicing(const Image& source, const std::filesystem::path& folder);

}  // namespace pxl::tool
