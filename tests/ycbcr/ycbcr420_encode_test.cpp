// RGB to YCbCr 4:2:0 and 4:1:1: every sample of every member against plain-integer models written from the formulas.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "support/call.h"
#include "support/targets.h"

namespace pxl::test {
namespace {

using Colour = std::array<int, 3>;  // R, G, B; of four pixels together or of one

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
constexpr Set k709 = {{11993, 40239, 4063},
                      {-6619, -22151, 28770},
                      {28770, -26149, -2621},
                      16,
                      false,
                      0.2126,
                      0.0722,
                      219 / 255.,
                      224 / 255.};
constexpr Set kHdtv = {
    {13959, 46858, 4719}, {-7668, -25821, 33489}, {33489, -30409, -3080}, 0, true, 0.2126, 0.0722, 1, 224 / 219.};

int limit(const Set& set, int v) { return set.limited ? std::clamp(v, 1, 254) : v; }
int half(int c) { return c < 0 ? -((1 - c) / 2) : (c + 1) / 2; }

template <class Term>
int sum(const Colour& colour, const Colour& weights, Term term) {
    return term(colour[0], weights[0]) + term(colour[1], weights[1]) + term(colour[2], weights[2]);
}
int exact(int x, int c) { return x * c; }
int lumaProduct(int x, int c) { return (x * half(c) + 64) >> 7; }
int chromaProduct(int s, int c) { return (s * half(c) + 256) >> 9; }

int luma(const Set& set, const Colour& p, bool inGroup) {
    return limit(set, inGroup ? (sum(p, set.y, lumaProduct) + 256 * set.black + 128) >> 8
                              : (sum(p, set.y, exact) + 65536 * set.black + 32768) >> 16);
}
int chroma(const Set& set, const Colour& weights, const Colour& sums, bool inGroup) {
    return limit(
        set, inGroup ? (sum(sums, weights, chromaProduct) + 32800) >> 8 : (sum(sums, weights, exact) + 33587200) >> 18);
}

struct Member {
    const char* name;
    const char* checks;  // letters of checkOrderFaults
    const Set& set;
};

const Member kMembers[] = {
    {"pxliRGBToYCbCr420_8u_C3P3R", "pse", k601},
    {"pxliRGBToYCbCr420_8u_C3P2R", "ps", k601},
    {"pxliRGBToYCbCr420_8u_C4P2R", "ps", k601},
    {"pxliRGBToYCrCb420_8u_AC4P3R", "pes", k601},
    {"pxliBGRToYCbCr420_8u_C3P3R", "pes", k601},
    {"pxliBGRToYCbCr420_8u_AC4P3R", "pes", k601},
    {"pxliBGRToYCbCr420_8u_C3P2R", "ps", k601},
    {"pxliBGRToYCbCr420_8u_AC4P2R", "ps", k601},
    {"pxliBGRToYCbCr420_709CSC_8u_C3P3R", "pes", k709},
    {"pxliBGRToYCbCr420_709CSC_8u_AC4P3R", "pes", k709},
    {"pxliBGRToYCbCr420_709CSC_8u_C3P2R", "ps", k709},
    {"pxliBGRToYCbCr420_709CSC_8u_AC4P2R", "ps", k709},
    {"pxliBGRToYCrCb420_8u_C3P3R", "pes", k601},
    {"pxliBGRToYCrCb420_8u_AC4P3R", "pes", k601},
    {"pxliBGRToYCrCb420_709CSC_8u_C3P3R", "pes", k709},
    {"pxliBGRToYCrCb420_709CSC_8u_AC4P3R", "pes", k709},
    {"pxliBGRToYCbCr411_8u_C3P3R", "pes", k601},
    {"pxliBGRToYCbCr411_8u_AC4P3R", "pes", k601},
    {"pxliBGRToYCbCr420_709HDTV_8u_AC4P3R", "pes", kHdtv},
};
void PrintTo(const Member& member, std::ostream* out) { *out << member.name; }

class Ycbcr420Encode : public testing::TestWithParam<Member> {
protected:
    const Set& set() const { return GetParam().set; }
    const catalog::Export& function() const { return *catalog::find(GetParam().name); }
    int blockWidth() const { return function().destination.sampling == 411 ? 4 : 2; }
    int blockHeight() const { return function().destination.sampling == 411 ? 1 : 2; }
    // Cb = 1, Cr = 2; the channel that holds it
    int channel(int chroma) const { return function().destination.space == "YCrCb" ? 3 - chroma : chroma; }

