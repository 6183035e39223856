#include "frame/target.h"

namespace pxl {

// The compiler's runtime reads the feature bits once, before any other code of the program runs; this only looks at
// them.
bool processorRuns(Target target) {
    switch (target) {
        case Target::avx512:
            return __builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512dq") &&
                   __builtin_cpu_supports("avx512vl") && __builtin_cpu_supports("avx512vbmi") &&
                   __builtin_cpu_supports("avx512vnni");
        case Target::avx2:
            return __builtin_cpu_supports("avx2");
        case Target::sse42:
            break;
    }
    return true;
}

Target bestTarget() {
    if (processorRuns(Target::avx512)) return Target::avx512;
    if (processorRuns(Target::avx2)) return Target::avx2;
    return Target::sse42;
}

}  // namespace pxl
