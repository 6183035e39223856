// RGB to YCbCr 4:2:2: every sample of every member against plain-integer models written from the formulas.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "support/call.h"
#include "support/targets.h"

namespace pxl::test {
namespace {

using Colour = std::array<int, 3>;  // R, G, B; of a pixel, or sums of pixels

struct Set {
    Colour y, cb, cr;
    int black;
    bool limited;
    double kr, kb, lumaGain, chromaGain;  // of the equations of the standard
};
constexpr Set k601 = {{16843, 33030, 6423},
                      {-9699, -19071, 28770},
                      {28770, -24117, -4653},
                      16,
                      false,
                      0.299,
                      0.114,
                      219 / 255.,
                      224 / 255.};
constexpr Set kHdtv = {
    {13959, 46858, 4719}, {-7668, -25821, 33489}, {33489, -30409, -3080}, 0, true, 0.2126, 0.0722, 1, 224 / 219.};

enum class Groups {
    fine,   // products of half the coefficients to 1/256 of a code
    rough,  // products to six fractional bits, in groups of 8
};
enum class Chroma { mean, filtered, filteredGamma };

struct Member {
    const char* name;
    const char* checks;  // letters of checkOrderFaults
    const Set& set;
    int oddLuma;  // constant of the second pixel of a pair
    int cb, cr;   // constants of the pair's chroma
    Groups groups = Groups::fine;
    Chroma chroma = Chroma::mean;
};

const Member kMembers[] = {
    {"pxliRGBToYCbCr422_8u_C3C2R", "ps", k601, 1048576, 16842752, 16842752},
    {"pxliRGBToYCbCr422_8u_C3P3R", "pes", k601, 1081344, 16842752, 16842752},
    {"pxliRGBToYCbCr422_8u_P3C2R", "pse", k601, 1048576, 16842752, 16842752, Groups::rough},
    {"pxliRGBToYCrCb422_8u_C3C2R", "ps", k601, 1048576, 16842752, 16842752},
    {"pxliRGBToYCrCb422_8u_P3C2R", "pse", k601, 1048576, 16842752, 16842752},
    {"pxliBGRToYCbCr422_8u_C3C2R", "ps", k601, 1081344, 16793600, 16793600},
    {"pxliBGRToYCbCr422_8u_AC4C2R", "ps", k601, 1081344, 16793600, 16793600},
    {"pxliBGRToYCbCr422_8u_C3P3R", "pes", k601, 1081344, 16793600, 16793600},
    {"pxliBGRToYCbCr422_8u_AC4P3R", "pes", k601, 1081344, 16793600, 16793600},
    {"pxliRGBToCbYCr422_8u_C3C2R", "ps", k601, 1081344, 8421375, 8421375, Groups::fine, Chroma::filtered},
    {"pxliRGBToCbYCr422Gamma_8u_C3C2R", "ps", k601, 1081344, 8421375, 8421375, Groups::fine, Chroma::filteredGamma},
    {"pxliBGRToCbYCr422_8u_AC4C2R", "ps", k601, 1081344, 16842752, 16842750},
    {"pxliBGRToCbYCr422_709HDTV_8u_C3C2R", "ps", kHdtv, 32768, 16842752, 16842750},
    {"pxliBGRToCbYCr422_709HDTV_8u_AC4C2R", "ps", kHdtv, 32768, 16842752, 16842750},
};
void PrintTo(const Member& member, std::ostream* out) { *out << member.name; }

int dot(const Colour& a, const Colour& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }
template <class Term>
int sum(const Colour& colour, const Colour& weights, Term term) {
    return term(colour[0], weights[0]) + term(colour[1], weights[1]) + term(colour[2], weights[2]);
}
Colour operator+(const Colour& a, const Colour& b) { return {a[0] + b[0], a[1] + b[1], a[2] + b[2]}; }
int half(int c) { return c < 0 ? -((1 - c) / 2) : (c + 1) / 2; }

// The curve as the standard gives it; checked against some entries below.
int gamma(int v) {
    const double x = v / 255.;
    return static_cast<int>(std::lrint(x < 0.018 ? 4.5 * v : 255 * (1.099 * std::pow(x, 0.45) - 0.099)));
}

class Ycbcr422Encode : public testing::TestWithParam<Member> {
protected:
    const Member& member_ = GetParam();
    const Set& set_ = member_.set;
    const catalog::Export& function_ = *catalog::find(member_.name);
    const bool bgr_ = function_.source.space == "BGR", planar_ = function_.destination.layout == "P3";
    const bool chromaFirst_ = function_.destination.space == "CbYCr";
    const int groupSize_ = member_.groups == Groups::rough ? 8 : 16;

