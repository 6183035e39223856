// One call of one export on images of its own, and what every such call must keep to.
#pragma once

#include <functional>
#include <string>

#include "support/image.h"

namespace pxl::test {

class Call {
public:
    // Random images and further arguments; weights may be left out.
    Call(const catalog::Export& function, PxlSize size, const Placement& sourcePlacement,
         const Placement& destinationPlacement, Random& random);

    Call(const Call&) = delete;  // the arguments point into it
    PxlStatus run();

    Image source;  // of in-place functions an image that nobody uses
    Image destination;
    catalog::Arguments arguments;

    const catalog::Export& function;
    std::string describe() const;

private:
    double weights64_[3];
    float weights32_[3];
    float matrix_[16];
    float gains_[3];
};

// Runs the call on every target that the processor runs. Empty if all give the same status and bytes, write inside the
// ROI only and leave the source alone; else what is wrong. The result stays in the destination.
std::string faultsOf(Call& call);

// ---- wrong arguments

enum class Fault { range, pointer, entry, size, step, grid };

PxlStatus statusOf(Fault fault, const catalog::Export& function);

// A change to the arguments of a call that makes one fault.
struct Mistake {
    std::string what;
    std::function<void(catalog::Values&)> make;
};
// Each null pointer, each null entry of a plane array, each bad size ...
std::vector<Mistake> mistakes(Fault fault, const catalog::Export& function);

// Makes the mistakes, all at once, in an otherwise right call; empty if the status comes back and nothing is written.
std::string faultsWith(Call& call, const std::vector<const Mistake*>& mistakes, PxlStatus expected);

// Empty if of any two faults the one that comes first in `order` decides the status, in whichever way both are made.
// `order` has a letter for each: r range, p pointers, e entries of plane arrays, s size, t steps, g grid.
std::string checkOrderFaults(const catalog::Export& function, std::string_view order);

}  // namespace pxl::test
