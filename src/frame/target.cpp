#include "frame/target.h"

namespace pxl {

Target activeTarget() { return bestTarget(); }

std::ptrdiff_t streamedFrom() { return kStreamedFrom; }

}  // namespace pxl
