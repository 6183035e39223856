// RGB and analog YUV in all samplings: every sample of every member against plain-integer models written from the
// formulas, and the distance to the equations that define YUV.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "support/call.h"
#include "support/targets.h"

namespace pxl::test {
namespace {

using Pixel = std::array<int, 3>;  // R, G, B or Y, U, V; or sums of them
using Form = Pixel (*)(const Pixel&);

int limit(int v) { return std::clamp(v, 0, 255); }

// ---- encoders

int rawLuma(const Pixel& p) { return 19595 * p[0] + 38470 * p[1] + 7471 * p[2]; }

Pixel encodeQ16(const Pixel& p, int lumaRounding, int differenceRounding) {
    const int raw = rawLuma(p);
    const auto difference = [&](int x) { return (x * 65536 - raw + differenceRounding) >> 16; };
    return {(raw + lumaRounding) >> 16, ((difference(p[2]) * 32244) >> 16) + 128,
            limit(((difference(p[0]) * 57475) >> 16) + 128)};
}
Pixel rounded(const Pixel& p) { return encodeQ16(p, 32768, 32768); }
Pixel truncated(const Pixel& p) { return encodeQ16(p, 0, 32767); }

Pixel planar(const Pixel& p) {
    return {(19595 * p[0] + 38469 * p[1] + 7471 * p[2]) >> 16,
            limit(((-4816 * p[0] - 9469 * p[1] + 14286 * p[2]) >> 15) + 128),
            limit(((20152 * p[0] - 16875 * p[1] - 3276 * p[2]) >> 15) + 128)};
}

Pixel group(const Pixel& p) {
    const int y = (9798 * p[0] + 19235 * p[1] + 3736 * p[2] + 16384) >> 15;
    return {y, limit(((16121 * (p[2] - y) + 16384) >> 15) + 128), limit(((28737 * (p[0] - y) + 16384) >> 15) + 128)};
}

int lumaRounded(const Pixel& p) { return (rawLuma(p) + 32768) >> 16; }
int lumaQ14(const Pixel& p) { return (4899 * p[0] + 9617 * p[1] + 1868 * p[2] + 2) >> 14; }
int lumaQ14Truncated(const Pixel& p) { return (4899 * p[0] + 9617 * p[1] + 1868 * p[2]) >> 14; }

// U or V from the sums of two pixels or four.
int chromaOfSums(const Pixel& sums, int pixels, bool isU) {
    const int rounding = pixels == 2 ? 65535 : 131071, shift = pixels == 2 ? 17 : 18;
    const int difference = (sums[isU ? 2 : 0] * 65536 - rawLuma(sums) + rounding) >> 16;
    return limit(((difference * (isU ? 32244 : 57475)) >> shift) + 128);
}

// ---- decoders

Pixel decode(const Pixel& p, int vToR, int uToG, int vToG, int uToB, int rounding) {
    const int y = p[0] * 65536, u = p[1] - 128, v = p[2] - 128;
    return {limit((y + vToR * v + rounding) >> 16), limit((y - uToG * u - vToG * v) >> 16),
            limit((y + uToB * u + rounding) >> 16)};
}
Pixel decodeRounding(const Pixel& p) { return decode(p, 74711, 25821, 38076, 133169, 32768); }
Pixel decodeTruncating(const Pixel& p) { return decode(p, 74710, 25820, 38075, 133168, 0); }

// ---- access

// R, G and B or Y, U and V of an image that shares no samples.
Pixel colour(Image& image, const catalog::ImageShape& shape, int x, int y) {
    Pixel p = {image.at<Pxl8u>(0, x, y), image.at<Pxl8u>(1, x, y), image.at<Pxl8u>(2, x, y)};
    if (shape.space == "BGR") std::swap(p[0], p[2]);
    return p;
}

// A chroma sample, U = 1 and V = 2, of a subsampled image; in packed 4:2:2 the two stand in turn.
Pxl8u& chromaAt(Image& image, const catalog::ImageShape& shape, int chroma, int x, int y) {
    return shape.layout == "C2" ? image.at<Pxl8u>(1, x / 2 * 2 + chroma - 1, y) : image.at<Pxl8u>(chroma, x, y);
}

constexpr Pxl8u kOld = 0xA5;

// Runs the call on a destination full of kOld.
PxlStatus runOnOld(Call& call) {
    call.destination.fill(std::array<std::uint8_t, 1>{kOld});
    return call.run();
}

std::vector<int> widths(int from) {
    std::vector<int> list = {79, 80, 81, 95, 96, 97, 127, 128, 129, 130};
    for (int width = from; width <= 72; ++width) list.push_back(width);
    return list;
}

// ---- 4:4:4

enum class Fourth { none, kept, copied };

struct Member444 {
    const char* name;
    int groupSize;
    Form group, tail;
    Fourth fourth;
    double distance;  // largest one to the equations, in codes
};
const Member444 kMembers444[] = {
    {"pxliRGBToYUV_8u_C3R", 16, group, truncated, Fourth::none, 1.42},
    {"pxliRGBToYUV_8u_AC4R", 16, rounded, rounded, Fourth::kept, 1.42},
    {"pxliRGBToYUV_8u_C3P3R", 8, group, truncated, Fourth::none, 1.42},
    {"pxliRGBToYUV_8u_AC4P4R", 16, rounded, rounded, Fourth::copied, 1.42},
    {"pxliRGBToYUV_8u_P3R", 16, group, planar, Fourth::none, 1.04},
    {"pxliYUVToRGB_8u_C3R", 16, decodeRounding, decodeRounding, Fourth::none, 1.1},
    {"pxliYUVToRGB_8u_AC4R", 16, decodeRounding, decodeRounding, Fourth::kept, 1.1},
    {"pxliYUVToRGB_8u_C3C4R", 16, decodeRounding, decodeRounding, Fourth::kept, 1.1},
    {"pxliYUVToRGB_8u_P3C3R", 16, decodeTruncating, decodeTruncating, Fourth::none, 1.1},
    {"pxliYUVToRGB_8u_P3R", 16, decodeTruncating, decodeTruncating, Fourth::none, 1.1},
};
void PrintTo(const Member444& member, std::ostream* out) { *out << member.name; }

class Yuv444 : public testing::TestWithParam<Member444> {
protected:
    const catalog::Export& function() const { return *catalog::find(GetParam().name); }

