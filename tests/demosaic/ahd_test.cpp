// Adaptive homogeneity-directed demosaicing against a model of its steps with CIELAB in double precision, and what
// must hold whatever the direction chosen.

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

#include "demosaic/bayer_image.h"
#include "support/call.h"
#include "support/targets.h"

namespace pxl::test {
namespace {

PxlStatus demosaic(const Pxl8u* src, PxlRect rect, PxlSize size, int srcStep, Pxl8u* dst, int dstStep,
                   PxlBayerGrid grid, void* temporary, int step) {
    return pxliDemosaicAHD_8u_C1C3R(src, rect, size, srcStep, dst, dstStep, grid, static_cast<Pxl8u*>(temporary), step);
}
PxlStatus demosaic(const Pxl16u* src, PxlRect rect, PxlSize size, int srcStep, Pxl16u* dst, int dstStep,
                   PxlBayerGrid grid, void* temporary, int step) {
    return pxliDemosaicAHD_16u_C1C3R(src, rect, size, srcStep, dst, dstStep, grid, static_cast<Pxl16u*>(temporary),
                                     step);
}

// The rectangle's pixels; the temporary image is exactly as large as it must be, and watched.
template <class T>
std::vector<T> convert(const Bayer<T>& image, PxlRect rect, T untouched = 0) {
    const std::size_t step = 2 * static_cast<std::size_t>(rect.width + pxlAHDTemporaryMargin), guard = 64;
    const std::size_t bytes = (pxlAHDTemporaryRows - 1) * (step + 8) + step;
    std::vector<Pxl8u> temporary(bytes + 2 * guard, 0xA5);
    std::vector<T> dst(static_cast<std::size_t>(3 * rect.width * rect.height), untouched);
    EXPECT_EQ(demosaic(image.samples.data(), rect, image.size(), image.step(), dst.data(),
                       3 * rect.width * static_cast<int>(sizeof(T)), image.grid, temporary.data() + guard - sizeof(T),
                       static_cast<int>(step + 8)),
              pxlStatusOk);
    for (std::size_t i = 0; i < guard - sizeof(T); ++i) {
        EXPECT_EQ(temporary[i], 0xA5);
        EXPECT_EQ(temporary[temporary.size() - 1 - i], 0xA5);
    }
    for (std::size_t row = 0; row + 1 < pxlAHDTemporaryRows; ++row) {
        for (std::size_t i = 0; i < 8; ++i) {
            EXPECT_EQ(temporary[guard - sizeof(T) + row * (step + 8) + step + i], 0xA5) << "between rows";
        }
    }
    return dst;
}

template <class T>
Bayer<T> mosaic(int width, int height, PxlBayerGrid grid, Rgb (*picture)(int, int)) {
    Bayer<T> image(width, height, grid);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            image.at(x, y) = static_cast<T>(picture(x, y).c[image.colour(x, y)] * (sizeof(T) == 1 ? 1 : 257));
        }
    }
    return image;
}

int toByte(double value) { return static_cast<int>(std::lrint(std::clamp(value, 0.0, 255.0))); }

// Rings that become finer, over a change of colour: edges in all directions.
Rgb rings(int x, int y) {
    const double r2 = (x - 40.0) * (x - 40.0) + (y - 30.0) * (y - 30.0), wave = std::cos(r2 / 110);
    return {{toByte(128 + 90 * wave + x / 4.0), toByte(120 + 80 * wave - y / 3.0), toByte(100 + 60 * wave + y / 4.0)}};
}
Rgb columns(int x, int) { return {{40 + x * x % 97, 40 + x * x % 97, 40 + x * x % 97}}; }
Rgb rows(int x, int y) { return columns(y, x); }
Rgb flat(int, int) { return {{200, 17, 90}}; }

// ---- the model

// A plane of numbers whose coordinates outside are mirrored.
template <class V>
struct Plane {
    int width, height;
    std::vector<V> values;
    Plane(int w, int h) : width(w), height(h), values(static_cast<std::size_t>(w * h)) {}
    V& operator()(int x, int y) {
        return values[static_cast<std::size_t>(reflected(y, height) * width + reflected(x, width))];
    }
};

