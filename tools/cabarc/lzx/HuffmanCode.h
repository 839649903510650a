#pragma once
// Canonical, complete, length-limited Huffman codes, as every tree of the format needs them. Canonical: the
// code words follow from the code lengths, so only lengths are sent. Complete: every sequence of bits is the
// start of some code; readers refuse anything else. Length-limited: the fields that name lengths end
// somewhere.
//
// The codes are the best there are within their limit, by counts alone. What the lengths themselves cost to
// send is not weighed (EncodedCodeLengths.h sends them as cheaply as they come).

#include <cstdint>
#include <span>

namespace tools::cabarc::lzx {

/// Computes the code lengths that spend the fewest bits on `counts` with no code longer than `maxLength`.
/// Symbols that do not occur get 0. A lone symbol gets length 1 and a partner of length 1 that is never sent,
/// because one code word alone would not be complete; with no symbol at all every length is 0.
///
/// REQUIRES: 2 to kMaxMainSymbols counts, whose sum fits 32 bits; `lengths` as long as `counts`; `maxLength`
/// at most kMaxCodeLength, and 2^maxLength at least the number of symbols that occur.
void BuildCodeLengths(std::span<const std::uint32_t> counts, int maxLength, std::span<std::uint8_t> lengths);

/// Computes the code words that belong to the code lengths: shorter ones first, among equal lengths by
/// symbol, counted upwards. A length of 0 gets 0. REQUIRES: lengths of BuildCodeLengths, `codes` as long as
/// they.
void AssignCodes(std::span<const std::uint8_t> lengths, std::span<std::uint16_t> codes);

}  // namespace tools::cabarc::lzx
