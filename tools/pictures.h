// PNG, PPM, PGM and PFM files.
#pragma once

#include <string>
#include <vector>

#include "files.h"
#include "raster.h"

namespace pxl::tool {

enum class PictureFile { none, png, pnm };

// By the ending of the name: .png, .ppm, .pgm, .pnm.
PictureFile pictureFile(const std::string& path);

// An error if the ending of the name promises something else than these channels: .pgm is gray, .ppm colour. The
// picture may have a fourth channel in a .png only.
void checkPictureName(const std::string& path, int channels);

// An error if the name ends like a picture or video file of a kind that is not written.
void refuseForeignName(const std::string& path);

// 8- or 16-bit gray, RGB or RGBA by the file's first bytes; anything else is an error. Palettes become colours, samples
// of fewer bits or with another largest value are scaled to all 8 or 16 bits. Takes exactly the picture: more may
// follow.
Image readPicture(Input& input);
Image readPicture(const std::string& path);

// Samples in RGB order. Gray of single bits, white is 1, is a PNG of that depth or a PBM. PNM holds no alpha: a fourth
// channel is an error there.
void writePicture(Output& output, PictureFile kind, const Image& picture);
void writePicture(const std::string& path, const Image& picture);

// Files of floats (.pfm): gray or RGB. Samples pass as they are.
bool isPfmName(const std::string& path);
Image readPfm(Input& input);
void writePfm(Output& output, const Image& picture);

// The codecs behind these.
Image readPng(Input& input);
std::vector<std::uint8_t> encodePng(const Image& picture);
Image readPnm(Input& input);
void writePnm(Output& output, const Image& picture);

}  // namespace pxl::tool
