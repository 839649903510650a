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

/// Borders are tried every this many bytes. Twice as many bytes cost 0.04 % of the size of the reference
/// sets; borders are rarely worth more precision than this.
constexpr std::uint32_t kCellBytes = 2048;

/// The longest block, in cells, that is considered: the headers of two blocks this long are a small
/// fraction of a percent of their items, so a longer block would save next to nothing.
constexpr std::size_t kMaxCells = 128;

/// A run of items that becomes one block, and the bytes that it stands for. Both ranges are half-open:
/// EndItem and End are the first that no longer belong to it.
struct BlockSpan {
    std::size_t FirstItem = 0;  ///< 0-based, in the items of the segment
    std::size_t EndItem = 0;
    std::uint32_t Begin = 0;  ///< in bytes from the start of the segment
    std::uint32_t End = 0;

    /// Returns the uncompressed size of the block.
    std::uint32_t Bytes() const { return End - Begin; }
    /// Returns its part of `segment`, the items of the whole segment.
    std::span<const Item> ItemsIn(std::span<const Item> segment) const {
        return segment.subspan(FirstItem, EndItem - FirstItem);
    }
    friend bool operator==(const BlockSpan&, const BlockSpan&) = default;
};

/// Returns the blocks of a segment whose items are `items`, in order and without gaps; none is empty, and
/// none is longer than kMaxCells cells. Without items there is no block. Takes time in proportion to the
/// number of cells times kMaxCells, and memory for the different symbols of every cell.
std::vector<BlockSpan> SplitIntoBlocks(std::span<const Item> items);

}  // namespace tools::cabarc::lzx
