// says: pxlcc: the target is a view of read-only memory
#include "pxlcc/pxlcc.hpp"

#ifdef RIGHT
using Target = pxlcc::Rgb<>;
#else
using Target = pxlcc::Const<pxlcc::Rgb<>>;
#endif

pxlcc::Result toRgb(pxlcc::Nv12 from, Target to) { return convert(from, to); }
