#include "pictures.h"

#include "error.h"
#include "text.h"

namespace pxl::tool {

PictureFile pictureFile(const std::string& path) {
    const std::string letters = ending(path);
    if (letters == "png") return PictureFile::png;
    return letters == "ppm" || letters == "pgm" || letters == "pnm" ? PictureFile::pnm : PictureFile::none;
}

bool isPfmName(const std::string& path) { return ending(path) == "pfm"; }

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
