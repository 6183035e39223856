// pxlCC for C++17: one verb for all conversions.
#ifndef PXLCC_CONVERT_HPP
#define PXLCC_CONVERT_HPP

#include <climits>
#include <limits>
#include <memory>
#include <new>

#include "choice.hpp"
#include "status.hpp"

namespace pxlcc {
namespace detail {

// An argument that becomes what the parameter asks for.
struct StepArgument {
    std::ptrdiff_t step;
    operator int() const { return static_cast<int>(step); }
    operator std::int64_t() const { return step; }
};
struct StepArrayArgument {
    int* steps;
    const std::int64_t* wideSteps;
    operator int*() const { return steps; }
    operator const std::int64_t*() const { return wideSteps; }
};
struct SizeArgument {
    PxlSize size;
    operator PxlSize() const { return size; }
    operator PxlSizeL() const { return {size.width, size.height}; }
};
struct RectangleArgument {
    PxlRect r;
    operator PxlRect() const { return r; }
    operator PxlRectL() const { return {r.x, r.y, r.width, r.height}; }
};
struct WeightsArgument {
    const float* single;
    const double* precise;
    operator const float*() const { return single; }
    operator const double*() const { return precise; }
};
struct AlphaArgument {
    bool given;
    double value;
    template <class T>
    operator T() const {
        if constexpr (std::is_floating_point_v<T>) {
            return given ? static_cast<T>(value) : T{1};
        } else {
            constexpr double least = std::numeric_limits<T>::min(), most = std::numeric_limits<T>::max();
            if (!given || value >= most) return std::numeric_limits<T>::max();
            return value > least ? static_cast<T>(value) : std::numeric_limits<T>::min();  // of NaN too
        }
    }
};
struct MemoryArgument {
    void* memory;
    template <class T>
    operator T*() const {
        return static_cast<T*>(memory);
    }
};

// The bytes that an export needs meanwhile.
inline std::size_t scratchBytesOf(const Row& row, PxlSize source, const Values& values) {
    if (!row.takes(Option::scratch)) return 0;
    if (row.takes(Option::grid)) {
        const std::int64_t width = values.regionGiven ? values.region.width : source.width;
        return width < 1 ? 0 : static_cast<std::size_t>(2 * (width + pxlAHDTemporaryMargin) * pxlAHDTemporaryRows);
    }
    int bytes = 0;
    const bool toBits = row.target.layout == Layout::bits1;
    const PxlStatus status =
        toBits && values.dither != pxlDitherStucki
            ? pxlStatusOk
            : pxliReduceBitsGetBufferSize(pxlC1, source, toBits ? 0 : values.noise, values.dither, &bytes);
    return status != pxlStatusOk || bytes < 0 ? 0 : static_cast<std::size_t>(bytes);
}

// What an export's parameters are, by the words of the table.
template <class From, class To>
class Arguments {
public:
    Arguments(const From& from, const To& to, const Values& values, const Row& row)
        : values_(values), size_(from.size()), bitOffset_(to.bitOffset()) {
        const auto inUnits = [&row](std::ptrdiff_t step, std::size_t bytes) {
            return row.has(kStepsInElements) ? step / static_cast<std::ptrdiff_t>(bytes) : step;
        };
        for (int i = 0; i < From::kPlanes; ++i) {
            sources_[i] = from.first(i);
            setStep(i, inUnits(from.step(i), sizeof(typename From::Sample)), sourceSteps_, wideSourceSteps_);
        }
        for (int i = 0; i < To::kPlanes; ++i) {
            targets_[i] = to.first(i);
            setStep(i, inUnits(to.step(i), sizeof(typename To::Sample)), targetSteps_, wideTargetSteps_);
        }
        if (!values_.regionGiven) values_.region = {0, 0, size_.width, size_.height};
        const Weights& w = values_.weights;
        const double weights[] = {w.first, w.second, w.third};
        for (int i = 0; i < 3; ++i) {
            preciseWeights_[i] = weights[i];
            weights_[i] = static_cast<float>(weights[i]);
        }
    }
    Arguments(const Arguments&) = delete;
    Arguments& operator=(const Arguments&) = delete;

