#include "equation.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <string>

#include "cie.h"
#include "hexagonal.h"

namespace pxl::bench {
namespace {

using catalog::Export;
using catalog::ImageShape;
using Colour = std::array<double, 4>;

// ---- pictures with every channel at every pixel

struct Picture {
    PxlSize size;
    std::vector<Colour> pixels;
    Colour& at(int x, int y) {
        return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(size.width) + static_cast<std::size_t>(x)];
    }
};

bool isPacked422(const ImageShape& shape) { return shape.layout == "C2"; }

// Where the channels of a space stand in a colour that is R, G, B or luma, Cb, Cr.
std::array<int, 4> channelsOf(const std::string& space) {
    if (space == "BGR") return {2, 1, 0, 3};
    if (space == "YCrCb") return {0, 2, 1, 3};
    return {0, 1, 2, 3};
}

// Calls visit(plane, sample, x, y, columns, rows, channel) for each sample of an image: the block of pixels it serves,
// and its channel in a colour.
template <class Visit>
void eachSample(const ImageShape& shape, PxlSize size, Visit visit) {
    const std::array<int, 4> order = channelsOf(shape.space);
    for (std::size_t p = 0; p < shape.planes.size(); ++p) {
        const catalog::PlaneShape& plane = shape.planes[p];
        const int columns = 1 << plane.widthShift, rows = 1 << plane.heightShift;
        std::size_t sample = 0;
        for (int y = 0; y + rows <= size.height; y += rows) {
            for (int x = 0; x + columns <= size.width; x += columns) {
                for (int c = 0; c < plane.channels; ++c, ++sample) {
                    if (isPacked422(shape)) {
                        const bool isLuma = (c == 0) == (shape.space != "CbYCr");
                        const int chroma = x % 2 == 0 ? 1 : 2;
                        const int pair = x & ~1;
                        visit(p, sample, isLuma ? x : pair, y, isLuma ? 1 : 2, 1,
                              isLuma ? 0 : order[static_cast<std::size_t>(chroma)]);
                    } else {
                        const std::size_t channel =
                            p == 0 ? static_cast<std::size_t>(c) : static_cast<std::size_t>(c) + p;
                        visit(p, sample, x, y, columns, rows, order[channel]);
                    }
                }
            }
        }
    }
}

Picture read(const std::vector<Plane>& planes, const ImageShape& shape, PxlSize size) {
    Picture picture{size,
                    std::vector<Colour>(static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height))};
    eachSample(shape, size, [&](std::size_t p, std::size_t sample, int x, int y, int columns, int rows, int channel) {
        const Plane& plane = planes[p];
        const double value = readSample(plane.first + sample * catalog::bytesOf(plane.element), plane.element);
        for (int j = 0; j < rows; ++j) {
            for (int i = 0; i < columns; ++i) picture.at(x + i, y + j)[static_cast<std::size_t>(channel)] = value;
        }
    });
    return picture;
}

// ---- equations, each on one colour

using Equation = std::function<Colour(const Colour&)>;

// Luma and colour differences after the luma weights of red and blue.
struct Matrix {
    double red, blue;            // weights
    double black, luma;          // code of black, codes from black to white
    double chroma;               // codes from the least to the greatest colour difference
    double limitLow, limitHigh;  // of every code
};
constexpr Matrix kBt601 = {0.299, 0.114, 16, 219, 224, 0, 255};
constexpr Matrix kBt709 = {0.2126, 0.0722, 16, 219, 224, 0, 255};
// Both sides in studio range: luma at unit gain.
constexpr Matrix kHdtv = {0.2126, 0.0722, 0, 255, 224 * 255.0 / 219, 1, 254};

Colour encoded(const Matrix& m, const Colour& c) {
    const double luma = m.red * c[0] + (1 - m.red - m.blue) * c[1] + m.blue * c[2];
    const double gain = m.chroma / 255 / 2;
    return {m.black + m.luma / 255 * luma, 128 + gain * (c[2] - luma) / (1 - m.blue),
            128 + gain * (c[0] - luma) / (1 - m.red), c[3]};
}

Colour decoded(const Matrix& m, const Colour& c) {
    const double luma = (c[0] - m.black) * 255 / m.luma, gain = 2 * 255 / m.chroma;
    const double red = luma + gain * (1 - m.red) * (c[2] - 128), blue = luma + gain * (1 - m.blue) * (c[1] - 128);
    return {red, (luma - m.red * red - m.blue * blue) / (1 - m.red - m.blue), blue, c[3]};
}