constexpr int kAcross[4] = {-1, 1, 0, 0}, kDown[4] = {0, 0, -1, 1};

std::array<double, 3> labOf(const Rgb& rgb, double top) {
    const double r = rgb.c[0] / top, g = rgb.c[1] / top, b = rgb.c[2] / top;
    const auto f = [](double t) { return t > 216.0 / 24389 ? std::cbrt(t) : t * 841 / 108 + 4.0 / 29; };
    const double x = f((0.412453 * r + 0.357580 * g + 0.180423 * b) / 0.950456);
    const double y = f(0.212671 * r + 0.715160 * g + 0.072169 * b);
    const double z = f((0.019334 * r + 0.119193 * g + 0.950227 * b) / 1.088754);
    const auto rounded = [](double value) { return std::nearbyint(128 * value); };
    return {rounded(116 * y), rounded(500 * (x - y)), rounded(200 * (y - z))};
}

template <class T>
Plane<Rgb> model(const Bayer<T>& image) {
    static constexpr int kTop = std::numeric_limits<T>::max();
    const auto sample = [](int value) { return std::clamp(value, 0, kTop); };
    const int w = image.width, h = image.height;
    Plane<int> raw(w, h), votes(w, h);
    Plane<Rgb> pictures[2] = {{w, h}, {w, h}}, chosen(w, h), result(w, h);
    Plane<std::array<double, 3>> lab[2] = {{w, h}, {w, h}};
    const auto eachPixel = [&](auto work) {
        for (int y = 0; y < h; ++y) {
            for (int x = 0; x < w; ++x) work(x, y);
        }
    };
    eachPixel([&](int x, int y) { raw(x, y) = image.at(x, y); });
    for (int d = 0; d < 2; ++d) {
        Plane<int> green(w, h), difference(w, h);
        eachPixel([&](int x, int y) {
            const int i = 1 - d, j = d, a = raw(x - i, y - j), b = raw(x + i, y + j);
            const int filtered = 2 * (a + b + raw(x, y)) - raw(x - 2 * i, y - 2 * j) - raw(x + 2 * i, y + 2 * j);
            green(x, y) =
                image.colour(x, y) == 1 ? raw(x, y) : std::clamp((filtered + 2) >> 2, std::min(a, b), std::max(a, b));
            difference(x, y) = raw(x, y) - green(x, y);
        });
        eachPixel([&](int x, int y) {
            Rgb& pixel = pictures[d](x, y);
            const int own = image.colour(x, y), g = green(x, y);
            pixel.c[1] = g;
            const auto mean = [&](int i, int j) {
                return (difference(x - i, y - j) + difference(x + i, y + j) + 1) >> 1;
            };
            if (own == 1) {
                const int ofRow = image.colour(x + 1, y);
                pixel.c[ofRow] = sample(g + mean(1, 0));
                pixel.c[2 - ofRow] = sample(g + mean(0, 1));
            } else {
                pixel.c[own] = raw(x, y);
                pixel.c[2 - own] = sample(g + ((difference(x - 1, y - 1) + difference(x + 1, y - 1) +
                                                difference(x - 1, y + 1) + difference(x + 1, y + 1) + 2) >>
                                               2));
            }
            lab[d](x, y) = labOf(pixel, kTop);
        });
    }
    eachPixel([&](int x, int y) {
        double light[2][4], chroma[2][4];
        for (int d = 0; d < 2; ++d) {
            for (int k = 0; k < 4; ++k) {
                const auto &here = lab[d](x, y), &there = lab[d](x + kAcross[k], y + kDown[k]);
                light[d][k] = std::fabs(here[0] - there[0]);
                chroma[d][k] = std::pow(here[1] - there[1], 2) + std::pow(here[2] - there[2], 2);
            }
        }
        const auto tolerance = [](const double(&distance)[2][4]) {
            return std::min(std::max(distance[0][0], distance[0][1]), std::max(distance[1][2], distance[1][3]));
        };
        for (int k = 0; k < 4; ++k) {
            for (int d = 0; d < 2; ++d) {
                if (light[d][k] <= tolerance(light) && chroma[d][k] <= tolerance(chroma))
                    votes(x, y) += d == 0 ? 1 : -1;
            }
        }
    });
    eachPixel([&](int x, int y) {
        int sum = 0;
        for (int k = 0; k < 9; ++k) sum += votes(x + k % 3 - 1, y + k / 3 - 1);
        for (int c = 0; c < 3; ++c) {
            const int a = pictures[0](x, y).c[c], b = pictures[1](x, y).c[c];
            chosen(x, y).c[c] = sum >= 4 ? a : sum <= -4 ? b : (a + b + 1) / 2;
        }
    });
    eachPixel([&](int x, int y) {
        const auto median = [&](int colour) {
            int differences[9];
            for (int k = 0; k < 9; ++k) {
                const Rgb& pixel = chosen(x + k % 3 - 1, y + k / 3 - 1);
                differences[k] = pixel.c[colour] - pixel.c[1];
            }
            std::nth_element(differences, differences + 4, differences + 9);
            return differences[4];
        };
        const Rgb old = chosen(x, y);
        Rgb moved = old;
        const int own = image.colour(x, y);
        if (own != 1) moved.c[1] = sample(old.c[own] - median(own));
        for (const int c : {0, 2}) {
            if (c != own) moved.c[c] = sample(moved.c[1] + median(c));
        }
        for (int c = 0; c < 3; ++c) result(x, y).c[c] = (old.c[c] + moved.c[c] + 1) / 2;
    });
    return result;
}