    const typename From::Sample* source(int plane) const { return sources_[plane]; }
    const typename From::Sample** sources() { return sources_; }
    StepArgument sourceStep(int plane) const { return {wideSourceSteps_[plane]}; }
    StepArrayArgument sourceSteps() { return {sourceSteps_, wideSourceSteps_}; }
    typename To::Sample* target(int plane) const { return targets_[plane]; }
    typename To::Sample** targets() { return targets_; }
    StepArgument targetStep(int plane) const { return {wideTargetSteps_[plane]}; }
    StepArrayArgument targetSteps() { return {targetSteps_, wideTargetSteps_}; }
    SizeArgument size() const { return {size_}; }
    AlphaArgument alpha() const { return {values_.alphaGiven, values_.alpha}; }
    std::uint32_t part() const { return values_.part; }
    WeightsArgument weights() const {
        if (values_.weights.standard) return {nullptr, nullptr};
        return {weights_, preciseWeights_};
    }
    const float (*twist() const)[4] { return values_.twist; }
    float rangeLow() const { return values_.range.low; }
    float rangeHigh() const { return values_.range.high; }
    RectangleArgument region() const { return {values_.region}; }
    PxlBayerGrid grid() const { return values_.grid; }
    const float* gains() const { return values_.gainsGiven ? values_.gains : nullptr; }
    int noise() const { return values_.noise; }
    PxlDitherType dither() const { return values_.dither; }
    int levels() const { return values_.levels; }
    int bitOffset() const { return bitOffset_; }
    Pxl8u threshold() const { return values_.threshold; }
    MemoryArgument scratch() const { return {values_.scratch.memory}; }
    int scratchStep() const { return 2 * (values_.region.width + pxlAHDTemporaryMargin); }
    int reserved() const { return 0; }

private:
    static void setStep(int plane, std::ptrdiff_t step, int* steps, std::int64_t* wideSteps) {
        steps[plane] = static_cast<int>(step);
        wideSteps[plane] = step;
    }

