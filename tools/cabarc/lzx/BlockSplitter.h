#pragma once
// Decides where one block ends and the next begins: a block pays for its trees, but trees that fit a short
// stretch make its items cheaper. The borders are those of the cheapest sequence of blocks, found by dynamic
// programming over cells of a few kilobytes.

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "tools/cabarc/lzx/Item.h"

namespace tools::cabarc::lzx {

/// A run of items that makes one block, and the bytes it stands for (counted from the start of the segment).
struct BlockSpan {
    std::size_t FirstItem = 0;
    std::size_t EndItem = 0;
    std::uint32_t Begin = 0;
    std::uint32_t End = 0;
};

/// Returns the blocks of a segment, in order and without gaps; none is empty. No items give no blocks.
std::vector<BlockSpan> SplitIntoBlocks(std::span<const Item> items);

}  // namespace tools::cabarc::lzx
