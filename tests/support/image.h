// Images whose memory ends (or starts) at an unreadable page, so that a read or write beyond them ends the program.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

#include "catalog.h"
#include "support/random.h"

namespace pxl::test {

// How the planes of an image lie in memory.
struct Placement {
    enum class Where {
        againstEnd,    // the last byte of the ROI is the last one before an unreadable page
        againstStart,  // the first byte of the ROI is the first one after an unreadable page
        aligned,       // first samples and steps are multiples of `alignment` bytes
    };
    Where where = Where::againstEnd;
    int padding = 0;       // samples between the rows, at least; planes with steps of their own get different ones
    bool upwards = false;  // negative steps
    int alignment = 16;

    static Placement random(Random& random, bool upwardsToo);
};

class Arena;

class Image {
public:
    Image(const catalog::ImageShape& shape, PxlSize size, const Placement& placement);
    ~Image();

    const std::vector<catalog::PlaneRef>& planes() const { return planes_; }

    // Fills the image and what surrounds it: any integers, sometimes only extreme ones; mostly floats around 0..1.
    void fill(Random& random);
    void fill(std::span<const std::uint8_t> bytes);  // repeated as often as needed

    // A sample by the channel's position in the storage order, whatever the layout; x and y are those of the pixel,
    // also where samples are shared by several pixels.
    template <class Sample>
    Sample& at(int channel, int x, int y) {
        return *static_cast<Sample*>(address(channel, x, y));
    }

    // All bytes that fill() writes, and the same with the ROI taken from `roi`, which must come from an image of the
    // same placement.
    using Bytes = std::vector<std::byte>;
    Bytes bytes() const;
    Bytes withRoiOf(const Bytes& roi, Bytes surroundings) const;
    void restore(const Bytes& bytes);

private:
    struct Plane {
        std::unique_ptr<Arena> arena;
        catalog::PlaneShape shape;
        std::byte* first = nullptr;  // first sample of the first row
        std::ptrdiff_t step = 0;
        std::ptrdiff_t rowBytes = 0, rows = 0;
        std::span<std::byte> window;  // image and surroundings
        // The window from where the samples of the image fall on whole samples.
        std::span<std::byte> wholeSamples() const {
            return window.subspan(static_cast<std::size_t>(first - window.data()) % bytesOf(shape.element));
        }
    };
    void* address(int channel, int x, int y) const;

    std::vector<Plane> storage_;
    std::vector<catalog::PlaneRef> planes_;
};

}  // namespace pxl::test
