// What other installed libraries offer for the same conversion. Each is found at build time and may be missing.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>

#include "images.h"

namespace pxl::bench {

struct Peer {
    std::string call;           // the function as its users know it; with a note where it does not do quite the same
    std::function<bool()> run;  // on the given images; false if the library refuses
};

struct PeerLibrary {
    std::string name;
    std::string version;
    std::optional<Peer> (*find)(const Images& images);  // the peer of images.function, if there is one
};

PeerLibrary libyuvLibrary();
PeerLibrary opencvLibrary();
PeerLibrary swscaleLibrary();
PeerLibrary plainLoops();  // loops over the C library's functions and over tables; always there

std::span<const PeerLibrary> peerLibraries();

}  // namespace pxl::bench
