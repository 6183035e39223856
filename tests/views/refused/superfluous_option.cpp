// says: pxlcc: these views are converted with other options
// says: Nearest<pxlcc::Export::pxliRGBToYCbCr_8u_C3R>
// says: ItDoesNotTake<pxlcc::Option::alpha>
#include "pxlcc/pxlcc.hpp"

pxlcc::Result encode(pxlcc::Rgb<> from, pxlcc::Interleaved<std::uint8_t, 3, pxlcc::Space::ycbcr> to) {
#ifdef RIGHT
    return convert(from, to, pxlcc::bt601);
#else
    return convert(from, to, pxlcc::bt601, pxlcc::Alpha{255});
#endif
}
