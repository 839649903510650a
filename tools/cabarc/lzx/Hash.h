#pragma once
// The hash under which the last places of short strings are found.

#include <cstdint>

namespace tools::cabarc::lzx {

/// Bits of the hash of three bytes.
inline constexpr int kTripleHashBits = 15;

/// Returns a hash of `value` of `bits` bits (1 to 32). Any odd multiplier with well spread bits will do (this
/// is 2^32 divided by the golden ratio).
inline std::uint32_t Hash(std::uint32_t value, int bits) {
    return (value * 0x9E3779B1U) >> (32 - bits);
}

}  // namespace tools::cabarc::lzx