template <class T>
class AhdDemosaicing : public testing::Test {};
using Samples = testing::Types<Pxl8u, Pxl16u>;
TYPED_TEST_SUITE(AhdDemosaicing, Samples);

// CIELAB in single precision may tip a vote that is equal otherwise; everything else is exact.
TYPED_TEST(AhdDemosaicing, likeTheModel) {
    Random random(91);
    for (int i = 0; i < 24; ++i) {
        const auto grid = static_cast<PxlBayerGrid>(i % 4);
        const int width = i < 8 ? 2 + i : 30 + 11 * (i % 5), height = i < 8 ? 2 + random.below(6) : 20 + i;
        auto image = mosaic<TypeParam>(width, height, grid, rings);
        for (TypeParam& sample : image.samples) {
            sample = i % 3 == 0 ? static_cast<TypeParam>(random.next())
                                : static_cast<TypeParam>(std::min(255, sample + random.below(9)));
        }
        auto expected = model(image);
        int different = 0;
        const auto result = convert(image, {0, 0, width, height});
        for (int k = 0; k < width * height; ++k) {
            for (int c = 0; c < 3; ++c) {
                const auto at = static_cast<std::size_t>(3 * k + c);
                if (result[at] == expected.values[at / 3].c[c]) continue;
                ++different;
                ASSERT_NE(image.colour(k % width, k / width), c) << "a sample of the image was changed";
            }
        }
        EXPECT_LE(different, width * height / 50) << width << 'x' << height << " grid " << grid;
    }
}

// The part of the whole, also beyond the borders of the image.
TYPED_TEST(AhdDemosaicing, anyRectangle) {
    Random random(92);
    for (int i = 0; i < 60 && !this->HasFatalFailure(); ++i) {
        const auto grid = static_cast<PxlBayerGrid>(random.below(4));
        const auto image = mosaic<TypeParam>(2 + random.below(60), 2 + random.below(20), grid, rings);
        const auto whole = convert(image, {0, 0, image.width, image.height});
        const PxlRect rect = {random.below(image.width) - 2, random.below(image.height) - 2, 1 + random.below(60),
                              1 + random.below(12)};
        const auto part = convert<TypeParam>(image, rect, 99);
        for (int k = 0; k < 3 * rect.width * rect.height; ++k) {
            const int x = rect.x + k / 3 % rect.width, y = rect.y + k / 3 / rect.width;
            const int at = 3 * (y * image.width + x) + k % 3;
            ASSERT_EQ(part[static_cast<std::size_t>(k)],
                      image.inside(x, y) ? whole[static_cast<std::size_t>(at)] : TypeParam{99})
                << "pixel " << x << ' ' << y << " of " << image.width << 'x' << image.height;
        }
    }
}

