#include "planes.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace pxl::python {
namespace {

using catalog::Element;
using catalog::ImageShape;
using catalog::PlaneShape;

template <class... Parts>
std::string text(const Parts&... parts) {
    std::string joined;
    const auto add = [&](const auto& part) {
        if constexpr (std::is_integral_v<std::decay_t<decltype(part)>>) {
            joined += std::to_string(part);
        } else {
            joined += part;
        }
    };
    (add(parts), ...);
    return joined;
}

std::string planeName(const Picture& picture, std::size_t plane) {
    return picture.arrays.size() == 1 ? picture.name : text(picture.name, "[", plane, "]");
}

std::string shapeText(const py::array& array) {
    std::string joined = "(";
    for (py::ssize_t axis = 0; axis < array.ndim(); ++axis)
        joined += text(axis > 0 ? ", " : "", static_cast<std::int64_t>(array.shape(axis)));
    return joined + ")";
}

std::string dtypeText(const py::dtype& dtype) { return py::str(py::handle(dtype)).cast<std::string>(); }

// "(rows, columns, 3)" and the like.
std::string axesText(const PlaneShape& shape) {
    return axesOf(shape) == 3 ? text("(rows, columns, ", shape.channels, ")") : "(rows, columns)";
}

void checkTypeAndAxes(const py::array& array, const std::string& name, const PlaneShape& shape) {
    const py::dtype wanted = dtypeOf(shape.element);
    if (!array.dtype().equal(wanted))
        throw py::type_error(text(name, ": dtype is ", dtypeText(array.dtype()), ", not ", dtypeText(wanted)));
    if (array.ndim() != axesOf(shape))
        throw py::value_error(text(name, ": shape is ", shapeText(array), ", not ", axesText(shape)));
    if (axesOf(shape) == 3 && array.shape(2) != shape.channels)
        throw py::value_error(text(name, ": axis 2 (channels) has ", static_cast<std::int64_t>(array.shape(2)),
                                   " samples, not ", shape.channels, "; shape is ", shapeText(array)));
}

py::array asArray(const py::handle& object, const std::string& name) {
    if (!py::isinstance<py::array>(object))
        throw py::type_error(text(name, ": a ", py::str(py::type::of(object).attr("__name__")).cast<std::string>(),
                                  ", not a NumPy array"));
    return py::reinterpret_borrow<py::array>(object);
}

// Positions in a row and rows that a plane needs, and how many it may have: a last partial chroma sample is optional.
struct Range {
    std::int64_t least, most;
};
Range positions(const PlaneShape& shape, Extent size, std::int64_t extraBits) {
    if (shape.packedBits > 0) {
        const std::int64_t bytes = (size.width * shape.packedBits + extraBits + 7) / 8;
        return {bytes, std::numeric_limits<std::int64_t>::max()};
    }
    if (shape.v210) return {shape.rowSamples(size.width), std::numeric_limits<std::int64_t>::max()};
    const std::int64_t least = shape.rowSamples(size.width) / shape.channels;
    return {least, (size.width + (1 << shape.widthShift) - 1) >> shape.widthShift};
}
Range rowsRange(const PlaneShape& shape, Extent size) {
    return {shape.rows(size.height), (size.height + (1 << shape.heightShift) - 1) >> shape.heightShift};
}

void checkExtent(std::int64_t is, Range range, const std::string& name, int axis, const char* what, Extent size) {
    if (is >= range.least && is <= std::max(range.least, range.most)) return;
    const bool exact = range.least >= range.most;
    const bool open = range.most == std::numeric_limits<std::int64_t>::max();
    throw py::value_error(text(name, ": axis ", axis, " (", what, ") is ", is, " long, not ",
                               open    ? text("at least ", range.least)
                               : exact ? text(range.least)
                                       : text(range.least, " or ", range.most),
                               ", for a picture of ", size.width, " x ", size.height, " pixels"));
}

// Samples of a pixel and pixels of a row have to follow each other; rows may lie anywhere.
void checkInnerStrides(const py::array& array, const std::string& name) {
    if (array.size() == 0) return;
    std::int64_t wanted = array.itemsize();
    for (py::ssize_t axis = array.ndim() - 1; axis > 0; --axis) {
        if (array.shape(axis) > 1 && array.strides(axis) != wanted)
            throw py::value_error(
                text(name, ": axis ", static_cast<std::int64_t>(axis), axis == 2 ? " (channels)" : " (columns)",
                     " has a stride of ", static_cast<std::int64_t>(array.strides(axis)), " bytes, not ", wanted,
                     ": only rows may have gaps or run backwards; pass numpy.ascontiguousarray(...)"));
        wanted *= array.shape(axis);
    }
}

void checkStep(const Plane& plane, const std::string& name, const StepRules& rules, bool dense, std::int64_t sample) {
    const auto refuse = [&](const std::string& why) {
        throw py::value_error(text(name, ": axis 0 (rows) has a stride of ", plane.step, " bytes; ", why));
    };
    if (rules.positive && plane.step < 1) refuse("this function takes positive ones only");
    if (rules.inElements && plane.step % sample != 0)
        refuse(text("this function takes multiples of ", sample, " only"));
    if (dense && plane.step != plane.rowBytes) refuse(text("this function takes rows without gaps, ", plane.rowBytes));
    constexpr std::int64_t kMost = std::numeric_limits<int>::max();
    if (!rules.wide && (plane.step > kMost || plane.step < -kMost)) refuse("this function takes 32-bit ones only");
}

// The plane's rows from the lowest address up.
struct Rows {
    const std::byte* low;
    std::int64_t step, rowBytes, count;

