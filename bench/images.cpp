#include "images.h"

#include <sys/mman.h>

#include <cstring>
#include <new>
#include <random>

namespace pxl::bench {
namespace {

constexpr std::int64_t kHugePage = 2 << 20;

std::int64_t bytesOf(const catalog::ImageShape& image, PxlSize size) {
    std::int64_t bytes = 0;
    for (const auto& plane : image.planes) bytes += plane.rowBytes(size.width) * plane.rows(size.height);
    return bytes;
}

std::vector<Plane> layOut(const catalog::ImageShape& image, PxlSize size, std::uint8_t* at) {
    std::vector<Plane> planes;
    for (const auto& shape : image.planes) {
        const std::int64_t step = shape.rowBytes(size.width), bytes = step * shape.rows(size.height);
        planes.push_back({at, static_cast<int>(step), bytes});
        at += bytes;
    }
    return planes;
}

template <class T>
void put(std::uint8_t* at, std::int64_t i, T sample) {
    std::memcpy(at + i * static_cast<std::int64_t>(sizeof(T)), &sample, sizeof sample);
}

// Ramps with a little noise, as pictures have them, from 16 to 235 of 255. Pure noise would be unfair to whoever works
// with tables.
void fill(Plane plane, const catalog::PlaneShape& shape, int index, std::mt19937& random) {
    std::uniform_real_distribution<double> noise(0, 8);
    const std::int64_t rowSamples = plane.step / static_cast<std::int64_t>(catalog::bytesOf(shape.element));
    for (std::int64_t y = 0, i = 0; y < plane.bytes / plane.step; ++y) {
        for (std::int64_t k = 0; k < rowSamples; ++k, ++i) {
            const std::int64_t x = k / shape.channels, channel = k % shape.channels + index;
            const std::int64_t phase = (x / 2 + y + 70 * channel) % 422;
            const double value = 16 + static_cast<double>(phase < 211 ? phase : 422 - phase) + noise(random);
            switch (shape.element) {
                case catalog::Element::u8:
                    put(plane.first, i, static_cast<Pxl8u>(value));
                    break;
                case catalog::Element::s8:
                    put(plane.first, i, static_cast<Pxl8s>(value - 128));
                    break;
                case catalog::Element::u16:
                    put(plane.first, i, static_cast<Pxl16u>(value * 257));
                    break;
                case catalog::Element::s16:
                    put(plane.first, i, static_cast<Pxl16s>(value * 257 - 32768));
                    break;
                case catalog::Element::u32:
                    put(plane.first, i, static_cast<Pxl32u>(value * 16843009));
                    break;
                case catalog::Element::s32:
                    put(plane.first, i, static_cast<Pxl32s>(value * 257 - 32768));
                    break;
                case catalog::Element::f32:
                    put(plane.first, i, static_cast<Pxl32f>(value / 255));
                    break;
                case catalog::Element::f64:
                    put(plane.first, i, value / 255);
                    break;
            }
        }
    }
}

}  // namespace

std::int64_t bytesRead(const catalog::Export& function, PxlSize size) { return bytesOf(function.source, size); }
std::int64_t bytesWritten(const catalog::Export& function, PxlSize size) { return bytesOf(function.destination, size); }

// Some peers want slack behind an image.
Arena::Arena(std::int64_t bytesPerImage)
    : half_((bytesPerImage + 4096 + kHugePage - 1) / kHugePage * kHugePage),
      memory_(static_cast<std::uint8_t*>(std::aligned_alloc(kHugePage, static_cast<std::size_t>(2 * half_)))) {
    if (!memory_) throw std::bad_alloc();
    madvise(memory_.get(), static_cast<std::size_t>(2 * half_), MADV_HUGEPAGE);
}

// The odd bytes keep a row and its result from sharing their place within a page, which slows whoever meets it.
std::uint8_t* Arena::second() const { return memory_.get() + half_ + 1088; }

Images::Images(const Arena& arena, const catalog::Export& function_, PxlSize size_)
    : function(function_),
      size(size_),
      bytesRead(bench::bytesRead(function, size)),
      bytesWritten(bench::bytesWritten(function, size)),
      readArea_(arena.first()),
      writeArea_(arena.second()) {
    source = layOut(function.source, size, readArea_);
    destination = layOut(function.destination, size, writeArea_);
    std::mt19937 random(1);
    for (std::size_t i = 0; i < source.size(); ++i)
        fill(source[i], function.source.planes[i], static_cast<int>(i), random);
}

void Images::copy() const {
    std::memcpy(writeArea_, readArea_, static_cast<std::size_t>((bytesRead + bytesWritten) / 2));
}

void Images::restore() const {
    if (function.inPlace) std::memcpy(writeArea_, readArea_, static_cast<std::size_t>(bytesWritten));
}

}  // namespace pxl::bench
