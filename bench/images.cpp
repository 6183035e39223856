#include "images.h"

#include <algorithm>
#include <cstring>
#include <random>

namespace pxl::bench {
namespace {

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
void fillFloat(Plane plane, std::mt19937& random) {
    std::uniform_real_distribution<T> value(0, 1);
    for (std::int64_t i = 0; i < plane.bytes; i += static_cast<std::int64_t>(sizeof(T))) {
        const T sample = value(random);
        std::memcpy(plane.first + i, &sample, sizeof sample);
    }
}

// Noise: floats from 0 to 1, integers with every byte from 16 to 235.
void fill(Plane plane, catalog::Element element, std::mt19937& random) {
    if (element == catalog::Element::f32) return fillFloat<float>(plane, random);
    if (element == catalog::Element::f64) return fillFloat<double>(plane, random);
    std::uniform_int_distribution<int> value(16, 235);
    for (std::int64_t i = 0; i < plane.bytes; ++i) plane.first[i] = static_cast<std::uint8_t>(value(random));
}

}  // namespace

std::int64_t footprint(const catalog::Export& function, PxlSize size) {
    return bytesOf(function.source, size) + bytesOf(function.destination, size);
}

Images::Images(const catalog::Export& function_, PxlSize size_)
    : function(function_),
      size(size_),
      bytesRead(bytesOf(function.source, size)),
      bytesWritten(bytesOf(function.destination, size)) {
    // Both areas hold the larger of the two images, so that copy() stays inside them; some peers want slack behind. The
    // odd 1088 bytes keep a row and its result from sharing their place within a page, which slows whoever meets it.
    constexpr std::int64_t kPage = 4096, kSlack = 4096;
    const std::int64_t area = (std::max(bytesRead, bytesWritten) + kSlack + kPage - 1) / kPage * kPage;
    memory_ = std::make_unique<std::uint8_t[]>(static_cast<std::size_t>(2 * area + 2 * kPage));
    const auto misaligned = static_cast<std::int64_t>(reinterpret_cast<std::uintptr_t>(memory_.get()) % kPage);
    readArea_ = memory_.get() + (kPage - misaligned);
    writeArea_ = readArea_ + area + 1088;
    source = layOut(function.source, size, readArea_);
    destination = layOut(function.destination, size, writeArea_);
    std::mt19937 random(1);
    for (std::size_t i = 0; i < source.size(); ++i) fill(source[i], function.source.planes[i].element, random);
}

void Images::copy() const {
    std::memcpy(writeArea_, readArea_, static_cast<std::size_t>((bytesRead + bytesWritten) / 2));
}

void Images::restore() const {
    if (function.inPlace) std::memcpy(writeArea_, readArea_, static_cast<std::size_t>(bytesWritten));
}

}  // namespace pxl::bench
