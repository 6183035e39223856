// What can be done with vectors. Each operation acts inside each 128-bit block; the names say how results that do not
// fit behave: Sat saturates, Wrap keeps the low bits. One line a type; the macros spell it out for every number of
// blocks.
#pragma once

#include "simd/registers.h"

PXL_BEGIN_TARGET

// ---- constants: fill<V>(x) has x in every lane, pattern<V>(block) repeats 16 bytes

template <class V>
struct Filled;

#define PXL_FILLED_N(N, prefix, whole, A, E, C, op)                                  \
    template <>                                                                      \
    struct Filled<A<N>> {                                                            \
        PXL_INLINE static A<N> with(E x) { return {prefix##op(static_cast<C>(x))}; } \
    };
PXL_FOR_EACH_N(PXL_FILLED_N, U8, int, char, set1_epi8)
PXL_FOR_EACH_N(PXL_FILLED_N, U16, int, short, set1_epi16)
PXL_FOR_EACH_N(PXL_FILLED_N, I16, int, short, set1_epi16)
PXL_FOR_EACH_N(PXL_FILLED_N, I32, int, int, set1_epi32)
PXL_FOR_EACH_N(PXL_FILLED_N, F32, float, float, set1_ps)
PXL_FOR_EACH_N(PXL_FILLED_N, F64, double, double, set1_pd)

template <class V, class E>
PXL_INLINE V fill(E x) {
    return Filled<V>::with(x);
}

// 16-bit lanes a, b, a, b, ...
template <int N>
PXL_INLINE I16<N> fillPairs(int a, int b) {
    return {fill<I32<N>>(static_cast<int>((static_cast<unsigned>(b) << 16) | (static_cast<unsigned>(a) & 0xFFFFu))).v};
}

// Bytes a, b, a, b, ...
template <int N>
PXL_INLINE U8<N> fillBytePairs(int a, int b) {
    return {fill<I16<N>>((a & 255) | (b & 255) << 8).v};
}

struct alignas(16) Bytes16 {
    Pxl8u byte[16];
};

template <int N>
PXL_INLINE U8<N> pattern(const Bytes16& bytes) {
    const __m128i block = _mm_load_si128(reinterpret_cast<const __m128i*>(bytes.byte));
#if PXL_BLOCKS == 2
    if constexpr (N == 2) return {_mm256_broadcastsi128_si256(block)};
#elif PXL_BLOCKS == 4
    if constexpr (N == 4) return {_mm512_broadcast_i32x4(block)};
#endif
    if constexpr (N == 1) return {block};
}

// ---- the same bits as another type: as<V>(a)

#define PXL_SAME_BITS_N(N, prefix, whole, A, B) \
    PXL_INLINE B<N> sameBits(B<N>, A<N> a) { return {a.v}; }
#define PXL_CAST_BITS_N(N, prefix, whole, A)                                               \
    PXL_INLINE F32<N> sameBits(F32<N>, A<N> a) { return {prefix##cast##whole##_ps(a.v)}; } \
    PXL_INLINE A<N> sameBits(A<N>, F32<N> a) { return {prefix##castps_##whole(a.v)}; }     \
    PXL_INLINE F64<N> sameBits(F64<N>, A<N> a) { return {prefix##cast##whole##_pd(a.v)}; } \
    PXL_INLINE A<N> sameBits(A<N>, F64<N> a) { return {prefix##castpd_##whole(a.v)}; }
PXL_FOR_EACH_N(PXL_SAME_BITS_N, U8, U16)
PXL_FOR_EACH_N(PXL_SAME_BITS_N, U8, I16)
PXL_FOR_EACH_N(PXL_SAME_BITS_N, U8, I32)
PXL_FOR_EACH_N(PXL_SAME_BITS_N, U16, U8)
PXL_FOR_EACH_N(PXL_SAME_BITS_N, U16, I16)
PXL_FOR_EACH_N(PXL_SAME_BITS_N, U16, I32)
PXL_FOR_EACH_N(PXL_SAME_BITS_N, I16, U8)
PXL_FOR_EACH_N(PXL_SAME_BITS_N, I16, U16)
PXL_FOR_EACH_N(PXL_SAME_BITS_N, I16, I32)
PXL_FOR_EACH_N(PXL_SAME_BITS_N, I32, U8)
PXL_FOR_EACH_N(PXL_SAME_BITS_N, I32, U16)
PXL_FOR_EACH_N(PXL_SAME_BITS_N, I32, I16)
PXL_FOR_EACH_N(PXL_CAST_BITS_N, I32)
PXL_FOR_EACH_N(PXL_CAST_BITS_N, U8)

template <class V>
PXL_INLINE V sameBits(V, V a) {
    return a;
}

template <class V, class A>
PXL_INLINE V as(A a) {
    return sameBits(V{}, a);
}

// ---- arithmetic

#define PXL_BINARY_N(N, prefix, whole, name, T, op) \
    PXL_INLINE T<N> name(T<N> a, T<N> b) { return {prefix##op(a.v, b.v)}; }
#define PXL_BINARY(name, T, op) PXL_FOR_EACH_N(PXL_BINARY_N, name, T, op)
#define PXL_UNARY_N(N, prefix, whole, name, A, R, op) \
    PXL_INLINE R<N> name(A<N> a) { return {prefix##op(a.v)}; }
#define PXL_UNARY(name, A, R, op) PXL_FOR_EACH_N(PXL_UNARY_N, name, A, R, op)

PXL_BINARY(addWrap, U8, add_epi8)
PXL_BINARY(addWrap, U16, add_epi16)
PXL_BINARY(addWrap, I16, add_epi16)
PXL_BINARY(addWrap, I32, add_epi32)
PXL_BINARY(subWrap, U8, sub_epi8)
PXL_BINARY(subWrap, U16, sub_epi16)
PXL_BINARY(subWrap, I16, sub_epi16)
PXL_BINARY(subWrap, I32, sub_epi32)
PXL_BINARY(addSat, U8, adds_epu8)
PXL_BINARY(addSat, U16, adds_epu16)
PXL_BINARY(addSat, I16, adds_epi16)
PXL_BINARY(subSat, U8, subs_epu8)
PXL_BINARY(subSat, U16, subs_epu16)
PXL_BINARY(subSat, I16, subs_epi16)
PXL_BINARY(subSatSigned, U8, subs_epi8)  // of the bytes taken as signed
PXL_BINARY(average, U8, avg_epu8)        // (a + b + 1) >> 1
PXL_BINARY(average, U16, avg_epu16)
PXL_BINARY(mulLow, I16, mullo_epi16)
PXL_BINARY(mulLow, I32, mullo_epi32)
PXL_BINARY(mulHigh, U16, mulhi_epu16)  // (a * b) >> 16
PXL_BINARY(mulHigh, I16, mulhi_epi16)
PXL_BINARY(mulRound15, I16, mulhrs_epi16)  // (a * b + 16384) >> 15
PXL_BINARY(minimum, U8, min_epu8)
PXL_BINARY(maximum, U8, max_epu8)
PXL_BINARY(minimum, U16, min_epu16)
PXL_BINARY(maximum, U16, max_epu16)
PXL_BINARY(minimum, I16, min_epi16)
PXL_BINARY(maximum, I16, max_epi16)
PXL_BINARY(minimum, I32, min_epi32)
PXL_BINARY(maximum, I32, max_epi32)
PXL_BINARY(minimumUnsigned, I32, min_epu32)  // of the lanes taken as unsigned

PXL_UNARY(absolute, I16, I16, abs_epi16)  // of the lowest number itself
PXL_UNARY(absolute, I32, I32, abs_epi32)

PXL_BINARY(add, F32, add_ps)
PXL_BINARY(sub, F32, sub_ps)
PXL_BINARY(mul, F32, mul_ps)
PXL_BINARY(div, F32, div_ps)
PXL_BINARY(minimum, F32, min_ps)  // b where either is NaN
PXL_BINARY(maximum, F32, max_ps)
PXL_BINARY(add, F64, add_pd)
PXL_BINARY(sub, F64, sub_pd)
PXL_BINARY(mul, F64, mul_pd)
PXL_BINARY(minimum, F64, min_pd)
PXL_BINARY(maximum, F64, max_pd)

// 12 bits; the instruction of 128 and 256 bits at every N, because the one of 512 bits gives other values.
PXL_INLINE F32<1> reciprocalEstimate(F32<1> a) { return {_mm_rcp_ps(a.v)}; }
#if PXL_BLOCKS == 2
PXL_INLINE F32<2> reciprocalEstimate(F32<2> a) { return {_mm256_rcp_ps(a.v)}; }
#elif PXL_BLOCKS == 4
PXL_INLINE F32<4> reciprocalEstimate(F32<4> a) {
    const __m256 low = _mm256_rcp_ps(_mm512_castps512_ps256(a.v));
    const __m256 high = _mm256_rcp_ps(_mm512_extractf32x8_ps(a.v, 1));
    return {_mm512_insertf32x8(_mm512_castps256_ps512(low), high, 1)};
}
#endif

// a[2i] * b[2i] + a[2i + 1] * b[2i + 1]
#define PXL_PAIR_SUMS_N(N, prefix, whole, op8, op16)                                                            \
    PXL_INLINE I16<N> pairSumsSat(U8<N> a, U8<N> signedFactors) { return {prefix##op8(a.v, signedFactors.v)}; } \
    PXL_INLINE I32<N> pairSums(I16<N> a, I16<N> b) { return {prefix##op16(a.v, b.v)}; }
PXL_FOR_EACH_N(PXL_PAIR_SUMS_N, maddubs_epi16, madd_epi16)

// Shifts; to the right, signed types shift arithmetically (floor division) and unsigned ones logically.
#define PXL_SHIFT_N(N, prefix, whole, name, T, op) \
    template <int kBits>                           \
    PXL_INLINE T<N> name(T<N> a) {                 \
        return {prefix##op(a.v, kBits)};           \
    }
PXL_FOR_EACH_N(PXL_SHIFT_N, shiftLeft, U16, slli_epi16)
PXL_FOR_EACH_N(PXL_SHIFT_N, shiftLeft, I16, slli_epi16)
PXL_FOR_EACH_N(PXL_SHIFT_N, shiftLeft, I32, slli_epi32)
PXL_FOR_EACH_N(PXL_SHIFT_N, shiftRight, U16, srli_epi16)
PXL_FOR_EACH_N(PXL_SHIFT_N, shiftRight, I16, srai_epi16)
PXL_FOR_EACH_N(PXL_SHIFT_N, shiftRight, I32, srai_epi32)

// ---- bits and choices. A mask has all bits of a lane set, or none.

#define PXL_LOGIC_N(N, prefix, whole, A)                                               \
    PXL_INLINE A<N> bitAnd(A<N> a, A<N> b) { return {prefix##and_##whole(a.v, b.v)}; } \
    PXL_INLINE A<N> bitOr(A<N> a, A<N> b) { return {prefix##or_##whole(a.v, b.v)}; }   \
    PXL_INLINE A<N> bitXor(A<N> a, A<N> b) { return {prefix##xor_##whole(a.v, b.v)}; }
PXL_FOR_EACH_N(PXL_LOGIC_N, U8)
PXL_FOR_EACH_N(PXL_LOGIC_N, U16)
PXL_FOR_EACH_N(PXL_LOGIC_N, I16)
PXL_FOR_EACH_N(PXL_LOGIC_N, I32)

template <int N>
PXL_INLINE U8<N> bitNot(U8<N> a) {
    return bitXor(a, fill<U8<N>>(255));
}
template <int N>
PXL_INLINE U16<N> bitNot(U16<N> a) {
    return bitXor(a, fill<U16<N>>(65535));
}

// (a + b) >> 1; of one inside another the compiler drops the complements between them
template <class V>
PXL_INLINE V floorAverage(V a, V b) {
    return bitNot(average(bitNot(a), bitNot(b)));
}

template <int N>
PXL_INLINE F32<N> magnitude(F32<N> a) {
    return as<F32<N>>(bitAnd(as<I32<N>>(a), fill<I32<N>>(0x7FFFFFFF)));
}

// choose(mask, a, b): b where the mask is set, a elsewhere.
#define PXL_CHOOSE_N(N, prefix, whole, A, op) \
    PXL_INLINE A<N> choose(A<N> mask, A<N> a, A<N> b) { return {prefix##op(a.v, b.v, mask.v)}; }
#define PXL_COMPARE_N(N, prefix, whole, name, A, op) \
    PXL_INLINE A<N> name(A<N> a, A<N> b) { return {prefix##op(a.v, b.v)}; }
#if PXL_BLOCKS == 4
// Vectors of 512 bits keep masks in registers of their own; here they are vectors like everywhere else, and the
// compiler sees through the detour.
#define PXL_CHOOSE(A, op, toMask, blend) \
    PXL_CHOOSE_N(1, _mm_, si128, A, op)  \
    PXL_INLINE A<4> choose(A<4> mask, A<4> a, A<4> b) { return {_mm512_mask_##blend(toMask(mask), a.v, b.v)}; }
#define PXL_COMPARE(name, A, op, kind, width)         \
    PXL_COMPARE_N(1, _mm_, si128, name, A, op##width) \
    PXL_INLINE A<4> name(A<4> a, A<4> b) { return {_mm512_movm_##width(_mm512_##op##width##kind(a.v, b.v))}; }
PXL_INLINE __mmask64 byteMask(U8<4> a) { return _mm512_movepi8_mask(a.v); }
PXL_INLINE __mmask64 byteMask(I16<4> a) { return _mm512_movepi8_mask(a.v); }
PXL_INLINE __mmask64 byteMask(I32<4> a) { return _mm512_movepi8_mask(a.v); }
PXL_INLINE __mmask16 floatMask(F32<4> a) { return _mm512_movepi32_mask(_mm512_castps_si512(a.v)); }
PXL_INLINE __mmask8 doubleMask(F64<4> a) { return _mm512_movepi64_mask(_mm512_castpd_si512(a.v)); }
#else
#define PXL_CHOOSE(A, op, toMask, blend) PXL_FOR_EACH_N(PXL_CHOOSE_N, A, op)
#define PXL_COMPARE(name, A, op, kind, width) PXL_FOR_EACH_N(PXL_COMPARE_N, name, A, op##width)
#endif
PXL_CHOOSE(U8, blendv_epi8, byteMask, blend_epi8)
PXL_CHOOSE(I16, blendv_epi8, byteMask, blend_epi8)
PXL_CHOOSE(I32, blendv_epi8, byteMask, blend_epi8)
PXL_CHOOSE(F32, blendv_ps, floatMask, blend_ps)
PXL_CHOOSE(F64, blendv_pd, doubleMask, blend_pd)

// 0 where the mask is set, a elsewhere.
PXL_INLINE F32<1> zeroWhere(F32<1> mask, F32<1> a) { return {_mm_andnot_ps(mask.v, a.v)}; }
#if PXL_BLOCKS == 2
PXL_INLINE F32<2> zeroWhere(F32<2> mask, F32<2> a) { return {_mm256_andnot_ps(mask.v, a.v)}; }
#elif PXL_BLOCKS == 4
PXL_INLINE F32<4> zeroWhere(F32<4> mask, F32<4> a) { return choose(mask, a, F32<4>{_mm512_setzero_ps()}); }
#endif

// The same with a constant mask of eight bits, one for each 16 bits of a block: b where it is set.
template <int kMask>
PXL_INLINE U8<1> blend16(U8<1> a, U8<1> b) {
    return {_mm_blend_epi16(a.v, b.v, kMask)};
}
#if PXL_BLOCKS == 2
template <int kMask>
PXL_INLINE U8<2> blend16(U8<2> a, U8<2> b) {
    return {_mm256_blend_epi16(a.v, b.v, kMask)};
}
#elif PXL_BLOCKS == 4
template <int kMask>
PXL_INLINE U8<4> blend16(U8<4> a, U8<4> b) {
    return {_mm512_mask_blend_epi16(kMask * 0x01010101u, a.v, b.v)};
}
#endif

PXL_COMPARE(equal, U8, cmpeq_, _mask, epi8)
PXL_COMPARE(equal, I16, cmpeq_, _mask, epi16)
PXL_COMPARE(equal, I32, cmpeq_, _mask, epi32)
PXL_COMPARE(greater, I16, cmpgt_, _mask, epi16)
PXL_COMPARE(greater, I32, cmpgt_, _mask, epi32)

// Of floats; false where either is NaN, and 0 equals -0.
#if PXL_BLOCKS == 4
#define PXL_COMPARE_REAL(name, A, suffix, whole, toWhole, predicate)                                                \
    PXL_INLINE A<1> name(A<1> a, A<1> b) { return {_mm_cmp_##suffix(a.v, b.v, predicate)}; }                        \
    PXL_INLINE A<4> name(A<4> a, A<4> b) {                                                                          \
        return {                                                                                                    \
            _mm512_cast##whole##_##suffix(_mm512_movm_##toWhole(_mm512_cmp_##suffix##_mask(a.v, b.v, predicate)))}; \
    }
PXL_COMPARE_REAL(greater, F32, ps, si512, epi32, _CMP_GT_OS)
PXL_COMPARE_REAL(equal, F32, ps, si512, epi32, _CMP_EQ_OQ)
PXL_COMPARE_REAL(atMost, F32, ps, si512, epi32, _CMP_LE_OS)
PXL_COMPARE_REAL(greater, F64, pd, si512, epi64, _CMP_GT_OS)
#else
#if PXL_BLOCKS == 2
#define PXL_COMPARE_WIDE(name, A, suffix, predicate) \
    PXL_INLINE A<2> name(A<2> a, A<2> b) { return {_mm256_cmp_##suffix(a.v, b.v, predicate)}; }
#else
#define PXL_COMPARE_WIDE(name, A, suffix, predicate)
#endif
#define PXL_COMPARE_REAL(name, A, suffix, op, predicate)                             \
    PXL_INLINE A<1> name(A<1> a, A<1> b) { return {_mm_##op##_##suffix(a.v, b.v)}; } \
    PXL_COMPARE_WIDE(name, A, suffix, predicate)
PXL_COMPARE_REAL(greater, F32, ps, cmpgt, _CMP_GT_OS)
PXL_COMPARE_REAL(equal, F32, ps, cmpeq, _CMP_EQ_OQ)
PXL_COMPARE_REAL(atMost, F32, ps, cmple, _CMP_LE_OS)
PXL_COMPARE_REAL(greater, F64, pd, cmpgt, _CMP_GT_OS)
#endif

// Whether a mask is set in every lane.
PXL_INLINE bool allSet(I32<1> mask) { return _mm_movemask_epi8(mask.v) == 0xFFFF; }
#if PXL_BLOCKS == 2
PXL_INLINE bool allSet(I32<2> mask) { return _mm256_movemask_epi8(mask.v) == -1; }
#elif PXL_BLOCKS == 4
PXL_INLINE bool allSet(I32<4> mask) { return _mm512_movepi32_mask(mask.v) == 0xFFFF; }
#endif

// ---- between widths, inside each block

#define PXL_UNPACK_N(N, prefix, whole, A, op)                                                   \
    PXL_INLINE A<N> interleaveLow(A<N> a, A<N> b) { return {prefix##unpacklo_##op(a.v, b.v)}; } \
    PXL_INLINE A<N> interleaveHigh(A<N> a, A<N> b) { return {prefix##unpackhi_##op(a.v, b.v)}; }
PXL_FOR_EACH_N(PXL_UNPACK_N, U8, epi8)
PXL_FOR_EACH_N(PXL_UNPACK_N, U16, epi16)
PXL_FOR_EACH_N(PXL_UNPACK_N, I16, epi16)
PXL_FOR_EACH_N(PXL_UNPACK_N, I32, epi32)
// 64-bit halves of each block: a.low, b.low and a.high, b.high
PXL_BINARY(interleaveLow64, I32, unpacklo_epi64)
PXL_BINARY(interleaveHigh64, I32, unpackhi_epi64)

// packSat(low, high): lanes of half the width, saturated to the narrower type.
#define PXL_PACK_N(N, prefix, whole, name, A, R, op) \
    PXL_INLINE R<N> name(A<N> low, A<N> high) { return {prefix##op(low.v, high.v)}; }
PXL_FOR_EACH_N(PXL_PACK_N, packSatU8, I16, U8, packus_epi16)
PXL_FOR_EACH_N(PXL_PACK_N, packSatS8, I16, U8, packs_epi16)  // to signed bytes
PXL_FOR_EACH_N(PXL_PACK_N, packSatI16, I32, I16, packs_epi32)
PXL_FOR_EACH_N(PXL_PACK_N, packSatU16, I32, U16, packus_epi32)

template <class V>
PXL_INLINE U8<V::kN> packSatU8(Halves<V> a) {
    return packSatU8(a.low, a.high);
}
template <class V>
PXL_INLINE I16<V::kN> packSatI16(Halves<V> a) {
    return packSatI16(a.low, a.high);
}

// The low 16 bits of 32-bit lanes.
template <int N>
PXL_INLINE U16<N> packWrapU16(I32<N> low, I32<N> high) {
    const auto lowBits = fill<I32<N>>(0xFFFF);
    return packSatU16(bitAnd(low, lowBits), bitAnd(high, lowBits));
}

// The upper bytes of the 16-bit lanes of both.
template <int N>
PXL_INLINE U8<N> highBytes(U16<N> low, U16<N> high) {
    return packSatU8(as<I16<N>>(shiftRight<8>(low)), as<I16<N>>(shiftRight<8>(high)));
}
#if PXL_BLOCKS == 4
struct alignas(64) HighBytes64 {
    Pxl8u from[64];
};
constexpr HighBytes64 makeHighBytes64() {
    HighBytes64 order = {};
    for (int i = 0; i < 64; ++i) {
        const int block = i / 16, ofHigh = i % 16 / 8;
        order.from[i] = static_cast<Pxl8u>(64 * ofHigh + 16 * block + 2 * (i % 8) + 1);
    }
    return order;
}
constexpr HighBytes64 kHighBytes64 = makeHighBytes64();
PXL_INLINE U8<4> highBytes(U16<4> low, U16<4> high) {
    return {_mm512_permutex2var_epi8(low.v, _mm512_load_si512(kHighBytes64.from), high.v)};
}
#endif

// Bytes of a block picked by index; an index of 128 or more gives 0.
PXL_BINARY(pick, U8, shuffle_epi8)

// The 16 bytes of each block from byte kByte on of the 32 that low and high make.
#define PXL_STRADDLE_N(N, prefix, whole, op)           \
    template <int kByte>                               \
    PXL_INLINE U8<N> straddle(U8<N> low, U8<N> high) { \
        return {prefix##op(high.v, low.v, kByte)};     \
    }
PXL_FOR_EACH_N(PXL_STRADDLE_N, alignr_epi8)

// 32-bit lanes i and j of each block of a, then k and l of b.
#define PXL_TWO_AND_TWO_N(N, prefix, whole, op)                     \
    template <int i, int j, int k, int l>                           \
    PXL_INLINE F32<N> twoAndTwo(F32<N> a, F32<N> b) {               \
        return {prefix##op(a.v, b.v, i + 4 * j + 16 * k + 64 * l)}; \
    }
PXL_FOR_EACH_N(PXL_TWO_AND_TWO_N, shuffle_ps)

// The one operation across blocks: block i is block i - 1 of a, the first one is `before`.
PXL_INLINE U8<1> blocksBefore(U8<1>, U8<1> before) { return before; }
PXL_INLINE U8<1> lastBlock(U8<1> a) { return a; }
#if PXL_BLOCKS == 2
PXL_INLINE U8<2> blocksBefore(U8<2> a, U8<1> before) {
    return {_mm256_inserti128_si256(_mm256_castsi128_si256(before.v), _mm256_castsi256_si128(a.v), 1)};
}
PXL_INLINE U8<1> lastBlock(U8<2> a) { return {_mm256_extracti128_si256(a.v, 1)}; }
#elif PXL_BLOCKS == 4
PXL_INLINE U8<4> blocksBefore(U8<4> a, U8<1> before) {
    return {_mm512_alignr_epi64(a.v, _mm512_broadcast_i32x4(before.v), 6)};
}
PXL_INLINE U8<1> lastBlock(U8<4> a) { return {_mm512_extracti32x4_epi32(a.v, 3)}; }
#endif

// 32-bit lanes a, b, a, b, ...
template <int N>
PXL_INLINE I32<N> fillPairs32(int a, int b) {
    return as<I32<N>>(blend16<0xCC>(as<U8<N>>(fill<I32<N>>(a)), as<U8<N>>(fill<I32<N>>(b))));
}

// Unsigned bytes to 16-bit lanes.
template <int N>
PXL_INLINE Halves<I16<N>> widen(U8<N> a) {
    const auto zero = fill<U8<N>>(0);
    return {as<I16<N>>(interleaveLow(a, zero)), as<I16<N>>(interleaveHigh(a, zero))};
}

template <int N>
PXL_INLINE EvenOdd<I16<N>> evenOdd(U8<N> a) {
    return {bitAnd(as<I16<N>>(a), fill<I16<N>>(255)), as<I16<N>>(shiftRight<8>(as<U16<N>>(a)))};
}

// The same times 64, in one multiplication each.
template <int N>
PXL_INLINE EvenOdd<I16<N>> evenOdd64(U8<N> a) {
    return {pairSumsSat(a, as<U8<N>>(fill<I16<N>>(64))), pairSumsSat(a, as<U8<N>>(fill<I16<N>>(64 * 256)))};
}

// Unsigned bytes to the upper halves of 16-bit lanes: 256 * a.
template <int N>
PXL_INLINE Halves<U16<N>> widenTimes256(U8<N> a) {
    const auto zero = fill<U8<N>>(0);
    return {as<U16<N>>(interleaveLow(zero, a)), as<U16<N>>(interleaveHigh(zero, a))};
}

// 16-bit lanes to 32-bit lanes.
template <int N>
PXL_INLINE Halves<I32<N>> widen(U16<N> a) {
    const auto zero = fill<U16<N>>(0);
    return {as<I32<N>>(interleaveLow(a, zero)), as<I32<N>>(interleaveHigh(a, zero))};
}
template <int N>
PXL_INLINE Halves<I32<N>> widen(I16<N> a) {
    return {shiftRight<16>(as<I32<N>>(interleaveLow(a, a))), shiftRight<16>(as<I32<N>>(interleaveHigh(a, a)))};
}

// Floats to integers by the current rounding mode, and back. What no integer holds, and NaN, becomes -2^31.
PXL_UNARY(toInt, F32, I32, cvtps_epi32)
PXL_UNARY(truncateToInt, F32, I32, cvttps_epi32)  // the same, towards zero whatever the mode
PXL_UNARY(toFloat, I32, F32, cvtepi32_ps)

// ---- samples of any type as 32-bit lanes: a vector of bytes fills four of them, one of 16-bit samples two, and part k
// holds the k-th of so many equal pieces of each block

template <class V, int kCount>
struct Parts {
    static constexpr int kParts = kCount;
    V at[kCount];
};

template <int N>
PXL_INLINE Parts<F32<N>, 1> floatsOf(F32<N> a) {
    return {{a}};
}
template <int N>
PXL_INLINE Parts<F32<N>, 2> floatsOf(U16<N> a) {
    const auto w = widen(a);
    return {{toFloat(w.low), toFloat(w.high)}};
}
template <int N>
PXL_INLINE Parts<F32<N>, 2> floatsOf(I16<N> a) {
    const auto w = widen(a);
    return {{toFloat(w.low), toFloat(w.high)}};
}
template <int N>
PXL_INLINE Parts<F32<N>, 4> floatsOf(U8<N> a) {
    const auto w = widen(a);
    const auto low = widen(as<U16<N>>(w.low)), high = widen(as<U16<N>>(w.high));
    return {{toFloat(low.low), toFloat(low.high), toFloat(high.low), toFloat(high.high)}};
}

// 32-bit integers to samples of type V, saturated to its range.
template <class V, int kCount>
PXL_INLINE V packSatSamples(Parts<I32<V::kN>, kCount> a) {
    using Sample = typename V::Element;
    static_assert(kCount * sizeof(Sample) == sizeof(Pxl32s));
    if constexpr (sizeof(Sample) == 1) {
        return packSatU8(packSatI16(a.at[0], a.at[1]), packSatI16(a.at[2], a.at[3]));
    } else if constexpr (static_cast<Sample>(-1) < 0) {
        return packSatI16(a.at[0], a.at[1]);
    } else {
        return packSatU16(a.at[0], a.at[1]);
    }
}

template <class Sample>
constexpr float kLargestSample = sizeof(Sample) == 1           ? 255.0f
                                 : static_cast<Sample>(-1) < 0 ? 32767.0f
                                                               : 65535.0f;

// Floats to integers that a pack stops at `top`; kLimit where they may be beyond 32-bit integers or no numbers.
template <bool kLimit, int N>
PXL_INLINE I32<N> toIntBelow(F32<N> a, float top) {
    if constexpr (kLimit) a = minimum(a, fill<F32<N>>(top));  // the packs stop what is below, down to -2^31
    return toInt(a);
}

// Floats to samples of type V by the current rounding mode, saturated to its range; NaN becomes the upper end. Without
// kLimit only for floats that are numbers within 32-bit integers, whose saturation the packs do alone. Floats
// themselves pass unchanged.
template <class V, bool kLimit, int kCount>
PXL_INLINE V saturatedSamples(Parts<F32<V::kN>, kCount> a) {
    if constexpr (kCount == 1) {
        return a.at[0];
    } else {
        Parts<I32<V::kN>, kCount> whole;
        for (int k = 0; k < kCount; ++k) {
            whole.at[k] = toIntBelow<kLimit>(a.at[k], kLargestSample<typename V::Element>);
        }
        return packSatSamples<V>(whole);
    }
}

// Three channels of samples through a form from floats to integers, each part on its own. The form is that of unsigned
// samples; signed ones are computed as the unsigned ones that are larger by 32768.
template <class Form, class V>
PXL_INLINE Channels3<V> throughFloats(const Form& form, Channels3<V> px) {
    const auto c0 = floatsOf(px.c0), c1 = floatsOf(px.c1), c2 = floatsOf(px.c2);
    Parts<I32<V::kN>, c0.kParts> r0, r1, r2;
    for (int k = 0; k < c0.kParts; ++k) {
        const auto r = form(Channels3{c0.at[k], c1.at[k], c2.at[k]});
        r0.at[k] = r.c0, r1.at[k] = r.c1, r2.at[k] = r.c2;
    }
    return {packSatSamples<V>(r0), packSatSamples<V>(r1), packSatSamples<V>(r2)};
}
template <class Form, int N>
PXL_INLINE Channels3<I16<N>> throughFloats(const Form& form, Channels3<I16<N>> px) {
    const auto flipped = [](auto a) { return bitXor(a, fill<decltype(a)>(0x8000)); };
    const auto r = throughFloats(
        form, Channels3{flipped(as<U16<N>>(px.c0)), flipped(as<U16<N>>(px.c1)), flipped(as<U16<N>>(px.c2))});
    return {as<I16<N>>(flipped(r.c0)), as<I16<N>>(flipped(r.c1)), as<I16<N>>(flipped(r.c2))};
}

PXL_END_TARGET
