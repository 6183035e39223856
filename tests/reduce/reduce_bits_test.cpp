// ReduceBits: every member against loops written pixel by pixel from the formulas, row after row.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <vector>

#include "pxlcc.h"
#include "support/random.h"
#include "support/targets.h"

namespace pxl::test {
namespace {

constexpr int kDithers[] = {pxlDitherNone, pxlDitherFS, pxlDitherJJN, pxlDitherStucki, pxlDitherBayer};

// ---- the model

std::vector<std::int64_t> randomNumbers() {
    const auto low32 = [](std::int64_t value) { return value & 0xFFFFFFFF; };
    const auto signed32 = [&](std::int64_t value) { return (low32(value) ^ 0x80000000) - 0x80000000; };
    std::int64_t w0 = 1131199209, w1 = 0, w2 = 1013904243, w3 = 924302730, borrow = -1;
    std::vector<std::int64_t> numbers;
    for (int i = 0; i < 1024; ++i) {
        w0 = low32(w0 * 69069 + 1013904243);
        std::int64_t d = signed32(w2 - w3 + borrow);
        borrow = d < 0 ? -1 : 0;
        if (d < 0) d -= 18;
        w3 = w2, w2 = w1, w1 = low32(d);
        numbers.push_back(signed32(d + w0));
    }
    return numbers;
}

struct Noise {
    std::vector<float> value;
    std::vector<int> displacement;
    Noise(float low, float high) {
        static const std::vector<std::int64_t> numbers = randomNumbers();
        for (const std::int64_t number : numbers) {
            const double mean = (double{high} + low) * 0.5, scale = (double{high} - low) * 2.3283064365386963e-10;
            value.push_back(static_cast<float>(static_cast<double>(number) * scale + mean));
            displacement.push_back(static_cast<int>(std::nearbyint(static_cast<double>(number) * 0x1p-22 + 512)));
        }
    }
    float at(int x, int down) const {
        return value[static_cast<std::size_t>((displacement[static_cast<std::size_t>(x & 1023)] + down + x) & 1023)];
    }
};

struct Weight {
    int dx, dy;
    float weight;
};
struct Filter {
    std::vector<Weight> weights;
    float scale;
};
const Filter& filterOf(int type) {
    static const Filter fs = {{{-1, 0, 7}, {-1, -1, 1}, {0, -1, 5}, {1, -1, 3}}, 0.0625f};
    static const Filter jjn = {{{-1, 0, 7},
                                {-2, 0, 5},
                                {-2, -1, 3},
                                {-1, -1, 5},
                                {0, -1, 7},
                                {1, -1, 5},
                                {2, -1, 3},
                                {-2, -2, 1},
                                {-1, -2, 3},
                                {0, -2, 5},
                                {1, -2, 3},
                                {2, -2, 1}},
                               0.020833334f};
    static const Filter stucki = {{{-1, 0, 8},
                                   {-2, 0, 4},
                                   {-2, -1, 2},
                                   {-1, -1, 4},
                                   {0, -1, 8},
                                   {1, -1, 4},
                                   {2, -1, 2},
                                   {-2, -2, 1},
                                   {-1, -2, 2},
                                   {0, -2, 4},
                                   {1, -2, 2},
                                   {2, -2, 1}},
                                  0.023809524f};
    return type == pxlDitherFS ? fs : type == pxlDitherJJN ? jjn : stucki;
}

// One channel of errors with zeros around.
template <class Error>
class Errors {
public:
    Errors(int width, int height)
        : width_(width + 4), all_(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height + 2)) {}
    Error& at(int x, int y) {
        return all_[static_cast<std::size_t>(y + 2) * static_cast<std::size_t>(width_) +
                    static_cast<std::size_t>(x + 2)];
    }

private:
    int width_;
    std::vector<Error> all_;
};

struct Mode {
    int type, noise, levels;
};

constexpr int kBayer[4][4] = {{0, 8, 2, 10}, {12, 4, 14, 6}, {3, 11, 1, 9}, {15, 7, 13, 5}};

template <class S, class D>
class Model {
public:
    Model(Mode mode, int channels) : mode_(mode), channels_(channels), l_(static_cast<float>(mode.levels - 1)) {
        step_ = kFloat || mode.type == pxlDitherNone ? 1.0f / l_
                : kBytes                             ? (65280.0f / l_) * 0.00390625f
                                                     : 65535.0f / l_;
        inverse_ = kFloat || mode.type == pxlDitherNone ? l_ : l_ * (kBytes ? 0.003921569f : 1.5259022e-5f);
    }

