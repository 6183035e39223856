// Views: where their parts lie, what fits into memory, and what a conversion refuses before it calls.

#include <gtest/gtest.h>

#include <numeric>
#include <vector>

#include "pxlcc/pxlcc.hpp"

namespace {

using namespace pxlcc;

std::vector<std::uint8_t> ramp(std::size_t bytes) {
    std::vector<std::uint8_t> memory(bytes);
    std::iota(memory.begin(), memory.end(), std::uint8_t{0});
    return memory;
}

void expectRect(PxlRect rect, PxlRect expected) {
    EXPECT_EQ(rect.x, expected.x);
    EXPECT_EQ(rect.y, expected.y);
    EXPECT_EQ(rect.width, expected.width);
    EXPECT_EQ(rect.height, expected.height);
}

TEST(Views, contiguousMemoryHoldsRoundedChroma) {
    EXPECT_EQ(Rgb<>::bytes({5, 3}), 45u);
    EXPECT_EQ(Rgb<std::uint16_t>::bytes({5, 3}, 4), 3 * 32u);
    EXPECT_EQ(Planes420::bytes({5, 3}), 15u + 2 * 3 * 2);
    EXPECT_EQ(Nv12::bytes({5, 3}), 15u + 6 * 2);
    EXPECT_EQ(Planes411::bytes({5, 3}), 15u + 2 * 2 * 3);
    EXPECT_EQ(Planes410::bytes({5, 5}), 25u + 2 * 2 * 2);
    EXPECT_EQ(Yuy2::bytes({5, 3}), 36u);
    EXPECT_EQ(V210::bytes({1280, 2}, 128), 2 * 3456u);  // rows of v210 files are multiples of 128 bytes
    EXPECT_EQ(Bits::bytes({9, 2}), 4u);
    EXPECT_EQ(Packed12<>::bytes({3, 2}), 10u);
    EXPECT_EQ((Planar<float, 4, Space::hls>::bytes({2, 2})), 64u);
    EXPECT_EQ(Nv12::bytes({0, 0}), 0u);

    auto memory = ramp(Planes420::bytes({5, 3}, 4));
    const auto view = Planes420::contiguous(memory.data(), {5, 3}, 4);
    EXPECT_EQ(view.step(0), 8);
    EXPECT_EQ(view.step(2), 4);
    EXPECT_EQ(view.first(1) - view.first(0), 24);
    EXPECT_EQ(view.first(2) - view.first(1), 8);
}

TEST(Views, partsStartAtWholeBlocks) {
    auto memory = ramp(Planes420::bytes({64, 48}));
    const auto view = Planes420::contiguous(memory.data(), {64, 48});
    expectRect(view.covering({5, 7, 10, 3}), {4, 6, 12, 4});
    expectRect(view.covering({-9, -9, 20, 20}), {0, 0, 12, 12});
    expectRect(view.covering({60, 40, 1000, INT_MAX}), {60, 40, 4, 8});
    expectRect(view.covering({70, 0, 4, 4}), {64, 0, 0, 0});
    expectRect(view.covering({4, 4, 0, 5}), {4, 4, 0, 0});
    const auto part = view.part({5, 7, 10, 3});
    EXPECT_EQ(part.first(0), view.row(0, 6) + 4);
    EXPECT_EQ(part.first(1), view.row(1, 3) + 2);
    EXPECT_EQ(part.first(2), view.row(2, 3) + 2);
    EXPECT_EQ(part.width(), 12);
    EXPECT_EQ(part.part({2, 2, 2, 2}).first(1), view.row(1, 4) + 3);
    EXPECT_TRUE(view.part({64, 0, 4, 4}).empty());

    expectRect(Planes411().covering({5, 7, 10, 3}), {0, 0, 0, 0});
    const Planes411 planes411({nullptr, 64}, {nullptr, 16}, {nullptr, 16}, {62, 9});
    expectRect(planes411.covering({5, 7, 56, 3}), {4, 7, 58, 2});  // the last block is cut by the border
    const Yuy2 packed(memory.data(), 128, {64, 3});
    EXPECT_EQ(packed.part({3, 1, 2, 1}).first(), packed.row(0, 1) + 4);
    std::vector<std::uint32_t> words(64);
    const V210 v210(words.data(), 64, {24, 4});
    expectRect(v210.covering({7, 1, 6, 1}), {6, 1, 12, 1});
    EXPECT_EQ(v210.part({7, 1, 6, 1}).first(), words.data() + 20);
    expectRect(Bayer<>(memory.data(), 64, {64, 48}).covering({3, 3, 2, 2}), {2, 2, 4, 4});
    EXPECT_EQ(Packed12<>(memory.data(), 96, {64, 4}).part({5, 2, 4, 1}).first(), memory.data() + 192 + 6);

    const Bits bits(memory.data(), 8, {40, 4}, 3);
    EXPECT_EQ(bits.part({13, 1, 4, 1}).first(), memory.data() + 8 + 2);
    EXPECT_EQ(bits.part({13, 1, 4, 1}).bitOffset(), 0);
    EXPECT_EQ(bits.part({14, 0, 4, 1}).bitOffset(), 1);

    expectRect(commonPart({5, 7, 1, 1}, Bgr<>(memory.data(), 192, {64, 48}), view, planes411), {4, 6, 4, 2});
}

TEST(Views, aPartIsConvertedLikeAnImageOfItsOwn) {
    const PxlSize size = {64, 48};
    auto source = ramp(Nv12::bytes(size)), target = ramp(Bgr<>::bytes(size));
    const Const<Nv12> from = Nv12::contiguous(source.data(), size);
    const auto to = Bgr<>::contiguous(target.data(), size);
    const auto before = target;
    const PxlRect rect = commonPart({11, 9, 17, 6}, from, to);
    ASSERT_EQ(convert(from.part(rect), to.part(rect)), pxlStatusOk);
    std::vector<std::uint8_t> own(Bgr<>::bytes({rect.width, rect.height}));
    ASSERT_EQ(pxliYCbCr420ToBGR_8u_P2C3R(from.row(0, rect.y) + rect.x, 64, from.row(1, rect.y / 2) + rect.x, 64,
                                         own.data(), 3 * rect.width, {rect.width, rect.height}),
              pxlStatusOk);
    for (int y = 0; y < 48; ++y) {
        for (int x = 0; x < 3 * 64; ++x) {
            const int inX = x - 3 * rect.x, inY = y - rect.y;
            const bool inside = inX >= 0 && inX < 3 * rect.width && inY >= 0 && inY < rect.height;
            const auto at = static_cast<std::size_t>(y * 192 + x);
            ASSERT_EQ(target[at], inside ? own[static_cast<std::size_t>(inY * 3 * rect.width + inX)] : before[at]);
        }
    }
}

TEST(Views, flippedImagesAreUpsideDown) {
    const PxlSize size = {16, 6};
    auto source = ramp(Planes420::bytes(size));
    std::vector<std::uint8_t> up(Rgb<>::bytes(size)), down(up.size());
    const auto from = Planes420::contiguous(source.data(), size);
    ASSERT_TRUE(convert(from, Rgb<>::contiguous(up.data(), size)));
    ASSERT_TRUE(convert(from.flipped(), Rgb<>::contiguous(down.data(), size).flipped()));
    EXPECT_EQ(up, down);
    ASSERT_TRUE(convert(from, Rgb<>::contiguous(down.data(), size).flipped()));
    for (int y = 0; y < 6; ++y) {
        EXPECT_TRUE(std::equal(&up[static_cast<std::size_t>(48 * y)], &up[static_cast<std::size_t>(48 * y)] + 48,
                               &down[static_cast<std::size_t>(48 * (5 - y))]));
    }
    EXPECT_EQ(Planes420::contiguous(source.data(), {16, 5}).flipped().height(), 4);
}

TEST(Views, denseImagesHaveAnExportOfTheirOwnAndSteps) {
    const PxlSize size = {5, 5};
    auto source = ramp(Rgb<>::bytes(size));
    std::vector<std::uint8_t> dense(YuvPlanes420::bytes(size)), stepped(dense.size());
    const auto from = Rgb<>::contiguous(source.data(), size);
    const auto denseFrom = Dense<Rgb<>>::contiguous(source.data(), size);
    // the last odd column and row are converted only there
    EXPECT_EQ(convert(denseFrom, Dense<YuvPlanes420>::contiguous(dense.data(), size)), pxlStatusOk);
    EXPECT_EQ(convert(from, YuvPlanes420::contiguous(stepped.data(), size)), pxlStatusOddSize);
    EXPECT_NE(dense, stepped);
    EXPECT_EQ(convert(denseFrom.withSteps(), YuvPlanes420::contiguous(dense.data(), size)), pxlStatusOddSize);
    // where there is none, a dense view is a view
    EXPECT_EQ((exportFor<Dense<Rgb<>>, Gray<>>), Export::pxliRGBToGray_8u_C3C1R);
}

TEST(Views, fromArraysAndPlanesAreTheSame) {
    auto memory = ramp(Planes420::bytes({8, 8}));
    std::uint8_t* const data[8] = {memory.data(), memory.data() + 64, memory.data() + 80};
    const int steps[8] = {8, 4, 4};
    const auto view = Const<Planes420>::fromArrays(data, steps, {8, 8});
    const Const<Planes420> planes({data[0], 8}, {data[1], 4}, {data[2], 4}, {8, 8});
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(view.first(i), planes.first(i));
        EXPECT_EQ(view.step(i), planes.step(i));
    }
}

