// Sizes and lists of numbers as people type them.
#pragma once

#include <string>
#include <vector>

#include "pxlcc/types.h"

namespace pxl::tool {

// "1920x1080"
PxlSize parseSize(const std::string& text);

// Exactly `count` numbers separated by commas or blanks; `what` names them in the error.
std::vector<double> parseNumbers(const std::string& text, const std::string& what, std::size_t count);

}  // namespace pxl::tool
