#include "frame/target.h"

namespace pxl {

// The compiler's runtime reads the feature bits once, before any other code of the program runs; this only looks at
// them.
Target activeTarget() { return __builtin_cpu_supports("avx2") ? Target::avx2 : Target::sse42; }

}  // namespace pxl
