// PhotoYCC: every sample of every member against models written from the formulas, and the distance to the equations in
// double precision.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "support/call.h"
#include "support/targets.h"

namespace pxl::test {
namespace {

template <class T>
using Pixel = std::array<T, 3>;  // R, G, B or Y, C1, C2

constexpr float kC1Offset = 0.6117647F, kC2Offset = 0.5372549F;

Pixel<float> encodeFloats(Pixel<float> p, float c1Offset, float c2Offset) {
    const auto [r, g, b] = p;
    float y = 0.587F * g + 0.299F * r;
    y = 0.114F * b + y;
    return {y * 0.7132668F, (b - y) * 0.4368627F + c1Offset, (r - y) * 0.53192F + c2Offset};
}
Pixel<float> decodeFloats(Pixel<float> p, float c1Removed, float c2Removed) {
    const float c1 = p[1] * 2.2179F - c1Removed, c2 = p[2] * 1.8215F - c2Removed, y = 1.3584F * p[0];
    return {y + c2, y - 0.509F * c2 - 0.194F * c1, y + c1};
}

Pixel<float> modelOf(bool decodes, Pixel<float> p) {
    if (!decodes) return encodeFloats(p, kC1Offset, kC2Offset);
    Pixel<float> rgb = decodeFloats(p, 1.356833F, 0.9786098F);
    for (float& v : rgb) {
        if (v < 0) v = 0;
        if (v > 1) v = 1;
    }
    return rgb;
}

Pixel<Pxl16u> modelOf(bool decodes, Pixel<Pxl16u> p) {
    Pixel<float> wide;
    for (std::size_t i = 0; i < 3; ++i) wide[i] = p[i];
    const double scale = 65535;
    wide = decodes ? decodeFloats(wide, static_cast<float>(1.356833 * scale), static_cast<float>(0.9786098 * scale))
                   : encodeFloats(wide, 40092, 35209);
    Pixel<Pxl16u> out;
    for (std::size_t i = 0; i < 3; ++i) out[i] = static_cast<Pxl16u>(std::clamp(std::lrint(wide[i]), 0L, 65535L));
    return out;
}

Pixel<Pxl16s> modelOf(bool decodes, Pixel<Pxl16s> p) {
    const Pixel<Pxl16u> out =
        modelOf(decodes, Pixel<Pxl16u>{static_cast<Pxl16u>(p[0] + 32768), static_cast<Pxl16u>(p[1] + 32768),
                                       static_cast<Pxl16u>(p[2] + 32768)});
    return {static_cast<Pxl16s>(out[0] - 32768), static_cast<Pxl16s>(out[1] - 32768),
            static_cast<Pxl16s>(out[2] - 32768)};
}

Pixel<Pxl8u> modelOf(bool decodes, Pixel<Pxl8u> p) {
    Pixel<int> out;
    if (decodes) {
        const int y = p[0], c1 = p[1], c2 = p[2];
        out = {(7460 * c2 + 5564 * y - 1022020) >> 12,
               (((9084 * c1 - 1417104) >> 8) * -794 + 89024 * y + ((7460 * c2 - 1022020) >> 8) * -2084) >> 16,
               (9084 * c1 + 5564 * y - 1417104) >> 12};
    } else {
        const int r = p[0], g = p[1], b = p[2], luma = 4898 * r + 9617 * g + 1867 * b;
        out = {((luma >> 10) * 2921) >> 16, ((((b << 14) - luma) >> 10) * 1789 >> 16) + 156,
               ((((r << 14) - luma) >> 10) * 2178 >> 16) + 137};
    }
    Pixel<Pxl8u> bytes;
    for (std::size_t i = 0; i < 3; ++i) bytes[i] = static_cast<Pxl8u>(std::clamp(out[i], 0, 255));
    return bytes;
}

template <class T>
bool same(T a, T b) {
    return a == b || (a != a && b != b);
}

class Photoycc : public testing::TestWithParam<std::string> {
protected:
    const catalog::Export& function = *catalog::find(GetParam());
    const bool decodes = function.source.space == "YCC", hasFourth = function.destination.layout == "AC4";

