// YCbCr 4:2:2 to RGB: every pixel of every member against plain-integer models written from the formulas.

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
int wrap(int v) { return static_cast<std::int16_t>(v); }

template <int cY, int cR, int cGb, int cGr, int cB, int kR, int kG, int kB>
Pixel sums(int y, int cb, int cr) {
    return {byte((cY * y + cR * cr + kR) >> 16), byte((cY * y + cGb * cb + cGr * cr + kG) >> 16),
            byte((cY * y + cB * cb + kB) >> 16)};
}
Pixel exactA(int y, int cb, int cr) {
    return sums<76282, 104593, -25689, -53279, 132184, -1187744, -1187744, -1187744>(y, cb - 128, cr - 128);
}
Pixel exactB(int y, int cb, int cr) {
    return sums<76284, 104595, -25690, -53281, 132186, -1187776, -1187776, -1187776>(y, cb - 128, cr - 128);
}
constexpr Form kUnsigned = sums<76284, 104595, -25690, -53281, 132186, -14608761, 8887730, -18140365>;
Pixel hdtv(int y, int cb, int cr) {
    return sums<65536, 100925, -11993, -30081, 119013, 32768, 32768, 32768>(y, cb - 128, cr - 128);
}

int high(int x, int c) { return (x * c) >> 16; }

// luma is 1/2^shift of a code
template <int cR, int cGb, int cGr, int cB, int shift>
Pixel centred(int luma, int cb, int cr) {
    const int u = cb * 128 - 16384, v = cr * 128 - 16384;
    const auto last = [](int sum) { return byte(lane(lane(sum) + (1 << shift) / 2) >> shift); };
    return {last(luma + high(v, cR)), last(luma - lane(high(u, cGb) + high(v, cGr))), last(luma + high(u, cB))};
}
Pixel q12(int y, int cb, int cr) { return centred<6537, 1605, 3330, 8263, 3>(high(y * 128 - 2048, 4769), cb, cr); }
Pixel q13(int y, int cb, int cr) { return centred<13074, 3211, 6660, 16523, 4>(high(y * 128 - 2048, 9535), cb, cr); }
Pixel hdtvGroup(int y, int cb, int cr) { return centred<12616, 1499, 3760, 14877, 4>(y * 16, cb, cr); }

template <int cY, int cR, int cGb, int cGr, int cB, int oG>
Pixel folded(int y, int cb, int cr) {
    const int luma = high(y * 128, cY);
    return {byte(wrap(luma + high(cr * 128, cR) - 1783) >> 3),
            byte(wrap(luma - wrap(high(cb * 128, cGb) + high(cr * 128, cGr) + oG)) >> 3),
            byte(wrap(luma + high(cb * 128, cB) - 2214) >> 3)};
}
constexpr Form kPacked = folded<4768, 6537, 1606, 3330, 8262, -1085>;
constexpr Form kToPlanes = folded<4768, 6537, 1606, 3330, 8262, -1084>;
constexpr Form kToBgrAlpha = folded<4767, 6537, 1605, 3330, 8261, -1084>;

// What the last pixel of an odd width takes for the chroma sample that it lacks.
enum class Odd { byWidth, byPairs, notWritten };

struct Member {
    const char* name;
    const char* checks;  // letters of checkOrderFaults
    int groupSize;
    Form group, tail;
    Odd odd;
    double distance;  // largest distance to the real-valued equations, in codes, rounded up
};

