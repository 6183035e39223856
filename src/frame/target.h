// Which compiled form of the kernels this processor runs.
#pragma once

#include <cstddef>

namespace pxl {

// sse42: one 128-bit block a vector; avx2: two; avx512: four, on processors with the byte permutes (VBMI) and byte dot
// products (VNNI), which also are those that run 512-bit vectors at full clock.
enum class Target { sse42, avx2, avx512 };

// Decided by the processor's feature bits alone, the same for the life of the program.
Target activeTarget();

// Whether this processor (and the system under it) runs a target.
bool processorRuns(Target target);

// The one with the widest vectors among them.
Target bestTarget();

// The bytes of a destination from which on functions that have streaming kernels take them (frame/streaming.h).
constexpr std::ptrdiff_t kStreamedFrom = std::ptrdiff_t{64} << 20;
std::ptrdiff_t streamedFrom();

// Picks between the constant kernel tables of a family.
template <class Table>
const Table& forActiveTarget(const Table& sse42, const Table& avx2, const Table& avx512) {
    switch (activeTarget()) {
        case Target::avx512:
            return avx512;
        case Target::avx2:
            return avx2;
        case Target::sse42:
            break;
    }
    return sse42;
}

}  // namespace pxl
