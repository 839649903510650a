#pragma once
// The numbers of a block: how often each symbol occurs, the code lengths that follow from the counts, and
// what the block's items cost with them. Kept apart from the parser and the writer because prices, splitting
// and the choice of block type all work on these numbers alone.

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>

#include "tools/cabarc/lzx/Item.h"
#include "tools/cabarc/lzx/LzxFormat.h"

namespace tools::cabarc::lzx {

/// The symbols that an item is sent as.
struct ItemSymbols {
    explicit ItemSymbols(Item item);

    int Main = 0;
    int Length = -1;   ///< symbol of the length tree; -1 = none
    int Slot = -1;     ///< position slot; -1 for a literal
    int Aligned = -1;  ///< the low offset bits where an aligned block codes them; else -1
};

/// Symbol counts of a stretch of items. The aligned symbols are counted for any block, for its type is chosen
/// by these counts.
struct SymbolCounts {
    std::array<std::uint32_t, kMaxMainSymbols> Main{};
    std::array<std::uint32_t, kLengthSymbols> Length{};
    std::array<std::uint32_t, kAlignedSymbols> Aligned{};

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

/// Returns the best complete code lengths for these counts.
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

/// Returns the bits of an uncompressed block of so many bytes: padding (8.5 bits in the mean), the recent
/// offsets, the bytes. Type and size, which every block has, are counted for none.
constexpr std::uint64_t UncompressedBits(std::uint32_t bytes) {
    return 9 + 32 * kRecentOffsets + 8 * std::uint64_t{bytes};
}

/// The entropy of counts, for estimates of what a stretch would cost under ideal codes of its own:
///
///     sum of n * -log2(n / N)  =  N * log2(N) - sum of n * log2(n)      (N the sum of all n)
///
/// The right side needs one term for each count, which changes alone when its count does. So the entropy of a
/// growing stretch is kept up to date symbol by symbol.
class EntropyTerms {
 public:
    EntropyTerms() {
        for (std::size_t n = 1; n < table_.size(); ++n) table_[n] = Compute(static_cast<float>(n));
    }

    /// Returns n * log2(n), 0 for 0; from a table for the counts that are common.
    float operator()(std::uint32_t n) const {
        return n < table_.size() ? table_.data()[n] : Compute(static_cast<float>(n));
    }

    /// Returns the bits of symbols that occur so often, under ideal codes.
    float EntropyBits(std::span<const std::uint32_t> counts) const;

 private:
    static float Compute(float n) { return n * std::log2(n); }
    std::array<float, 4096> table_{};
};

}  // namespace tools::cabarc::lzx
