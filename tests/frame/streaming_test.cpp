// Which destinations are written past the caches, and that a large one is the same image.

#include "frame/streaming.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "pxlcc.h"
#include "support/random.h"
#include "support/targets.h"

namespace pxl::test {
namespace {

// Nothing is read or written there.
template <class T>
View<T> imageAt(Index address, Index step, int channels) {
    return {reinterpret_cast<T*>(address), step, channels};
}

// 0: none, 2: the kernels of two blocks, 4: of four.
template <class T>
int blocksFor(const View<T>& dst, PxlSize size, int rows = 1) {
    return Streaming(dst, size, rows).choose(0, 2, 4);
}

TEST(Streaming, from64MiB) {
    constexpr PxlSize kSize = {4096, 4096}, kBelow = {4096, 4095};
    onEachTarget([&](Target target) {
        const int best = target == Target::avx512 ? 4 : target == Target::avx2 ? 2 : 0;
        EXPECT_EQ(blocksFor(imageAt<Pxl8u>(1 << 20, 4 * 4096, 4), kSize), best);
        EXPECT_EQ(blocksFor(imageAt<Pxl8u>(1 << 20, 4 * 4096, 4), kBelow), 0);
        EXPECT_EQ(blocksFor(imageAt<Pxl8u>(1 << 20, 3 * 4096, 3), kSize), 0);
        EXPECT_EQ(blocksFor(imageAt<Pxl16u>(1 << 20, 6 * 4096, 3), kSize), best);
        // more bytes than 32 bits count
        EXPECT_EQ(blocksFor(imageAt<Pxl32f>(1 << 20, 3 << 18, 3), {65536, 32768}), best);
    });
}

TEST(Streaming, alignment) {
    constexpr PxlSize kSize = {8192, 4096};
    struct Case {
        Index address, step;
        int two, four;  // blocks on either target
    };
    constexpr Index kAt = 1 << 20, kStep = 3 * 8192;
    constexpr Case kCases[] = {{kAt, kStep, 2, 4},         {kAt, -kStep, 2, 4},     {kAt + 64, kStep + 64, 2, 4},
                               {kAt + 16, kStep, 2, 2},    {kAt, kStep + 48, 2, 2}, {kAt + 32, -kStep - 16, 2, 2},
                               {kAt + 8, kStep, 0, 0},     {kAt, kStep + 1, 0, 0},  {kAt, kStep + 8, 0, 0},
                               {kAt + 1, kStep + 63, 0, 0}};
    onEachTarget([&](Target target) {
        for (const auto& [address, step, two, four] : kCases) {
            const auto dst = imageAt<Pxl8u>(address, step, 3);
            const int expected = target == Target::avx512 ? four : target == Target::avx2 ? two : 0;
            EXPECT_EQ(blocksFor(dst, kSize), expected) << address << " " << step;
            // two rows at a time: of three channels two blocks fill no whole lines, of four they do
            EXPECT_EQ(blocksFor(dst, kSize, 2), expected == 4 ? 4 : 0) << address << " " << step;
            const bool lines = address % 64 == 0 && step % 64 == 0;
            EXPECT_EQ(blocksFor(imageAt<Pxl8u>(address, step, 4), kSize, 2), lines ? expected : 0)
                << address << " " << step;
        }
    });
}

// A whole image of 64 MiB and more against its rows one by one, with a gap behind each, which stays as it is.
TEST(Streaming, largeImage) {
    constexpr PxlSize kSize = {4099, 4150};
    constexpr int kStep = 4 * 4099 + 52;  // a multiple of 64
    static_assert(kStep % 64 == 0 && Index{4} * kSize.width * kSize.height >= kStreamedFrom);
    constexpr Pxl8u kGap = 0x5A, kAlpha = 0xC3;
    std::vector<Pxl8u> gray(std::size_t{kSize.width} * kSize.height), row(kStep);
    Random random(64);
    for (Pxl8u& sample : gray) sample = static_cast<Pxl8u>(random.below(256));
    std::vector<Pxl8u> memory(std::size_t{kStep} * kSize.height + 64, kGap);
    Pxl8u* image = memory.data() + (64 - reinterpret_cast<std::uintptr_t>(memory.data()) % 64) % 64;
    useTarget(bestTarget());
    ASSERT_EQ(pxliGrayToRGB_8u_C1C4R(gray.data(), kSize.width, image, kStep, kSize, kAlpha), pxlStatusOk);
    for (int y = 0; y < kSize.height; ++y) {
        std::ranges::fill(row, kGap);
        pxliGrayToRGB_8u_C1C4R(gray.data() + std::ptrdiff_t{kSize.width} * y, kSize.width, row.data(), kStep,
                               {kSize.width, 1}, kAlpha);
        ASSERT_TRUE(std::equal(row.begin(), row.end(), image + std::ptrdiff_t{kStep} * y)) << "row " << y;
    }
}

}  // namespace
}  // namespace pxl::test
