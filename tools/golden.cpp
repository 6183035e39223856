#include "golden.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <sstream>

#include "digest.h"
#include "error.h"
#include "raster.h"
#include "splitmix.h"

namespace pxl::tool {

namespace {

using catalog::Export;
using catalog::Random;
using catalog::Role;

// Everything here is arithmetic that is exact or rounded in one defined way, so that it is the same on every machine.

// What the samples of an image are: anything; the ends of the range and, of floats, what is no colour; slopes as in
// pictures, with some noise.
enum class Content { any, extreme, smooth };

template <class Float>
Float extremeFloat(Random& random) {
    using Limits = std::numeric_limits<Float>;
    // The only NaN is the one that invalid operations give: with two kinds a sum would show the order of its operands.
    const Float values[] = {-Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(), -Float{0},
                            Limits::denorm_min(), Limits::max(),      Float(300),          Float(-70000)};
    const int choice = random.below(32);
    return choice < 8 ? values[choice] : static_cast<Float>(choice % 2);
}

template <class Float>
void fillFloats(std::span<std::uint8_t> row, std::int64_t y, Content content, Random& random) {
    for (std::size_t i = 0; i * sizeof(Float) < row.size(); ++i) {
        Float value = 0;
        if (content == Content::any) value = static_cast<Float>(random.between(-0.25, 1.25));
        if (content == Content::extreme) value = extremeFloat<Float>(random);
        if (content == Content::smooth) {
            const auto slope = static_cast<double>((static_cast<std::int64_t>(i) * 5 + y * 3) % 1024);
            value = static_cast<Float>(slope * 0x1p-10 + random.between(0, 0.03125));
        }
        std::memcpy(&row[i * sizeof(Float)], &value, sizeof value);
    }
}

void fillIntegers(std::span<std::uint8_t> row, std::int64_t y, Content content, Random& random) {
    std::uint64_t bits = 0;
    for (std::size_t i = 0; i < row.size(); ++i) {
        bits = i % 8 == 0 ? random.next() : bits >> 8;
        auto byte = static_cast<std::uint8_t>(bits);
        if (content == Content::extreme) byte = byte < 128 ? 0 : 255;
        if (content == Content::smooth)
            byte = static_cast<std::uint8_t>(static_cast<std::int64_t>(i) * 2 / 3 + y * 3 + byte % 8);
        row[i] = byte;
    }
}

void fill(const Image& image, Content content, Random& random) {
    for (std::size_t i = 0; i < image.planes(); ++i) {
        const Image::Plane plane = image.plane(i);
        for (std::int64_t y = 0; y < plane.rows; ++y) {
            const std::span<std::uint8_t> row(plane.row(y), static_cast<std::size_t>(plane.rowBytes));
            switch (image.shape().planes[i].element) {
                case Element::f32:
                    fillFloats<float>(row, y, content, random);
                    break;
                case Element::f64:
                    fillFloats<double>(row, y, content, random);
                    break;
                default:
                    fillIntegers(row, y, content, random);
            }
        }
    }
}

// Of a result that is no number, only that it is none is defined.
template <class Float>
void addFloats(Hash& hash, const Image::Plane& plane) {
    for (std::int64_t i = 0; i < plane.bytes(); i += static_cast<std::int64_t>(sizeof(Float))) {
        Float value;
        std::memcpy(&value, plane.first + i, sizeof value);
        if (std::isnan(value)) value = std::numeric_limits<Float>::quiet_NaN();
        hash.add(value);
    }
}

void add(Hash& hash, const Image& image) {
    for (std::size_t i = 0; i < image.planes(); ++i) {
        const Image::Plane plane = image.plane(i);
        const Element element = image.shape().planes[i].element;
        if (element == Element::f32) {
            addFloats<float>(hash, plane);
        } else if (element == Element::f64) {
            addFloats<double>(hash, plane);
        } else {
            hash.add(plane.first, static_cast<std::size_t>(plane.bytes()));
        }
    }
}

// The further arguments of a call; points into itself.
struct Further {
    Further(const Export& function, Random& random) {
        for (double& weight : weights64) weight = random.between(-0.25, 1);
        std::copy_n(weights64, 3, weights32);
        for (float& factor : matrix) factor = static_cast<float>(random.between(-1.5, 1.5));
        for (float& gain : gains) gain = static_cast<float>(random.between(0, 2));
        arguments.matrix = matrix;
        arguments.alpha = random.below(256);
        arguments.grid = random.below(4);
        if (random.below(2)) arguments.gains = gains;
        arguments.noise = random.below(2) * random.below(101);
        arguments.ditherType =
            function.has(Role::bitOffset) ? pxlDitherStucki * random.below(2) : random.below(pxlDitherStucki + 1);
        arguments.levels = 2 + random.below(255);
        arguments.threshold = random.below(256);
        arguments.layoutCode = random.below(2) ? 1 : 21;  // the lone picture: no rows outside it are read
        arguments.rangeLow = random.below(2) ? 0 : random.between(-2, 0);
        arguments.rangeHigh = random.below(2) ? 1 : random.between(0.5, 3);
        const auto weights = std::ranges::find(function.parameters, Role::weights, &catalog::Parameter::role);
        if (weights == function.parameters.end() || random.below(2)) return;
        arguments.weights = weights->element == Element::f64 ? static_cast<const void*>(weights64) : weights32;
    }
    Further(const Further&) = delete;

