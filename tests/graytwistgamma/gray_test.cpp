// Colour to gray and back: every pixel of every member against scalar models written from the formulas.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>

#include "support/call.h"
#include "support/targets.h"

namespace pxl::test {
namespace {

using Weights = std::array<double, 3>;

constexpr double kInf = std::numeric_limits<double>::infinity(), kNaN = std::numeric_limits<double>::quiet_NaN();

template <class Real>
Real weighted(Real c0, Real c1, Real c2, const Weights& w) {
    return (c0 * static_cast<Real>(w[0]) + c1 * static_cast<Real>(w[1])) + c2 * static_cast<Real>(w[2]);
}

Pxl64f grayOf(const Pxl64f (&c)[3], const Weights& w) { return weighted(c[0], c[1], c[2], w); }
Pxl32f grayOf(const Pxl32f (&c)[3], const Weights& w) { return weighted(c[0], c[1], c[2], w); }

Pxl16u grayOf(const Pxl16u (&c)[3], const Weights& w) {
    const float sum = weighted<float>(c[0], c[1], c[2], w);
    if (!(sum >= -0x1p31f && sum < 0x1p31f)) return 0;
    return static_cast<Pxl16u>(std::llrint(sum));
}

Pxl16s grayOf(const Pxl16s (&c)[3], const Weights& w) {
    const auto lifted = [](Pxl16s v) { return static_cast<Pxl16u>(v + 32768); };
    return static_cast<Pxl16s>(grayOf({lifted(c[0]), lifted(c[1]), lifted(c[2])}, w) - 32768);
}

Pxl8u grayOf(const Pxl8u (&c)[3], const Weights& w) {
    std::int64_t sum = 16384;
    for (std::size_t i = 0; i < 3; ++i) {
        const double scaled = std::trunc(static_cast<double>(static_cast<float>(w[i])) * 32768 + 0.5);
        double low = std::isfinite(scaled) ? std::fmod(scaled, 65536) : 0;  // exact
        if (low < 0) low += 65536;
        sum += c[i] * static_cast<std::int64_t>(low);
    }
    return static_cast<Pxl8u>(std::min<std::int64_t>(sum >> 15, 255));
}

// The default, and weights that wrap, cancel, tie, overflow and are no numbers.
constexpr Weights kDefault = {0.299f, 0.587f, 0.114f};
const std::optional<Weights> kWeights[] = {
    {},
    {{0.114, 0.587, 0.299}},
    {{1, 0, 0}},
    {{0, 0.5, 0}},
    {{0.25, 0.25, 0.5}},
    {{1.5, -0.3, 0.2}},
    {{-1, -1, -1}},
    {{2, 3.75, -0.00001}},
    {{1.99997, 1.99997, 1.99997}},  // 65535 in Q15
    {{70000.3, -123456.75, 8388609}},
    {{40000, 0, 0}},  // leaves 32-bit integers
    {{1e30, -1e30, 1}},
    {{1e-40, 1e38, 3e38}},
    {{kNaN, 0.5, 0.5}},
    {{kInf, -kInf, 0.25}},
};

bool same(double a, double b) { return a == b ? std::signbit(a) == std::signbit(b) : std::isnan(a) && std::isnan(b); }

class ToGray : public testing::TestWithParam<const char*> {
protected:
    const catalog::Export& function() const { return *catalog::find(GetParam()); }

    template <class T>
    void compare(int width, const std::optional<Weights>& weights, Random& random) {
        Call call(function(), {width, 2}, {}, {}, random);
        double weights64[3] = {};
        float weights32[3] = {};
        for (std::size_t i = 0; weights && i < 3; ++i) {
            weights64[i] = (*weights)[i];
            weights32[i] = static_cast<float>((*weights)[i]);
        }
        call.arguments.weights = !weights ? nullptr : sizeof(T) == 8 ? static_cast<const void*>(weights64) : weights32;
        onEachTarget([&](Target target) {
            ASSERT_EQ(call.run(), pxlStatusOk);
            for (int n = 0; n < 2 * width; ++n) {
                const int x = n % width, y = n / width;
                const T c[3] = {call.source.at<T>(0, x, y), call.source.at<T>(1, x, y), call.source.at<T>(2, x, y)};
                const T out = call.destination.at<T>(0, x, y), expected = grayOf(c, weights.value_or(kDefault));
                ASSERT_TRUE(same(out, expected))
                    << nameOf(target) << ' ' << call.describe() << " pixel " << x << ": " << +out << " for "
                    << testing::PrintToString(c) << ", not " << +expected;
            }
        });
    }

