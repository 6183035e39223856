// Gamma: every sample of every member against the curve computed here, in long double for the tables.

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>

#include "support/call.h"
#include "support/targets.h"

namespace pxl::test {
namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity(), kNaN = std::numeric_limits<float>::quiet_NaN();

enum Direction { forward, inverse };

template <class Real>
Real curve(Direction direction, Real n) {
    if (direction == forward) {
        if (n < Real{0.018f}) return Real{4.5f} * n;
        return Real{1.099f} * std::pow(n, Real{0.45f}) - Real{0.099f};
    }
    if (n < Real{0.0812f}) return Real{0.2222222f} * n;
    return std::pow(Real{0.9099181f} * n + Real{0.09008189f}, Real{2.2222223f});
}

// The table of codes 0..last.
std::vector<int> codes(Direction direction, int last) {
    std::vector<int> table;
    for (int x = 0; x <= last; ++x) {
        const long double n = static_cast<long double>(x) / last;
        // 4.5 x has ties, which go to even: in integers
        const bool linear = direction == forward && n < 0.018L;
        table.push_back(linear ? 9 * x / 2 + (x % 4 == 3)
                               : static_cast<int>(std::floor(last * curve(direction, n) + 0.5L)));
    }
    return table;
}

// The distance of a float from an exact value in units in the last place of that value.
double unitsApart(float result, double exact) {
    if (std::isinf(result)) return result > 0 && exact > 0x1.ffffffp127 ? 0 : kInfinity;
    int exponent;
    std::frexp(exact, &exponent);
    return std::abs(result - exact) / std::ldexp(1, std::max(exponent - 24, -149));
}

class Gamma : public testing::TestWithParam<std::string_view> {
protected:
    const catalog::Export& function() const { return *catalog::find(GetParam()); }
    catalog::Element element() const { return function().destination.planes[0].element; }
    Direction direction() const { return GetParam().find("Fwd") != GetParam().npos ? forward : inverse; }

    // Fills the source with samples of type T by number (channels of a pixel follow each other), converts it on each
    // target and calls check(old sample, new sample) for all colours; the fourth channel must keep its value.
    template <class T, class Value, class Check>
    void convert(PxlSize size, float low, float high, const Value& value, const Check& check) {
        Random random(7);
        Call call(function(), size, {}, {}, random);
        call.arguments.rangeLow = low;
        call.arguments.rangeHigh = high;
        Image& source = function().inPlace ? call.destination : call.source;
        const int channels = function().destination.layout == "AC4" ? 4 : 3;
        const auto each = [&](auto action) {
            for (int i = 0; i < size.width * size.height; ++i) {
                for (int c = 0; c < channels; ++c) action(3 * i + c, c, i % size.width, i / size.width);
            }
        };
        onEachTarget([&](Target target) {
            constexpr T kOld = 77;
            each([&](int, int c, int x, int y) { call.destination.at<T>(c, x, y) = kOld; });
            each([&](int n, int c, int x, int y) {
                if (c < 3) source.at<T>(c, x, y) = value(n);
            });
            ASSERT_EQ(call.run(), pxlStatusOk);
            each([&](int n, int c, int x, int y) {
                const T out = call.destination.at<T>(c, x, y);
                const bool right = c == 3 ? out == kOld : check(value(n), out);
                ASSERT_TRUE(right) << +value(n) << " to " << +out << " at " << x << ", " << y << " of "
                                   << call.describe() << ", " << nameOf(target);
            });
        });
    }

