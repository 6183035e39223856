// RGB <-> YCbCr 4:4:4: every pixel of every member against plain-integer models written from the formulas.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "support/call.h"
#include "support/targets.h"

namespace pxl::test {
namespace {

using Pixel = std::array<int, 3>;  // R, G, B or Y, Cb, Cr
using Form = Pixel (*)(Pixel);

int limit(int v, int low, int high) { return std::clamp(v, low, high); }
int byte(int v) { return limit(v, 0, 255); }
int lane(int v) { return limit(v, -32768, 32767); }

Pixel encodeReference(Pixel p) {
    const auto [r, g, b] = p;
    return {(16843 * r + 33030 * g + 6423 * b + 1081344) >> 16, (-9699 * r - 19071 * g + 28770 * b + 8421376) >> 16,
            (28770 * r - 24117 * g - 4653 * b + 8421376) >> 16};
}

Pixel encodeQ16(Pixel p) {
    const auto u = [](int x, int c) { return static_cast<int>((256ll * x * c) >> 16); };
    const auto s = [](int x, int c) { return (128 * x * c) >> 16; };
    const int r = p[0], g = p[1], b = p[2];  // not a structured binding: Clang 14 captures none
    const auto luma = [](int v) { return std::min(v, 65535); };
    const auto chroma = [&](int cr, int cg, int cb) {
        return byte((lane(lane(lane(s(r, cr) + s(g, cg)) + s(b, cb)) + 64) >> 7) + 128);
    };
    return {byte((luma(luma(luma(u(r, 16843) + u(g, 33030)) + u(b, 6423)) + 128) >> 8) + 16),
            chroma(-9699, -19071, 28770), chroma(28770, -24117, -4653)};
}

Pixel encodeQ14(Pixel p) {
    const auto q = [](int x, int c) { return (128 * x * c + 16384) >> 15; };
    const auto [r, g, b] = p;
    return {byte((q(r, 4211) + q(g, 8258) + q(b, 1606) + 1056) >> 6),
            byte((q(b, 7193) - (q(r, 2425) + q(g, 4768)) + 8194) >> 6),
            byte((q(r, 7193) - (q(g, 6029) + q(b, 1163)) + 8194) >> 6)};
}

template <int cY, int cR, int cGb, int cGr, int cB, int k>
Pixel decodeQ16(Pixel p) {
    const int y = cY * p[0] + k, cb = p[1] - 128, cr = p[2] - 128;
    return {byte((y + cR * cr) >> 16), byte((y + cGb * cb + cGr * cr) >> 16), byte((y + cB * cb) >> 16)};
}
constexpr Form kDecode601 = decodeQ16<76282, 104593, -25689, -53279, 132184, -1187744>;
constexpr Form kDecode601Truncating = decodeQ16<76284, 104595, -25690, -53281, 132186, -1220544>;
constexpr Form kDecode601b = decodeQ16<76284, 104595, -25690, -53281, 132186, -1220544 + 32768>;

template <int cY, int cR, int cGb, int cGr, int cB, int rounding, int shift>
Pixel decodeLanes(Pixel p) {
    const auto t = [](int x, int c) { return (128 * x * c) >> 16; };
    const int y = t(p[0] - 16, cY), cb = p[1] - 128, cr = p[2] - 128;
    const auto last = [](int sum) { return byte(lane(sum + rounding) >> shift); };
    return {last(lane(y + t(cr, cR))), last(lane(lane(y - t(cb, cGb)) - t(cr, cGr))), last(lane(y + t(cb, cB)))};
}
constexpr Form kDecodeQ12 = decodeLanes<4769, 6537, 1605, 3330, 8263, 4, 3>;
constexpr Form kDecodeQ13 = decodeLanes<9535, 13074, 3211, 6660, 16523, 8, 4>;
constexpr Form kDecodeQ13Truncating = decodeLanes<9536, 13074, 3203, 6660, 16523, 0, 4>;
constexpr Form kDecode709 = decodeLanes<9535, 14688, 1745, 4375, 17326, 8, 4>;

// What becomes of the fourth byte of a destination pixel.
enum class Alpha { none, zeroInGroups, kept, argument };

struct Member {
    const char* name;
    const char* checks;  // letters of checkOrderFaults
    Form group;
    int groupSize;
    Form tail;
    double distance;  // largest distance to the real-valued equations, in codes, rounded up
    Alpha alpha = Alpha::none;
    Form aligned = nullptr;  // for all pixels of images that are multiples of 16 in every way
};

const Member kMembers[] = {
    {"pxliRGBToYCbCr_8u_C3R", "ps", encodeQ14, 16, encodeReference, 1.06},
    {"pxliRGBToYCbCr_8u_AC4R", "ps", encodeQ14, 16, encodeReference, 1.06, Alpha::zeroInGroups},
    {"pxliRGBToYCbCr_8u_C3P3R", "pes", encodeQ16, 8, encodeReference, 0.61},
    {"pxliRGBToYCbCr_8u_AC4P3R", "pes", encodeQ16, 8, encodeReference, 0.61},
    {"pxliRGBToYCbCr_8u_P3R", "pse", encodeReference, 1, encodeReference, 0.61, Alpha::none, encodeQ16},
    {"pxliYCbCrToRGB_8u_C3R", "ps", kDecodeQ12, 8, kDecode601, 0.73},
    {"pxliYCbCrToRGB_8u_AC4R", "ps", kDecode601Truncating, 1, kDecode601Truncating, 1.12, Alpha::kept},
    {"pxliYCbCrToRGB_8u_P3C3R", "pes", kDecodeQ12, 8, kDecode601, 0.73},
    {"pxliYCbCrToRGB_8u_P3C4R", "pse", kDecodeQ13, 8, kDecode601, 0.66, Alpha::argument},
    {"pxliYCbCrToRGB_8u_P3R", "pse", kDecodeQ13Truncating, 8, kDecode601b, 1.13},
    {"pxliYCbCrToBGR_8u_P3C3R", "pes", kDecodeQ12, 8, kDecode601, 0.73},
    {"pxliYCbCrToBGR_8u_P3C4R", "pes", kDecodeQ13, 1, kDecodeQ13, 0.66, Alpha::argument},
    {"pxliYCbCrToBGR_709CSC_8u_P3C3R", "pes", kDecode709, 1, kDecode709, 0.91},
    {"pxliYCbCrToBGR_709CSC_8u_P3C4R", "pes", kDecode709, 1, kDecode709, 0.91, Alpha::argument},
};
void PrintTo(const Member& member, std::ostream* out) { *out << member.name; }

// The three colours of a pixel in R, G, B or Y, Cb, Cr order.
Pixel colours(Image& image, const catalog::ImageShape& shape, int x, int y) {
    Pixel p;
    for (int i = 0; i < 3; ++i) {
        p[static_cast<std::size_t>(i)] = image.at<Pxl8u>(shape.space == "BGR" ? 2 - i : i, x, y);
    }
    return p;
}

class Ycbcr444 : public testing::TestWithParam<Member> {
protected:
    const Member& member() const { return GetParam(); }
    const catalog::Export& function() const { return *catalog::find(member().name); }