TEST(Conversions, refuseWhatTheExportCannotBeTold) {
    const PxlSize size = {16, 4};
    auto source = ramp(8192);
    std::vector<std::uint8_t> target(8192);
    const Rgb<> rgb(source.data(), 48, size);
    EXPECT_EQ(convert(rgb, Planes420::contiguous(target.data(), {16, 5})), pxlStatusBadSize);
    EXPECT_EQ(convert(rgb, Planes444({target.data(), 16}, {target.data() + 64, 16}, {target.data() + 128, 20}, size)),
              pxlStatusBadStep);
    EXPECT_EQ(convert(Planes444({source.data(), 16}, {source.data(), 20}, {source.data(), 16}, size),
                      Rgb<>(target.data(), 48, size)),
              pxlStatusBadStep);
    EXPECT_EQ(convert(Rgb<>(source.data(), std::ptrdiff_t{1} << 31, size), Gray<>(target.data(), 16, size)),
              pxlStatusBadStep);
    const V210 v210(reinterpret_cast<std::uint32_t*>(source.data()), 50, size);
    EXPECT_EQ(convert(v210, Gray<std::uint16_t>(reinterpret_cast<std::uint16_t*>(target.data()), 32, size)),
              pxlStatusBadStep);
    EXPECT_EQ(convert(Rgb<>(nullptr, 48, size), Gray<>(target.data(), 16, size)), pxlStatusNullPointer);
    EXPECT_EQ(target, std::vector<std::uint8_t>(8192));
}

