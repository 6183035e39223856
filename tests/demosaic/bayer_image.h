// Bayer images for the tests: random samples or a picture, as plain models see them.
#pragma once

#include <cstdlib>
#include <vector>

#include "pxlcc.h"
#include "support/random.h"

namespace pxl::test {

inline int reflected(int x, int size) {
    while (x < 0 || x >= size) x = x < 0 ? -x : 2 * (size - 1) - x;
    return x;
}

template <class T>
struct Bayer {
    int width, height;
    PxlBayerGrid grid;
    std::vector<T> samples;

    Bayer(int w, int h, PxlBayerGrid g) : width(w), height(h), grid(g), samples(static_cast<std::size_t>(w * h)) {}

    // Few different values now and then, so that gradients are equal and results saturate.
    static Bayer random(int w, int h, PxlBayerGrid grid, Random& random) {
        Bayer image(w, h, grid);
        const int kind = random.below(3);
        constexpr int kTop = sizeof(T) == 1 ? 255 : 65535;
        for (T& sample : image.samples) {
            const int value = random.below(kTop + 1);
            sample = static_cast<T>(kind == 0 ? value : kind == 1 ? value % 4 + kTop / 2 : value % 2 * kTop);
        }
        return image;
    }

    PxlSize size() const { return {width, height}; }
    int step() const { return width * static_cast<int>(sizeof(T)); }
    int at(int x, int y) const { return samples[static_cast<std::size_t>(y * width + x)]; }
    T& at(int x, int y) { return samples[static_cast<std::size_t>(y * width + x)]; }
    bool inside(int x, int y) const { return x >= 0 && x < width && y >= 0 && y < height; }
    // 0 red, 1 green, 2 blue
    int colour(int x, int y) const {
        static constexpr int kCells[4][2][2] = {{{2, 1}, {1, 0}}, {{0, 1}, {1, 2}}, {{1, 2}, {0, 1}}, {{1, 0}, {2, 1}}};
        return kCells[grid][y & 1][x & 1];
    }
};

struct Rgb {
    int c[3];
};

}  // namespace pxl::test
