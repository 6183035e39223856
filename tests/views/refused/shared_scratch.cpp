// says: pxlcc: bands cannot share scratch memory
#include "pxlcc/pxlcc.hpp"

inline constexpr auto inOrder = [](int count, const auto& band) {
    for (int i = 0; i < count; ++i) band(i);
};

pxlcc::Result reduce(pxlcc::Gray<> from, pxlcc::Gray<> to, [[maybe_unused]] pxlcc::Scratch memory) {
#ifdef RIGHT
    return parallelRows(from, to, 8, inOrder, pxlcc::Levels{4}, pxlDitherBayer);
#else
    return parallelRows(from, to, 8, inOrder, pxlcc::Levels{4}, pxlDitherBayer, memory);
#endif
}
