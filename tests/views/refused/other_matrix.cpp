// Packed 4:2:2 in the order Cb Y Cr Y becomes BGR by BT.709 alone, which must be said.
// says: static
// says: pxlcc: these views are converted with other options
// says: Nearest<pxlcc::Export::pxliCbYCr422ToBGR_709HDTV_8u_C2C3R>
// says: ItNeeds<pxlcc::Option::bt709Hdtv>
#include "pxlcc/pxlcc.hpp"

pxlcc::Result toBgr(pxlcc::Const<pxlcc::Uyvy> from, pxlcc::Bgr<> to) {
#ifdef RIGHT
    return convert(from, to, pxlcc::bt709Hdtv);
#else
    return convert(from, to);
#endif
}
