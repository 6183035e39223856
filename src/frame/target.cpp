#include "frame/target.h"

namespace pxl {

Target activeTarget() { return bestTarget(); }

}  // namespace pxl
