// Bilinear demosaicing against a model that looks for neighbours by their colour.

#include <gtest/gtest.h>

#include "demosaic/bayer_image.h"
#include "support/call.h"
#include "support/targets.h"

namespace pxl::test {
namespace {

PxlStatus demosaic(const Pxl8u* src, PxlRect rect, PxlSize size, int srcStep, Pxl8u* dst, int dstStep,
                   PxlBayerGrid grid) {
    return pxliCFAToRGB_8u_C1C3R(src, rect, size, srcStep, dst, dstStep, grid, -7);
}
PxlStatus demosaic(const Pxl16u* src, PxlRect rect, PxlSize size, int srcStep, Pxl16u* dst, int dstStep,
                   PxlBayerGrid grid) {
    return pxliCFAToRGB_16u_C1C3R(src, rect, size, srcStep, dst, dstStep, grid, 123456);
}

// The rounded mean of those of the given neighbours that are inside the image.
template <class T>
int mean(const Bayer<T>& image, int x, int y, std::initializer_list<std::pair<int, int>> offsets) {
    int sum = 0, n = 0;
    for (const auto& [i, j] : offsets) {
        if (!image.inside(x + i, y + j)) continue;
        sum += image.at(x + i, y + j);
        ++n;
    }
    return (sum + n / 2) / n;
}

template <class T>
int greenAt(const Bayer<T>& image, int x, int y) {
    const auto vertical = [&] { return mean(image, x, y, {{0, -1}, {0, 1}}); };
    const auto horizontal = [&] { return mean(image, x, y, {{-1, 0}, {1, 0}}); };
    const auto both = [&] { return mean(image, x, y, {{0, -1}, {0, 1}, {-1, 0}, {1, 0}}); };
    const auto distance = [](int at, int size) { return std::min(at, size - 1 - at); };
    const int column = distance(x, image.width), row = distance(y, image.height);
    if (column == 0 && row == 0) return both();
    if (column == 0) return vertical();
    if (row == 0) return horizontal();
    if (column == 1 || row == 1) return both();
    const int dv = std::abs(image.at(x, y - 2) - image.at(x, y + 2));
    const int dh = std::abs(image.at(x - 2, y) - image.at(x + 2, y));
    return dv < dh ? vertical() : dv > dh ? horizontal() : both();
}

template <class T>
Rgb model(const Bayer<T>& image, int x, int y) {
    Rgb rgb;
    for (int colour = 0; colour < 3; ++colour) {
        if (image.colour(x, y) == colour) {
            rgb.c[colour] = image.at(x, y);
        } else if (colour == 1) {
            rgb.c[colour] = greenAt(image, x, y);
        } else if (image.colour(x + 1, y) == colour) {
            rgb.c[colour] = mean(image, x, y, {{-1, 0}, {1, 0}});
        } else if (image.colour(x, y + 1) == colour) {
            rgb.c[colour] = mean(image, x, y, {{0, -1}, {0, 1}});
        } else {
            rgb.c[colour] = mean(image, x, y, {{-1, -1}, {1, -1}, {-1, 1}, {1, 1}});
        }
    }
    return rgb;
}

// Every pixel of a rectangle, which may reach beyond the image, and that no other byte is written.
template <class T>
void compare(const Bayer<T>& image, PxlRect rect) {
    constexpr T kUntouched = 77;
    const int step = 3 * rect.width + 5;
    onEachTarget([&](Target target) {
        std::vector<T> dst(static_cast<std::size_t>(step * std::max(rect.height, 1)), kUntouched);
        ASSERT_EQ(demosaic(image.samples.data(), rect, image.size(), image.step(), dst.data(),
                           step * static_cast<int>(sizeof(T)), image.grid),
                  pxlStatusOk);
        for (int i = 0; i < static_cast<int>(dst.size()); ++i) {
            const int x = rect.x + i % step / 3, y = rect.y + i / step;
            const bool written = i % step / 3 < rect.width && i / step < rect.height && image.inside(x, y);
            ASSERT_EQ(dst[static_cast<std::size_t>(i)], written ? model(image, x, y).c[i % step % 3] : kUntouched)
                << nameOf(target) << " image " << image.width << 'x' << image.height << " grid " << image.grid
                << " pixel " << x << ' ' << y << " channel " << i % step % 3;
        }
    });
}

template <class T>
class BilinearDemosaicing : public testing::Test {};
using Samples = testing::Types<Pxl8u, Pxl16u>;
TYPED_TEST_SUITE(BilinearDemosaicing, Samples);

TYPED_TEST(BilinearDemosaicing, everySize) {
    Random random(71);
    for (int width = 2; width <= 75 && !this->HasFatalFailure(); ++width) {
        for (const PxlBayerGrid grid : {pxlBayBGGR, pxlBayRGGB, pxlBayGBRG, pxlBayGRBG}) {
            const int height = width < 8 ? 2 + random.below(7) : 5 + random.below(3);
            compare(Bayer<TypeParam>::random(width, height, grid, random), {0, 0, width, height});
        }
    }
}

TYPED_TEST(BilinearDemosaicing, everyRectangle) {
    Random random(72);
    for (int i = 0; i < 300 && !this->HasFatalFailure(); ++i) {
        const auto grid = static_cast<PxlBayerGrid>(random.below(4));
        const auto image = Bayer<TypeParam>::random(2 + random.below(60), 2 + random.below(9), grid, random);
        const PxlRect rect = {random.below(image.width + 4) - 3, random.below(image.height + 3) - 2, random.below(70),
                              random.below(12)};
        compare(image, rect);
    }
    compare(Bayer<TypeParam>::random(9, 9, pxlBayGRBG, random), {4, 4, 0x7FFFFFFF / 4096, 3});
}

TEST(BilinearDemosaicingChecks, order) {
    for (const char* name : {"pxliCFAToRGB_8u_C1C3R", "pxliCFAToRGB_16u_C1C3R"}) {
        EXPECT_EQ(checkOrderFaults(*catalog::find(name), "psg"), "");
    }
}

}  // namespace
}  // namespace pxl::test
