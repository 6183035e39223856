// Look-ups in small tables: of bytes by bytes, of floats by the low bits of integers.
#pragma once

#include "simd/memory.h"

PXL_BEGIN_TARGET

// ---- any byte through a table of 256

#if PXL_BLOCKS == 4
class ByteTable {
public:
    PXL_INLINE explicit ByteTable(const Pxl8u* table) {
        for (int i = 0; i < 4; ++i) quarter_[i] = load(Blocks<4>{}, table + 64 * i);
    }
    PXL_INLINE U8<4> operator[](U8<4> a) const {
        const __m512i low = _mm512_permutex2var_epi8(quarter_[0].v, a.v, quarter_[1].v);
        const __m512i high = _mm512_permutex2var_epi8(quarter_[2].v, a.v, quarter_[3].v);
        return {_mm512_mask_blend_epi8(_mm512_movepi8_mask(a.v), low, high)};
    }
    PXL_INLINE U8<1> operator[](U8<1> a) const {
        return {_mm512_castsi512_si128((*this)[U8<4>{_mm512_castsi128_si512(a.v)}].v)};
    }

private:
    U8<4> quarter_[4];
};
#else
// A shuffle finds a byte among 16 and gives 0 where bit 7 of the index is set. With entry i of row r of the table
// (16 to a row) replaced by its difference (exclusive or) from the entry above, the sum of all rows r up to that of the
// index is the entry: so each row is picked by index - 16 * r, saturated so that what has gone below 0 stays there.
// That serves indices 0..127; those from 128 on are negative and give 0 throughout, and the other half of the table is
// treated the same way with bit 7 of the index turned round.
class ByteTable {
public:
    PXL_INLINE explicit ByteTable(const Pxl8u* table) {
        for (int r = 0; r < 16; ++r) {
            const auto row = load(Blocks<1>{}, table + 16 * r);
            store(Blocks<1>{}, row_[r].byte, r % 8 == 0 ? row : bitXor(row, load(Blocks<1>{}, table + 16 * (r - 1))));
        }
    }
    template <int N>
    PXL_INLINE U8<N> operator[](U8<N> a) const {
        return bitOr(fromHalf(row_, a), fromHalf(row_ + 8, bitXor(a, fill<U8<N>>(128))));
    }

private:
    template <int N>
    PXL_INLINE static U8<N> fromHalf(const Bytes16* row, U8<N> index) {
        auto sum = pick(pattern<N>(row[0]), index);
#pragma GCC unroll 8
        for (int r = 1; r < 8; ++r) {
            index = subSatSigned(index, fill<U8<N>>(16));
            sum = bitXor(sum, pick(pattern<N>(row[r]), index));
        }
        return sum;
    }

    Bytes16 row_[16];
};
#endif

// Three blocks in as few look-ups as the vectors allow.
PXL_INLINE Channels3<U8<1>> lookUp(const ByteTable& table, Channels3<U8<1>> a) {
#if PXL_BLOCKS == 4
    const __m256i first = _mm256_inserti128_si256(_mm256_castsi128_si256(a.c0.v), a.c1.v, 1);
    const __m512i all = _mm512_inserti32x4(_mm512_castsi256_si512(first), a.c2.v, 2);
    const __m512i found = table[U8<4>{all}].v;
    return {{_mm512_castsi512_si128(found)},
            {_mm256_extracti128_si256(_mm512_castsi512_si256(found), 1)},
            {_mm512_extracti32x4_epi32(found, 2)}};
#elif PXL_BLOCKS == 2
    const __m256i first = _mm256_inserti128_si256(_mm256_castsi128_si256(a.c0.v), a.c1.v, 1);
    const __m256i found = table[U8<2>{first}].v;
    return {{_mm256_castsi256_si128(found)}, {_mm256_extracti128_si256(found, 1)}, table[a.c2]};
#else
    return {table[a.c0], table[a.c1], table[a.c2]};
#endif
}

// ---- any byte through a map that has one step at most within each sixteenth of the range

// In sixteenth h the map is below[h] up to from[h] and above[h] from there on.
struct SixteenthSteps {
    Bytes16 below, from, above;
};

template <int N>
PXL_INLINE U8<N> mapInSteps(const SixteenthSteps& steps, U8<N> a) {
    const auto sixteenth = bitAnd(as<U8<N>>(shiftRight<4>(as<U16<N>>(a))), fill<U8<N>>(15));
    const auto stepped = equal(maximum(a, pick(pattern<N>(steps.from), sixteenth)), a);
    return choose(stepped, pick(pattern<N>(steps.below), sixteenth), pick(pattern<N>(steps.above), sixteenth));
}

