#include "dithering.h"

#include <cstring>

#include "drawing.h"
#include "exports.h"

namespace pxl::tool {

namespace {

constexpr int kWidth = 256, kHeight = 192, kRamp = 28, kGap = 8, kTitle = 12;

struct Way {
    const char* title;
    int type, noise;
};
constexpr Way kWays[] = {{"none", pxlDitherNone, 0},         {"floyd-steinberg", pxlDitherFS, 0},
                         {"with noise 50", pxlDitherFS, 50}, {"jarvis-judice-ninke", pxlDitherJJN, 0},
                         {"stucki", pxlDitherStucki, 0},     {"bayer", pxlDitherBayer, 0}};
constexpr int kLevels[] = {2, 4, 16};

// A gray ramp above the middle of the picture.
Image sample(const Image& picture) {
    Image result = newPicture({kWidth, kRamp + kHeight}, {0, 0, 0});
    const int width = std::min(kWidth, picture.size().width), height = std::min(kHeight, picture.size().height);
    const int left = (picture.size().width - width) / 2, top = (picture.size().height - height) / 2;
    for (int y = 0; y < height; ++y)
        std::memcpy(result.plane(0).row(kRamp + y), picture.plane(0).row(top + y) + 3 * left,
                    static_cast<std::size_t>(3 * width));
    for (int x = 0; x < kWidth; ++x) {
        const auto gray = static_cast<std::uint8_t>(x);
        fillRectangle(result, {x, 0, 1, kRamp}, {gray, gray, gray});
    }
    return result;
}

}  // namespace

Image drawDitherings(const Image& picture) {
    const Image source = sample(picture);
    const auto& function = exportNamed("pxliReduceBits_8u_C3R");
    const int columns = static_cast<int>(std::size(kWays)), rows = static_cast<int>(std::size(kLevels));
    constexpr int kCellWidth = kWidth + kGap, kCellHeight = kTitle + kRamp + kHeight + kGap;
    Image sheet = newPicture({columns * kCellWidth + kGap, rows * kCellHeight + kGap}, {40, 40, 40});
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            Extras extras;
            extras.ditherType = kWays[column].type;
            extras.noise = kWays[column].noise;
            extras.levels = kLevels[row];
            Image result = source;
            applyOrFail(function, source, result, extras);
            const int left = kGap + column * kCellWidth, top = kGap + row * kCellHeight;
            drawText(sheet, left, top, std::to_string(kLevels[row]) + " levels, " + kWays[column].title,
                     {255, 255, 255});
            drawThumbnail(sheet, {left, top + kTitle, kWidth, kRamp + kHeight}, result);
        }
    }
    return sheet;
}

}  // namespace pxl::tool