    template <class T>
    static Pixel<T> pixel(Image& image, int x, int y) {
        return {image.at<T>(0, x, y), image.at<T>(1, x, y), image.at<T>(2, x, y)};
    }

    template <class T>
    void compare(Call& call) {
        const PxlSize size = call.arguments.size;
        const Image::Bytes before = call.destination.bytes();
        std::vector<T> fourth;
        for (int n = 0; hasFourth && n < size.width * size.height; ++n) {
            fourth.push_back(call.destination.at<T>(3, n % size.width, n / size.width));
        }
        onEachTarget([&](Target target) {
            call.destination.restore(before);
            ASSERT_EQ(call.run(), pxlStatusOk);
            for (int n = 0; n < size.width * size.height; ++n) {
                const int x = n % size.width, y = n / size.width;
                const Pixel<T> in = pixel<T>(call.source, x, y), out = pixel<T>(call.destination, x, y),
                               expected = modelOf(decodes, in);
                ASSERT_TRUE(same(out[0], expected[0]) && same(out[1], expected[1]) && same(out[2], expected[2]))
                    << nameOf(target) << " pixel " << x << ", " << y << " of " << call.describe() << ": "
                    << testing::PrintToString(out) << ", not " << testing::PrintToString(expected) << ", from "
                    << testing::PrintToString(in);
                if (!hasFourth) continue;
                ASSERT_TRUE(same(call.destination.at<T>(3, x, y), fourth[static_cast<std::size_t>(n)]))
                    << "fourth channel of " << call.describe();
            }
        });
    }

