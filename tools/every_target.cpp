#include "every_target.h"

#include "frame/target_switch.h"

namespace {

const pxl::catalog::AnyFunction kFunctions[] = {
#define PXL_FAMILY(...)
#define PXL_EXPORT(function, ...) reinterpret_cast<pxl::catalog::AnyFunction>(function),
#include "exports.def"
#undef PXL_EXPORT
#undef PXL_FAMILY
};

}  // namespace

const pxl::tool::EveryTarget pxlccEveryTarget = {
    .use = pxl::useTarget,
    .functions = kFunctions,
    .reduceBitsBufferSize = reinterpret_cast<pxl::catalog::AnyFunction>(pxliReduceBitsGetBufferSize),
    .version = reinterpret_cast<pxl::catalog::AnyFunction>(pxlccGetLibVersion),
};
