#pragma once
// The numbers of a block: how often each symbol occurs, the code lengths that follow from the counts, and
// what the block's items cost with them. Kept apart from the parser and the writer because prices,
// splitting and the choice of block type all work on these numbers alone.

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>

#include "tools/cabarc/lzx/Item.h"
#include "tools/cabarc/lzx/LzxFormat.h"

namespace tools::cabarc::lzx {

/// The symbols that an item is sent as: always one of the main tree, and for a match up to two more.
struct ItemSymbols {
    explicit ItemSymbols(Item item);

    int Main = 0;      ///< 0 to 255 a literal, from 256 on slot and length header
    int Length = -1;   ///< symbol of the length tree; -1 = none
    int Slot = -1;     ///< position slot; -1 for a literal
    int Aligned = -1;  ///< the three low offset bits where an aligned block codes them; else -1
};

/// Symbol counts of a stretch of items. The aligned symbols are counted for any block, because its type is
/// chosen by these counts. A stretch of up to 2^32 - 1 items can be counted; a segment has at most 2^20.
struct SymbolCounts {
    std::array<std::uint32_t, kMaxMainSymbols> Main{};
    std::array<std::uint32_t, kLengthSymbols> Length{};
    std::array<std::uint32_t, kAlignedSymbols> Aligned{};

    /// Counts the symbols of one item, or of all the items of a stretch.
    void Add(Item item);
    void Add(std::span<const Item> items) {
        for (const Item item : items) Add(item);
    }
};

/// Code lengths of the three trees of a block. All 0 is the state before the first block of a folder.
struct CodeLengths {
    std::array<std::uint8_t, kMaxMainSymbols> Main{};
    std::array<std::uint8_t, kLengthSymbols> Length{};
    std::array<std::uint8_t, kAlignedSymbols> Aligned{};

    friend bool operator==(const CodeLengths&, const CodeLengths&) = default;
};

/// Returns the complete code lengths that spend the fewest bits on these counts, within the limits of the
/// format (BuildCodeLengths). What it costs to send the lengths themselves is left out.
CodeLengths BuildCodes(const SymbolCounts& counts);

/// Returns the plain bits that the offsets take in a coded block of this type: all extra bits, or in an
/// aligned block those above the low bits, which have a tree there.
std::uint64_t ExtraOffsetBits(const SymbolCounts& counts, BlockType type);

/// Returns the bits of the items themselves (symbols and extra bits, no code lengths) in a coded block of
/// this type.
std::uint64_t BodyBits(const SymbolCounts& counts, const CodeLengths& codes, BlockType type);

/// How the items of a block are coded.
struct BodyPlan {
    CodeLengths Codes;
    BlockType Type = BlockType::Verbatim;
    /// Bits of the items, and of the aligned tree's code lengths when there is one.
    std::uint64_t Bits = 0;
};

/// Returns the cheaper of the two coded types with the best codes for these counts; verbatim when they cost
/// the same.
BodyPlan PlanBody(const SymbolCounts& counts);

/// Returns the bits of an uncompressed block of `bytes` bytes: padding (8.5 bits on average, rounded up),
/// the recent offsets, the bytes. Type and size are left out here as everywhere, because every block has
/// them.
constexpr std::uint64_t UncompressedBits(std::uint32_t bytes) {
    return 9 + 32 * kRecentOffsets + 8 * std::uint64_t{bytes};
}

/// The entropy of counts, for estimates of what a stretch would cost under ideal codes of its own:
///
///     sum of n * -log2(n / N)  =  N * log2(N) - sum of n * log2(n)      (N the sum of all n)
///
/// The right side has one term for each count, and no other term changes with that count. So the entropy of
/// a growing stretch is kept up to date symbol by symbol. It is a lower bound: codes of whole bits never
/// spend less. Single precision may be off by some bits in a long stretch, which is little beside what an
/// estimate leaves out; BodyBits is exact.
class EntropyTerms {
 public:
    /// Computes the table, 4096 logarithms: one object should serve many sums.
    EntropyTerms() {
        for (std::size_t n = 1; n < table_.size(); ++n) table_[n] = Compute(static_cast<float>(n));
    }

    /// Returns n * log2(n), 0 for 0. The common counts are looked up in a table.
    float operator()(std::uint32_t n) const {
        return n < table_.size() ? table_.data()[n] : Compute(static_cast<float>(n));
    }

    /// Returns the bits that symbols with these counts take under ideal codes, whose lengths may be
    /// fractions.
    float EntropyBits(std::span<const std::uint32_t> counts) const;

 private:
    static float Compute(float n) { return n * std::log2(n); }
    std::array<float, 4096> table_{};
};

}  // namespace tools::cabarc::lzx
