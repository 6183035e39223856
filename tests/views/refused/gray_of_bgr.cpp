// The usual weights are those of R, G, B in this order.
// says: Nearest<pxlcc::Export::pxliColorToGray_8u_C3C1R>
// says: ItNeeds<pxlcc::Option::weights>
#include "pxlcc/pxlcc.hpp"

pxlcc::Result toGray(pxlcc::Const<pxlcc::Bgr<>> from, pxlcc::Gray<> to) {
#ifdef RIGHT
    return convert(from, to, pxlcc::bgrWeights);
#else
    return convert(from, to);
#endif
}
