// YCbCr between samplings and layouts: every byte of every member against models by sample, rule by rule.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <climits>

#include "repack/ycbcr_view.h"
#include "support/call.h"
#include "support/targets.h"

namespace pxl::test {
namespace {

constexpr Pxl8u kOld = 0xA5;

// Which source sample a destination sample is, by the two samplings.
struct Sample {
    int j, k;
};
Sample sourceOf(int from, int to, int j, int k) {
    if (from == 422 && to == 420) return {j, 2 * k};
    if (from == 422 && to == 411) return {2 * j, k};
    if (from == 420 && to == 422) return {j, k / 2};
    if (from == 411 && to == 422) return {j / 2, k};
    if (from == 411 && to == 420) return {j / 2, 2 * k + j % 2};
    if (from == 420 && to == 411) return {2 * j + k % 2, k / 2};
    return {j, k};
}

class Repack : public testing::TestWithParam<std::string_view> {
protected:
    static const catalog::Export& function() { return *catalog::find(GetParam()); }
    static bool has(int sampling) {
        return function().source.sampling == sampling || function().destination.sampling == sampling;
    }

    // Samples in the region that was cut are the model's, all others as they were.
    static void compare(Call& call, Target target) {
        call.destination.fill(std::array<std::uint8_t, 1>{kOld});
        ASSERT_EQ(call.run(), pxlStatusOk);
        const auto [width, height] = call.arguments.size;
        const int wholeWidth = has(411) ? width / 4 * 4 : width / 2 * 2,
                  wholeHeight = has(420) ? height / 2 * 2 : height;
        const YcbcrView from(function().source, call.source.planes());
        const YcbcrView to(function().destination, call.destination.planes());
        const auto where = [&] { return std::string(nameOf(target)) + " " + call.describe(); };
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const int expected = x < wholeWidth && y < wholeHeight ? from.luma(x, y) : kOld;
                if (to.luma(x, y) != expected) FAIL() << "luma " << x << ", " << y << " of " << where();
            }
        }
        const PxlSize all = to.chromaSize(width, height), whole = to.chromaSize(wholeWidth, wholeHeight);
        for (int k = 0; k < all.height; ++k) {
            for (int j = 0; j < all.width; ++j) {
                for (const int channel : {kCb, kCr}) {
                    const Sample source = sourceOf(function().source.sampling, function().destination.sampling, j, k);
                    const bool isWhole = j < whole.width && k < whole.height;
                    const int expected = isWhole ? from.chroma(channel, source.j, source.k) : kOld;
                    if (to.chroma(channel, j, k) != expected)
                        FAIL() << "chroma " << channel << " at " << j << ", " << k << " of " << where();
                }
            }
        }
    }
};

TEST_P(Repack, everySample) {
    Random random(422);
    std::vector<int> widths = {95, 96, 127, 128, 130, 159, 160, 188, 190, 192, 255, 256, 258, 259, 318, 510, 512, 516};
    for (int width = function().minimumWidth; width <= 72; ++width) widths.push_back(width);
    for (const int width : widths) {
        for (int height = function().minimumHeight; height <= (width < 8 ? 7 : 4); ++height) {
            const Placement padded = {Placement::Where::againstEnd, 3}, dense = {Placement::Where::againstEnd, 0};
            Call call(function(), {width, height}, padded, height % 3 == 0 ? padded : dense, random);
            onEachTarget([&](Target target) { compare(call, target); });
            if (HasFatalFailure()) return;
        }
    }
}

TEST_P(Repack, heightsBelowOne) {
    if (!function().anyHeight) return;
    Random random(1);
    Call call(function(), {16, 4}, {}, {}, random);
    const Image::Bytes before = call.destination.bytes();
    for (const int height : {0, -1, -2, -4, INT_MIN}) {
        call.arguments.size.height = height;
        EXPECT_EQ(call.run(), pxlStatusOk) << height;
        EXPECT_EQ(call.destination.bytes(), before) << height;
    }
}

constexpr std::string_view kSizeInTwoSteps = "pxliYCbCr420ToYCrCb420_8u_P2P3R";

TEST_P(Repack, orderOfChecks) {
    if (GetParam() != kSizeInTwoSteps) {
        EXPECT_EQ(checkOrderFaults(function(), "pes"), "");
    } else {
        EXPECT_EQ(checkOrderFaults(function(), "ps"), "");
        EXPECT_EQ(checkOrderFaults(function(), "pe"), "");
    }
}

std::vector<std::string_view> members(std::string_view family) {
    std::vector<std::string_view> names;
    for (const catalog::Export& function : catalog::all()) {
        if (function.family == family) names.push_back(function.name);
    }
    return names;
}

INSTANTIATE_TEST_SUITE_P(Members, Repack, testing::ValuesIn(members("Re-packing")),
                         [](const auto& name) { return std::string(name.param); });

