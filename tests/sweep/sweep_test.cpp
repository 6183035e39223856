// What holds for every export, tried on each line of the catalogue.

#include <gtest/gtest.h>
#include <sys/mman.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <iterator>
#include <span>
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

// The kernels for destinations that no cache holds write what the others write, at any alignment that they are chosen
// for and any other: of the targets the first has none.
TEST_P(Sweep, pastTheCaches) {
    streamFrom(0);
    for (const catalog::Export& function : functions()) {
        Random random(0xCAC4E);
        for (int i = 0; i < 24; ++i) {
            const int width = function.minimumWidth + random.below(i < 20 ? 300 : 3000);
            const int height = function.minimumHeight + random.below(5);
            const bool upwards = !function.testsSteps && random.oneIn(3);
            const Placement destination = {i % 8 == 7 ? Where::againstEnd : Where::aligned,
                                           random.oneIn(3) ? 0 : random.below(40), upwards, random.oneIn(2) ? 16 : 64};
            // one in four as one long row
            const PxlSize size = function.fitting({i % 4 == 0 ? (width + 63) / 64 * 64 : width, height});
            const Placement source = i % 4 == 0 ? Placement{} : Placement::random(random, !function.testsSteps);
            Call call(function, size, function.inPlace ? destination : source, destination, random);
            EXPECT_EQ(faultsOf(call), "");
        }
        if (HasFailure()) break;
    }
    streamFrom(kStreamedFrom);
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

// An image of a call whose planes are all moved together: those with one step.
struct StepGroup {
    std::vector<catalog::PlaneRef> catalog::Arguments::*image;
    std::size_t begin, end;
};

std::vector<StepGroup> stepGroups(const catalog::Export& function) {
    std::vector<StepGroup> groups;
    const auto add = [&](auto image, const catalog::ImageShape& shape) {
        const bool together = shape.planeArray && !shape.stepArray;
        const std::size_t planes = shape.planes.size(), size = together ? planes : 1;
        for (std::size_t i = 0; i < planes; i += size) groups.push_back({image, i, i + size});
    };
    if (!function.inPlace) add(&catalog::Arguments::source, function.source);
    add(&catalog::Arguments::destination, function.destination);
    return groups;
}

// Rows that lie a gigabyte apart: offsets are counted in 64 bits. And what they give is what rows without gaps give,
// also where those are whole groups and so may be taken as one; in one plane as well as in all.
TEST_P(Sweep, hugeSteps) {
    constexpr int kStep = 1 << 30, kHeight = 5, kMost = 8;  // rows
    constexpr std::size_t kPlaneBytes = 1 << 14, kBytes = std::size_t{kMost} * kStep;
    void* memory = mmap(nullptr, kBytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (memory == MAP_FAILED) GTEST_SKIP() << "no address space for " << kBytes << " bytes";
    const auto check = [&](const catalog::Export& function, int width, std::uint64_t seed) {
        Random random(seed);
        const PxlSize size = function.fitting({width, std::max(kHeight, function.minimumHeight)});
        Call call(function, size, {}, {}, random);
        const auto eachRow = [&](const auto& planes, const auto& shapes, const auto& action) {
            for (std::size_t i = 0; i < planes.size(); ++i) {
                for (std::int64_t y = 0; y < shapes[i].rows(size.height); ++y) {
                    action(static_cast<std::byte*>(planes[i].first) + y * planes[i].step,
                           static_cast<std::size_t>(shapes[i].rowBytes(size.width)));
                }
            }
        };
        const auto rowsOf = [&](const auto& planes, const auto& shapes) {
            Image::Bytes bytes;
            eachRow(planes, shapes, [&](auto* row, auto count) { bytes.insert(bytes.end(), row, row + count); });
            return bytes;
        };
        const auto putRows = [&](const auto& planes, const auto& shapes, const Image::Bytes& bytes) {
            const std::byte* next = bytes.data();
            eachRow(planes, shapes,
                    [&](auto* row, auto count) { std::memcpy(row, std::exchange(next, next + count), count); });
        };
        const auto &sourceShapes = function.source.planes, &destinationShapes = function.destination.planes;
        const Image::Bytes source = rowsOf(call.arguments.source, sourceShapes);
        const Image::Bytes before = rowsOf(call.arguments.destination, destinationShapes);
        const PxlStatus status = call.run();
        const Image::Bytes after = rowsOf(call.arguments.destination, destinationShapes);
        const auto checkFar = [&](std::span<const StepGroup> groups) {
            catalog::Arguments far = call.arguments;
            auto* next = static_cast<std::byte*>(memory);
            for (const StepGroup& group : groups) {
                for (std::size_t i = group.begin; i < group.end; ++i) {
                    (far.*group.image)[i] = {std::exchange(next, next + kPlaneBytes), kStep};
                }
            }
            putRows(far.source, sourceShapes, source);
            putRows(far.destination, destinationShapes, before);
            EXPECT_EQ(invoke(function, far), status) << function.name;
            EXPECT_TRUE(rowsOf(far.destination, destinationShapes) == after)
                << function.name << " of " << width << " columns";
        };
        const std::vector<StepGroup> groups = stepGroups(function);
        checkFar(groups);
        for (const StepGroup& group : groups) checkFar({&group, 1});
    };
    for (const catalog::Export& function : functions()) {
        if (function.source.dense || function.destination.dense) continue;
        for (const int width : {36, 37, 44, 46, 48}) {
            for (int seed = 0; seed < 4; ++seed) check(function, width, static_cast<std::uint64_t>(seed));
        }
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
