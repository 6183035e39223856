#include "frame/target.h"

namespace pxl {

bool processorRuns(Target target) {
    switch (target) {
        case Target::avx512:
            return __builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512dq") &&
                   __builtin_cpu_supports("avx512vl") && __builtin_cpu_supports("avx512vbmi");
        case Target::avx2:
            return __builtin_cpu_supports("avx2");
        case Target::sse42:
            break;
    }
    return true;
}

}  // namespace pxl
