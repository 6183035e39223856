// Interleaved pixels in another channel order: what convert() needs around exports that know one order only.
#pragma once

#include <pybind11/numpy.h>

namespace pxl::python {

namespace py = pybind11;

// Both arrays are (rows, columns, 3 or 4) of the same sizes and type, bytes or 16-bit samples, and do not overlap. A
// fourth channel is copied where both have one and is `alpha` where only `out` has one.
void reorder(const py::array& source, const py::array& out, bool reverse, int alpha);

}  // namespace pxl::python
