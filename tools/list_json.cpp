#include "list_json.h"

#include <functional>
#include <iostream>
#include <nlohmann/json.hpp>
#include <string>

namespace pxl::tool {

namespace {

using catalog::Export;
using catalog::Parameter;
using catalog::Role;
using catalog::Values;
using Json = nlohmann::ordered_json;

constexpr const char* kElements[] = {"8u", "8s", "16u", "16s", "32u", "32s", "32f", "64f"};

constexpr const char* kRoles[] = {
    "source plane",
    "source planes",
    "source step",
    "source steps",
    "destination plane",
    "destination planes",
    "destination step",
    "destination steps",
    "size",
    "alpha",
    "layout code",
    "weights",
    "matrix",
    "range low",
    "range high",
    "rectangle",
    "grid",
    "gains",
    "noise",
    "dither type",
    "levels",
    "bit offset",
    "threshold",
    "scratch",
    "reserved",
    "temporary",
    "temporary step",
};
static_assert(std::size(kRoles) == static_cast<std::size_t>(Role::temporaryStep) + 1);

const char* name(catalog::Element element) { return kElements[static_cast<std::size_t>(element)]; }

Json shapeAsJson(const catalog::ImageShape& shape) {
    Json json = {{"space", shape.space},           {"sampling", shape.sampling},   {"layout", shape.layout},
                 {"planeArray", shape.planeArray}, {"stepArray", shape.stepArray}, {"dense", shape.dense}};
    for (const catalog::PlaneShape& plane : shape.planes) {
        json["planes"].push_back({{"element", name(plane.element)},
                                  {"channels", plane.channels},
                                  {"widthShift", plane.widthShift},
                                  {"heightShift", plane.heightShift},
                                  {"partialSamples", plane.partialSamples},
                                  {"partialRows", plane.partialRows},
                                  {"packedBits", plane.packedBits},
                                  {"v210", plane.v210}});
    }
    return json;
}

// ---- what wrong arguments get

// Images that every export can be called on.
class Trial {
public:
    explicit Trial(const Export& function) : function_(function), memory_(2 * kPlanes * kPlaneBytes) {
        const auto planes = [&](std::size_t count, std::size_t first) {
            std::vector<catalog::PlaneRef> list;
            for (std::size_t i = first; i < first + count; ++i)
                list.push_back({memory_.data() + i * kPlaneBytes, kStep});
            return list;
        };
        if (!function.inPlace) arguments.source = planes(function.source.planes.size(), 0);
        arguments.destination = planes(function.destination.planes.size(), kPlanes);
        arguments.size = {kExtent, kExtent};
        arguments.matrix = kMatrix;
        if (function.has(Role::scratch)) arguments.ditherType = pxlDitherStucki;
    }

    PxlStatus statusWith(const std::function<void(Values&)>& mistake) {
        Values values(function_, arguments);
        mistake(values);
        return function_.call(values.begin());
    }

    static constexpr int kExtent = 48;  // a multiple of every block and group
    catalog::Arguments arguments;

private:
    static constexpr int kStep = 64 * 4 * 8;
    static constexpr std::size_t kPlanes = 4, kPlaneBytes = std::size_t{64} * kStep;
    static constexpr float kMatrix[16] = {};
    const Export& function_;
    std::vector<std::byte> memory_;
};

// A value that is out of range, where the parameter has one.
struct WrongNumber {
    Role role;
    std::int64_t value;
};
constexpr WrongNumber kWrongNumbers[] = {
    {Role::layoutCode, 0},    {Role::grid, 9},       {Role::noise, 101},
    {Role::ditherType, 9},    {Role::levels, 1},     {Role::bitOffset, -1},
    {Role::temporaryStep, 0}, {Role::sourceStep, 0}, {Role::destinationStep, 0},
};

Json statusesAsJson(const Export& function) {
    Trial trial(function);
    Json list = Json::array();
    const auto attempt = [&](std::size_t parameter, const std::string& wrong, const auto& mistake) {
        list.push_back({{"parameter", parameter}, {"wrong", wrong}, {"status", trial.statusWith(mistake)}});
    };
    for (std::size_t i = 0; i < function.parameters.size(); ++i) {
        const Parameter& parameter = function.parameters[i];
        const bool isStepArray = parameter.role == Role::sourceSteps || parameter.role == Role::destinationSteps;
        if (parameter.isPointer() && (!isStepArray || function.testsStepArrays))
            attempt(i, "null", [&](Values& values) { values[i].pointer = nullptr; });
        if (parameter.role == Role::sourcePlanes)
            attempt(i, "null entry", [](Values& values) { values.sourcePlanes()[0] = nullptr; });
        if (parameter.role == Role::destinationPlanes)
            attempt(i, "null entry", [](Values& values) { values.destinationPlanes()[0] = nullptr; });
        for (const WrongNumber& number : kWrongNumbers) {
            if (number.role == parameter.role)
                attempt(i, std::to_string(number.value), [&](Values& values) { values[i].integer = number.value; });
        }
        if (parameter.role == Role::rangeHigh)
            attempt(i, "not above the other", [&](Values& values) { values[i].real = trial.arguments.rangeLow; });
        if (parameter.role == Role::size) {
            const auto attemptSize = [&](int width, int height) {
                const std::string text = std::to_string(width) + " x " + std::to_string(height);
                attempt(i, text, [&](Values& values) { values[i].size = {width, height}; });
            };
            attemptSize(function.minimumWidth - 1, Trial::kExtent);
            attemptSize(Trial::kExtent, function.minimumHeight - 1);
            attemptSize(Trial::kExtent - 1, Trial::kExtent - 1);
        }
    }
    return list;
}

}  // namespace

void printAsJson(const std::vector<const Export*>& functions) {
    const char* separator = "[\n";
    for (const Export* function : functions) {
        Json json = {{"name", function->name},
                     {"summary", function->summary},
                     {"family", function->family},
                     {"minimumWidth", function->minimumWidth},
                     {"minimumHeight", function->minimumHeight},
                     {"sizeMultiple", function->sizeMultiple},
                     {"inPlace", function->inPlace},
                     {"stepsInElements", function->stepsInElements},
                     {"source", shapeAsJson(function->source)},
                     {"destination", shapeAsJson(function->destination)}};
        for (const Parameter& parameter : function->parameters) {
            json["parameters"].push_back({{"role", kRoles[static_cast<std::size_t>(parameter.role)]},
                                          {"plane", parameter.plane},
                                          {"element", name(parameter.element)}});
        }
        json["statuses"] = statusesAsJson(*function);
        std::cout << separator << json.dump();
        separator = ",\n";
    }
    std::cout << "\n]\n";
}

}  // namespace pxl::tool
