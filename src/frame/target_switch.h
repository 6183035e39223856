// Inside the build tree only: run the kernels of a chosen target. Compiled into the tests' and benchmarks' copy of the
// library in place of target.cpp, never into the library that is installed.
#pragma once

#include "frame/target.h"

namespace pxl {

// Whole-program, not synchronised: call it while no conversion runs. The target must be one that the processor runs.
void useTarget(Target target);

// The same for streamedFrom(): kStreamedFrom is what the library has.
void streamFrom(std::ptrdiff_t bytes);

}  // namespace pxl
