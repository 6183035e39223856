// YCbCr 4:2:0 and 4:1:1 to RGB: every pixel of every member against plain-integer models written from the formulas.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "support/call.h"
#include "support/targets.h"

namespace pxl::test {
namespace {

using Pixel = std::array<int, 3>;  // R, G, B
using Form = Pixel (*)(int y, int cb, int cr);

int byte(int v) { return std::clamp(v, 0, 255); }
int lane(int v) { return std::clamp(v, -32768, 32767); }

template <int cY, int cR, int cGb, int cGr, int cB, int kR, int kG, int kB>
Pixel sums(int y, int cb, int cr) {
    return {byte((cY * y + cR * cr + kR) >> 16), byte((cY * y + cGb * cb + cGr * cr + kG) >> 16),
            byte((cY * y + cB * cb + kB) >> 16)};
}
constexpr Form kB = sums<76284, 104595, -25690, -53281, 132186, -14575936, 8920512, -18107584>;
constexpr Form kC709 = sums<76284, 117506, -13959, -34996, 138609, -16228544, 5078464, -18929728>;
constexpr Form kH = sums<65536, 100925, -11993, -30081, 119013, -12885632, 5418240, -15200896>;
Pixel c411(int y, int cb, int cr) {
    return sums<76294, 104595, -25625, -53281, 132186, -1187936, -1187936, -1187936>(y, cb - 128, cr - 128);
}
Pixel filter(int y, int cb, int cr) {
    const int luma = 4769 * y - 76304;
    return {byte((luma + 6537 * cr - 836736) >> 12), byte((luma - 1605 * (cb - 128) + 3330 * (128 - cr)) >> 12),
            byte((luma + 8263 * (cb - 128)) >> 12)};
}

template <int cY, int cR, int cGb, int cGr, int cB, int rounding, int shift>
Pixel lanes(int y, int cb, int cr) {
    const auto p = [](int x, int c) { return (x * c) >> 16; };
    const int luma = p(y * 128 - 2048, cY), u = cb * 128 - 16384, v = cr * 128 - 16384;
    const auto last = [](int sum) { return byte(lane(lane(sum) + rounding) >> shift); };
    return {last(luma + p(v, cR)), last(luma - lane(p(u, cGb) + p(v, cGr))), last(luma + p(u, cB))};
}
constexpr Form kQ12 = lanes<4769, 6537, 1605, 3330, 8263, 4, 3>;
constexpr Form kQ13 = lanes<9535, 13074, 3211, 6660, 16523, 8, 4>;
constexpr Form k709 = lanes<9535, 14688, 1745, 4375, 17326, 8, 4>;

template <int cY, int cR, int cGb, int cGr, int cB, int oR, int oG, int oB>
Pixel folded(int y, int cb, int cr) {
    const auto p = [](int x, int c) { return (x * 128 * c) >> 16; };
    const int luma = p(y, cY);
    return {byte(lane(luma + p(cr, cR) + oR) >> 3), byte(lane(luma - (lane(p(cb, cGb) + p(cr, cGr)) + oG)) >> 3),
            byte(lane(luma + p(cb, cB) + oB) >> 3)};
}
constexpr Form kCbCr = folded<4769, 6537, 1605, 3330, 8263, -1779, -1089, -2211>;
constexpr Form kCrCb = folded<4768, 6537, 1606, 3330, 8262, -1779, -1084, -2210>;

struct Member {
    const char* name;
    const char* checks;  // letters of checkOrderFaults
    Form group;          // of whole groups of 16 pixels (4:1:1: of 4)
    Form tail;
    double distance;  // largest distance to the real-valued equations, in codes, rounded up
};

const Member kMembers[] = {
    {"pxliYCbCr420ToRGB_8u_P3C3R", "pse", kQ12, kB, 0.75},
    {"pxliYCbCr420ToRGB_8u_P2C3R", "ps", kCbCr, kCbCr, 0.79},
    {"pxliYCbCr420ToRGB_8u_P2C4R", "ps", kCbCr, kCbCr, 0.79},
    {"pxliYCbCr420ToBGR_8u_P3C3R", "pse", kQ12, kB, 0.75},
    {"pxliYCbCr420ToBGR_8u_P3C4R", "pse", kCbCr, kCbCr, 0.79},
    {"pxliYCbCr420ToBGR_8u_P2C3R", "ps", kCbCr, kCbCr, 0.79},
    {"pxliYCbCr420ToBGR_8u_P2C4R", "ps", kCbCr, kCbCr, 0.79},
    {"pxliYCbCr420ToBGR_709CSC_8u_P3C3R", "pse", k709, kC709, 0.95},
    {"pxliYCbCr420ToBGR_709HDTV_8u_P3C4R", "pse", kH, kH, 0.68},
    {"pxliYCrCb420ToRGB_8u_P2C3R", "ps", kCrCb, kCrCb, 1.22},
    {"pxliYCrCb420ToRGB_8u_P2C4R", "sp", kCrCb, kCrCb, 1.22},
    {"pxliYCrCb420ToRGB_8u_P3C4R", "pse", kQ13, kB, 0.66},
    {"pxliYCrCb420ToBGR_8u_P2C3R", "ps", kCrCb, kCrCb, 1.22},
    {"pxliYCrCb420ToBGR_8u_P2C4R", "sp", kCrCb, kCrCb, 1.22},
    {"pxliYCrCb420ToBGR_Filter_8u_P3C4R", "pse", filter, filter, 1.04},
    {"pxliYCbCr411ToBGR_8u_P3C3R", "pes", kQ12, c411, 0.75},
    {"pxliYCbCr411ToBGR_8u_P3C4R", "pes", kQ12, c411, 0.75},
};
void PrintTo(const Member& member, std::ostream* out) { *out << member.name; }

class Ycbcr420Decode : public testing::TestWithParam<Member> {
protected:
    const Member& member() const { return GetParam(); }
    const catalog::Export& function() const { return *catalog::find(member().name); }
    bool is411() const { return function().source.sampling == 411; }
    bool filters() const { return member().group == filter; }
    int group() const { return is411() ? 4 : 16; }