    Pxl8u& at(Call& call, int rgb, int x, int y) const {
        return call.source.at<Pxl8u>(function().source.space == "BGR" ? 2 - rgb : rgb, x, y);
    }
    Colour colour(Call& call, int x, int y) const { return {at(call, 0, x, y), at(call, 1, x, y), at(call, 2, x, y)}; }
    Colour sums(Call& call, int x, int y) const {
        Colour total = {};
        for (int dy = 0; dy < blockHeight(); ++dy) {
            for (int dx = 0; dx < blockWidth(); ++dx) {
                for (std::size_t c = 0; c < 3; ++c) total[c] += colour(call, x + dx, y + dy)[c];
            }
        }
        return total;
    }

    void compare(Call& call, Target target) {
        constexpr Pxl8u kOld = 0xA5;
        call.destination.fill(std::array<std::uint8_t, 1>{kOld});
        const auto [width, height] = call.arguments.size;
        const int wholeWidth = width / blockWidth() * blockWidth(),
                  wholeHeight = height / blockHeight() * blockHeight(), grouped = wholeWidth / 16 * 16;
        ASSERT_EQ(call.run(), wholeWidth < width || wholeHeight < height ? pxlStatusOddSize : pxlStatusOk)
            << call.describe();
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const bool whole = x < wholeWidth && y < wholeHeight;
                ASSERT_EQ(call.destination.at<Pxl8u>(0, x, y),
                          whole ? luma(set(), colour(call, x, y), x < grouped) : kOld)
                    << nameOf(target) << " pixel " << x << ", " << y << " of " << call.describe();
                if (!whole || x % blockWidth() != 0 || y % blockHeight() != 0) continue;
                for (int c = 1; c <= 2; ++c) {
                    ASSERT_EQ(call.destination.at<Pxl8u>(channel(c), x, y),
                              chroma(set(), c == 1 ? set().cb : set().cr, sums(call, x, y), x < grouped))
                        << nameOf(target) << " chroma " << c << " of " << x << ", " << y << " of " << call.describe();
                }
            }
        }
    }
};

TEST_P(Ycbcr420Encode, everySampleOfEveryWidth) {
    Random random(420);
    std::vector<int> widths = {79, 80, 81, 95, 96, 97, 127, 128, 129, 130};
    for (int width = function().minimumWidth; width <= 72; ++width) widths.push_back(width);
    for (const int width : widths) {
        for (int height = function().minimumHeight; height <= (width < 5 ? 5 : 3); ++height) {
            Call call(function(), {width, height}, {}, {Placement::Where::againstEnd, 3}, random);
            onEachTarget([&](Target target) { compare(call, target); });
            if (HasFatalFailure()) return;
        }
    }
}