Matrix matrixOf(std::string_view name) {
    if (name.find("_709HDTV") != name.npos) return kHdtv;
    return name.find("_709CSC") != name.npos ? kBt709 : kBt601;
}

bool isVideo(const std::string& space) { return space == "YCbCr" || space == "YCrCb" || space == "CbYCr"; }
bool isRgb(const std::string& space) { return space == "RGB" || space == "BGR"; }

// The colour differences of analog video, with gains of their own.
Colour toAnalog(const Colour& c) {
    const double luma = 0.299 * c[0] + 0.587 * c[1] + 0.114 * c[2];
    return {luma, 128 + 0.492 * (c[2] - luma), std::clamp(128 + 0.877 * (c[0] - luma), 0.0, 255.0), c[3]};
}
Colour fromAnalog(const Colour& c) {
    const double red = c[0] + (c[2] - 128) / 0.877, blue = c[0] + (c[1] - 128) / 0.492;
    return {red, (c[0] - 0.299 * red - 0.114 * blue) / 0.587, blue, c[3]};
}

// PhotoYCC between channels of 0..1. Its decoder is no exact inverse: white of the encoder leaves room for more.
Colour toPhoto(const Colour& c) {
    const double luma = 0.299 * c[0] + 0.587 * c[1] + 0.114 * c[2];
    return {luma / 1.402, (111.4 * (c[2] - luma) + 156) / 255, (135.64 * (c[0] - luma) + 137) / 255, c[3]};
}
Colour fromPhoto(const Colour& c) {
    const double luma = 1.3584 * c[0], blue = 2.2179 * (c[1] - 156.0 / 255), red = 1.8215 * (c[2] - 137.0 / 255);
    Colour out = {luma + red, luma - 0.194 * blue - 0.509 * red, luma + blue, c[3]};
    for (std::size_t i = 0; i < 3; ++i) out[i] = std::clamp(out[i], 0.0, 1.0);
    return out;
}

Colour twisted(const Colour& c) {
    Colour out = c;
    for (std::size_t i = 0; i < 3; ++i) {
        out[i] = static_cast<double>(kTwist[i][3]);
        for (std::size_t j = 0; j < 3; ++j) out[i] += static_cast<double>(kTwist[i][j]) * c[j];
    }
    return out;
}

double gammaForward(double x) { return x < 0.018 ? 4.5 * x : 1.099 * std::pow(x, 0.45) - 0.099; }
double gammaInverse(double x) { return x < 0.081 ? x / 4.5 : std::pow((x + 0.099) / 1.099, 1 / 0.45); }

bool isFloat(catalog::Element element) { return element == catalog::Element::f32 || element == catalog::Element::f64; }

// ---- the hexagonal colour models; a hue is a circle, of which no plain distance tells anything: NaN

constexpr double kNoDistance = std::numeric_limits<double>::quiet_NaN();

Colour toHexagonal(const Colour& c, std::string_view space) {
    const auto out = catalog::hexagonalOfRgb(space, {c[0], c[1], c[2]});
    return {kNoDistance, out[1], out[2], 0};
}

Colour fromHexagonal(const Colour& c, std::string_view space) {
    const auto rgb = catalog::rgbOfHexagonal(space, {c[0], c[1], c[2]});
    return {rgb[0], rgb[1], rgb[2], 0};
}

// An equation between channels of 0..1 for samples.
template <class Map>
Equation inUnits(catalog::Element element, const Map& map) {
    const double full = element == catalog::Element::s16 ? 65535 : fullScale(element);
    const double black = fullScale(element) - full;
    return [=](const Colour& c) {
        Colour unit = c;
        for (double& value : unit) value = (value - black) / full;
        unit = map(unit);
        for (double& value : unit) value = value * full + black;
        return unit;
    };
}