// ---- floats by 32-bit indices

// Any number of entries, each loaded on its own.
PXL_INLINE F32<1> gather(const Pxl32f* table, I32<1> index) {
    return {_mm_setr_ps(table[_mm_extract_epi32(index.v, 0)], table[_mm_extract_epi32(index.v, 1)],
                        table[_mm_extract_epi32(index.v, 2)], table[_mm_extract_epi32(index.v, 3)])};
}
#if PXL_BLOCKS == 2
PXL_INLINE F32<2> gather(const Pxl32f* table, I32<2> index) { return {_mm256_i32gather_ps(table, index.v, 4)}; }
#elif PXL_BLOCKS == 4
PXL_INLINE F32<4> gather(const Pxl32f* table, I32<4> index) { return {_mm512_i32gather_ps(index.v, table, 4)}; }
#endif

// The same for doubles, by their integral parts.
PXL_INLINE F64<1> gather(const Pxl64f* table, F64<1> index) {
    const __m128i i = _mm_cvttpd_epi32(index.v);
    return {_mm_setr_pd(table[_mm_extract_epi32(i, 0)], table[_mm_extract_epi32(i, 1)])};
}
#if PXL_BLOCKS == 2
PXL_INLINE F64<2> gather(const Pxl64f* table, F64<2> index) {
    // the masked form, for the plain one leaves a register undefined and the compiler warns
    const __m256d all = _mm256_castsi256_pd(_mm256_set1_epi64x(-1));
    return {_mm256_mask_i32gather_pd(_mm256_setzero_pd(), table, _mm256_cvttpd_epi32(index.v), all, 8)};
}
#elif PXL_BLOCKS == 4
PXL_INLINE F64<4> gather(const Pxl64f* table, F64<4> index) {
    return {_mm512_i32gather_pd(_mm512_cvttpd_epi32(index.v), table, 8)};
}
#endif

// A table of eight, by the low three bits of the index.
class EightFloats {
#if PXL_BLOCKS == 1
public:
    PXL_INLINE explicit EightFloats(const Pxl32f* table)
        : low_(as<U8<1>>(load(Blocks<1>{}, table))), high_(as<U8<1>>(load(Blocks<1>{}, table + 4))) {}
    PXL_INLINE F32<1> operator[](I32<1> index) const {
        // the numbers 0..31 of the table's bytes; a shuffle gives 0 where bit 7 of its index is set
        const auto entry = pick(as<U8<1>>(bitAnd(index, fill<I32<1>>(7))), pattern<1>(kFirstBytes));
        const auto byte = bitOr(as<U8<1>>(shiftLeft<2>(as<I32<1>>(entry))), pattern<1>(kBytesOfFloats));
        return as<F32<1>>(
            bitOr(pick(low_, addWrap(byte, fill<U8<1>>(128 - 16))), pick(high_, subWrap(byte, fill<U8<1>>(16)))));
    }

private:
    static constexpr Bytes16 kFirstBytes = {{0, 0, 0, 0, 4, 4, 4, 4, 8, 8, 8, 8, 12, 12, 12, 12}};
    static constexpr Bytes16 kBytesOfFloats = {{0, 1, 2, 3, 0, 1, 2, 3, 0, 1, 2, 3, 0, 1, 2, 3}};
    U8<1> low_, high_;
#elif PXL_BLOCKS == 2
public:
    PXL_INLINE explicit EightFloats(const Pxl32f* table) : table_(_mm256_loadu_ps(table)) {}
    PXL_INLINE F32<2> operator[](I32<2> index) const { return {_mm256_permutevar8x32_ps(table_, index.v)}; }
    PXL_INLINE F32<1> operator[](I32<1> index) const {
        return {_mm256_castps256_ps128((*this)[I32<2>{_mm256_castsi128_si256(index.v)}].v)};
    }

private:
    __m256 table_;
#elif PXL_BLOCKS == 4
public:
    PXL_INLINE explicit EightFloats(const Pxl32f* table) : table_(_mm512_broadcast_f32x8(_mm256_loadu_ps(table))) {}
    PXL_INLINE F32<4> operator[](I32<4> index) const { return {_mm512_permutexvar_ps(index.v, table_)}; }
    PXL_INLINE F32<1> operator[](I32<1> index) const {
        return {_mm512_castps512_ps128((*this)[I32<4>{_mm512_castsi128_si512(index.v)}].v)};
    }

private:
    __m512 table_;
#endif
};

PXL_END_TARGET
