// Every exported image function as data: what its arguments are and how to call it with any geometry. Tests, benchmark,
// fuzz target and tool work through this; the library itself never does.
//
// A function is one line in a .def file. What its arguments mean is deduced from the function's type (pointer, plane
// array, step, size ...) and from its name (colour spaces, sampling, element types, layouts).
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "pxlcc.h"

namespace pxl::catalog {

enum class Element { u8, s8, u16, s16, u32, s32, f32, f64 };
std::size_t bytesOf(Element element);

// The samples of one plane of an image of width x height pixels.
struct PlaneShape {
    Element element = Element::u8;
    int channels = 1;     // interleaved samples at each position
    int widthShift = 0;   // positions in a row: width >> widthShift, with partialSamples rounded up
    int heightShift = 0;  // rows: height >> heightShift
    bool partialSamples = false;
    bool partialRows = false;      // the same for rows
    int packedBits = 0;            // samples of so many bits without gaps, in bytes; 0: a sample is an element
    bool v210 = false;             // 10-bit 4:2:2, six pixels in four elements
    bool v210Chroma = true;        // ... of which chroma is used as well
    int bytesBeforeLonePixel = 0;  // how many bytes in front of a row of one pixel are read as well

    std::int64_t rowSamples(std::int64_t width) const {
        if (packedBits > 0) return (width * packedBits + 7) / 8;
        if (v210) {
            constexpr int kOfRest[] = {0, 1, 2, 3, 3, 4};
            return width / 6 * 4 + kOfRest[width % 6] - (width % 6 == 3 && !v210Chroma ? 1 : 0);
        }
        return ((width + (partialSamples ? (1 << widthShift) - 1 : 0)) >> widthShift) * channels;
    }
    std::int64_t rowBytes(std::int64_t width) const {
        return rowSamples(width) * static_cast<std::int64_t>(bytesOf(element));
    }
    std::int64_t rows(std::int64_t height) const {
        return (height + (partialRows ? (1 << heightShift) - 1 : 0)) >> heightShift;
    }
};

// One side of a conversion, read from the name: of pxliYCrCb420ToBGR_8u_P2C4R the source is {"YCrCb", 420, "P2", ...}.
struct ImageShape {
    std::string space;   // colour space in the channel order of the name: "RGB", "BGR", "YCbCr", "CbYCr", "Gray" ...
    int sampling = 444;  // 444, 422, 420, 411, 1620 (4:1:0)
    std::string layout;  // "C1" "C2" "C3" "C4" "AC4" "P2" "P3" "P4" "AP4"; "v210"; "565": 5, 6 and 5 bits of an element
    std::vector<PlaneShape> planes;
    bool planeArray = false;  // passed as an array of plane pointers
    bool stepArray = false;   // ... with an array of steps, one a plane
    bool dense = false;       // passed without steps: rows follow each other, a last chroma sample or row is never cut
};

// What one parameter of the function is.
enum class Role {
    sourcePlane,       // pointer to one plane (`plane`) of the source
    sourcePlanes,      // array of plane pointers
    sourceStep,        // step of plane `plane`, or of all planes
    sourceSteps,       // array of steps
    destinationPlane,  // the same for the destination; for in-place functions this is the one image
    destinationPlanes,
    destinationStep,
    destinationSteps,
    size,
    alpha,       // value of the fourth channel, of type `element`
    layoutCode,  // which part of a larger picture the region is: 1, 4, 16 or all of these bits
    weights,     // pointer to 3 floating-point weights, may be null
    matrix,      // pointer to a float matrix, 3 x 4 or (ColorTwist_32f_C4R) 4 x 4
    rangeLow,    // vMin
    rangeHigh,   // vMax
    rectangle,   // of the source image: the pixels that are converted; as large as the size
    grid,        // PxlBayerGrid
    gains,       // pointer to 3 float factors of the result, may be null
    noise,       // 0..100
    ditherType,  // PxlDitherType
    levels,      // 2..256
    bitOffset,   // of the first pixel of a row of packed bits
    threshold,   // samples above it are 1
    scratch,     // pointer to memory of the caller's, which invoke() brings
    reserved,    // an integer that the function does not look at
    temporary,   // pointer to a temporary image, which invoke() brings
    temporaryStep,
};

struct Parameter {
    Role role;
    int plane = 0;
    Element element = Element::u8;  // of pointers and values
    bool wide = false;              // an array of 64-bit steps
    bool isPointer() const;
};

// One argument of a call; the member that the parameter's type asks for is used.
union Value {
    void* pointer;  // image, weights, matrix; plane arrays: void*[]
    const int* steps;
    const std::int64_t* wideSteps;
    std::int64_t integer;  // step, integral alpha
    double real;           // float alpha and ranges
    PxlSize size;
    PxlRect rectangle;
};

// A function whose type a caller knows by other means.
using AnyFunction = void (*)();

struct Export {
    std::string_view name;
    std::string_view summary;  // one line for people
    std::string_view family;   // "YCbCr 4:4:4", "4:2:0 decoders" ...
    int minimumWidth = 1;
    int minimumHeight = 1;
    bool anyHeight = false;  // below 1 it converts nothing
    int sizeMultiple = 1;    // of width and height; others are refused
    int bandRows = 1;        // bands that start at rows that are multiples of this make the same image; 0: none do.
                             // Dithering has its own: that of ReduceBits is without.
    bool inPlace = false;
    bool testsSteps = false;       // answers a step below 1 with badStep
    bool acceptsEmpty = false;     // converts nothing, without an error, where the size is below the minimum
    bool stepsInElements = false;  // steps count elements of the image, not bytes
    PxlStatus badStep = pxlStatusBadStep;
    bool testsStepArrays = false;  // answers a null array of steps with pxlStatusNullPointer
    bool usesEstimate = false;     // of the reciprocal, which makers of processors build differently
    ImageShape source;             // of in-place functions the same as destination
    ImageShape destination;
    std::vector<Parameter> parameters;
    AnyFunction address = nullptr;  // that of another copy of the library may take its place
    PxlStatus (*callThrough)(AnyFunction address, const Value* arguments) = nullptr;

