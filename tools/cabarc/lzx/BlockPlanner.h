#pragma once
// Plans the blocks of a segment, so that the writer only writes: for each block its type, its codes and its
// encoded code lengths, computed once. Types are chosen by exact prices of all three.
//
// A plan depends on the coded block before it, whose code lengths the encoded ones are differences from.
// When a border moves, the block whose items changed is planned again, and the one after it has its code
// lengths encoded again; all others keep their plans.

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "tools/cabarc/lzx/BlockCodes.h"
#include "tools/cabarc/lzx/BlockSplitter.h"
#include "tools/cabarc/lzx/EncodedCodeLengths.h"
#include "tools/cabarc/lzx/Item.h"

namespace tools::cabarc::lzx {

/// The three lists of code lengths in the header of a coded block, each with a pretree of its own.
struct EncodedTrees {
    /// Encodes `codes` for a decoder that holds `before`, with the main symbols that the window has.
    EncodedTrees(const CodeLengths& before, const CodeLengths& codes, std::size_t mainSymbols);

    /// Returns the size of the three lists in the stream, in bits.
    std::uint32_t Bits() const { return Literals.Bits() + Matches.Bits() + Lengths.Bits(); }
    /// Appends exactly Bits() bits to `writer`.
    void Write(BitWriter& writer) const;

    /// The main tree has two lists, which runs do not cross: its literals and its matches.
    EncodedCodeLengths Literals;
    EncodedCodeLengths Matches;
    EncodedCodeLengths Lengths;
};

/// One block as it will be written.
struct BlockPlan {
    /// The items, and the bytes that they stand for.
    BlockSpan Span;
    BlockType Type = BlockType::Uncompressed;
    CodeLengths Codes;                  ///< of a coded block
    std::optional<EncodedTrees> Trees;  ///< of a coded block; none while it still has to be planned

    bool IsCoded() const { return Type != BlockType::Uncompressed; }
};

/// Plans one folder, segment by segment. Its only state between segments is what the decoder holds; to plan
/// a segment does not change it, so a plan may be thrown away until Commit.
class BlockPlanner {
 public:
    /// For a folder with a window of 2^windowBits bytes.
    explicit BlockPlanner(int windowBits);

    /// Returns the plans of the next segment's blocks, in order and without gaps. `blocks` are those of
    /// SplitIntoBlocks. Neighbouring blocks that are cheapest uncompressed become one. An uncompressed
    /// block begins and ends at even places, except at the end of the folder: the borders of `blocks` are
    /// moved by some items where that is needed.
    std::vector<BlockPlan> Plan(std::span<const Item> items, std::span<const BlockSpan> blocks) const;

    /// Returns the plans with the bytes from `begin` to `end` (one frame, or the rest of the segment) as an
    /// uncompressed block of their own; the blocks that they were in keep their other items. The places are
    /// in bytes from the start of the segment; `begin` is a frame border.
    std::vector<BlockPlan> StoreFrame(std::span<const Item> items, std::vector<BlockPlan> plans,
                                      std::uint32_t begin, std::uint32_t end) const;

    /// Takes over what the decoder holds after these blocks, the last plans of their segment: the next
    /// segment is planned from there.
    void Commit(std::span<const BlockPlan> plans);

 private:
    void Replan(std::span<const Item> items, std::vector<BlockPlan>& plans) const;

    std::size_t mainSymbols_;
    CodeLengths before_;  ///< what the decoder holds at the start of the segment
};

}  // namespace tools::cabarc::lzx
