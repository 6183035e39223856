// What a conversion's equation gives in real numbers, to judge how far the samples of ours and of the other libraries
// are from it.
#pragma once

#include <optional>
#include <vector>

#include "images.h"

namespace pxl::bench {

// For each destination plane one value a sample, in memory order, limited to the range of the samples; NaN stands for
// samples that are not converted. Subsampled chroma is the mean over the pixels that share it, and serves each of them
// when read. Nothing where no equation is known here.
std::optional<std::vector<std::vector<double>>> equationOf(const Images& images);

struct Distance {
    double mean = 0, maximum = 0;
};

// Of what stands in the destination from such values.
Distance distanceFrom(const std::vector<std::vector<double>>& equation, const std::vector<Plane>& destination);

}  // namespace pxl::bench