const Member kMembers[] = {
    {"pxliYCbCr422ToRGB_8u_C2C3R", "ps", 8, q12, exactA, Odd::byPairs, 0.75},
    {"pxliYCbCr422ToRGB_8u_C2C4R", "ps", 16, kPacked, exactB, Odd::byWidth, 1.15},
    {"pxliYCbCr422ToRGB_8u_C2P3R", "pse", 16, kToPlanes, kUnsigned, Odd::byWidth, 1.21},
    {"pxliYCbCr422ToRGB_8u_P3C3R", "pes", 16, q12, kUnsigned, Odd::notWritten, 1.2},
    {"pxliYCbCr422ToBGR_8u_C2C3R", "ps", 8, q12, exactA, Odd::byPairs, 0.75},
    {"pxliYCbCr422ToBGR_8u_C2C4R", "ps", 16, kToBgrAlpha, kUnsigned, Odd::byWidth, 1.22},
    {"pxliYCbCr422ToBGR_8u_P3C3R", "pes", 16, q12, kUnsigned, Odd::notWritten, 1.2},
    {"pxliYCrCb422ToRGB_8u_C2C3R", "ps", 16, kPacked, exactB, Odd::byWidth, 1.15},
    {"pxliYCrCb422ToRGB_8u_C2C4R", "ps", 16, kPacked, exactB, Odd::byWidth, 1.15},
    {"pxliYCrCb422ToRGB_8u_C2P3R", "pse", 16, kToPlanes, kUnsigned, Odd::byWidth, 1.21},
    {"pxliYCrCb422ToBGR_8u_C2C3R", "ps", 16, kPacked, exactB, Odd::byWidth, 1.15},
    {"pxliYCrCb422ToBGR_8u_C2C4R", "ps", 16, kPacked, exactB, Odd::byWidth, 1.15},
    {"pxliCbYCr422ToRGB_8u_C2C3R", "ps", 8, q12, exactA, Odd::byPairs, 0.75},
    {"pxliCbYCr422ToBGR_8u_C2C4R", "ps", 16, q13, exactA, Odd::byWidth, 0.75},
    {"pxliCbYCr422ToBGR_709HDTV_8u_C2C3R", "ps", 16, hdtvGroup, hdtv, Odd::byWidth, 0.76},
    {"pxliCbYCr422ToBGR_709HDTV_8u_C2C4R", "ps", 16, hdtvGroup, hdtv, Odd::byWidth, 0.76},
};
void PrintTo(const Member& member, std::ostream* out) { *out << member.name; }

class Ycbcr422Decode : public testing::TestWithParam<Member> {
protected:
    const Member& member() const { return GetParam(); }
    const catalog::Export& function() const { return function_; }
    const catalog::Export& function_ = *catalog::find(GetParam().name);
    const bool planar_ = function_.source.layout == "P3", lumaFirst_ = function_.source.space.front() == 'Y';
    const int presentChroma_ = function_.source.space == "YCrCb" ? 2 : 1;  // of the last pixel of an odd width
    const bool bgr_ = function_.destination.space == "BGR";
    const bool lastIsBgr_ = function_.name == "pxliYCbCr422ToRGB_8u_C2C3R";

    Pxl8u& luma(Call& call, int x, int y) const { return call.source.at<Pxl8u>(planar_ || lumaFirst_ ? 0 : 1, x, y); }
    // Cb = 1, Cr = 2, of the pair of pixel x; may lie in front of the row
    Pxl8u& chroma(Call& call, int which, int x, int y) const {
        if (planar_) return call.source.at<Pxl8u>(which, x, y);
        return (
            &call.source.at<Pxl8u>(0, 0, y))[(x & ~1) * 2 + (which == presentChroma_ ? 0 : 2) + (lumaFirst_ ? 1 : 0)];
    }
    Pixel expected(Call& call, int x, int y) const {
        const int width = call.arguments.size.width;
        const Form form = x < width / member().groupSize * member().groupSize ? member().group : member().tail;
        if (x % 2 == 1 || x + 1 < width) {
            return form(luma(call, x, y), chroma(call, 1, x, y), chroma(call, 2, x, y));
        }
        const int present = presentChroma_;
        const bool alone = member().odd == Odd::byPairs ? width / 2 == 1 : width == 1;
        int samples[3] = {0, chroma(call, present, x, y), chroma(call, present, x, y)};
        if (!alone) samples[3 - present] = chroma(call, 3 - present, x - 2, y);
        return form(luma(call, x, y), samples[1], samples[2]);
    }
    Pixel out(Call& call, int x, int y) const {
        const bool swapped = lastIsBgr_ && x % 2 == 0 && x + 1 == call.arguments.size.width;
        Pixel p;
        for (int c = 0; c < 3; ++c) {
            const int channel = swapped || bgr_ ? 2 - c : c;
            p[static_cast<std::size_t>(c)] = call.destination.at<Pxl8u>(channel, x, y);
        }
        return p;
    }

    void compare(Call& call, Target target) const {
        constexpr int kOld = 0xA5;
        call.destination.fill(std::array<std::uint8_t, 1>{kOld});
        const auto [width, height] = call.arguments.size;
        ASSERT_EQ(call.run(), pxlStatusOk);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const bool written = member().odd != Odd::notWritten || x < width / 2 * 2;
                ASSERT_EQ(out(call, x, y), written ? expected(call, x, y) : (Pixel{kOld, kOld, kOld}))
                    << nameOf(target) << " pixel " << x << ", " << y << " of " << call.describe();
                if (function().destination.layout == "C4") {
                    ASSERT_EQ(call.destination.at<Pxl8u>(3, x, y), call.arguments.alpha)
                        << "alpha of " << x << ", " << y << " of " << call.describe();
                }
            }
        }
    }
};

