// Sizes, lists of numbers and file names as people type them.
#pragma once

#include <string>
#include <vector>

#include "pxlcc/types.h"

namespace pxl::tool {

// "1920x1080"
PxlSize parseSize(const std::string& text);

// Exactly `count` numbers separated by commas or blanks; `what` names them in the error.
std::vector<double> parseNumbers(const std::string& text, const std::string& what, std::size_t count);

// The path with its place for a number (%d or %04d, any width, filled with zeros) replaced.
std::string numberedPath(const std::string& path, int number);
bool isNumbered(const std::string& path);

// What follows the last dot, in small letters.
std::string ending(const std::string& path);

}  // namespace pxl::tool
