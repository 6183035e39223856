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

// ---- LUV of 16-bit pixels, and Lab of 16 bits from and to bytes: the equations with cbrtf and divisions

Pixel xyzOf(Pixel rgb) {
    return {0.412453F * rgb.a + 0.35758F * rgb.b + 0.180423F * rgb.c,
            0.212671F * rgb.a + 0.71516F * rgb.b + 0.072169F * rgb.c,
            0.019334F * rgb.a + 0.119193F * rgb.b + 0.950227F * rgb.c};
}
Pixel rgbOf(Pixel xyz) {
    return {3.240479F * xyz.a - 1.53715F * xyz.b - 0.498535F * xyz.c,
            -0.969256F * xyz.a + 1.875991F * xyz.b + 0.041556F * xyz.c,
            0.055648F * xyz.a - 0.204043F * xyz.b + 1.057311F * xyz.c};
}

constexpr float kWhiteX = 0.950456F, kWhiteZ = 1.0887539F, kWhiteU = 0.197839F, kWhiteV = 0.468342F;

float lightnessOf(float y) { return y > 0.008856F ? 116 * cbrtf(y) - 16 : 903.3F * y; }
float rootOf(float s) { return s > 0.008856F ? cbrtf(s) : 7.787F * s + 16 / 116.0F; }

Pixel toLuv(Pixel p) {
    const Pixel xyz = xyzOf({p.a / 65535, p.b / 65535, p.c / 65535});
    const float l = lightnessOf(xyz.b), sum = xyz.a + 15 * xyz.b + 3 * xyz.c;
    const float u = sum == 0 ? 0 : 4 * xyz.a / sum, v = sum == 0 ? 0 : 9 * xyz.b / sum;
    return {l * 655.35F, (13 * l * (u - kWhiteU) + 134) * (65535 / 354.0F),
            (13 * l * (v - kWhiteV) + 140) * (65535 / 262.0F)};
}

Pixel fromLuv(Pixel p) {
    const float l = p.a / 655.35F;
    if (l == 0) return {0, 0, 0};
    const float u = (p.b * (354 / 65535.0F) - 134) / (13 * l) + kWhiteU;
    const float v = (p.c * (262 / 65535.0F) - 140) / (13 * l) + kWhiteV;
    const float root = (l + 16) / 116, y = l > 8 ? root * root * root : l / 903.3F;
    const Pixel rgb = rgbOf({y * 9 * u / (4 * v), y, y * (12 - 3 * u - 20 * v) / (4 * v)});
    return {rgb.a * 65535, rgb.b * 65535, rgb.c * 65535};
}

Pixel toLab(Pixel p) {
    const Pixel xyz = xyzOf({p.a / 255, p.b / 255, p.c / 255});
    const float fx = rootOf(xyz.a / kWhiteX), fy = rootOf(xyz.b), fz = rootOf(xyz.c / kWhiteZ);
    return {lightnessOf(xyz.b) * 655.35F, (500 * (fx - fy) + 128) * 255, (200 * (fy - fz) + 128) * 255};
}

Pixel fromLab(Pixel p) {
    const float fy = (p.a / 655.35F + 16) / 116;
    const float fx = (p.b / 255 - 128) / 500 + fy, fz = fy - (p.c / 255 - 128) / 200;
    const Pixel rgb = rgbOf({fx * fx * fx * kWhiteX, fy * fy * fy, fz * fz * fz * kWhiteZ});
    return {rgb.a * 255, rgb.b * 255, rgb.c * 255};
}

// Pixels of integers through `map`; results outside the range of their type are stopped at its ends.
template <class From, class To, class Map>
Peer floatLoop(const Images& images, bool bgr, Map map) {
    return {"float loop", [&images, bgr, map] {
                const auto code = [](float x) {
                    constexpr float kTop = sizeof(To) == 1 ? 255 : 65535;
                    return static_cast<To>(lrintf(std::min(std::max(x, 0.0F), kTop)));
                };
                const int channels = images.function.source.planes[0].channels;
                const auto* from = reinterpret_cast<const From*>(images.source[0].first);
                auto* to = reinterpret_cast<To*>(images.destination[0].first);
                const auto samples = images.source[0].bytes / static_cast<std::int64_t>(sizeof(From));
                const bool fromBgr = bgr && sizeof(From) == 1, toBgr = bgr && sizeof(To) == 1;
                for (std::int64_t i = 0; i < samples; i += channels) {
                    const auto sample = [from](std::int64_t k) { return static_cast<float>(from[k]); };
                    const Pixel out = map({sample(fromBgr ? i + 2 : i), sample(i + 1), sample(fromBgr ? i : i + 2)});
                    to[i] = code(toBgr ? out.c : out.a), to[i + 1] = code(out.b),
                    to[i + 2] = code(toBgr ? out.a : out.c);
                }
                return true;
            }};
}

std::optional<Peer> colourSpace(const Images& images) {
    const std::string_view name = images.function.name;
    const auto is = [name](std::string_view start) { return name.substr(0, start.size()) == start; };
    const auto words = [&images](auto map) { return floatLoop<std::uint16_t, std::uint16_t>(images, false, map); };
    if (is("pxliRGBToHLS_16u")) return words(toHls);
    if (is("pxliHLSToRGB_16u")) return words(fromHls);
    if (is("pxliRGBToHSV_16u")) return words(toHsv);
    if (is("pxliHSVToRGB_16u")) return words(fromHsv);
    if (is("pxliRGBToLUV_16u")) return words(toLuv);
    if (is("pxliLUVToRGB_16u")) return words(fromLuv);
    if (is("pxliBGRToLab_8u16u")) return floatLoop<std::uint8_t, std::uint16_t>(images, true, toLab);
    if (is("pxliLabToBGR_16u8u")) return floatLoop<std::uint16_t, std::uint8_t>(images, true, fromLab);
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
    if (auto peer = colourSpace(images)) return peer;
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
