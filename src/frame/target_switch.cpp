#include "frame/target_switch.h"

namespace pxl {

bool processorRuns(Target target) { return target == Target::sse42 || __builtin_cpu_supports("avx2"); }

namespace {
Target chosen = processorRuns(Target::avx2) ? Target::avx2 : Target::sse42;
}

void useTarget(Target target) { chosen = target; }

Target activeTarget() { return chosen; }

}  // namespace pxl
