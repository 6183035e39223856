// Calling an export of the catalogue on images.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "raster.h"

namespace pxl::tool {

// The export of that name; the error names the nearest ones. The leading "pxli" may be left out.
const catalog::Export& exportNamed(const std::string& name);

// What an export may need besides images.
struct Extras {
    double alpha = 0;
    std::vector<double> weights;  // empty: the function's own
    std::vector<float> matrix;
    double rangeLow = 0;
    double rangeHigh = 1;
    int ditherType = pxlDitherNone, noise = 0, levels = 16, threshold = 127;
    int part = 1;  // of a larger picture, as the two filters take it
    int grid = pxlBayRGGB;
    std::vector<float> gains;  // empty: none
};

// In-place functions read and write `destination` only. The size is that of `destination`.
PxlStatus apply(const catalog::Export& function, const Rows& source, const Rows& destination,
                const Extras& extras = {});
// The same, but anything else than success or the odd-size warning is an error.
PxlStatus applyOrFail(const catalog::Export& function, const Rows& source, const Rows& destination,
                      const Extras& extras = {});

// "pxlStatusBadSize (-6): ..."
std::string statusText(PxlStatus status);

// Nanoseconds of the fastest of `repeats` runs.
double fastestNanoseconds(int repeats, const std::function<void()>& run);

}  // namespace pxl::tool