    Pxl8u& source(Call& call, int rgb, int x, int y) const { return call.source.at<Pxl8u>(bgr_ ? 2 - rgb : rgb, x, y); }
    Colour colour(Call& call, int x, int y) const {
        Colour c = {source(call, 0, x, y), source(call, 1, x, y), source(call, 2, x, y)};
        if (member_.chroma == Chroma::filteredGamma) std::ranges::transform(c, c.begin(), gamma);
        return c;
    }
    int luma(Call& call, int x, int y) const {
        return call.destination.at<Pxl8u>(!planar_ && chromaFirst_ ? 1 : 0, x, y);
    }
    // Cb = 1, Cr = 2
    int chroma(Call& call, int which, int x, int y) const {
        if (planar_) return call.destination.at<Pxl8u>(which, x, y);
        const bool first = which == (function_.destination.space == "YCrCb" ? 2 : 1);
        return call.destination.at<Pxl8u>(chromaFirst_ ? 0 : 1, x / 2 * 2 + (first ? 0 : 1), y);
    }

    int limit(int v) const { return set_.limited ? std::clamp(v, 1, 254) : v; }
    int expectedLuma(const Colour& p, bool inGroup, bool second) const {
        const int constant = second ? member_.oddLuma : 65536 * set_.black + 32768;
        if (!inGroup) return limit((dot(p, set_.y) + constant) >> 16);
        if (member_.groups == Groups::rough) {
            const auto product = [](int x, int c) { return (128 * x * c + 16384) >> 15; };
            return (sum(p, {4211, 8258, 1606}, product) + 1056) >> 6;
        }
        const auto product = [](int x, int c) { return (x * half(c) + 64) >> 7; };
        return limit((sum(p, set_.y, product) + constant / 256) >> 8);
    }
    // `before` is the pixel in front of the pair.
    int expectedChroma(int which, const Colour& before, const Colour& p0, const Colour& p1, bool inGroup) const {
        const Colour& weights = which == 1 ? set_.cb : set_.cr;
        const int constant = which == 1 ? member_.cb : member_.cr;
        if (member_.chroma != Chroma::mean) {
            if (!inGroup) {
                return ((dot(weights, before) >> 2) + (dot(weights, p0) >> 1) + (dot(weights, p1) >> 2) + constant) >>
                       16;
            }
            const auto product = [](int s, int c) { return (s * half(c) + 256) >> 9; };
            return (sum(before + p0 + p0 + p1, weights, product) + constant / 256) >> 8;
        }
        if (!inGroup) return limit((dot(weights, p0 + p1) + constant) >> 17);
        if (member_.groups == Groups::rough) {
            const auto product = [](int s, int c) {
                return c < 0 ? -((64 * s * -c + 16384) >> 15) : (64 * s * c + 16384) >> 15;
            };
            const Colour rough = which == 1 ? Colour{-2425, -4768, 7193} : Colour{7193, -6029, -1163};
            return std::clamp((sum(p0 + p1, rough, product) + 8224) >> 6, 0, 255);
        }
        const auto product = [](int s, int c) { return (s * half(c) + 128) >> 8; };
        return limit((sum(p0 + p1, weights, product) + constant / 512) >> 8);
    }

    void compare(Call& call, Target target) const {
        constexpr Pxl8u kOld = 0xA5;
        call.destination.fill(std::array<std::uint8_t, 1>{kOld});
        const auto [width, height] = call.arguments.size;
        const int grouped = width / groupSize_ * groupSize_;
        ASSERT_EQ(call.run(), pxlStatusOk) << call.describe();
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const auto where = [&] {
                    return std::string(nameOf(target)) + " pixel " + std::to_string(x) + ", " + std::to_string(y) +
                           " of " + call.describe();
                };
                const bool halfPair = x % 2 == 0 && x + 1 == width;
                const Colour p = colour(call, x, y);
                if (halfPair && !chromaFirst_) {
                    ASSERT_EQ(luma(call, x, y), kOld) << where();
                    if (!planar_) {
                        ASSERT_EQ(call.destination.at<Pxl8u>(1, x, y), kOld) << where();
                    }
                    continue;
                }
                ASSERT_EQ(luma(call, x, y), expectedLuma(p, x < grouped, x % 2 == 1)) << where();
                if (halfPair) {
                    ASSERT_EQ(chroma(call, 1, x, y), limit((dot(p, set_.cb) + 8421376) >> 16)) << where();
                } else if (x % 2 == 0) {
                    const Colour before = colour(call, std::max(x - 1, 0), y), next = colour(call, x + 1, y);
                    for (int c = 1; c <= 2; ++c) {
                        ASSERT_EQ(chroma(call, c, x, y), expectedChroma(c, before, p, next, x < grouped))
                            << "chroma " << c << ", " << where();
                    }
                }
            }
        }
    }
};

