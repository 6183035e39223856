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
        planes.push_back({at, static_cast<int>(step), bytes, shape.element});
        at += bytes;
    }
    return planes;
}

// Calls work(T{}) with the type of an element.
template <class Work>
auto withType(catalog::Element element, Work work) {
    switch (element) {
        case catalog::Element::u8:
            return work(Pxl8u{});
        case catalog::Element::s8:
            return work(Pxl8s{});
        case catalog::Element::u16:
            return work(Pxl16u{});
        case catalog::Element::s16:
            return work(Pxl16s{});
        case catalog::Element::u32:
            return work(Pxl32u{});
        case catalog::Element::s32:
            return work(Pxl32s{});
        case catalog::Element::f32:
            return work(Pxl32f{});
        default:
            return work(Pxl64f{});
    }
}

void writeSample(std::uint8_t* at, catalog::Element element, double value) {
    withType(element, [&](auto sample) {
        sample = static_cast<decltype(sample)>(value);
        std::memcpy(at, &sample, sizeof sample);
    });
}

// From 0 to 1 to the range of the type; 32-bit integers get that of 16 bits, as the formats that use them do.
double toRange(double value, catalog::Element element) {
    switch (element) {
        case catalog::Element::u8:
            return value * 255;
        case catalog::Element::s8:
            return value * 255 - 128;
        case catalog::Element::f32:
        case catalog::Element::f64:
            return value;
        case catalog::Element::s16:
        case catalog::Element::s32:
            return value * 65535 - 32768;
        default:
            return value * 65535;
    }
}

// Ramps with a little noise, as pictures have them, from 1/16 to 15/16. Pure noise would be unfair to whoever works
// with tables.
void fill(Plane plane, int channels, int index, bool isLightness, std::mt19937& random) {
    std::uniform_real_distribution<double> noise(0, 0.03);
    const auto bytes = static_cast<int>(catalog::bytesOf(plane.element));
    // L* is 0..100, and the others of its colours are on both sides of 0
    const double scale = isLightness ? 100 : 1, offset = isLightness ? 50 : 0;
    for (std::int64_t at = 0; at < plane.bytes; at += bytes) {
        const std::int64_t k = at % plane.step / bytes, y = at / plane.step;
        const std::int64_t x = k / channels, channel = k % channels + index;
        const std::int64_t phase = (x / 2 + y + 70 * channel) % 422;
        const double ramp = static_cast<double>(phase < 211 ? phase : 422 - phase) / 250;
        writeSample(plane.first + at, plane.element,
                    toRange(0.0625 + ramp + noise(random), plane.element) * scale - (channel > 0 ? offset : 0));
    }
}

// Compiled for each kind of vector that the processor may have.
[[gnu::target_clones("avx512f", "avx2", "default")]] void copyVectors(std::uint8_t* to, const std::uint8_t* from,
                                                                      std::int64_t bytes) {
    using Vector [[gnu::vector_size(64), gnu::aligned(1), gnu::may_alias]] = std::uint64_t;
    std::int64_t at = 0;
    for (; at + 64 <= bytes; at += 64) {
        *reinterpret_cast<Vector*>(to + at) = *reinterpret_cast<const Vector*>(from + at);
        asm volatile("" ::: "memory");  // or the compiler would call memcpy
    }
    std::memcpy(to + at, from + at, static_cast<std::size_t>(bytes - at));
}

}  // namespace

double readSample(const std::uint8_t* at, catalog::Element element) {
    return withType(element, [at](auto sample) {
        std::memcpy(&sample, at, sizeof sample);
        return static_cast<double>(sample);
    });
}

double fullScale(catalog::Element element) { return toRange(1, element); }

std::int64_t bytesRead(const catalog::Export& function, PxlSize size) { return bytesOf(function.source, size); }
std::int64_t bytesWritten(const catalog::Export& function, PxlSize size) { return bytesOf(function.destination, size); }

// Some peers want slack behind an image.
Arena::Arena(std::int64_t bytesPerImage)
    : half_((bytesPerImage + 4096 + kHugePage - 1) / kHugePage * kHugePage),
      memory_(static_cast<std::uint8_t*>(std::aligned_alloc(kHugePage, static_cast<std::size_t>(2 * half_)))) {
    if (!memory_) throw std::bad_alloc();
    madvise(memory_.get(), static_cast<std::size_t>(2 * half_), MADV_HUGEPAGE);
}

// The odd bytes keep a row and its result from sharing their place within a page, which slows whoever meets it: loads
// wait for a store that the processor takes for one to the same address. Nor may that be the place of another plane of
// the tile, so they are no multiple of a plane's size and a little more.
std::uint8_t* Arena::second() const { return memory_.get() + half_ + 1600; }

Images::Images(const Arena& arena, const catalog::Export& function_, PxlSize size_, const Dithering& dithering_)
    : function(function_),
      size(size_),
      dithering(dithering_),
      bytesRead(bench::bytesRead(function, size)),
      bytesWritten(bench::bytesWritten(function, size)),
      readArea_(arena.first()),
      writeArea_(arena.second()) {
    source = layOut(function.source, size, readArea_);
    destination = layOut(function.destination, size, writeArea_);
    std::mt19937 random(1);
    const std::string& space = function.source.space;
    for (std::size_t i = 0; i < source.size(); ++i) {
        const bool isLightness = source[i].element >= catalog::Element::f32 && (space == "LUV" || space == "Lab");
        fill(source[i], function.source.planes[i].channels, static_cast<int>(i), isLightness, random);
    }
}

void Images::copyInLoop() const { copyVectors(writeArea_, readArea_, (bytesRead + bytesWritten) / 2); }

void Images::copy() const {
    std::memcpy(writeArea_, readArea_, static_cast<std::size_t>((bytesRead + bytesWritten) / 2));
}

void Images::restore() const {
    if (function.inPlace) std::memcpy(writeArea_, readArea_, static_cast<std::size_t>(bytesWritten));
}

}  // namespace pxl::bench
