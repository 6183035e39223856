// One conversion of one picture in memory: odd sizes, fields and what an export asks of its arguments.
#pragma once

#include <array>
#include <vector>

#include "conversions.h"

namespace pxl::gst {

// In the order of Side::components.
using Planes = std::vector<catalog::PlaneRef>;

struct Task {
    const Conversion* conversion = nullptr;
    const Conversion* interlaced = nullptr;  // for whole interlaced pictures, or null: field by field
    std::array<float, 3> weights = {};       // of the three channels in memory, for gray
};

// Converts a picture of any size from 1 x 1, raw Bayer samples from the smallest size of their export.
//
// Where chroma samples serve several pixels and the size is odd, the last ones serve the pixels that there are: the
// last columns and rows are converted beside the picture, continued by copies of themselves.
PxlStatus convertPicture(const Task& task, const Planes& source, const Planes& destination, PxlSize size,
                         bool interlaced);

}  // namespace pxl::gst
