// The further arguments of exports as Python knows them: names, defaults, types, and how values are read.
#pragma once

#include <pybind11/pybind11.h>

#include <array>
#include <string>
#include <vector>

#include "catalog.h"

namespace pxl::python {

namespace py = pybind11;

// An argument beside the images, in the order of the signature.
struct ArgumentText {
    std::string name;
    std::string standard;    // its default as Python source; empty: it has none
    std::string annotation;  // its type
    std::string meaning;
};

// Role::scratch and others that the binding brings itself have none.
std::vector<ArgumentText> argumentsOf(const catalog::Export& function);

// Whether a width cannot be told from the shape of the source: packed samples. Then it is the first argument.
bool asksWidth(const catalog::Export& function);

// What the arguments of one call point to, and what catalog::Arguments does not hold.
struct Further {
    catalog::Arguments arguments;
    std::array<double, 3> weights64 = {};
    std::array<float, 3> weights32 = {};
    std::array<float, 16> matrix = {};
    std::array<float, 3> gains = {};
    py::object width = py::none();
    PxlRect rectangle = {0, 0, 0, 0};
    bool hasRectangle = false;
    int bitOffset = 0;
};

// Reads the values, given in the order of argumentsOf(). Not copyable: `arguments` points into it.
void readArguments(const catalog::Export& function, const py::tuple& values, Further& further);

}  // namespace pxl::python
