#include "chroma_rows.h"

#include <string>
#include <vector>

#include "drawing.h"
#include "exports.h"

namespace pxl::tool {

namespace {

constexpr PxlSize kSize = {72, 48};
constexpr int kZoom = 5, kGap = 8, kTitle = 14;

// A bar on its way to the right: the even rows are the earlier field.
Image movingBar() {
    Image picture = newPicture(kSize, {120, 120, 120});
    for (int y = 8; y < kSize.height - 8; ++y) fillRectangle(picture, {y % 2 == 0 ? 14 : 30, y, 26, 1}, {230, 20, 20});
    return picture;
}

Image slantedEdge() {
    Image picture = newPicture(kSize, {20, 60, 230});
    for (int x = 0; x < kSize.width; ++x) {
        const int top = 6 + x / 2;
        fillRectangle(picture, {x, top, 1, kSize.height - top}, {240, 200, 20});
    }
    return picture;
}

// Through the exports one after the other.
Image through(const Image& picture, const std::vector<std::string>& names) {
    Image image = picture;
    for (const std::string& name : names) {
        const catalog::Export& function = exportNamed(name);
        Image next(function.destination, picture.size());
        applyOrFail(function, image, next);
        image = next;
    }
    return image;
}

const std::string kEncode = "pxliRGBToYCbCr422_8u_C3P3R", kDecode = "pxliYCbCr422ToRGB_8u_P3C3R",
                  kTopRow = "pxliYCbCr422ToYCbCr420_8u_P3R", kRepeat = "pxliYCbCr420ToYCbCr422_8u_P3R";

}  // namespace

Image drawChromaRows() {
    const Image bar = movingBar(), edge = slantedEdge();
    struct Picture {
        const char* title;
        Image image;
    };
    const Picture pictures[2][3] = {
        {{"interlaced", bar},
         {"4:2:0 of whole rows", through(bar, {kEncode, kTopRow, kRepeat, kDecode})},
         {"4:2:0 of fields", through(bar, {kEncode, "pxliYCbCr422To420_Interlace_8u_P3R",
                                           "pxliYCbCr420To422_Interlace_8u_P3R", kDecode})}},
        {{"edge", edge},
         {"chroma rows repeated", through(edge, {kEncode, kTopRow, kRepeat, kDecode})},
         {"chroma rows filtered", through(edge, {kEncode, kTopRow, "pxliYCbCr420ToYCbCr422_Filter_8u_P3R", kDecode})}}};
    constexpr int kBlock = kSize.width * kZoom + kGap, kLine = kSize.height * kZoom + kTitle + kGap;
    Image sheet = newPicture({3 * kBlock + kGap, 2 * kLine + kGap}, {40, 40, 40});
    for (int row = 0; row < 2; ++row) {
        for (int column = 0; column < 3; ++column) {
            const auto& [title, image] = pictures[row][column];
            const int left = kGap + column * kBlock, top = kGap + row * kLine;
            drawText(sheet, left, top, title, {255, 255, 255});
            drawZoomed(sheet, left, top + kTitle, image, {0, 0, kSize.width, kSize.height}, kZoom);
        }
    }
    return sheet;
}

}  // namespace pxl::tool
