#include "reorder.h"

#include <cstdint>

#include "planes.h"

namespace pxl::python {
namespace {

template <class Sample, int kFrom, int kTo>
void reorderRows(const Plane& source, const Plane& out, std::int64_t width, bool reverse, Sample alpha) {
    const int first = reverse ? 2 : 0, last = 2 - first;
    for (std::int64_t y = 0; y < source.rows; ++y) {
        const auto* from = reinterpret_cast<const Sample*>(source.first + y * source.step);
        auto* to = reinterpret_cast<Sample*>(out.first + y * out.step);
        for (std::int64_t x = 0; x < width; ++x, from += kFrom, to += kTo) {
            to[0] = from[first];
            to[1] = from[1];
            to[2] = from[last];
            if constexpr (kTo == 4) to[3] = kFrom == 4 ? from[kFrom - 1] : alpha;
        }
    }
}

template <class Sample>
void reorderPixels(const Plane& source, int from, const Plane& out, int to, std::int64_t width, bool reverse,
                   int alpha) {
    const auto rows = from == 3 ? (to == 3 ? reorderRows<Sample, 3, 3> : reorderRows<Sample, 3, 4>)
                                : (to == 3 ? reorderRows<Sample, 4, 3> : reorderRows<Sample, 4, 4>);
    const py::gil_scoped_release release;
    rows(source, out, width, reverse, static_cast<Sample>(alpha));
}

catalog::ImageShape shapeOf(const py::array& array, catalog::Element element) {
    catalog::ImageShape shape;
    shape.planes.resize(1);
    shape.planes[0].element = element;
    shape.planes[0].channels = array.ndim() == 3 && array.shape(2) == 4 ? 4 : 3;
    return shape;
}

}  // namespace

void reorder(const py::array& source, const py::array& out, bool reverse, int alpha) {
    const auto element = source.itemsize() == 2 ? catalog::Element::u16 : catalog::Element::u8;
    const auto shape = shapeOf(source, element), outShape = shapeOf(out, element);
    Picture from = pictureOf(source, "src", shape), to = pictureOf(out, "out", outShape);
    const Extent size = sizeOf(from, shape);
    checkPlanes(from, shape, size, {});
    checkPlanes(to, outShape, size, {});
    checkWritable(to);
    checkDisjoint(to, from);
    const int channels = shape.planes[0].channels, outChannels = outShape.planes[0].channels;
    const auto pixels = element == catalog::Element::u16 ? reorderPixels<std::uint16_t> : reorderPixels<std::uint8_t>;
    pixels(from.planes[0], channels, to.planes[0], outChannels, size.width, reverse, alpha);
}

}  // namespace pxl::python
