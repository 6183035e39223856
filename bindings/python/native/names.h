// Names of exports as Python writes names.
#pragma once

#include <string>
#include <string_view>

namespace pxl::python {

// pxliRGBToYCbCr_8u_C3R: rgb_to_ycbcr_8u_c3. Dense images, in-place functions and 64-bit sizes end in _dense, _inplace
// and _l.
std::string readableName(std::string_view exportName);

}  // namespace pxl::python
