#include "compare.h"

#include <algorithm>
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
    arguments.ditherType = images.function.has(catalog::Role::levels) ? images.dithering.type : pxlDitherNone;
    arguments.noise = images.dithering.noise;
    return arguments;
}

void mustSucceed(bool success, const std::string& who, const catalog::Export& function) {
    if (!success) throw std::runtime_error(who + " refuses its images for " + std::string(function.name));
}

void runOnce(const Images& images, const Contender& contender) {
    for (const Plane& plane : images.destination) std::memset(plane.first, 0, static_cast<std::size_t>(plane.bytes));
    contender.prepare();
    contender.run();
}

// The samples that a contender leaves, in the form of an equation's; a fourth channel that is not converted does not
// count.
std::vector<std::vector<double>> samplesOf(const Images& images, const Contender& contender) {
    const catalog::ImageShape& shape = images.function.destination;
    runOnce(images, contender);
    std::vector<std::vector<double>> samples;
    for (const Plane& plane : images.destination) {
        const std::size_t bytes = catalog::bytesOf(plane.element);
        samples.emplace_back(static_cast<std::size_t>(plane.bytes) / bytes);
        for (std::size_t i = 0; i < samples.back().size(); ++i) {
            samples.back()[i] =
                shape.layout == "AC4" && i % 4 == 3 ? std::nan("") : readSample(plane.first + i * bytes, plane.element);
        }
    }
    return samples;
}

void runOurs(const catalog::Export& function, catalog::Values& values, Target target) {
    useTarget(target);
    mustSucceed(function.call(values.begin()) == pxlStatusOk, "this library", function);
}

// How far everybody's samples are from the equation, and the peers' from ours. Large frames are left out: the values do
// not depend on the size.
void judge(const Images& images, const std::vector<Contender>& contenders, std::size_t firstPeer, Result& result) {
    if (images.pixels() > 1 << 18) return;
    const auto equation = equationOf(images);
    const auto ours = samplesOf(images, contenders[firstPeer - 1]);
    if (equation) result.distance = distanceFrom(*equation, images.destination);
    for (std::size_t i = firstPeer; i < contenders.size(); ++i) {
        PeerResult& peer = result.peers[contenders[i].name];
        runOnce(images, contenders[i]);
        peer.fromOurs = distanceFrom(ours, images.destination).mean;
        if (equation) peer.distance = distanceFrom(*equation, images.destination);
    }
}

}  // namespace

bool isAsAccurate(const PeerResult& peer, const Result& result) {
    return !peer.distance || !result.distance || peer.distance->mean <= 1.02 * result.distance->mean;
}

Result compare(const Arena& arena, const catalog::Export& function, PxlSize size, const Dithering& dithering,
               double seconds) {
    const Images images(arena, function, size, dithering);
    catalog::Values values(function, argumentsFor(images));

    std::vector<Contender> contenders;
    const auto add = [&](const std::string& name, std::function<void()> run) {
        // An in-place picture is converted again and again; sixteen times are far from making its floats subnormal.
        contenders.push_back({name, std::move(run), [&] { images.restore(); }, function.inPlace ? 16 : 1 << 20});
    };
    add("memcpy", [&] { images.copy(); });
    add("copy loop", [&] { images.copyInLoop(); });
    constexpr std::size_t kCopies = 2;
    for (const auto& [target, name] : kTargets) {
        if (processorRuns(target)) add(name, [&, target = target] { runOurs(function, values, target); });
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
    result.copyNanoseconds = std::min(nanoseconds(contenders[0]), nanoseconds(contenders[1]));
    for (std::size_t i = kCopies; i < firstPeer; ++i) result.nanoseconds[i - kCopies] = nanoseconds(contenders[i]);
    for (std::size_t i = firstPeer; i < contenders.size(); ++i) {
        PeerResult& peer = result.peers[contenders[i].name];
        peer.nanoseconds = nanoseconds(contenders[i]);
    }
    judge(images, contenders, firstPeer, result);
    return result;
}

// A function that works in place gets its own result again and again. Gamma makes everything but white denormal after a
// while, which processors take ages for.
constexpr int kMostInPlace = 40;

std::vector<double> callTimes(const Arena& arena, const catalog::Export& function, PxlSize size,
                              const Dithering& dithering, double seconds) {
    const Images images(arena, function, size, dithering);
    catalog::Values values(function, argumentsFor(images));
    std::vector<Contender> contenders;
    for (const auto& [target, name] : kTargets) {
        if (!processorRuns(target)) continue;
        contenders.push_back(
            {name, [&, target = target] { runOurs(function, values, target); }, [&] { images.restore(); }});
        if (function.inPlace) contenders.back().maximumRuns = kMostInPlace;
    }
    measure(contenders, seconds);
    std::vector<double> nanoseconds;
    for (const Contender& contender : contenders) nanoseconds.push_back(contender.seconds * 1e9);
    return nanoseconds;
}

}  // namespace pxl::bench
