#include "names.h"

#include <cctype>
#include <utility>

namespace pxl::python {
namespace {

// Compounds whose parts are words; "To" is one too, wherever it stands between two colour spaces.
constexpr std::pair<std::string_view, std::string_view> kCompounds[] = {
    {"ColorTwist", "color_twist"}, {"GammaFwd", "gamma_forward"}, {"GammaInv", "gamma_inverse"},
    {"ReduceBits", "reduce_bits"}, {"ToneMap", "tone_map_"},      {"DemosaicAHD", "demosaic_ahd"},
    {"422Gamma", "422_gamma"},     {"422v210", "422_v210"},
};

std::string spaces(std::string text) {
    for (const auto& [compound, words] : kCompounds)
        if (const auto at = text.find(compound); at != std::string::npos) text.replace(at, compound.size(), words);
    if (const auto at = text.find("To", 1); at != std::string::npos && text[at - 1] != '_') text.replace(at, 2, "_to_");
    return text;
}

}  // namespace

std::string readableName(std::string_view exportName) {
    std::string_view rest = exportName.substr(std::string_view("pxli").size());
    std::string ending;
    if (rest.ends_with("_L")) {
        ending = "_l";
        rest.remove_suffix(2);
    }
    const auto last = rest.rfind('_');
    std::string layouts(rest.substr(last + 1));
    rest.remove_suffix(rest.size() - last);
    // v210 images have steps too, though their names do not end in R.
    const bool hasSteps = layouts.back() == 'R' || rest.find("v210") != std::string_view::npos;
    if (layouts.back() == 'R') layouts.pop_back();
    if (layouts.back() == 'I') {
        layouts.pop_back();
        ending = "_inplace" + ending;
    } else if (layouts.front() == 'I') {
        layouts.erase(0, 1);
        ending = "_inplace" + ending;
    } else if (!hasSteps) {
        ending = "_dense" + ending;
    }
    const auto first = rest.find('_');
    std::string name = spaces(std::string(rest.substr(0, first)));
    if (first != std::string_view::npos) name += rest.substr(first);
    name += "_" + layouts + ending;
    for (char& c : name) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return name;
}

}  // namespace pxl::python
