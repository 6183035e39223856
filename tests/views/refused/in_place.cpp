// Of the functions that work in place none reduces levels.
// says: pxlcc: these views are converted with other options
// says: ItDoesNotTake<pxlcc::Option::levels>
#include "pxlcc/pxlcc.hpp"

pxlcc::Result change(pxlcc::Rgb<> image) {
#ifdef RIGHT
    return convertInPlace(image, pxlcc::gammaForward);
#else
    return convertInPlace(image, pxlcc::Levels{4});
#endif
}
