// Which compiled form of the kernels this processor runs.
#pragma once

namespace pxl {

enum class Target { sse42, avx2 };

// Decided by the processor's feature bits alone, the same for the life of the program.
Target activeTarget();

// Picks between the constant kernel tables of a family.
template <class Table>
const Table& forActiveTarget(const Table& sse42, const Table& avx2) {
    return activeTarget() == Target::avx2 ? avx2 : sse42;
}

}  // namespace pxl