    void compare(Call& call, Target target) {
        const auto [width, height] = call.arguments.size;
        const int grouped = width / GetParam().groupSize * GetParam().groupSize;
        ASSERT_EQ(runOnOld(call), pxlStatusOk);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const Pixel in = colour(call.source, function().source, x, y);
                ASSERT_EQ(colour(call.destination, function().destination, x, y),
                          (x < grouped ? GetParam().group : GetParam().tail)(in))
                    << nameOf(target) << " pixel " << x << ", " << y << " of " << call.describe() << " from "
                    << testing::PrintToString(in);
                if (GetParam().fourth == Fourth::none) continue;
                ASSERT_EQ(call.destination.at<Pxl8u>(3, x, y),
                          GetParam().fourth == Fourth::kept ? kOld : call.source.at<Pxl8u>(3, x, y));
            }
        }
    }
};

TEST_P(Yuv444, everyPixelOfEveryWidth) {
    Random random(444);
    for (const int width : widths(1)) {
        Call call(function(), {width, 3}, {}, {Placement::Where::againstEnd, 1}, random);
        onEachTarget([&](Target target) { compare(call, target); });
        if (HasFatalFailure()) return;
    }
}

Pixel toYuv(const Pixel& p, double (&exact)[3]) {
    exact[0] = 0.299 * p[0] + 0.587 * p[1] + 0.114 * p[2];
    exact[1] = 128 + 0.492 * (p[2] - exact[0]);
    exact[2] = std::clamp(128 + 0.877 * (p[0] - exact[0]), 0.0, 255.0);
    return p;
}

