#include "frame/target_switch.h"

namespace pxl {

namespace {
Target chosen = processorRuns(Target::avx512) ? Target::avx512
                : processorRuns(Target::avx2) ? Target::avx2
                                              : Target::sse42;
}

void useTarget(Target target) { chosen = target; }

Target activeTarget() { return chosen; }

}  // namespace pxl
