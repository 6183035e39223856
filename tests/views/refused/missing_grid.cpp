// says: ItNeeds<pxlcc::Option::grid>
// says: Nearest<pxlcc::Export::pxliDemosaicAHD_16u_C1C3R>
#include "pxlcc/pxlcc.hpp"

pxlcc::Result develop(pxlcc::Bayer<std::uint16_t> from, pxlcc::Rgb<std::uint16_t> to) {
#ifdef RIGHT
    return convert(from, to, pxlBayRGGB, pxlcc::ahd);
#else
    return convert(from, to, pxlcc::ahd);
#endif
}
