// YCoCg: every pixel of every member against models in wide integers, the reversible identity, the real-valued
// equations.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "support/call.h"
#include "support/targets.h"

namespace pxl::test {
namespace {

using catalog::Element;
using Triple = std::array<std::int64_t, 3>;  // R, G, B or Y, Co, Cg

std::int64_t floorDivided(std::int64_t a, std::int64_t by) { return a / by - (a % by < 0); }

Triple encodePlain(Triple p) {
    const auto [r, g, b] = p;
    return {floorDivided(r + 2 * g + b + 2, 4), floorDivided(r - b + 1, 2), floorDivided(2 * g - r - b + 2, 4)};
}
Triple decodePlain(Triple p) {
    const auto [y, co, cg] = p;
    return {y + co - cg, y + cg, y - co - cg};
}
Triple encodeReversible(Triple p) {
    const auto [r, g, b] = p;
    const std::int64_t co = r - b, t = b + floorDivided(co, 2), cg = g - t;
    return {t + floorDivided(cg, 2), co, cg};
}
Triple decodeReversible(Triple p) {
    const auto [y, co, cg] = p;
    const std::int64_t t = y - floorDivided(cg, 2), b = t - floorDivided(co, 2);
    return {b + co, cg + t, b};
}

std::int64_t get(Image& image, Element element, int channel, int x, int y) {
    switch (element) {
        case Element::u8:
            return image.at<Pxl8u>(channel, x, y);
        case Element::s16:
            return image.at<Pxl16s>(channel, x, y);
        default:
            return image.at<Pxl32s>(channel, x, y);
    }
}
void set(Image& image, Element element, int channel, int x, int y, std::int64_t value) {
    switch (element) {
        case Element::u8:
            image.at<Pxl8u>(channel, x, y) = static_cast<Pxl8u>(value);
            break;
        case Element::s16:
            image.at<Pxl16s>(channel, x, y) = static_cast<Pxl16s>(value);
            break;
        default:
            image.at<Pxl32s>(channel, x, y) = static_cast<Pxl32s>(value);
    }
}

// One side of a function: its samples in R, G, B or Y, Co, Cg order.
struct Side {
    const catalog::ImageShape& shape;
    Element element = shape.planes[0].element;
    int storage(int i) const { return shape.space.ends_with("BGR") ? 2 - i : i; }
    Triple pixel(Image& image, int x, int y) const {
        return {get(image, element, storage(0), x, y), get(image, element, storage(1), x, y),
                get(image, element, storage(2), x, y)};
    }
    void setPixel(Image& image, int x, int y, Triple p) const {
        for (int i = 0; i < 3; ++i) set(image, element, storage(i), x, y, p[static_cast<std::size_t>(i)]);
    }
};

class Ycocg : public testing::TestWithParam<std::string> {
protected:
    const catalog::Export& function = *catalog::find(GetParam());
    const Side source{function.source}, destination{function.destination};
    const bool decodes = function.source.space == "YCoCg";
    const bool offset = source.element == destination.element && source.element == Element::u8;
    const bool reversible = GetParam().find("_Rev") != std::string::npos;

    Triple model(Triple in) const {
        if (decodes && offset) in = {in[0], in[1] - 128, in[2] - 128};
        Triple out = reversible ? (decodes ? decodeReversible(in) : encodeReversible(in))
                                : (decodes ? decodePlain(in) : encodePlain(in));
        for (std::size_t i = 0; i < 3; ++i) {
            auto& v = out[i];
            if (decodes) v = static_cast<Pxl32s>(v);
            if (decodes && destination.element == Element::u8) v = std::clamp<std::int64_t>(v, 0, 255);
            if (decodes && destination.element == Element::s16) v = std::clamp<std::int64_t>(v, -32768, 32767);
            if (!decodes && offset && i > 0) v = std::min<std::int64_t>(v + 128, 255);
            if (!decodes && destination.element == Element::s16) v = static_cast<Pxl16s>(v);
        }
        return out;
    }

