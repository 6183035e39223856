// The same through the C++ views, which are headers alone.
#include <cstdio>
#include <pxlcc/pxlcc.hpp>

int main() {
    std::uint8_t white[3] = {255, 255, 255}, luma[1] = {}, pairs[2] = {};
    const pxlcc::Rgb<> rgb(white, 3, {1, 1});
    const pxlcc::Result result = convert(rgb, pxlcc::Nv12({luma, 1}, {pairs, 2}, {1, 1}));
    const pxlcc::Result gray = convert(rgb, pxlcc::Gray<>(luma, 1, {1, 1}));
    std::printf("views: %s, %s, white is %d\n", result.message(), gray.message(), luma[0]);
    return result.status() == pxlStatusOddSize && gray.complete() && luma[0] == 255 ? 0 : 1;
}