// The codes 0, 5, 10 ... 255 of all channels in every combination, in groups and in the rest of a row.
TEST_P(Yuv444, distanceToTheEquations) {
    constexpr int kLevels = 52, kStep = 5, kWidth = 16 * kLevels + 7,
                  kHeight = kLevels * kLevels * kLevels / kWidth + 1;
    Random random(5);
    Call call(function(), {kWidth, kHeight}, {}, {}, random);
    for (int n = 0; n < kWidth * kHeight; ++n) {
        int rest = n;
        for (int c = 0; c < 3; ++c, rest /= kLevels) {
            call.source.at<Pxl8u>(c, n % kWidth, n / kWidth) = static_cast<Pxl8u>(rest % kLevels * kStep);
        }
    }
    ASSERT_EQ(call.run(), pxlStatusOk);
    double worst = 0;
    for (int n = 0; n < kWidth * kHeight; ++n) {
        const Pixel in = colour(call.source, function().source, n % kWidth, n / kWidth);
        const Pixel out = colour(call.destination, function().destination, n % kWidth, n / kWidth);
        double exact[3];
        if (function().destination.space == "YUV") {
            toYuv(in, exact);
        } else {
            const double u = (in[1] - 128) / 0.492, v = (in[2] - 128) / 0.877;
            exact[0] = in[0] + v;
            exact[2] = in[0] + u;
            exact[1] = (in[0] - 0.299 * exact[0] - 0.114 * exact[2]) / 0.587;
        }
        for (std::size_t c = 0; c < 3; ++c)
            worst = std::max(worst, std::abs(out[c] - std::clamp(exact[c], 0.0, 255.0)));
    }
    EXPECT_LE(worst, GetParam().distance);
    EXPECT_GT(worst, GetParam().distance - 0.05);  // the figures of the documentation
}

INSTANTIATE_TEST_SUITE_P(Members, Yuv444, testing::ValuesIn(kMembers444),
                         [](const auto& member) { return std::string(member.param.name); });

// The largest difference of a sample, `kDistance` apart in `out`, from what the form makes of the planes.
template <Form kForm, std::size_t kDistance>
int farthest(const Pxl8u* const planes[3], const Pxl8u* const out[3], std::size_t pixels) {
    int worst = 0;
    for (std::size_t i = 0; i < pixels; ++i) {
        const Pixel expected = kForm({planes[0][i], planes[1][i], planes[2][i]});
        for (std::size_t c = 0; c < 3; ++c) worst = std::max(worst, std::abs(expected[c] - out[c][kDistance * i]));
    }
    return worst;
}

