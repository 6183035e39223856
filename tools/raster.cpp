#include "raster.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>

#include "error.h"

namespace pxl::tool {

namespace {

bool isBgr(const ImageShape& shape) { return shape.space.rfind("BGR", 0) == 0; }
bool isColour(const ImageShape& shape) { return isBgr(shape) || shape.space.rfind("RGB", 0) == 0; }

// Where the colour `channel` (R, G, B, alpha) lies in a pixel.
int position(const ImageShape& shape, int channel) { return isBgr(shape) && channel < 3 ? 2 - channel : channel; }

template <class Sample>
void copySamples(const Image& from, Image& to) {
    const int fromChannels = from.shape().planes[0].channels;
    const int toChannels = to.shape().planes[0].channels;
    constexpr int kOpaque = -1;
    const auto full = static_cast<Sample>(opaque(to.shape().planes[0].element));
    std::array<int, 4> origin{};  // of each destination sample within the source pixel
    for (int channel = 0; channel < toChannels; ++channel) {
        int source = channel;
        if (channel == 3 && fromChannels < 4) source = kOpaque;
        if (channel < 3) source = fromChannels == 1 ? 0 : position(from.shape(), channel);
        origin[static_cast<std::size_t>(position(to.shape(), channel))] = source;
    }
    const auto source = from.plane(0);
    const auto destination = to.plane(0);
    const int common = std::min(from.size().width, to.size().width);
    for (std::int64_t y = 0; y < destination.rows; ++y) {
        const auto* in = reinterpret_cast<const Sample*>(source.row(std::min(y, source.rows - 1)));
        auto* out = reinterpret_cast<Sample*>(destination.row(y));
        for (int x = 0; x < to.size().width; ++x) {
            for (int channel = 0; channel < toChannels; ++channel) {
                const int sample = origin[static_cast<std::size_t>(channel)];
                *out++ = sample == kOpaque ? full : in[sample];
            }
            if (x + 1 < common) in += fromChannels;
        }
    }
}

}  // namespace

Image::Image(const ImageShape& shape, PxlSize size) : shape_(shape), size_(size) {
    for (const auto& plane : shape.planes) {
        const std::int64_t rowBytes = plane.rowBytes(size.width);
        if (rowBytes > std::numeric_limits<int>::max()) fail("a width of ", size.width, " is too large");
        // Starts at the second block, so that a fault that writes before the image meets a spare one, and ends before a
        // spare one.
        const auto bytes = static_cast<std::size_t>(rowBytes * plane.rows(size.height));
        memory_.emplace_back((bytes + sizeof(Block) - 1) / sizeof(Block) + 2);
    }
}

Image::Plane Image::plane(std::size_t index) const {
    const auto& shape = shape_.planes[index];
    return {const_cast<std::uint8_t*>(memory_[index][1].bytes), shape.rowBytes(size_.width), shape.rows(size_.height)};
}

std::int64_t Image::bytes() const {
    std::int64_t sum = 0;
    for (std::size_t i = 0; i < planes(); ++i) sum += plane(i).bytes();
    return sum;
}

std::vector<catalog::PlaneRef> Image::references() const {
    std::vector<catalog::PlaneRef> references;
    for (std::size_t i = 0; i < planes(); ++i)
        references.push_back({plane(i).first, static_cast<int>(plane(i).rowBytes)});
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

void copyPicture(const Image& from, Image& to) {
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