TEST(Conversions, limitAlphaToTheSamples) {
    const PxlSize size = {3, 1};
    std::uint8_t gray[3] = {1, 2, 3}, rgba[12];
    const Gray<> from(gray, 3, size);
    const Rgba<> to(rgba, 12, size);
    const auto alphaOf = [&](auto... options) {
        EXPECT_TRUE(convert(from, to, options...));
        return int{rgba[7]};
    };
    EXPECT_EQ(alphaOf(), 255);
    EXPECT_EQ(alphaOf(Alpha{7}), 7);
    EXPECT_EQ(alphaOf(Alpha{300}), 255);
    EXPECT_EQ(alphaOf(Alpha{-1}), 0);
    float grayF[3] = {}, rgbaF[12];
    EXPECT_TRUE(convert(Gray<float>(grayF, 12, size), Rgba<float>(rgbaF, 48, size)));
    EXPECT_EQ(rgbaF[3], 1.0f);
}

TEST(Conversions, toBitsStartAtAnyBit) {
    std::uint8_t samples[11] = {0, 200, 200, 0, 0, 200, 0, 0, 200, 200, 200}, bits[2] = {0xFF, 0x00};
    const Bits to(bits, 2, {11, 1}, 3);
    ASSERT_TRUE(convert(Gray<>(samples, 11, {11, 1}), to, Threshold{100}));
    EXPECT_EQ(bits[0], 0b11101100);
    EXPECT_EQ(bits[1], 0b10011100);
}

