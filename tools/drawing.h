// Drawing into 8-bit RGB pictures.
#pragma once

#include <string_view>

#include "raster.h"

namespace pxl::tool {

struct Colour {
    std::uint8_t r, g, b;
};

Image newPicture(PxlSize size, Colour background);

// Nothing is drawn outside the picture.
void setPixel(Image& picture, int x, int y, Colour colour);
void fillRectangle(Image& picture, PxlRect area, Colour colour);

// Capitals, digits and signs of 5 x 7 pixels times `scale`; small letters become capitals.
void drawText(Image& picture, int x, int y, std::string_view text, Colour colour, int scale = 1);

// Draws a picture averaged down so that it fits into the area (never up), at its top left.
void drawThumbnail(Image& picture, PxlRect area, const Image& original);

// Draws an area of a picture of RGB bytes with every pixel as a square of `zoom` pixels.
void drawZoomed(Image& sheet, int left, int top, const Image& picture, PxlRect area, int zoom);

}  // namespace pxl::tool
