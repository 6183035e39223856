// The processor's control word for vector floating point (MXCSR): rounding mode, handling of denormals, exception masks
// and flags. Unlike the rest of this directory for code that is compiled once, not once per target.
#pragma once

#include <xmmintrin.h>

namespace pxl {

// While it lives, floats round to nearest, ties to even; then the control word is what it was, flags included.
class RoundToNearest {
public:
    RoundToNearest() : caller_(_mm_getcsr()) {
        if ((caller_ & _MM_ROUND_MASK) != _MM_ROUND_NEAREST) _mm_setcsr(caller_ & ~unsigned{_MM_ROUND_MASK});
    }
    ~RoundToNearest() { _mm_setcsr(caller_); }
    RoundToNearest(const RoundToNearest&) = delete;
    RoundToNearest& operator=(const RoundToNearest&) = delete;

private:
    const unsigned caller_;
};

}  // namespace pxl