// Every colour that there is: the groups are within one code of the rest of a row, and the functions with one form,
// which take their luma from byte products and their factors from a search, keep to it.
TEST(YuvForms, allColours) {
    constexpr int kPixels = 256 * 256;
    std::vector<Pxl8u> planes(3 * kPixels), interleaved(4 * kPixels), out(4 * kPixels), outPlanes(3 * kPixels);
    const Pxl8u* from[3] = {planes.data(), planes.data() + kPixels, planes.data() + 2 * kPixels};
    Pxl8u* to[3] = {outPlanes.data(), outPlanes.data() + kPixels, outPlanes.data() + 2 * kPixels};
    for (std::size_t i = 0; i < kPixels; ++i) {
        planes[kPixels + i] = static_cast<Pxl8u>(i / 256 * 7);
        planes[2 * kPixels + i] = static_cast<Pxl8u>(i);
    }
    int fromTruncated = 0, fromPlanar = 0, apart[4] = {};
    for (int first = 0; first < 256; ++first) {
        std::fill_n(planes.begin(), kPixels, static_cast<Pxl8u>(first));
        for (std::size_t i = 0; i < kPixels; ++i) {
            for (std::size_t c = 0; c < 3; ++c) interleaved[4 * i + c] = from[c][i];
        }
        const Pxl8u* const planesOut[3] = {to[0], to[1], to[2]};
        const Pxl8u* const bytesOut[3] = {out.data(), out.data() + 1, out.data() + 2};
        const PxlSize size = {256, 256};
        ASSERT_EQ(pxliRGBToYUV_8u_P3R(from, 256, to, 256, size), pxlStatusOk);
        apart[0] = std::max(apart[0], farthest<group, 1>(from, planesOut, kPixels));
        fromPlanar = std::max(fromPlanar, farthest<planar, 1>(from, planesOut, kPixels));
        fromTruncated = std::max(fromTruncated, farthest<truncated, 1>(from, planesOut, kPixels));
        ASSERT_EQ(pxliRGBToYUV_8u_AC4R(interleaved.data(), 1024, out.data(), 1024, size), pxlStatusOk);
        apart[1] = std::max(apart[1], farthest<rounded, 4>(from, bytesOut, kPixels));
        ASSERT_EQ(pxliYUVToRGB_8u_AC4R(interleaved.data(), 1024, out.data(), 1024, size), pxlStatusOk);
        apart[2] = std::max(apart[2], farthest<decodeRounding, 4>(from, bytesOut, kPixels));
        ASSERT_EQ(pxliYUVToRGB_8u_P3R(from, 256, to, 256, size), pxlStatusOk);
        apart[3] = std::max(apart[3], farthest<decodeTruncating, 1>(from, planesOut, kPixels));
    }
    EXPECT_EQ(fromTruncated, 1);
    EXPECT_EQ(fromPlanar, 1);
    for (const int distance : apart) EXPECT_EQ(distance, 0);
}

// The colours whose luma is half a code, of which there are some hundred, show how the differences round.
TEST(YuvForms, ties) {
    int ties = 0;
    for (int colour = 0; colour < 1 << 24; ++colour) {
        const Pixel p = {colour >> 16, colour >> 8 & 255, colour & 255};
        if (rawLuma(p) % 65536 != 32768) continue;
        ++ties;
        const Pxl8u in[4] = {static_cast<Pxl8u>(p[0]), static_cast<Pxl8u>(p[1]), static_cast<Pxl8u>(p[2]), 0};
        onEachTarget([&](Target target) {
            Pxl8u out[4] = {};
            ASSERT_EQ(pxliRGBToYUV_8u_C3R(in, 3, out, 3, {1, 1}), pxlStatusOk);
            EXPECT_EQ((Pixel{out[0], out[1], out[2]}), truncated(p)) << nameOf(target);
            ASSERT_EQ(pxliRGBToYUV_8u_AC4R(in, 4, out, 4, {1, 1}), pxlStatusOk);
            EXPECT_EQ((Pixel{out[0], out[1], out[2]}), rounded(p)) << nameOf(target);
        });
    }
    EXPECT_GT(ties, 100);
}

// ---- 4:2:2 and 4:2:0

struct Encoder {
    const char* name;
    int (*luma)(const Pixel&);
};
const Encoder kEncoders[] = {
    {"pxliRGBToYUV422_8u_C3C2R", lumaRounded},    {"pxliRGBToYUV422_8u_C3P3R", lumaRounded},
    {"pxliRGBToYUV422_8u_P3R", lumaRounded},      {"pxliRGBToYUV422_8u_C3P3", lumaRounded},
    {"pxliRGBToYUV422_8u_P3", lumaRounded},       {"pxliRGBToYUV420_8u_C3P3R", lumaQ14},
    {"pxliRGBToYUV420_8u_P3R", lumaQ14Truncated}, {"pxliRGBToYUV420_8u_C3P3", lumaQ14},
    {"pxliRGBToYUV420_8u_P3", lumaQ14Truncated},  {"pxliBGRToYUV420_8u_AC4P3R", lumaRounded},
};
void PrintTo(const Encoder& encoder, std::ostream* out) { *out << encoder.name; }