    // Cb = 1, Cr = 2
    Pxl8u& chroma(Call& call, int which, int x, int y) const {
        return call.source.at<Pxl8u>(function().source.space == "YCrCb" ? 3 - which : which, x, y);
    }
    int chromaOf(Call& call, int which, int x, int y) const {
        const int own = chroma(call, which, x, y);
        if (!filters() || x % 2 == 0 || x + 1 >= call.arguments.size.width / 2 * 2) return own;
        return (own + chroma(call, which, x + 1, y) + 1) >> 1;
    }
    Pixel out(Call& call, int x, int y) const {
        Pixel p;
        for (int c = 0; c < 3; ++c) {
            p[static_cast<std::size_t>(c)] =
                call.destination.at<Pxl8u>(function().destination.space == "BGR" ? 2 - c : c, x, y);
        }
        return p;
    }

    void compare(Call& call, Target target) const {
        constexpr int kOld = 0xA5;
        call.destination.fill(std::array<std::uint8_t, 1>{kOld});
        const auto [width, height] = call.arguments.size;
        const int wholeWidth = is411() ? width : width / 2 * 2, wholeHeight = is411() ? height : height / 2 * 2;
        ASSERT_EQ(call.run(), wholeWidth < width || wholeHeight < height ? pxlStatusOddSize : pxlStatusOk);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const bool whole = x < wholeWidth && y < wholeHeight;
                Pixel expected = {kOld, kOld, kOld};
                if (whole) {
                    const Form form = x < width / group() * group() ? member().group : member().tail;
                    expected = form(call.source.at<Pxl8u>(0, x, y), chromaOf(call, 1, x, y), chromaOf(call, 2, x, y));
                }
                ASSERT_EQ(out(call, x, y), expected)
                    << nameOf(target) << " pixel " << x << ", " << y << " of " << call.describe();
                if (function().destination.layout != "C4") continue;
                ASSERT_EQ(call.destination.at<Pxl8u>(3, x, y), whole ? call.arguments.alpha : kOld)
                    << "alpha of " << x << ", " << y << " of " << call.describe();
            }
        }
    }
};

TEST_P(Ycbcr420Decode, everyPixelOfEveryWidth) {
    Random random(420);
    std::vector<int> widths = {79, 80, 81, 95, 96, 97, 127, 128, 129, 130};
    for (int width = function().minimumWidth; width <= 72; ++width) widths.push_back(width);
    for (const int width : widths) {
        for (int height = 1; height <= (width < 6 ? 5 : 3); ++height) {
            Call call(function(), {width, height}, {}, {Placement::Where::againstEnd, 3}, random);
            onEachTarget([&](Target target) { compare(call, target); });
            if (HasFatalFailure()) return;
        }
    }
}