    catalog::Arguments arguments;
    double weights64[3];
    float weights32[3], matrix[16], gains[3];
};

void addCall(Hash& hash, const Export& function, PxlSize wanted, Content content, Random& random) {
    const PxlSize size = function.fitting(
        {std::max(wanted.width, function.minimumWidth), std::max(wanted.height, function.minimumHeight)});
    const Image source(function.inPlace ? ImageShape{} : function.source, size),
        destination(function.destination, size);
    fill(source, content, random);
    fill(destination, content, random);
    Further further(function, random);
    further.arguments.size = size;
    further.arguments.source = Rows(source).references();
    further.arguments.destination = Rows(destination).references();
    hash.add(invoke(function, further.arguments));
    add(hash, destination);
}

// What the function says to images that are nowhere and to one without pixels; it converts neither.
void addRefusals(Hash& hash, const Export& function, Random& random) {
    Further further(function, random);
    further.arguments.size = function.fitting({64, 64});
    further.arguments.source.assign(function.source.planes.size(), {nullptr, 4096});
    further.arguments.destination.assign(function.destination.planes.size(), {nullptr, 4096});
    hash.add(invoke(function, further.arguments));
    const PxlSize onePixel = function.fitting({1, 1});
    const Image source(function.source, onePixel), destination(function.destination, onePixel);
    further.arguments.size = {0, 0};
    further.arguments.source = Rows(source).references();
    further.arguments.destination = Rows(destination).references();
    hash.add(invoke(function, further.arguments));
}

// Every remainder of a row, on both sides of the groups, and larger images of every content. The widths of 64 and 192
// take the paths that ask for aligned images.
Digest digestOf(const Export& function) {
    Hash hash;
    Random random(2022);
    addRefusals(hash, function, random);
    for (int width = 1; width <= 36; ++width) addCall(hash, function, {width, 1 + width % 5}, Content::any, random);
    for (const Content content : {Content::any, Content::extreme, Content::smooth}) {
        for (const PxlSize size : {PxlSize{64, 17}, {157, 9}}) addCall(hash, function, size, content, random);
    }
    addCall(hash, function, {192, 32}, Content::any, random);
    return hash.value();
}

Digest digestOfReduceBitsBufferSize(catalog::AnyFunction address) {
    const auto function = reinterpret_cast<decltype(&pxliReduceBitsGetBufferSize)>(address);
    Hash hash;
    for (const PxlChannels channels : {pxlC1, pxlC3, pxlC4, pxlAC4}) {
        for (const int width : {0, 1, 7, 640, 1921, 1 << 20}) {
            for (const int noise : {-1, 0, 1, 100, 101}) {
                for (int type = pxlDitherNone; type <= pxlDitherStucki; ++type) {
                    int bytes = -1;
                    hash.add(function(channels, {width, 480}, noise, static_cast<PxlDitherType>(type), &bytes));
                    hash.add(bytes);
                }
            }
        }
    }
    return hash.value();
}

Digest digestOfVersion(catalog::AnyFunction address) {
    const PxlLibraryVersion& version = *reinterpret_cast<decltype(&pxlccGetLibVersion)>(address)();
    Hash hash;
    for (const std::int32_t number : {version.major, version.minor, version.majorBuild, version.build})
        hash.add(number);
    hash.add(version.targetCpu);
    for (const char* text : {version.Name, version.Version, version.BuildDate}) hash.add(text, std::strlen(text) + 1);
    return hash.value();
}

// PXL_GOLDEN and PXL_GOLDEN_OF_ESTIMATE are the lines of the table.
constexpr Golden kTable[] = {
#define PXL_GOLDEN(function, digest) {#function, 0, digest},
#define PXL_GOLDEN_OF_ESTIMATE(function, estimate, digest) {#function, estimate, digest},
#include "golden.def"
#undef PXL_GOLDEN
#undef PXL_GOLDEN_OF_ESTIMATE
};

std::string hexadecimal(Digest digest) {
    char text[24];
    std::snprintf(text, sizeof text, "0x%016llX", static_cast<unsigned long long>(digest));
    return text;
}

// The lines of that function in a text that hold for other estimates.
std::string linesOfOthers(const std::string& text, std::string_view function, Digest estimate) {
    const std::string start = "PXL_GOLDEN_OF_ESTIMATE(" + std::string(function) + ", ";
    std::istringstream lines(text);
    std::string kept;
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind(start, 0) == 0 && line.rfind(start + hexadecimal(estimate), 0) != 0) kept += line + '\n';
    }
    return kept;
}

}  // namespace

std::span<const Golden> goldenTable() { return kTable; }

std::vector<Result> goldenResults(const Implementation& implementation) {
    std::vector<Result> results;
    for (std::size_t i = 0; i < catalog::all().size(); ++i) {
        Export function = catalog::all()[i];
        if (implementation.functions != nullptr) function.address = implementation.functions[i];
        results.push_back({function.name, function.usesEstimate, digestOf(function)});
    }
    results.push_back(
        {"pxliReduceBitsGetBufferSize", false, digestOfReduceBitsBufferSize(implementation.reduceBitsBufferSize)});
    results.push_back({"pxlccGetLibVersion", false, digestOfVersion(implementation.version)});
    return results;
}

std::string goldenText(const std::vector<Result>& results, Digest estimate, const std::string& earlier) {
    std::ostringstream text;
    text << "// What every export makes of fixed images and arguments; \"make golden\" writes this file. The lines of "
            "an\n"
            "// estimate hold for the processors whose estimates of reciprocals have that digest.\n\n";
    for (const Result& result : results) {
        if (result.usesEstimate) {
            text << "PXL_GOLDEN_OF_ESTIMATE(" << result.function << ", " << hexadecimal(estimate) << ", "
                 << hexadecimal(result.digest) << ")\n"
                 << linesOfOthers(earlier, result.function, estimate);
        } else {
            text << "PXL_GOLDEN(" << result.function << ", " << hexadecimal(result.digest) << ")\n";
        }
    }
    return text.str();
}

}  // namespace pxl::tool