// The part of an image that a function converts: 4:2:0 with steps leaves a last odd column and row.
PxlSize converted(const catalog::Export& function, PxlSize size) {
    const bool dense = function.source.dense, is420 = (function.source.sampling + function.destination.sampling) == 864;
    return is420 && !dense ? PxlSize{size.width & ~1, size.height & ~1} : size;
}
PxlStatus statusFor(const catalog::Export& function, PxlSize size) {
    const PxlSize whole = converted(function, size);
    return whole.width < size.width || whole.height < size.height ? pxlStatusOddSize : pxlStatusOk;
}

// Sizes for both groups and rest, and for both ways through a dense image: as one row from 256 pixels on.
std::vector<PxlSize> sizes(const catalog::Export& function) {
    std::vector<PxlSize> list;
    for (const int width : widths(function.minimumWidth)) {
        for (int height = function.minimumHeight; height <= (width < 5 ? 5 : 3); ++height)
            list.push_back({width, height});
    }
    if (function.source.dense) {
        for (const PxlSize size :
             {PxlSize{16, 16}, {15, 16}, {16, 15}, {15, 17}, {17, 17}, {2, 127}, {2, 128}, {1, 256}})
            list.push_back(size);
    }
    return list;
}

class YuvEncoder : public testing::TestWithParam<Encoder> {
protected:
    const catalog::Export& function() const { return *catalog::find(GetParam().name); }
    bool is420() const { return function().destination.sampling == 420; }

    // Of the pair or block that x, y stands in; what would lie beyond the image is the last column or row again.
    Pixel sums(Call& call, int x, int y) const {
        Pixel total = {};
        for (int i = 0; i < (is420() ? 4 : 2); ++i) {
            const int column = std::min(x / 2 * 2 + i % 2, call.arguments.size.width - 1);
            const int row = is420() ? std::min(y / 2 * 2 + i / 2, call.arguments.size.height - 1) : y;
            const Pixel p = colour(call.source, function().source, column, row);
            for (std::size_t c = 0; c < 3; ++c) total[c] += p[c];
        }
        return total;
    }

    void compare(Call& call, Target target) {
        const PxlSize size = call.arguments.size, whole = converted(function(), size);
        ASSERT_EQ(runOnOld(call), statusFor(function(), size)) << call.describe();
        for (int y = 0; y < size.height; ++y) {
            for (int x = 0; x < size.width; ++x) {
                const bool inside = x < whole.width && y < whole.height;
                const Pixel in = colour(call.source, function().source, x, y);
                ASSERT_EQ(call.destination.at<Pxl8u>(0, x, y), inside ? GetParam().luma(in) : kOld)
                    << nameOf(target) << " luma " << x << ", " << y << " of " << call.describe();
                if (!inside || x % 2 != 0 || (is420() && y % 2 != 0)) continue;
                for (int c = 1; c <= 2; ++c) {
                    // a lone last pixel of packed 4:2:2 has no V
                    if (c == 2 && x + 1 == size.width && function().destination.layout == "C2") continue;
                    ASSERT_EQ(chromaAt(call.destination, function().destination, c, x, y),
                              chromaOfSums(sums(call, x, y), is420() ? 4 : 2, c == 1))
                        << nameOf(target) << " chroma " << c << " of " << x << ", " << y << " of " << call.describe();
                }
            }
        }
    }
};

TEST_P(YuvEncoder, everySampleOfEverySize) {
    Random random(422);
    for (const PxlSize size : sizes(function())) {
        Call call(function(), size, {}, {Placement::Where::againstEnd, 3}, random);
        onEachTarget([&](Target target) { compare(call, target); });
        if (HasFatalFailure()) return;
    }
}

