// The extension module pxlcc._native: the catalogue as dictionaries, and one function that calls any export.
#include <pybind11/pybind11.h>

#include "arguments.h"
#include "call.h"
#include "catalog.h"
#include "names.h"
#include "planes.h"
#include "reorder.h"

namespace py = pybind11;

namespace pxl::python {
namespace {

py::dict describe(const catalog::PlaneShape& plane) {
    py::dict d;
    d["dtype"] = dtypeOf(plane.element).attr("name");
    d["axes"] = axesOf(plane);
    d["channels"] = plane.channels;
    d["width_shift"] = plane.widthShift;
    d["height_shift"] = plane.heightShift;
    d["rounds_up"] = plane.partialSamples;
    d["packed_bits"] = plane.packedBits;
    d["v210"] = plane.v210;
    return d;
}

py::dict describe(const catalog::ImageShape& shape) {
    py::dict d;
    d["space"] = shape.space;
    d["sampling"] = shape.sampling;
    d["layout"] = shape.layout;
    d["dense"] = shape.dense;
    d["shared_step"] = shape.planeArray && !shape.stepArray && !shape.dense;
    py::list planes;
    for (const auto& plane : shape.planes) planes.append(describe(plane));
    d["planes"] = planes;
    return d;
}

py::dict describe(const catalog::Export& function) {
    py::dict d;
    d["export"] = std::string(function.name);
    d["name"] = readableName(function.name);
    d["summary"] = std::string(function.summary);
    d["family"] = std::string(function.family);
    d["in_place"] = function.inPlace;
    d["minimum"] = py::make_tuple(function.minimumWidth, function.minimumHeight);
    d["multiple"] = function.sizeMultiple;
    d["positive_steps"] = function.testsSteps;
    d["source"] = describe(function.source);
    d["destination"] = describe(function.destination);
    py::list arguments;
    for (const ArgumentText& text : argumentsOf(function))
        arguments.append(py::make_tuple(text.name, text.standard, text.annotation, text.meaning));
    d["arguments"] = arguments;
    return d;
}

py::list describeAll() {
    py::list list;
    for (const catalog::Export& function : catalog::all()) list.append(describe(function));
    return list;
}

std::string version() { return pxlccGetLibVersion()->Version; }

}  // namespace
}  // namespace pxl::python

PYBIND11_MODULE(_native, module) {
    using namespace pxl::python;
    static StatusClasses classes;
    module.doc() = "Calls into the pxlCC library";
    const auto make = [&](const char* name, const char* text, PyObject* base) {
        PyObject* made = PyErr_NewExceptionWithDoc((std::string("pxlcc.") + name).c_str(), text, base, nullptr);
        if (made == nullptr) throw py::error_already_set();
        module.add_object(name, py::reinterpret_borrow<py::object>(made));
        return made;
    };
    classes.error = make("StatusError", "The library refused a call; `status` says why.", PyExc_ValueError);
    classes.warning =
        make("StatusWarning", "The library did a call in part, or found nothing to do.", PyExc_UserWarning);

    module.def("describe", &describeAll, "Every export as a dictionary, in the order of their numbers.");
    module.def("version", &version, "The version of the library.");
    module.def(
        "call",
        [](std::size_t number, const py::object& source, const py::object& out, const py::tuple& values) {
            const auto exports = pxl::catalog::all();
            if (number >= exports.size()) throw py::index_error("no export has this number");
            return call(exports[number], source, out, values, classes);
        },
        "Calls the export of that number.");
    module.def("reorder", &reorder, py::arg("source"), py::arg("out"), py::arg("reverse"), py::arg("alpha"),
               "Pixels of 3 or 4 samples into pixels of 3 or 4, the first three in reverse if asked.");
}