// Blocks whose pixels have any colours, but equal sums of the three channels, have no colour: 16 or 32 columns of
// groups and 6 of the rest.
TEST_P(Ycbcr420Encode, grayStaysGray) {
    Random random(128);
    for (const int width : {22, 38}) {
        Call call(function(), {width, 256}, {}, {}, random);
        for (int y = 0; y < 256; y += blockHeight()) {
            for (int x = 0; x + blockWidth() <= width; x += blockWidth()) {
                int value[4];
                for (int& v : value) v = x < 16 ? y : random.below(256);
                for (int i = 0; i < 4; ++i) {
                    for (int c = 0; c < 3; ++c) {
                        at(call, c, x + i % blockWidth(), y + i / blockWidth()) =
                            static_cast<Pxl8u>(value[(i + c) % 4]);
                    }
                }
            }
        }
        for (const auto& [v, code] : {std::pair{0, set().black}, {255, set().black == 0 ? 255 : 235}}) {
            for (int y = 0; y < 2; ++y) {
                for (int x = 0; x < width; ++x) {
                    for (int c = 0; c < 3; ++c) at(call, c, x, y) = static_cast<Pxl8u>(v);
                }
            }
            ASSERT_GE(call.run(), 0);
            for (int x = 0; x < width / 4 * 4; ++x) EXPECT_EQ(call.destination.at<Pxl8u>(0, x, 0), limit(set(), code));
        }
        for (int y = 0; y < 256; ++y) {
            for (int x = 0; x < width / 4 * 4; ++x) {
                for (int c = 1; c <= 2; ++c) ASSERT_EQ(call.destination.at<Pxl8u>(c, x, y), 128) << x << ", " << y;
            }
        }
    }
}

TEST_P(Ycbcr420Encode, orderOfChecks) { EXPECT_EQ(checkOrderFaults(function(), GetParam().checks), ""); }

INSTANTIATE_TEST_SUITE_P(Members, Ycbcr420Encode, testing::ValuesIn(kMembers),
                         [](const auto& member) { return std::string(member.param.name); });

// All 2^24 colours, in an order that mixes them well inside blocks: in the groups luma and chroma are within one code
// of the reference form, in rows of nothing but a tail they are the reference form, and in both they are within a
// stated distance of the equations of the standard.
TEST(Ycbcr420EncodeForms, allColours) {
    struct Case {
        decltype(&pxliBGRToYCbCr420_8u_AC4P3R) function;
        const Set& set;
        double lumaDistance, chromaDistance;
    };
    const Case cases[] = {{pxliBGRToYCbCr420_8u_AC4P3R, k601, 0.59, 0.94},
                          {pxliBGRToYCbCr420_709CSC_8u_AC4P3R, k709, 0.62, 0.95},
                          {pxliBGRToYCbCr420_709HDTV_8u_AC4P3R, kHdtv, 1.0, 0.95}};
    constexpr int kGroups = 4096, kTail = 14;
    std::vector<Pxl8u> pixels(2 * kGroups * 4), planes(kGroups * 3);
    for (int n = 0; n < 2 * static_cast<int>(std::size(cases)); ++n) {
        const auto& [function, set, lumaDistance, chromaDistance] = cases[n / 2];
        const int width = n % 2 == 0 ? kGroups : kTail;
        const double kg = 1 - set.kr - set.kb;
        const auto gray = [&, &s = set](const Colour& p) { return s.kr * p[0] + kg * p[1] + s.kb * p[2]; };
        int apart = 0;
        double worstLuma = 0, worstChroma = 0;
        unsigned colour = 0;
        for (int pair = 0; pair < (1 << 23) / width; ++pair) {
            for (int i = 0; i < 2 * width; ++i, colour += 0x9E3779B1u) {
                for (int c = 0; c < 3; ++c)
                    pixels[static_cast<std::size_t>(4 * i + c)] = static_cast<Pxl8u>(colour >> 8 * c);
            }
            Pxl8u* plane[3] = {planes.data(), planes.data() + 2 * width, planes.data() + 2 * width + width / 2};
            int steps[3] = {width, width / 2, width / 2};
            ASSERT_EQ(function(pixels.data(), 4 * width, plane, steps, {width, 2}), pxlStatusOk);
            const auto at = [&](int i) -> Colour {
                const Pxl8u* p = &pixels[static_cast<std::size_t>(4 * i)];
                return {p[2], p[1], p[0]};
            };
            for (int i = 0; i < 2 * width; ++i) {
                apart = std::max(apart, std::abs(plane[0][i] - luma(set, at(i), false)));
                worstLuma = std::max(worstLuma, std::abs(plane[0][i] - set.black - set.lumaGain * gray(at(i))));
            }
            for (int i = 0; i < width / 2; ++i) {
                Colour sums = {};
                for (const int j : {2 * i, 2 * i + 1, 2 * i + width, 2 * i + 1 + width}) {
                    for (std::size_t c = 0; c < 3; ++c) sums[c] += at(j)[c];
                }
                apart = std::max({apart, std::abs(plane[1][i] - chroma(set, set.cb, sums, false)),
                                  std::abs(plane[2][i] - chroma(set, set.cr, sums, false))});
                const double cb = set.chromaGain * (sums[2] - gray(sums)) / 8 / (1 - set.kb),
                             cr = set.chromaGain * (sums[0] - gray(sums)) / 8 / (1 - set.kr);
                worstChroma =
                    std::max({worstChroma, std::abs(plane[1][i] - 128 - cb), std::abs(plane[2][i] - 128 - cr)});
            }
        }
        EXPECT_EQ(apart, width == kTail ? 0 : 1);
        EXPECT_LE(worstLuma, lumaDistance);
        EXPECT_LE(worstChroma, chromaDistance);
    }
}

