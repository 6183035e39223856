#include "frame/target_switch.h"

namespace pxl {

namespace {
Target chosen = bestTarget();
}

void useTarget(Target target) { chosen = target; }

Target activeTarget() { return chosen; }

}  // namespace pxl
