// What the name of an export tells: pxli<source>[To<destination>][_variant ...]_<types>_<layouts>[R][_L].
#pragma once

#include "catalog.h"

namespace pxl::catalog {

struct NameParts {
    ImageShape source, destination;  // space, sampling, layout and planes; elements as given
    bool inPlace = false;
};

NameParts parseName(std::string_view name, Element source, Element destination);

}  // namespace pxl::catalog