    void run(const std::vector<S>& src, std::vector<D>& dst, int width, int height, int processed) {
        const auto index = [&](int x, int y, int c) {
            return (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)) *
                       static_cast<std::size_t>(channels_) +
                   static_cast<std::size_t>(c);
        };
        const float percent = static_cast<float>(mode_.noise) * 0.01f;
        const bool ordered = mode_.type == pxlDitherBayer;
        const Noise noise = ordered ? Noise(-percent, percent)
                                    : Noise(static_cast<float>(50 - mode_.noise) * 3.90625e-5f * (step_ * 256),
                                            static_cast<float>(50 + mode_.noise) * 3.90625e-5f * (step_ * 256));
        for (int c = 0; c < processed; ++c) {
            Errors<float> errors(width, height);
            for (int y = 0; y < height; ++y) {
                for (int x = 0; x < width; ++x) {
                    const S s = src[index(x, y, c)];
                    D& out = dst[index(x, y, c)];
                    if (mode_.type == pxlDitherNone) {
                        out = nearest(s);
                    } else if (ordered) {
                        const float matrix = static_cast<float>(kBayer[y % 4][x % 4]) / 15.0f;
                        float error;
                        out = level(work(s), (mode_.noise > 0 ? matrix + noise.at(x, y) : matrix) * step_, 0, error);
                    } else {
                        const Filter& filter = filterOf(mode_.type);
                        float sum = 0;
                        bool first = true;
                        for (const Weight& w : filter.weights) {
                            const float term = w.weight * errors.at(x + w.dx, y + w.dy);
                            sum = first ? term : sum + term;
                            first = false;
                        }
                        out = level(work(s) + sum * filter.scale, mode_.noise > 0 ? noise.at(x, 2 * y) : step_ * 0.5f,
                                    kFloat ? 0.5f : 0, errors.at(x, y));
                    }
                }
            }
        }
    }

private:
    static constexpr bool kFloat = std::is_same_v<S, float>, kBytes = sizeof(S) == 1;
    static constexpr bool kSignedOut = std::is_same_v<D, Pxl16s>;
    static constexpr int kLargest = sizeof(D) == 1 ? 255 : 65535;

    static float work(S s) { return std::is_same_v<S, Pxl16s> ? static_cast<float>(s) + 32768 : static_cast<float>(s); }
    static D output(long from0) {
        return static_cast<D>(std::clamp(from0, 0L, long{kLargest}) - (kSignedOut ? 32768 : 0));
    }

    float round(float v, float threshold) const {
        const auto k = static_cast<float>(static_cast<long>(v * inverse_));
        const float q = k * step_;
        return v - q > threshold ? q + step_ : q;
    }
    D nearest(S s) const {
        float x = work(s);
        if (kFloat && !(x > 0)) return output(0);
        if (kFloat && x > 2) return output(kLargest);
        if (!kFloat) x = x * (kBytes ? 0.003921569f : 1.5259022e-5f);
        return output(static_cast<long>(round(x, step_ * 0.5f) * static_cast<float>(kLargest)));
    }
    D level(float v, float threshold, float half, float& error) const {
        error = 0;
        if (v >= (kFloat ? 1.0f : kBytes ? 255.0f : 65535.0f)) return output(kLargest);
        if (!(v >= (kFloat ? 1.1920929e-7f : 0.0f))) return output(0);
        const float q = round(v, threshold);
        error = v - q;
        if (kFloat) return output(static_cast<long>(q * static_cast<float>(kLargest) + half));
        return output(sizeof(D) < sizeof(S) ? static_cast<long>(q) >> 8 : static_cast<long>(q));
    }

    Mode mode_;
    int channels_;
    float l_, step_, inverse_;
};

// ---- the members