Equation equationFor(const Export& function) {
    const std::string &from = function.source.space, &to = function.destination.space;
    const std::string_view name = function.name;
    const auto has = [name](const char* part) { return name.find(part) != name.npos; };
    const Matrix matrix = matrixOf(name);
    if (has("Gamma_") || has("RGBToCbYCr422_") || has("_Filter") || has("_Interlace")) return {};
    if (isRgb(from) && isVideo(to)) {
        return [matrix](const Colour& c) {
            Colour out = encoded(matrix, c);
            for (double& code : out) code = std::clamp(code, matrix.limitLow, matrix.limitHigh);
            return out;
        };
    }
    if (isVideo(from) && isRgb(to)) return [matrix](const Colour& c) { return decoded(matrix, c); };
    if (to == "YUV") return toAnalog;
    if (from == "YUV") return fromAnalog;
    if (to == "YCC") return inUnits(function.destination.planes[0].element, toPhoto);
    if (from == "YCC") return inUnits(function.destination.planes[0].element, fromPhoto);
    if (to == "Gray" && isVideo(from)) return [](const Colour& c) { return c; };
    if (to == "Gray") {
        return [](const Colour& c) { return Colour{0.299 * c[0] + 0.587 * c[1] + 0.114 * c[2], 0, 0, 0}; };
    }
    if (from == "Gray") return [](const Colour& c) { return Colour{c[0], c[0], c[0], 0}; };
    if (has("ColorTwist")) {
        if (function.destination.layout == "C4") {
            return [](const Colour& c) {
                Colour out = {};
                for (std::size_t i = 0; i < 4; ++i) {
                    for (std::size_t j = 0; j < 4; ++j) out[i] += static_cast<double>(kTwist[i][j]) * c[j];
                }
                return out;
            };
        }
        return twisted;
    }
    const auto element = function.destination.planes[0].element;
    if (catalog::isHexagonal(to)) return inUnits(element, [to](const Colour& c) { return toHexagonal(c, to); });
    if (catalog::isHexagonal(from)) return inUnits(element, [from](const Colour& c) { return fromHexagonal(c, from); });
    if (catalog::isCie(to) || catalog::isCie(from)) {
        const auto in = function.source.planes[0].element, out = function.destination.planes[0].element;
        return [from, to, in, out](const Colour& c) {
            const catalog::Colour3 value = catalog::valuesOf(from, in, {c[0], c[1], c[2]});
            catalog::Colour3 r = catalog::isCie(to) ? catalog::cieOfRgb(to, value) : catalog::rgbOfCie(from, value);
            if (isFloat(out) && (to == "XYZ" || from == "XYZ" || from == "LUV")) {
                for (double& channel : r) channel = std::clamp(channel, 0.0, 1.0);
            }
            const catalog::Colour3 codes = catalog::codesOf(to, out, r);
            return Colour{codes[0], codes[1], codes[2], 0};
        };
    }
    if (has("GammaFwd") || has("GammaInv")) {
        const double scale = fullScale(function.destination.planes[0].element);
        return [scale, forward = has("GammaFwd")](const Colour& c) {
            Colour out = c;
            for (double& value : out)
                value = scale * (forward ? gammaForward(value / scale) : gammaInverse(value / scale));
            return out;
        };
    }
    return {};
}

double limited(double value, catalog::Element element) {
    if (isFloat(element)) return value;
    const double top = fullScale(element), span = catalog::bytesOf(element) == 1 ? 255 : 65535;
    return std::clamp(value, top - span, top);
}

}  // namespace

std::optional<std::vector<std::vector<double>>> equationOf(const Images& images) {
    const Export& function = images.function;
    const Equation equation = equationFor(function);
    if (!equation) return std::nullopt;
    Picture picture = read(images.source, function.source, images.size);
    for (Colour& colour : picture.pixels) colour = equation(colour);
    std::vector<std::vector<double>> values;
    for (const Plane& plane : images.destination) {
        values.emplace_back(static_cast<std::size_t>(plane.bytes) / catalog::bytesOf(plane.element));
    }
    const ImageShape& shape = function.destination;
    eachSample(shape, images.size,
               [&](std::size_t p, std::size_t sample, int x, int y, int columns, int rows, int channel) {
                   double sum = 0;
                   for (int j = 0; j < rows; ++j) {
                       for (int i = 0; i < columns; ++i)
                           sum += picture.at(x + i, y + j)[static_cast<std::size_t>(channel)];
                   }
                   const bool converted = channel < 3 || (shape.layout == "C4" && shape.space == "Color");
                   values[p][sample] = converted ? limited(sum / (columns * rows), images.destination[p].element)
                                                 : std::numeric_limits<double>::quiet_NaN();
               });
    return values;
}

Distance distanceFrom(const std::vector<std::vector<double>>& equation, const std::vector<Plane>& destination) {
    Distance distance;
    double sum = 0, count = 0;
    for (std::size_t p = 0; p < destination.size(); ++p) {
        const Plane& plane = destination[p];
        for (std::size_t i = 0; i < equation[p].size(); ++i) {
            if (std::isnan(equation[p][i])) continue;
            const double value = readSample(plane.first + i * catalog::bytesOf(plane.element), plane.element);
            const double off = std::fabs(value - equation[p][i]);
            sum += off;
            count += 1;
            distance.maximum = std::max(distance.maximum, off);
        }
    }
    distance.mean = count > 0 ? sum / count : 0;
    return distance;
}

}  // namespace pxl::bench
