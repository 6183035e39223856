#include "pictures.h"

#include <algorithm>
#include <string_view>

#include "error.h"
#include "text.h"

namespace pxl::tool {

PictureFile pictureFile(const std::string& path) {
    const std::string letters = ending(path);
    if (letters == "png") return PictureFile::png;
    return letters == "ppm" || letters == "pgm" || letters == "pnm" ? PictureFile::pnm : PictureFile::none;
}

void checkPictureName(const std::string& path, int channels) {
    const std::string letters = ending(path);
    if (letters == "pgm" && channels != 1) fail(path, ": a .pgm is gray, the picture is in colour");
    if (letters == "ppm" && channels == 1) fail(path, ": a .ppm is in colour, the picture is gray");
    if (pictureFile(path) == PictureFile::pnm && channels == 4) fail(path, ": PNM has no fourth channel: write a .png");
}

void refuseForeignName(const std::string& path) {
    static constexpr std::string_view kEndings[] = {
        "jpg", "jpeg", "jpe", "jfif", "gif",  "bmp",  "tif", "tiff", "webp", "avif", "heic", "heif", "jxl", "jp2",
        "j2k", "exr",  "hdr", "tga",  "psd",  "svg",  "ico", "pcx",  "qoi",  "dng",  "cr2",  "nef",  "arw", "pam",
        "mp4", "m4v",  "mov", "mkv",  "webm", "avi",  "mpg", "mpeg", "ts",   "m2ts", "wmv",  "flv",  "ogv", "3gp",
        "mxf", "h264", "264", "h265", "265",  "hevc", "vp9", "ivf",  "av1",  "pdf",  "eps"};
    const std::string letters = ending(path);
    if (std::ranges::find(kEndings, letters) != std::end(kEndings))
        fail(path, ": .", letters, " files are not written; there are .png .ppm .pgm .pfm .y4m and raw samples");
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
            fail(input.name(), " is neither a PNG nor a PNM picture");
    }
}

Image readPicture(const std::string& path) {
    Input input(path);
    return readPicture(input);
}

void writePicture(Output& output, PictureFile kind, const Image& picture) {
    if (kind != PictureFile::png) return writePnm(output, picture);
    const std::vector<std::uint8_t> bytes = encodePng(picture);
    output.write(bytes.data(), bytes.size());
}

void writePicture(const std::string& path, const Image& picture) {
    checkPictureName(path, picture.shape().planes[0].channels);
    Output output(path);
    writePicture(output, pictureFile(path), picture);
    output.commit();
}

}  // namespace pxl::tool
