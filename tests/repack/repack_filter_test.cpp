// YCbCr between samplings with weighted chroma: every sample of every member against its formula in plain integers.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "repack/ycbcr_view.h"
#include "support/call.h"
#include "support/targets.h"

namespace pxl::test {
namespace {

constexpr Pxl8u kOld = 0xA5;

// One channel of the source, samples (j, k), and the size of the region after the cut.
struct Source {
    const YcbcrView& image;
    int channel;
    PxlSize size;
    int operator()(int j, int k) const { return image.chroma(channel, j, k); }
};
using Model = int (*)(const Source& s, int j, int k);

int interpolateFields(const Source& s, int j, int y) {
    const int field = y % 2, last = s.size.height / 2 - 2 + field, row = y / 4 * 2 + field;
    const int a = s(j, row), b = s(j, std::min(row + 2, last));
    constexpr int kWeights[4][2] = {{5, 3}, {7, 1}, {1, 7}, {3, 5}};
    return (kWeights[y % 4][0] * a + kWeights[y % 4][1] * b + 4) >> 3;
}
int decimateFields(const Source& s, int j, int k) {
    const int first = k / 2 * 4;
    return k % 2 == 0 ? (3 * s(j, first) + s(j, first + 2) + 2) >> 2 : (s(j, first + 1) + 3 * s(j, first + 3) + 2) >> 2;
}
int fourTap(const Source& s, int j, int y) {
    const auto row = [&](int k) { return s(j, std::clamp(k, 0, s.size.height / 2 - 1)); };
    const int k = y / 2;
    if (y % 2 == 0) return row(k);
    return std::clamp(((row(k) + row(k + 1)) * 9 - (row(k - 1) + row(k + 2)) + 8) >> 4, 0, 255);
}
int smooth(const Source& s, int j, int k) {
    const int last = s.size.height / 2 - 1;
    if (last == 0) return s(j, 0);
    if (k == 0 || k == last) return (s(j, k) + s(j, k == 0 ? 1 : k - 1)) >> 1;
    return (s(j, k - 1) + s(j, k + 1) + 2 * s(j, k)) >> 2;
}

// Sample j of n of a destination row.
int mean(int a, int b, int j, int n) { return (a + b + (j < n / 32 * 32 ? 1 : 0)) >> 1; }

int bilinear(const Source& s, int j, int k) {
    const int n = s.size.width / 2, columns = n / 2, rows = s.size.height / 4;
    const auto across = [&](int row) {
        const int own = s(j / 2, row);
        return j % 2 == 0 || j / 2 + 1 == columns ? own : mean(own, s(j / 2 + 1, row), j, n);
    };
    if (k % 2 == 0 || k / 2 + 1 == rows) return across(k / 2);
    return mean(across(k / 2), across(k / 2 + 1), j, n);
}
int decimate(const Source& s, int j, int k) { return s(2 * j, 2 * k); }
int meanOfRows(const Source& s, int j, int k) {
    return mean(s(j / 2, 2 * k), s(j / 2, 2 * k + 1), j, s.size.width / 2);
}
int meanBetweenRows(const Source& s, int j, int y) {
    const int k = y / 2, next = std::min(k + 1, s.size.height / 2 - 1);
    return y % 2 == 0 ? s(2 * j, k) : mean(s(2 * j, k), s(2 * j, next), j, s.size.width / 4);
}

struct Member {
    const char* name;
    Model model;
    int columns, rows;  // the region is cut to multiples of these
    bool warns;         // of a cut
};
const Member kMembers[] = {
    {"pxliYCbCr420To422_Interlace_8u_P3R", interpolateFields, 2, 4, true},
    {"pxliYCbCr420ToCbYCr422_Interlace_8u_P3C2R", interpolateFields, 2, 4, true},
    {"pxliYCbCr422To420_Interlace_8u_P3R", decimateFields, 2, 4, true},
    {"pxliCbYCr422ToYCbCr420_Interlace_8u_C2P3R", decimateFields, 2, 4, true},
    {"pxliYCbCr420ToYCbCr422_Filter_8u_P3R", fourTap, 2, 8, false},
    {"pxliYCrCb420ToYCbCr422_Filter_8u_P3R", fourTap, 2, 8, false},
    {"pxliYCbCr420ToYCbCr422_Filter_8u_P2P3R", fourTap, 2, 8, false},
    {"pxliYCbCr420ToYCbCr422_Filter_8u_P2C2R", fourTap, 2, 2, false},
    {"pxliYCbCr420ToYCrCb420_Filter_8u_P2P3R", smooth, 2, 2, false},
    {"pxliYCbCr1620To420_8u_P3R", bilinear, 4, 4, false},
    {"pxliYCbCr420To1620_8u_P3R", decimate, 4, 4, false},
    {"pxliYCbCr411To420_8u_P3R", meanOfRows, 4, 4, false},
    {"pxliYCbCr420To411_8u_P3R", meanBetweenRows, 4, 4, false},
};
void PrintTo(const Member& member, std::ostream* out) { *out << member.name; }

class RepackFilter : public testing::TestWithParam<Member> {
protected:
    static const catalog::Export& function() { return *catalog::find(GetParam().name); }
    static YcbcrView sourceOf(const Call& call) { return {function().source, call.arguments.source}; }
    static YcbcrView destinationOf(const Call& call) { return {function().destination, call.arguments.destination}; }