// All luma codes with all Cb codes and with all Cr codes, every 51st pair of these: against the model and against the
// equations of the standard in double precision.
TEST_P(Ycbcr420Decode, everyColour) {
    const bool bt709 = std::string_view(member().name).find("709") != std::string_view::npos;
    const bool unitGain = member().group == kH;
    const double kr = bt709 ? 0.2126 : 0.299, kb = bt709 ? 0.0722 : 0.114, kg = 1 - kr - kb;
    const double black = unitGain ? 0 : 16, gain = unitGain ? 1 : 255 / 219.;
    const auto equations = [&](int y, int cb, int cr) -> std::array<double, 3> {
        const double luma = (y - black) * gain, b = (cb - 128) * gain * 219 / 224 * (2 - 2 * kb),
                     r = (cr - 128) * gain * 219 / 224 * (2 - 2 * kr);
        return {std::clamp(luma + r, 0., 255.), std::clamp(luma - (kr * r + kb * b) / kg, 0., 255.),
                std::clamp(luma + b, 0., 255.)};
    };
    double worst = 0;
    for (const bool tail : {false, true}) {
        if (tail && member().tail == member().group) break;
        // rows of whole groups, or of nothing but a tail (4:1:1: three pixels after a group)
        const int first = tail && is411() ? 4 : 0, width = !tail ? 512 : first + (is411() ? 3 : 14);
        const int rows = is411() ? 1 : 2, block = !is411() ? 2 : tail ? 3 : 4;  // of pixels that share chroma
        const int blocksForChroma = (255 + block * rows) / (block * rows), perRow = (width - first) / block;
        const int blocks = 6 * blocksForChroma, height = (blocks + perRow - 1) / perRow * rows;
        Random random(6);
        Call call(function(), {width, height}, {}, {}, random);
        for (int cb = 0; cb < 256; ++cb) {
            for (int n = 0; n < perRow * height / rows; ++n) {
                const int x = first + n % perRow * block, y = n / perRow * rows;
                chroma(call, 1, x, y) = static_cast<Pxl8u>(cb);
                chroma(call, 2, x, y) = static_cast<Pxl8u>(cb + n / blocksForChroma * 51);
                for (int i = 0; i < block * rows; ++i) {
                    call.source.at<Pxl8u>(0, x + i % block, y + i / block) =
                        static_cast<Pxl8u>(n % blocksForChroma * block * rows + i);
                }
            }
            ASSERT_EQ(call.run(), pxlStatusOk);
            for (int y = 0; y < height; ++y) {
                for (int x = first; x < width; ++x) {
                    const int luma = call.source.at<Pxl8u>(0, x, y), b = chromaOf(call, 1, x, y),
                              r = chromaOf(call, 2, x, y);
                    const Pixel got = out(call, x, y);
                    if (got != (tail ? member().tail : member().group)(luma, b, r))
                        FAIL() << testing::PrintToString(got) << " from " << luma << ", " << b << ", " << r;
                    const auto real = equations(luma, b, r);
                    for (std::size_t c = 0; c < 3; ++c) worst = std::max(worst, std::abs(got[c] - real[c]));
                }
            }
        }
    }
    EXPECT_LE(worst, member().distance);
}

// Where the two forms of a row are not both given by the formulas of a standard, any colour of all 2^24 may differ by
// one code and no more.
TEST(Ycbcr420DecodeForms, groupsWithinOneCodeOfTheTail) {
    for (const auto& [group, tail] : {std::pair{kQ13, kB}, {k709, kC709}}) {
        for (int n = 0; n < 1 << 24; ++n) {
            const Pixel a = group(n >> 16, n >> 8 & 255, n & 255), b = tail(n >> 16, n >> 8 & 255, n & 255);
            for (std::size_t c = 0; c < 3; ++c) {
                if (std::abs(a[c] - b[c]) > 1) FAIL() << n;
            }
        }
    }
}

TEST_P(Ycbcr420Decode, orderOfChecks) { EXPECT_EQ(checkOrderFaults(function(), member().checks), ""); }

INSTANTIATE_TEST_SUITE_P(Members, Ycbcr420Decode, testing::ValuesIn(kMembers),
                         [](const auto& member) { return std::string(member.param.name); });

}  // namespace
}  // namespace pxl::test
