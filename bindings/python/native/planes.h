// NumPy arrays as the planes of an image: which shapes, types and strides an export takes, and clear words for the
// rest.
#pragma once

#include <pybind11/numpy.h>

#include <cstdint>
#include <string>
#include <vector>

#include "catalog.h"

namespace pxl::python {

namespace py = pybind11;

// A plane as an array holds it, first row first; the step may be negative.
struct Plane {
    std::byte* first = nullptr;
    std::int64_t step = 0;
    std::int64_t rowBytes = 0;
    std::int64_t rows = 0;
};

// One argument of a call: a single array or one a plane.
struct Picture {
    std::string name;  // for messages
    std::vector<py::array> arrays;
    std::vector<Plane> planes;  // after checkPlanes
};

struct Extent {
    std::int64_t width = 0, height = 0;
};

py::dtype dtypeOf(catalog::Element element);

// Axes of the array that holds a plane: 3 where positions have several samples.
int axesOf(const catalog::PlaneShape& shape);

// The argument as arrays of the right number, types and axes. An array with one more axis stands for its planes.
Picture pictureOf(const py::object& argument, std::string name, const catalog::ImageShape& shape);

// New arrays of zeros for an image of that size.
Picture newPicture(const catalog::ImageShape& shape, Extent size, std::int64_t extraBits);

// Width and height by the first plane. A width of packed samples is the largest that fits.
Extent sizeOf(const Picture& picture, const catalog::ImageShape& shape);

struct StepRules {
    bool shared = false;         // the planes have one step
    bool positive = false;       // at least 1
    bool inElements = false;     // whole samples
    bool wide = false;           // 64 bits
    std::int64_t extraBits = 0;  // in front of packed samples
};

// Checks shapes and strides against the size and fills in `planes`.
void checkPlanes(Picture& picture, const catalog::ImageShape& shape, Extent size, const StepRules& rules);
// ... and of a destination that it may be written and that no byte of it is written twice.
void checkWritable(const Picture& picture);
// No byte of the destination belongs to another plane of it or to the source.
void checkDisjoint(const Picture& destination, const Picture& source);

}  // namespace pxl::python
