// PNG, PPM, PGM and PFM files.
#pragma once

#include <string>

#include "files.h"
#include "raster.h"

namespace pxl::tool {

enum class PictureFile { none, png, pnm };

// By the ending of the name: .png, .ppm, .pgm, .pnm.
PictureFile pictureFile(const std::string& path);

// 8- or 16-bit gray, RGB or RGBA by the file's first bytes; anything else is an error. Takes exactly the
// picture: more may follow.
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
void writePng(Output& output, const Image& picture);
Image readPnm(Input& input);
void writePnm(Output& output, const Image& picture);

}  // namespace pxl::tool
