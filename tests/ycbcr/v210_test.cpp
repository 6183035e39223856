// v210 to gray and RGB: every pixel against a model that takes single samples out of single words.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "support/call.h"
#include "support/targets.h"

namespace pxl::test {
namespace {

constexpr const char* kGray = "pxliYUV422v210ToGray_709HDTV_32u16u_C3C1";
constexpr const char* kRgb = "pxliYUV422v210ToRGB_709HDTV_32u16u_C3";
constexpr const char* kBgr = "pxliYUV422v210ToBGR_709HDTV_32u16u_C3";

struct Place {
    int word, bit;
};
constexpr Place kY[] = {{0, 10}, {1, 0}, {1, 20}, {2, 10}, {3, 0}, {3, 20}};
constexpr Place kCb[] = {{0, 0}, {1, 10}, {2, 20}}, kCr[] = {{0, 20}, {2, 0}, {3, 10}};

int sampleAt(const Pxl32u* row, int x, Place p) { return static_cast<int>(row[x / 6 * 4 + p.word] >> p.bit & 1023); }

// Single precision, operation by operation; volatile so that no wider register or fused operation slips in.
int colour(std::string_view name, int y, int cb, int cr) {
    const auto times = [](float factor, int chroma) {
        volatile float product = factor * static_cast<float>(chroma - 512);
        return product;
    };
    const auto code = [](float sum, int top) { return std::clamp(static_cast<int>(std::nearbyint(sum)), 0, top); };
    const auto luma = static_cast<float>(y);
    volatile float withoutCr = luma - times(0.459F, cr);
    const int r = code(luma + times(1.54F, cr), 31), b = code(luma + times(1.816F, cb), 31),
              g = code(withoutCr - times(0.183F, cb), 63);
    return name == kRgb ? b << 11 | g << 5 | r : r << 11 | g << 5 | b;
}

class V210 : public testing::TestWithParam<const char*> {
protected:
    const catalog::Export& function_ = *catalog::find(GetParam());
    int expected(const Pxl32u* row, int x) const {
        const int y = sampleAt(row, x, kY[x % 6]);
        if (function_.name == kGray) return y;
        return colour(function_.name, y, sampleAt(row, x, kCb[x % 6 / 2]), sampleAt(row, x, kCr[x % 6 / 2]));
    }
    void compare(Call& call) const {
        const auto [width, height] = call.arguments.size;
        onEachTarget([&, width = width, height = height](Target target) {
            ASSERT_EQ(call.run(), pxlStatusOk);
            for (int y = 0; y < height; ++y) {
                for (int x = 0; x < width; ++x) {
                    ASSERT_EQ(call.destination.at<Pxl16u>(0, x, y), expected(&call.source.at<Pxl32u>(0, 0, y), x))
                        << nameOf(target) << " pixel " << x << ", " << y << " of " << call.describe();
                }
            }
        });
    }
};

// The last word that a row needs is the last one before an unreadable page.
TEST_P(V210, everyPixelOfEveryWidth) {
    Random random(210);
    for (int width = 1; width <= 60; ++width) {
        Call call(function_, {width, 3}, {Placement::Where::againstEnd, width % 3}, {Placement::Where::againstEnd, 2},
                  random);
        compare(call);
        if (HasFatalFailure()) return;
    }
}

// Random words have few colours that do not saturate: here luma is such that R, G or B falls between 0 and its top for
// every Cb and Cr, ties included.
TEST_P(V210, coloursWithinTheRange) {
    Random random(565);
    Call call(function_, {48, 1024}, {}, {}, random);
    for (int cb = 0; cb < 1024; ++cb) {
        Pxl32u* row = &call.source.at<Pxl32u>(0, 0, cb);
        for (int i = 0; i < 32; ++i) row[i] = static_cast<Pxl32u>(random.next()) & 0xC0000000u;
        for (int x = 0; x < 48; ++x) {
            const int cr = (cb * 7 + x / 2 * 41) % 1024;
            const double base = x % 3 == 0   ? -1.54 * (cr - 512)
                                : x % 3 == 1 ? 0.459 * (cr - 512) + 0.183 * (cb - 512)
                                             : -1.816 * (cb - 512);
            const int luma = std::clamp(static_cast<int>(base) + random.below(x % 3 == 1 ? 66 : 34) - 1, 0, 1023);
            const auto put = [&](Place p, int v) { row[x / 6 * 4 + p.word] |= static_cast<Pxl32u>(v) << p.bit; };
            put(kY[x % 6], luma);
            if (x % 2 == 0) put(kCb[x % 6 / 2], cb), put(kCr[x % 6 / 2], cr);
        }
    }
    compare(call);
}

TEST_P(V210, orderOfChecks) { EXPECT_EQ(checkOrderFaults(function_, "pst"), ""); }

INSTANTIATE_TEST_SUITE_P(Members, V210, testing::Values(kGray, kRgb, kBgr),
                         [](const auto& member) { return std::string(member.param); });

TEST(V210Words, valuesAndSteps) {
    const auto words = [](unsigned luma) {
        return std::vector<Pxl32u>{512 | luma << 10 | 512u << 20, luma | 512 << 10 | luma << 20,
                                   512 | luma << 10 | 512u << 20, luma | 512 << 10 | luma << 20, 0xFFFFFFFFu};
    };
    Pxl16u out[8] = {};
    EXPECT_EQ(pxliYUV422v210ToRGB_709HDTV_32u16u_C3(words(20).data(), 5, out, 4, {3, 1}), pxlStatusOk);
    EXPECT_EQ(out[2], 20 << 11 | 20 << 5 | 20);
    EXPECT_EQ(pxliYUV422v210ToBGR_709HDTV_32u16u_C3(words(64).data(), 5, out, 4, {6, 1}), pxlStatusOk);
    EXPECT_EQ(out[5], 31 << 11 | 63 << 5 | 31);
    // the second row starts four words and four elements on
    EXPECT_EQ(pxliYUV422v210ToGray_709HDTV_32u16u_C3C1(words(64).data(), 4, out, 4, {1, 2}), pxlStatusOk);
    EXPECT_EQ(out[0], 64);
    EXPECT_EQ(out[4], 1023);
    EXPECT_EQ(pxliYUV422v210ToGray_709HDTV_32u16u_C3C1(words(64).data(), 0, out, 4, {1, 2}), pxlStatusBadSize);
}

}  // namespace
}  // namespace pxl::test
