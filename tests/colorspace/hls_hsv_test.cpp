// HLS and HSV: every pixel of every member against plain models, pinned values, and the distance to the definitions.

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

#include "colorspace/hue_models.h"
#include "support/call.h"
#include "support/targets.h"

namespace pxl::test {
namespace {

using catalog::Element;

template <class T>
using Pixel = std::array<T, 3>;

bool endsWith(std::string_view text, std::string_view end) {
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

// One member as its models see it.
struct Member {
    const catalog::Export& function;
    Element element = function.source.planes[0].element;
    bool bytes = element == Element::u8;
    bool bgr = function.source.space == "BGR" || function.destination.space == "BGR";
    int group = bytes && !bgr && endsWith(function.name, "_C3R") ? 8 : 4;
    const HueScale& scale = bytes ? kByteScale : element == Element::f32 ? kUnitScale : kWordScale;

    // leftOver: the pixel is in no whole group.
    Colour colourOf(const Colour& c, bool leftOver) const {
        const std::string& from = function.source.space;
        if (from == "HSV") return rgbOfHsvModel(scale, c);
        if (from == "HLS") return rgbOfHlsModel(scale, c, bytes && leftOver);
        if (function.destination.space == "HSV") return bytes ? hsvByteModel(c) : hsvWordModel(c);
        return hlsModel(scale, c, [&](float a, float b) {
            if (element == Element::f32) return a / b;
            return a * (leftOver ? refined(b) : estimate(b));
        });
    }
    bool truncates(bool leftOver) const {
        if (bgr || !leftOver) return bgr;
        return bytes ? function.source.space == "HLS" : function.destination.space == "HLS";
    }

    template <class T>
    Pixel<T> pixelOf(Pixel<T> in, bool leftOver) const {
        constexpr float kOffset = std::is_same_v<T, Pxl16s> ? 32768 : 0;
        Colour c;
        for (std::size_t i = 0; i < 3; ++i) {
            c[i] = static_cast<float>(in[i]);
            if (kOffset != 0) c[i] += kOffset;  // 0 would change -0
        }
        if (function.source.space == "BGR") std::swap(c[0], c[2]);
        c = colourOf(c, leftOver);
        if (function.destination.space == "BGR") std::swap(c[0], c[2]);
        Pixel<T> out;
        for (std::size_t i = 0; i < 3; ++i) {
            if constexpr (std::is_same_v<T, float>) {
                out[i] = c[i];
            } else {
                const float whole = truncates(leftOver) ? std::trunc(c[i]) : std::nearbyint(c[i]);
                out[i] = static_cast<T>(std::clamp(whole, 0.0f, scale.full) - kOffset);
            }
        }
        return out;
    }
};

template <class T>
bool same(T a, T b) {
    if constexpr (std::is_same_v<T, float>) {
        return a == b ? std::signbit(a) == std::signbit(b) : std::isnan(a) && std::isnan(b);
    }
    return a == b;
}

// The fourth channel: kept in AC4 destinations, copied to others that have one.
template <class T>
void compare(Call& call) {
    const Member member{call.function};
    const int width = call.arguments.size.width, height = call.arguments.size.height;
    const bool four = call.function.destination.planes.size() == 4 || call.function.destination.planes[0].channels == 4;
    const bool keepsFourth = call.function.source.layout == "AC4" && call.function.destination.layout == "AC4";
    const int groups = width / member.group * member.group;
    const Image::Bytes before = call.destination.bytes();
    std::vector<T> fourth;
    for (int n = 0; four && n < width * height; ++n) {
        Image& image = keepsFourth ? call.destination : call.source;
        fourth.push_back(image.at<T>(3, n % width, n / width));
    }
    onEachTarget([&](Target target) {
        call.destination.restore(before);
        ASSERT_EQ(call.run(), pxlStatusOk);
        for (int n = 0; n < width * height; ++n) {
            const int x = n % width, y = n / width;
            const Pixel<T> in = {call.source.at<T>(0, x, y), call.source.at<T>(1, x, y), call.source.at<T>(2, x, y)};
            const Pixel<T> expected = member.pixelOf(in, x >= groups);
            for (int i = 0; i < 3; ++i) {
                const T out = call.destination.at<T>(i, x, y);
                ASSERT_TRUE(same(out, expected[static_cast<std::size_t>(i)]))
                    << nameOf(target) << ' ' << call.describe() << " at " << x << ", " << y << " channel " << i << ": "
                    << +out << " for " << +in[0] << ' ' << +in[1] << ' ' << +in[2] << ", not "
                    << +expected[static_cast<std::size_t>(i)];
            }
            if (four) {
                ASSERT_TRUE(same(call.destination.at<T>(3, x, y), fourth[static_cast<std::size_t>(n)]))
                    << nameOf(target) << ' ' << call.describe() << " alpha at " << x;
            }
        }
    });
}

class Hue : public testing::TestWithParam<std::string_view> {
protected:
    const catalog::Export& function() const { return *catalog::find(GetParam()); }

    // With samples by number, channels of a pixel following each other, or as random as they are.
    template <class T, class Value>
    void compareWith(PxlSize size, Random& random, const Value& value) {
        Call call(function(), size, {}, {}, random);
        for (int n = 0; n < size.width * size.height; ++n) {
            for (int i = 0; i < 3; ++i) {
                T& sample = call.source.at<T>(i, n % size.width, n / size.width);
                sample = value(n, i, sample);
            }
        }
        compare<T>(call);
    }
    template <class Value>
    void compareAny(PxlSize size, Random& random, const Value& value) {
        switch (Member{function()}.element) {
            case Element::u8:
                return compareWith<Pxl8u>(size, random, value);
            case Element::u16:
                return compareWith<Pxl16u>(size, random, value);
            case Element::s16:
                return compareWith<Pxl16s>(size, random, value);
            default:
                return compareWith<Pxl32f>(size, random, value);
        }
    }
};

// The ends of a sample type and the number of its codes; of floats 0, 1 and 65536 steps between.
template <class T>
T code(int i) {
    if constexpr (std::is_same_v<T, float>) return static_cast<float>(i) / 65535;
    return static_cast<T>(i + static_cast<int>(std::numeric_limits<T>::min()));
}
template <class T>
constexpr int kLastCode = sizeof(T) == 1 ? 255 : 65535;

TEST_P(Hue, everyWidth) {
    Random random(81);
    for (int width = 1; width <= 101 && !HasFatalFailure(); ++width) {
        compareAny({width, 2}, random, [](int, int, auto sample) { return sample; });
    }
}

// Every code of each channel with others from a coarse grid, all grays, equal and nearly equal channels, all ends.
TEST_P(Hue, grid) {
    Random random(82);
    for (std::size_t swept = 0; swept < 3 && !HasFatalFailure(); ++swept) {
        compareAny({1031, 16}, random, [&](int n, int i, auto sample) {
            using T = decltype(sample);
            constexpr int kLast = kLastCode<T>;
            if (i == static_cast<int>(swept)) return code<T>(kLast == 255 ? n % 256 : n * 4 % 65536 + n / 16384 % 4);
            const int third = (i - static_cast<int>(swept) + 3) % 3;
            return code<T>((third == 1 ? n / 256 % 9 * 37 + n % 7 : n / 2304 * 36 + n % 5) * (kLast / 255) %
                           (kLast + 1));
        });
    }
    compareAny({1031, 2}, random, [&](int n, int i, auto sample) {
        using T = decltype(sample);
        constexpr int kLast = kLastCode<T>;
        const int base = n * 127 % (kLast + 1), choice = n / 9 % 9;
        const int steps[] = {0, choice % 3, choice / 3 % 3};
        return code<T>(std::min(kLast, base + steps[i]));
    });
    compareAny({1009, 3}, random, [&](int n, int i, auto sample) {
        using T = decltype(sample);
        constexpr int kLast = kLastCode<T>;
        const int ends[] = {0, 1, kLast / 2, kLast / 2 + 1, kLast - 1, kLast, kLast / 3};
        for (int k = 0; k < i; ++k) n /= 7;
        return code<T>(ends[n % 7]);
    });
}

// Rows shorter than any group: every first code, the hue of decoders, with some of the others.
TEST_P(Hue, leftOverPixels) {
    Random random(83);
    for (const int width : {1, 3}) {
        compareAny({width, 6400 / width + 1}, random, [](int n, int i, auto sample) {
            using T = decltype(sample);
            constexpr int kLast = kLastCode<T>;
            if (i == 0) return code<T>(n % 256 * (kLast / 255));
            const int others[] = {0, kLast / 5, kLast / 2, kLast - kLast / 7, kLast};
            return code<T>(others[(i == 1 ? n / 256 : n / 1280) % 5]);
        });
    }
}

TEST_P(Hue, orderOfChecks) { EXPECT_EQ(checkOrderFaults(function(), Member{function()}.bgr ? "pets" : "ps"), ""); }

std::vector<std::string_view> members() {
    std::vector<std::string_view> names;
    for (const catalog::Export& function : catalog::all()) {
        for (const std::string_view space : {"HLS", "HSV"}) {
            if (function.source.space == space || function.destination.space == space) names.push_back(function.name);
        }
    }
    return names;
}
INSTANTIATE_TEST_SUITE_P(Members, Hue, testing::ValuesIn(members()),
                         [](const auto& member) { return std::string(member.param); });

TEST(HueFamily, has37Members) { EXPECT_EQ(members().size(), 37u); }

// ---- pinned values

template <class T, class Function>
std::vector<T> converted(Function function, const std::vector<T>& in) {
    std::vector<T> out(in.size());
    const int bytes = static_cast<int>(in.size() * sizeof(T));
    EXPECT_EQ(function(in.data(), bytes, out.data(), bytes, {static_cast<int>(in.size() / 3), 1}), pxlStatusOk);
    return out;
}

template <class T>
std::vector<T> repeated(Pixel<T> px, int count) {
    std::vector<T> list;
    for (int i = 0; i < count; ++i) list.insert(list.end(), px.begin(), px.end());
    return list;
}

TEST(HuePinned, bytes) {
    for (const int pixels : {1, 8, 9}) {
        const auto all = [&](Pixel<Pxl8u> px) { return repeated(px, pixels); };
        EXPECT_EQ(converted(pxliRGBToHLS_8u_C3R, all({255, 255, 255})), all({0, 255, 0}));
        EXPECT_EQ(converted(pxliRGBToHLS_8u_C3R, all({255, 0, 0})), all({0, 128, 255}));  // 127.5 to even
        EXPECT_EQ(converted(pxliRGBToHSV_8u_C3R, all({0, 0, 0})), all({0, 0, 0}));
        EXPECT_EQ(converted(pxliRGBToHSV_8u_C3R, all({90, 90, 90})), all({0, 0, 90}));
        EXPECT_EQ(converted(pxliHSVToRGB_8u_C3R, all({255, 200, 100})),
                  converted(pxliHSVToRGB_8u_C3R, all({0, 200, 100})));
        EXPECT_EQ(converted(pxliHSVToRGB_8u_C3R, all({17, 0, 100})), all({100, 100, 100}));
        // the same colour over the BGR functions, which truncate
        const std::vector<Pxl8u> red(4, 255), zero(4, 0);
        const Pxl8u* bgr[] = {zero.data(), zero.data(), red.data()};
        std::vector<Pxl8u> hls(12);
        ASSERT_EQ(pxliBGRToHLS_8u_P3C3R(bgr, 4, hls.data(), 12, {4, 1}), pxlStatusOk);
        EXPECT_EQ(hls[1], 127);
    }
}

TEST(HuePinned, words) {
    // L of 3, 4 is 3.5, H and S are 0: eight pixels are rounded, the ninth is truncated
    std::vector<Pxl16u> out = converted(pxliRGBToHLS_16u_C3R, repeated<Pxl16u>({4, 3, 3}, 9));
    EXPECT_EQ(out[3 * 7 + 1], 4);
    EXPECT_EQ(out[3 * 8 + 1], 3);
    const Pixel<Pxl16s> black = {-32768, -32768, -32768}, gray = {100, 100, 100};
    EXPECT_EQ(converted(pxliRGBToHLS_16s_C3R, repeated(black, 5)), repeated(black, 5));
    EXPECT_EQ(converted(pxliRGBToHLS_16s_C3R, repeated(gray, 5)), repeated<Pxl16s>({-32768, 100, -32768}, 5));
    EXPECT_EQ(converted(pxliRGBToHSV_16u_C3R, repeated<Pxl16u>({0, 65535, 0}, 5)),
              repeated<Pxl16u>({21845, 65535, 65535}, 5));
}

// Hues on the borders of the sectors: 180 degrees belong to the falling side, whose factor 1/60 is rounded up.
TEST(HuePinned, sectorBordersOfFloats) {
    onEachTarget([](Target target) {
        for (const int pixels : {1, 4, 21}) {
            const auto all = [&](Pixel<Pxl32f> px) { return repeated(px, pixels); };
            const float above = 0.75000006f;
            EXPECT_EQ(converted(pxliHLSToRGB_32f_C3R, all({0.5f, 0.375f, 1})), all({0, above, 0.75f}))
                << nameOf(target);
            EXPECT_EQ(converted(pxliHLSToRGB_32f_C3R, all({0, 0.375f, 1})), all({0.75f, 0, 0})) << nameOf(target);
        }
    });
}

// A range of the smallest difference from 1 is gray, the next one is not.
TEST(HuePinned, almostGrayFloats) {
    const float epsilon = 0x1p-23f;
    EXPECT_EQ(converted(pxliRGBToHLS_32f_C3R, std::vector<float>{epsilon, 0, 0})[2], 0);
    EXPECT_EQ(converted(pxliRGBToHLS_32f_C3R, std::vector<float>{1.5f * epsilon, 0, 0})[2], 1);
}

TEST(HueSteps, wholeSamplesOnly) {
    const std::vector<Pxl16u> in(40, 9000);
    std::vector<Pxl16u> even(40), odd(40);
    ASSERT_EQ(pxliRGBToHLS_16u_C3R(in.data(), 20, even.data(), 20, {3, 4}), pxlStatusOk);
    ASSERT_EQ(pxliRGBToHLS_16u_C3R(in.data(), 21, odd.data(), 21, {3, 4}), pxlStatusOk);
    EXPECT_EQ(even, odd);
    std::vector<float> up(40), down(40);
    const std::vector<float> floats(40, 0.25f);
    ASSERT_EQ(pxliHLSToRGB_32f_C3R(floats.data() + 30, -40, up.data() + 30, -40, {3, 4}), pxlStatusOk);
    ASSERT_EQ(pxliHLSToRGB_32f_C3R(floats.data() + 30, -37, down.data() + 30, -37, {3, 4}), pxlStatusOk);
    EXPECT_EQ(up, down);
}

}  // namespace
}  // namespace pxl::test
