// Frames of video, NV12 as decoders hand them out, onto a screen of BGRA pixels: the whole frame in bands on all
// processors, and a part of another one as a picture in the picture. No exceptions, no copies.
#include <cstdio>
#include <pxlcc/pxlcc.hpp>
#include <thread>
#include <vector>

namespace {

using namespace pxlcc;

constexpr PxlSize kSize = {1280, 720};
constexpr PxlRect kWindow = {901, 37, 320, 180};  // where the small picture goes, as somebody has dragged it

struct Decoder {
    std::vector<std::uint8_t> memory = std::vector<std::uint8_t>(Nv12::bytes(kSize, 64));

    // A bar that moves to the right over a gray ramp; rows are multiples of 64 bytes, as decoders have them.
    Nv12 next(int number) {
        const Nv12 frame = Nv12::contiguous(memory.data(), kSize, 64);
        for (int y = 0; y < kSize.height; ++y) {
            for (int x = 0; x < kSize.width; ++x) {
                const bool bar = x / 80 == number % 16;
                frame.row(0, y)[x] = static_cast<std::uint8_t>(bar ? 81 : 16 + x * 219 / kSize.width);
                if (y % 2 == 0) frame.row(1, y / 2)[x] = static_cast<std::uint8_t>(bar ? (x % 2 == 0 ? 90 : 240) : 128);
            }
        }
        return frame;
    }
};

// A real program keeps its threads; these last for one frame.
template <class Band>
void onThreads(int count, const Band& band) {
    std::vector<std::thread> threads;
    for (int i = 1; i < count; ++i) threads.emplace_back([&band, i] { band(i); });
    band(0);
    for (std::thread& thread : threads) thread.join();
}

}  // namespace

int main() {
    Decoder decoder;
    std::vector<std::uint8_t> pixels(Bgra<>::bytes(kSize));
    const auto screen = Bgra<>::contiguous(pixels.data(), kSize);
    const int bands = static_cast<int>(std::thread::hardware_concurrency());

    for (int number = 0; number < 3; ++number) {
        const Const<Nv12> frame = decoder.next(number);
        const auto executor = [](int count, const auto& band) { onThreads(count, band); };
        if (const Result done = parallelRows(frame, screen, bands, executor); !done) {
            std::fprintf(stderr, "frame %d: %s\n", number, done.message());
            return 1;
        }
        // Both views take whole blocks of 2 x 2 pixels, the frame from its own place, the screen from the window's.
        const PxlRect from = commonPart({0, 0, kWindow.width, kWindow.height}, frame, screen);
        const PxlRect to = {kWindow.x, kWindow.y, from.width, from.height};
        if (!convert(frame.part(from), screen.part(to), Alpha{200})) return 1;
    }

    const auto* bar = screen.row(0, 600) + 4 * 200;
    const auto* window = screen.row(0, kWindow.y + 90) + 4 * (kWindow.x + 200);
    std::printf("bar:    R %3d  G %3d  B %3d  A %3d\n", bar[2], bar[1], bar[0], bar[3]);
    std::printf("window: R %3d  G %3d  B %3d  A %3d\n", window[2], window[1], window[0], window[3]);
    const bool red = bar[2] > 240 && bar[1] < 10 && bar[0] < 10 && bar[3] == 255;
    return red && window[2] > 240 && window[3] == 200 ? 0 : 1;
}
