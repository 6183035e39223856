// says: pxlcc: an option stands twice
#include "pxlcc/pxlcc.hpp"

pxlcc::Result toRgba(pxlcc::Gray<> from, pxlcc::Rgba<> to) {
#ifdef RIGHT
    return convert(from, to, pxlcc::Alpha{255});
#else
    return convert(from, to, pxlcc::Alpha{255}, pxlcc::Alpha{0});
#endif
}
