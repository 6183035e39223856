// From the sensor to the screen: a raw image, packed in 12 bits, becomes a picture with white balance, colour
// correction and gamma, in bytes for a display and in NV12 for a video encoder.
#include <cstdio>
#include <pxlcc/pxlcc.hpp>
#include <vector>

namespace {

using namespace pxlcc;

constexpr PxlSize kSize = {640, 480};

// What a sensor sees of a gray card with a red and a green field under warm light: 12 bits a pixel behind red, green,
// green and blue filters.
std::vector<std::uint16_t> sensor() {
    std::vector<std::uint16_t> samples;
    for (int y = 0; y < kSize.height; ++y) {
        for (int x = 0; x < kSize.width; ++x) {
            const bool red = y % 2 == 0 && x % 2 == 0, blue = y % 2 == 1 && x % 2 == 1;
            const bool redField = x < 200 && y < 200, greenField = x >= 440 && y < 200;
            int light = red ? 1400 : blue ? 560 : 1000;
            if (redField && !red) light /= 4;
            if (greenField && (red || blue)) light /= 4;
            samples.push_back(static_cast<std::uint16_t>(light));
        }
    }
    return samples;
}

// Memory and a view of it.
template <class V>
struct Owned {
    std::vector<typename V::Sample> samples =
        std::vector<typename V::Sample>(V::bytes(kSize) / sizeof(typename V::Sample));
    V view = V::contiguous(samples.data(), kSize);
};

}  // namespace

int main() try {
    std::vector<std::uint16_t> seen = sensor();
    Owned<Packed12<>> packed;  // as it comes over the wire
    convert(Bayer<std::uint16_t>::contiguous(seen.data(), kSize), packed.view).orThrow();

    Owned<Bayer<std::uint16_t>> raw;
    convert(packed.view, raw.view).orThrow();

    // Colours from the filters. The factors balance the light and bring 12 bits to 16 in one step.
    Owned<Bgra<std::uint16_t>> linear;
    const Gains balance{16 * 1000.0F / 560, 16, 16 * 1000.0F / 1400};
    convert(raw.view, linear.view, pxlBayRGGB, vng, balance).orThrow();

    // The sensor's colours to those of the display, B, G, R in and out; each row adds up to 1, so that gray stays gray.
    const float correction[3][4] = {{1.3F, -0.2F, -0.1F, 0}, {-0.1F, 1.3F, -0.2F, 0}, {-0.1F, -0.3F, 1.4F, 0}};
    convertInPlace(linear.view, Twist(correction)).orThrow();
    convertInPlace(linear.view, gammaForward).orThrow();

    // Bytes for a screen; dithering hides the steps of the eight bits.
    Owned<Bgra<>> screen;
    convert(linear.view, screen.view, keepAlpha, Levels{256}, pxlDitherBayer).orThrow();

    // And for an encoder of BT.709 video.
    Owned<Nv12> video;
    convert(screen.view, video.view, bt709).orThrow();

    const auto pixel = [&](int x, int y) { return screen.view.row(0, y) + 4 * x; };
    const std::uint8_t *gray = pixel(320, 400), *red = pixel(100, 100), *green = pixel(540, 100);
    for (const auto* p : {gray, red, green}) std::printf("R %3d  G %3d  B %3d\n", p[2], p[1], p[0]);
    std::printf("luma of the card: %d\n", *(video.view.row(0, 400) + 320));
    const bool grayIsGray = gray[0] - gray[2] < 3 && gray[2] - gray[0] < 3;
    return grayIsGray && red[2] > red[1] + 60 && green[1] > green[2] + 60 ? 0 : 1;
} catch (const Error& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
}
