// Demosaicing by a variable number of gradients against a model that lists the terms of each gradient and estimate for
// one direction and turns it to the other ones.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>

#include "demosaic/bayer_image.h"
#include "support/call.h"
#include "support/targets.h"

namespace pxl::test {
namespace {

PxlStatus demosaic(const Pxl8u* src, PxlRect rect, PxlSize size, int srcStep, const float* gains, Pxl8u* dst,
                   int dstStep, PxlBayerGrid grid) {
    return pxliCFAToBGRA_VNG_8u_C1C4R(src, rect, size, srcStep, gains, dst, dstStep, grid);
}
PxlStatus demosaic(const Pxl16u* src, PxlRect rect, PxlSize size, int srcStep, const float* gains, Pxl16u* dst,
                   int dstStep, PxlBayerGrid grid) {
    return pxliCFAToBGRA_VNG_16u_C1C4R(src, rect, size, srcStep, gains, dst, dstStep, grid);
}

struct Offset {
    int x, y;
};
struct Term {
    int weight;
    Offset a, b;
};

// North and north-east; three quarter turns give the others.
constexpr Term kNorth[] = {{2, {0, -1}, {0, 1}}, {2, {0, -2}, {0, 0}},   {1, {-1, -1}, {-1, 1}},
                           {1, {1, -1}, {1, 1}}, {1, {-1, -2}, {-1, 0}}, {1, {1, -2}, {1, 0}}};
constexpr Term kNorthEastAtColour[] = {{2, {1, -1}, {-1, 1}}, {2, {2, -2}, {0, 0}},  {1, {0, -1}, {-1, 0}},
                                       {1, {1, 0}, {0, 1}},   {1, {1, -2}, {0, -1}}, {1, {2, -1}, {1, 0}}};
constexpr Term kNorthEastAtGreen[] = {
    {2, {1, -1}, {-1, 1}}, {2, {2, -2}, {0, 0}}, {2, {1, -2}, {-1, 0}}, {2, {2, -1}, {0, 1}}};

// Pairs of samples whose sums are the estimates of red, green and blue: {own, the others in any order}.
struct Pair {
    Offset a, b;
};
constexpr Pair kNorthEstimates[2][3] = {{{{0, -2}, {0, 0}}, {{0, -1}, {0, -1}}, {{-1, -1}, {1, -1}}},
                                        {{{0, -2}, {0, 0}}, {{0, -1}, {0, -1}}, {{-1, 0}, {1, 0}}}};
constexpr Pair kNorthEastEstimates[2][3] = {{{{2, -2}, {0, 0}}, {{1, -1}, {1, -1}}, {{0, -1}, {1, 0}}},
                                            {{{1, -1}, {1, -1}}, {{0, -1}, {2, -1}}, {{1, 0}, {1, -2}}}};

Offset turned(Offset o, int quarters) {
    for (; quarters > 0; --quarters) o = {-o.y, o.x};
    return o;
}

template <class T>
Rgb model(const Bayer<T>& image, int x, int y) {
    const bool green = image.colour(x, y) == 1;
    const auto sample = [&](Offset o) { return image.at(x + o.x, y + o.y); };
    long gradients[8];
    for (int d = 0; d < 8; ++d) {
        gradients[d] = 0;
        const auto add = [&](const Term& term) {
            gradients[d] += term.weight * std::abs(sample(turned(term.a, d / 2)) - sample(turned(term.b, d / 2)));
        };
        if (d % 2 == 0) {
            for (const Term& term : kNorth) add(term);
        } else if (green) {
            for (const Term& term : kNorthEastAtGreen) add(term);
        } else {
            for (const Term& term : kNorthEastAtColour) add(term);
        }
    }
    const long least = *std::min_element(gradients, gradients + 8), most = *std::max_element(gradients, gradients + 8);
    long sums[3] = {};
    int count = 0;
    for (int d = 0; d < 8; ++d) {
        if (gradients[d] >= least + std::max(most / 2, 1L)) continue;
        ++count;
        for (const Pair& pair : (d % 2 == 0 ? kNorthEstimates : kNorthEastEstimates)[green]) {
            const Offset a = turned(pair.a, d / 2), b = turned(pair.b, d / 2);
            EXPECT_EQ(image.colour(x + a.x, y + a.y), image.colour(x + b.x, y + b.y));
            sums[image.colour(x + a.x, y + a.y)] += sample(a) + sample(b);
        }
    }
    const int own = image.colour(x, y), top = std::numeric_limits<T>::max();
    Rgb rgb;
    for (int c = 0; c < 3; ++c) {
        const float difference = static_cast<float>(sums[c] - sums[own]) / static_cast<float>(2 * count);
        const long value = image.at(x, y) + (c == own ? 0 : std::lrint(difference));
        rgb.c[c] = static_cast<int>(std::clamp(value, 0L, static_cast<long>(top)));
    }
    return rgb;
}

template <class T>
int withGain(int value, const float* gains, int channel) {
    if (gains == nullptr) return value;
    const float top = std::numeric_limits<T>::max(), product = static_cast<float>(value) * gains[channel];
    return static_cast<int>(std::lrint(!(product < top) ? top : product < 0 ? 0 : product));
}

template <class T>
void compare(const Bayer<T>& image, PxlRect rect, const float* gains, Random& random) {
    const int step = 4 * rect.width + 3;
    std::vector<T> before(static_cast<std::size_t>(step * std::max(rect.height, 1)));
    for (T& sample : before) sample = static_cast<T>(random.next());
    onEachTarget([&](Target target) {
        std::vector<T> dst = before;
        ASSERT_EQ(demosaic(image.samples.data(), rect, image.size(), image.step(), gains, dst.data(),
                           step * static_cast<int>(sizeof(T)), image.grid),
                  pxlStatusOk);
        for (int i = 0; i < static_cast<int>(dst.size()); ++i) {
            const int px = i % step / 4, channel = i % step % 4, x = rect.x + px, y = rect.y + i / step;
            const int nearX = std::clamp(x, 2, image.width - 3), nearY = std::clamp(y, 2, image.height - 3);
            // the fourth sample is that of the pixel copied, step by step: first along the row, then along the column
            const bool columnInside = nearX >= rect.x && nearX < rect.x + rect.width;
            const bool rowInside = nearY >= rect.y && nearY < rect.y + rect.height;
            const int alphaX = columnInside ? nearX - rect.x : px, alphaY = rowInside ? nearY - rect.y : i / step;
            int expected = before[static_cast<std::size_t>(i)];
            if (px < rect.width && i / step < rect.height && x < image.width && y < image.height) {
                expected = channel == 3 ? before[static_cast<std::size_t>(alphaY * step + 4 * alphaX + 3)]
                                        : withGain<T>(model(image, nearX, nearY).c[2 - channel], gains, channel);
            }
            ASSERT_EQ(dst[static_cast<std::size_t>(i)], expected)
                << nameOf(target) << " image " << image.width << 'x' << image.height << " grid " << image.grid
                << " rectangle " << rect.x << ' ' << rect.y << ' ' << rect.width << 'x' << rect.height << " pixel " << x
                << ' ' << y << " channel " << channel;
        }
    });
}

template <class T>
class VngDemosaicing : public testing::Test {};
using Samples = testing::Types<Pxl8u, Pxl16u>;
TYPED_TEST_SUITE(VngDemosaicing, Samples);

TYPED_TEST(VngDemosaicing, everySize) {
    Random random(81);
    for (int width = 5; width <= 75 && !this->HasFatalFailure(); ++width) {
        for (const PxlBayerGrid grid : {pxlBayBGGR, pxlBayRGGB, pxlBayGBRG, pxlBayGRBG}) {
            const int height = 5 + random.below(3);
            compare(Bayer<TypeParam>::random(width, height, grid, random), {0, 0, width, height}, nullptr, random);
        }
    }
}

// Longer than the strips that the image is converted in; and with differences so small that the least threshold counts.
TYPED_TEST(VngDemosaicing, longRowsAndAlmostFlatOnes) {
    Random random(84);
    for (const int width : {131, 132, 133, 259, 260, 261, 300, 521}) {
        auto image = Bayer<TypeParam>::random(width, 9, static_cast<PxlBayerGrid>(width % 4), random);
        const PxlRect all = {0, 0, width, 9};
        compare(image, all, nullptr, random);
        for (TypeParam& sample : image.samples) sample = static_cast<TypeParam>(100 + random.oneIn(12));
        compare(image, all, nullptr, random);
        if (this->HasFatalFailure()) return;
    }
}

TYPED_TEST(VngDemosaicing, everyRectangle) {
    Random random(82);
    for (int i = 0; i < 200 && !this->HasFatalFailure(); ++i) {
        const auto grid = static_cast<PxlBayerGrid>(random.below(4));
        const auto image = Bayer<TypeParam>::random(5 + random.below(50), 5 + random.below(6), grid, random);
        const PxlRect rect = {random.below(image.width + 4) - 3, random.below(image.height + 3) - 2, random.below(50),
                              random.below(9)};
        compare(image, rect, nullptr, random);
    }
}

TYPED_TEST(VngDemosaicing, gains) {
    Random random(83);
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float gains[][3] = {{1, 1, 1}, {0.5f, 1.5f, 2.5f}, {1, 1, 1.001f}, {-1, 1e30f, nan}, {0, 1.25f, -1e30f}};
    for (const auto& gain : gains) {
        compare(Bayer<TypeParam>::random(70, 7, pxlBayGBRG, random), {1, 0, 66, 7}, gain, random);
    }
}

TEST(VngDemosaicingChecks, order) {
    for (const char* name : {"pxliCFAToBGRA_VNG_8u_C1C4R", "pxliCFAToBGRA_VNG_16u_C1C4R",
                             "pxliCFAToBGRA_VNG_8u_C1C4R_L", "pxliCFAToBGRA_VNG_16u_C1C4R_L"}) {
        EXPECT_EQ(checkOrderFaults(*catalog::find(name), "psg"), "");
    }
}

// Sizes that 32 bits cannot hold come after the pointers and before the smallest size; empty rectangles last.
TEST(VngDemosaicingChecks, hugeSizesAndEmptyRectangles) {
    constexpr std::int64_t kHuge = 0x80000000;
    const PxlBayerGrid grid = pxlBayRGGB;
    std::vector<Pxl16u> src(36, 9), dst(4 * 36, 7);
    const auto status = [&](PxlRectL rect, PxlSizeL size, bool null = false) {
        const std::vector<Pxl8u> bytes(src.size(), 9);
        std::vector<Pxl8u> out(dst.size(), 7);
        const PxlStatus of8 =
            pxliCFAToBGRA_VNG_8u_C1C4R_L(null ? nullptr : bytes.data(), rect, size, 6, nullptr, out.data(), 24, grid);
        EXPECT_EQ(
            pxliCFAToBGRA_VNG_16u_C1C4R_L(src.data(), rect, size, 12, nullptr, null ? nullptr : dst.data(), 48, grid),
            of8);
        return of8;
    };
    EXPECT_EQ(status({0, 0, kHuge, 1}, {6, 6}), pxlStatusSizeOverflow);
    EXPECT_EQ(status({0, 0, 1, kHuge}, {6, 6}), pxlStatusSizeOverflow);
    EXPECT_EQ(status({0, 0, 1, 1}, {kHuge, 1}), pxlStatusSizeOverflow);
    EXPECT_EQ(status({0, 0, 1, 1}, {1, kHuge}), pxlStatusSizeOverflow);
    EXPECT_EQ(status({0, 0, kHuge, 1}, {6, 6}, true), pxlStatusNullPointer);
    EXPECT_EQ(status({0, 0, 0, 1}, {4, 6}), pxlStatusBadSize);
    EXPECT_EQ(status({0, 0, 0, 6}, {6, 6}), pxlStatusOk);
    EXPECT_EQ(status({0, 0, 6, -1}, {6, 6}), pxlStatusOk);
    EXPECT_EQ(status({6, 0, 6, 6}, {6, 6}), pxlStatusOk);
    EXPECT_EQ(dst, std::vector<Pxl16u>(4 * 36, 7));
    EXPECT_EQ(status({2, 2, 0x7FFFFFFF, 1}, {6, 3}), pxlStatusBadSize);
}

}  // namespace
}  // namespace pxl::test
