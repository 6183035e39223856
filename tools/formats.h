// How frames of pictures and video lie in memory and in files, and which exports lead from one to the other.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "raster.h"

namespace pxl::tool {

struct Format {
    std::string_view name;          // as --format takes it, and as a file name may end
    std::string_view otherNames;    // what other programs call it, with blanks between
    std::string_view family;        // formats of one family differ only in the order or number of planes in files
    std::string_view y4m;           // its colour space in a YUV4MPEG2 header, empty if it has none
    ImageShape shape;               // planes in the order Y, Cb, Cr
    std::vector<std::size_t> file;  // the planes of a file in its order; others are neutral chroma

    bool isPicture() const { return family == "picture"; }
};

// Letters may be small or large. Null if there is none of that name.
const Format* findFormat(std::string_view name);
// All names, for messages.
std::string formatNames();
// The picture format of these samples, R before B.
const Format& pictureFormat(Element element, int channels);
// Planes of the same sampling.
const Format* planarFormat(int sampling);
// The format of a YUV4MPEG2 colour space (without the C), null for those that are not read.
const Format* findY4m(std::string_view colourSpace);

// The size rounded up to whole chroma samples: what a frame of that size takes in memory.
PxlSize wholeBlocks(const Format& format, PxlSize size);
// Bytes of a row and number of rows of a plane in a file: the chroma of an odd size is rounded up, and rows of v210 end
// with padding to whole 128 bytes.
struct PlaneExtent {
    std::int64_t rowBytes, rows, padding = 0;
};
PlaneExtent extentInFile(const Format& format, std::size_t plane, PxlSize size);
std::int64_t bytesInFile(const Format& format, PxlSize size);

// A frame of that format in memory: whole chroma blocks, neutral chroma.
Image newFrame(const Format& format, PxlSize size);

}  // namespace pxl::tool
