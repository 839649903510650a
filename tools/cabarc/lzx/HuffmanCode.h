#pragma once
// Canonical, complete, length-limited Huffman codes, as every tree of the format needs them.

#include <cstdint>
#include <span>

namespace tools::cabarc::lzx {

/// Computes the code lengths that spend the fewest bits on `counts` with no code longer than `maxLength` (at
/// most 16, and large enough to tell all used symbols apart). Symbols that do not occur get 0. A lone symbol
/// gets length 1 and a partner of length 1 that is never sent, because readers refuse incomplete codes; with
/// no symbol at all every length is 0. `lengths` is as long as `counts` (at least 2).
void BuildCodeLengths(std::span<const std::uint32_t> counts, int maxLength, std::span<std::uint8_t> lengths);

/// Numbers the codes: shorter ones first, then by symbol, counted upwards. `codes` is as long as `lengths`.
void AssignCodes(std::span<const std::uint8_t> lengths, std::span<std::uint16_t> codes);

}  // namespace tools::cabarc::lzx
