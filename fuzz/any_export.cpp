// Fuzz target: the input chooses an export, its geometry, mistakes in its arguments and the bytes of its source image.
// The images lie against unreadable pages, so an access outside them ends the program; so does any other fault found.

#include <cstdio>
#include <cstdlib>

#include "support/call.h"

using namespace pxl::test;
namespace catalog = pxl::catalog;

namespace {

class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : rest_(data, size) {}
    int below(int count) {
        unsigned value = 0;
        for (int i = 0; i < 2 && !rest_.empty(); ++i, rest_ = rest_.subspan(1)) value = value * 256 + rest_.front();
        return static_cast<int>(value) % count;
    }
    std::span<const std::uint8_t> rest() const { return rest_; }

private:
    std::span<const std::uint8_t> rest_;
};

Placement placement(Input& input, bool upwardsToo) {
    const auto where = static_cast<Placement::Where>(input.below(3));
    return {where, input.below(70), upwardsToo && input.below(2) == 1};
}

void endOn(const std::string& fault) {
    if (fault.empty()) return;
    std::fprintf(stderr, "%s\n", fault.c_str());
    std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const catalog::Export& function =
        catalog::all()[static_cast<std::size_t>(input.below(static_cast<int>(catalog::all().size())))];
    const int width = function.minimumWidth + input.below(input.below(8) == 0 ? 2000 : 80);
    const int height = function.minimumHeight + input.below(12);
    const Placement source = placement(input, !function.testsSteps), other = placement(input, !function.testsSteps);
    const auto fault = static_cast<Fault>(input.below(16));  // most inputs make none
    const int which = input.below(64);
    Random random(static_cast<std::uint64_t>(input.below(65536)));
    Call call(function, function.fitting({width, height}), source, function.inPlace ? source : other, random);
    if (!input.rest().empty()) (function.inPlace ? call.destination : call.source).fill(input.rest());

    if (fault <= Fault::size || (fault == Fault::step && function.testsSteps)) {
        const auto ways = mistakes(fault, function);
        if (!ways.empty())
            endOn(faultsWith(call, {&ways[static_cast<std::size_t>(which) % ways.size()]}, statusOf(fault, function)));
    }
    endOn(faultsOf(call));
    return 0;
}
