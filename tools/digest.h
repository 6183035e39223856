// A hash of 64 bits that tells accidental differences apart: one multiplication for each eight bytes, and no two inputs
// of one length that differ in one place alone give the same.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace pxl::tool {

class Hash {
public:
    void add(const void* data, std::size_t bytes) {
        const auto* next = static_cast<const unsigned char*>(data);
        while (bytes > 0) {
            const std::size_t count = std::min<std::size_t>(bytes, 8);
            std::uint64_t word = 0;
            std::memcpy(&word, next, count);
            value_ = std::rotl((value_ ^ word) * 0x9E3779B97F4A7C15u, 29);
            next += count;
            bytes -= count;
        }
    }
    template <class T>
    void add(const T& value) {
        add(&value, sizeof value);
    }
    std::uint64_t value() const { return value_; }

private:
    std::uint64_t value_ = 0xCBF29CE484222325u;
};

}  // namespace pxl::tool