    // Runs the call and compares every pixel with the model.
    void compare(Call& call, bool aligned, Target target) {
        const PxlSize size = call.arguments.size;
        const int group = member().groupSize, grouped = size.width / group * group;
        constexpr Pxl8u kOldAlpha = 0xA5;
        const auto alphaAt = [&](int x, int y) -> Pxl8u& { return call.destination.at<Pxl8u>(3, x, y); };
        for (int y = 0; y < size.height && member().alpha != Alpha::none; ++y) {
            for (int x = 0; x < size.width; ++x) alphaAt(x, y) = kOldAlpha;
        }
        ASSERT_EQ(call.run(), pxlStatusOk);
        for (int y = 0; y < size.height; ++y) {
            for (int x = 0; x < size.width; ++x) {
                const Pixel in = colours(call.source, function().source, x, y);
                const Form form = aligned && member().aligned ? member().aligned
                                  : x < grouped               ? member().group
                                                              : member().tail;
                ASSERT_EQ(colours(call.destination, function().destination, x, y), form(in))
                    << nameOf(target) << " pixel " << x << ", " << y << " of " << call.describe() << " from "
                    << testing::PrintToString(in);
                if (member().alpha == Alpha::none) continue;
                const double alpha = member().alpha == Alpha::argument                      ? call.arguments.alpha
                                     : member().alpha == Alpha::zeroInGroups && x < grouped ? 0
                                                                                            : kOldAlpha;
                ASSERT_EQ(alphaAt(x, y), alpha) << "alpha at " << x << " of " << call.describe();
            }
        }
    }
};

TEST_P(Ycbcr444, everyPixelOfEveryWidth) {
    using Where = Placement::Where;
    Random random(444);
    std::vector<int> widths = {79, 80, 81, 95, 96, 97, 127, 128, 129};
    for (int width = 1; width <= 72; ++width) widths.push_back(width);
    for (const int width : widths) {
        for (const Where where : {Where::againstEnd, Where::aligned}) {
            // one byte from the aligned places, or on them
            const int padding = where == Where::aligned ? 0 : 1;
            Call call(function(), {width, 3}, {where, padding}, {where, padding}, random);
            const bool aligned = where == Where::aligned && width % 16 == 0;
            onEachTarget([&](Target target) { compare(call, aligned, target); });
            if (HasFatalFailure()) return;
        }
    }
}

// One plane or one step off the multiples of 16 is enough for the 32-bit form.
TEST(Ycbcr444Aligned, everyPlaneAndStepCounts) {
    Random random(16);
    const catalog::Export& function = *catalog::find("pxliRGBToYCbCr_8u_P3R");
    for (int odd = 0; odd <= 8; ++odd) {  // none, a source plane, a destination plane, a step
        const Placement placement = {Placement::Where::aligned, 40};
        Call call(function, {32, 16}, placement, placement, random);
        auto &src = call.arguments.source, &dst = call.arguments.destination;
        for (int i = 0; i < 3; ++i) {
            const auto shift = [&](catalog::PlaneRef& plane, int first, int step) {
                plane.first = static_cast<Pxl8u*>(plane.first) + (odd == first);
                plane.step += odd == step;
            };
            shift(src[static_cast<std::size_t>(i)], 1 + i, 7);
            shift(dst[static_cast<std::size_t>(i)], 4 + i, 8);
        }
        ASSERT_EQ(call.run(), pxlStatusOk);
        for (int n = 0; n < 32 * 16; ++n) {
            Pixel in, out;
            for (std::size_t i = 0; i < 3; ++i) {
                in[i] = static_cast<Pxl8u*>(src[i].first)[n / 32 * src[i].step + n % 32];
                out[i] = static_cast<Pxl8u*>(dst[i].first)[n / 32 * dst[i].step + n % 32];
            }
            ASSERT_EQ(out, (odd == 0 ? encodeQ16 : encodeReference)(in)) << "odd one " << odd << ", pixel " << n;
        }
    }
}

// The codes 0, 5, 10 ... 255 of all channels in every combination against the equations of the standard in double
// precision, which know nothing of groups and integers.
TEST_P(Ycbcr444, distanceToTheStandard) {
    constexpr int kLevels = 52, kStep = 5;
    const bool decodes = function().source.space == "YCbCr",
               bt709 = std::string_view(member().name).find("709") != std::string_view::npos;
    const double kr = bt709 ? 0.2126 : 0.299, kb = bt709 ? 0.0722 : 0.114, kg = 1 - kr - kb;
    const auto equations = [&](Pixel p) -> std::array<double, 3> {
        if (!decodes) {
            const double luma = kr * p[0] + kg * p[1] + kb * p[2];
            return {16 + luma * 219 / 255, 128 + (p[2] - luma) / (2 - 2 * kb) * 224 / 255,
                    128 + (p[0] - luma) / (2 - 2 * kr) * 224 / 255};
        }
        const double y = (p[0] - 16) * 255.0 / 219, b = (p[1] - 128) * 255.0 / 224 * (2 - 2 * kb),
                     r = (p[2] - 128) * 255.0 / 224 * (2 - 2 * kr);
        return {std::clamp(y + r, 0.0, 255.0), std::clamp(y - (kr * r + kb * b) / kg, 0.0, 255.0),
                std::clamp(y + b, 0.0, 255.0)};
    };
    for (const auto where : {Placement::Where::againstEnd, Placement::Where::aligned}) {
        // 7 columns more than 16 n, so that colours fall into groups in one row and the tail in another; or whole
        // groups
        const int width = 16 * kLevels + (where == Placement::Where::aligned ? 0 : 7);
        const int height = kLevels * kLevels * kLevels / width + 1;
        Random random(5);
        Call call(function(), {width, height}, {where}, {where}, random);
        for (int n = 0; n < width * height; ++n) {
            int rest = n;
            for (int c = 0; c < 3; ++c, rest /= kLevels) {
                call.source.at<Pxl8u>(c, n % width, n / width) = static_cast<Pxl8u>(rest % kLevels * kStep);
            }
        }
        ASSERT_EQ(call.run(), pxlStatusOk);
        double worst = 0;
        for (int n = 0; n < width * height; ++n) {
            const auto exact = equations(colours(call.source, function().source, n % width, n / width));
            const Pixel out = colours(call.destination, function().destination, n % width, n / width);
            for (std::size_t c = 0; c < 3; ++c) worst = std::max(worst, std::abs(out[c] - exact[c]));
        }
        EXPECT_LE(worst, member().distance);
    }
}

// All 2^24 colours in rows of nothing but a tail, for each set of coefficients of the forms per pixel.
TEST(Ycbcr444Tails, allColours) {
    constexpr int kWidth = 7, kHeight = (1 << 24) / kWidth + 1;
    for (const std::string_view name : {"pxliRGBToYCbCr_8u_C3P3R", "pxliRGBToYCbCr_8u_P3R", "pxliYCbCrToRGB_8u_AC4R",
                                        "pxliYCbCrToRGB_8u_P3C3R", "pxliYCbCrToRGB_8u_P3R"}) {
        const Form form = std::ranges::find(kMembers, name, &Member::name)->tail;
        Random random(7);
        Call call(*catalog::find(name), {kWidth, kHeight}, {}, {}, random);
        const auto sample = [](const Image& image, int channel, int pixel) -> Pxl8u& {
            const bool planar = image.planes().size() > 1;
            const catalog::PlaneRef& plane = image.planes()[static_cast<std::size_t>(planar ? channel : 0)];
            const std::ptrdiff_t at = planar ? pixel % kWidth : pixel % kWidth * (plane.step / kWidth) + channel;
            return static_cast<Pxl8u*>(plane.first)[pixel / kWidth * plane.step + at];
        };
        for (int n = 0; n < kWidth * kHeight; ++n) {
            for (int c = 0; c < 3; ++c) sample(call.source, c, n) = static_cast<Pxl8u>(n >> 8 * c);
        }
        ASSERT_EQ(call.run(), pxlStatusOk);
        int wrong = 0;
        for (int n = 0; n < kWidth * kHeight; ++n) {
            const Pixel out = form({n & 255, n >> 8 & 255, n >> 16 & 255});
            for (int c = 0; c < 3; ++c) wrong += sample(call.destination, c, n) != out[static_cast<std::size_t>(c)];
        }
        EXPECT_EQ(wrong, 0) << name;
    }
}

// The forms without a rounding term miss white by one, in their groups (the first 16 of 23 pixels) or everywhere: as
// defined.
TEST_P(Ycbcr444, blackAndWhite) {
    const bool decodes = function().source.space == "YCbCr";
    for (const auto& [rgb, luma] : {std::pair{0, 16}, {255, 235}}) {
        Random random(6);
        Call call(function(), {23, 1}, {}, {}, random);
        for (int x = 0; x < 23; ++x) {
            for (int c = 0; c < 3; ++c)
                call.source.at<Pxl8u>(c, x, 0) = static_cast<Pxl8u>(!decodes ? rgb : c == 0 ? luma : 128);
        }
        ASSERT_EQ(call.run(), pxlStatusOk);
        for (int x = 0; x < 23; ++x) {
            const Pixel out = colours(call.destination, function().destination, x, 0);
            const bool truncates = rgb > 0 && (member().tail == kDecode601Truncating ||
                                               (member().group == kDecodeQ13Truncating && x < 16));
            const int gray = truncates ? rgb - 1 : rgb;
            EXPECT_EQ(out, decodes ? (Pixel{gray, gray, gray}) : (Pixel{luma, 128, 128})) << "pixel " << x;
        }
    }
}

TEST_P(Ycbcr444, orderOfChecks) { EXPECT_EQ(checkOrderFaults(function(), member().checks), ""); }

INSTANTIATE_TEST_SUITE_P(Members, Ycbcr444, testing::ValuesIn(kMembers),
                         [](const auto& member) { return std::string(member.param.name); });

}  // namespace
}  // namespace pxl::test
