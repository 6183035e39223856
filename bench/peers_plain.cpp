// Loops as anybody would write them: what a conversion costs without this library where no other library has it.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>
#include <vector>

#include "peers.h"

namespace pxl::bench {
namespace {

float forward(float x) { return x < 0.018F ? 4.5F * x : 1.099F * powf(x, 0.45F) - 0.099F; }
float inverse(float x) { return x < 0.0812F ? x * 0.2222222F : powf(x * 0.9099181F + 0.09008189F, 2.2222223F); }

// The three colour samples of every pixel of all planes through `map`.
template <class T, class Map>
bool eachColour(const Images& images, Map map) {
    for (std::size_t i = 0; i < images.source.size(); ++i) {
        const T* from = reinterpret_cast<const T*>(images.source[i].first);
        T* to = reinterpret_cast<T*>(images.destination[i].first);
        const std::int64_t samples = images.source[i].bytes / static_cast<std::int64_t>(sizeof(T));
        if (images.function.source.planes[i].channels == 4) {
            for (std::int64_t k = 0; k < samples; k += 4) {
                for (int c = 0; c < 3; ++c) to[k + c] = map(from[k + c]);
            }
        } else {
            for (std::int64_t k = 0; k < samples; ++k) to[k] = map(from[k]);
        }
    }
    return true;
}

// ---- hexagonal colour models of 16-bit pixels

struct Pixel {
    float a, b, c;
};

float hueOf(Pixel rgb, float largest, float range) {
    const float hue = largest == rgb.a   ? (rgb.b - rgb.c) / range
                      : largest == rgb.b ? (rgb.c - rgb.a) / range + 2
                                         : (rgb.a - rgb.b) / range + 4;
    return (hue < 0 ? hue + 6 : hue) * (65535 / 6.0F);
}

Pixel toHls(Pixel p) {
    const float largest = std::max({p.a, p.b, p.c}), smallest = std::min({p.a, p.b, p.c}), sum = largest + smallest;
    const float range = largest - smallest;
    if (range == 0) return {0, largest, 0};
    return {hueOf(p, largest, range), sum / 2, range / (sum <= 65535 ? sum : 131070 - sum) * 65535};
}

Pixel toHsv(Pixel p) {
    const float largest = std::max({p.a, p.b, p.c}), range = largest - std::min({p.a, p.b, p.c});
    if (range == 0) return {0, 0, largest};
    return {hueOf(p, largest, range), range / largest * 65535, largest};
}

Pixel ofHue(float hue, float low, float high) {
    const float sixths = hue / (65535 / 6.0F), span = high - low;
    const int sector = static_cast<int>(sixths) % 6;
    const float part = (sixths - floorf(sixths)) * span, up = low + part, down = high - part;
    switch (sector) {
        case 0:
            return {high, up, low};
        case 1:
            return {down, high, low};
        case 2:
            return {low, high, up};
        case 3:
            return {low, down, high};
        case 4:
            return {up, low, high};
        default:
            return {high, low, down};
    }
}

Pixel fromHls(Pixel p) {
    const float s = p.c / 65535, high = p.b <= 32767.5F ? p.b * (1 + s) : p.b + 65535 * s - p.b * s;
    return ofHue(p.a, 2 * p.b - high, high);
}

Pixel fromHsv(Pixel p) { return ofHue(p.a, p.c - p.c * (p.b / 65535), p.c); }

template <class Map>
Peer hexagonal(const Images& images, Map map) {
    return {"float loop", [&images, map] {
                const auto code = [](float x) { return static_cast<std::uint16_t>(lrintf(x)); };
                const int channels = images.function.source.planes[0].channels;
                const auto* from = reinterpret_cast<const std::uint16_t*>(images.source[0].first);
                auto* to = reinterpret_cast<std::uint16_t*>(images.destination[0].first);
                for (std::int64_t i = 0; i < images.source[0].bytes / 2; i += channels) {
                    const auto sample = [from](std::int64_t k) { return static_cast<float>(from[k]); };
                    const Pixel out = map({sample(i), sample(i + 1), sample(i + 2)});
                    to[i] = code(out.a), to[i + 1] = code(out.b), to[i + 2] = code(out.c);
                }
                return true;
            }};
}

std::optional<Peer> hexagonal(const Images& images) {
    const std::string_view name = images.function.name;
    const auto is = [name](std::string_view start) { return name.substr(0, start.size()) == start; };
    if (is("pxliRGBToHLS_16u")) return hexagonal(images, toHls);
    if (is("pxliHLSToRGB_16u")) return hexagonal(images, fromHls);
    if (is("pxliRGBToHSV_16u")) return hexagonal(images, toHsv);
    if (is("pxliHSVToRGB_16u")) return hexagonal(images, fromHsv);
    return std::nullopt;
}

// Error diffusion after Floyd and Steinberg as one writes it down: row after row, pixel after pixel.
bool diffuse(const Images& images) {
    const int channels = images.function.source.planes[0].channels, width = images.width(), levels = 16;
    const float step = 255.0F / (levels - 1), inverse = 1 / step;
    std::vector<float> errors(static_cast<std::size_t>(2 * (width + 2)));
    for (int c = 0; c < (images.function.source.layout == "AC4" ? 3 : channels); ++c) {
        std::ranges::fill(errors, 0.0F);
        float *above = errors.data() + 1, *own = above + width + 2;
        for (int y = 0; y < images.height(); ++y) {
            const std::uint8_t* from = images.source[0].first + std::int64_t{y} * images.source[0].step + c;
            std::uint8_t* to = images.destination[0].first + std::int64_t{y} * images.destination[0].step + c;
            for (int x = 0; x < width; ++x, from += channels, to += channels) {
                const float taken = 7 * own[x - 1] + above[x - 1] + 5 * above[x] + 3 * above[x + 1];
                const float value = static_cast<float>(*from) + taken * 0.0625F;
                const float level = static_cast<float>(static_cast<int>(value * inverse + 0.5F)) * step;
                const float stored = std::min(std::max(level, 0.0F), 255.0F);
                *to = static_cast<std::uint8_t>(stored);
                own[x] = value - stored;
            }
            std::swap(above, own);
        }
    }
    return true;
}

std::optional<Peer> find(const Images& images) {
    if (auto peer = hexagonal(images)) return peer;
    const std::string_view name = images.function.name;
    const auto startsWith = [name](std::string_view start) { return name.substr(0, start.size()) == start; };
    if (startsWith("pxliReduceBits_8u_") && images.dithering.type == pxlDitherFS && images.dithering.noise == 0)
        return Peer{"row after row", [&images] { return diffuse(images); }};
    const bool isForward = startsWith("pxliGammaFwd");
    if (!isForward && !startsWith("pxliGammaInv")) return std::nullopt;
    if (images.function.source.planes[0].element == catalog::Element::f32) {
        if (isForward) return Peer{"powf", [&images] { return eachColour<float>(images, forward); }};
        return Peer{"powf", [&images] { return eachColour<float>(images, inverse); }};
    }
    if (images.function.source.planes[0].element == catalog::Element::u16) {
        const auto table = std::make_shared<std::vector<std::uint16_t>>(65536);
        for (std::size_t i = 0; i < table->size(); ++i) {
            const float x = static_cast<float>(i) / 65535;
            (*table)[i] = static_cast<std::uint16_t>(std::lrintf(65535 * (isForward ? forward(x) : inverse(x))));
        }
        return Peer{"table", [&images, table] {
                        const std::uint16_t* entries = table->data();
                        return eachColour<std::uint16_t>(images, [entries](std::uint16_t x) { return entries[x]; });
                    }};
    }
    return std::nullopt;
}

}  // namespace

PeerLibrary plainLoops() { return {"plain loop", "", find}; }

}  // namespace pxl::bench
