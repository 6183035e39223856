#include "catalog.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <type_traits>
#include <utility>

#include "names.h"

namespace pxl::catalog {
namespace {

// What the .def files may add to a line or a family.
struct Extras {
    int minimumWidth = 1;
    int minimumHeight = 1;
    bool anyHeight = false;
    int sizeMultiple = 1;
    bool testsSteps = false;
    bool acceptsEmpty = false;
    bool stepsInElements = false;
    PxlStatus badStep = pxlStatusBadStep;
    bool testsStepArrays = false;
    bool usesEstimate = false;
    bool partialSourceSamples = false;  // a chroma sample of the source may serve fewer pixels at the end of a row
    bool partialDestinationSamples = false;
    bool keeps4th = false;     // of a C4 destination the fourth channel is not written
    int packedSourceBits = 0;  // PlaneShape::packedBits
    int packedDestinationBits = 0;
    int bytesBeforeLonePixel = 0;  // of the source
    bool wholeImage = false;       // rows depend on rows far off, or on what stands in for those beyond the image
    int bandRows = 1;              // at least
};

// ---- from the function's type

enum class Kind { image, planes, step, steps, size, weights, matrix, integer, real, rectangle, grid, dither };

struct TypeInfo {
    Kind kind;
    Element element = Element::u8;
    bool constant = false;  // of what a pointer points to
    bool wide = false;      // 64-bit steps
};

template <class T>
constexpr Element elementOf() {
    if constexpr (std::is_same_v<T, float>) return Element::f32;
    if constexpr (std::is_same_v<T, double>) return Element::f64;
    if constexpr (std::is_same_v<T, Pxl8u>) return Element::u8;
    if constexpr (std::is_same_v<T, Pxl8s>) return Element::s8;
    if constexpr (std::is_same_v<T, Pxl16u>) return Element::u16;
    if constexpr (std::is_same_v<T, Pxl16s>) return Element::s16;
    if constexpr (std::is_same_v<T, Pxl32u>) return Element::u32;
    if constexpr (std::is_same_v<T, Pxl32s>) return Element::s32;
}

// A pointer to int is a step array: no function takes a lone plane of 32-bit signed samples.
template <class T>
constexpr TypeInfo infoOf(bool afterSize) {
    if constexpr (std::is_same_v<T, PxlSize> || std::is_same_v<T, PxlSizeL>) {
        return {Kind::size};
    } else if constexpr (std::is_same_v<T, PxlRect> || std::is_same_v<T, PxlRectL>) {
        return {Kind::rectangle};
    } else if constexpr (std::is_same_v<T, PxlBayerGrid>) {
        return {Kind::grid};
    } else if constexpr (std::is_same_v<T, PxlDitherType>) {
        return {Kind::dither};
    } else if constexpr (std::is_pointer_v<T>) {
        using Pointee = std::remove_pointer_t<T>;
        using Plain = std::remove_const_t<Pointee>;
        if constexpr (std::is_pointer_v<Plain>) {
            using Sample = std::remove_pointer_t<Plain>;
            return {Kind::planes, elementOf<std::remove_const_t<Sample>>(), std::is_const_v<Sample>};
        } else if constexpr (std::is_array_v<Plain>) {
            return {Kind::matrix, Element::f32, true};
        } else if constexpr (std::is_same_v<Plain, int>) {
            return {Kind::steps};
        } else if constexpr (std::is_same_v<Plain, std::int64_t>) {
            return {.kind = Kind::steps, .wide = true};
        } else {
            return {afterSize && std::is_const_v<Pointee> ? Kind::weights : Kind::image, elementOf<Plain>(),
                    std::is_const_v<Pointee>};
        }
    } else if constexpr (std::is_floating_point_v<T>) {
        return {Kind::real, elementOf<T>()};
    } else if constexpr (std::is_same_v<T, int> || std::is_same_v<T, std::int64_t>) {
        return {Kind::step};
    } else {
        return {Kind::integer, elementOf<T>()};
    }
}

// Codes that no enumerator has are handed over as well: C programs can, and the functions answer them with a status.
template <class T>
__attribute__((no_sanitize("enum"))) T argument(const Value& value) {
    if constexpr (std::is_same_v<T, PxlSize>) {
        return value.size;
    } else if constexpr (std::is_same_v<T, PxlSizeL>) {
        return {value.size.width, value.size.height};
    } else if constexpr (std::is_same_v<T, PxlRect>) {
        return value.rectangle;
    } else if constexpr (std::is_same_v<T, PxlRectL>) {
        return {value.rectangle.x, value.rectangle.y, value.rectangle.width, value.rectangle.height};
    } else if constexpr (std::is_same_v<T, const std::int64_t*>) {
        return value.wideSteps;
    } else if constexpr (std::is_same_v<T, const int*>) {
        return value.steps;
    } else if constexpr (std::is_same_v<T, int*>) {
        return const_cast<int*>(value.steps);
    } else if constexpr (std::is_pointer_v<T>) {
        return static_cast<T>(value.pointer);
    } else if constexpr (std::is_floating_point_v<T>) {
        return static_cast<T>(value.real);
    } else if constexpr (std::is_enum_v<T>) {
        T code;  // also one that no enumerator has
        std::memcpy(&code, &value.integer, sizeof code);
        return code;
    } else {
        return static_cast<T>(value.integer);
    }
}

template <class... Parameters>
struct Caller {
    template <std::size_t... kIndex>
    static PxlStatus call(PxlStatus (*function)(Parameters...), const Value* arguments,
                          std::index_sequence<kIndex...>) {
        return function(argument<Parameters>(arguments[kIndex])...);
    }
    static PxlStatus callThrough(AnyFunction address, const Value* arguments) {
        return call(reinterpret_cast<PxlStatus (*)(Parameters...)>(address), arguments,
                    std::index_sequence_for<Parameters...>{});
    }
};

template <class... Parameters>
std::vector<TypeInfo> typesOf(PxlStatus (*)(Parameters...)) {
    std::vector<TypeInfo> types;
    bool afterSize = false;
    ((types.push_back(infoOf<Parameters>(afterSize)), afterSize |= types.back().kind == Kind::size), ...);
    return types;
}

// ---- from types to roles

struct Sides {
    Element source = Element::u8, destination = Element::u8;
    bool sourceArray = false, sourceSteps = false, destinationArray = false, destinationSteps = false;
};

// The numbers around the dither type: size, noise, type, levels; or, to single bits, bit offset, size, noise and seed,
// which do not count, type, threshold.
void nameNumbersOfDithering(std::vector<Parameter>& parameters) {
    const auto size = std::ranges::find(parameters, Role::size, &Parameter::role);
    const auto type = std::ranges::find(parameters, Role::ditherType, &Parameter::role);
    if (type - size == 2) {
        size[1].role = Role::noise;
        type[1].role = Role::levels;
    } else {
        size[-1].role = Role::bitOffset;
        size[1].role = size[2].role = Role::reserved;
        type[1].role = Role::threshold;
    }
}

std::vector<Parameter> rolesOf(const std::vector<TypeInfo>& types, Sides& sides) {
    const bool hasRange = std::ranges::count(types, Kind::real, &TypeInfo::kind) == 2;
    std::vector<Parameter> parameters;
    int sourcePlanes = 0, destinationPlanes = 0;
    bool ofSource = false, lowSeen = false;  // which side the last image pointer belongs to; vMin has come
    bool gridSeen = false, ditherSeen = false, temporarySeen = false;
    const bool hasGrid = std::ranges::count(types, Kind::grid, &TypeInfo::kind) > 0;
    for (const TypeInfo& type : types) {
        Parameter parameter = {.role = Role::size, .element = type.element, .wide = type.wide};
        switch (type.kind) {
            case Kind::image:
                if (ditherSeen) {
                    parameter.role = Role::scratch;
                    break;
                }
                if (gridSeen) {
                    parameter.role = Role::temporary;
                    temporarySeen = true;
                    break;
                }
                ofSource = type.constant;
                parameter.role = ofSource ? Role::sourcePlane : Role::destinationPlane;
                parameter.plane = ofSource ? sourcePlanes++ : destinationPlanes++;
                (ofSource ? sides.source : sides.destination) = type.element;
                break;
            case Kind::planes:
                ofSource = type.constant;
                parameter.role = ofSource ? Role::sourcePlanes : Role::destinationPlanes;
                (ofSource ? sides.source : sides.destination) = type.element;
                (ofSource ? sides.sourceArray : sides.destinationArray) = true;
                break;
            case Kind::step:
                parameter.role = temporarySeen ? Role::temporaryStep
                                 : gridSeen    ? Role::reserved
                                 : ofSource    ? Role::sourceStep
                                               : Role::destinationStep;
                parameter.plane = std::max(0, (ofSource ? sourcePlanes : destinationPlanes) - 1);
                break;
            case Kind::steps:
                parameter.role = ofSource ? Role::sourceSteps : Role::destinationSteps;
                (ofSource ? sides.sourceSteps : sides.destinationSteps) = true;
                break;
            case Kind::size:
                break;
            case Kind::weights:
                parameter.role = hasGrid ? Role::gains : Role::weights;
                break;
            case Kind::rectangle:
                parameter.role = Role::rectangle;
                break;
            case Kind::grid:
                parameter.role = Role::grid;
                gridSeen = true;
                break;
            case Kind::dither:
                parameter.role = Role::ditherType;
                ditherSeen = true;
                break;
            case Kind::matrix:
                parameter.role = Role::matrix;
                break;
            case Kind::integer:
                parameter.role = type.element == Element::u32 ? Role::layoutCode : Role::alpha;
                break;
            case Kind::real:
                parameter.role = !hasRange ? Role::alpha : lowSeen ? Role::rangeHigh : Role::rangeLow;
                lowSeen = true;
                break;
        }
        parameters.push_back(parameter);
    }
    if (ditherSeen) nameNumbersOfDithering(parameters);
    return parameters;
}

struct Family {
    std::string_view title;
    Extras extras;
};

// Whole chroma blocks of both sides.
int bandRowsOf(const Export& e, const Extras& own) {
    if (own.wholeImage) return 0;
    int rows = std::max(own.bandRows, e.sizeMultiple);
    for (const ImageShape* side : {&e.source, &e.destination}) {
        for (const PlaneShape& plane : side->planes) rows = std::max(rows, 1 << plane.heightShift);
    }
    return rows;
}

Export describe(std::string_view name, std::string_view summary, const Family& family, const Extras& own,
                const std::vector<TypeInfo>& types) {
    Export e;
    e.name = name;
    e.summary = summary;
    e.family = family.title;
    e.minimumWidth = std::max(own.minimumWidth, family.extras.minimumWidth);
    e.minimumHeight = std::max(own.minimumHeight, family.extras.minimumHeight);
    e.anyHeight = own.anyHeight;
    e.sizeMultiple = own.sizeMultiple;
    e.testsSteps = own.testsSteps || family.extras.testsSteps;
    e.acceptsEmpty = own.acceptsEmpty || family.extras.acceptsEmpty;
    e.stepsInElements = family.extras.stepsInElements;
    e.badStep = family.extras.badStep;
    e.testsStepArrays = own.testsStepArrays || family.extras.testsStepArrays;
    e.usesEstimate = own.usesEstimate;
    Sides sides;
    e.parameters = rolesOf(types, sides);
    const bool hasSource = e.has(Role::sourcePlane) || e.has(Role::sourcePlanes);
    NameParts parts = parseName(name, hasSource ? sides.source : sides.destination, sides.destination);
    e.inPlace = parts.inPlace;
    e.source = std::move(parts.source);
    e.destination = std::move(parts.destination);
    if (own.keeps4th) e.destination.layout = "AC4";
    e.source.dense = hasSource && !e.has(Role::sourceStep) && !e.has(Role::sourceSteps);
    e.destination.dense = !e.has(Role::destinationStep) && !e.has(Role::destinationSteps);
    for (PlaneShape& plane : e.source.planes) {
        plane.partialSamples = own.partialSourceSamples || family.extras.partialSourceSamples || e.source.dense;
        plane.partialRows = e.source.dense;
        plane.bytesBeforeLonePixel = own.bytesBeforeLonePixel;
    }
    for (PlaneShape& plane : e.destination.planes) {
        plane.partialSamples =
            own.partialDestinationSamples || family.extras.partialDestinationSamples || e.destination.dense;
        plane.partialRows = e.destination.dense;
    }
    for (PlaneShape& plane : e.source.planes) plane.packedBits = own.packedSourceBits;
    for (PlaneShape& plane : e.destination.planes) plane.packedBits = own.packedDestinationBits;
    e.source.planeArray = e.inPlace ? sides.destinationArray : sides.sourceArray;
    e.source.stepArray = e.inPlace ? sides.destinationSteps : sides.sourceSteps;
    e.destination.planeArray = sides.destinationArray;
    e.destination.stepArray = sides.destinationSteps;
    e.bandRows = bandRowsOf(e, own);
    return e;
}

template <class... Parameters>
Export describe(PxlStatus (*function)(Parameters...), std::string_view name, std::string_view summary,
                const Family& family, const Extras& own) {
    Export e = describe(name, summary, family, own, typesOf(function));
    e.address = reinterpret_cast<AnyFunction>(function);
    e.callThrough = Caller<Parameters...>::callThrough;
    return e;
}

std::vector<Export> build() {
    std::vector<Export> list;
    Family family;
#define PXL_FAMILY(title, ...) family = Family{title, Extras{__VA_ARGS__}};
#define PXL_EXPORT(function, summary, ...) \
    list.push_back(describe(function, #function, summary, family, Extras{__VA_ARGS__}));
#include "exports.def"
#undef PXL_EXPORT
#undef PXL_FAMILY
    return list;
}

// As small as it may be.
std::int64_t temporaryStep(PxlSize size) { return 2 * (std::max<std::int64_t>(size.width, 0) + pxlAHDTemporaryMargin); }

int sharedStep(const std::vector<PlaneRef>& planes) {
    for (const PlaneRef& plane : planes) {
        if (plane.step != planes.front().step)
            throw std::invalid_argument("planes that share a step have different ones");
    }
    return planes.front().step;
}

}  // namespace

std::size_t bytesOf(Element element) {
    switch (element) {
        case Element::u8:
        case Element::s8:
            return 1;
        case Element::u16:
        case Element::s16:
            return 2;
        case Element::u32:
        case Element::s32:
        case Element::f32:
            return 4;
        case Element::f64:
            return 8;
    }
    return 0;
}

bool Parameter::isPointer() const {
    switch (role) {
        case Role::sourceStep:
        case Role::destinationStep:
        case Role::size:
        case Role::alpha:
        case Role::layoutCode:
        case Role::rangeLow:
        case Role::rangeHigh:
        case Role::rectangle:
        case Role::grid:
        case Role::reserved:
        case Role::noise:
        case Role::ditherType:
        case Role::levels:
        case Role::bitOffset:
        case Role::threshold:
        case Role::temporaryStep:
            return false;
        default:
            return true;
    }
}

bool Export::has(Role role) const { return std::ranges::find(parameters, role, &Parameter::role) != parameters.end(); }

PxlSize Export::fitting(PxlSize size) const {
    const auto rounded = [this](int extent) { return (extent + sizeMultiple - 1) / sizeMultiple * sizeMultiple; };
    return {rounded(size.width), rounded(size.height)};
}

std::span<const Export> all() {
    static const std::vector<Export> list = build();
    return list;
}

const Export* find(std::string_view name) {
    const auto found = std::ranges::find(all(), name, &Export::name);
    return found == all().end() ? nullptr : &*found;
}

PxlStatus invoke(const Export& function, const Arguments& arguments) {
    return function.call(Values(function, arguments).begin());
}

namespace {

// As many bytes as ReduceBits asks for.
std::unique_ptr<std::byte[]> scratchOf(const Arguments& arguments) {
    int bytes = 0;
    pxliReduceBitsGetBufferSize(pxlC1, arguments.size, arguments.noise,
                                static_cast<PxlDitherType>(arguments.ditherType), &bytes);
    return bytes > 0 ? std::make_unique_for_overwrite<std::byte[]>(static_cast<std::size_t>(bytes)) : nullptr;
}

}  // namespace

Values::Values(const Export& function, const Arguments& arguments) : values_(function.parameters.size()) {
    const auto& source = arguments.source;
    const auto& destination = arguments.destination;
    for (std::size_t i = 0; i < source.size() && i < 4; ++i) {
        sourcePlanes_[i] = source[i].first;
        sourceSteps_[i] = source[i].step;
        wideSourceSteps_[i] = source[i].step;
    }
    for (std::size_t i = 0; i < destination.size() && i < 4; ++i) {
        destinationPlanes_[i] = destination[i].first;
        destinationSteps_[i] = destination[i].step;
        wideDestinationSteps_[i] = destination[i].step;
    }
    for (std::size_t i = 0; i < values_.size(); ++i) {
        const Parameter& parameter = function.parameters[i];
        const auto plane = static_cast<std::size_t>(parameter.plane);
        Value& value = values_[i];
        switch (parameter.role) {
            case Role::sourcePlane:
                value.pointer = source.at(plane).first;
                break;
            case Role::sourcePlanes:
                value.pointer = sourcePlanes_;
                break;
            case Role::sourceStep:
                value.integer = function.source.planeArray ? sharedStep(source) : source.at(plane).step;
                if (function.stepsInElements)
                    value.integer /= static_cast<int>(bytesOf(function.source.planes[0].element));
                break;
            case Role::sourceSteps:
                value.steps = sourceSteps_;
                if (parameter.wide) value.wideSteps = wideSourceSteps_;
                break;
            case Role::destinationPlane:
                value.pointer = destination.at(plane).first;
                break;
            case Role::destinationPlanes:
                value.pointer = destinationPlanes_;
                break;
            case Role::destinationStep:
                value.integer = function.destination.planeArray ? sharedStep(destination) : destination.at(plane).step;
                if (function.stepsInElements)
                    value.integer /= static_cast<int>(bytesOf(function.destination.planes[0].element));
                break;
            case Role::destinationSteps:
                value.steps = destinationSteps_;
                if (parameter.wide) value.wideSteps = wideDestinationSteps_;
                break;
            case Role::size:
                value.size = arguments.size;
                break;
            case Role::alpha:
                if (parameter.element == Element::f32 || parameter.element == Element::f64) {
                    value.real = arguments.alpha;
                } else {
                    value.integer = static_cast<std::int64_t>(arguments.alpha);
                }
                break;
            case Role::layoutCode:
                value.integer = arguments.layoutCode;
                break;
            case Role::weights:
                value.pointer = const_cast<void*>(arguments.weights);
                break;
            case Role::matrix:
                value.pointer = const_cast<float*>(arguments.matrix);
                break;
            case Role::rangeLow:
                value.real = arguments.rangeLow;
                break;
            case Role::rangeHigh:
                value.real = arguments.rangeHigh;
                break;
            case Role::rectangle:
                value.rectangle = {0, 0, arguments.size.width, arguments.size.height};
                break;
            case Role::grid:
                value.integer = arguments.grid;
                break;
            case Role::gains:
                value.pointer = const_cast<float*>(arguments.gains);
                break;
            case Role::reserved:
            case Role::bitOffset:
                value.integer = 0;
                break;
            case Role::noise:
                value.integer = arguments.noise;
                break;
            case Role::ditherType:
                value.integer = arguments.ditherType;
                break;
            case Role::levels:
                value.integer = arguments.levels;
                break;
            case Role::threshold:
                value.integer = arguments.threshold;
                break;
            case Role::scratch:
                scratch_ = scratchOf(arguments);
                value.pointer = scratch_.get();
                break;
            case Role::temporary:
                temporary_.resize(static_cast<std::size_t>(pxlAHDTemporaryRows * temporaryStep(arguments.size)));
                value.pointer = temporary_.data();
                break;
            case Role::temporaryStep:
                value.integer = temporaryStep(arguments.size);
                break;
        }
    }
}

}  // namespace pxl::catalog
