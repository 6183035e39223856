// says: pxlcc: no export converts between views of these types
// says: Nearest<pxlcc::Export::pxliRGBToGray_16u_C3C1R>
#include "pxlcc/pxlcc.hpp"

#ifdef RIGHT
using Sample = std::uint16_t;
#else
using Sample = std::uint8_t;
#endif

pxlcc::Result toGray(pxlcc::Rgb<std::uint16_t> from, pxlcc::Gray<Sample> to) { return convert(from, to); }
