// The pictures that one export and its peers work on: the same memory for all of them.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "catalog.h"

namespace pxl::bench {

struct Plane {
    std::uint8_t* first;
    int step;
    std::int64_t bytes;
};

class Images {
public:
    // Source and destination of `function` at this size, rows and planes without gaps, each image at a multiple of 64.
    Images(const catalog::Export& function, PxlSize size);

    const catalog::Export& function;
    PxlSize size;
    std::vector<Plane> source, destination;
    std::int64_t bytesRead = 0, bytesWritten = 0;

    int width() const { return size.width; }
    int height() const { return size.height; }
    std::int64_t pixels() const { return std::int64_t{size.width} * size.height; }

    // A plain copy of half as many bytes as the conversion reads and writes together, between the same two images.
    void copy() const;
    // The destination of an in-place function gets its pixels back.
    void restore() const;

    std::vector<std::uint8_t> destinationBytes() const { return {writeArea_, writeArea_ + bytesWritten}; }

private:
    std::unique_ptr<std::uint8_t[]> memory_;
    std::uint8_t *readArea_, *writeArea_;
};

// What the two images of `function` take at this size.
std::int64_t footprint(const catalog::Export& function, PxlSize size);

}  // namespace pxl::bench