    static void compare(Call& call, Target target) {
        call.destination.fill(std::array<std::uint8_t, 1>{kOld});
        const auto [width, height] = call.arguments.size;
        const PxlSize whole = {width / GetParam().columns * GetParam().columns,
                               height / GetParam().rows * GetParam().rows};
        const bool isCut = whole.width < width || whole.height < height;
        ASSERT_EQ(call.run(), isCut && GetParam().warns ? pxlStatusOddSize : pxlStatusOk);
        const YcbcrView from = sourceOf(call), to = destinationOf(call);
        const auto where = [&] { return std::string(nameOf(target)) + " " + call.describe(); };
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const int expected = x < whole.width && y < whole.height ? from.luma(x, y) : kOld;
                if (to.luma(x, y) != expected) FAIL() << "luma " << x << ", " << y << " of " << where();
            }
        }
        const PxlSize all = to.chromaSize(width, height), converted = to.chromaSize(whole.width, whole.height);
        for (const int channel : {kCb, kCr}) {
            const Source source = {from, channel, whole};
            for (int k = 0; k < all.height; ++k) {
                for (int j = 0; j < all.width; ++j) {
                    const bool isWhole = j < converted.width && k < converted.height;
                    const int expected = isWhole ? GetParam().model(source, j, k) : kOld;
                    if (to.chroma(channel, j, k) != expected)
                        FAIL() << "chroma " << channel << " at " << j << ", " << k << " is "
                               << int{to.chroma(channel, j, k)} << ", not " << expected << " of " << where();
                }
            }
        }
    }
};

TEST_P(RepackFilter, everySample) {
    Random random(1620);
    const int step = function().sizeMultiple;
    for (int i = 0; i < 100; ++i) {
        const int width = i < 70 ? 4 + i : i < 90 ? 70 + 7 * i : 4 * (10 + 30 * (i - 90));
        const int height = function().minimumHeight + random.below(10);
        if (step > 1 && i < 70 && i % step != 0) continue;
        const Placement placement = {Placement::Where::againstEnd, i % 3};
        Call call(function(), function().fitting({width, height}), placement, placement, random);
        onEachTarget([&](Target target) { compare(call, target); });
        if (HasFatalFailure()) return;
    }
}

