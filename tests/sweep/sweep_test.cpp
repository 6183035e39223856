// What holds for every export, tried on each line of the catalogue.

#include <gtest/gtest.h>
#include <sys/mman.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <iterator>
#include <utility>

#include "support/call.h"
#include "support/targets.h"

namespace pxl::test {
namespace {

using Where = Placement::Where;

// A case for each family of the catalogue, so that they run side by side and one can be tried alone.
class Sweep : public testing::TestWithParam<std::string_view> {
protected:
    static std::vector<catalog::Export> functions() {
        std::vector<catalog::Export> list;
        std::ranges::copy_if(catalog::all(), std::back_inserter(list),
                             [](const catalog::Export& function) { return function.family == GetParam(); });
        return list;
    }
};

std::vector<std::string_view> families() {
    std::vector<std::string_view> titles;
    for (const catalog::Export& function : catalog::all()) {
        if (std::ranges::find(titles, function.family) == titles.end()) titles.push_back(function.family);
    }
    return titles;
}

std::string testName(const testing::TestParamInfo<std::string_view>& family) {
    std::string name;
    for (const char c : family.param) {
        if (std::isalnum(static_cast<unsigned char>(c))) name += c;
    }
    return name;
}

INSTANTIATE_TEST_SUITE_P(Families, Sweep, testing::ValuesIn(families()), testName);

// Same bytes on every target, nothing written outside the ROI, sources untouched, no access beyond an image.
TEST_P(Sweep, everyGeometry) {
    for (const catalog::Export& function : functions()) {
        Random random(0x517E);
        const auto check = [&](int width, int height, const Placement& source, const Placement& destination) {
            Call call(function, function.fitting({width, height}), source, destination, random);
            EXPECT_EQ(faultsOf(call), "");
        };
        for (int width = function.minimumWidth; width <= 70; ++width) {
            for (const Where where : {Where::againstEnd, Where::againstStart}) {
                // sometimes dense rows, so that each row's end is the next one's start
                const int padding = random.oneIn(3) ? 0 : random.below(40),
                          height = function.minimumHeight + random.below(4);
                check(width, height, {where, padding}, {where, padding});
            }
        }
        for (int i = 0; i < 60; ++i) {
            const int width = function.minimumWidth + random.below(i < 50 ? 70 : 1500);
            const int height = function.minimumHeight + random.below(i < 50 ? 9 : 20);
            const bool upwardsToo = !function.testsSteps;
            const Placement source = Placement::random(random, upwardsToo),
                            destination = Placement::random(random, upwardsToo);
            check(width, height, source, function.inPlace ? source : destination);
        }
        // paths for aligned images
        for (int width = 16; width <= 160; width += 16) {
            check(width, function.minimumHeight + random.below(4), {Where::aligned, random.below(40)},
                  {Where::aligned});
        }
        if (HasFailure()) break;  // one export's faults are enough to read
    }
}

TEST_P(Sweep, wrongArguments) {
    for (const catalog::Export& function : functions()) {
        Random random(2);
        Call call(function, function.fitting({function.minimumWidth + 30, function.minimumHeight + 2}), {}, {}, random);
        for (const Fault fault : {Fault::range, Fault::pointer, Fault::entry, Fault::size, Fault::step, Fault::grid}) {
            if (fault == Fault::step && !function.testsSteps) continue;
            for (const Mistake& mistake : mistakes(fault, function)) {
                EXPECT_EQ(faultsWith(call, {&mistake}, statusOf(fault, function)), "");
            }
        }
    }
}

// Below its minimum a size is refused; at its minimum it is not.
TEST_P(Sweep, smallestSize) {
    for (const catalog::Export& function : functions()) {
        Random random(3);
        Call call(function, {function.minimumWidth, function.minimumHeight}, {}, {}, random);
        EXPECT_GE(call.run(), 0) << call.describe();
    }
}

// Rows that lie a gigabyte apart: offsets are counted in 64 bits. And what they give is what rows without gaps give,
// also where those are whole groups and so may be taken as one.
TEST_P(Sweep, hugeSteps) {
    constexpr int kStep = 1 << 30, kHeight = 5, kMost = 8;  // rows
    constexpr std::size_t kPlaneBytes = 1 << 14, kBytes = std::size_t{kMost} * kStep;
    void* memory = mmap(nullptr, kBytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (memory == MAP_FAILED) GTEST_SKIP() << "no address space for " << kBytes << " bytes";
    const auto check = [&](const catalog::Export& function, int width) {
        Random random(4);
        const PxlSize size = function.fitting({width, std::max(kHeight, function.minimumHeight)});
        Call call(function, size, {}, {}, random);
        catalog::Arguments far = call.arguments;
        auto* next = static_cast<std::byte*>(memory);
        const auto eachRow = [&](const auto& planes, const auto& shapes, const auto& farPlanes, auto action) {
            for (std::size_t i = 0; i < planes.size(); ++i) {
                for (std::int64_t y = 0; y < shapes[i].rows(size.height); ++y) {
                    action(static_cast<std::byte*>(planes[i].first) + y * planes[i].step,
                           static_cast<std::byte*>(farPlanes[i].first) + y * farPlanes[i].step,
                           static_cast<std::size_t>(shapes[i].rowBytes(size.width)));
                }
            }
        };
        for (auto* planes : {&far.source, &far.destination}) {
            for (catalog::PlaneRef& plane : *planes) plane = {std::exchange(next, next + kPlaneBytes), kStep};
        }
        const auto copy = [](std::byte* from, std::byte* to, std::size_t bytes) { std::memcpy(to, from, bytes); };
        eachRow(call.arguments.source, function.source.planes, far.source, copy);
        eachRow(call.arguments.destination, function.destination.planes, far.destination, copy);
        const PxlStatus status = call.run();
        EXPECT_EQ(invoke(function, far), status) << function.name;
        bool same = true;
        eachRow(call.arguments.destination, function.destination.planes, far.destination,
                [&](auto* a, auto* b, std::size_t bytes) { same = same && std::memcmp(a, b, bytes) == 0; });
        EXPECT_TRUE(same) << function.name;
    };
    for (const catalog::Export& function : functions()) {
        if (function.source.dense || function.destination.dense) continue;
        for (const int width : {37, 44, 46, 48}) check(function, width);
    }
    munmap(memory, kBytes);
}

// Absent processor features are said, not passed over.
TEST(Targets, allRun) {
    std::string missing;
    for (const auto& [target, name] : kTargets) {
        if (!processorRuns(target)) missing += std::string(" ") + name;
    }
    if (!missing.empty()) GTEST_SKIP() << "not run by this processor, so not tried:" << missing;
}

}  // namespace
}  // namespace pxl::test
