#pragma once
// How far two strings agree: the innermost question of search and parse, answered eight bytes at a time.

#include <bit>
#include <cstdint>
#include <cstring>

namespace tools::cabarc::lzx {

/// Returns how many bytes of the two strings agree, counted from their start, given that the first `from` do;
/// at most `limit`. Both can be read up to `limit`; they may overlap.
inline std::uint32_t Agreement(const std::uint8_t* a, const std::uint8_t* b, std::uint32_t from,
                               std::uint32_t limit) {
    std::uint32_t n = from;
    if constexpr (std::endian::native == std::endian::little) {
        while (n + 8 <= limit) {
            std::uint64_t wordA;
            std::uint64_t wordB;
            std::memcpy(&wordA, a + n, 8);
            std::memcpy(&wordB, b + n, 8);
            if (wordA != wordB) return n + static_cast<std::uint32_t>(std::countr_zero(wordA ^ wordB)) / 8;
            n += 8;
        }
    }
    while (n < limit && a[n] == b[n]) ++n;
    return n;
}

}  // namespace tools::cabarc::lzx
