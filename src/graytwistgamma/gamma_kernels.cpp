#include "graytwistgamma/gamma_kernels.h"

#include "frame/gamma_tables.h"
#include "graytwistgamma/gamma_forms.h"
#include "simd/interleaved.h"
#include "simd/lookup.h"

PXL_BEGIN_TARGET
namespace {

// Whether groups of samples would be read after some of them have been written.
template <class T>
PXL_INLINE bool writesAhead(const T* src, const T* dst, Index count) {
    const auto ahead = reinterpret_cast<uintptr_t>(dst) - reinterpret_cast<uintptr_t>(src);
    return ahead - 1 < sizeof(T) * static_cast<size_t>(count) - 1;
}

// The order of overlapping rows; the fourth samples of pixels are left out.
template <class T, class Convert>
PXL_INLINE void sampleBySample(const T* src, T* dst, Index count, const Convert& convert) {
    for (Index i = 0; i < count; ++i) store(Part{1}, dst + i, convert(load(Part{1}, src + i)));
}
template <class T, class Convert>
PXL_INLINE void colourByColour(const T* src, T* dst, Index pixels, const Convert& convert) {
    for (Index i = 0; i < 4 * pixels; i += 4) sampleBySample(src + i, dst + i, 3, convert);
}

// ---- integers

void byteRun(const Pxl8u* src, Pxl8u* dst, const Pxl8u* table, Index count) {
    const ByteTable bytes(table);
    const auto convert = [&](auto x) { return bytes[x]; };
    if (writesAhead(src, dst, count)) return sampleBySample(src, dst, count, convert);
    eachGroupAndPart<16>(count, [&](auto how, Index i) { store(how, dst + i, convert(load(how, src + i))); });
}

void bytePixels(const Pxl8u* src, Pxl8u* dst, const Pxl8u* table, Index count) {
    const ByteTable bytes(table);
    const auto convert = [&](auto x) { return bytes[x]; };
    if (writesAhead(src, dst, 4 * count)) return colourByColour(src, dst, count, convert);
    eachGroupAndPart<16>(4 * count,
                         [&](auto how, Index i) { storeKeep4th(how, dst + i, convert(load(how, src + i))); });
}

// Plain loads: gathering instructions are faster on noise only, where entries are seldom in the first-level cache.
void wordRun(const Pxl16u* src, Pxl16u* dst, const Pxl16u* table, Index count) {
#pragma GCC unroll 8  // in order, so that overlapping rows come out right
    for (Index i = 0; i < count; ++i) dst[i] = table[src[i]];
}

void wordPixels(const Pxl16u* src, Pxl16u* dst, const Pxl16u* table, Index count) {
    for (Index i = 0; i < 4 * count; i += 4) {
        for (int c = 0; c < 3; ++c) dst[i + c] = table[src[i + c]];
    }
}

// ---- floats

// The curve on any n. The eight octaves 2^-7..2 are at hand in registers; what lies above takes a look-up in memory and
// gets the same arithmetic.
template <class Curve>
class Gamma {
public:
    PXL_INLINE explicit Gamma(const GammaOctaves& all)
        : all_(all),
          centre_(all.centre + kFirst),
          scale_(all.scale + kFirst),
          gain_(all.gain + kFirst),
          value_(all.value + kFirst) {}

    template <int N>
    PXL_INLINE F32<N> operator()(F32<N> n) const {
        const auto exponent = shiftRight<23>(as<I32<N>>(n));
        if (allSet(greater(as<I32<N>>(fill<F32<N>>(2.0f)), as<I32<N>>(n)))) [[likely]] {
            return gamma<Curve>(n, Octaves<N>{centre_[exponent], scale_[exponent], gain_[exponent], value_[exponent]});
        }
        const auto i = bitAnd(exponent, fill<I32<N>>(255));
        const auto result = gamma<Curve>(
            n, Octaves<N>{gather(all_.centre, i), gather(all_.scale, i), gather(all_.gain, i), gather(all_.value, i)});
        return as<F32<N>>(choose(equal(as<I32<N>>(n), fill<I32<N>>(kInfinity)), as<I32<N>>(result), as<I32<N>>(n)));
    }

private:
    static constexpr int kFirst = 120;  // biased exponent of 2^-7; a multiple of 8
    static constexpr int kInfinity = 0x7F800000;
    const GammaOctaves& all_;
    EightFloats centre_, scale_, gain_, value_;
};

template <class Curve, const GammaOctaves& kOctaves>
class Floats {
public:
    static void run(const Pxl32f* src, Pxl32f* dst, GammaRange range, Index count) {
        const Floats f(range);
        if (writesAhead(src, dst, count)) return sampleBySample(src, dst, count, f);
        f.inBlocks(src, count, [&](auto how, Index i, auto x) { store(how, dst + i, x); });
    }
    static void pixels(const Pxl32f* src, Pxl32f* dst, GammaRange range, Index count) {
        const Floats f(range);
        if (writesAhead(src, dst, 4 * count)) return colourByColour(src, dst, count, f);
        f.inBlocks(src, 4 * count, [&](auto how, Index i, auto x) { storeKeep4th(how, dst + i, x); });
    }

    template <int N>
    PXL_INLINE F32<N> operator()(F32<N> x) const {
        return convertNormalised(normalise(x));
    }

private:
    PXL_INLINE explicit Floats(GammaRange range) : gamma_(kOctaves), range_(range) {}

    template <int N>
    PXL_INLINE F32<N> normalise(F32<N> x) const {
        return div(sub(x, fill<F32<N>>(range_.low)), fill<F32<N>>(range_.span));
    }
    template <int N>
    PXL_INLINE F32<N> convertNormalised(F32<N> n) const {
        return add(mul(gamma_(n), fill<F32<N>>(range_.span)), fill<F32<N>>(range_.low));
    }
    // In two passes over a block of samples: the processor gets through two short chains of dependent operations in
    // less time than through a long one. put(how, i, result) stores the samples from i on.
    template <class Put>
    PXL_INLINE void inBlocks(const Pxl32f* src, Index count, const Put& put) const {
        constexpr Index kBlock = 384;
        alignas(64) Pxl32f block[kBlock];
        for (Index start = 0; start < count; start += kBlock) {
            const Index size = count - start < kBlock ? count - start : kBlock;
            eachGroupAndPart<4>(
                size, [&](auto how, Index i) { store(how, block + i, normalise(load(how, src + start + i))); });
            eachGroupAndPart<4>(
                size, [&](auto how, Index i) { put(how, start + i, convertNormalised(load(how, block + i))); });
        }
    }

    Gamma<Curve> gamma_;
    GammaRange range_;
};

using ForwardFloats = Floats<GammaForward, kGammaForwardOctaves>;
using InverseFloats = Floats<GammaInverse, kGammaInverseOctaves>;

}  // namespace

constexpr GammaKernels kGammaKernels = {
    .bytes = {byteRun, bytePixels},
    .words = {wordRun, wordPixels},
    .forwardFloats = {ForwardFloats::run, ForwardFloats::pixels},
    .inverseFloats = {InverseFloats::run, InverseFloats::pixels},
};

PXL_END_TARGET