    explicit Rows(const Plane& plane)
        : low(plane.step < 0 ? plane.first + (plane.rows - 1) * plane.step : plane.first),
          step(plane.step < 0 ? -plane.step : plane.step),
          rowBytes(plane.rowBytes),
          count(plane.rowBytes > 0 ? plane.rows : 0) {}
    const std::byte* row(std::int64_t i) const { return low + i * step; }
    const std::byte* rowEnd(std::int64_t i) const { return row(i) + rowBytes; }
};

// Whether two sets of rows have a byte in common; both go up, so one walk over both sees all.
bool overlap(const Rows& a, const Rows& b) {
    if (a.count <= 0 || b.count <= 0) return false;
    if (a.rowEnd(a.count - 1) <= b.low || b.rowEnd(b.count - 1) <= a.low) return false;
    for (std::int64_t i = 0, j = 0; i < a.count && j < b.count;) {
        if (a.rowEnd(i) <= b.row(j)) {
            ++i;
        } else if (b.rowEnd(j) <= a.row(i)) {
            ++j;
        } else {
            return true;
        }
    }
    return false;
}

}  // namespace

py::dtype dtypeOf(Element element) {
    switch (element) {
        case Element::u8:
            return py::dtype::of<std::uint8_t>();
        case Element::s8:
            return py::dtype::of<std::int8_t>();
        case Element::u16:
            return py::dtype::of<std::uint16_t>();
        case Element::s16:
            return py::dtype::of<std::int16_t>();
        case Element::u32:
            return py::dtype::of<std::uint32_t>();
        case Element::s32:
            return py::dtype::of<std::int32_t>();
        case Element::f32:
            return py::dtype::of<float>();
        case Element::f64:
            return py::dtype::of<double>();
    }
    throw std::logic_error("an element without a dtype");
}

int axesOf(const PlaneShape& shape) { return shape.channels > 1 && !shape.v210 && shape.packedBits == 0 ? 3 : 2; }

Picture pictureOf(const py::object& argument, std::string name, const ImageShape& shape) {
    Picture picture = {std::move(name), {}, {}};
    const std::size_t count = shape.planes.size();
    if (count == 1) {
        picture.arrays.push_back(asArray(argument, picture.name));
    } else if (py::isinstance<py::array>(argument)) {
        const auto all = py::reinterpret_borrow<py::array>(argument);
        if (all.ndim() != 3 || static_cast<std::size_t>(all.shape(0)) != count)
            throw py::value_error(text(picture.name, ": an array of shape ", shapeText(all), ", not ", count,
                                       " planes: give a sequence of arrays"));
        for (std::size_t i = 0; i < count; ++i) picture.arrays.push_back(py::array(all[py::int_(i)]));
    } else if (py::isinstance<py::tuple>(argument) || py::isinstance<py::list>(argument)) {
        const auto sequence = py::reinterpret_borrow<py::sequence>(argument);
        if (sequence.size() != count)
            throw py::value_error(text(picture.name, ": ", sequence.size(), " planes, not ", count));
        for (std::size_t i = 0; i < count; ++i)
            picture.arrays.push_back(asArray(py::object(sequence[i]), text(picture.name, "[", i, "]")));
    } else {
        throw py::type_error(text(picture.name, ": a ",
                                  py::str(py::type::of(argument).attr("__name__")).cast<std::string>(), ", not ", count,
                                  " NumPy arrays, one a plane"));
    }
    for (std::size_t i = 0; i < count; ++i) checkTypeAndAxes(picture.arrays[i], planeName(picture, i), shape.planes[i]);
    return picture;
}

