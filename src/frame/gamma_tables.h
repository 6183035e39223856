// The ITU-R BT.709 transfer characteristic as constant data, which gamma_tables_generator.cpp computes when the library
// is built. No functions here: kernel files may include this.
#pragma once

#include "pxlcc/types.h"

namespace pxl {

// A code of 0..255 or 0..65535 to the code of its image under the curve; rounded to nearest, ties to even.
extern const Pxl8u kGammaForward8u[256];
extern const Pxl8u kGammaInverse8u[256];
extern const Pxl16u kGammaForward16u[65536];
extern const Pxl16u kGammaInverse16u[65536];

// The power segment of a curve in each octave of its argument n, indexed by the exponent byte of n. About the centre of
// the octave the curve is
//     value + gain * ((1 + f)^p - 1),   f = (n - centre) * scale in -0.293..0.415
// where the power is the same in all octaves. Exponents from 2^-7 to the largest finite ones; the others are zero.
struct GammaOctaves {
    Pxl32f centre[256];
    Pxl32f scale[256];
    Pxl32f gain[256];
    Pxl32f value[256];
};
extern const GammaOctaves kGammaForwardOctaves;
extern const GammaOctaves kGammaInverseOctaves;

}  // namespace pxl
