/*
 * pxlCC: exact, fast conversions of whole images between colour models, samplings, layouts and depths.
 *
 * Rules that every image function follows:
 *  - An image is the pointer to the first pixel of its region of interest and a step, the signed distance in bytes
 *    between the starts of two rows. A negative step walks the image upwards.
 *  - Arguments come in the order source(s), source step(s), destination(s), destination step(s), size, then what else
 *    the function needs. A planar image is an array of plane pointers.
 *  - All checks run before the first byte is written, in the order that the function's documentation lists; the first
 *    one that fails decides the status.
 *  - Nothing outside the region is read or written. (Three 4:2:2 decoders read a byte in front of a row of one pixel.)
 *  - No function allocates, locks, keeps state or starts a thread; any number of calls may run at once as long as no
 *    destination overlaps another destination or a source (the in-place functions, marked by an I in their layout
 *    suffix, excepted).
 *  - From 64 MiB on, the destination of these functions may be written with streaming (non-temporal) stores, past the
 *    caches: pxliGrayToRGB; those from YCbCr 4:2:0, 4:1:1, 4:2:2 and 4:4:4 in planes to C3 and C4; those from bytes of
 *    YUV 4:2:0, 4:2:2 and 4:4:4 in planes to C3. The bytes are the same, but are not in the caches afterwards. A fence
 *    ends the call: threads that learn that it returned see the whole image.
 */
#ifndef PXLCC_H
#define PXLCC_H

#include "pxlcc/demosaic.h"
#include "pxlcc/graytwistgamma.h"
#include "pxlcc/hls_hsv.h"
#include "pxlcc/reduce.h"
#include "pxlcc/repack.h"
#include "pxlcc/types.h"
#include "pxlcc/xyz_luv_lab.h"
#include "pxlcc/ycbcr.h"
#include "pxlcc/ycbcr422.h"
#include "pxlcc/ycocg_photoycc.h"
#include "pxlcc/yuv.h"

#endif
