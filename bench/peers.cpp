#include "peers.h"

#include <vector>

namespace pxl::bench {

std::span<const PeerLibrary> peerLibraries() {
    static const std::vector<PeerLibrary> libraries = {
#ifdef PXLCC_BENCH_LIBYUV
        libyuvLibrary(),
#endif
#ifdef PXLCC_BENCH_OPENCV
        opencvLibrary(),
#endif
#ifdef PXLCC_BENCH_SWSCALE
        swscaleLibrary(),
#endif
        plainLoops(),
    };
    return libraries;
}

}  // namespace pxl::bench