    template <class T>
    void allCodes(PxlSize size) {
        constexpr int kLast = std::numeric_limits<T>::max();
        const std::vector<int> table = codes(direction(), kLast);
        convert<T>(
            size, 0, 1, [](int n) { return static_cast<T>(n); }, [&](T in, T out) { return table[in] == out; });
    }
};

TEST_P(Gamma, everyMember) {
    if (element() == catalog::Element::u8) return allCodes<Pxl8u>({87, 8});
    if (element() == catalog::Element::u16) return allCodes<Pxl16u>({257, 171});
    // one row a little longer than the blocks of 384 samples, of pixels of four, of three and of planes
    for (const int width : {3, 97, 131, 387}) {
        for (const auto& range : {std::pair{0.0f, 1.0f}, {-2.0f, 6.0f}, {16.0f, 235.0f}}) {
            // not a structured binding: Clang 14 captures none
            const float low = range.first, high = range.second, span = high - low;
            const auto sample = [&](int n) {  // from below the range to a little above; some far above
                const float part = static_cast<float>(n * 37 % 500);
                return low + span * (n % 101 == 100 ? part : part / 400 - 0.1f);
            };
            convert<Pxl32f>({width, 2}, low, high, sample, [&](float in, float out) {
                const float n = (in - low) / span;
                const double exact = curve<double>(direction(), n) * span;
                return std::abs(out - (exact + low)) <= std::abs(exact) * 0x4p-23 + (span + std::abs(low)) * 0x1p-23;
            });
        }
    }
}

TEST_P(Gamma, orderOfChecks) {
    EXPECT_EQ(checkOrderFaults(function(), element() == catalog::Element::f32 ? "rpest" : "pest"), "");
}

std::vector<std::string_view> members() {
    std::vector<std::string_view> names;
    for (const catalog::Export& function : catalog::all()) {
        if (function.family == "Gamma") names.push_back(function.name);
    }
    return names;
}
INSTANTIATE_TEST_SUITE_P(Members, Gamma, testing::ValuesIn(members()),
                         [](const auto& member) { return std::string(member.param); });

TEST(GammaFamily, has36Members) { EXPECT_EQ(members().size(), 36u); }

// The ends of the tables and the branch points, as published values.
TEST(GammaTables, pinned) {
    const auto words = [](auto function, std::array<Pxl16u, 12> in) {
        EXPECT_EQ(function(in.data(), 24, in.data(), 24, {4, 1}), pxlStatusOk);
        return in;
    };
    using Words = std::array<Pxl16u, 12>;
    EXPECT_EQ(words(pxliGammaFwd_16u_C3R, {0, 1, 2, 3, 4, 5, 6, 7, 1179, 65533, 65534, 65535}),
              (Words{0, 4, 9, 14, 18, 22, 27, 32, 5306, 65534, 65535, 65535}));
    // the step down at 5322 is deliberate
    EXPECT_EQ(words(pxliGammaInv_16u_C3R, {0, 1, 2, 3, 6, 7, 5309, 5321, 5322, 65533, 65534, 65535}),
              (Words{0, 0, 0, 1, 1, 2, 1180, 1182, 1179, 65531, 65533, 65535}));
    const auto bytes = [](auto function, std::array<Pxl8u, 9> in) {
        EXPECT_EQ(function(in.data(), 9, in.data(), 9, {3, 1}), pxlStatusOk);
        return in;
    };
    using Bytes = std::array<Pxl8u, 9>;
    EXPECT_EQ(bytes(pxliGammaFwd_8u_C3R, {0, 1, 2, 3, 4, 5, 253, 254, 255}),
              (Bytes{0, 4, 9, 14, 18, 23, 254, 255, 255}));
    EXPECT_EQ(bytes(pxliGammaInv_8u_C3R, {0, 1, 2, 3, 6, 7, 253, 254, 255}), (Bytes{0, 0, 0, 1, 1, 2, 251, 253, 255}));
}

using FloatFunction = decltype(&pxliGammaFwd_32f_C3R);
constexpr std::pair<FloatFunction, Direction> kFloats[] = {{pxliGammaFwd_32f_C3R, forward},
                                                           {pxliGammaInv_32f_C3R, inverse}};

// The largest error in units in the last place over a range of floats, of which every `stride`-th.
TEST(GammaFloats, accuracy) {
    struct Part {
        float first, last;
        unsigned stride;
        double limits[2];
    };
    const Part parts[] = {
        {0x1p-149f, 0x1p-7f, 4999, {1, 1}}, {0x1p-7f, 1, 23, {1.4, 2.3}}, {0.0179f, 0.0181f, 1, {1.4, 1}},
        {0.0811f, 0.0813f, 1, {1.4, 2.3}},  {1, 2, 11, {1.4, 2.7}},       {2, 0x1.fffffep127f, 4999, {1.4, 4.5}}};
    const auto bits = [](float f) { return std::bit_cast<std::uint32_t>(f); };
    for (const Part& part : parts) {
        std::vector<float> in;
        for (auto b = bits(part.first); b <= bits(part.last); b += part.stride) in.push_back(std::bit_cast<float>(b));
        in.resize(in.size() / 3 * 3 + 3, part.last);
        const PxlSize size = {static_cast<int>(in.size() / 3), 1};
        for (const auto& [convert, direction] : kFloats) {
            std::vector<float> out(in.size());
            ASSERT_EQ(convert(in.data(), 1, out.data(), 1, size, 0, 1), pxlStatusOk);
            double worst = 0;
            float at = 0;
            for (std::size_t i = 0; i < in.size(); ++i) {
                const double error = unitsApart(out[i], curve<double>(direction, in[i]));
                if (error > worst) worst = error, at = in[i];
            }
            EXPECT_LE(worst, part.limits[direction]) << "direction " << direction << " at " << at;
        }
    }
}

TEST(GammaFloats, specialValues) {
    onEachTarget([](Target target) {
        SCOPED_TRACE(nameOf(target));
        for (const auto& member : kFloats) {
            const FloatFunction convert = member.first;
            const Direction direction = member.second;
            const float threshold = direction == forward ? 0.018f : 0.0812f,
                        slope = direction == forward ? 4.5f : 0.2222222f;
            // among ordinary values, in each place of a group
            for (std::size_t place = 0; place < 30; ++place) {
                const auto result = [&](float x, float low = 0, float high = 1) {
                    std::array<float, 30> row;
                    row.fill(0.25f);
                    row[place] = x;
                    EXPECT_EQ(convert(row.data(), 120, row.data(), 120, {10, 1}, low, high), pxlStatusOk);
                    return row[place];
                };
                EXPECT_EQ(result(0), 0);
                EXPECT_EQ(result(1), 1);
                EXPECT_EQ(result(-100), -100 * slope);
                EXPECT_EQ(result(std::nextafter(threshold, 0.0f)), std::nextafter(threshold, 0.0f) * slope);
                EXPECT_NE(result(threshold), threshold * slope);
                EXPECT_EQ(result(kInfinity), kInfinity);
                EXPECT_EQ(result(-kInfinity), -kInfinity);
                EXPECT_EQ(result(235, 16, 235), 235);
                EXPECT_EQ(result(16, 16, 235), 16);
                for (const float nan : {kNaN, -kNaN}) EXPECT_TRUE(std::isnan(result(nan)));
                EXPECT_TRUE(std::isnan(result(0.5f, 0, kNaN)));
            }
        }
    });
}

// A row that starts a little before or after the row it is made from comes out as sample after sample would.
template <class T, class Function>
void expectSequence(Function convert, int samplesAPixel) {
    constexpr int kPixels = 150, kMargin = 40;
    const std::size_t samples = static_cast<std::size_t>(kPixels * samplesAPixel);
    onEachTarget([&](Target target) {
        for (const int shift : {-33, -16, -3, -1, 0, 1, 2, 5, 15, 16, 31, 40}) {
            std::vector<T> row(samples + 2 * kMargin);
            for (std::size_t i = 0; i < row.size(); ++i)
                row[i] = static_cast<T>(i * 40503 % 251) / static_cast<T>(std::is_same_v<T, float> ? 250 : 1);
            std::vector<T> expected = row;
            const auto destination = [&](std::vector<T>& in) { return in.data() + kMargin + shift; };
            for (std::size_t i = 0; i < samples; ++i) {
                if (i % 4 == 3 && samplesAPixel == 4) continue;
                T pixel[4] = {expected[kMargin + i]};
                ASSERT_EQ(convert(pixel, 16, pixel, 16, {1, 1}), pxlStatusOk);
                destination(expected)[i] = pixel[0];
            }
            ASSERT_EQ(convert(row.data() + kMargin, 4000, destination(row), 4000, {kPixels, 1}), pxlStatusOk);
            EXPECT_EQ(row, expected) << "shifted by " << shift << ", " << nameOf(target);
        }
    });
}

TEST(GammaOverlap, sampleAfterSample) {
    const auto inUnits = [](auto function) {
        return [=](const float* src, int srcStep, float* dst, int dstStep, PxlSize size) {
            return function(src, srcStep, dst, dstStep, size, 0, 1);
        };
    };
    expectSequence<Pxl8u>(pxliGammaFwd_8u_C3R, 3);
    expectSequence<Pxl8u>(pxliGammaInv_8u_AC4R, 4);
    expectSequence<Pxl16u>(pxliGammaFwd_16u_C3R, 3);
    expectSequence<Pxl16u>(pxliGammaInv_16u_AC4R, 4);
    expectSequence<Pxl32f>(inUnits(pxliGammaFwd_32f_C3R), 3);
    expectSequence<Pxl32f>(inUnits(pxliGammaInv_32f_AC4R), 4);
}

}  // namespace
}  // namespace pxl::test
