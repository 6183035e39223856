// One export against a plain copy and against the other libraries.
#pragma once

#include <map>
#include <string>
#include <vector>

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
    double distance = 0;  // mean absolute difference of its samples from ours
};

// Times are nanoseconds a pixel.
struct Result {
    const catalog::Export* function = nullptr;
    double nanoseconds[std::size(kTargets)] = {};  // 0: the processor does not run this target
    double copyNanoseconds = 0;
    std::map<std::string, PeerResult> peers;  // by library
    std::vector<double> spreads;              // of every contender, see measure.h
};

// Takes about `seconds`. Throws if ours or another library refuses the images.
Result compare(const Arena& arena, const catalog::Export& function, PxlSize size, double seconds);

}  // namespace pxl::bench
