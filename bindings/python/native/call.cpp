#include "call.h"

#include <limits>
#include <string>

#include "arguments.h"
#include "planes.h"

namespace pxl::python {
namespace {

using catalog::Export;
using catalog::Role;

std::string sizeText(Extent size) { return std::to_string(size.width) + " x " + std::to_string(size.height); }

[[noreturn]] void refuse(const std::string& why) { throw py::value_error(why); }

bool is64Bit(const Export& function) { return function.name.ends_with("_L"); }

StepRules rulesOf(const Export& function, const catalog::ImageShape& shape) {
    StepRules rules;
    rules.shared = shape.planes.size() > 1 && shape.planeArray && !shape.stepArray && !shape.dense;
    rules.positive = function.testsSteps;
    rules.inElements = function.stepsInElements;
    rules.wide = is64Bit(function);
    return rules;
}

Extent sourceSize(const Export& function, const Picture& source, const py::object& out, const py::object& width) {
    Extent size = sizeOf(source, function.source);
    if (!asksWidth(function)) return size;
    if (!width.is_none()) {
        const auto index = py::reinterpret_steal<py::object>(PyNumber_Index(width.ptr()));
        if (!index) throw py::error_already_set();
        int overflow = 0;
        size.width = PyLong_AsLongLongAndOverflow(index.ptr(), &overflow);
        if (overflow != 0 || size.width < 0) refuse("width: " + py::str(width).cast<std::string>() + " pixels");
    } else if (py::isinstance<py::array>(out) && py::reinterpret_borrow<py::array>(out).ndim() == 2) {
        size.width = py::reinterpret_borrow<py::array>(out).shape(1);
    }
    if (size.width > std::numeric_limits<int>::max()) refuse("width: more than 2147483647 pixels");
    return size;
}

Extent regionOf(const Further& further, Extent size) {
    if (!further.hasRectangle) return size;
    const PxlRect& rectangle = further.rectangle;
    if (std::int64_t{rectangle.x} + rectangle.width > size.width ||
        std::int64_t{rectangle.y} + rectangle.height > size.height)
        refuse("rectangle: reaches beyond the picture of " + sizeText(size) + " pixels");
    return {rectangle.width, rectangle.height};
}

// Steps as the catalogue takes them. Those of 64 bits are handed over by WideSteps.
std::vector<catalog::PlaneRef> references(const Picture& picture) {
    std::vector<catalog::PlaneRef> planes;
    for (const Plane& plane : picture.planes) planes.push_back({plane.first, static_cast<int>(plane.step)});
    return planes;
}

// What catalog::Arguments has no room for.
class Patch {
public:
    Patch(const Export& function, const Picture& source, const Picture& destination, const Further& further)
        : function_(function), further_(further) {
        for (std::size_t i = 0; i < source.planes.size(); ++i) sourceSteps_[i] = source.planes[i].step;
        for (std::size_t i = 0; i < destination.planes.size(); ++i) destinationSteps_[i] = destination.planes[i].step;
    }

