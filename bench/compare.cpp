#include "compare.h"

#include <cmath>
#include <cstring>
#include <stdexcept>

#include "measure.h"
#include "peers.h"

namespace pxl::bench {
namespace {

std::vector<catalog::PlaneRef> refs(const std::vector<Plane>& planes) {
    std::vector<catalog::PlaneRef> refs;
    for (const Plane& plane : planes) refs.push_back({plane.first, plane.step});
    return refs;
}

catalog::Arguments argumentsFor(const Images& images) {
    catalog::Arguments arguments;
    arguments.size = images.size;
    arguments.source = refs(images.source);
    arguments.destination = refs(images.destination);
    arguments.alpha = fullScale(images.function.destination.planes[0].element);
    arguments.matrix = &kTwist[0][0];
    return arguments;
}

void mustSucceed(bool success, const std::string& who, const catalog::Export& function) {
    if (!success) throw std::runtime_error(who + " refuses its images for " + std::string(function.name));
}

double distanceOf(const Plane& plane, const std::vector<std::uint8_t>& other, int channels, int compared) {
    const auto bytes = static_cast<std::int64_t>(catalog::bytesOf(plane.element));
    double sum = 0;
    for (std::int64_t i = 0; i * bytes < plane.bytes; ++i) {
        if (i % channels >= compared) continue;
        sum += std::fabs(readSample(plane.first + i * bytes, plane.element) -
                         readSample(other.data() + i * bytes, plane.element));
    }
    return sum * channels / compared;
}

void runOnce(const Images& images, const Contender& contender) {
    for (const Plane& plane : images.destination) std::memset(plane.first, 0, static_cast<std::size_t>(plane.bytes));
    contender.prepare();
    contender.run();
}

// Mean absolute difference between what two contenders write; a fourth channel that is not converted does not count.
double distance(const Images& images, const Contender& ours, const Contender& theirs) {
    const catalog::ImageShape& shape = images.function.destination;
    runOnce(images, ours);
    std::vector<std::vector<std::uint8_t>> kept;
    for (const Plane& plane : images.destination) kept.emplace_back(plane.first, plane.first + plane.bytes);
    runOnce(images, theirs);
    double sum = 0;
    for (std::size_t i = 0; i < kept.size(); ++i) {
        const int channels = shape.planes[i].channels;
        sum += distanceOf(images.destination[i], kept[i], channels, shape.layout == "AC4" ? 3 : channels);
    }
    return sum * static_cast<double>(catalog::bytesOf(shape.planes[0].element)) /
           static_cast<double>(images.bytesWritten);
}

}  // namespace

Result compare(const Arena& arena, const catalog::Export& function, PxlSize size, double seconds) {
    const Images images(arena, function, size);
    catalog::Values values(function, argumentsFor(images));

    std::vector<Contender> contenders;
    const auto add = [&](const std::string& name, std::function<void()> run) {
        // An in-place picture is converted again and again; sixteen times are far from making its floats subnormal.
        contenders.push_back({name, std::move(run), [&] { images.restore(); }, function.inPlace ? 16 : 1 << 20});
    };
    add("copy", [&] { images.copy(); });
    for (const auto& [target, name] : kTargets) {
        if (!processorRuns(target)) continue;
        add(name, [&, target = target] {
            useTarget(target);
            mustSucceed(function.call(values.begin()) == pxlStatusOk, "this library", function);
        });
    }
    const std::size_t firstPeer = contenders.size();
    Result result;
    result.function = &function;
    for (const PeerLibrary& library : peerLibraries()) {
        if (const auto peer = library.find(images)) {
            result.peers[library.name].call = peer->call;
            add(library.name, [&, peer] { mustSucceed(peer->run(), peer->call, function); });
        }
    }
    measure(contenders, seconds);

    const auto nanoseconds = [&](const Contender& contender) {
        result.spreads.push_back(contender.spread);
        return contender.seconds * 1e9 / static_cast<double>(images.pixels());
    };
    result.copyNanoseconds = nanoseconds(contenders[0]);
    for (std::size_t i = 1; i < firstPeer; ++i) result.nanoseconds[i - 1] = nanoseconds(contenders[i]);
    for (std::size_t i = firstPeer; i < contenders.size(); ++i) {
        PeerResult& peer = result.peers[contenders[i].name];
        peer.nanoseconds = nanoseconds(contenders[i]);
        peer.distance = distance(images, contenders[firstPeer - 1], contenders[i]);
    }
    return result;
}

}  // namespace pxl::bench