TEST(Results, areTrueUnlessAnErrorAndThrowOnDemand) {
    EXPECT_TRUE(Result());
    EXPECT_TRUE(Result(pxlStatusOddSize));
    EXPECT_TRUE(Result(pxlStatusOddSize).isWarning());
    EXPECT_FALSE(Result(pxlStatusOddSize).complete());
    EXPECT_FALSE(Result(pxlStatusBadStep));
    EXPECT_STREQ(Result(pxlStatusBadStep).message(), "a step is one that this conversion does not take");
    EXPECT_NO_THROW(Result(pxlStatusOddSize).orThrow());
    try {
        Result(pxlStatusBadNoise).orThrow();
        FAIL();
    } catch (const Error& error) {
        EXPECT_EQ(error.status(), pxlStatusBadNoise);
        EXPECT_STREQ(error.what(), messageOf(pxlStatusBadNoise));
    }
}

TEST(Bands, startAtMultiplesAndLeaveNoneTooSmall) {
    for (int height = 1; height < 70; ++height) {
        for (int wanted = 0; wanted < 12; ++wanted) {
            for (const int multiple : {0, 1, 2, 4}) {
                for (const int minimum : {1, 2, 5, 8}) {
                    const detail::Bands bands(height, wanted, multiple, minimum);
                    int next = 0;
                    ASSERT_LE(bands.count(), std::max(wanted, 1));
                    for (int i = 0; i < bands.count(); ++i) {
                        ASSERT_EQ(bands.first(i), next);
                        if (bands.count() > 1) {
                            ASSERT_EQ(next % multiple, 0);
                            ASSERT_GE(bands.rows(i), minimum);
                        }
                        next += bands.rows(i);
                    }
                    ASSERT_EQ(next, height);
                }
            }
        }
    }
    EXPECT_EQ(detail::Bands(1080, 4, 2, 1).count(), 4);
    EXPECT_EQ(detail::Bands(INT_MAX, 1000000, 2, 1).rows(0), 2148);
}

TEST(Bands, giveTheWorstStatusAndNoneForRowsThatOverlap) {
    auto source = ramp(4096);
    std::vector<std::uint8_t> target(4096);
    const auto inOrder = [](int count, const auto& band) {
        for (int i = 0; i < count; ++i) band(i);
    };
    const PxlSize size = {15, 12};
    EXPECT_EQ(parallelRows(Nv12::contiguous(source.data(), size), Rgb<>::contiguous(target.data(), size), 3, inOrder),
              pxlStatusOddSize);
    EXPECT_EQ(
        parallelRows(Nv12({nullptr, 16}, {nullptr, 16}, size), Rgb<>::contiguous(target.data(), size), 3, inOrder),
        pxlStatusNullPointer);
    bool called = false;
    const auto spy = [&called](int, const auto&) { called = true; };
    EXPECT_TRUE(parallelRows(Rgb<>::contiguous(source.data(), size), Gray<>(target.data(), 1, size), 3, spy));
    EXPECT_FALSE(called);
    EXPECT_EQ(parallelRows(Rgb<>::contiguous(source.data(), size), Gray<>(target.data(), 15, {15, 11}), 3, spy),
              pxlStatusBadSize);
    EXPECT_FALSE(called);
}

}  // namespace
