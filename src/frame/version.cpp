#include "pxlcc.h"

namespace {

constexpr PxlLibraryVersion kVersion = {
    .major = 2022,
    .minor = 2,
    .majorBuild = 0,
    .build = 0x42DB1A66,
    .targetCpu = {'y', '8', 0, 0},
    .Name = "pxlCC SSE4.2 (y8)",
    .Version = "2022.2.0 (r0x42db1a66)",
    .BuildDate = "May  9 2025",
};

}  // namespace

const PxlLibraryVersion* pxlccGetLibVersion(void) { return &kVersion; }