INSTANTIATE_TEST_SUITE_P(Members, YuvEncoder, testing::ValuesIn(kEncoders),
                         [](const auto& encoder) { return std::string(encoder.param.name); });

// Luma and chroma of random pairs and blocks against the equations, chroma of the mean colour.
TEST_P(YuvEncoder, distanceToTheEquations) {
    Random random(9);
    Call call(function(), {200, 60}, {}, {}, random);
    const double pixels = is420() ? 4 : 2;
    double worstLuma = 0, worstChroma = 0;
    ASSERT_EQ(call.run(), pxlStatusOk);
    for (int y = 0; y < 60; ++y) {
        for (int x = 0; x < 200; ++x) {
            double exact[3];
            toYuv(colour(call.source, function().source, x, y), exact);
            worstLuma = std::max(worstLuma, std::abs(call.destination.at<Pxl8u>(0, x, y) - exact[0]));
            const Pixel sum = sums(call, x, y);
            const double mean = (0.299 * sum[0] + 0.587 * sum[1] + 0.114 * sum[2]) / pixels;
            const double u = 128 + 0.492 * (sum[2] / pixels - mean),
                         v = std::clamp(128 + 0.877 * (sum[0] / pixels - mean), 0.0, 255.0);
            worstChroma =
                std::max({worstChroma, std::abs(chromaAt(call.destination, function().destination, 1, x, y) - u),
                          std::abs(chromaAt(call.destination, function().destination, 2, x, y) - v)});
        }
    }
    EXPECT_LE(worstLuma, GetParam().luma == lumaRounded ? 0.51 : 1.01);
    EXPECT_LE(worstChroma, 1.01);
}

class YuvDecoder : public testing::TestWithParam<const char*> {
protected:
    const catalog::Export& function() const { return *catalog::find(GetParam()); }

    // The sample of the pair or block of x, y. A lone last pixel of packed 4:2:2 has the V of the pair before.
    int chroma(Call& call, int c, int x, int y) const {
        const bool lone = x % 2 == 0 && x + 1 == call.arguments.size.width && function().source.layout == "C2";
        if (c == 2 && lone) return x == 0 ? 128 : chromaAt(call.source, function().source, 2, x - 2, y);
        return chromaAt(call.source, function().source, c, x, y);
    }

    void compare(Call& call, Target target) {
        const PxlSize size = call.arguments.size, whole = converted(function(), size);
        ASSERT_EQ(runOnOld(call), statusFor(function(), size)) << call.describe();
        for (int y = 0; y < size.height; ++y) {
            for (int x = 0; x < size.width; ++x) {
                const bool inside = x < whole.width && y < whole.height;
                const Pixel in = {call.source.at<Pxl8u>(0, x, y), inside ? chroma(call, 1, x, y) : 0,
                                  inside ? chroma(call, 2, x, y) : 0};
                ASSERT_EQ(colour(call.destination, function().destination, x, y),
                          inside ? decodeRounding(in) : (Pixel{kOld, kOld, kOld}))
                    << nameOf(target) << " pixel " << x << ", " << y << " of " << call.describe();
                if (function().destination.layout == "AC4") {
                    ASSERT_EQ(call.destination.at<Pxl8u>(3, x, y), kOld);
                }
            }
        }
    }
};

TEST_P(YuvDecoder, everySampleOfEverySize) {
    Random random(420);
    for (const PxlSize size : sizes(function())) {
        Call call(function(), size, {Placement::Where::againstEnd, 3}, {}, random);
        onEachTarget([&](Target target) { compare(call, target); });
        if (HasFatalFailure()) return;
    }
}

