// 12-bit packing: rows of every length against bit after bit, both ways.

#include <gtest/gtest.h>

#include <vector>

#include "support/call.h"
#include "support/targets.h"

namespace pxl::test {
namespace {

// The bits of the samples, most significant first, one after the other.
std::vector<Pxl8u> packedBitByBit(const std::vector<Pxl16u>& samples) {
    std::vector<Pxl8u> bytes((12 * samples.size() + 7) / 8);
    for (std::size_t bit = 0; bit < 12 * samples.size(); ++bit) {
        const int value = samples[bit / 12] >> (11 - bit % 12) & 1;
        bytes[bit / 8] = static_cast<Pxl8u>(bytes[bit / 8] | value << (7 - bit % 8));
    }
    return bytes;
}

TEST(Pack12, rowsOfEveryLength) {
    Random random(12);
    for (int width = 1; width <= 300; ++width) {
        std::vector<Pxl16u> samples(static_cast<std::size_t>(width));
        for (Pxl16u& sample : samples) sample = static_cast<Pxl16u>(random.next());
        const std::vector<Pxl8u> expected = packedBitByBit(samples);
        onEachTarget([&](Target target) {
            std::vector<Pxl8u> packed(expected.size(), 0xA5);
            std::vector<Pxl16u> unpacked(samples.size(), 0xA5A5);
            ASSERT_EQ(pxliPack_16u12u_C1R(samples.data(), 1, packed.data(), 1, {width, 1}), pxlStatusOk);
            ASSERT_EQ(packed, expected) << width << ' ' << nameOf(target);
            ASSERT_EQ(pxliUnpack_12u16u_C1R(packed.data(), 1, unpacked.data(), 1, {width, 1}), pxlStatusOk);
            for (std::size_t i = 0; i < samples.size(); ++i) ASSERT_EQ(unpacked[i], samples[i] & 4095);
        });
    }
}

// Rows one after the other without a gap, of whole pairs and not.
TEST(Pack12, denseImages) {
    for (const int width : {30, 31, 64}) {
        const int packedStep = (3 * width + 1) / 2, height = 5;
        std::vector<Pxl16u> samples(static_cast<std::size_t>(width * height)), back(samples.size());
        for (std::size_t i = 0; i < samples.size(); ++i) samples[i] = static_cast<Pxl16u>(i * 2654435761u >> 20 & 4095);
        std::vector<Pxl8u> packed(static_cast<std::size_t>(packedStep * height));
        ASSERT_EQ(pxliPack_16u12u_C1R(samples.data(), 2 * width, packed.data(), packedStep, {width, height}), 0);
        ASSERT_EQ(pxliUnpack_12u16u_C1R(packed.data(), packedStep, back.data(), 2 * width, {width, height}), 0);
        EXPECT_EQ(back, samples) << width;
    }
}

TEST(Pack12, checkOrder) {
    for (const char* name : {"pxliPack_16u12u_C1R", "pxliUnpack_12u16u_C1R"})
        EXPECT_EQ(checkOrderFaults(*catalog::find(name), "pst"), "");
}

}  // namespace
}  // namespace pxl::test
