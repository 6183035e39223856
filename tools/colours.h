// Which exports lead from video to pictures and back.
#pragma once

#include <string>

#include "formats.h"

namespace pxl::tool {

// The export between frames of a family and 8-bit RGB or BGR with or without a fourth channel in the coefficient set
// "601", "709" or "709hdtv": the one for pictures like `picture` where the library has it, else one for others. Null if
// there is none.
const catalog::Export* encoder(std::string_view family, std::string_view matrix, const ImageShape& picture);
const catalog::Export* decoder(std::string_view family, std::string_view matrix, const ImageShape& picture);

// From v210, which is only read, with the one matrix that it has.
const catalog::Export* v210Decoder(std::string_view format);

// The sets that there are for the family, for messages; empty if none.
std::string matricesOf(std::string_view family, bool encodes);

}  // namespace pxl::tool
