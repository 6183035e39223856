// says: pxlcc: this export does not take these views with these options
#include "pxlcc/pxlcc.hpp"

pxlcc::Result repack(pxlcc::Const<pxlcc::Yuy2> from, pxlcc::Nv12 to) {
#ifdef RIGHT
    return pxlcc::call<pxlcc::Export::pxliYCbCr422ToYCrCb420_8u_C2P2R>(from, to);
#else
    return pxlcc::call<pxlcc::Export::pxliYCbCr422ToYCbCr420_8u_P3P2R>(from, to);
#endif
}