// The first look at the size is for what is below 1, the second, behind the plane pointers, for what is below 2.
TEST(RepackChecks, sizeInTwoSteps) {
    for (const char* name : {"pxliYCbCr420ToYCrCb420_8u_P2P3R", "pxliYCbCr420ToYCrCb420_Filter_8u_P2P3R"}) {
        const catalog::Export& function = *catalog::find(name);
        Random random(1);
        Call call(function, {16, 4}, {}, {}, random);
        for (const Mistake& entry : mistakes(Fault::entry, function)) {
            for (const Mistake& size : mistakes(Fault::size, function)) {
                const bool isOne = size.what.ends_with(" 1");
                EXPECT_EQ(faultsWith(call, {&entry, &size}, isOne ? pxlStatusNullPointer : pxlStatusBadSize), "");
            }
        }
    }
}

// The functions that look at the width only, as their documentation lists them.
TEST(RepackChecks, heightsThatAreNotLookedAt) {
    const std::vector<std::string_view> expected = {
        "pxliYCbCr422ToYCrCb422_8u_C2R",   "pxliYCbCr422ToYCrCb422_8u_P3C2R", "pxliYCbCr422ToYCbCr411_8u_C2P2R",
        "pxliYCbCr422ToYCbCr411_8u_P3R",   "pxliYCbCr422ToYCbCr411_8u_P3P2R", "pxliYCrCb422ToYCbCr411_8u_C2P3R",
        "pxliCbYCr422ToYCbCr411_8u_C2P3R", "pxliYCbCr411ToYCbCr422_8u_P3R",   "pxliYCbCr411ToYCbCr422_8u_P3C2R",
        "pxliYCbCr411ToYCbCr422_8u_P2P3R", "pxliYCbCr411ToYCbCr422_8u_P2C2R", "pxliYCbCr411ToYCrCb422_8u_P3R",
        "pxliYCbCr411ToYCrCb422_8u_P3C2R", "pxliYCbCr411_8u_P2P3R",           "pxliYCbCr411_8u_P3P2R"};
    std::vector<std::string_view> found;
    for (const std::string_view name : members("Re-packing")) {
        Random random(1);
        Call call(*catalog::find(name), {8, 4}, {}, {}, random);
        call.arguments.size.height = 0;
        if (call.run() == pxlStatusOk) found.push_back(name);
    }
    EXPECT_EQ(found, expected);
}

// What keeps every sample comes back as it was: other layouts, and 4:1:1 as 4:2:0, which has as many chroma samples.
TEST(RepackThereAndBack, keepsEverySample) {
    for (const int width : {4, 12, 64, 68, 132}) {
        constexpr int kHeight = 6;
        const int count = width * kHeight;
        Random random(11);
        std::vector<Pxl8u> frame(static_cast<std::size_t>(2 * count)), between(frame.size()), back(frame.size());
        for (Pxl8u& sample : frame) sample = static_cast<Pxl8u>(random.next());
        const auto same = [&](int samples) { return std::equal(frame.begin(), frame.begin() + samples, back.begin()); };
        // luma, then chroma samples of so many in a row and a plane
        const auto planesOf = [&](std::vector<Pxl8u>& samples, int perPlane) {
            return std::array{samples.data(), samples.data() + count, samples.data() + count + perPlane};
        };
        const PxlSize size = {width, kHeight};

        auto planes = planesOf(between, count / 2);
        int steps[3] = {width, width / 2, width / 2};
        ASSERT_EQ(pxliYCbCr422_8u_C2P3R(frame.data(), 2 * width, planes.data(), steps, size), pxlStatusOk);
        const Pxl8u* read[3] = {planes[0], planes[1], planes[2]};
        ASSERT_EQ(pxliYCbCr422_8u_P3C2R(read, steps, back.data(), 2 * width, size), pxlStatusOk);
        EXPECT_TRUE(same(2 * count)) << "4:2:2 of width " << width;

        auto halves = planesOf(between, count / 4), again = planesOf(back, count / 4);
        ASSERT_EQ(pxliYCbCr420_8u_P2P3R(frame.data(), width, frame.data() + count, width, halves.data(), steps, size),
                  pxlStatusOk);
        const Pxl8u* readHalves[3] = {halves[0], halves[1], halves[2]};
        ASSERT_EQ(pxliYCbCr420_8u_P3P2R(readHalves, steps, again[0], width, again[1], width, size), pxlStatusOk);
        EXPECT_TRUE(same(count * 3 / 2)) << "4:2:0 of width " << width;

        int quarters[3] = {width, width / 4, width / 4};
        const auto from = planesOf(frame, count / 4);
        const Pxl8u* read411[3] = {from[0], from[1], from[2]};
        ASSERT_EQ(pxliYCbCr411ToYCbCr420_8u_P3R(read411, quarters, halves.data(), steps, size), pxlStatusOk);
        ASSERT_EQ(pxliYCbCr420ToYCbCr411_8u_P3P2R(readHalves, steps, again[0], width, again[1], width / 2, size),
                  pxlStatusOk);
        EXPECT_TRUE(same(count));
        for (int i = 0; i < count / 4; ++i) {
            ASSERT_EQ(back[static_cast<std::size_t>(count + 2 * i)], from[1][i]) << "Cb " << i << " of " << width;
            ASSERT_EQ(back[static_cast<std::size_t>(count + 2 * i + 1)], from[2][i]) << "Cr " << i << " of " << width;
        }
    }
}

}  // namespace
}  // namespace pxl::test
