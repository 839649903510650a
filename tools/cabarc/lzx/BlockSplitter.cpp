// The items are cut into cells of about kCellBytes, and a block is a run of whole cells. The cheapest
// sequence of blocks is again a shortest path: the borders between cells are the nodes, each run of up to
// kMaxCells cells is an edge from the border before it to the border after it, and its price is the
// estimated size of the block. All edges lead forward, so one pass over the borders finds the path. No
// sequence of blocks is left out, unlike in a splitter that looks for a change of statistics and cuts
// there: such a splitter never sees that two changes together would pay where neither does alone.
//
// The price of a run: the entropy of its symbols, which is what ideal codes would take; the extra bits of
// the offsets; a fixed part for the header and a part for each symbol that occurs, as each has a code
// length there. Building codes and encoding their lengths for each of the up to 65,000 runs of a segment
// would cost many times the rest of the packing. When a run grows by a cell, only the terms of the symbols
// of that cell change, so a run costs about as much time as its last cell has different symbols.
//
// What the estimate gets wrong: codes of whole bits take a little more than the entropy; a header like the
// one before it costs less than a new one; runs of equal code lengths cost less than scattered ones. The
// first hardly depends on where the cuts are. For the other two there is only an average, which was
// measured.
//
// Cost: cells times kMaxCells times the different symbols of a cell, in all about a seventh of the time of
// packing. It needs the whole segment, so it does not suit a packer that must send as it reads.

#include "tools/cabarc/lzx/BlockSplitter.h"

#include <algorithm>
#include <array>
#include <limits>

#include "tools/cabarc/lzx/BlockCodes.h"

namespace tools::cabarc::lzx {

namespace {

// What a header costs, in bits: a fixed part for the three pretrees and a part for each symbol that occurs.
// Of 2, 3, 4 and 5 bits per symbol, 4 gives the smallest reference sets (2 gives 0.4 % more).
constexpr float kHeaderBits = 300.0F;
constexpr float kHeaderBitsPerSymbol = 4.0F;

// Main and length symbols share one numbering here, so that a cell has one list of them.
constexpr std::size_t kSymbols = kMaxMainSymbols + kLengthSymbols;

struct SymbolCount {
    std::uint16_t Symbol;
    std::uint16_t Count;
};

// The items between two neighbouring border candidates, and what a block that takes them in adds to its
// counts.
struct Cell {
    std::size_t EndItem = 0;
    std::uint32_t End = 0;
    std::vector<SymbolCount> Symbols;
    std::uint32_t MainTotal = 0;
    std::uint32_t LengthTotal = 0;
    std::uint32_t ExtraBits = 0;
};

std::vector<Cell> CutIntoCells(std::span<const Item> items) {
    std::vector<Cell> cells;
    std::array<std::uint16_t, kSymbols> counts{};
    std::uint32_t begin = 0;
    Cell cell;
    for (std::size_t i = 0; i < items.size(); ++i) {
        const ItemSymbols symbols(items[i]);
        ++counts[static_cast<std::size_t>(symbols.Main)];
        ++cell.MainTotal;
        if (symbols.Slot >= 0) cell.ExtraBits += static_cast<std::uint32_t>(ExtraBits(symbols.Slot));
        if (symbols.Length >= 0) {
            ++counts[static_cast<std::size_t>(kMaxMainSymbols + symbols.Length)];
            ++cell.LengthTotal;
        }
        cell.End += items[i].Length();
        if (cell.End - begin < kCellBytes && i + 1 < items.size()) continue;
        cell.EndItem = i + 1;
        for (std::size_t symbol = 0; symbol < kSymbols; ++symbol)
            if (counts[symbol] != 0)
                cell.Symbols.push_back({static_cast<std::uint16_t>(symbol), counts[symbol]});
        counts.fill(0);
        begin = cell.End;
        cells.push_back(std::move(cell));
        cell = Cell{};
        cell.End = begin;
    }
    return cells;
}

// A run of cells that grows at its end, and its estimated size as one block.
class GrowingBlock {
 public:
    explicit GrowingBlock(std::uint32_t begin) : begin_(begin) {}

    void Add(const Cell& cell, const EntropyTerms& entropy) {
        // CutIntoCells has used every symbol of a cell as an index of such an array, so the innermost loop
        // needs no check. Its sums are locals, because the compiler must assume that a write to a count
        // changes a member, and a symbol adds to the sum once, because each addition waits for the one
        // before.
        std::uint32_t* const countOf = counts_.data();
        std::uint32_t used = used_;
        float symbolSum = symbolSum_;
        for (const SymbolCount& symbol : cell.Symbols) {
            std::uint32_t& count = countOf[symbol.Symbol];
            used += count == 0 ? 1 : 0;
            const std::uint32_t grown = count + symbol.Count;
            symbolSum += entropy(grown) - entropy(count);
            count = grown;
        }
        used_ = used;
        symbolSum_ = symbolSum;
        mainTotal_ += cell.MainTotal;
        lengthTotal_ += cell.LengthTotal;
        extraBits_ += cell.ExtraBits;
        end_ = cell.End;
    }

    float Bits(const EntropyTerms& entropy) const {
        const float coded = entropy(mainTotal_) + entropy(lengthTotal_) - symbolSum_ +
                            static_cast<float>(extraBits_) + kHeaderBits +
                            kHeaderBitsPerSymbol * static_cast<float>(used_);
        return std::min(coded, static_cast<float>(UncompressedBits(end_ - begin_)));
    }

 private:
    std::uint32_t begin_;
    std::uint32_t end_ = 0;
    std::array<std::uint32_t, kSymbols> counts_{};
    std::uint32_t mainTotal_ = 0;
    std::uint32_t lengthTotal_ = 0;
    std::uint32_t extraBits_ = 0;
    std::uint32_t used_ = 0;
    float symbolSum_ = 0;
};

}  // namespace

std::vector<BlockSpan> SplitIntoBlocks(std::span<const Item> items) {
    const EntropyTerms entropy;
    const std::vector<Cell> cells = CutIntoCells(items);
    const auto beginOf = [&](std::size_t cell) { return cell > 0 ? cells[cell - 1].End : 0; };
    const auto firstItemOf = [&](std::size_t cell) { return cell > 0 ? cells[cell - 1].EndItem : 0; };
    struct Border {
        float Bits = std::numeric_limits<float>::max();
        std::size_t From = 0;
    };
    std::vector<Border> borders(cells.size() + 1);
    borders[0].Bits = 0;
    for (std::size_t from = 0; from < cells.size(); ++from) {
        GrowingBlock block(beginOf(from));
        for (std::size_t to = from + 1; to <= std::min(cells.size(), from + kMaxCells); ++to) {
            block.Add(cells[to - 1], entropy);
            const float bits = borders[from].Bits + block.Bits(entropy);
            if (bits < borders[to].Bits) borders[to] = {bits, from};
        }
    }
    std::vector<BlockSpan> blocks;
    for (std::size_t end = cells.size(); end > 0; end = borders[end].From) {
        const std::size_t from = borders[end].From;
        blocks.push_back({firstItemOf(from), firstItemOf(end), beginOf(from), beginOf(end)});
    }
    std::reverse(blocks.begin(), blocks.end());
    return blocks;
}

}  // namespace tools::cabarc::lzx