    void apply(catalog::Values& values) const {
        for (std::size_t i = 0; i < function_.parameters.size(); ++i) {
            switch (function_.parameters[i].role) {
                case Role::rectangle:
                    if (further_.hasRectangle) values[i].rectangle = further_.rectangle;
                    break;
                case Role::bitOffset:
                    values[i].integer = further_.bitOffset;
                    break;
                case Role::sourceStep:
                    if (is64Bit(function_)) values[i].integer = sourceSteps_[0];
                    break;
                case Role::destinationStep:
                    if (is64Bit(function_)) values[i].integer = destinationSteps_[0];
                    break;
                case Role::sourceSteps:
                    if (is64Bit(function_)) values[i].wideSteps = sourceSteps_;
                    break;
                case Role::destinationSteps:
                    if (is64Bit(function_)) values[i].wideSteps = destinationSteps_;
                    break;
                default:
                    break;
            }
        }
    }

private:
    const Export& function_;
    const Further& further_;
    std::int64_t sourceSteps_[4] = {}, destinationSteps_[4] = {};
};

std::string meaningOf(PxlStatus status) {
    switch (status) {
        case pxlStatusNoOperation:
            return "found nothing to do and wrote nothing";
        case pxlStatusOddSize:
            return "the width or height is odd; the even part is done";
        case pxlStatusBadArgument:
            return "an argument is out of range";
        case pxlStatusBadSize:
            return "a size that the function does not take";
        case pxlStatusNullPointer:
            return "a null pointer";
        case pxlStatusBadStep:
            return "a row step that the function does not take";
        case pxlStatusBadChannelCount:
            return "an unknown channel layout";
        case pxlStatusBadRange:
            return "the range of values is empty";
        case pxlStatusBadLevels:
            return "a number of levels out of range";
        case pxlStatusBadNoise:
            return "noise out of range";
        case pxlStatusBadDitherType:
            return "a dithering that the function does not know";
        case pxlStatusSizeOverflow:
            return "a width or height above 2147483647";
        default:
            return "an unknown status";
    }
}

void report(const Export& function, Extent size, PxlStatus status, const StatusClasses& classes) {
    if (status == pxlStatusOk) return;
    std::string message(function.name);
    message += ": " + meaningOf(status);
    if (status == pxlStatusBadSize) {
        message += ", " + sizeText(size) + "; from " + sizeText({function.minimumWidth, function.minimumHeight});
        if (function.sizeMultiple > 1) message += " in multiples of " + std::to_string(function.sizeMultiple);
    }
    message += " (status " + std::to_string(status) + ")";
    if (status > 0) {
        if (PyErr_WarnEx(classes.warning, message.c_str(), 2) != 0) throw py::error_already_set();
        return;
    }
    const auto error = py::reinterpret_borrow<py::object>(classes.error)(message);
    error.attr("status") = status;
    PyErr_SetObject(classes.error, error.ptr());
    throw py::error_already_set();
}

py::object asResult(const Picture& picture) {
    if (picture.arrays.size() == 1) return picture.arrays.front();
    py::tuple planes(picture.arrays.size());
    for (std::size_t i = 0; i < picture.arrays.size(); ++i) planes[i] = picture.arrays[i];
    return planes;
}

PxlStatus run(const Export& function, const Picture& source, const Picture& destination, Extent size,
              Further& further) {
    further.arguments.size = {static_cast<int>(size.width), static_cast<int>(size.height)};
    further.arguments.source = references(source);
    further.arguments.destination = references(destination);
    const Patch patch(function, source, destination, further);
    const py::gil_scoped_release release;
    catalog::Values values(function, further.arguments);
    patch.apply(values);
    return function.call(values.begin());
}

}  // namespace

py::object call(const Export& function, const py::object& source, const py::object& out, const py::tuple& values,
                const StatusClasses& classes) {
    Further further;
    readArguments(function, values, further);

    if (function.inPlace) {
        Picture image = pictureOf(source, "image", function.destination);
        const Extent size = sizeOf(image, function.destination);
        checkPlanes(image, function.destination, size, rulesOf(function, function.destination));
        checkWritable(image);
        checkDisjoint(image, {});
        report(function, size, run(function, {}, image, size, further), classes);
        return source;
    }

    Picture from = pictureOf(source, "src", function.source);
    const Extent size = sourceSize(function, from, out, further.width);
    const Extent region = regionOf(further, size);
    checkPlanes(from, function.source, size, rulesOf(function, function.source));
    if (size.width == 1 && function.source.planes.front().bytesBeforeLonePixel > 0)
        refuse("src: in a row of one pixel the function reads what lies in front of the row; give two pixels or more");

    StepRules rules = rulesOf(function, function.destination);
    rules.extraBits = further.bitOffset;
    Picture to = out.is_none() ? newPicture(function.destination, region, rules.extraBits)
                               : pictureOf(out, "out", function.destination);
    checkPlanes(to, function.destination, region, rules);
    checkWritable(to);
    checkDisjoint(to, from);
    report(function, size, run(function, from, to, size, further), classes);
    return out.is_none() ? asResult(to) : out;
}

}  // namespace pxl::python