// Each weighted sum of two rows for all pairs of codes: rows of one code each, columns of the other.
TEST_P(RepackFilter, allPairsOfCodes) {
    Random random(2);
    const PxlSize size = {1024, 8};
    Call call(function(), size, {}, {}, random);
    const YcbcrView from = sourceOf(call);
    const PxlSize chroma = from.chromaSize(size.width, size.height);
    for (int code = 0; code < 256; ++code) {
        for (int k = 0; k < chroma.height; ++k) {
            for (int j = 0; j < chroma.width; ++j) {
                // neighbours in a field, in a frame and in a row are different
                const bool fixed = (j + k + k / 2) % 2 == 0;
                from.chroma(kCb, j, k) = static_cast<Pxl8u>(fixed ? code : j / 2);
                from.chroma(kCr, j, k) = static_cast<Pxl8u>(fixed ? j / 2 : code);
            }
        }
        compare(call, bestTarget());
        if (HasFatalFailure()) return;
    }
}

TEST_P(RepackFilter, constantStaysConstant) {
    for (const int code : {0, 1, 128, 255}) {
        Random random(3);
        Call call(function(), {104, 24}, {}, {}, random);
        call.source.fill(std::array<std::uint8_t, 1>{static_cast<std::uint8_t>(code)});
        ASSERT_EQ(call.run(), pxlStatusOk);
        const YcbcrView to = destinationOf(call);
        const PxlSize chroma = to.chromaSize(104, 24);
        for (int k = 0; k < chroma.height; ++k) {
            for (int j = 0; j < chroma.width; ++j) {
                ASSERT_EQ(to.chroma(kCb, j, k), code);
                ASSERT_EQ(to.chroma(kCr, j, k), code);
            }
        }
    }
}

TEST_P(RepackFilter, orderOfChecks) {
    const bool sizeInTwoSteps = GetParam().model == smooth;
    EXPECT_EQ(checkOrderFaults(function(), sizeInTwoSteps ? "ps" : "pes"), "");
}

INSTANTIATE_TEST_SUITE_P(Members, RepackFilter, testing::ValuesIn(kMembers),
                         [](const auto& member) { return std::string(member.param.name); });

// 1 or all three bits: the region; 4 and 16: the same region two rows further up; all others: nothing.
TEST(RepackLayout, everyCode) {
    for (const char* name : {"pxliYCbCr420ToYCbCr422_Filter_8u_P2C2R", "pxliYCbCr420ToYCrCb420_Filter_8u_P2P3R"}) {
        const catalog::Export& function = *catalog::find(name);
        Random random(7);
        Call call(function, {34, 14}, {}, {Placement::Where::againstEnd, 5}, random);
        call.arguments.size = {33, 11};
        const Image::Bytes untouched = call.destination.bytes();
        call.arguments.layoutCode = 1;
        ASSERT_EQ(call.run(), pxlStatusOk);
        const Image::Bytes converted = call.destination.bytes();
        const catalog::Arguments region = call.arguments;
        const auto resultOf = [&](std::uint32_t layout) {
            call.destination.restore(untouched);
            call.arguments.layoutCode = layout;
            EXPECT_EQ(call.run(), pxlStatusOk) << name << layout;
            return call.destination.bytes();
        };
        for (const std::uint32_t layout : {21u, 23u, 63u, 0xFFFFFFFFu})
            EXPECT_EQ(resultOf(layout), converted) << layout;
        for (const std::uint32_t layout : {0u, 2u, 3u, 5u, 17u, 20u, 8u, 32u}) {
            EXPECT_EQ(resultOf(layout), untouched) << layout;
        }
        const auto down = [](catalog::PlaneRef& plane, const catalog::PlaneShape& shape) {
            plane.first = static_cast<Pxl8u*>(plane.first) + plane.step * (shape.heightShift == 0 ? 2 : 1);
        };
        for (std::size_t i = 0; i < region.source.size(); ++i)
            down(call.arguments.source[i], function.source.planes[i]);
        for (std::size_t i = 0; i < region.destination.size(); ++i) {
            down(call.arguments.destination[i], function.destination.planes[i]);
        }
        for (const std::uint32_t layout : {4u, 16u}) EXPECT_EQ(resultOf(layout), converted) << layout;
    }
}

}  // namespace
}  // namespace pxl::test