// Rows without gaps between them that end within a group: what follows the last group of each keeps the other form,
// which gives another code for a few colours only.
TEST(Ycbcr411Encode, denseRowsWithTails) {
    constexpr PxlSize size = {20, 3000};
    constexpr int kWidths[3] = {20, 5, 5};  // of the planes
    Random random(77);
    for (const int channels : {3, 4}) {
        const auto convert = channels == 3 ? pxliBGRToYCbCr411_8u_C3P3R : pxliBGRToYCbCr411_8u_AC4P3R;
        const int step = channels * size.width;
        std::vector<Pxl8u> pixels(static_cast<std::size_t>(step * size.height));
        for (Pxl8u& sample : pixels) sample = static_cast<Pxl8u>(random.next());
        const auto rowsWithGaps = [&](int gap) {
            std::vector<Pxl8u> memory[3], rows;
            Pxl8u* planes[3];
            int steps[3];
            for (int i = 0; i < 3; ++i) {
                steps[i] = kWidths[i] + gap;
                memory[i].resize(static_cast<std::size_t>(steps[i] * size.height));
                planes[i] = memory[i].data();
            }
            EXPECT_EQ(convert(pixels.data(), step, planes, steps, size), pxlStatusOk);
            for (int i = 0; i < 3; ++i) {
                for (int y = 0; y < size.height; ++y) {
                    rows.insert(rows.end(), planes[i] + y * steps[i], planes[i] + y * steps[i] + kWidths[i]);
                }
            }
            return rows;
        };
        onEachTarget([&](Target target) {
            EXPECT_EQ(rowsWithGaps(0), rowsWithGaps(3)) << nameOf(target) << ", " << channels << " channels";
        });
    }
}

// The proof for all sums of four, which are too many to try: the sums before the last shift differ by what the channels
// add one by one, so the largest difference of each channel bounds the whole. Below one code, codes differ by one at
// most.
TEST(Ycbcr420EncodeForms, groupsWithinOneCodeOfTheReference) {
    const auto largest = [](const Colour& weights, int last, int scale, auto product) {
        int low = 0, high = 0;
        for (const int c : weights) {
            int channelLow = 0, channelHigh = 0;
            for (int x = 0; x <= last; ++x) {
                const int difference = scale * product(x, c) - x * c;
                channelLow = std::min(channelLow, difference);
                channelHigh = std::max(channelHigh, difference);
            }
            low += channelLow;
            high += channelHigh;
        }
        return std::max(-low, high);
    };
    for (const Set& set : {k601, k709, kHdtv}) {
        EXPECT_LT(largest(set.y, 255, 256, lumaProduct), 65536 / 50);
        EXPECT_LT(largest(set.cb, 1020, 1024, chromaProduct), (1 << 18) / 50);
        EXPECT_LT(largest(set.cr, 1020, 1024, chromaProduct), (1 << 18) / 50);
    }
}

}  // namespace
}  // namespace pxl::test
