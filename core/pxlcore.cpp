#include "pxlcore.h"

#include <cpuid.h>
#include <unistd.h>

namespace {

// Largest cache of the deterministic cache tables: leaf 4 (Intel) and 0x8000001D (AMD) have the same layout.
int64_t largestIn(unsigned leaf) {
    int64_t largest = 0;
    for (unsigned index = 0; index < 32; ++index) {
        unsigned a = 0, b = 0, c = 0, d = 0;
        if (!__get_cpuid_count(leaf, index, &a, &b, &c, &d) || (a & 31) == 0) break;
        const int64_t ways = (b >> 22) + 1, partitions = ((b >> 12) & 1023) + 1, lineSize = (b & 4095) + 1;
        const int64_t bytes = ways * partitions * lineSize * (int64_t{c} + 1);
        if (bytes > largest) largest = bytes;
    }
    return largest;
}

int64_t largestOfSystem() {
    int64_t largest = 0;
    constexpr int kNames[] = {_SC_LEVEL1_DCACHE_SIZE, _SC_LEVEL2_CACHE_SIZE, _SC_LEVEL3_CACHE_SIZE,
                              _SC_LEVEL4_CACHE_SIZE};
    for (const int name : kNames) {
        const int64_t bytes = sysconf(name);
        if (bytes > largest) largest = bytes;
    }
    return largest;
}

}  // namespace

PxlStatus pxlGetMaxCacheSizeB(int* pSizeByte) {
    if (!pSizeByte) return pxlStatusNullPointer;
    int64_t bytes = largestIn(4);
    if (bytes == 0) bytes = largestIn(0x8000001D);
    if (bytes == 0) bytes = largestOfSystem();
    *pSizeByte = static_cast<int>(bytes > INT32_MAX ? INT32_MAX : bytes);
    return pxlStatusOk;
}
