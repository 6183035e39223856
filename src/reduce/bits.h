// Rows of packed bits, most significant first. Static: no object may share code with one of another target.
#pragma once

#include "frame/rows.h"

namespace pxl {

// Puts up to 8 bits, the upper ones of `bits`, where bit 7 - offset (0..7) of the first of one or two bytes stands.
static inline void putBits(Pxl8u* p, int offset, int count, unsigned bits) {
    const unsigned mask = (0xFF00u << (8 - count) & 0xFF00u) >> offset, value = (bits << 8) >> offset;
    p[0] = static_cast<Pxl8u>((p[0] & ~(mask >> 8)) | (value & mask) >> 8);
    if (offset + count > 8) p[1] = static_cast<Pxl8u>((p[1] & ~mask) | (value & mask));
}

}  // namespace pxl
