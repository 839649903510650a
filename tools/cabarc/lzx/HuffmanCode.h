#pragma once
// Canonical, complete, length-limited Huffman codes, as every tree of the format needs them. Canonical: the
// code words follow from the code lengths, so only lengths are sent. Complete: every sequence of bits begins
// with a code word, that is, 2^-length summed over all symbols with a code is 1; readers reject anything
// else. Length-limited: the fields that hold lengths have a largest number.
//
// The codes are the best within their limit for the counts alone. What it costs to send the lengths is not
// weighed (EncodedCodeLengths.h sends what it gets as cheaply as it can): a slightly worse code with more
// regular lengths could be cheaper in all, but neither cost is known while the other is open.

#include <cstdint>
#include <span>

namespace tools::cabarc::lzx {

/// Computes the code lengths that spend the fewest bits on `counts` with no code longer than `maxLength`.
/// Symbols that do not occur get 0, which stands for no code. A lone symbol gets length 1 and a partner of
/// length 1 that is never sent, because one code word alone would not be complete; with no symbol at all
/// every length is 0.
///
/// REQUIRES: 2 to kMaxMainSymbols counts, whose sum fits in 32 bits; `lengths` as long as `counts`;
/// `maxLength` at most kMaxCodeLength, and 2^maxLength at least the number of symbols that occur. Nothing of
/// this is checked at run time; Limits.cpp asserts the sizes for every tree of the format.
void BuildCodeLengths(std::span<const std::uint32_t> counts, int maxLength, std::span<std::uint8_t> lengths);

/// Computes the code words that belong to the code lengths, each in its low bits: shorter ones first, among
/// equal lengths by symbol, counted upwards. A length of 0 gets 0, which is never sent. REQUIRES: lengths of
/// BuildCodeLengths, `codes` as long as they.
void AssignCodes(std::span<const std::uint8_t> lengths, std::span<std::uint16_t> codes);

}  // namespace tools::cabarc::lzx