INSTANTIATE_TEST_SUITE_P(Members, YuvDecoder,
                         testing::Values("pxliYUV422ToRGB_8u_C2C3R", "pxliYUV422ToRGB_8u_P3C3R",
                                         "pxliYUV422ToRGB_8u_P3R", "pxliYUV422ToRGB_8u_P3AC4R",
                                         "pxliYUV422ToRGB_8u_P3C3", "pxliYUV422ToRGB_8u_P3", "pxliYUV420ToRGB_8u_P3C3R",
                                         "pxliYUV420ToRGB_8u_P3R", "pxliYUV420ToRGB_8u_P3AC4R",
                                         "pxliYUV420ToRGB_8u_P3C3", "pxliYUV420ToRGB_8u_P3",
                                         "pxliYUV420ToBGR_8u_P3C3R"),
                         [](const auto& name) { return std::string(name.param); });

// ---- all members

// Gray has no colour in any sampling, and decodes to itself; only the planar rest of a row loses one code. Red has more
// V than a byte holds.
TEST(Yuv, grayAndRed) {
    for (const catalog::Export& function : catalog::all()) {
        if (!function.family.starts_with("YUV ")) continue;
        const bool encodes = function.destination.space == "YUV";
        const int width = 38, height = 256;
        Random random(6);
        Call call(function, {width, height}, {}, {}, random);
        const auto fill = [&](auto value) {
            for (int y = 0; y < height; ++y) {
                for (int x = 0; x < width; ++x) {
                    for (int c = 0; c < 3; ++c) {
                        const int channel = function.source.space == "BGR" ? 2 - c : c;
                        if (encodes || c == 0) call.source.at<Pxl8u>(channel, x, y) = static_cast<Pxl8u>(value(c, y));
                    }
                    if (encodes) continue;
                    for (int c = 1; c <= 2; ++c) chromaAt(call.source, function.source, c, x, y) = 128;
                }
            }
        };
        fill([](int, int y) { return y; });
        ASSERT_EQ(call.run(), pxlStatusOk);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const bool darker = function.name == "pxliRGBToYUV_8u_P3R" && x >= 32 && y > 0;
                ASSERT_EQ(call.destination.at<Pxl8u>(0, x, y), y - darker) << function.name << " pixel " << x;
                for (int c = 1; c <= 2; ++c) {
                    ASSERT_EQ(encodes ? chromaAt(call.destination, function.destination, c, x, y)
                                      : call.destination.at<Pxl8u>(c, x, y),
                              encodes ? 128 : y)
                        << function.name << " pixel " << x;
                }
            }
        }
        if (!encodes) continue;
        fill([](int c, int) { return c == 0 ? 255 : 0; });
        ASSERT_EQ(call.run(), pxlStatusOk);
        for (int x = 0; x < width; ++x) {
            ASSERT_EQ(chromaAt(call.destination, function.destination, 2, x, 9), 255) << function.name << " " << x;
        }
    }
}

TEST(Yuv, orderOfChecks) {
    for (const catalog::Export& function : catalog::all()) {
        if (!function.family.starts_with("YUV ")) continue;
        EXPECT_EQ(checkOrderFaults(function, "pse"), "");
    }
}

// Nobody looks at an array of steps before the size is known to be right.
TEST(Yuv, noStepsWithoutSize) {
    const Pxl8u* from[3] = {};
    Pxl8u pixels[16];
    Pxl8u* to[3] = {};
    EXPECT_EQ(pxliYUV422ToRGB_8u_P3C3R(from, nullptr, pixels, 16, {0, 4}), pxlStatusBadSize);
    EXPECT_EQ(pxliYUV420ToRGB_8u_P3R(from, nullptr, to, 16, {0, 4}), pxlStatusBadSize);
    EXPECT_EQ(pxliRGBToYUV422_8u_P3R(from, 16, to, nullptr, {4, 0}), pxlStatusBadSize);
    EXPECT_EQ(pxliBGRToYUV420_8u_AC4P3R(pixels, 16, to, nullptr, {0, 0}), pxlStatusBadSize);
}

}  // namespace
}  // namespace pxl::test
