#include "difference.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <type_traits>

#include "drawing.h"

namespace pxl::tool {

namespace {

template <class Function>
void withSamples(Element element, std::uint8_t* bytes, const Function& function) {
    if (element == Element::u8) function(bytes);
    if (element == Element::u16) function(reinterpret_cast<std::uint16_t*>(bytes));
    if (element == Element::f32) function(reinterpret_cast<float*>(bytes));
}

double decibels(double squares, double count) {
    // What is left of sums in double precision where both pictures hold the same is no error.
    constexpr double kNoise = 1e-12;
    return squares < kNoise * count ? INFINITY : 10 * std::log10(255.0 * 255.0 * count / squares);
}

}  // namespace

Image withElement(const Image& picture, Element element) {
    const auto& shape = picture.shape().planes[0];
    ImageShape newShape = picture.shape();
    newShape.planes[0].element = element;
    Image result(newShape, picture.size());
    const double scale = opaque(element) / opaque(shape.element);
    const double half = element == Element::f32 ? 0 : 0.5;
    const std::int64_t count = shape.rowSamples(picture.size().width) * picture.size().height;
    withSamples(shape.element, picture.plane(0).first, [&](const auto* from) {
        withSamples(element, result.plane(0).first, [&]<class Sample>(Sample* to) {
            for (std::int64_t i = 0; i < count; ++i) {
                const double value = from[i] * scale + half;
                if constexpr (std::is_integral_v<Sample>) {  // floats of any size, and NaN as 0
                    using Limits = std::numeric_limits<Sample>;
                    to[i] = !(value > Limits::min()) ? Limits::min()
                            : value >= Limits::max() ? Limits::max()
                                                     : static_cast<Sample>(value);
                } else {
                    to[i] = static_cast<Sample>(value);
                }
            }
        });
    });
    return result;
}

Distance distance(const Image& a, const Image& b, LumaWeights weights) {
    const Image left = withElement(a, Element::f32), right = withElement(b, Element::f32);
    const auto* p = reinterpret_cast<const float*>(left.plane(0).first);
    const auto* q = reinterpret_cast<const float*>(right.plane(0).first);
    Distance result;
    double rgb = 0, luma = 0, colour = 0;
    for (std::int64_t i = 0; i < a.pixels(); ++i, p += 3, q += 3) {
        const double r = (p[0] - q[0]) * 255.0, g = (p[1] - q[1]) * 255.0, b255 = (p[2] - q[2]) * 255.0;
        const double y = weights.red * r + (1 - weights.red - weights.blue) * g + weights.blue * b255;
        const double cb = (b255 - y) / (2 - 2 * weights.blue), cr = (r - y) / (2 - 2 * weights.red);
        rgb += r * r + g * g + b255 * b255;
        luma += y * y;
        colour += cb * cb + cr * cr;
        result.largest = std::max({result.largest, std::abs(r), std::abs(g), std::abs(b255)});
    }
    const auto pixels = static_cast<double>(a.pixels());
    result.rgb = decibels(rgb, 3 * pixels);
    result.luma = decibels(luma, pixels);
    result.colour = decibels(colour, 2 * pixels);
    return result;
}

Image differencePicture(const Image& a, const Image& b, int factor) {
    Image result(a.shape(), a.size());
    const auto p = a.plane(0), q = b.plane(0), out = result.plane(0);
    for (std::int64_t i = 0; i < out.bytes(); ++i)
        out.first[i] = static_cast<std::uint8_t>(std::min(255, std::abs(p.first[i] - q.first[i]) * factor));
    return result;
}

namespace {

// A sample as a gray level. 16-bit signed ones are components of bytes: chroma, which is around 0, goes to the middle.
std::uint8_t level(const std::uint8_t* row, int index, Element element, bool chroma) {
    double value = row[index];
    if (element == Element::s16) value = reinterpret_cast<const std::int16_t*>(row)[index] + (chroma ? 128 : 0);
    if (element == Element::f32) value = reinterpret_cast<const float*>(row)[index] * 255.0;
    return static_cast<std::uint8_t>(std::clamp(value, 0.0, 255.0));
}

// Where the samples of one component stand in the rows of a plane.
struct Component {
    std::size_t plane;
    int first, apart, width;
};

// Luma first.
std::vector<Component> componentsOf(const Image& image) {
    const int width = image.size().width;
    if (image.shape().layout == "C2") {
        const int luma = image.shape().space.front() == 'Y' ? 0 : 1, chroma = 1 - luma;
        return {{0, luma, 2, width}, {0, chroma, 4, width / 2}, {0, chroma + 2, 4, width / 2}};
    }
    std::vector<Component> components;
    const auto& planes = image.shape().planes;
    for (std::size_t i = 0; i < planes.size(); ++i)
        for (int channel = 0; channel < planes[i].channels && components.size() < 3; ++channel)
            components.push_back({i, channel, planes[i].channels, width >> planes[i].widthShift});
    return components;
}

}  // namespace

Image showComponents(const Image& image) {
    const PxlSize size = image.size(), half = {size.width / 2, size.height / 2};
    Image result = newPicture({size.width + half.width, size.height}, {0, 0, 0});
    int count = 0;
    for (const Component& component : componentsOf(image)) {
        const auto plane = image.plane(component.plane);
        Image gray = newPicture({component.width, static_cast<int>(plane.rows)}, {0, 0, 0});
        for (int y = 0; y < gray.size().height; ++y)
            for (int x = 0; x < gray.size().width; ++x) {
                const std::uint8_t v = level(plane.row(y), x * component.apart + component.first,
                                             image.shape().planes[component.plane].element, count > 0);
                setPixel(gray, x, y, {v, v, v});
            }
        const PxlRect first = {0, 0, size.width, size.height};
        const PxlRect other = {size.width, (count - 1) * half.height, half.width, half.height};
        drawThumbnail(result, count++ == 0 ? first : other, gray);
    }
    return result;
}

}  // namespace pxl::tool
