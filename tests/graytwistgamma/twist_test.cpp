// The colour twist: every pixel of every member against a scalar model, the single-row case, the control word.

#include <gtest/gtest.h>
#include <xmmintrin.h>

#include <cmath>
#include <limits>
#include <vector>

#include "support/call.h"
#include "support/targets.h"

namespace pxl::test {
namespace {

using Matrix = std::array<float, 12>;

constexpr float kInf = std::numeric_limits<float>::infinity(), kNaN = std::numeric_limits<float>::quiet_NaN();

// Ties, both ends of each range, sums that only the defined order gives, and results that are no numbers.
const Matrix kMatrices[] = {
    {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0},
    {1, 0, 0, 0.5f, 0, 1, 0, 1.5f, 0, 0, 1, -0.5f},
    {0.5f, 0, 0, 0, 0.25f, 0.25f, 0, 0, 0, 0.5f, 0.5f, -40000},
    {0.393f, 0.769f, 0.189f, 0, 0.349f, 0.686f, 0.168f, 0, 0.272f, 0.534f, 0.131f, 0},
    {3, -2, 1, 100, -3, 2, 0.5f, 0, 0.1f, -4, 2, 255},
    {1e9f, 0, -1e9f, 0, 0, 3e4f, 0, 0, 0, 0, -3e4f, 2.0f},
    {0, 1, 0, 1e8f, 0.1f, 0.1f, 0.1f, -1e8f, 1e8f, 0.3f, -1e8f, 0.7f},
    {0, 0, 0, 2147483520.0f, 0, 0, 0, 2147483648.0f, 0, 0, 0, -2147483904.0f},
    {1, 0, 0, kNaN, kInf, 1, 0, 0, 0, -kInf, 1, 0},
    {kInf, -kInf, 0, 0, 3e38f, 3e38f, 1, 0, -3e38f, 0, -3e38f, 0},
};

// A sample of type T from a sum; the upper end for NaN.
template <class T>
T sampleOf(float sum) {
    constexpr auto low = static_cast<float>(std::numeric_limits<T>::min()),
                   top = static_cast<float>(std::numeric_limits<T>::max());
    const float limited = !(sum < top) ? top : sum < low ? low : sum;
    return static_cast<T>(std::lrint(limited));
}
template <>
Pxl32f sampleOf(float sum) {
    return sum;
}

template <class T>
T twisted(const Matrix& m, int row, const T* c) {
    const float* t = &m[static_cast<std::size_t>(4 * row)];
    const float p0 = static_cast<float>(c[0]) * t[0], p1 = static_cast<float>(c[1]) * t[1],
                p2 = static_cast<float>(c[2]) * t[2];
    const float left = t[3] + p0, right = p2 + p1;
    return sampleOf<T>(left + right);
}

bool same(float a, float b) { return a == b ? std::signbit(a) == std::signbit(b) : std::isnan(a) && std::isnan(b); }

class Twist : public testing::TestWithParam<std::string> {
protected:
    const catalog::Export& function() const { return *catalog::find(GetParam()); }

    template <class T>
    void compare(int width, const Matrix& matrix, Random& random) {
        Call call(function(), {width, 2}, {}, {}, random);
        call.arguments.matrix = matrix.data();
        const int channels = function().destination.layout == "AC4" ? 4 : 3;
        const auto samples = [&](Image& image) {
            std::vector<T> list;
            for (int n = 0; n < 2 * width; ++n) {
                for (int i = 0; i < channels; ++i) list.push_back(image.at<T>(i, n % width, n / width));
            }
            return list;
        };
        const Image::Bytes before = call.destination.bytes();
        const std::vector<T> old = samples(call.destination), in = function().inPlace ? old : samples(call.source);
        onEachTarget([&](Target target) {
            call.destination.restore(before);
            ASSERT_EQ(call.run(), pxlStatusOk);
            const std::vector<T> out = samples(call.destination);
            for (std::size_t at = 0; at < out.size(); ++at) {
                const auto channel = at % static_cast<std::size_t>(channels);
                const T* pixel = &in[at - channel];
                const T expected = channel == 3 ? old[at] : twisted(matrix, static_cast<int>(channel), pixel);
                ASSERT_TRUE(same(out[at], expected))
                    << nameOf(target) << ' ' << call.describe() << " sample " << at << ": " << +out[at] << " for "
                    << +pixel[0] << ' ' << +pixel[1] << ' ' << +pixel[2] << ", not " << +expected;
            }
        });
    }

