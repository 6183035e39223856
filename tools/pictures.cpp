#include "pictures.h"

#include <algorithm>
#include <cctype>

#include "error.h"

namespace pxl::tool {

PictureFile pictureFile(const std::string& path) {
    const auto dot = path.rfind('.');
    std::string ending = dot == std::string::npos ? "" : path.substr(dot);
    std::transform(ending.begin(), ending.end(), ending.begin(), [](unsigned char c) { return std::tolower(c); });
    if (ending == ".png") return PictureFile::png;
    return ending == ".ppm" || ending == ".pgm" || ending == ".pnm" ? PictureFile::pnm : PictureFile::none;
}

Image readPicture(Input& input) {
    switch (input.peek()) {
        case 0x89:
            return readPng(input);
        case 'P':
            return readPnm(input);
        case -1:
            fail(input.name(), " is empty");
        default:
            fail(input.name(), " is neither a PNG nor a PPM or PGM picture");
    }
}

Image readPicture(const std::string& path) {
    Input input(path);
    return readPicture(input);
}

void writePicture(Output& output, PictureFile kind, const Image& picture) {
    if (kind == PictureFile::png)
        writePng(output, picture);
    else
        writePnm(output, picture);
}

void writePicture(const std::string& path, const Image& picture) {
    Output output(path);
    writePicture(output, pictureFile(path), picture);
    output.commit();
}

}  // namespace pxl::tool