TEST_P(Ycbcr422Decode, everyPixelOfEveryWidth) {
    Random random(422);
    std::vector<int> widths = {47, 48, 49, 63, 64, 65, 79, 80, 81, 95, 96, 97, 127, 128, 129, 143, 144, 145};
    for (int width = function().minimumWidth; width <= 40; ++width) widths.push_back(width);
    for (const int width : widths) {
        const int padding = width % 3;
        Call call(function(), {width, 3}, {Placement::Where::againstStart, padding}, {Placement::Where::againstEnd, 3},
                  random);
        onEachTarget([&](Target target) { compare(call, target); });
        if (HasFatalFailure()) return;
    }
}

// All luma codes with all Cb codes and with all Cr codes, every 51st pair of these: against the models, in groups and
// in tails, and against the equations of the standard in double precision.
TEST_P(Ycbcr422Decode, everyColour) {
    const bool unitGain = member().tail == hdtv;
    const double kr = unitGain ? 0.2126 : 0.299, kb = unitGain ? 0.0722 : 0.114, kg = 1 - kr - kb;
    const double black = unitGain ? 0 : 16, gain = unitGain ? 1 : 255 / 219.;
    const auto equations = [&](int y, int cb, int cr) -> std::array<double, 3> {
        const double l = (y - black) * gain, b = (cb - 128) * gain * 219 / 224 * (2 - 2 * kb),
                     r = (cr - 128) * gain * 219 / 224 * (2 - 2 * kr);
        return {std::clamp(l + r, 0., 255.), std::clamp(l - (kr * r + kb * b) / kg, 0., 255.),
                std::clamp(l + b, 0., 255.)};
    };
    double worst = 0;
    for (const int width : {256, 6}) {  // nothing but groups, nothing but a tail
        const int rows = 6 * 256 / width + 1;
        Random random(6);
        Call call(function(), {width, rows}, {}, {}, random);
        for (int cb = 0; cb < 256; ++cb) {
            for (int y = 0; y < rows; ++y) {
                for (int x = 0; x < width; ++x) {
                    const int n = y * width + x;
                    luma(call, x, y) = static_cast<Pxl8u>(n);
                    if (x % 2 != 0) continue;
                    chroma(call, 1, x, y) = static_cast<Pxl8u>(cb);
                    chroma(call, 2, x, y) = static_cast<Pxl8u>(cb + n / 256 * 51);
                }
            }
            ASSERT_EQ(call.run(), pxlStatusOk);
            for (int y = 0; y < rows; ++y) {
                for (int x = 0; x < width; ++x) {
                    const int l = luma(call, x, y), b = chroma(call, 1, x, y), r = chroma(call, 2, x, y);
                    const Pixel got = out(call, x, y);
                    if (got != expected(call, x, y)) FAIL() << testing::PrintToString(got) << l << "," << b << "," << r;
                    const auto real = equations(l, b, r);
                    for (std::size_t c = 0; c < 3; ++c) worst = std::max(worst, std::abs(got[c] - real[c]));
                }
            }
        }
    }
    EXPECT_LE(worst, member().distance);
}

TEST_P(Ycbcr422Decode, orderOfChecks) { EXPECT_EQ(checkOrderFaults(function(), member().checks), ""); }

INSTANTIATE_TEST_SUITE_P(Members, Ycbcr422Decode, testing::ValuesIn(kMembers),
                         [](const auto& member) { return std::string(member.param.name); });

// The groups of the forms whose lanes no standard or formula fixes, in all 2^24 colours.
template <Form group, Form tail>
int largestDifference() {
    int largest = 0;
    for (int n = 0; n < 1 << 24; ++n) {
        const Pixel a = group(n >> 16, n >> 8 & 255, n & 255), b = tail(n >> 16, n >> 8 & 255, n & 255);
        for (std::size_t c = 0; c < 3; ++c) largest = std::max(largest, std::abs(a[c] - b[c]));
    }
    return largest;
}
TEST(Ycbcr422DecodeForms, groupsWithinOneCodeOfTheTail) {
    EXPECT_EQ((largestDifference<q13, exactA>()), 1);
    EXPECT_EQ((largestDifference<kToPlanes, kUnsigned>()), 1);
    EXPECT_EQ((largestDifference<kToBgrAlpha, kUnsigned>()), 1);
}

}  // namespace
}  // namespace pxl::test
