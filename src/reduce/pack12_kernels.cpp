#include "reduce/pack12_kernels.h"

#include "reduce/pack12_forms.h"

PXL_BEGIN_TARGET
namespace {

constexpr int kGroup = 32;  // samples: 48 bytes of the stream

template <int N>
PXL_INLINE void packGroup(Blocks<N> all, const Pxl16u* src, Pxl8u* dst) {
    Twelves<N> pairs;
    for (int k = 0; k < 4; ++k) pairs.at[k] = pack12(load(all, src + 8 * N * k));
    storeTwelves<kPack12Order>(all, dst, pairs);
}

template <int N>
PXL_INLINE void unpackGroup(Blocks<N> all, const Pxl8u* src, Pxl16u* dst) {
    const auto pairs = loadTwelves<kUnpack12Order>(all, src);
    for (int k = 0; k < 4; ++k) store(all, dst + 8 * N * k, unpack12(pairs.at[k]));
}

// Of an unpaired last sample two bytes, the lower half of the second 0.
PXL_INLINE int packedBytes(int samples) { return (3 * samples + 1) / 2; }

void pack(const Pxl16u* src, Pxl8u* dst, Index width) {
    const Index x =
        eachGroup<kGroup>(width, [&](auto how, Index i) PXL_BODY { packGroup(how, src + i, dst + i / 2 * 3); });
    if (x == width) return;
    const auto left = static_cast<int>(width - x);
    Pxl16u samples[kGroup];
    Pxl8u bytes[kGroup / 2 * 3];
    takeFirst(samples, src + x, left);
    packGroup(Blocks<1>{}, samples, bytes);
    giveFirst(dst + x / 2 * 3, bytes, packedBytes(left));
}

void unpack(const Pxl8u* src, Pxl16u* dst, Index width) {
    const Index x =
        eachGroup<kGroup>(width, [&](auto how, Index i) PXL_BODY { unpackGroup(how, src + i / 2 * 3, dst + i); });
    if (x == width) return;
    const auto left = static_cast<int>(width - x);
    Pxl8u bytes[kGroup / 2 * 3];
    Pxl16u samples[kGroup];
    takeFirst(bytes, src + x / 2 * 3, packedBytes(left));
    unpackGroup(Blocks<1>{}, bytes, samples);
    giveFirst(dst + x, samples, left);
}

}  // namespace

constexpr Pack12Kernels kPack12Kernels = {.pack = pack, .unpack = unpack};

PXL_END_TARGET
