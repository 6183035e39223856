#include "colours.h"

#include <algorithm>
#include <array>
#include <utility>

#include "exports.h"

namespace pxl::tool {

namespace {

// For RGB, BGR, RGB and alpha, BGR and alpha. Without "pxli" and "_8u_"; an empty name: the library has no such export.
using Names = std::array<std::string_view, 4>;
struct Route {
    std::string_view family, matrix;
    Names encoders, decoders;
};
constexpr Route kRoutes[] = {
    {"4:4:4 planes",
     "601",
     {"RGBToYCbCr C3P3R", "", "RGBToYCbCr AC4P3R", ""},
     {"YCbCrToRGB P3C3R", "YCbCrToBGR P3C3R", "YCbCrToRGB P3C4R", "YCbCrToBGR P3C4R"}},
    {"4:4:4 planes", "709", {}, {"", "YCbCrToBGR_709CSC P3C3R", "", "YCbCrToBGR_709CSC P3C4R"}},
    {"4:2:2 planes",
     "601",
     {"RGBToYCbCr422 C3P3R", "BGRToYCbCr422 C3P3R", "", "BGRToYCbCr422 AC4P3R"},
     {"YCbCr422ToRGB P3C3R", "YCbCr422ToBGR P3C3R", "", ""}},
    {"4:2:2 Y,Cb,Y,Cr",
     "601",
     {"RGBToYCbCr422 C3C2R", "BGRToYCbCr422 C3C2R", "", "BGRToYCbCr422 AC4C2R"},
     {"YCbCr422ToRGB C2C3R", "YCbCr422ToBGR C2C3R", "YCbCr422ToRGB C2C4R", "YCbCr422ToBGR C2C4R"}},
    {"4:2:2 Y,Cr,Y,Cb",
     "601",
     {"RGBToYCrCb422 C3C2R", "", "", ""},
     {"YCrCb422ToRGB C2C3R", "YCrCb422ToBGR C2C3R", "YCrCb422ToRGB C2C4R", "YCrCb422ToBGR C2C4R"}},
    {"4:2:2 Cb,Y,Cr,Y",
     "601",
     {"", "", "", "BGRToCbYCr422 AC4C2R"},
     {"CbYCr422ToRGB C2C3R", "", "", "CbYCr422ToBGR C2C4R"}},
    {"4:2:2 Cb,Y,Cr,Y",
     "709hdtv",
     {"", "BGRToCbYCr422_709HDTV C3C2R", "", "BGRToCbYCr422_709HDTV AC4C2R"},
     {"", "CbYCr422ToBGR_709HDTV C2C3R", "", "CbYCr422ToBGR_709HDTV C2C4R"}},
    {"4:2:0 planes",
     "601",
     {"RGBToYCbCr420 C3P3R", "BGRToYCbCr420 C3P3R", "RGBToYCrCb420 AC4P3R", "BGRToYCbCr420 AC4P3R"},
     {"YCbCr420ToRGB P3C3R", "YCbCr420ToBGR P3C3R", "YCrCb420ToRGB P3C4R", "YCbCr420ToBGR P3C4R"}},
    {"4:2:0 planes",
     "709",
     {"", "BGRToYCbCr420_709CSC C3P3R", "", "BGRToYCbCr420_709CSC AC4P3R"},
     {"", "YCbCr420ToBGR_709CSC P3C3R", "", ""}},
    {"4:2:0 planes",
     "709hdtv",
     {"", "", "", "BGRToYCbCr420_709HDTV AC4P3R"},
     {"", "", "", "YCbCr420ToBGR_709HDTV P3C4R"}},
    {"4:2:0 Cb,Cr pairs",
     "601",
     {"RGBToYCbCr420 C3P2R", "BGRToYCbCr420 C3P2R", "RGBToYCbCr420 C4P2R", "BGRToYCbCr420 AC4P2R"},
     {"YCbCr420ToRGB P2C3R", "YCbCr420ToBGR P2C3R", "YCbCr420ToRGB P2C4R", "YCbCr420ToBGR P2C4R"}},
    {"4:2:0 Cb,Cr pairs", "709", {"", "BGRToYCbCr420_709CSC C3P2R", "", "BGRToYCbCr420_709CSC AC4P2R"}, {}},
    {"4:2:0 Cr,Cb pairs",
     "601",
     {},
     {"YCrCb420ToRGB P2C3R", "YCrCb420ToBGR P2C3R", "YCrCb420ToRGB P2C4R", "YCrCb420ToBGR P2C4R"}},
    {"4:1:1 planes",
     "601",
     {"", "BGRToYCbCr411 C3P3R", "", "BGRToYCbCr411 AC4P3R"},
     {"", "YCbCr411ToBGR P3C3R", "", "YCbCr411ToBGR P3C4R"}},
};

constexpr std::pair<std::string_view, std::string_view> kV210Routes[] = {
    {"gray16", "pxliYUV422v210ToGray_709HDTV_32u16u_C3C1"},
    {"rgb565", "pxliYUV422v210ToBGR_709HDTV_32u16u_C3"},
    {"bgr565", "pxliYUV422v210ToRGB_709HDTV_32u16u_C3"},
};

const catalog::Export* chosen(std::string_view family, std::string_view matrix, const ImageShape& picture,
                              Names Route::*direction) {
    const auto* route =
        std::ranges::find_if(kRoutes, [&](const Route& one) { return one.family == family && one.matrix == matrix; });
    if (route == std::end(kRoutes)) return nullptr;
    const unsigned bgr = picture.space == "BGR" ? 1 : 0, alpha = picture.planes[0].channels == 4 ? 2 : 0;
    // A picture with R and B exchanged, with a fourth channel more or less, or both.
    for (const unsigned difference : {0U, 1U, 2U, 3U}) {
        std::string name((route->*direction)[(bgr + alpha) ^ difference]);
        if (name.empty()) continue;
        return &exportNamed("pxli" + name.replace(name.find(' '), 1, "_8u_"));
    }
    return nullptr;
}

}  // namespace

const catalog::Export* encoder(std::string_view family, std::string_view matrix, const ImageShape& picture) {
    return chosen(family, matrix, picture, &Route::encoders);
}

const catalog::Export* decoder(std::string_view family, std::string_view matrix, const ImageShape& picture) {
    return chosen(family, matrix, picture, &Route::decoders);
}

const catalog::Export* v210Decoder(std::string_view format) {
    for (const auto& [name, function] : kV210Routes)
        if (name == format) return &exportNamed(std::string(function));
    return nullptr;
}

std::string matricesOf(std::string_view family, bool encodes) {
    std::string names;
    for (const Route& route : kRoutes)
        if (route.family == family && (encodes ? route.encoders : route.decoders) != Names{})
            names.append(names.empty() ? "" : ", ").append(route.matrix);
    return names;
}

}  // namespace pxl::tool