TEST_P(Ycbcr422Encode, everySampleOfEveryWidth) {
    Random random(422);
    std::vector<int> widths = {47, 48, 49, 63, 64, 65, 79, 80, 81, 95, 96, 97, 127, 128, 129, 143, 144, 145};
    for (int width = function_.minimumWidth; width <= 40; ++width) widths.push_back(width);
    for (const int width : widths) {
        Call call(function_, {width, 3}, {}, {Placement::Where::againstEnd, 3}, random);
        onEachTarget([&](Target target) { compare(call, target); });
        if (HasFatalFailure()) return;
    }
}

// So many tails that a constant which is off by one in 65536 shows.
TEST_P(Ycbcr422Encode, manyTails) {
    Random random(65536);
    Call call(function_, {groupSize_ - 2, 60000}, {}, {}, random);
    compare(call, activeTarget());
}

// Pairs of any two grays have no colour; black and white have the codes of the standard. 16 or 32 columns of groups
// and 6 of the rest.
TEST_P(Ycbcr422Encode, grayStaysGray) {
    Random random(128);
    for (const int width : {22, 38}) {
        Call call(function_, {width, 256}, {}, {}, random);
        for (int y = 0; y < 256; ++y) {
            for (int x = 0; x < width; ++x) {
                const int gray = y == 0 ? 0 : y == 255 ? 255 : x % 8 < 2 ? y : random.below(256);
                for (int c = 0; c < 3; ++c) source(call, c, x, y) = static_cast<Pxl8u>(gray);
            }
        }
        ASSERT_EQ(call.run(), pxlStatusOk);
        for (int x = 0; x < width; ++x) {
            EXPECT_EQ(luma(call, x, 0), limit(set_.black));
            EXPECT_EQ(luma(call, x, 255), set_.black == 0 ? 254 : 235);
            for (int y = 0; y < 256; ++y) {
                for (int c = 1; c <= 2; ++c) ASSERT_EQ(chroma(call, c, x, y), 128) << x << ", " << y;
            }
        }
    }
}

TEST_P(Ycbcr422Encode, orderOfChecks) { EXPECT_EQ(checkOrderFaults(function_, member_.checks), ""); }

INSTANTIATE_TEST_SUITE_P(Members, Ycbcr422Encode, testing::ValuesIn(kMembers),
                         [](const auto& member) { return std::string(member.param.name); });

