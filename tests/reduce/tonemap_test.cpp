// Tone mapping: both functions against the formulas sample by sample.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

#include "support/call.h"
#include "support/targets.h"

namespace pxl::test {
namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity(), kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kSmallestNormal = std::numeric_limits<float>::min();

using Function = PxlStatus (*)(const Pxl32f*, int, Pxl8u*, int, PxlSize);

struct Result {
    PxlStatus status;
    std::vector<int> bytes;
    bool operator==(const Result&) const = default;
};

Result mapped(Function function, const std::vector<float>& image, int width) {
    const int height = static_cast<int>(image.size()) / width;
    std::vector<Pxl8u> out(image.size(), 77);
    const PxlStatus status = function(image.data(), 4 * width, out.data(), width, {width, height});
    return {status, {out.begin(), out.end()}};
}

long truncated(float value) {
    return std::isfinite(value) && std::fabs(value) < 0x1p31f ? static_cast<long>(value) : -(1L << 31);
}
long limited(long value) { return value < 0 ? 0 : value > 255 ? 255 : value; }

int linearModel(float s, float maximum, bool wraps) {
    const float reciprocal = 1 / maximum, product = s * 255;
    const long value = truncated(product * reciprocal);
    return static_cast<int>(wraps ? value & 255 : limited(value));
}

TEST(ToneMapLinear, everyColumn) {
    Random random(61);
    for (int width = 1; width <= 150; ++width) {
        std::vector<float> image(static_cast<std::size_t>(3 * width));
        for (float& s : image) s = static_cast<float>(random.between(-900, 700));
        image[image.size() / 2] = 705.5f;
        Result expected = {pxlStatusOk, {}};
        for (std::size_t i = 0; i < image.size(); ++i) {
            const auto x = static_cast<int>(i) % width;
            expected.bytes.push_back(linearModel(image[i], 705.5f, x >= width / 4 * 4));
        }
        onEachTarget([&](Target target) {
            EXPECT_EQ(mapped(pxliToneMapLinear_32f8u_C1R, image, width), expected) << width << ' ' << nameOf(target);
        });
    }
}

// A row written over itself, wherever in it, keeps the low 8 bits throughout and goes from left to right.
TEST(ToneMapLinear, overlappingRows) {
    constexpr int kWidth = 75, kMargin = 80;
    for (const int shift : {-76, -75, -74, -1, 0, 1, 7, 150, 299, 300}) {
        onEachTarget([&](Target target) {
            std::vector<float> memory(kWidth + 2 * kMargin / 4);
            for (std::size_t i = 0; i < memory.size(); ++i)
                memory[i] = static_cast<float>(static_cast<int>(i * 37 % 101) - 30);
            float* src = memory.data() + kMargin / 4;
            std::vector<float> expected = memory;
            float* modelSrc = expected.data() + kMargin / 4;
            float maximum = modelSrc[0];
            for (int x = 1; x < kWidth; ++x) maximum = std::max(maximum, modelSrc[x]);
            const bool overlaps = shift > -kWidth && shift < 4 * kWidth;
            for (int x = 0; x < kWidth; ++x)
                reinterpret_cast<Pxl8u*>(modelSrc)[shift + x] =
                    static_cast<Pxl8u>(linearModel(modelSrc[x], maximum, overlaps || x >= kWidth / 4 * 4));
            ASSERT_EQ(pxliToneMapLinear_32f8u_C1R(src, 4000, reinterpret_cast<Pxl8u*>(src) + shift, 4000, {kWidth, 1}),
                      pxlStatusOk);
            EXPECT_EQ(std::memcmp(memory.data(), expected.data(), 4 * memory.size()), 0)
                << "shifted by " << shift << ", " << nameOf(target);
        });
    }
}

// Dense rows that overlap rows of the destination, or not: whether samples wrap is decided row by row.
TEST(ToneMapLinear, overlappingImages) {
    constexpr int kWidth = 20, kHeight = 5;
    for (int shift = -120; shift < 420; shift += 4) {
        onEachTarget([&](Target target) {
            std::vector<float> memory(kWidth * kHeight + 60);
            for (std::size_t i = 0; i < memory.size(); ++i)
                memory[i] = static_cast<float>(static_cast<int>(i * 37 % 101) - 30);
            float* src = memory.data() + 30;
            std::vector<float> expected = memory;
            const float maximum = *std::max_element(src, src + kWidth * kHeight);
            for (int y = 0; y < kHeight; ++y) {
                float* row = expected.data() + 30 + y * kWidth;
                const int at = shift + y * kWidth - 4 * y * kWidth;  // of the row's destination from its source
                const bool overlaps = at > -kWidth && at < 4 * kWidth;
                for (int x = 0; x < kWidth; ++x)
                    reinterpret_cast<Pxl8u*>(row)[at + x] = static_cast<Pxl8u>(linearModel(row[x], maximum, overlaps));
            }
            pxliToneMapLinear_32f8u_C1R(src, 4 * kWidth, reinterpret_cast<Pxl8u*>(src) + shift, kWidth,
                                        {kWidth, kHeight});
            EXPECT_EQ(std::memcmp(memory.data(), expected.data(), 4 * memory.size()), 0)
                << "shifted by " << shift << ", " << nameOf(target);
        });
    }
}

TEST(ToneMapMean, everyColumn) {
    Random random(62);
    for (int width = 1; width <= 150; ++width) {
        std::vector<float> image(static_cast<std::size_t>(3 * width));
        double sums[16] = {}, sum = 0;
        for (std::size_t i = 0; i < image.size(); ++i) {
            image[i] = static_cast<float>(random.between(-0.5, 3) * (random.oneIn(9) ? 1e12 : 1));
            sums[i % static_cast<std::size_t>(width) % 16] += image[i];
        }
        for (const double part : sums) sum += part;
        if (!(sum > 0)) continue;
        const auto factor = static_cast<float>(127.5 / (sum / (3.0 * width)));
        Result expected = {pxlStatusOk, {}};
        for (const float s : image) expected.bytes.push_back(static_cast<int>(limited(truncated(s * factor))));
        onEachTarget([&](Target target) {
            EXPECT_EQ(mapped(pxliToneMapMean_32f8u_C1R, image, width), expected) << width << ' ' << nameOf(target);
        });
    }
}

// What is huge at the start of two rows cancels in one sum, and what is small is lost in it in between.
TEST(ToneMapMean, sumsByColumn) {
    for (const int width : {16, 17, 24, 32}) {
        std::vector<float> image(static_cast<std::size_t>(2 * width), 1);
        image[0] = 1e20f, image[static_cast<std::size_t>(width)] = -1e20f;
        onEachTarget([&](Target target) {
            const Result result = mapped(pxliToneMapMean_32f8u_C1R, image, width);
            EXPECT_EQ(result.bytes[1], 255 * width / (2 * width - 2 - (width - 1) / 16))
                << width << ' ' << nameOf(target);
        });
    }
}

TEST(ToneMap, darkImages) {
    const std::vector<int> untouched(9, 77), black(9, 0);
    const auto image = [](float first, float rest) {
        std::vector<float> all(9, rest);
        all[0] = first;
        return all;
    };
    onEachTarget([&](Target) {
        for (const Function function : {pxliToneMapLinear_32f8u_C1R, pxliToneMapMean_32f8u_C1R}) {
            EXPECT_EQ(mapped(function, image(-1, -2), 3), (Result{pxlStatusNoOperation, untouched}));
            EXPECT_EQ(mapped(function, image(-kSmallestNormal, -kSmallestNormal), 3),
                      (Result{pxlStatusNoOperation, untouched}));
            EXPECT_EQ(mapped(function, image(0, 0), 3), (Result{pxlStatusOk, black}));
            EXPECT_EQ(mapped(function, image(-0.0f, -0.0f), 9), (Result{pxlStatusOk, black}));
        }
        EXPECT_EQ(mapped(pxliToneMapLinear_32f8u_C1R, image(kSmallestNormal, -5), 3), (Result{pxlStatusOk, black}));
        EXPECT_EQ(mapped(pxliToneMapMean_32f8u_C1R, image(kSmallestNormal / 2, kSmallestNormal / 2), 3),
                  (Result{pxlStatusOk, black}));
        const float next = std::nextafter(kSmallestNormal, 1.0f);
        EXPECT_GE(mapped(pxliToneMapLinear_32f8u_C1R, image(next, 0), 3).bytes[0], 254);
        // no float holds the factor of so small a mean
        EXPECT_EQ(mapped(pxliToneMapMean_32f8u_C1R, image(next, next), 3).bytes[0], 255);
        EXPECT_EQ(mapped(pxliToneMapMean_32f8u_C1R, image(1e-36f, 1e-36f), 3).bytes[0], 127);
    });
}

// A NaN is no maximum, makes a mean NaN and becomes 0; infinities are what the formulas make of them.
TEST(ToneMap, numbersThatAreNone) {
    onEachTarget([&](Target) {
        const auto linear = [](std::vector<float> s) { return mapped(pxliToneMapLinear_32f8u_C1R, s, 6); };
        const auto mean = [](std::vector<float> s) { return mapped(pxliToneMapMean_32f8u_C1R, s, 6); };
        EXPECT_EQ(linear({1, kNaN, 2, 4, kNaN, 4}), (Result{0, {63, 0, 127, 255, 0, 255}}));
        EXPECT_EQ(linear({kNaN, kNaN, kNaN, kNaN, kNaN, kNaN}).status, pxlStatusNoOperation);
        EXPECT_EQ(linear({kInfinity, 1, -kInfinity, 2, 3, kInfinity}), (Result{0, {0, 0, 0, 0, 0, 0}}));
        EXPECT_EQ(linear({3e38f, 3, 1e36f, -3e38f, 3e38f, 1}), (Result{0, {0, 0, 0, 0, 0, 0}}));
        EXPECT_EQ(mean({kNaN, 1, 1, 1, 1, 1}), (Result{0, {0, 0, 0, 0, 0, 0}}));
        EXPECT_EQ(mean({kInfinity, 1, 1, 1, 1, 1}), (Result{0, {0, 0, 0, 0, 0, 0}}));
        EXPECT_EQ(mean({-kInfinity, 1, 1, 1, 1, 1}).status, pxlStatusNoOperation);
    });
}

TEST(ToneMap, checkOrder) {
    for (const char* name : {"pxliToneMapLinear_32f8u_C1R", "pxliToneMapMean_32f8u_C1R"})
        EXPECT_EQ(checkOrderFaults(*catalog::find(name), "ps"), "");
}

}  // namespace
}  // namespace pxl::test