    void compare(Call& call) {
        const PxlSize size = call.arguments.size;
        onEachTarget([&](Target target) {
            ASSERT_EQ(call.run(), pxlStatusOk);
            for (int n = 0; n < size.width * size.height; ++n) {
                const int x = n % size.width, y = n / size.width;
                const Triple in = source.pixel(call.source, x, y);
                ASSERT_EQ(destination.pixel(call.destination, x, y), model(in))
                    << nameOf(target) << " pixel " << x << ", " << y << " of " << call.describe() << " from "
                    << testing::PrintToString(in);
                if (function.destination.layout == "C4") {
                    ASSERT_EQ(get(call.destination, destination.element, 3, x, y), call.arguments.alpha);
                }
            }
        });
    }
};

// Samples of the whole range, and within the ranges in which sums do not saturate.
TEST_P(Ycocg, everyPixelOfEveryWidth) {
    Random random(4711);
    std::vector<int> widths = {95, 96, 97, 127, 128, 129, 500};
    for (int width = 1; width <= 72; ++width) widths.push_back(width);
    for (const int width : widths) {
        // with gaps between the rows of both sides, of one, of none
        const auto gap = [&] { return Placement{.padding = random.below(2) * 7}; };
        Call call(function, {width, 3}, gap(), gap(), random);
        if (function.destination.layout == "C4" && destination.element == Element::s16) call.arguments.alpha -= 30000;
        for (int x = 0; x < width; ++x) {
            for (int i = 0; i < 3; ++i) {
                set(call.source, source.element, i, x, 1, random.below(400) - 150);
                set(call.source, source.element, i, x, 2, random.below(80000) - 40000);
            }
        }
        compare(call);
        if (HasFatalFailure()) return;
    }
}

// Every combination of the ends of all ranges.
TEST_P(Ycocg, extremes) {
    const std::vector<std::int64_t> values = {
        INT32_MIN, INT32_MIN + 1, -65536,   -32769, -32768, -32767, -16385, -16384, -2,    -1,    0,     1,
        2,         127,           128,      129,    254,    255,    256,    16383,  16384, 32766, 32767, 32768,
        65535,     INT32_MAX - 1, INT32_MAX};
    const auto count = static_cast<int>(values.size());
    Random random(4712);
    Call call(function, {count * count, count}, {}, {}, random);
    for (int y = 0; y < count; ++y) {
        for (int x = 0; x < count * count; ++x) {
            const auto value = [&](int i) { return values[static_cast<std::size_t>(i)]; };
            source.setPixel(call.source, x, y, {value(x % count), value(x / count), value(y)});
        }
    }
    compare(call);
}

TEST_P(Ycocg, orderOfChecks) { EXPECT_EQ(checkOrderFaults(function, "pes"), ""); }

std::vector<std::string> members() {
    std::vector<std::string> names = {"pxliRGBToYCoCg_8u_C3P3R", "pxliYCoCgToRGB_8u_P3C3R"};
    for (const std::string form : {"", "_Rev"}) {
        for (const std::string n : {"3", "4"}) {
            names.push_back("pxliBGRToYCoCg" + form + "_8u16s_C" + n + "P3R");
            names.push_back("pxliYCoCgToBGR" + form + "_16s8u_P3C" + n + "R");
            for (const std::string type : {"16s", "16s32s"})
                names.push_back("pxliSBGRToYCoCg" + form + "_" + type + "_C" + n + "P3R");
            for (const std::string type : {"16s", "32s16s"})
                names.push_back("pxliYCoCgToSBGR" + form + "_" + type + "_P3C" + n + "R");
        }
    }
    return names;
}
INSTANTIATE_TEST_SUITE_P(Members, Ycocg, testing::ValuesIn(members()), [](const auto& name) { return name.param; });

// Which members have nothing to do in an empty region, and which refuse it.
TEST(YcocgSize, emptyRegion) {
    for (const std::string& name : members()) {
        const catalog::Export& function = *catalog::find(name);
        const bool accepts =
            name == "pxliYCoCgToRGB_8u_P3C3R" || name.starts_with("pxliYCoCgToBGR") || name.starts_with("pxliSBGR");
        for (const PxlSize size : {PxlSize{0, 4}, {4, 0}, {-3, -5}, {-70000, INT32_MAX}, {INT32_MAX, -70000}}) {
            Random random(4713);
            Call call(function, {4, 4}, {}, {}, random);
            const Image::Bytes before = call.destination.bytes();
            call.arguments.size = size;
            EXPECT_EQ(call.run(), accepts ? pxlStatusOk : pxlStatusBadSize) << name;
            EXPECT_TRUE(call.destination.bytes() == before) << name;
        }
    }
}

// ---- what the transforms are for

constexpr int kAll = 1 << 16;  // pixels of one red

// All 2^24 pixels, on each target.
TEST(YcocgReversible, bytesComeBack) {
    std::vector<Pxl8u> in(3 * kAll), out(3 * kAll);
    std::vector<Pxl16s> samples(3 * kAll);
    Pxl16s* planes[3] = {samples.data(), samples.data() + kAll, samples.data() + 2 * kAll};
    const Pxl16s* constPlanes[3] = {planes[0], planes[1], planes[2]};
    for (std::size_t i = 0; i < kAll; ++i) {
        in[3 * i] = static_cast<Pxl8u>(i);
        in[3 * i + 1] = static_cast<Pxl8u>(i >> 8);
    }
    for (int red = 0; red < 256; ++red) {
        for (std::size_t i = 0; i < kAll; ++i) in[3 * i + 2] = static_cast<Pxl8u>(red);
        onEachTarget([&](Target target) {
            std::fill(out.begin(), out.end(), Pxl8u{0});
            pxliBGRToYCoCg_Rev_8u16s_C3P3R(in.data(), 768, planes, 512, {256, 256});
            pxliYCoCgToBGR_Rev_16s8u_P3C3R(constPlanes, 512, out.data(), 768, {256, 256});
            ASSERT_TRUE(in == out) << nameOf(target) << ", red " << red;
        });
    }
}

// 32-bit planes bring back any samples; 16-bit planes those whose differences fit.
TEST(YcocgReversible, signedSamplesComeBack) {
    const struct {
        const char *there, *back;
        int limit;
    } cases[] = {
        {"pxliSBGRToYCoCg_Rev_16s32s_C3P3R", "pxliYCoCgToSBGR_Rev_32s16s_P3C3R", 32768},
        {"pxliSBGRToYCoCg_Rev_16s_C3P3R", "pxliYCoCgToSBGR_Rev_16s_P3C3R", 16384},
    };
    for (const auto& [thereName, backName, limit] : cases) {
        const catalog::Export &there = *catalog::find(thereName), &back = *catalog::find(backName);
        Random random(4714);
        Call encode(there, {5000, 3}, {}, {}, random), decode(back, {5000, 3}, {}, {}, random);
        for (int n = 0; n < 5000 * 3; ++n) {
            for (int i = 0; i < 3; ++i) {
                const int value =
                    random.oneIn(3) ? (random.oneIn(2) ? -limit : limit - 1) : random.below(2 * limit) - limit;
                encode.source.at<Pxl16s>(i, n % 5000, n / 5000) = static_cast<Pxl16s>(value);
            }
        }
        ASSERT_EQ(encode.run(), pxlStatusOk);
        decode.arguments.source = encode.arguments.destination;
        ASSERT_EQ(decode.run(), pxlStatusOk);
        for (int n = 0; n < 5000 * 3; ++n) {
            for (int i = 0; i < 3; ++i) {
                ASSERT_EQ(decode.destination.at<Pxl16s>(i, n % 5000, n / 5000),
                          encode.source.at<Pxl16s>(i, n % 5000, n / 5000))
                    << thereName;
            }
        }
    }
}

// Plain planes are the real-valued transform, rounded; of the reversible ones Co and Cg are it times 2.
TEST(YcocgPlanes, distanceToTheEquations) {
    for (const std::string name : {"pxliBGRToYCoCg_8u16s_C3P3R", "pxliSBGRToYCoCg_16s32s_C3P3R",
                                   "pxliBGRToYCoCg_Rev_8u16s_C3P3R", "pxliSBGRToYCoCg_Rev_16s32s_C3P3R"}) {
        const catalog::Export& function = *catalog::find(name);
        const Side source{function.source}, destination{function.destination};
        const bool reversible = name.find("_Rev") != std::string::npos;
        Random random(4715);
        Call call(function, {2000, 4}, {}, {}, random);
        ASSERT_EQ(call.run(), pxlStatusOk);
        double worst[3] = {};
        for (int n = 0; n < 8000; ++n) {
            const Triple p = source.pixel(call.source, n % 2000, n / 2000),
                         out = destination.pixel(call.destination, n % 2000, n / 2000);
            const auto r = static_cast<double>(p[0]), g = static_cast<double>(p[1]), b = static_cast<double>(p[2]);
            const double scale = reversible ? 2 : 1;
            const double exact[3] = {r / 4 + g / 2 + b / 4, scale * (r - b) / 2, scale * (2 * g - r - b) / 4};
            for (std::size_t i = 0; i < 3; ++i)
                worst[i] = std::max(worst[i], std::abs(static_cast<double>(out[i]) - exact[i]));
        }
        EXPECT_EQ(worst[0], reversible ? 0.75 : 0.5) << name;
        EXPECT_EQ(worst[1], reversible ? 0 : 0.5) << name;
        EXPECT_EQ(worst[2], 0.5) << name;
    }
}

TEST(YcocgPlanes, knownPixels) {
    const Pxl8u rgb[] = {255, 0, 0, 90, 90, 90, 0, 0, 255, 1, 0, 0, 0, 255, 0}, red[] = {0, 0, 1, 77};
    Pxl8u y[5], co[5], cg[5];
    Pxl8u* planes[3] = {y, co, cg};
    ASSERT_EQ(pxliRGBToYCoCg_8u_C3P3R(rgb, 15, planes, 5, {5, 1}), pxlStatusOk);
    EXPECT_EQ((std::array{y[0], co[0], cg[0]}), (std::array<Pxl8u, 3>{64, 255, 64}));
    EXPECT_EQ((std::array{y[1], co[1], cg[1]}), (std::array<Pxl8u, 3>{90, 128, 128}));
    EXPECT_EQ((std::array{y[2], co[2], cg[2]}), (std::array<Pxl8u, 3>{64, 1, 64}));
    EXPECT_EQ((std::array{y[4], co[4], cg[4]}), (std::array<Pxl8u, 3>{128, 128, 255}));

    // not invertible: what is missing is below 0 and the limit hides it
    Pxl16s wide[3];
    Pxl16s* widePlanes[3] = {wide, wide + 1, wide + 2};
    const Pxl16s* constPlanes[3] = {wide, wide + 1, wide + 2};
    ASSERT_EQ(pxliBGRToYCoCg_8u16s_C4P3R(red, 4, widePlanes, 2, {1, 1}), pxlStatusOk);
    EXPECT_EQ((std::array{wide[0], wide[1], wide[2]}), (std::array<Pxl16s, 3>{0, 1, 0}));
    Pxl8u bgra[4];
    ASSERT_EQ(pxliYCoCgToBGR_16s8u_P3C4R(constPlanes, 2, bgra, 4, {1, 1}, 200), pxlStatusOk);
    EXPECT_EQ((std::array{bgra[0], bgra[1], bgra[2], bgra[3]}), (std::array<Pxl8u, 4>{0, 0, 1, 200}));
    Pxl16s signedBgr[3];
    ASSERT_EQ(pxliYCoCgToSBGR_16s_P3C3R(constPlanes, 2, signedBgr, 6, {1, 1}), pxlStatusOk);
    EXPECT_EQ((std::array{signedBgr[0], signedBgr[1], signedBgr[2]}), (std::array<Pxl16s, 3>{-1, 0, 1}));
}

}  // namespace
}  // namespace pxl::test
