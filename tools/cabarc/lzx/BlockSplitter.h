#pragma once
// Decides where one block ends and the next begins: a block pays for its code lengths, but codes that fit a
// short stretch make its items cheaper.
//
// The borders are those of the cheapest sequence of blocks under an estimate of each block's size, at a
// precision of kCellBytes. The estimate knows neither the block before (whose code lengths make the next
// header cheaper) nor whole bits; BlockPlanner.h prices the chosen blocks exactly.

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "tools/cabarc/lzx/Item.h"

namespace tools::cabarc::lzx {

/// Borders are tried every so many bytes. Twice as many bytes cost 0.04 % of the size of the reference sets;
/// borders are rarely worth more precision than this.
constexpr std::uint32_t kCellBytes = 2048;

/// The longest block, in cells, that is considered: the sum of the code lengths of two blocks this long is a
/// small fraction of a percent of their items.
constexpr std::size_t kMaxCells = 128;

/// A run of items that makes one block, and the bytes it stands for (counted from the start of the segment).
struct BlockSpan {
    std::size_t FirstItem = 0;
    std::size_t EndItem = 0;
    std::uint32_t Begin = 0;
    std::uint32_t End = 0;

    std::uint32_t Bytes() const { return End - Begin; }
    std::span<const Item> ItemsIn(std::span<const Item> segment) const {
        return segment.subspan(FirstItem, EndItem - FirstItem);
    }
    friend bool operator==(const BlockSpan&, const BlockSpan&) = default;
};

/// Returns the blocks of a segment, in order and without gaps; none is empty. No items give no blocks. Takes
/// time in proportion to the number of cells times kMaxCells.
std::vector<BlockSpan> SplitIntoBlocks(std::span<const Item> items);

}  // namespace tools::cabarc::lzx
