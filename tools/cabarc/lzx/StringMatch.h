#pragma once
// What every search for matches consists of: the hash under which the last place of a short string is
// remembered, the prefetch of memory that is read soon, and the extension of a match from the bytes that are
// known to agree. All are in the innermost loops of the match finder, of the optimal parser and of the trial
// parse, so they are inline and unchecked: the callers state the bounds.

#include <bit>
#include <cstdint>
#include <cstring>

namespace tools::cabarc::lzx {

/// Bits of a hash of three bytes. A table of 128 KiB stays in the second cache; two strings that share a
/// hash only hide each other's last place, because the bytes of a place that was looked up are always
/// compared.
inline constexpr int kTripleHashBits = 15;

/// Returns a hash of `value` of `bits` bits (1 to 32). It multiplies and keeps the high bits, which depend
/// on all bits of the value; the low ones would not. Any odd multiplier with well spread bits will do (this
/// is 2^32 divided by the golden ratio). To hash three bytes, shift them to the top of the value.
inline std::uint32_t Hash(std::uint32_t value, int bits) {
    return (value * 0x9E3779B1U) >> (32 - bits);
}

/// Asks the processor to bring what is at `memory` into its caches. It need not be readable.
inline void Prefetch(const void* memory) {
    __builtin_prefetch(memory);
}

/// Returns the length of the common prefix of `a` and `b`, given that the first `from` bytes agree; at most
/// `limit`. REQUIRES: from <= limit, and `limit` bytes readable at both. They may overlap.
///
/// Eight bytes are compared at a time: in a little-endian word the lowest differing bit belongs to the first
/// differing byte. On a big-endian machine bytes are compared one by one.
inline std::uint32_t ExtendMatch(const std::uint8_t* a, const std::uint8_t* b, std::uint32_t from,
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
