// The byte fill of the tone mapping, with a stand-in for pxlcore: a program of its own.

#include <gtest/gtest.h>

#include <vector>

#include "frame/target.h"
#include "pxlcore.h"
#include "reduce/fill.h"
#include "support/targets.h"

namespace {

// What the stand-in answers, and how often it was asked.
struct {
    int cacheBytes = 1 << 20;
    PxlStatus status = pxlStatusOk;
    int questions = 0;
} core;

}  // namespace

// In place of the library's: the program's own definition comes first.
PxlStatus pxlGetMaxCacheSizeB(int* pSizeByte) {
    ++core.questions;
    *pSizeByte = core.cacheBytes;
    return core.status;
}

namespace pxl::test {
namespace {

bool streamed;

ToneMapKernels watchingKernels() {
    ToneMapKernels kernels = sse42::kToneMapKernels;
    kernels.fillStreaming = [](Pxl8u* dst, Pxl8u value, Index count) {
        streamed = true;
        sse42::kToneMapKernels.fillStreaming(dst, value, count);
    };
    return kernels;
}

struct FillCase {
    PxlSize size;
    int cacheBytes;
    PxlStatus status;
    bool asks, streams;
};

TEST(FillImage, asksForTheCacheAndStreams) {
    std::vector<Pxl8u> image(2'100'000);
    const FillCase cases[] = {
        {{524288, 1}, 1, pxlStatusOk, false, false},         {{1024, 512}, 1, pxlStatusOk, false, false},
        {{524289, 1}, 1, pxlStatusOk, true, true},           {{524289, 1}, 524289, pxlStatusOk, true, true},
        {{524289, 1}, 524290, pxlStatusOk, true, false},     {{1000, 700}, 700000, pxlStatusOk, true, true},
        {{1000, 700}, 1, pxlStatusBadArgument, true, false},
    };
    for (const FillCase& c : cases) {
        for (const int step : {c.size.width, c.size.width + 3}) {
            std::fill(image.begin(), image.end(), Pxl8u{1});
            core = {c.cacheBytes, c.status, 0};
            streamed = false;
            ASSERT_EQ(fillImage8u(watchingKernels(), 9, image.data() + 5, step, c.size), pxlStatusOk);
            EXPECT_EQ(core.questions, c.asks ? 1 : 0) << c.size.width << " x " << c.size.height;
            EXPECT_EQ(streamed, c.streams) << c.size.width << " x " << c.size.height;
            bool right = true;
            for (std::size_t i = 0; i < image.size(); ++i) {
                const auto at = static_cast<int>(i) - 5;
                const bool inside = at >= 0 && at / step < c.size.height && at % step < c.size.width;
                right = right && image[i] == (inside ? 9 : 1);
            }
            EXPECT_TRUE(right) << c.size.width << " x " << c.size.height << ", step " << step;
        }
    }
    core = {};
    EXPECT_EQ(fillImage8u(watchingKernels(), 9, nullptr, 1, {0, 1}), pxlStatusNullPointer);
    EXPECT_EQ(fillImage8u(watchingKernels(), 9, image.data(), 1, {1, 0}), pxlStatusBadSize);
}

// The function that fills asks too, and streams at any alignment and length; others do not ask.
TEST(FillImage, throughToneMapping) {
    onEachTarget([&](Target target) {
        const ToneMapKernels& kernels =
            forActiveTarget(sse42::kToneMapKernels, avx2::kToneMapKernels, avx512::kToneMapKernels);
        for (int start = 0; start < 70; start += 3) {
            for (int count = 1; count < 200; count += 7) {
                std::vector<Pxl8u> bytes(300, 1);
                kernels.fillStreaming(bytes.data() + start, 2, count);
                for (int i = 0; i < 300; ++i)
                    ASSERT_EQ(bytes[static_cast<std::size_t>(i)], i >= start && i < start + count ? 2 : 1)
                        << nameOf(target);
            }
        }
    });
    std::vector<float> image(1024 * 513);
    std::vector<Pxl8u> out(image.size(), 1);
    const auto map = [&](auto function) { return function(image.data(), 4096, out.data(), 1024, {1024, 513}); };
    for (const auto function : {pxliToneMapLinear_32f8u_C1R, pxliToneMapMean_32f8u_C1R}) {
        core = {};
        out.assign(out.size(), 1);
        image[0] = 0;
        EXPECT_EQ(map(function), pxlStatusOk);
        EXPECT_EQ(core.questions, 1);
        EXPECT_EQ(out, std::vector<Pxl8u>(out.size()));
        image[0] = 1;
        EXPECT_EQ(map(function), pxlStatusOk);
        EXPECT_EQ(core.questions, 1);
    }
}

}  // namespace
}  // namespace pxl::test
