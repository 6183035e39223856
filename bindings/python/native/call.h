// One call of an export from Python.
#pragma once

#include <pybind11/pybind11.h>

#include "catalog.h"

namespace pxl::python {

namespace py = pybind11;

// The Python classes for what the library reports.
struct StatusClasses {
    PyObject* error;    // negative statuses; has the attribute `status`
    PyObject* warning;  // positive ones
};

// `source` is an array or a sequence of arrays; of in-place functions the image, which is the result. `out` may be
// None. `values` are the further arguments in the order of argumentsOf(). Checks everything before it runs the
// function, which it does without the interpreter's lock.
py::object call(const catalog::Export& function, const py::object& source, const py::object& out,
                const py::tuple& values, const StatusClasses& classes);

}  // namespace pxl::python