Picture newPicture(const ImageShape& shape, Extent size, std::int64_t extraBits) {
    Picture picture = {"out", {}, {}};
    const auto zeros = py::module_::import("numpy").attr("zeros");
    for (const PlaneShape& plane : shape.planes) {
        const std::int64_t columns = positions(plane, size, extraBits).least, rows = plane.rows(size.height);
        const auto axes =
            axesOf(plane) == 3 ? py::make_tuple(rows, columns, plane.channels) : py::make_tuple(rows, columns);
        picture.arrays.push_back(zeros(axes, dtypeOf(plane.element)).cast<py::array>());
    }
    return picture;
}

Extent sizeOf(const Picture& picture, const ImageShape& shape) {
    const py::array& array = picture.arrays.front();
    const PlaneShape& plane = shape.planes.front();
    std::int64_t width = array.shape(1);
    constexpr std::int64_t kMost = std::numeric_limits<int>::max();
    if (width > kMost || array.shape(0) > kMost)
        throw py::value_error(text(picture.name, ": shape ", shapeText(array), " is too large"));
    if (plane.packedBits > 0) width = width * 8 / plane.packedBits;
    if (plane.v210) width = width / 4 * 6 + (width % 4 == 3 ? 4 : width % 4);
    return {width, array.shape(0)};
}

void checkPlanes(Picture& picture, const ImageShape& shape, Extent size, const StepRules& rules) {
    picture.planes.clear();
    for (std::size_t i = 0; i < picture.arrays.size(); ++i) {
        const py::array& array = picture.arrays[i];
        const PlaneShape& plane = shape.planes[i];
        const std::string name = planeName(picture, i);
        const Range columns = positions(plane, size, rules.extraBits);
        checkExtent(array.shape(0), rowsRange(plane, size), name, 0, "rows", size);
        checkExtent(array.shape(1), columns, name, 1, "columns", size);
        checkInnerStrides(array, name);
        Plane view;
        view.first = static_cast<std::byte*>(const_cast<void*>(array.data()));
        view.rows = plane.rows(size.height);
        view.rowBytes = columns.least * array.itemsize() * (axesOf(plane) == 3 ? plane.channels : 1);
        // NumPy gives axes of one row, and empty arrays, any stride.
        view.step = array.shape(0) > 1 && array.size() > 0 ? static_cast<std::int64_t>(array.strides(0))
                                                           : std::max<std::int64_t>(view.rowBytes, 1);
        if (rules.inElements && (array.shape(0) <= 1 || array.size() == 0))
            view.step = std::max<std::int64_t>(view.rowBytes, array.itemsize());
        checkStep(view, name, rules, shape.dense, array.itemsize());
        picture.planes.push_back(view);
    }
    if (!rules.shared) return;
    // A plane of one row takes whatever step the others have.
    const auto several = std::ranges::find_if(picture.planes, [](const Plane& plane) { return plane.rows > 1; });
    for (std::size_t i = 0; several != picture.planes.end() && i < picture.planes.size(); ++i) {
        if (picture.planes[i].rows > 1 && picture.planes[i].step != several->step)
            throw py::value_error(text(planeName(picture, i), ": axis 0 (rows) has a stride of ",
                                       picture.planes[i].step, " bytes, another plane ", several->step,
                                       "; this function takes one for all"));
        picture.planes[i].step = several->step;
    }
}

void checkWritable(const Picture& picture) {
    for (std::size_t i = 0; i < picture.arrays.size(); ++i) {
        if (!picture.arrays[i].writeable())
            throw py::value_error(text(planeName(picture, i), ": the array is read-only"));
        const Plane& plane = picture.planes[i];
        const std::int64_t apart = plane.step < 0 ? -plane.step : plane.step;
        if (plane.rows > 1 && apart < plane.rowBytes)
            throw py::value_error(text(planeName(picture, i), ": axis 0 (rows) has a stride of ", plane.step,
                                       " bytes, so rows of ", plane.rowBytes, " bytes overlap each other"));
    }
}

void checkDisjoint(const Picture& destination, const Picture& source) {
    for (std::size_t i = 0; i < destination.planes.size(); ++i) {
        const Rows written(destination.planes[i]);
        for (std::size_t j = 0; j < source.planes.size(); ++j)
            if (overlap(written, Rows(source.planes[j])))
                throw py::value_error(
                    text(planeName(destination, i), " overlaps ", planeName(source, j), " in memory"));
        for (std::size_t j = 0; j < i; ++j)
            if (overlap(written, Rows(destination.planes[j])))
                throw py::value_error(
                    text(planeName(destination, i), " overlaps ", planeName(destination, j), " in memory"));
    }
}

}  // namespace pxl::python
