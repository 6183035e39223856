#include "arguments.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string_view>
#include <utility>

namespace pxl::python {
namespace {

using catalog::Element;
using catalog::Export;
using catalog::Parameter;
using catalog::Role;

bool isReal(Element element) { return element == Element::f32 || element == Element::f64; }

struct Limits {
    long long least, most;
};
Limits limitsOf(Element element) {
    switch (element) {
        case Element::s8:
            return {-128, 127};
        case Element::u16:
            return {0, 65535};
        case Element::s16:
            return {-32768, 32767};
        case Element::u32:
            return {0, 4294967295};
        case Element::s32:
            return {-2147483648LL, 2147483647};
        default:
            return {0, 255};
    }
}

template <class Code>
using Names = std::vector<std::pair<std::string_view, Code>>;
const Names<int> kGrids = {{"bggr", pxlBayBGGR}, {"rggb", pxlBayRGGB}, {"gbrg", pxlBayGBRG}, {"grbg", pxlBayGRBG}};
const Names<int> kDitherings = {{"none", pxlDitherNone},
                                {"fs", pxlDitherFS},
                                {"jjn", pxlDitherJJN},
                                {"stucki", pxlDitherStucki},
                                {"bayer", pxlDitherBayer}};
// To single bits there are two of them.
const Names<int> kDitheringsOfBits = {{"none", pxlDitherNone}, {"stucki", pxlDitherStucki}};

std::string listed(const Names<int>& names) {
    std::string list;
    for (const auto& [name, code] : names) list.append(list.empty() ? "\"" : ", \"").append(name).append("\"");
    return list;
}

int codeOf(const Names<int>& names, const py::handle& value, const char* argument) {
    if (!py::isinstance<py::str>(value)) throw py::type_error(std::string(argument) + ": one of " + listed(names));
    const auto text = value.cast<std::string>();
    const auto found = std::ranges::find(names, std::string_view(text), &std::pair<std::string_view, int>::first);
    if (found == names.end())
        throw py::value_error(std::string(argument) + ": \"" + text + "\" is none of " + listed(names));
    return found->second;
}

long long integer(const py::handle& value, Limits limits, const char* argument) {
    const auto index = py::reinterpret_steal<py::object>(PyNumber_Index(value.ptr()));
    if (!index) {
        PyErr_Clear();
        throw py::type_error(std::string(argument) + ": not an integer");
    }
    int overflow = 0;
    const long long number = PyLong_AsLongLongAndOverflow(index.ptr(), &overflow);
    if (overflow != 0 || number < limits.least || number > limits.most)
        throw py::value_error(std::string(argument) + ": not from " + std::to_string(limits.least) + " to " +
                              std::to_string(limits.most));
    return number;
}

double real(const py::handle& value, const char* argument) {
    const double number = PyFloat_AsDouble(value.ptr());
    if (PyErr_Occurred() != nullptr) {
        PyErr_Clear();
        throw py::type_error(std::string(argument) + ": not a number");
    }
    return number;
}

// Sequences and arrays of numbers, also nested ones, as one list.
void flatten(const py::handle& value, std::vector<double>& numbers, const char* argument) {
    if (!py::isinstance<py::str>(value) && PySequence_Check(value.ptr()) != 0) {
        const auto sequence = py::reinterpret_borrow<py::sequence>(value);
        for (std::size_t i = 0; i < sequence.size() && numbers.size() <= 16; ++i)
            flatten(py::object(sequence[i]), numbers, argument);
    } else {
        numbers.push_back(real(value, argument));
    }
}

std::vector<double> numbersOf(const py::handle& value, std::size_t count, const char* argument) {
    std::vector<double> numbers;
    flatten(value, numbers, argument);
    if (numbers.size() != count)
        throw py::value_error(std::string(argument) + ": not " + std::to_string(count) + " numbers");
    return numbers;
}

PxlRect rectangleOf(const py::handle& value) {
    if (PySequence_Check(value.ptr()) == 0 || PySequence_Size(value.ptr()) != 4)
        throw py::type_error("rectangle: not four integers x, y, width, height");
    int edges[4];
    const auto sequence = py::reinterpret_borrow<py::sequence>(value);
    for (std::size_t i = 0; i < 4; ++i)
        edges[i] =
            static_cast<int>(integer(py::object(sequence[i]), {0, std::numeric_limits<int>::max()}, "rectangle"));
    return {edges[0], edges[1], edges[2], edges[3]};
}

std::size_t matrixValues(const Export& function) { return function.source.layout == "C4" ? 16 : 12; }

bool toBits(const Export& function) { return function.has(Role::bitOffset); }

// The roles that Python sees.
bool isVisible(Role role) {
    switch (role) {
        case Role::alpha:
        case Role::weights:
        case Role::matrix:
        case Role::rangeLow:
        case Role::rangeHigh:
        case Role::rectangle:
        case Role::grid:
        case Role::gains:
        case Role::noise:
        case Role::ditherType:
        case Role::levels:
        case Role::bitOffset:
        case Role::threshold:
            return true;
        default:
            return false;
    }
}

ArgumentText textOf(const Export& function, const Parameter& parameter) {
    switch (parameter.role) {
        case Role::alpha:
            if (isReal(parameter.element)) return {"alpha", "1.0", "float", "sample of the fourth channel"};
            return {"alpha", std::to_string(limitsOf(parameter.element).most), "int", "sample of the fourth channel"};
        case Role::weights:
            return {"weights", "None", "Optional[Sequence[float]]",
                    "the three weights; None: 0.299, 0.587, 0.114, those of ITU-R BT.601 luma"};
        case Role::matrix:
            return {"matrix", "", "ArrayLike",
                    matrixValues(function) == 16 ? "4 x 4 factors" : "3 x 4 factors, the last column is added"};
        case Role::rangeLow:
            return {"low", "0.0", "float", "least value of the floats, that of code 0"};
        case Role::rangeHigh:
            return {"high", "1.0", "float", "greatest value of the floats, above low"};
        case Role::rectangle:
            return {"rectangle", "None", "Optional[Sequence[int]]",
                    "x, y, width and height of the part of the picture that is converted; None: all of it"};
        case Role::grid:
            return {"grid", "\"rggb\"", "str", "colours of the first 2 x 2 pixels by rows: " + listed(kGrids)};
        case Role::gains:
            return {"gains", "None", "Optional[Sequence[float]]", "factors of the results B, G and R"};
        case Role::noise:
            return {"noise", "0", "int", "noise in the thresholds, 0 to 100 percent of a step"};
        case Role::ditherType:
            return {"dither", "\"none\"", "str", listed(toBits(function) ? kDitheringsOfBits : kDitherings)};
        case Role::levels:
            return {"levels", "16", "int", "how many values are left, 2 to 256"};
        case Role::bitOffset:
            return {"bit_offset", "0", "int", "bits in front of the first one of each row, which are kept"};
        default:  // Role::threshold
            return {"threshold", "127", "int", "samples above it become 1, 0 to 255"};
    }
}

void readOne(const Export& function, const Parameter& parameter, const py::handle& value, Further& further) {
    catalog::Arguments& arguments = further.arguments;
    switch (parameter.role) {
        case Role::alpha:
            arguments.alpha = isReal(parameter.element)
                                  ? real(value, "alpha")
                                  : static_cast<double>(integer(value, limitsOf(parameter.element), "alpha"));
            break;
        case Role::weights: {
            if (value.is_none()) break;
            const auto numbers = numbersOf(value, 3, "weights");
            std::ranges::copy(numbers, further.weights64.begin());
            std::ranges::transform(numbers, further.weights32.begin(), [](double x) { return static_cast<float>(x); });
            const bool doubles = parameter.element == Element::f64;
            arguments.weights = doubles ? static_cast<const void*>(further.weights64.data()) : further.weights32.data();
            break;
        }
        case Role::matrix: {
            const auto numbers = numbersOf(value, matrixValues(function), "matrix");
            std::ranges::transform(numbers, further.matrix.begin(), [](double x) { return static_cast<float>(x); });
            arguments.matrix = further.matrix.data();
            break;
        }
        case Role::rangeLow:
            arguments.rangeLow = real(value, "low");
            break;
        case Role::rangeHigh:
            arguments.rangeHigh = real(value, "high");
            break;
        case Role::rectangle:
            further.hasRectangle = !value.is_none();
            if (further.hasRectangle) further.rectangle = rectangleOf(value);
            break;
        case Role::grid:
            arguments.grid = codeOf(kGrids, value, "grid");
            break;
        case Role::gains: {
            if (value.is_none()) break;
            const auto numbers = numbersOf(value, 3, "gains");
            std::ranges::transform(numbers, further.gains.begin(), [](double x) { return static_cast<float>(x); });
            arguments.gains = further.gains.data();
            break;
        }
        case Role::noise:
            arguments.noise = static_cast<int>(integer(value, {0, 100}, "noise"));
            break;
        case Role::ditherType:
            arguments.ditherType = codeOf(toBits(function) ? kDitheringsOfBits : kDitherings, value, "dither");
            break;
        case Role::levels:
            arguments.levels = static_cast<int>(integer(value, {2, 256}, "levels"));
            break;
        case Role::bitOffset:
            further.bitOffset = static_cast<int>(integer(value, {0, 1 << 30}, "bit_offset"));
            break;
        case Role::threshold:
            arguments.threshold = static_cast<int>(integer(value, {0, 255}, "threshold"));
            break;
        default:
            break;
    }
}

}  // namespace

bool asksWidth(const Export& function) {
    const auto& plane = function.source.planes.front();
    return plane.packedBits > 0 || plane.v210;
}

std::vector<ArgumentText> argumentsOf(const Export& function) {
    std::vector<ArgumentText> texts;
    if (asksWidth(function))
        texts.push_back({"width", "None", "Optional[int]",
                         "pixels of a row; None: as many as `out` has, or as fit into a row of src"});
    for (const Parameter& parameter : function.parameters)
        if (isVisible(parameter.role)) texts.push_back(textOf(function, parameter));
    // Python wants those without a default first.
    std::stable_partition(texts.begin(), texts.end(), [](const ArgumentText& text) { return text.standard.empty(); });
    return texts;
}

void readArguments(const Export& function, const py::tuple& values, Further& further) {
    const auto texts = argumentsOf(function);
    if (values.size() != texts.size()) throw py::type_error("a wrong number of arguments");
    const auto valueOf = [&](const std::string& name) {
        const auto found = std::ranges::find(texts, name, &ArgumentText::name);
        return py::object(values[static_cast<std::size_t>(found - texts.begin())]);
    };
    if (asksWidth(function)) further.width = valueOf("width");
    for (const Parameter& parameter : function.parameters)
        if (isVisible(parameter.role)) readOne(function, parameter, valueOf(textOf(function, parameter).name), further);
}

}  // namespace pxl::python
