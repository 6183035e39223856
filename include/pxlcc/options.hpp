// pxlCC for C++17: what a conversion may be told besides its two images. Options are written in any order behind them;
// one that the conversion does not know, or one that it needs and does not get, is an error of the compiler's.
#ifndef PXLCC_OPTIONS_HPP
#define PXLCC_OPTIONS_HPP

#include <cstddef>
#include <cstdint>

#include "reduce.h"
#include "types.h"

namespace pxlcc {

enum class Option {
    alpha,
    weights,
    twist,
    twist4,
    range,
    grid,
    region,
    gains,
    part,
    noise,
    dither,
    levels,
    threshold,
    scratch,
    bt601,
    bt709,
    bt709Hdtv,
    filtered,
    fields,
    averaged,
    reversible,
    bilinear,
    vng,
    ahd,
    gammaForward,
    gammaInverse,
    byMaximum,
    byMean,
    keepAlpha,
    wide
};

// ---- Which way of several. An option that stands in no export's name or arguments need not be given.

template <Option kOption>
struct Tag {};

// The matrix of YCbCr. Without an option it is that of BT.601.
inline constexpr Tag<Option::bt601> bt601{};
inline constexpr Tag<Option::bt709> bt709{};
inline constexpr Tag<Option::bt709Hdtv> bt709Hdtv{};  // full-range luma (encoders), luma at unit gain (decoders)

inline constexpr Tag<Option::filtered> filtered{};          // chroma interpolated between samples, not repeated
inline constexpr Tag<Option::fields> fields{};              // of an interlaced picture: within each field
inline constexpr Tag<Option::averaged> averaged{};          // 4:1:1 and planar 4:2:0: means of chroma, not copies
inline constexpr Tag<Option::reversible> reversible{};      // YCoCg-R
inline constexpr Tag<Option::bilinear> bilinear{};          // demosaicing; what it is without an option
inline constexpr Tag<Option::vng> vng{};                    // ... by a variable number of gradients
inline constexpr Tag<Option::ahd> ahd{};                    // ... by homogeneity
inline constexpr Tag<Option::gammaForward> gammaForward{};  // linear light to the signal of BT.709
inline constexpr Tag<Option::gammaInverse> gammaInverse{};  // ... and back
inline constexpr Tag<Option::byMaximum> byMaximum{};        // tone mapping: the largest sample becomes 255
inline constexpr Tag<Option::byMean> byMean{};              // ... twice the mean does
inline constexpr Tag<Option::keepAlpha> keepAlpha{};        // fewer levels: of three channels of four
inline constexpr Tag<Option::wide> wide{};                  // steps of more than 31 bits

// ---- Values

// What the fourth channel becomes, in code values (0..1 for floats), limited to what a sample holds. Without it: the
// largest code, 1 for floats.
struct Alpha {
    double value;
};

// Of the three channels of a pixel in storage order, for a gray image. None: those of BT.601 for R, G, B.
struct Weights {
    double first, second, third;
    bool standard = false;
    constexpr Weights() : first(0.299f), second(0.587f), third(0.114f), standard(true) {}
    constexpr Weights(double w0, double w1, double w2) : first(w0), second(w1), third(w2) {}
};
inline constexpr Weights bgrWeights{0.114, 0.587, 0.299};

// A colour matrix: row i makes channel i of the result, the fourth column is an offset. Not copied.
struct Twist {
    const float (*matrix)[4];
    explicit constexpr Twist(const float (&rows)[3][4]) : matrix(rows) {}
};
// Four channels in, four out.
struct Twist4 {
    const float (*matrix)[4];
    explicit constexpr Twist4(const float (&rows)[4][4]) : matrix(rows) {}
};

// Of the gamma of floats: which values are black and white. Without it: 0 and 1.
struct Range {
    float low, high;
};

// Demosaicing: the part of the raw image that is converted, as large as the target; its neighbours are read from the
// image around it. Without it: the whole image.
struct Region {
    PxlRect rectangle;
};

// Demosaicing by gradients: factors of B, G and R.
struct Gains {
    float blue, green, red;
};

// Filtered chroma: which part of a larger picture the images are (see pxlcc/repack.h).
struct Part {
    std::uint32_t code;
};
inline constexpr Part top{1}, middle{4}, bottom{16}, whole{21};

// Fewer levels. A PxlDitherType is an option by itself, as is a PxlBayerGrid.
struct Levels {
    int count;  // 2..256
};
struct Noise {
    int percent;  // 0..100
};
struct Threshold {
    std::uint8_t value;  // samples above it become 1
};

// Memory for what the conversion needs meanwhile, as much as scratchBytes() says. Without it, the few conversions that
// need any allocate it and give it back.
struct Scratch {
    void* memory;
    std::size_t bytes;
};

namespace detail {

using Mask = std::uint64_t;
constexpr Mask maskOf(Option option) { return Mask{1} << static_cast<int>(option); }

// Which option a type is.
template <class T>
struct OptionOf {
    static constexpr bool kIs = false;
    static constexpr Option value = Option::alpha;
};
template <Option kOption>
struct IsOption {
    static constexpr bool kIs = true;
    static constexpr Option value = kOption;
};
template <Option kOption>
struct OptionOf<Tag<kOption>> : IsOption<kOption> {};
template <>
struct OptionOf<Alpha> : IsOption<Option::alpha> {};
template <>
struct OptionOf<Weights> : IsOption<Option::weights> {};
template <>
struct OptionOf<Twist> : IsOption<Option::twist> {};
template <>
struct OptionOf<Twist4> : IsOption<Option::twist4> {};
template <>
struct OptionOf<Range> : IsOption<Option::range> {};
template <>
struct OptionOf<PxlBayerGrid> : IsOption<Option::grid> {};
template <>
struct OptionOf<Region> : IsOption<Option::region> {};
template <>
struct OptionOf<Gains> : IsOption<Option::gains> {};
template <>
struct OptionOf<Part> : IsOption<Option::part> {};
template <>
struct OptionOf<Noise> : IsOption<Option::noise> {};
template <>
struct OptionOf<PxlDitherType> : IsOption<Option::dither> {};
template <>
struct OptionOf<Levels> : IsOption<Option::levels> {};
template <>
struct OptionOf<Threshold> : IsOption<Option::threshold> {};
template <>
struct OptionOf<Scratch> : IsOption<Option::scratch> {};

template <class... Options>
constexpr Mask maskOfAll() {
    return (Mask{0} | ... | maskOf(OptionOf<Options>::value));
}

// The values of all options, with what stands for those that are not given.
struct Values {
    bool alphaGiven = false, regionGiven = false, scratchGiven = false;
    double alpha = 0;
    Weights weights;
    const float (*twist)[4] = nullptr;
    Range range = {0, 1};
    PxlBayerGrid grid = pxlBayRGGB;
    PxlRect region = {0, 0, 0, 0};
    bool gainsGiven = false;
    float gains[3] = {1, 1, 1};
    std::uint32_t part = whole.code;
    int noise = 0;
    PxlDitherType dither = pxlDitherNone;
    int levels = 0;
    std::uint8_t threshold = 0;
    Scratch scratch = {nullptr, 0};

    template <Option kOption>
    void set(Tag<kOption>) {}
    void set(Alpha option) { alpha = option.value, alphaGiven = true; }
    void set(const Weights& option) { weights = option; }
    void set(Twist option) { twist = option.matrix; }
    void set(Twist4 option) { twist = option.matrix; }
    void set(Range option) { range = option; }
    void set(PxlBayerGrid option) { grid = option; }
    void set(const Region& option) { region = option.rectangle, regionGiven = true; }
    void set(Gains option) {
        gains[0] = option.blue, gains[1] = option.green, gains[2] = option.red;
        gainsGiven = true;
    }
    void set(Part option) { part = option.code; }
    void set(Noise option) { noise = option.percent; }
    void set(PxlDitherType option) { dither = option; }
    void set(Levels option) { levels = option.count; }
    void set(Threshold option) { threshold = option.value; }
    void set(Scratch option) { scratch = option, scratchGiven = true; }
};

template <class... Options>
Values valuesOf(const Options&... options) {
    Values values;
    (values.set(options), ...);
    return values;
}

}  // namespace detail
}  // namespace pxlcc

#endif