// Gray rows or columns and a flat colour come back as they were, up to the borders.
TYPED_TEST(AhdDemosaicing, straightPictures) {
    for (const PxlBayerGrid grid : {pxlBayBGGR, pxlBayRGGB, pxlBayGBRG, pxlBayGRBG}) {
        for (const auto picture : {rows, columns, flat}) {
            const auto image = mosaic<TypeParam>(50, 40, grid, picture);
            const auto result = convert(image, {0, 0, 50, 40});
            for (int k = 0; k < 50 * 40 * 3; ++k) {
                const int value = picture(k / 3 % 50, k / 150).c[k % 3];
                ASSERT_EQ(result[static_cast<std::size_t>(k)], value * (sizeof(TypeParam) == 1 ? 1 : 257))
                    << "grid " << grid << " pixel " << k / 3 % 50 << ' ' << k / 150;
            }
        }
    }
}

// Peak signal-to-noise ratio of the rings by each method, in decibels, but for the copies at the border.
TEST(DemosaicingQuality, methodsInOrder) {
    constexpr int kWidth = 96, kHeight = 80;
    const auto image = mosaic<Pxl8u>(kWidth, kHeight, pxlBayGRBG, rings);
    const auto ratio = [&](const std::vector<Pxl8u>& result, int channels) {
        double sum = 0;
        for (int k = 2 * kWidth; k < (kHeight - 2) * kWidth; ++k) {
            if (k % kWidth < 2 || k % kWidth >= kWidth - 2) continue;
            for (int c = 0; c < 3; ++c) {
                const int at = channels * k + (channels == 4 ? 2 - c : c);
                sum += std::pow(result[static_cast<std::size_t>(at)] - rings(k % kWidth, k / kWidth).c[c], 2);
            }
        }
        return 10 * std::log10(255.0 * 255 * 3 * (kWidth - 4) * (kHeight - 4) / sum);
    };
    const PxlRect all = {0, 0, kWidth, kHeight};
    std::vector<Pxl8u> bilinear(3 * kWidth * kHeight), vng(4 * kWidth * kHeight);
    pxliCFAToRGB_8u_C1C3R(image.samples.data(), all, image.size(), kWidth, bilinear.data(), 3 * kWidth, image.grid, 0);
    pxliCFAToBGRA_VNG_8u_C1C4R(image.samples.data(), all, image.size(), kWidth, nullptr, vng.data(), 4 * kWidth,
                               image.grid);
    const double ofBilinear = ratio(bilinear, 3), ofVng = ratio(vng, 4), ofAhd = ratio(convert(image, all), 3);
    EXPECT_GT(ofBilinear, 24);
    EXPECT_GT(ofVng, ofBilinear + 1);
    EXPECT_GT(ofAhd, ofVng + 1);
}

TEST(AhdDemosaicingChecks, order) {
    for (const char* name : {"pxliDemosaicAHD_8u_C1C3R", "pxliDemosaicAHD_16u_C1C3R"}) {
        EXPECT_EQ(checkOrderFaults(*catalog::find(name), "psg"), "");
    }
    std::vector<Pxl8u> src(16), dst(48), temporary(pxlAHDTemporaryRows * 2 * (4 + pxlAHDTemporaryMargin));
    const auto status = [&](int width, int grid, int step) {
        return pxliDemosaicAHD_8u_C1C3R(src.data(), {0, 0, width, 4}, {4, 4}, 4, dst.data(), 12,
                                        static_cast<PxlBayerGrid>(grid), temporary.data(), step);
    };
    const int step = 2 * (4 + pxlAHDTemporaryMargin);
    EXPECT_EQ(status(4, pxlBayGBRG, step), pxlStatusOk);
    EXPECT_EQ(status(4, pxlBayGBRG, step - 1), pxlStatusBadStep);
    EXPECT_EQ(status(4, pxlBayGBRG, -step), pxlStatusBadStep);
    EXPECT_EQ(status(0x7FFFFFFF, pxlBayGBRG, step), pxlStatusBadStep);
    EXPECT_EQ(status(4, 4, 0), pxlStatusBadArgument);
    EXPECT_EQ(status(0, pxlBayGBRG, step), pxlStatusOk);
}

}  // namespace
}  // namespace pxl::test
