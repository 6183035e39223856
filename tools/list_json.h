// The catalogue for programs.
#pragma once

#include <vector>

#include "catalog.h"

namespace pxl::tool {

// What the catalogue knows about these exports, and which status the library answers to each wrong argument, as JSON on
// standard output.
void printAsJson(const std::vector<const catalog::Export*>& functions);

}  // namespace pxl::tool