template <class S, class D>
using Function = PxlStatus (*)(const S*, int, D*, int, PxlSize, int, PxlDitherType, int, Pxl8u*);
template <class S, class D>
struct Member {
    Function<S, D> function;
    int channels, processed;
    PxlChannels code;
};

#define MEMBERS(types, S, D)                                                                    \
    for (const Member<S, D>& member : {Member<S, D>{pxliReduceBits_##types##_C1R, 1, 1, pxlC1}, \
                                       {pxliReduceBits_##types##_C3R, 3, 3, pxlC3},             \
                                       {pxliReduceBits_##types##_C4R, 4, 4, pxlC4},             \
                                       {pxliReduceBits_##types##_AC4R, 4, 3, pxlAC4}})          \
        action(member);

template <class Action>
void forEachMember(Action action) {
    MEMBERS(8u, Pxl8u, Pxl8u)
    MEMBERS(16u, Pxl16u, Pxl16u)
    MEMBERS(16s, Pxl16s, Pxl16s)
    MEMBERS(16u8u, Pxl16u, Pxl8u)
    MEMBERS(16s8u, Pxl16s, Pxl8u)
    MEMBERS(32f8u, Pxl32f, Pxl8u)
    MEMBERS(32f16u, Pxl32f, Pxl16u)
    MEMBERS(32f16s, Pxl32f, Pxl16s)
}

// The caller's buffer, as large as the library says, at an odd address between bytes that are watched.
class Buffer {
public:
    Buffer(PxlChannels channels, PxlSize size, int noise, int type) {
        EXPECT_EQ(pxliReduceBitsGetBufferSize(channels, size, noise, static_cast<PxlDitherType>(type), &size_), 0);
        bytes_.assign(static_cast<std::size_t>(size_) + 2 * kMargin, kGuard);
    }
    Pxl8u* get() { return size_ == 0 ? nullptr : bytes_.data() + kMargin; }
    bool guarded() const {
        const auto isGuard = [](Pxl8u byte) { return byte == kGuard; };
        return std::all_of(bytes_.begin(), bytes_.begin() + kMargin, isGuard) &&
               std::all_of(bytes_.end() - kMargin, bytes_.end(), isGuard);
    }

private:
    static constexpr int kMargin = 37;
    static constexpr Pxl8u kGuard = 0x5A;
    int size_ = -1;
    std::vector<Pxl8u> bytes_;
};

// A smooth picture with a little noise, and now and then anything.
template <class S>
std::vector<S> picture(std::size_t samples, Random& random) {
    std::vector<S> all(samples);
    const double slope = random.between(0, 0.01);
    for (std::size_t i = 0; i < samples; ++i) {
        const double value = random.oneIn(20)
                                 ? random.between(-0.2, 1.2)
                                 : 0.5 + 0.6 * std::sin(slope * static_cast<double>(i)) + random.between(0, 0.02);
        if constexpr (std::is_same_v<S, float>) {
            all[i] = random.oneIn(300)   ? std::numeric_limits<float>::quiet_NaN()
                     : random.oneIn(300) ? std::numeric_limits<float>::infinity() * (random.oneIn(2) ? 1 : -1)
                                         : static_cast<float>(value);
        } else {
            const double range = sizeof(S) == 1 ? 255 : 65535;
            all[i] = static_cast<S>(std::clamp(value, 0.0, 1.0) * range - (std::is_same_v<S, Pxl16s> ? 32768 : 0));
        }
    }
    return all;
}

template <class S, class D>
void expectModel(const Member<S, D>& member, PxlSize size, Mode mode, const std::vector<S>& src) {
    ASSERT_GE(src.size(), static_cast<std::size_t>(size.width * size.height * member.channels));
    std::vector<D> expected(src.size());
    for (std::size_t i = 0; i < expected.size(); ++i) expected[i] = static_cast<D>(i * 7);
    const std::vector<D> before = expected;
    Model<S, D>(mode, member.channels).run(src, expected, size.width, size.height, member.processed);
    onEachTarget([&](Target target) {
        std::vector<D> out = before;
        Buffer buffer(member.code, size, mode.noise, mode.type);
        const int srcStep = size.width * member.channels * static_cast<int>(sizeof(S)),
                  dstStep = size.width * member.channels * static_cast<int>(sizeof(D));
        const PxlStatus status = member.function(src.data(), srcStep, out.data(), dstStep, size, mode.noise,
                                                 static_cast<PxlDitherType>(mode.type), mode.levels, buffer.get());
        const auto first = std::mismatch(out.begin(), out.end(), expected.begin()).first - out.begin();
        EXPECT_TRUE(status == pxlStatusOk && out == expected && buffer.guarded())
            << size.width << " x " << size.height << ", " << member.channels << " channels, type " << mode.type
            << ", noise " << mode.noise << ", levels " << mode.levels << ", " << nameOf(target) << ", sample " << first;
    });
}

TEST(ReduceBits, everyMemberAndMode) {
    Random random(34);
    forEachMember([&]<class S, class D>(const Member<S, D>& member) {
        for (const int type : kDithers) {
            for (int i = 0; i < 9; ++i) {
                // both sides of the numbers of rows and columns that run at a time
                const int around[] = {1, 2, 3, 15, 16, 17, 31, 32, 33, 64, 65, 70, 97};
                const PxlSize size = {around[random.below(13)], around[random.below(i < 6 ? 9 : 13)]};
                const int noise = i % 3 == 0 ? 0 : i % 3 == 1 ? 1 + random.below(50) : 51 + random.below(50);
                const int levels = random.oneIn(3) ? 2 + random.below(3) : 2 + random.below(255);
                const auto samples = static_cast<std::size_t>(size.width * size.height * member.channels);
                expectModel(member, size, {type, noise, levels}, picture<S>(samples, random));
            }
            if (testing::Test::HasFailure()) return;
        }
    });
}

// Every byte at every number of levels, in images small and large, at every place of the matrix; and a longer image
// than noise repeats in.
TEST(ReduceBits, everyByteAndLevel) {
    std::vector<Pxl8u> all(4 * 1028 + 12);
    for (std::size_t i = 0; i < all.size(); ++i) all[i] = static_cast<Pxl8u>(i % 1028 / 4);
    std::vector<Pxl8u> once(256);
    std::iota(once.begin(), once.end(), Pxl8u{0});
    const Member<Pxl8u, Pxl8u> member = {pxliReduceBits_8u_C1R, 1, 1, pxlC1};
    const Member<Pxl8u, Pxl8u> three = {pxliReduceBits_8u_C3R, 3, 3, pxlC3};
    const Member<Pxl8u, Pxl8u> alpha = {pxliReduceBits_8u_AC4R, 4, 3, pxlAC4};
    for (int levels = 2; levels <= 256; ++levels) {
        expectModel(member, {256, 1}, {pxlDitherNone, 0, levels}, once);
        expectModel(member, {1028, 4}, {pxlDitherNone, 0, levels}, {all.begin(), all.end() - 12});
        expectModel(alpha, {1031, 1}, {pxlDitherNone, 0, levels}, all);
        expectModel(member, {1028, 4}, {pxlDitherBayer, 0, levels}, {all.begin(), all.end() - 12});
    }
    // large enough for maps, if there are
    std::vector<Pxl8u> large(70000);
    for (std::size_t i = 0; i < large.size(); ++i) large[i] = static_cast<Pxl8u>(i % 1028 / 4);
    for (const int levels : {2, 3, 4, 6, 7, 16, 18, 52, 86, 256}) {
        expectModel(member, {1028, 66}, {pxlDitherBayer, 0, levels}, large);
        expectModel(alpha, {257 * 8, 8}, {pxlDitherBayer, 0, levels}, large);
        expectModel(three, {500, 45}, {pxlDitherBayer, 0, levels}, large);
    }
    Random random(35);
    for (const int type : {pxlDitherFS, pxlDitherBayer})
        expectModel(member, {1100, 35}, {type, 30, 5}, picture<Pxl8u>(1100 * 35, random));
}

// Where a pixel tips from one level to the next shows the last bit of its sum, and so the order of the terms.
TEST(ReduceBits, termsInOrder) {
    Random random(37);
    const Member<float, Pxl8u> member = {pxliReduceBits_32f8u_C1R, 1, 1, pxlC1};
    for (int i = 0; i < 180; ++i) {
        const Mode mode = {kDithers[1 + i % 3], 0, 2};
        std::vector<float> src(15);
        for (float& s : src) s = static_cast<float>(random.between(0.1, 0.9));
        float low = 0, high = 1;  // for the pixel in the middle below, whose neighbours are all there
        for (src[12] = 0.5f; src[12] != low && src[12] != high; src[12] = (low + high) / 2) {
            std::vector<Pxl8u> out(15);
            Model<float, Pxl8u>(mode, 1).run(src, out, 5, 3, 1);
            (out[12] > 0 ? high : low) = src[12];
        }
        for (const float s : {low, high}) {
            src[12] = s;
            expectModel(member, {5, 3}, mode, src);
        }
    }
}

TEST(ReduceBits, pinnedValues) {
    const auto none = [](std::vector<Pxl8u> src, int levels) {
        std::vector<Pxl8u> out(src.size());
        EXPECT_EQ(pxliReduceBits_8u_C1R(src.data(), 1, out.data(), 1, {static_cast<int>(src.size()), 1}, 0,
                                        pxlDitherNone, levels, nullptr),
                  pxlStatusOk);
        return out;
    };
    using Bytes = std::vector<Pxl8u>;
    EXPECT_EQ(none({0, 127, 128, 255}, 2), (Bytes{0, 0, 255, 255}));
    EXPECT_EQ(none({0, 63, 64, 127, 191, 192, 255}, 3), (Bytes{0, 0, 127, 127, 127, 255, 255}));
    const auto numbers = randomNumbers();
    EXPECT_EQ(numbers[0], -2143376656);
    EXPECT_EQ(numbers[5], 1034660151);
    EXPECT_EQ(numbers[1023], -282901001);
}

// Dithering keeps the mean of a flat image within a small part of a step, saturated ends aside.
TEST(ReduceBits, ditheringKeepsTheMean) {
    constexpr int kSize = 128;
    for (const int type : {pxlDitherFS, pxlDitherJJN, pxlDitherStucki, pxlDitherBayer}) {
        for (const int noise : {0, 40}) {
            for (const int value : {20, 100, 180, 230}) {
                const std::vector<Pxl8u> src(kSize * kSize, static_cast<Pxl8u>(value));
                std::vector<Pxl8u> out(src.size());
                Buffer buffer(pxlC1, {kSize, kSize}, noise, type);
                ASSERT_EQ(pxliReduceBits_8u_C1R(src.data(), kSize, out.data(), kSize, {kSize, kSize}, noise,
                                                static_cast<PxlDitherType>(type), 4, buffer.get()),
                          pxlStatusOk);
                double sum = 0;
                for (const Pxl8u sample : out) sum += sample;
                EXPECT_NEAR(sum / (kSize * kSize), value, type == pxlDitherBayer ? 6 : 1.5) << type << ' ' << noise;
            }
        }
    }
}

// ---- single bits

std::vector<bool> bilevelModel(const std::vector<Pxl8u>& src, PxlSize size, int type, int threshold) {
    Errors<int> errors(size.width, size.height);
    std::vector<bool> bits;
    for (int y = 0; y < size.height; ++y) {
        for (int x = 0; x < size.width; ++x) {
            const int s = src[static_cast<std::size_t>(y * size.width + x)];
            if (type == pxlDitherNone) {
                bits.push_back(s > threshold);
                continue;
            }
            int sum = 0;
            for (const Weight& w : filterOf(pxlDitherStucki).weights)
                sum += static_cast<int>(w.weight) * errors.at(x + w.dx, y + w.dy);
            const int acc = s * 8192 + 23 * sum;
            bits.push_back(acc > threshold * 8192);
            errors.at(x, y) = (acc >> 10) - (bits.back() ? 2047 : 0);
        }
    }
    return bits;
}

TEST(ReduceBitsToOneBit, everyOffsetAndLength) {
    Random random(36);
    for (int i = 0; i < 400; ++i) {
        PxlSize size = {i < 150 ? i + 1 : 1 + random.below(90), 1 + random.below(i % 8 == 0 ? 70 : 6)};
        const int type = i % 2 == 0 ? pxlDitherNone : pxlDitherStucki;
        const int offset = random.below(random.oneIn(3) ? 40 : 9);
        const bool dense = i % 6 == 0;  // without a bit between the rows
        if (dense) size.width = (size.width + 7) / 8 * 8;
        const int threshold = random.oneIn(4) ? 255 * random.below(2) : random.below(256);
        const std::vector<Pxl8u> src = picture<Pxl8u>(static_cast<std::size_t>(size.width * size.height), random);
        const std::vector<bool> bits = bilevelModel(src, size, type, threshold);
        const int step = dense ? size.width / 8 : (offset + size.width + 7) / 8 + random.below(3);
        std::vector<Pxl8u> before(static_cast<std::size_t>(step * size.height + (dense ? 6 : 0)));
        for (Pxl8u& byte : before) byte = static_cast<Pxl8u>(random.next());
        std::vector<Pxl8u> expected = before;
        for (int y = 0; y < size.height; ++y) {
            for (int x = 0; x < size.width; ++x) {
                Pxl8u& byte = expected[static_cast<std::size_t>(y * step + (offset + x) / 8)];
                const int mask = 128 >> (offset + x) % 8;
                byte =
                    static_cast<Pxl8u>(bits[static_cast<std::size_t>(y * size.width + x)] ? byte | mask : byte & ~mask);
            }
        }
        onEachTarget([&](Target target) {
            std::vector<Pxl8u> out = before;
            Buffer buffer(pxlC1, size, 0, type);
            ASSERT_EQ(
                pxliReduceBits_8u1u_C1R(src.data(), size.width, out.data(), step, offset, size, 77, 5,
                                        static_cast<PxlDitherType>(type), static_cast<Pxl8u>(threshold), buffer.get()),
                pxlStatusOk);
            EXPECT_TRUE(out == expected && buffer.guarded())
                << size.width << " x " << size.height << ", type " << type << ", offset " << offset << ", threshold "
                << threshold << ", " << nameOf(target);
        });
    }
}

// ---- statuses

struct Given {
    bool src = true, dst = true, buffer = true;
    PxlSize size = {5, 3};
    int noise = 0, levels = 4, type = pxlDitherFS, offset = 0;
};
using Break = void (*)(Given&);
struct Wrong {
    PxlStatus status;
    std::vector<Break> ways;
};

// Each mistake alone, and any two at once: the one whose check comes first decides.
template <class Run>
void expectOrder(const std::vector<Wrong>& order, Run run) {
    for (std::size_t i = 0; i < order.size(); ++i) {
        for (const Break& first : order[i].ways) {
            Given alone;
            first(alone);
            EXPECT_EQ(run(alone), order[i].status) << "check " << i;
            for (std::size_t j = i + 1; j < order.size(); ++j) {
                for (const Break& second : order[j].ways) {
                    Given both;
                    second(both);
                    first(both);
                    EXPECT_EQ(run(both), order[i].status) << "checks " << i << " and " << j;
                }
            }
        }
    }
}

const Wrong kNoImage = {pxlStatusNullPointer, {[](Given& g) { g.src = false; }, [](Given& g) { g.dst = false; }}};
const Wrong kNoSize = {
    pxlStatusBadSize,
    {[](Given& g) { g.size.width = 0; }, [](Given& g) { g.size.height = 0; }, [](Given& g) { g.size.width = -7; }}};
const Wrong kNoNoise = {pxlStatusBadNoise, {[](Given& g) { g.noise = 101; }, [](Given& g) { g.noise = -1; }}};
const Wrong kNoType = {pxlStatusBadDitherType, {[](Given& g) { g.type = 5; }, [](Given& g) { g.type = -1; }}};

TEST(ReduceBitsStatuses, ofEveryMember) {
    forEachMember([]<class S, class D>(const Member<S, D>& member) {
        std::vector<S> src(1000);
        std::vector<D> dst(1000, D{9});
        std::vector<Pxl8u> buffer(9000);
        const auto run = [&](const Given& g) {
            return member.function(g.src ? src.data() : nullptr, 80, g.dst ? dst.data() : nullptr, 60, g.size, g.noise,
                                   static_cast<PxlDitherType>(g.type), g.levels, g.buffer ? buffer.data() : nullptr);
        };
        expectOrder({kNoImage,
                     kNoSize,
                     kNoNoise,
                     {pxlStatusBadLevels, {[](Given& g) { g.levels = 1; }, [](Given& g) { g.levels = 257; }}},
                     kNoType,
                     {pxlStatusNullPointer,
                      {[](Given& g) { g.buffer = false; },
                       [](Given& g) { g = {.buffer = false, .noise = 1, .type = pxlDitherBayer}; }}}},
                    run);
        EXPECT_EQ(std::count(dst.begin(), dst.end(), D{9}), 1000) << "something was written";
        EXPECT_EQ(run({.buffer = false, .noise = 100, .type = pxlDitherNone}), pxlStatusOk);
        EXPECT_EQ(run({.buffer = false, .type = pxlDitherBayer}), pxlStatusOk);
    });
}

TEST(ReduceBitsStatuses, ofSingleBits) {
    std::vector<Pxl8u> src(100), dst(100), buffer(9000);
    const auto run = [&](const Given& g) {
        return pxliReduceBits_8u1u_C1R(g.src ? src.data() : nullptr, 8, g.dst ? dst.data() : nullptr, 8, g.offset,
                                       g.size, -1, 0,
                                       static_cast<PxlDitherType>(g.type == pxlDitherFS ? pxlDitherStucki : g.type), 9,
                                       g.buffer ? buffer.data() : nullptr);
    };
    Wrong size = kNoSize, type = kNoType;
    size.ways.push_back([](Given& g) { g.offset = -1; });
    type.ways = {[](Given& g) { g.type = pxlDitherBayer; }, [](Given& g) { g.type = pxlDitherJJN; }};
    expectOrder({kNoImage, size, {pxlStatusNullPointer, {[](Given& g) { g.buffer = false; }}}}, run);
    expectOrder({kNoImage, size, type}, run);
    EXPECT_EQ(run({.buffer = false, .type = pxlDitherNone}), pxlStatusOk);
}

TEST(ReduceBitsStatuses, ofTheBufferSize) {
    int size = -1;
    const auto ask = [&](int channels, int width, int noise, int type) {
        return pxliReduceBitsGetBufferSize(static_cast<PxlChannels>(channels), {width, -3}, noise,
                                           static_cast<PxlDitherType>(type), &size);
    };
    const auto sizeOf = [&](int width, int noise, int type) {
        EXPECT_EQ(ask(pxlAC4, width, noise, type), pxlStatusOk);
        return size;
    };
    EXPECT_EQ(pxliReduceBitsGetBufferSize(pxlC1, {0, 0}, 0, pxlDitherFS, nullptr), pxlStatusNullPointer);
    EXPECT_EQ(ask(2, 0, 101, 5), pxlStatusBadSize);
    for (const int channels : {0, 2, 5, 8, 10, -1}) EXPECT_EQ(ask(channels, 1, 101, 5), pxlStatusBadChannelCount);
    EXPECT_EQ(ask(pxlC3, 1, 101, 5), pxlStatusBadNoise);
    EXPECT_EQ(ask(pxlC3, 1, -1, 0), pxlStatusBadNoise);
    EXPECT_EQ(ask(pxlC4, 1, 100, 5), pxlStatusBadDitherType);
    EXPECT_EQ(sizeOf(100, 100, pxlDitherNone), 0);
    EXPECT_EQ(sizeOf(100, 0, pxlDitherFS), 816 + 64);
    EXPECT_EQ(sizeOf(100, 0, pxlDitherJJN), 1248 + 64);
    EXPECT_EQ(sizeOf(100, 9, pxlDitherStucki), 1248 + 6272 + 64);
    EXPECT_EQ(sizeOf(100, 0, pxlDitherBayer), 0);
    EXPECT_EQ(sizeOf(100, 1, pxlDitherBayer), 6272 + 64);
}

}  // namespace
}  // namespace pxl::test
