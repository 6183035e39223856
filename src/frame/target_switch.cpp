#include "frame/target_switch.h"

namespace pxl {

namespace {
Target chosen = bestTarget();
std::ptrdiff_t chosenBytes = kStreamedFrom;
}  // namespace

void useTarget(Target target) { chosen = target; }

Target activeTarget() { return chosen; }

void streamFrom(std::ptrdiff_t bytes) { chosenBytes = bytes; }

std::ptrdiff_t streamedFrom() { return chosenBytes; }

}  // namespace pxl
