// The compiled forms of the kernels that the processor at hand runs.
#pragma once

#include "frame/target_switch.h"

namespace pxl::test {

struct NamedTarget {
    Target target;
    const char* name;
};
inline constexpr NamedTarget kTargets[] = {
    {Target::sse42, "sse42"}, {Target::avx2, "avx2"}, {Target::avx512, "avx512"}};  // later is faster

inline const char* nameOf(Target target) { return kTargets[static_cast<int>(target)].name; }

// Calls action(target) with each target that the processor runs switched on; the last, best one stays on.
template <class Action>
void onEachTarget(Action action) {
    for (const auto& [target, name] : kTargets) {
        if (!processorRuns(target)) continue;
        useTarget(target);
        action(target);
    }
}

}  // namespace pxl::test
