// says: pxlcc: no export converts between views of these types
// says: Nearest<pxlcc::Export::pxliYCbCr420ToRGB_8u_P2C3R>
// says: ItDoesNotTake<>
#include "pxlcc/pxlcc.hpp"

using Nv16 = pxlcc::SemiPlanar<pxlcc::Sampling::s422>;

#ifdef RIGHT
pxlcc::Result toRgb(pxlcc::Const<pxlcc::Nv12> from, pxlcc::Rgb<> to) {
#else
pxlcc::Result toRgb(pxlcc::Const<Nv16> from, pxlcc::Rgb<> to) {
#endif
    return convert(from, to);
}