    // One value a parameter, in order.
    PxlStatus call(const Value* arguments) const { return callThrough(address, arguments); }
    bool has(Role role) const;            // among the parameters
    PxlSize fitting(PxlSize size) const;  // made larger where sizeMultiple asks for it
};

// All exports, in the order of the .def files.
std::span<const Export> all();

// Null if there is none of that name.
const Export* find(std::string_view name);

// A plane somewhere in memory.
struct PlaneRef {
    void* first = nullptr;
    int step = 0;
};

// The arguments of a call by meaning. In-place functions use `destination` only.
struct Arguments {
    PxlSize size = {0, 0};
    std::vector<PlaneRef> source;  // one a plane of source.planes
    std::vector<PlaneRef> destination;
    double alpha = 0;
    std::uint32_t layoutCode = 1;
    const void* weights = nullptr;  // 3 elements of the function's weight type, or null for the default
    const float* matrix = nullptr;
    double rangeLow = 0;
    double rangeHigh = 1;
    int grid = pxlBayRGGB;
    const float* gains = nullptr;
    int noise = 0;
    int ditherType = pxlDitherNone;
    int levels = 16;
    int threshold = 127;
};

// Calls the function. Planes that share one step in its signature must have equal steps here, or std::invalid_argument
// is thrown.
PxlStatus invoke(const Export& function, const Arguments& arguments);

// The argument values that invoke() passes, for tests that change one of them: values[i] belongs to parameters[i].
// Points into itself; not copyable.
class Values {
public:
    Values(const Export& function, const Arguments& arguments);
    Values(const Values&) = delete;
    Values& operator=(const Values&) = delete;
    Value* begin() { return values_.data(); }
    Value& operator[](std::size_t i) { return values_[i]; }
    // The array of plane pointers behind a sourcePlanes or destinationPlanes parameter.
    void** sourcePlanes() { return sourcePlanes_; }
    void** destinationPlanes() { return destinationPlanes_; }

private:
    void* sourcePlanes_[4] = {};
    void* destinationPlanes_[4] = {};
    int sourceSteps_[4] = {};
    int destinationSteps_[4] = {};
    std::unique_ptr<std::byte[]> scratch_;
    std::vector<std::byte> temporary_;
    std::int64_t wideSourceSteps_[4] = {};
    std::int64_t wideDestinationSteps_[4] = {};
    std::vector<Value> values_;
};

}  // namespace pxl::catalog
