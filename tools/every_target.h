// A second copy of the library's code, with a target that can be chosen. It lies in a library of its own, which is
// installed beside the program and exports this record alone; the public library has no such choice.
#pragma once

#include "catalog.h"
#include "frame/target.h"

namespace pxl::tool {

struct EveryTarget {
    void (*use)(Target target);                 // the target must be one that the processor runs
    const catalog::AnyFunction* functions;      // in the order of the catalogue
    catalog::AnyFunction reduceBitsBufferSize;  // the exports that convert no image
    catalog::AnyFunction version;
};

}  // namespace pxl::tool

extern "C" const pxl::tool::EveryTarget pxlccEveryTarget;
