// says: pxlcc: this is not an option of a conversion
#include "pxlcc/pxlcc.hpp"

pxlcc::Result toRgba(pxlcc::Gray<> from, pxlcc::Rgba<> to) {
#ifdef RIGHT
    return convert(from, to, pxlcc::Alpha{255});
#else
    return convert(from, to, 255);
#endif
}