    void compareAny(int width, const std::optional<Weights>& weights, Random& random) {
        switch (function().source.planes[0].element) {
            case catalog::Element::u8:
                return compare<Pxl8u>(width, weights, random);
            case catalog::Element::u16:
                return compare<Pxl16u>(width, weights, random);
            case catalog::Element::s16:
                return compare<Pxl16s>(width, weights, random);
            case catalog::Element::f32:
                return compare<Pxl32f>(width, weights, random);
            default:
                return compare<Pxl64f>(width, weights, random);
        }
    }
};

TEST_P(ToGray, everyPixelOfEveryWidth) {
    Random random(51);
    for (int width = 1; width <= 131 && !HasFatalFailure(); ++width) compareAny(width, {}, random);
}

TEST_P(ToGray, weights) {
    Random random(52);
    for (const auto& weights : kWeights) {
        if (weights && !function().has(catalog::Role::weights)) break;
        for (int i = 0; i < 20 && !HasFatalFailure(); ++i) compareAny(1 + random.below(300), weights, random);
    }
}

TEST_P(ToGray, orderOfChecks) { EXPECT_EQ(checkOrderFaults(function(), "ps"), ""); }

const char* const kToGray[] = {
    "pxliRGBToGray_8u_C3C1R",     "pxliRGBToGray_8u_AC4C1R",    "pxliRGBToGray_16u_C3C1R",
    "pxliRGBToGray_16u_AC4C1R",   "pxliRGBToGray_16s_C3C1R",    "pxliRGBToGray_16s_AC4C1R",
    "pxliRGBToGray_32f_C3C1R",    "pxliRGBToGray_32f_AC4C1R",   "pxliColorToGray_8u_C3C1R",
    "pxliColorToGray_8u_AC4C1R",  "pxliColorToGray_16u_C3C1R",  "pxliColorToGray_16u_AC4C1R",
    "pxliColorToGray_16s_C3C1R",  "pxliColorToGray_16s_AC4C1R", "pxliColorToGray_32f_C3C1R",
    "pxliColorToGray_32f_AC4C1R", "pxliColorToGray_64f_C3C1R",  "pxliColorToGray_64f_AC4C1R"};
INSTANTIATE_TEST_SUITE_P(Members, ToGray, testing::ValuesIn(kToGray),
                         [](const auto& name) { return std::string(name.param); });

// Values worked out by hand.
TEST(Gray, pinned) {
    const PxlSize one = {1, 1};
    const auto gray8 = [&](Pxl8u r, Pxl8u g, Pxl8u b, const float* weights) {
        const Pxl8u in[3] = {r, g, b};
        Pxl8u out = 99;
        EXPECT_EQ(pxliColorToGray_8u_C3C1R(in, 3, &out, 1, one, weights), pxlStatusOk);
        return int{out};
    };
    EXPECT_EQ(gray8(255, 255, 255, nullptr), 255);
    EXPECT_EQ(gray8(1, 0, 0, nullptr), 0);
    EXPECT_EQ(gray8(0, 1, 0, nullptr), 1);
    const float two[3] = {2, 0, 0}, negative[3] = {0, -1, 0};
    EXPECT_EQ(gray8(200, 7, 7, two), 0);         // 2.0 wraps to 0
    EXPECT_EQ(gray8(7, 100, 7, negative), 100);  // -32767.5 cuts to -32767, which wraps to 32769

    const auto gray16 = [&](Pxl16u r, float weight) {
        const Pxl16u in[3] = {r, 0, 0};
        const float weights[3] = {weight, 0, 0};
        Pxl16u out = 99;
        EXPECT_EQ(pxliColorToGray_16u_C3C1R(in, 6, &out, 2, one, weights), pxlStatusOk);
        return int{out};
    };
    EXPECT_EQ(gray16(1, 0.5f), 0);
    EXPECT_EQ(gray16(3, 0.5f), 2);
    EXPECT_EQ(gray16(3, -1), 65533);
    EXPECT_EQ(gray16(40000, 2), 80000 - 65536);
    EXPECT_EQ(gray16(65535, 40000), 0);
}

// Bytes take fewer steps with weights that are small enough: those around the limits, in Q15, with every corner of the
// colours.
TEST(Gray, weightsOfBytes) {
    constexpr int kSums[] = {30000, 32767, 32768, 32769, 32832, 32833, 32896, 32897, 33100},
                  kEdges[] = {0, 1, 127, 128, 255}, kCodes[] = {0, 1, 127, 128, 254, 255};
    std::vector<Pxl8u> pixels[2];  // of three and four channels
    for (int i = 0; i < 6 * 6 * 6; ++i) {
        const int corner[3] = {kCodes[i % 6], kCodes[i / 6 % 6], kCodes[i / 36]};
        for (std::vector<Pxl8u>& of : pixels) of.insert(of.end(), corner, corner + 3);
        pixels[1].push_back(static_cast<Pxl8u>(37 * i));
    }
    Random random(53);
    for (int round = 0; round < 1500 && !HasFatalFailure(); ++round) {
        int q15[3];
        q15[0] = random.below(round % 3 == 0 ? 32900 : 20000);
        q15[1] = random.below(33000 - q15[0]);
        for (int i = 0; i < 2; ++i) {
            if (round % 2 == 0) q15[i] = (round % 7 == 0 ? 0 : q15[i] & ~255) + kEdges[random.below(5)];
        }
        q15[2] = std::max(0, kSums[round % 9] - q15[0] - q15[1]);
        if (round % 2 == 0) std::swap(q15[2], q15[random.below(3)]);
        const float weights[3] = {static_cast<float>(q15[0]) / 32768, static_cast<float>(q15[1]) / 32768,
                                  static_cast<float>(q15[2]) / 32768};
        onEachTarget([&](Target target) {
            Pxl8u gray[2][216];
            ASSERT_EQ(pxliColorToGray_8u_C3C1R(pixels[0].data(), 648, gray[0], 216, {216, 1}, weights), pxlStatusOk);
            ASSERT_EQ(pxliColorToGray_8u_AC4C1R(pixels[1].data(), 864, gray[1], 216, {216, 1}, weights), pxlStatusOk);
            for (int i = 0; i < 216; ++i) {
                const Pxl8u* c = &pixels[0][static_cast<std::size_t>(3 * i)];
                const int expected = std::min((c[0] * q15[0] + c[1] * q15[1] + c[2] * q15[2] + 16384) >> 15, 255);
                ASSERT_TRUE(gray[0][i] == expected && gray[1][i] == expected)
                    << nameOf(target) << ": " << +gray[0][i] << " and " << +gray[1][i] << ", not " << expected
                    << " for " << +c[0] << ' ' << +c[1] << ' ' << +c[2] << " and weights " << q15[0] << ' ' << q15[1]
                    << ' ' << q15[2];
            }
        });
    }
}

template <class T>
void compareRepeated(const std::string& name, int width, Random& random) {
    const catalog::Export& function = *catalog::find(name);
    Call call(function, {width, 2}, {}, {}, random);
    onEachTarget([&](Target target) {
        ASSERT_EQ(call.run(), pxlStatusOk);
        for (int n = 0; n < 2 * width; ++n) {
            for (int i = 0; i < (function.has(catalog::Role::alpha) ? 4 : 3); ++i) {
                const T expected =
                    i == 3 ? static_cast<T>(call.arguments.alpha) : call.source.at<T>(0, n % width, n / width);
                ASSERT_TRUE(same(call.destination.at<T>(i, n % width, n / width), expected))
                    << nameOf(target) << ' ' << call.describe() << " pixel " << n << " channel " << i;
            }
        }
    });
}

TEST(Gray, toRgb) {
    for (const std::string layout : {"_C1C3R", "_C1C4R"}) {
        Random random(53);
        for (int width = 1; width <= 131 && !HasFatalFailure(); ++width) {
            compareRepeated<Pxl8u>("pxliGrayToRGB_8u" + layout, width, random);
            compareRepeated<Pxl16u>("pxliGrayToRGB_16u" + layout, width, random);
            compareRepeated<Pxl32f>("pxliGrayToRGB_32f" + layout, width, random);
        }
        EXPECT_EQ(checkOrderFaults(*catalog::find("pxliGrayToRGB_32f" + layout), "ps"), "");
    }
    // alpha keeps its type's full range
    const Pxl16u gray = 1;
    Pxl16u rgba[4];
    ASSERT_EQ(pxliGrayToRGB_16u_C1C4R(&gray, 2, rgba, 8, {1, 1}, 60000), pxlStatusOk);
    EXPECT_EQ(rgba[3], 60000);
}

TEST(Gray, lumaOf422) {
    const catalog::Export& function = *catalog::find("pxliYCbCr422ToGray_8u_C2C1R");
    EXPECT_EQ(checkOrderFaults(function, "ps"), "");
    Random random(54);
    for (int width = 1; width <= 131 && !HasFatalFailure(); ++width) {
        Call call(function, {width, 2}, {}, {}, random);
        onEachTarget([&](Target target) {
            ASSERT_EQ(call.run(), pxlStatusOk);
            for (int n = 0; n < 2 * width; ++n) {
                const auto* row = static_cast<const Pxl8u*>(call.arguments.source[0].first) +
                                  n / width * call.arguments.source[0].step;
                ASSERT_EQ(call.destination.at<Pxl8u>(0, n % width, n / width), row[2 * (n % width)])
                    << nameOf(target) << ' ' << call.describe();
            }
        });
    }
}

}  // namespace
}  // namespace pxl::test
