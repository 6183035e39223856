// The pictures that one export and its peers work on: the same memory for all of them.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

#include "catalog.h"

namespace pxl::bench {

// The matrix of the colour twists: 3 rows of weights and offset, or 4 x 4 weights. No picture of values from 0 to 1
// leaves that range through it, however often it goes.
inline constexpr float kTwist[4][4] = {{0.5F, 0.25F, 0.125F, 0.0625F},
                                       {0.125F, 0.5F, 0.25F, 0.0625F},
                                       {0.25F, 0.125F, 0.5F, 0.0625F},
                                       {0.125F, 0.125F, 0.25F, 0.5F}};

struct Plane {
    std::uint8_t* first;
    int step;
    std::int64_t bytes;
    catalog::Element element;
};

double readSample(const std::uint8_t* at, catalog::Element element);

// The value of white, or of an opaque fourth channel.
double fullScale(catalog::Element element);

// Memory for two images, the same for everything that is measured: what a copy costs depends on the pages that the
// system happens to give. Huge pages, where the system has them, for the same reason.
class Arena {
public:
    explicit Arena(std::int64_t bytesPerImage);
    std::uint8_t* first() const { return memory_.get(); }
    std::uint8_t* second() const;

private:
    struct Free {
        void operator()(void* p) const { std::free(p); }
    };
    std::int64_t half_;
    std::unique_ptr<std::uint8_t, Free> memory_;
};

// How functions that can dither do it.
struct Dithering {
    int type = pxlDitherNone;
    int noise = 0;
};

class Images {
public:
    // Source and destination of `function` at this size, rows and planes without gaps, each image at a multiple of 64.
    Images(const Arena& arena, const catalog::Export& function, PxlSize size, const Dithering& dithering);

    const catalog::Export& function;
    PxlSize size;
    Dithering dithering;
    std::vector<Plane> source, destination;
    std::int64_t bytesRead, bytesWritten;

    int width() const { return size.width; }
    int height() const { return size.height; }
    std::int64_t pixels() const { return std::int64_t{size.width} * size.height; }

    // A plain copy of half as many bytes as the conversion reads and writes together, between the same two images.
    void copy() const;        // as the C library does it
    void copyInLoop() const;  // as a loop over vectors does it: between caches the C library's way may be slower
    // The destination of an in-place function gets its pixels back.
    void restore() const;

private:
    std::uint8_t *readArea_, *writeArea_;
};

// Bytes of the images that `function` reads and writes at this size.
std::int64_t bytesRead(const catalog::Export& function, PxlSize size);
std::int64_t bytesWritten(const catalog::Export& function, PxlSize size);

}  // namespace pxl::bench
