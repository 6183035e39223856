#include "support/image.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <stdexcept>

namespace pxl::test {

using catalog::Element;

// Memory between two unreadable pages.
class Arena {
public:
    explicit Arena(std::size_t bytes) {
        const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
        size_ = (bytes + page - 1) / page * page;
        mapping_ = mmap(nullptr, size_ + 2 * page, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (mapping_ == MAP_FAILED) throw std::bad_alloc();
        start_ = static_cast<std::byte*>(mapping_) + page;
        mapped_ = size_ + 2 * page;
        if (mprotect(start_, size_, PROT_READ | PROT_WRITE) != 0) throw std::bad_alloc();
    }
    ~Arena() { munmap(mapping_, mapped_); }
    Arena(const Arena&) = delete;
    Arena& operator=(const Arena&) = delete;
    std::byte* begin() const { return start_; }
    std::byte* end() const { return start_ + size_; }
    std::size_t size() const { return size_; }

private:
    void* mapping_ = nullptr;
    std::byte* start_ = nullptr;
    std::size_t size_ = 0, mapped_ = 0;
};

namespace {

// Mapping memory costs more than most conversions here: small arenas are used again.
constexpr std::size_t kPooledBytes = 1 << 16;
std::vector<std::unique_ptr<Arena>> pool;

std::unique_ptr<Arena> takeArena(std::size_t bytes) {
    if (bytes > kPooledBytes) return std::make_unique<Arena>(bytes);
    if (pool.empty()) return std::make_unique<Arena>(kPooledBytes);
    auto arena = std::move(pool.back());
    pool.pop_back();
    return arena;
}

constexpr std::ptrdiff_t kSurroundings = 64;  // bytes watched before and after an image

template <class Float>
Float randomFloat(Random& random) {
    if (!random.oneIn(32)) return static_cast<Float>(random.between(-0.25, 1.25));
    // The only NaN is the one that invalid operations give: with two kinds a sum would show the order of its operands.
    const Float nan = -std::numeric_limits<Float>::quiet_NaN(), infinity = std::numeric_limits<Float>::infinity();
    const Float specials[] = {nan,
                              infinity,
                              -infinity,
                              0,
                              -Float{0},
                              1,
                              std::numeric_limits<Float>::denorm_min(),
                              std::numeric_limits<Float>::max(),
                              Float(300),
                              Float(-70000)};
    return specials[random.below(std::size(specials))];
}

template <class Float>
void fillFloats(std::span<std::byte> bytes, Random& random) {
    for (std::size_t at = 0; at + sizeof(Float) <= bytes.size(); at += sizeof(Float)) {
        const Float value = randomFloat<Float>(random);
        std::memcpy(&bytes[at], &value, sizeof value);
    }
}

// Makes the NaNs among arbitrary bytes the one kind that randomFloat() gives.
template <class Float>
void unifyNans(std::span<std::byte> bytes) {
    for (std::size_t at = 0; at + sizeof(Float) <= bytes.size(); at += sizeof(Float)) {
        Float value;
        std::memcpy(&value, &bytes[at], sizeof value);
        if (!std::isnan(value)) continue;
        value = -std::numeric_limits<Float>::quiet_NaN();
        std::memcpy(&bytes[at], &value, sizeof value);
    }
}

void fillIntegers(std::span<std::byte> bytes, Random& random) {
    const bool extreme = random.oneIn(4);
    for (std::byte& byte : bytes) {
        const std::uint64_t value = random.next() >> 56;
        byte = static_cast<std::byte>(!extreme ? value : value < 128 ? 0 : 255);
    }
}

}  // namespace

Placement Placement::random(Random& random, bool upwardsToo) {
    const auto where = static_cast<Where>(random.below(3));
    return {where, random.oneIn(3) ? 0 : random.below(40), upwardsToo && random.oneIn(3)};
}

Image::Image(const catalog::ImageShape& shape, PxlSize size, const Placement& wanted) {
    const bool aligned = wanted.where == Placement::Where::aligned && !shape.dense;
    const Placement placement = {wanted.where, shape.dense ? 0 : wanted.padding, wanted.upwards && !shape.dense,
                                 wanted.alignment};
    std::ptrdiff_t sharedRow = 0;  // of planes with one step
    for (const catalog::PlaneShape& plane : shape.planes) {
        sharedRow = std::max<std::ptrdiff_t>(sharedRow, plane.rowBytes(size.width));
    }
    for (std::size_t i = 0; i < shape.planes.size(); ++i) {
        Plane plane;
        plane.shape = shape.planes[i];
        const auto element = static_cast<std::ptrdiff_t>(bytesOf(plane.shape.element));
        const bool ownStep = shape.stepArray || shape.dense || !shape.planeArray;
        plane.rowBytes = plane.shape.rowBytes(size.width);
        plane.rows = plane.shape.rows(size.height);
        const auto extra = ownStep && placement.padding > 0 ? static_cast<std::ptrdiff_t>(3 * i) : 0;
        plane.step = (ownStep ? plane.rowBytes : sharedRow) + (placement.padding + extra) * element;
        if (aligned) plane.step = (plane.step + placement.alignment - 1) / placement.alignment * placement.alignment;
        const std::ptrdiff_t extent = plane.rows == 0 ? 0 : (plane.rows - 1) * plane.step + plane.rowBytes;
        const int before = size.width == 1 ? plane.shape.bytesBeforeLonePixel : 0;
        plane.arena = takeArena(static_cast<std::size_t>(extent + 2 * kSurroundings));
        std::byte* low = placement.where == Placement::Where::againstEnd     ? plane.arena->end() - extent
                         : placement.where == Placement::Where::againstStart ? plane.arena->begin() + before
                                                                             : plane.arena->begin() + kSurroundings;
        std::byte* high = low + extent;
        plane.window = {low - std::min(kSurroundings, low - plane.arena->begin()),
                        high + std::min(kSurroundings, plane.arena->end() - high)};
        plane.first = low;
        if (placement.upwards && plane.rows > 0) {
            plane.first = low + (plane.rows - 1) * plane.step;
            plane.step = -plane.step;
        }
        planes_.push_back({plane.first, static_cast<int>(plane.step)});
        storage_.push_back(std::move(plane));
    }
}

Image::~Image() {
    for (Plane& plane : storage_) {
        if (plane.arena && plane.arena->size() == kPooledBytes) pool.push_back(std::move(plane.arena));
    }
}

void Image::fill(Random& random) {
    for (Plane& plane : storage_) {
        const auto samples = plane.wholeSamples();
        switch (plane.shape.element) {
            case Element::f32:
                fillFloats<float>(samples, random);
                break;
            case Element::f64:
                fillFloats<double>(samples, random);
                break;
            default:
                fillIntegers(samples, random);
        }
    }
}

void Image::fill(std::span<const std::uint8_t> bytes) {
    std::size_t next = 0;
    for (Plane& plane : storage_) {
        for (std::byte& byte : plane.window) byte = static_cast<std::byte>(bytes[next++ % bytes.size()]);
        if (plane.shape.element == Element::f32) unifyNans<float>(plane.wholeSamples());
        if (plane.shape.element == Element::f64) unifyNans<double>(plane.wholeSamples());
    }
}

void* Image::address(int channel, int x, int y) const {
    // P2 keeps channels 1 and 2 together in plane 1; otherwise there is one plane or one channel a plane.
    const std::size_t index =
        storage_.size() == 1 ? 0 : std::min<std::size_t>(static_cast<std::size_t>(channel), storage_.size() - 1);
    const Plane& plane = storage_[index];
    const std::ptrdiff_t position = (x >> plane.shape.widthShift) * plane.shape.channels +
                                    (plane.shape.channels == 1 ? 0 : channel - static_cast<int>(index));
    return plane.first + (y >> plane.shape.heightShift) * plane.step +
           position * static_cast<std::ptrdiff_t>(bytesOf(plane.shape.element));
}

Image::Bytes Image::bytes() const {
    Bytes all;
    for (const Plane& plane : storage_) all.insert(all.end(), plane.window.begin(), plane.window.end());
    return all;
}

void Image::restore(const Bytes& bytes) {
    auto next = bytes.begin();
    for (Plane& plane : storage_) {
        std::copy_n(next, plane.window.size(), plane.window.begin());
        next += static_cast<std::ptrdiff_t>(plane.window.size());
    }
}

Image::Bytes Image::withRoiOf(const Bytes& roi, Bytes surroundings) const {
    std::ptrdiff_t base = 0;
    for (const Plane& plane : storage_) {
        for (std::ptrdiff_t y = 0; y < plane.rows; ++y) {
            const std::ptrdiff_t offset = base + (plane.first - plane.window.data()) + y * plane.step;
            std::copy_n(roi.begin() + offset, plane.rowBytes, surroundings.begin() + offset);
        }
        base += static_cast<std::ptrdiff_t>(plane.window.size());
    }
    return surroundings;
}

}  // namespace pxl::test
