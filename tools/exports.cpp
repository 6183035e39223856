#include "exports.h"

#include <algorithm>
#include <chrono>
#include <limits>

#include "error.h"

namespace pxl::tool {

const catalog::Export& exportNamed(const std::string& name) {
    if (const auto* found = catalog::find(name)) return *found;
    if (const auto* found = catalog::find("pxli" + name)) return *found;
    // Names that continue the longest known start of the name.
    for (std::size_t length = name.size(); length > 6; --length) {
        std::string near;
        int count = 0;
        for (const auto& function : catalog::all())
            if (function.name.substr(0, length) == name.substr(0, length) && count++ < 3)
                near += (near.empty() ? "" : ", ") + std::string(function.name);
        if (count > 0) fail("no export is called ", name, "; near it: ", near, count > 3 ? " ..." : "");
    }
    fail("no export is called ", name, " (pxlcc list shows all)");
}

PxlStatus apply(const catalog::Export& function, const Rows& source, const Rows& destination, const Extras& extras) {
    catalog::Arguments arguments;
    arguments.size = destination.size();
    if (!function.inPlace) arguments.source = source.references();
    arguments.destination = destination.references();
    arguments.alpha = extras.alpha;
    arguments.rangeLow = extras.rangeLow;
    arguments.rangeHigh = extras.rangeHigh;
    arguments.ditherType = extras.ditherType;
    arguments.noise = extras.noise;
    arguments.levels = extras.levels;
    arguments.threshold = extras.threshold;
    arguments.layoutCode = static_cast<std::uint32_t>(extras.part);
    arguments.grid = extras.grid;
    if (!extras.gains.empty()) arguments.gains = extras.gains.data();
    if (!extras.matrix.empty()) arguments.matrix = extras.matrix.data();
    const std::vector<float> narrow(extras.weights.begin(), extras.weights.end());
    if (!extras.weights.empty()) {
        const auto weights = std::ranges::find(function.parameters, catalog::Role::weights, &catalog::Parameter::role);
        const bool isFloat = weights != function.parameters.end() && weights->element == Element::f32;
        arguments.weights = isFloat ? static_cast<const void*>(narrow.data()) : extras.weights.data();
    }
    return catalog::invoke(function, arguments);
}

PxlStatus applyOrFail(const catalog::Export& function, const Rows& source, const Rows& destination,
                      const Extras& extras) {
    const PxlStatus status = apply(function, source, destination, extras);
    if (status != pxlStatusOk && status != pxlStatusOddSize) fail(function.name, ": ", statusText(status));
    return status;
}

std::string statusText(PxlStatus status) {
    struct Text {
        PxlStatus status;
        const char* name;
        const char* meaning;
    };
    static constexpr Text kTexts[] = {
        {pxlStatusOk, "pxlStatusOk", "success"},
        {pxlStatusNoOperation, "pxlStatusNoOperation", "nothing to do, nothing was written"},
        {pxlStatusOddSize, "pxlStatusOddSize", "an odd width or height; the even part was converted"},
        {pxlStatusBadArgument, "pxlStatusBadArgument", "an argument is out of range"},
        {pxlStatusBadSize, "pxlStatusBadSize", "the width or height is below the function's minimum"},
        {pxlStatusNullPointer, "pxlStatusNullPointer", "a required pointer is null"},
        {pxlStatusBadStep, "pxlStatusBadStep", "a step is below 1"},
        {pxlStatusBadRange, "pxlStatusBadRange", "the value range is empty"},
    };
    const auto* text = std::ranges::find(kTexts, status, &Text::status);
    if (text == std::end(kTexts)) return "status " + std::to_string(status);
    return std::string(text->name) + " (" + std::to_string(status) + "): " + text->meaning;
}

double fastestNanoseconds(int repeats, const std::function<void()>& run) {
    double fastest = std::numeric_limits<double>::max();
    for (int i = 0; i < repeats; ++i) {
        const auto start = std::chrono::steady_clock::now();
        run();
        const std::chrono::duration<double, std::nano> taken = std::chrono::steady_clock::now() - start;
        fastest = std::min(fastest, taken.count());
    }
    return fastest;
}

}  // namespace pxl::tool
