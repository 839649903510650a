#pragma once
// The trees of a block: how often each symbol occurs, and the code lengths that follow from it. Kept apart
// from the parser and the writer because prices, splitting and the choice of block type all work on these
// numbers alone.

#include <array>
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
    int Aligned = -1;  ///< the low three offset bits where an aligned block codes them; else -1
};

/// Symbol counts of a stretch of items.
struct SymbolCounts {
    std::array<std::uint32_t, kMaxMainSymbols> Main{};
    std::array<std::uint32_t, kLengthSymbols> Length{};
    std::array<std::uint32_t, kAlignedSymbols> Aligned{};

    void Add(Item item);
    void Add(std::span<const Item> items) {
        for (const Item item : items) Add(item);
    }
    void Add(const SymbolCounts& other);
};

/// Code lengths of the three trees of a block. All 0 is the state before the first block of a folder.
struct CodeLengths {
    std::array<std::uint8_t, kMaxMainSymbols> Main{};
    std::array<std::uint8_t, kLengthSymbols> Length{};
    std::array<std::uint8_t, kAlignedSymbols> Aligned{};
};

/// Returns the best complete code lengths for these counts.
CodeLengths BuildCodes(const SymbolCounts& counts);

/// Returns the bits of the items themselves (symbols and extra bits, no tree headers) in a block of this
/// type; an aligned block codes the low offset bits by its third tree.
std::uint64_t BodyBits(const SymbolCounts& counts, const CodeLengths& codes, BlockType type);

}  // namespace tools::cabarc::lzx
