// The sets of coefficients from YCbCr 4:2:0 and 4:1:1 to RGB that no other sampling has.
#pragma once

#include "ycbcr/subsampled_decode_forms.h"

PXL_BEGIN_TARGET

// The forms of whole rows.
// ITU-R BT.601. The two sets, which belong to the two orders of chroma, differ in last digits, and -1084 stands where
// -1089 would be expected. Deliberate.
constexpr DecoderFolded kDecodeCbCr = {4769, 6537, 1605, 3330, 8263, -1779, -1089, -2211};
constexpr DecoderFolded kDecodeCrCb = {4768, 6537, 1606, 3330, 8262, -1779, -1084, -2210};

// ITU-R BT.709
constexpr DecoderQ16 kDecode709CSC = {76284, 117506, -13959, -34996, 138609, 32768};
// The pixels of a 4:1:1 row that fill no group of four. Luma and Cb to G differ from kDecode601b: deliberate.
constexpr DecoderQ16 kDecode411Tail = {76294, 104595, -25625, -53281, 132186, 32768};
// Q12 coefficients, sixteen times.
constexpr DecoderQ16 kDecodeFilter = {16 * 4769, 16 * 6537, -16 * 1605, -16 * 3330, 16 * 8263, 0};

PXL_END_TARGET
