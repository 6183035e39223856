#include "raster.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>

#include "error.h"

namespace pxl::tool {

namespace {

bool isBgr(const ImageShape& shape) { return shape.space.rfind("BGR", 0) == 0; }
bool isColour(const ImageShape& shape) { return isBgr(shape) || shape.space.rfind("RGB", 0) == 0; }

// Where the colour `channel` (R, G, B, alpha) lies in a pixel.
int position(const ImageShape& shape, int channel) { return isBgr(shape) && channel < 3 ? 2 - channel : channel; }

constexpr int kOpaque = -1;

// One row. Both numbers of channels are known to the compiler, or the loop would be several times slower.
template <int fromChannels, int toChannels, class Sample>
void copyRow(const Sample* in, Sample* out, int count, const std::array<int, 4>& origin, Sample full) {
    for (int x = 0; x < count; ++x, in += fromChannels, out += toChannels)
        for (int channel = 0; channel < toChannels; ++channel) {
            const int sample = origin[static_cast<std::size_t>(channel)];
            out[channel] = sample == kOpaque ? full : in[sample];
        }
}

template <class Sample>
auto rowCopy(int fromChannels, int toChannels) {
    using Copy = void (*)(const Sample*, Sample*, int, const std::array<int, 4>&, Sample);
    static constexpr Copy kCopies[5][5] = {
        {},
        {nullptr, copyRow<1, 1, Sample>, nullptr, copyRow<1, 3, Sample>, copyRow<1, 4, Sample>},
        {},
        {nullptr, copyRow<3, 1, Sample>, nullptr, copyRow<3, 3, Sample>, copyRow<3, 4, Sample>},
        {nullptr, copyRow<4, 1, Sample>, nullptr, copyRow<4, 3, Sample>, copyRow<4, 4, Sample>}};
    return kCopies[fromChannels][toChannels];
}

// Where each destination sample stands within the source pixel.
std::array<int, 4> originOf(const ImageShape& from, const ImageShape& to) {
    const int fromChannels = from.planes[0].channels;
    std::array<int, 4> origin{};
    for (int channel = 0; channel < to.planes[0].channels; ++channel) {
        int source = channel;
        if (channel == 3 && fromChannels < 4) source = kOpaque;
        if (channel < 3) source = fromChannels == 1 ? 0 : position(from, channel);
        origin[static_cast<std::size_t>(position(to, channel))] = source;
    }
    return origin;
}

template <class Sample>
void copySamples(const Rows& from, const Rows& to) {
    const int fromChannels = from.shape().planes[0].channels, toChannels = to.shape().planes[0].channels;
    const auto full = static_cast<Sample>(opaque(to.shape().planes[0].element));
    const std::array<int, 4> origin = originOf(from.shape(), to.shape());
    const auto copy = rowCopy<Sample>(fromChannels, toChannels);
    const auto source = from.plane(0), destination = to.plane(0);
    const int common = std::min(from.size().width, to.size().width);
    for (std::int64_t y = 0; y < destination.rows; ++y) {
        const auto* in = reinterpret_cast<const Sample*>(source.row(std::min(y, source.rows - 1)));
        auto* out = reinterpret_cast<Sample*>(destination.row(y));
        copy(in, out, common, origin, full);
        for (int x = common; x < to.size().width; ++x)
            copy(in + (common - 1) * fromChannels, out + x * toChannels, 1, origin, full);
    }
}

}  // namespace

Image::Image(const ImageShape& shape, PxlSize size) : shape_(shape), size_(size) {
    constexpr std::size_t kAlignment = 64;
    for (const auto& plane : shape.planes) {
        const std::int64_t rowBytes = plane.rowBytes(size.width);
        if (rowBytes > std::numeric_limits<int>::max()) fail("a width of ", size.width, " is too large");
        // Before the first and after the last row so much is spare.
        const auto bytes = static_cast<std::size_t>(rowBytes * plane.rows(size.height));
        memory_.emplace_back(static_cast<std::uint8_t*>(std::calloc(bytes + 3 * kAlignment, 1)));
        if (!memory_.back()) throw std::bad_alloc();
    }
}

Image::Image(const Image& other) : Image(other.shape_, other.size_) {
    for (std::size_t i = 0; i < planes(); ++i)
        std::memcpy(plane(i).first, other.plane(i).first, static_cast<std::size_t>(plane(i).bytes()));
}

Image& Image::operator=(const Image& other) { return *this = Image(other); }

void Image::Free::operator()(std::uint8_t* memory) const { std::free(memory); }

Image::Plane Image::plane(std::size_t index) const {
    constexpr std::uintptr_t kAlignment = 64;
    const auto& shape = shape_.planes[index];
    const auto address = reinterpret_cast<std::uintptr_t>(memory_[index].get());
    const std::uintptr_t spare = 2 * kAlignment - address % kAlignment;
    return {memory_[index].get() + spare, shape.rowBytes(size_.width), shape.rows(size_.height)};
}

std::int64_t Image::bytes() const {
    std::int64_t sum = 0;
    for (std::size_t i = 0; i < planes(); ++i) sum += plane(i).bytes();
    return sum;
}

Rows::Rows(const Image& image, int first, int count) : shape_(&image.shape()), size_{image.size().width, count} {
    for (std::size_t i = 0; i < image.planes(); ++i) {
        const auto& shape = shape_->planes[i];
        Image::Plane plane = image.plane(i);
        plane.first = plane.row(first >> shape.heightShift);
        plane.rows = shape.rows(count);
        planes_.push_back(plane);
    }
}

Rows Rows::withChromaExchanged() const {
    Rows exchanged = *this;
    std::swap(exchanged.planes_[1], exchanged.planes_[2]);
    return exchanged;
}

std::vector<catalog::PlaneRef> Rows::references() const {
    std::vector<catalog::PlaneRef> references;
    for (const Image::Plane& plane : planes_) references.push_back({plane.first, static_cast<int>(plane.rowBytes)});
    return references;
}

bool isPicture(const ImageShape& shape) {
    if (shape.planes.size() != 1 || shape.sampling != 444 || shape.layout == "565") return false;
    const auto& plane = shape.planes[0];
    return (plane.element == Element::u8 || plane.element == Element::u16) && plane.widthShift == 0 &&
           plane.heightShift == 0 && plane.packedBits == 0 &&
           (plane.channels == 1 || plane.channels == 3 || plane.channels == 4);
}

bool isFloatPicture(const ImageShape& shape) {
    return shape.planes.size() == 1 && shape.planes[0].element == Element::f32;
}

ImageShape pictureShape(Element element, int channels) {
    ImageShape shape;
    shape.space = channels == 1 ? "Gray" : "RGB";
    static constexpr const char* kLayouts[] = {"", "C1", "C2", "C3", "C4"};
    shape.layout = kLayouts[channels];
    shape.planes = {{element, channels, 0, 0}};
    return shape;
}

bool canCopyPicture(const ImageShape& from, const ImageShape& to) {
    const int fromChannels = from.planes[0].channels;
    const int toChannels = to.planes[0].channels;
    return from.planes[0].element == to.planes[0].element &&
           (fromChannels == toChannels || (fromChannels >= 3 && toChannels >= 3) ||
            (fromChannels == 1 && isColour(to)));
}

void copyPicture(const Rows& from, const Rows& to) {
    switch (from.shape().planes[0].element) {
        case Element::u8:
            return copySamples<std::uint8_t>(from, to);
        case Element::u16:
            return copySamples<std::uint16_t>(from, to);
        case Element::f32:
            return copySamples<float>(from, to);
        default:
            fail("pictures have 8u, 16u or 32f samples");
    }
}

double opaque(Element element) {
    switch (element) {
        case Element::u8:
            return 255;
        case Element::s8:
            return 127;
        case Element::u16:
            return 65535;
        case Element::s16:
            return 32767;
        default:
            return 1;
    }
}

std::string describe(const ImageShape& shape) {
    static constexpr const char* kElements[] = {"8u", "8s", "16u", "16s", "32u", "32s", "32f", "64f"};
    std::ostringstream text;
    text << shape.space;
    if (shape.sampling != 444) text << ' ' << shape.sampling;
    if (!shape.planes.empty()) text << ' ' << kElements[static_cast<std::size_t>(shape.planes[0].element)];
    text << ' ' << shape.layout;
    return text.str();
}

}  // namespace pxl::tool