// All 2^24 colours, in an order that mixes them well inside pairs: in the groups within one code of the exact sums, in
// rows of nothing but a tail those, never 0 or 255 where codes are limited, and within a stated distance of the
// equations of the standard.
TEST(Ycbcr422EncodeForms, allColours) {
    struct Case {
        decltype(&pxliBGRToYCbCr422_8u_AC4P3R) planes;
        decltype(&pxliBGRToCbYCr422_8u_AC4C2R) pairs;
        const Set& set;
        int cbRounding, crRounding;
        double lumaDistance, chromaDistance;
    };
    const Case cases[] = {{pxliBGRToYCbCr422_8u_AC4P3R, nullptr, k601, 16384, 16384, 0.59, 0.95},
                          {nullptr, pxliBGRToCbYCr422_8u_AC4C2R, k601, 65536, 65534, 0.59, 0.6},
                          {nullptr, pxliBGRToCbYCr422_709HDTV_8u_AC4C2R, kHdtv, 65536, 65534, 1.0, 1.2}};
    constexpr int kGroups = 4096, kTail = 6;
    std::vector<Pxl8u> pixels(kGroups * 4), out(kGroups * 2);
    for (int n = 0; n < 2 * static_cast<int>(std::size(cases)); ++n) {
        const auto& [planes, pairs, set, cbRounding, crRounding, lumaDistance, chromaDistance] = cases[n / 2];
        const int width = n % 2 == 0 ? kGroups : kTail;
        const double kg = 1 - set.kr - set.kb;
        const auto gray = [&, &s = set](const Colour& p) { return s.kr * p[0] + kg * p[1] + s.kb * p[2]; };
        const auto limit = [limited = set.limited](auto v) { return limited ? std::clamp<decltype(v)>(v, 1, 254) : v; };
        int apart = 0;
        double worstLuma = 0, worstChroma = 0;
        unsigned colour = 0;
        for (int row = 0; row < (1 << 24) / width; ++row) {
            for (int i = 0; i < width; ++i, colour += 0x9E3779B1u) {
                for (int c = 0; c < 3; ++c)
                    pixels[static_cast<std::size_t>(4 * i + c)] = static_cast<Pxl8u>(colour >> 8 * c);
            }
            Pxl8u* plane[3] = {out.data(), out.data() + width, out.data() + width * 3 / 2};
            int steps[3] = {width, width / 2, width / 2};
            ASSERT_EQ(planes ? planes(pixels.data(), 4 * width, plane, steps, {width, 1})
                             : pairs(pixels.data(), 4 * width, out.data(), 2 * width, {width, 1}),
                      pxlStatusOk);
            const auto at = [&](int i) -> Colour {
                const Pxl8u* p = &pixels[static_cast<std::size_t>(4 * i)];
                return {p[2], p[1], p[0]};
            };
            const auto off = [](double& worst, double distance) { worst = std::max(worst, std::abs(distance)); };
            for (int i = 0; i < width; i += 2) {
                const Colour p0 = at(i), p1 = at(i + 1), s = p0 + p1;
                const Pxl8u* pair = &out[static_cast<std::size_t>(2 * i)];
                const Colour y = {planes ? plane[0][i] : pair[1], planes ? plane[0][i + 1] : pair[3]};
                const int cb = planes ? plane[1][i / 2] : pair[0], cr = planes ? plane[2][i / 2] : pair[2];
                const int black = set.black * 65536 + 32768, middle = 128 << 17;
                apart = std::max({apart, std::abs(y[0] - limit((dot(p0, set.y) + black) >> 16)),
                                  std::abs(y[1] - limit((dot(p1, set.y) + black) >> 16)),
                                  std::abs(cb - limit((dot(s, set.cb) + middle + cbRounding) >> 17)),
                                  std::abs(cr - limit((dot(s, set.cr) + middle + crRounding) >> 17))});
                off(worstLuma, y[0] - limit(set.black + set.lumaGain * gray(p0)));
                off(worstLuma, y[1] - limit(set.black + set.lumaGain * gray(p1)));
                off(worstChroma, cb - limit(128 + set.chromaGain * (s[2] - gray(s)) / 4 / (1 - set.kb)));
                off(worstChroma, cr - limit(128 + set.chromaGain * (s[0] - gray(s)) / 4 / (1 - set.kr)));
            }
        }
        EXPECT_EQ(apart, width == kTail ? 0 : 1);
        EXPECT_LE(worstLuma, lumaDistance);
        EXPECT_LE(worstChroma, chromaDistance);
    }
}

TEST(Ycbcr422EncodeForms, curveOfTheGammaFunction) {
    const int first[] = {0, 4, 9, 14, 18, 23, 27, 30, 34}, last[] = {253, 253, 254, 254, 255, 255};
    for (int i = 0; i < 9; ++i) EXPECT_EQ(gamma(i), first[i]);
    for (int i = 0; i < 6; ++i) EXPECT_EQ(gamma(250 + i), last[i]);
}

// Packed luma of two equal pixels differs where the second one is cut off, and in no other member.
TEST(Ycbcr422EncodeForms, secondLumaIsCutOff) {
    const Pxl8u pair[6] = {200, 100, 50, 200, 100, 50};
    Pxl8u out[4];
    EXPECT_EQ(pxliRGBToYCbCr422_8u_C3C2R(pair, 6, out, 4, {2, 1}), pxlStatusOk);
    EXPECT_EQ(out[0], 123);
    EXPECT_EQ(out[2], 122);
    EXPECT_EQ(pxliRGBToCbYCr422_8u_C3C2R(pair, 6, out, 4, {2, 1}), pxlStatusOk);
    EXPECT_EQ(out[1], 123);
    EXPECT_EQ(out[3], 123);
}

}  // namespace
}  // namespace pxl::test
