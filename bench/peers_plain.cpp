// Loops as anybody would write them: what a conversion costs without this library where no other library has it.
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

std::optional<Peer> find(const Images& images) {
    const std::string_view name = images.function.name;
    const auto startsWith = [name](std::string_view start) { return name.substr(0, start.size()) == start; };
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
