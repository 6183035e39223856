#include "record.h"

#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "peers.h"

namespace pxl::bench {
namespace {

using Json = nlohmann::ordered_json;

// Four digits are more than a measurement holds.
double rounded(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.4g", value);
    return std::atof(text);
}

Json rounded(const double (&values)[std::size(kTargets)]) {
    Json list = Json::array();
    for (const double value : values) list.push_back(rounded(value));
    return list;
}

Json distanceAsJson(const std::optional<Distance>& distance) {
    if (!distance) return nullptr;
    return {{"mean", rounded(distance->mean)}, {"maximum", rounded(distance->maximum)}};
}

Json resultAsJson(const Result& result) {
    Json json = {{"function", result.function->name},
                 {"family", result.function->family},
                 {"nanoseconds", rounded(result.nanoseconds)},
                 {"copy", rounded(result.copyNanoseconds)},
                 {"distance", distanceAsJson(result.distance)}};
    Json& peers = json["peers"] = Json::array();
    for (const auto& [library, peer] : result.peers) {
        peers.push_back({{"library", library},
                         {"call", peer.call},
                         {"nanoseconds", rounded(peer.nanoseconds)},
                         {"fromOurs", rounded(peer.fromOurs)},
                         {"distance", distanceAsJson(peer.distance)},
                         {"asAccurate", isAsAccurate(peer, result)}});
    }
    return json;
}

Json settingAsJson() {
    const Setting setting = thisSetting();
    Json json = {
        {"processor", setting.processor}, {"cacheKilobytes", setting.cacheKilobytes}, {"compiler", setting.compiler}};
    for (const PeerLibrary& library : peerLibraries())
        json["libraries"].push_back({{"name", library.name}, {"version", library.version}});
    for (const NamedTarget& target : kTargets) json["targets"].push_back(target.name);
    return json;
}

}  // namespace

Setting thisSetting() {
    Setting setting = {"unknown processor", sysconf(_SC_LEVEL2_CACHE_SIZE) / 1024, ""};
    std::ifstream file("/proc/cpuinfo");
    for (std::string line; std::getline(file, line);) {
        if (!line.starts_with("model name")) continue;
        setting.processor = line.substr(line.find(':') + 2);
        break;
    }
#ifdef __clang__
    setting.compiler = __VERSION__;
#else
    setting.compiler = "GCC " __VERSION__;
#endif
    return setting;
}

void write(const Record& record, const std::string& path) {
    std::ofstream file(path);
    const char* separator = "";
    const auto line = [&](const Json& json) {  // a result a line: readable, and a change of one is a change of its line
        file << separator << json.dump();
        separator = ",\n";
    };
    file << "{\"setting\": " << settingAsJson().dump() << ",\n\"spread\": " << rounded(record.spread)
         << ",\n\"places\": [";
    for (const Place& place : record.places) {
        file << (&place == record.places.data() ? "" : ",") << "\n{\"name\": " << Json(place.name).dump()
             << ", \"title\": " << Json(place.title).dump() << ", \"results\": [\n";
        separator = "";
        for (const Result& result : place.results) line(resultAsJson(result));
        file << "]}";
    }
    file << "],\n\"tiles\": [\n";
    separator = "";
    for (const TileTime& tile : record.tiles)
        line({{"function", tile.function->name}, {"nanoseconds", rounded(tile.nanoseconds)}});
    file << "]}\n";
    if (!file.flush()) throw std::runtime_error("cannot write " + path);
}

}  // namespace pxl::bench
