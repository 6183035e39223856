// Compiled like the kernels of the narrowest target, whose instruction for the estimate all targets use.
#include "digest.h"
#include "golden.h"
#include "simd/memory.h"
#include "simd/operations.h"

namespace pxl::tool {

Digest estimateDigest() {
    using namespace pxl::PXL_TARGET;
    Hash hash;
    const auto add = [&](const Pxl32f* four) {
        Pxl32f estimates[4];
        store(Blocks<1>{}, estimates, reciprocalEstimate(load(Blocks<1>{}, four)));
        hash.add(estimates);
    };
    // 1 <= x < 2, on every 128th number and between; the estimates of other powers of two are these, scaled.
    for (int i = 0; i < 1 << 16; i += 4) {
        Pxl32f numbers[4];
        for (int k = 0; k < 4; ++k) numbers[k] = 1 + static_cast<float>((i + k) * 128 + (i + k) * 37 % 128) * 0x1p-23f;
        add(numbers);
    }
    constexpr Pxl32f kOthers[] = {0, 0x1p-149f, 0x1.8p-127f, 0x1.fffffep127f, 255, 65535, 0x1.8p-20f, -3};
    add(kOthers);
    add(kOthers + 4);
    return hash.value();
}

}  // namespace pxl::tool