    Values values_;
    PxlSize size_;
    int bitOffset_;
    const typename From::Sample* sources_[4] = {};
    typename To::Sample* targets_[4] = {};
    int sourceSteps_[4] = {}, targetSteps_[4] = {};
    std::int64_t wideSourceSteps_[4] = {}, wideTargetSteps_[4] = {};
    float weights_[3] = {};
    double preciseWeights_[3] = {};
};

template <Export kExport>
struct Caller;
#define PXLCC_UNPACKED(...) __VA_ARGS__
#define PXLCC_EXPORT(function, source, target, required, accepted, traits, bandRows, minimumHeight, arguments) \
    template <>                                                                                                \
    struct Caller<Export::function> {                                                                          \
        template <class Arguments>                                                                             \
        static PxlStatus call([[maybe_unused]] Arguments& a) {                                                 \
            return function(PXLCC_UNPACKED arguments);                                                         \
        }                                                                                                      \
    };
#include "pxlcc_table.hpp"
#undef PXLCC_EXPORT
#undef PXLCC_UNPACKED

// Steps that an export cannot be told.
template <class V>
PxlStatus checkedSteps(const V& view, const Row& row, bool oneStep) {
    for (int i = 0; i < V::kPlanes; ++i) {
        const std::ptrdiff_t step = view.step(i);
        if (oneStep && step != view.step(0)) return pxlStatusBadStep;
        if (!row.takes(Option::wide) && (step < INT_MIN || step > INT_MAX)) return pxlStatusBadStep;
        if (row.has(kStepsInElements) && step % static_cast<std::ptrdiff_t>(sizeof(typename V::Sample)) != 0)
            return pxlStatusBadStep;
    }
    return pxlStatusOk;
}

template <class From, class To>
PxlStatus checked(const From& from, const To& to, const Row& row, const Values& values) {
    const PxlSize wanted = values.regionGiven ? PxlSize{values.region.width, values.region.height} : from.size();
    if (to.width() != wanted.width || to.height() != wanted.height) return pxlStatusBadSize;
    if (const PxlStatus status = checkedSteps(from, row, row.has(kOneSourceStep))) return status;
    return checkedSteps(to, row, row.has(kOneTargetStep));
}

template <Export kExport, class From, class To>
PxlStatus called(const From& from, const To& to, Values values) {
    constexpr const Row& row = rowOf(kExport);
    if (const PxlStatus status = checked(from, to, row, values)) return status;
    std::unique_ptr<unsigned char[]> memory;
    if constexpr (row.takes(Option::scratch)) {
        const std::size_t bytes = scratchBytesOf(row, from.size(), values);
        if (values.scratchGiven && values.scratch.bytes < bytes) return pxlStatusBadArgument;
        if (!values.scratchGiven && bytes > 0) {
            memory.reset(new (std::nothrow) unsigned char[bytes]);
            values.scratch = {memory.get(), bytes};
        }
    }
    Arguments<From, To> arguments(from, to, values, row);
    return Caller<kExport>::call(arguments);
}

}  // namespace detail

// Converts `from` to `to`, which are of one size (with Region: the target is as large as that). The types of the views
// and the options choose the export; where none fits, the program does not compile and the message names the nearest.
//
// The result is the export's status, or, before it is called: pxlStatusBadSize for different sizes; pxlStatusBadStep
// where planes that share a step in the export have different ones, for a step of more than 31 bits (without `wide`),
// and for one of v210 words or 5-6-5 pixels that is no multiple of their size; pxlStatusBadArgument for a Scratch that
// is too small. Where scratch memory is needed, not given and not to be had, the result is pxlStatusNullPointer.
template <class From, class To, class... Options>
Result convert(const From& from, const To& to, const Options&... options) {
    using Chosen = detail::Chosen<From, To, false, Options...>;
    Chosen::explain();
    if constexpr (Chosen::kFound != Export::none) {
        return detail::called<Chosen::kFound>(from, to, detail::valuesOf(options...));
    } else {
        return pxlStatusBadArgument;
    }
}

// The same where the image is source and target: gamma and colour matrices.
template <class Image, class... Options>
Result convertInPlace(const Image& image, const Options&... options) {
    using Chosen = detail::Chosen<Image, Image, true, Options...>;
    Chosen::explain();
    if constexpr (Chosen::kFound != Export::none) {
        return detail::called<Chosen::kFound>(image, image, detail::valuesOf(options...));
    } else {
        return pxlStatusBadArgument;
    }
}

// Calls an export by its name, for instance one that gives the same image as another, which convert() calls.
template <Export kExport, class From, class To, class... Options>
Result call(const From& from, const To& to, const Options&... options) {
    constexpr detail::Query query = detail::queryOf<From, To, Options...>(detail::rowOf(kExport).has(detail::kInPlace));
    static_assert(detail::distance(detail::rowOf(kExport), query) == 0 ||
                      detail::distance(detail::rowOf(kExport), detail::withSteps(query)) == 0,
                  "pxlcc: this export does not take these views with these options");
    return detail::called<kExport>(from, to, detail::valuesOf(options...));
}

// How much memory convert(from, to, options ...) needs besides the images: 0 for all but dithering and the demosaicing
// by homogeneity.
template <class From, class To, class... Options>
std::size_t scratchBytes(const From& from, const To&, const Options&... options) {
    using Chosen = detail::Chosen<From, To, false, Options...>;
    Chosen::explain();
    return detail::scratchBytesOf(detail::rowOf(Chosen::kExport), from.size(), detail::valuesOf(options...));
}

}  // namespace pxlcc

#endif