    void compareAny(int width, const Matrix& matrix, Random& random) {
        switch (function().destination.planes[0].element) {
            case catalog::Element::u8:
                return compare<Pxl8u>(width, matrix, random);
            case catalog::Element::u16:
                return compare<Pxl16u>(width, matrix, random);
            case catalog::Element::s16:
                return compare<Pxl16s>(width, matrix, random);
            default:
                return compare<Pxl32f>(width, matrix, random);
        }
    }
};

TEST_P(Twist, everyPixelOfEveryWidth) {
    Random random(55);
    for (int width = 1; width <= 131 && !HasFatalFailure(); ++width) {
        Matrix matrix;
        for (float& factor : matrix) factor = static_cast<float>(random.between(-1, 1.5));
        compareAny(width, matrix, random);
    }
}

TEST_P(Twist, matrices) {
    Random random(56);
    for (const Matrix& matrix : kMatrices) {
        for (int i = 0; i < 8 && !HasFatalFailure(); ++i) compareAny(1 + random.below(300), matrix, random);
    }
}

TEST_P(Twist, orderOfChecks) {
    EXPECT_EQ(checkOrderFaults(function(), function().destination.planeArray ? "pest" : "pst"), "");
}

std::vector<std::string> members() {
    std::vector<std::string> names;
    for (const std::string stem :
         {"pxliColorTwist_32f", "pxliColorTwist32f_8u", "pxliColorTwist32f_16u", "pxliColorTwist32f_16s"}) {
        for (const char* const layout : {"_C3R", "_C3IR", "_AC4R", "_AC4IR", "_P3R", "_IP3R"}) {
            names.push_back(stem + layout);
        }
    }
    return names;
}
INSTANTIATE_TEST_SUITE_P(Members, Twist, testing::ValuesIn(members()), [](const auto& name) { return name.param; });

TEST(TwistC4, everyPixelOfEveryWidth) {
    const catalog::Export& function = *catalog::find("pxliColorTwist_32f_C4R");
    EXPECT_EQ(checkOrderFaults(function, "pst"), "");
    Random random(57);
    for (int width = 1; width <= 70 && !HasFatalFailure(); ++width) {
        Call call(function, {width, 3}, {}, {}, random);
        onEachTarget([&](Target target) {
            ASSERT_EQ(call.run(), pxlStatusOk);
            for (int n = 0; n < 3 * width; ++n) {
                const auto c = [&](int i) { return call.source.at<float>(i, n % width, n / width); };
                for (int i = 0; i < 4; ++i) {
                    const float* t = call.arguments.matrix + 4 * i;
                    const float sum = ((c(0) * t[0] + c(1) * t[1]) + c(2) * t[2]) + c(3) * t[3];
                    ASSERT_TRUE(same(call.destination.at<float>(i, n % width, n / width), sum))
                        << nameOf(target) << ' ' << call.describe() << " pixel " << n << " channel " << i;
                }
            }
        });
    }
}

// With both steps a quarter of a row only the first row is converted; with other steps all rows are.
TEST(TwistC4, singleRow) {
    constexpr int kWidth = 8, kQuarter = kWidth * 4, kRow = kWidth * 16;
    const float doubled[4][4] = {{2, 0, 0, 0}, {0, 2, 0, 0}, {0, 0, 2, 0}, {0, 0, 0, 2}};
    const struct {
        int srcStep, dstStep, rows;
    } cases[] = {{kQuarter, kQuarter, 1},
                 {kQuarter, kRow, 3},
                 {kRow, kQuarter, 3},
                 {kRow, kRow, 3},
                 {2 * kQuarter, 2 * kQuarter, 3}};
    for (const auto& [srcStep, dstStep, rows] : cases) {
        std::vector<float> src(4 * kWidth * 3, 1.0f), dst(4 * kWidth * 3, -1.0f);
        ASSERT_EQ(pxliColorTwist_32f_C4R(src.data(), srcStep, dst.data(), dstStep, {kWidth, 3}, doubled), pxlStatusOk);
        const auto written = static_cast<std::size_t>((rows - 1) * dstStep + kRow) / sizeof(float);
        for (std::size_t i = 0; i < dst.size(); ++i) {
            ASSERT_EQ(dst[i], i < written ? 2.0f : -1.0f) << srcStep << ' ' << dstStep << " sample " << i;
        }
    }
}

// ---- the control word

constexpr unsigned kFlags = 0x3F, kDenormalsAreZero = 0x40, kFlushToZero = 0x8000;

// Every rounding mode, with and without flags and treatment of denormals.
std::vector<unsigned> controlWords() {
    std::vector<unsigned> words;
    for (const unsigned mode : {_MM_ROUND_NEAREST, _MM_ROUND_DOWN, _MM_ROUND_UP, _MM_ROUND_TOWARD_ZERO}) {
        for (const unsigned other : {0u, kFlags, kDenormalsAreZero | kFlushToZero | 0x11u}) {
            words.push_back(_MM_MASK_MASK | mode | other);
        }
    }
    return words;
}

// The call's status, run with a control word that is there afterwards in `word`.
PxlStatus runWith(Call& call, unsigned& word) {
    const unsigned tests = _mm_getcsr();
    _mm_setcsr(word);
    const PxlStatus status = call.run();
    word = _mm_getcsr();
    _mm_setcsr(tests);
    return status;
}

TEST(ControlWord, integerTwistRoundsToNearestAndRestores) {
    for (const std::string& name : members()) {
        if (name.find("Twist32f") == std::string::npos) continue;
        Random random(58);
        Call call(*catalog::find(name), {77, 2}, {}, {}, random);
        const Image::Bytes before = call.destination.bytes();
        ASSERT_EQ(call.run(), pxlStatusOk);
        const Image::Bytes expected = call.destination.bytes();
        onEachTarget([&](Target target) {
            for (const unsigned word : controlWords()) {
                call.destination.restore(before);
                unsigned after = word;
                EXPECT_EQ(runWith(call, after), pxlStatusOk);
                EXPECT_EQ(after, word) << nameOf(target) << ' ' << name;
                EXPECT_TRUE(call.destination.bytes() == expected) << nameOf(target) << ' ' << name << ", " << word;
            }
        });
    }
}

// Flags that floating point raises are the processor's; all else stays, also where a call is refused.
TEST(ControlWord, nothingElseTouchesIt) {
    for (const catalog::Export& function : catalog::all()) {
        Random random(59);
        const PxlSize size = {function.minimumWidth + 40, function.minimumHeight + 2};
        Call call(function, size, {}, {}, random);
        for (const unsigned word : controlWords()) {
            for (const int height : {size.height, 0}) {
                call.arguments.size.height = height;
                unsigned after = word;
                runWith(call, after);
                EXPECT_EQ(after & ~kFlags, word & ~kFlags) << function.name;
            }
        }
    }
}

}  // namespace
}  // namespace pxl::test
