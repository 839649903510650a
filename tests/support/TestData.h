#pragma once
// Contents for the files of tests: one function for each kind of data; the same seed gives the same bytes on
// every system.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace tools::testing {

using Bytes = std::vector<std::uint8_t>;

/// The bytes of `text`.
Bytes BytesOf(const std::string& text);

/// Random bytes, which no method compresses.
Bytes RandomBytes(std::size_t size, std::uint32_t seed = 1);

/// Words of a small vocabulary and numbers in lines, like a script. They compress well.
Bytes TextLike(std::size_t size, std::uint32_t seed = 1);

/// Instructions of a few shapes, many of them calls (E8) of a few targets.
Bytes CodeLike(std::size_t size, std::uint32_t seed);

/// Only calls: E8 with operands of every kind, also near the limits.
Bytes CallsOnly(std::size_t size, std::uint32_t seed);

/// Stretches of one byte, of lengths from 1 to some thousands.
Bytes Runs(std::size_t size, std::uint32_t seed);

/// Records of fixed width whose fields change slowly, like tables and bitmaps.
Bytes Records(std::size_t size, std::uint32_t seed);

/// Stretches of all kinds above, of even and odd lengths.
Bytes Mixed(std::size_t size, std::uint32_t seed);

/// Copies of earlier bytes from every distance up to `farthest`, with a few new bytes between.
Bytes FarCopies(std::size_t size, std::size_t farthest, std::uint32_t seed);

/// Every kind with its name.
struct DataKind {
    std::string Name;
    std::function<Bytes(std::size_t, std::uint32_t)> Make;
};
const std::vector<DataKind>& DataKinds();

}  // namespace tools::testing
