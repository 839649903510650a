#pragma once
// Contents for the files of tests.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tools::testing {

using Bytes = std::vector<std::uint8_t>;

/// Returns the bytes of `text`.
Bytes BytesOf(const std::string& text);

/// Returns `count` random bytes, which no method compresses; the same for the same seed.
Bytes NoiseBytes(std::size_t count, std::uint32_t seed = 1);

/// Returns `count` bytes of words and numbers, which compress well; the same for the same seed.
Bytes ProseBytes(std::size_t count, std::uint32_t seed = 1);

}  // namespace tools::testing
