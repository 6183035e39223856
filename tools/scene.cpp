#include "scene.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "drawing.h"

namespace pxl::tool {

namespace {

std::uint8_t code(double value) { return static_cast<std::uint8_t>(std::lround(std::clamp(value, 0.0, 1.0) * 255)); }

// Hue in turns from red over green and blue, saturation and value from 0 to 1.
Colour hueColour(double hue, double saturation, double value) {
    // A channel is full within a sixth of a turn around its own hue and falls to nothing over the next sixth.
    const auto channel = [&](double ownHue) {
        const double away = std::abs(std::remainder(hue - ownHue, 1.0)) * 6;
        return code(value * (1 - saturation * std::clamp(away - 1, 0.0, 1.0)));
    };
    return {channel(0), channel(1.0 / 3), channel(2.0 / 3)};
}

void drawRamps(Image& scene, PxlRect area) {
    constexpr int kRamps = 6;
    for (int x = 0; x < area.width; ++x) {
        const double t = x / static_cast<double>(area.width - 1);
        const std::uint8_t v = code(t);
        const Colour columns[kRamps] = {{v, v, v}, {v, 0, 0},          {0, v, 0},
                                        {0, 0, v}, hueColour(t, 1, 1), hueColour(t, 0.35, 0.8)};
        for (int ramp = 0; ramp < kRamps; ++ramp)
            fillRectangle(scene, {area.x + x, area.y + ramp * area.height / kRamps, 1, area.height / kRamps - 4},
                          columns[ramp]);
    }
}

void drawWheel(Image& scene, int centreX, int centreY, int radius) {
    for (int y = -radius; y <= radius; ++y)
        for (int x = -radius; x <= radius; ++x) {
            const double distance = std::hypot(x, y) / radius;
            if (distance <= 1)
                setPixel(scene, centreX + x, centreY + y,
                         hueColour(std::atan2(y, x) / (2 * std::numbers::pi) + 0.5, distance, 1));
        }
}

// Rings that get finer outwards until they reach the pixel grid's limit at the edge, between two colours.
void drawRings(Image& scene, PxlRect area, Colour first, Colour second) {
    const double limit = std::numbers::pi / area.width;
    for (int y = 0; y < area.height; ++y)
        for (int x = 0; x < area.width; ++x) {
            const double dx = x - area.width / 2.0, dy = y - area.height / 2.0;
            const double t = 0.5 + 0.5 * std::cos((dx * dx + dy * dy) * limit);
            const auto mix = [&](std::uint8_t a, std::uint8_t b) { return code((a + (b - a) * t) / 255); };
            setPixel(scene, area.x + x, area.y + y,
                     {mix(first.r, second.r), mix(first.g, second.g), mix(first.b, second.b)});
        }
}

// Lines and checks of one pixel.
void drawStripes(Image& scene, PxlRect area, Colour first, Colour second) {
    for (int y = 0; y < area.height; ++y)
        for (int x = 0; x < area.width; ++x) {
            const int third = 3 * x / area.width;
            const int phase = third == 0 ? x : third == 1 ? y : x + y;
            setPixel(scene, area.x + x, area.y + y, phase % 2 == 0 ? first : second);
        }
}

void drawPatches(Image& scene, int left, int top) {
    constexpr int kColumns = 8, kRows = 4;
    for (int row = 0; row < kRows; ++row)
        for (int column = 0; column < kColumns; ++column) {
            const auto level = static_cast<std::uint8_t>(row == 0 ? 255 : row == 1 ? 191 : row == 2 ? 128 : 64);
            const auto bit = [&](int mask) { return (column & mask) != 0 ? level : std::uint8_t{0}; };
            // An odd size, so that edges fall on both halves of a pair of pixels.
            fillRectangle(scene, {left + column * 37, top + row * 37, 37, 37}, {bit(1), bit(2), bit(4)});
        }
}

void drawLines(Image& scene, PxlRect area) {
    struct Line {
        Colour paper, ink;
    };
    constexpr Line kLines[] = {{{255, 255, 255}, {0, 0, 0}}, {{0, 0, 0}, {255, 255, 255}},
                               {{255, 0, 0}, {0, 0, 255}},   {{0, 0, 255}, {255, 255, 0}},
                               {{0, 160, 0}, {255, 0, 255}}, {{90, 90, 90}, {255, 128, 0}}};
    const int height = area.height / static_cast<int>(std::size(kLines));
    for (int i = 0; i < static_cast<int>(std::size(kLines)); ++i) {
        const int top = area.y + i * height;
        fillRectangle(scene, {area.x, top, area.width, height}, kLines[i].paper);
        drawText(scene, area.x + 6, top + 5, "EDGES 0123456789", kLines[i].ink, 2);
        drawText(scene, area.x + 208, top + 5, "SMALL PRINT IN COLOUR", kLines[i].ink);
        drawText(scene, area.x + 208, top + 15, "ONE DOT WIDE, 7 DOTS HIGH", kLines[i].ink);
        for (int x = 0; x < area.width - 12; x += 2 + x / 12)
            fillRectangle(scene, {area.x + 6 + x, top + 28, 1 + x / 30, height - 34}, kLines[i].ink);
    }
}

}  // namespace

Image drawScene() {
    Image scene = newPicture({960, 640}, {118, 118, 118});
    drawRamps(scene, {20, 20, 520, 220});
    drawWheel(scene, 750, 172, 150);
    drawRings(scene, {20, 250, 170, 170}, {0, 0, 0}, {255, 255, 255});
    drawRings(scene, {196, 250, 170, 170}, {220, 20, 20}, {20, 60, 230});
    drawRings(scene, {372, 250, 170, 170}, {0, 150, 60}, {230, 80, 200});
    drawPatches(scene, 20, 430);
    drawStripes(scene, {330, 430, 212, 72}, {0, 0, 0}, {255, 255, 255});
    drawStripes(scene, {330, 506, 212, 72}, {255, 0, 0}, {0, 255, 255});
    drawLines(scene, {560, 340, 380, 282});
    return scene;
}

}  // namespace pxl::tool
