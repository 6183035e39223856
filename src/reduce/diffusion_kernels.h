// ReduceBits with error diffusion: kernels for one channel of a whole image, one table for each target.
#pragma once

#include "reduce/levels.h"

namespace pxl {

// What the channel's samples are measured in, by the type of the source: see Levels.
struct DiffusionUnits {
    Levels levels;
    Pxl32f threshold;    // of the rest above a level, where there is no noise
    Pxl32f top, bottom;  // from top on and below bottom a value is saturated
    Pxl32s largest;      // output of what is saturated above, from 0
};

enum class SampleType { u8, s16, u16, f32 };

// One channel: every `stride`-th sample of a row.
struct Channel {
    const void* src;
    void* dst;
    Index srcStep, dstStep, stride;
    PxlSize size;
    void* errors;  // the caller's buffer: kReach rows of `width` errors, 0 at the start
};

struct Diffusion {
    Channel channel;
    SampleType source, destination;  // of 16-bit sources to bytes the upper byte is the output
    DiffusionUnits units;
    NoiseTables noise;
};

struct BilevelDiffusion {
    Channel channel;
    int bitOffset;     // 0..7, of the first pixel of a row in the first byte
    Pxl32s threshold;  // 8192 times that of the samples
};

struct DiffusionKernels {
    using Kernel = void (*)(const Diffusion& diffusion);
    struct Variants {
        Kernel plain, noisy;
    };
    struct Method {
        Variants integers, floats;
    };
    Method floydSteinberg, jarvisJudiceNinke, stucki;
    void (*stuckiBilevel)(const BilevelDiffusion& diffusion);
};

namespace sse42 {
extern const DiffusionKernels kDiffusionKernels;
}
namespace avx2 {
extern const DiffusionKernels kDiffusionKernels;
}
namespace avx512 {
extern const DiffusionKernels kDiffusionKernels;
}

}  // namespace pxl
