// What is the same for all targets, since every x86-64 processor has it: plain code may include this.
#pragma once

#include <xmmintrin.h>

namespace pxl {

// Other processors see streaming stores in order with all that follows.
[[gnu::always_inline]] inline void endStreams() { _mm_sfence(); }

}  // namespace pxl
