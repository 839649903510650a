#include "tools/cabarc/lzx/BlockSplitter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "tools/cabarc/lzx/BlockCodes.h"

namespace tools::cabarc::lzx {

namespace {

// Borders are tried every so many bytes. Twice as many bytes cost 0.04 % of the size of the reference sets;
// borders are rarely worth more precision than this.
constexpr std::uint32_t kCellBytes = 2048;
// The longest block, in cells, that is considered: the sum of the trees of two blocks this long is a small
// fraction of a percent of their items.
constexpr std::size_t kMaxCells = 128;

// What a header costs: a fixed part for the three pretrees and so much for each symbol that occurs. Of 2, 3,
// 4 and 5 bits per symbol, 4 gives the smallest reference sets (2 gives 0.4 % more).
constexpr float kHeaderBits = 300.0F;
constexpr float kHeaderBitsPerSymbol = 4.0F;

// The other way out: an uncompressed block, which pays for padding and three repeat offsets.
constexpr float kRawHeaderBits = 105.0F;

// Main and length symbols share one numbering here.
constexpr std::size_t kSymbols = kMaxMainSymbols + kLengthSymbols;

// n * log2(n), from a table for the counts that are common.
class Entropy {
 public:
    Entropy() {
        for (std::size_t n = 1; n < table_.size(); ++n) table_[n] = Compute(static_cast<float>(n));
    }
    float operator()(std::uint32_t n) const {
        return n < table_.size() ? table_.data()[n] : Compute(static_cast<float>(n));
    }

 private:
    static float Compute(float n) { return n * std::log2(n); }
    std::array<float, 4096> table_{};
};

struct SymbolCount {
    std::uint16_t Symbol;
    std::uint16_t Count;
};

// The items between two neighbouring border candidates.
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

}  // namespace

std::vector<BlockSpan> SplitIntoBlocks(std::span<const Item> items) {
    const Entropy entropy;
    const std::vector<Cell> cells = CutIntoCells(items);
    struct Border {
        float Bits = std::numeric_limits<float>::max();
        std::size_t From = 0;
    };
    std::vector<Border> borders(cells.size() + 1);
    borders[0].Bits = 0;
    std::array<std::uint32_t, kSymbols> counts;
    // Every symbol of a cell was an index of such an array before: the innermost loop needs no check.
    std::uint32_t* const countOf = counts.data();
    for (std::size_t from = 0; from < cells.size(); ++from) {
        counts.fill(0);
        std::uint32_t mainTotal = 0;
        std::uint32_t lengthTotal = 0;
        std::uint32_t extraBits = 0;
        std::uint32_t used = 0;
        float symbolSum = 0;
        for (std::size_t to = from; to < std::min(cells.size(), from + kMaxCells); ++to) {
            const Cell& cell = cells[to];
            for (const SymbolCount& symbol : cell.Symbols) {
                std::uint32_t& count = countOf[symbol.Symbol];
                used += count == 0 ? 1 : 0;
                symbolSum -= entropy(count);
                count += symbol.Count;
                symbolSum += entropy(count);
            }
            mainTotal += cell.MainTotal;
            lengthTotal += cell.LengthTotal;
            extraBits += cell.ExtraBits;
            const float coded = entropy(mainTotal) + entropy(lengthTotal) - symbolSum +
                                static_cast<float>(extraBits) + kHeaderBits +
                                kHeaderBitsPerSymbol * static_cast<float>(used);
            const std::uint32_t bytes = cell.End - (from > 0 ? cells[from - 1].End : 0);
            const float raw = kRawHeaderBits + 8.0F * static_cast<float>(bytes);
            const float bits = borders[from].Bits + std::min(coded, raw);
            if (bits < borders[to + 1].Bits) borders[to + 1] = {bits, from};
        }
    }
    std::vector<BlockSpan> blocks;
    for (std::size_t end = cells.size(); end > 0; end = borders[end].From) {
        const std::size_t from = borders[end].From;
        blocks.push_back({from > 0 ? cells[from - 1].EndItem : 0, cells[end - 1].EndItem,
                          from > 0 ? cells[from - 1].End : 0, cells[end - 1].End});
    }
    std::reverse(blocks.begin(), blocks.end());
    return blocks;
}

}  // namespace tools::cabarc::lzx
