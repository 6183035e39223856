// pxlCC for C++17: typed views of images in the caller's memory, and one verb, convert(from, to, options ...), for all
// exports of the library. Header only; link the library as from C. docs/cpp.md starts with ten lines.
#ifndef PXLCC_PXLCC_HPP
#define PXLCC_PXLCC_HPP

#include "convert.hpp"   // convert, convertInPlace, call, scratchBytes
#include "options.hpp"   // bt709, Alpha, Levels ...
#include "parallel.hpp"  // parallelRows
#include "status.hpp"    // Result
#include "view.hpp"      // Rgb, Bgr, Planes420, Nv12, Yuy2 ...

#endif
