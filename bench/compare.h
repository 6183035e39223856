// One export against a plain copy and against the other libraries.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "equation.h"
#include "frame/target_switch.h"
#include "images.h"

namespace pxl::bench {

struct NamedTarget {
    Target target;
    const char* name;
};
inline constexpr NamedTarget kTargets[] = {
    {Target::sse42, "SSE4.2"}, {Target::avx2, "AVX2"}, {Target::avx512, "AVX-512"}};

struct PeerResult {
    std::string call;
    double nanoseconds = 0;
    double fromOurs = 0;               // mean absolute difference of its samples from ours
    std::optional<Distance> distance;  // of its samples from the equation, where that is known
};

// Times are nanoseconds a pixel.
struct Result {
    const catalog::Export* function = nullptr;
    double nanoseconds[std::size(kTargets)] = {};  // 0: the processor does not run this target
    double copyNanoseconds = 0;
    std::optional<Distance> distance;         // of our samples from the equation
    std::map<std::string, PeerResult> peers;  // by library
    std::vector<double> spreads;              // of every contender, see measure.h
};

// Whether a peer's samples are about as near to the equation as ours, or nearer. Where no equation is known, nobody can
// say that they are not.
bool isAsAccurate(const PeerResult& peer, const Result& result);

// Takes about `seconds`. Throws if ours or another library refuses the images.
Result compare(const Arena& arena, const catalog::Export& function, PxlSize size, const Dithering& dithering,
               double seconds);

// Nanoseconds of a call on each target.
std::vector<double> callTimes(const Arena& arena, const catalog::Export& function, PxlSize size,
                              const Dithering& dithering, double seconds);

}  // namespace pxl::bench
