#include "support/call.h"

#include <unistd.h>

#include <algorithm>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstring>

#include "support/targets.h"

namespace pxl::test {

using catalog::Element;
using catalog::Export;
using catalog::Parameter;
using catalog::Role;
using catalog::Values;

namespace {

// What is running, for whoever reads the output of a program that an unreadable page ended.
char running[512];

struct sigaction earlierAction;

void sayWhatRan(int signal) {
    if (write(STDERR_FILENO, running, std::strlen(running)) >= 0) sigaction(signal, &earlierAction, nullptr);
}  // returning, it faults again

void watchFaults() {
    static bool installed = false;
    if (installed) return;
    struct sigaction action = {};
    action.sa_handler = sayWhatRan;
    sigaction(SIGSEGV, &action, &earlierAction);
    installed = true;
}

std::string describe(const Image& image) {
    std::string text;
    for (const catalog::PlaneRef& plane : image.planes()) {
        char part[64];
        std::snprintf(part, sizeof part, " %p step %d", plane.first, plane.step);
        text += part;
    }
    return text;
}

// The arguments that hold for an image of no use: in-place functions have no source.
catalog::ImageShape sourceShape(const Export& function) {
    return function.inPlace ? catalog::ImageShape{} : function.source;
}

}  // namespace

Call::Call(const Export& f, PxlSize size, const Placement& sourcePlacement, const Placement& destinationPlacement,
           Random& random)
    : source(sourceShape(f), size, sourcePlacement),
      destination(f.destination, size, destinationPlacement),
      function(f) {
    source.fill(random);
    destination.fill(random);
    for (double& weight : weights64_) weight = random.between(-0.25, 1);
    std::copy_n(weights64_, 3, weights32_);
    for (float& factor : matrix_) factor = static_cast<float>(random.between(-1.5, 1.5));
    arguments.size = size;
    arguments.source = source.planes();
    arguments.destination = destination.planes();
    arguments.matrix = matrix_;
    arguments.alpha = random.below(256);
    arguments.grid = random.below(4);
    for (float& gain : gains_) gain = static_cast<float>(random.between(0, 2));
    if (random.oneIn(2)) arguments.gains = gains_;
    arguments.noise = random.oneIn(2) ? 0 : random.below(101);
    arguments.ditherType = function.has(Role::bitOffset) ? pxlDitherStucki * random.below(2) : random.below(5);
    arguments.levels = 2 + random.below(255);
    arguments.threshold = random.below(256);
    arguments.layoutCode = random.oneIn(2) ? 1 : 21;  // 4 and 16 leave the region
    arguments.rangeLow = random.oneIn(2) ? 0 : random.between(-2, 0);
    arguments.rangeHigh = random.oneIn(2) ? 1 : random.between(0.5, 3);
    for (const Parameter& parameter : f.parameters) {
        if (parameter.role != Role::weights || random.oneIn(2)) continue;
        arguments.weights = parameter.element == Element::f64 ? static_cast<const void*>(weights64_) : weights32_;
    }
}

std::string Call::describe() const {
    return std::string(function.name) + " " + std::to_string(arguments.size.width) + " x " +
           std::to_string(arguments.size.height) + ", source" + test::describe(source) + ", destination" +
           test::describe(destination);
}

PxlStatus Call::run() {
    watchFaults();
    std::snprintf(running, sizeof running, "while running %s\n", describe().c_str());
    return invoke(function, arguments);
}

std::string faultsOf(Call& call) {
    const Image::Bytes source = call.source.bytes(), before = call.destination.bytes();
    const auto fault = [&](Target target, const char* what) {
        return std::string(what) + " (" + nameOf(target) + "): " + call.describe();
    };
    Image::Bytes first;
    PxlStatus firstStatus = pxlStatusOk;
    std::string found;
    onEachTarget([&](Target target) {
        call.destination.restore(before);
        const PxlStatus result = call.run();
        const Image::Bytes after = call.destination.bytes();
        if (result < 0) found = fault(target, "refused");
        if (call.source.bytes() != source) found = fault(target, "source changed");
        if (call.destination.withRoiOf(after, before) != after) found = fault(target, "written outside the ROI");
        if (first.empty()) {
            first = after;
            firstStatus = result;
        } else if (result != firstStatus || after != first) {
            found = fault(target, "other result than the first target");
        }
    });
    return found;
}

PxlStatus statusOf(Fault fault, const Export& function) {
    switch (fault) {
        case Fault::range:
            return pxlStatusBadRange;
        case Fault::pointer:
        case Fault::entry:
            return pxlStatusNullPointer;
        case Fault::size:
            return function.acceptsEmpty ? pxlStatusOk : pxlStatusBadSize;
        case Fault::step:
            return function.badStep;
        case Fault::grid:
            return pxlStatusBadArgument;
    }
    return pxlStatusOk;
}

std::vector<Mistake> mistakes(Fault fault, const Export& f) {
    std::vector<Mistake> list;
    for (std::size_t i = 0; i < f.parameters.size(); ++i) {
        const Role role = f.parameters[i].role;
        const bool source = role == Role::sourcePlanes,
                   steps = role == Role::sourceSteps || role == Role::destinationSteps;
        const bool mayBeNull =
            role == Role::weights || role == Role::gains || role == Role::scratch || (steps && !f.testsStepArrays);
        const std::string which = "parameter " + std::to_string(i + 1);
        const auto add = [&](const std::string& what, auto make) { list.push_back({which + " " + what, make}); };
        if (fault == Fault::range && role == Role::rangeHigh) {
            add("empty range", [i](Values& values) { values[i].real = values[i - 1].real; });
            add("negative range", [i](Values& values) { values[i].real = values[i - 1].real - 1; });
        }
        if (fault == Fault::pointer && f.parameters[i].isPointer() && !mayBeNull) {
            add("null", [i](Values& values) { values[i].pointer = nullptr; });
        }
        if (fault == Fault::entry && (source || role == Role::destinationPlanes)) {
            const std::size_t planes = (source ? f.source : f.destination).planes.size();
            for (std::size_t p = 0; p < planes; ++p) {
                add("null entry " + std::to_string(p), [source, p](Values& values) {
                    (source ? values.sourcePlanes() : values.destinationPlanes())[p] = nullptr;
                });
            }
        }
        if (fault == Fault::size && role == Role::size) {
            for (const int width : {f.minimumWidth - 1, 0, -1, INT_MIN}) {
                add("width " + std::to_string(width), [i, width](Values& values) { values[i].size.width = width; });
            }
            std::vector<int> heights = {f.minimumHeight - 1, 0, -1, INT_MIN};
            if (f.anyHeight) heights.clear();
            if (f.sizeMultiple > 1) {
                add("odd width", [i](Values& values) { ++values[i].size.width; });
                heights.push_back(f.minimumHeight + f.sizeMultiple / 2);
            }
            for (const int height : heights) {
                add("height " + std::to_string(height),
                    [i, height](Values& values) { values[i].size.height = height; });
            }
        }
        if (fault == Fault::grid && role == Role::grid) {
            for (const int code : {4, -1, INT_MIN, INT_MAX}) {
                add("grid " + std::to_string(code), [i, code](Values& values) { values[i].integer = code; });
            }
        }
        if (fault == Fault::step && (role == Role::sourceStep || role == Role::destinationStep)) {
            for (const int step : {0, -1, INT_MIN}) {
                add("step " + std::to_string(step), [i, step](Values& values) { values[i].integer = step; });
            }
        }
    }
    return list;
}

std::string faultsWith(Call& call, const std::vector<const Mistake*>& mistakes, PxlStatus expected) {
    const Image::Bytes before = call.destination.bytes();
    Values values(call.function, call.arguments);
    std::string what(call.function.name);
    for (const Mistake* mistake : mistakes) {
        mistake->make(values);
        what += ", " + mistake->what;
    }
    std::snprintf(running, sizeof running, "while running %s\n", what.c_str());
    watchFaults();
    const PxlStatus status = call.function.call(values.begin());
    if (status != expected) {
        return what + ": status " + std::to_string(status) + ", not " + std::to_string(expected) + "\n";
    }
    return call.destination.bytes() == before ? std::string() : what + ": something was written\n";
}

std::string checkOrderFaults(const Export& function, std::string_view order) {
    const auto faultOf = [](char letter) {
        return letter == 'r'   ? Fault::range
               : letter == 'p' ? Fault::pointer
               : letter == 'e' ? Fault::entry
               : letter == 's' ? Fault::size
               : letter == 'g' ? Fault::grid
                               : Fault::step;
    };
    Random random(1);
    Call call(function, {48, 4}, {}, {}, random);
    std::string found;
    for (std::size_t i = 0; i < order.size(); ++i) {
        for (std::size_t j = i + 1; j < order.size(); ++j) {
            const Fault earlier = faultOf(order[i]), later = faultOf(order[j]);
            for (const Mistake& first : mistakes(earlier, function)) {
                for (const Mistake& second : mistakes(later, function)) {
                    found += faultsWith(call, {&first, &second}, statusOf(earlier, function));
                }
            }
        }
    }
    return found;
}

}  // namespace pxl::test
