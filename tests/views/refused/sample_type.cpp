// says: pxlcc: no image has samples of this type
#include "pxlcc/pxlcc.hpp"

#ifdef RIGHT
int widthOf(const pxlcc::Rgb<std::int16_t>& image) { return image.width(); }
#else
int widthOf(const pxlcc::Rgb<char>& image) { return image.width(); }
#endif
