#include "reduce/byte_maps.h"

#include <string.h>

namespace pxl {
namespace {

// A table that falls somewhere, as those of a few level counts do, is never in sixteenths.
ByteMap mapOf(const Pxl8u (&table)[256]) {
    ByteMap map;
    __builtin_memcpy(map.table, table, 256);
    map.inSixteenths = true;
    for (int h = 0; h < 16; ++h) {
        const Pxl8u* part = table + 16 * h;
        int from = 0;
        while (part[from] != part[15]) ++from;
        map.below[h] = part[0];
        map.from[h] = static_cast<Pxl8u>(16 * h + from);
        map.above[h] = part[15];
        if (from > 0 && part[from - 1] != part[0]) map.inSixteenths = false;
    }
    return map;
}

int firstStep(const Pxl8u (&table)[256]) {
    int s = 0;
    while (s < 255 && table[s] == table[0]) ++s;
    return s;
}

}  // namespace

ByteMap mapWithoutDithering(const QuantiseKernels& kernels, const Levels& levels) {
    ByteMap map;
    // more steps than sixteenths are two in one of them
    map.inSixteenths = levels.inverse <= 16 && kernels.findSteps(levels, map);
    if (map.inSixteenths) return map;
    Pxl8u all[256];
    for (int i = 0; i < 256; ++i) all[i] = static_cast<Pxl8u>(i);
    kernels.u8.none(all, map.table, levels, 256);
    return map;
}

bool findOffsets(const QuantiseRows<Pxl8u, Pxl8u>& rows, const Levels& levels, const Pxl32f (&thresholds)[4][4],
                 OffsetMap& found) {
    Pxl8u all[256], table[4][4][256];
    Pxl32f threshold[kBayerPeriod];
    for (int i = 0; i < 256; ++i) all[i] = static_cast<Pxl8u>(i);
    int last = 0;  // the place whose levels begin last
    for (int place = 0; place < 16; ++place) {
        for (Pxl32f& t : threshold) t = thresholds[place / 4][place % 4];
        rows.bayer(all, table[place / 4][place % 4], levels, threshold, 256);
        if (firstStep(table[place / 4][place % 4]) > firstStep(table[last / 4][last % 4])) last = place;
    }
    const auto& base = table[last / 4][last % 4];
    found.map = mapOf(base);
    for (int place = 0; place < 16; ++place) {
        const auto& own = table[place / 4][place % 4];
        const int offset = firstStep(base) - firstStep(own);
        const auto shared = static_cast<size_t>(256 - offset);
        if (memcmp(own, base + offset, shared) != 0 || own[shared - 1] != own[255]) return false;
        found.offset[place / 4][place % 4] = static_cast<Pxl8u>(offset);
    }
    return true;
}

}  // namespace pxl
