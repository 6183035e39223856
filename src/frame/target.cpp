#include "frame/target.h"

namespace pxl {

// The compiler's runtime reads the feature bits once, before any other code of the program runs; this only looks at
// them.
Target activeTarget() {
    if (processorRuns(Target::avx512)) return Target::avx512;
    if (processorRuns(Target::avx2)) return Target::avx2;
    return Target::sse42;
}

}  // namespace pxl