    // Calls work(T{}) with the type of the samples.
    template <class Work>
    void withType(Work work) {
        switch (function.source.planes[0].element) {
            case catalog::Element::u8:
                return work(Pxl8u{});
            case catalog::Element::u16:
                return work(Pxl16u{});
            case catalog::Element::s16:
                return work(Pxl16s{});
            default:
                return work(Pxl32f{});
        }
    }
};

TEST_P(Photoycc, everyPixelOfEveryWidth) {
    Random random(1992);
    std::vector<int> widths = {95, 96, 97, 127, 128, 129, 1000};
    for (int width = 1; width <= 72; ++width) widths.push_back(width);
    for (const int width : widths) {
        // with gaps between the rows of both sides, of one, of none
        const auto gap = [&] { return Placement{.padding = random.below(2) * 7}; };
        Call call(function, {width, 3}, gap(), gap(), random);
        withType([&](auto sample) { compare<decltype(sample)>(call); });
        if (HasFatalFailure()) return;
    }
}

TEST_P(Photoycc, orderOfChecks) { EXPECT_EQ(checkOrderFaults(function, "ps"), ""); }

// Against the equations in double precision, at the full scale of the type.
TEST_P(Photoycc, distanceToTheEquations) {
    Random random(1993);
    Call call(function, {4000, 8}, {}, {}, random);
    withType([&](auto zero) {
        using T = decltype(zero);
        constexpr bool kFloats = std::is_same_v<T, Pxl32f>;
        const double low = std::is_signed_v<T> && !kFloats ? -32768 : 0, scale = kFloats          ? 1
                                                                                 : sizeof(T) == 1 ? 255
                                                                                                  : 65535;
        for (int n = 0; n < 4000 * 8; ++n) {
            for (int i = 0; i < 3; ++i) {
                call.source.at<T>(i, n % 4000, n / 4000) = static_cast<T>(low + random.between(0, 1) * scale);
            }
        }
        ASSERT_EQ(call.run(), pxlStatusOk);
        double worst = 0;
        for (int n = 0; n < 4000 * 8; ++n) {
            const Pixel<T> in = pixel<T>(call.source, n % 4000, n / 4000),
                           out = pixel<T>(call.destination, n % 4000, n / 4000);
            std::array<double, 3> p, exact;
            for (std::size_t i = 0; i < 3; ++i) p[i] = (static_cast<double>(in[i]) - low) / scale;
            if (decodes) {
                const double c1 = p[1] * 2.2179 - 1.356833, c2 = p[2] * 1.8215 - 0.9786098, y = 1.3584 * p[0];
                exact = {y + c2, y - 0.509 * c2 - 0.194 * c1, y + c1};
                for (double& v : exact) v = std::clamp(v, 0.0, 1.0);
            } else {
                const double y = 0.299 * p[0] + 0.587 * p[1] + 0.114 * p[2];
                exact = {y * 0.7132668, (p[2] - y) * 0.4368627 + 156 / 255.0, (p[0] - y) * 0.53192 + 137 / 255.0};
            }
            for (std::size_t i = 0; i < 3; ++i) {
                worst = std::max(worst, std::abs((static_cast<double>(out[i]) - low) - exact[i] * scale));
            }
        }
        // bytes are rounded down; over all colours the encoder reaches 1.10, the decoder 1.12
        EXPECT_LE(worst, kFloats ? 3e-7 : sizeof(T) == 1 ? 1.12 : 0.52);
    });
}

std::vector<std::string> members(const std::vector<std::string>& types) {
    std::vector<std::string> names;
    for (const std::string& type : types) {
        for (const std::string layout : {"_C3R", "_AC4R"}) {
            names.push_back("pxliRGBToYCC_" + type + layout);
            names.push_back("pxliYCCToRGB_" + type + layout);
        }
    }
    return names;
}
INSTANTIATE_TEST_SUITE_P(Members, Photoycc, testing::ValuesIn(members({"8u", "16u", "16s", "32f"})),
                         [](const auto& name) { return name.param; });

// Bytes: every pair of two channels, with the third at random.
class PhotoyccBytes : public Photoycc {};
TEST_P(PhotoyccBytes, everyPairOfChannels) {
    Random random(1994);
    for (int third = 0; third < 3 && !HasFatalFailure(); ++third) {
        Call call(function, {256, 256}, {}, {}, random);
        for (int n = 0; n < 256 * 256; ++n) {
            call.source.at<Pxl8u>((third + 1) % 3, n % 256, n / 256) = static_cast<Pxl8u>(n % 256);
            call.source.at<Pxl8u>((third + 2) % 3, n % 256, n / 256) = static_cast<Pxl8u>(n / 256);
        }
        compare<Pxl8u>(call);
    }
}
INSTANTIATE_TEST_SUITE_P(Members, PhotoyccBytes, testing::ValuesIn(members({"8u"})),
                         [](const auto& name) { return name.param; });

TEST(PhotoyccValues, blackWhiteAndLimits) {
    const Pxl8u bytes[] = {0, 0, 0, 255, 255, 255};
    Pxl8u ycc[6];
    ASSERT_EQ(pxliRGBToYCC_8u_C3R(bytes, 6, ycc, 6, {2, 1}), pxlStatusOk);
    EXPECT_EQ((std::array{ycc[0], ycc[1], ycc[2]}), (std::array<Pxl8u, 3>{0, 156, 137}));
    EXPECT_EQ((std::array{ycc[3], ycc[4], ycc[5]}), (std::array<Pxl8u, 3>{181, 156, 137}));

    const Pxl32f black[3] = {0, 0, 0};
    Pxl32f out[6];
    ASSERT_EQ(pxliRGBToYCC_32f_C3R(black, 12, out, 12, {1, 1}), pxlStatusOk);
    EXPECT_EQ((std::array{out[0], out[1], out[2]}), (std::array{0.0F, kC1Offset, kC2Offset}));

    // R above 1, B below 0, NaN in all three by way of Y
    const Pxl32f bright[] = {0.7F, 0.1F, 0.9F, NAN, 0.6F, 0.5F};
    ASSERT_EQ(pxliYCCToRGB_32f_C3R(bright, 24, out, 24, {2, 1}), pxlStatusOk);
    EXPECT_EQ(out[0], 1);
    EXPECT_EQ(out[2], 0);
    for (int i = 3; i < 6; ++i) EXPECT_TRUE(std::isnan(out[i]));

    const Pxl16u gray[] = {65535, 65535, 65535};
    Pxl16u wide[3];
    ASSERT_EQ(pxliRGBToYCC_16u_C3R(gray, 6, wide, 6, {1, 1}), pxlStatusOk);
    EXPECT_EQ((std::array{wide[0], wide[1], wide[2]}), (std::array<Pxl16u, 3>{46744, 156 * 257, 137 * 257}));
}

}  // namespace
}  // namespace pxl::test
