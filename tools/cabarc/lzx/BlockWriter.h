#pragma once
// Turns the blocks of one segment into frames: has them planned, writes headers and items, cuts the bits at
// frame borders, and makes sure that no frame becomes larger than readers accept.
//
// A segment is written as a whole before the sink sees a frame of it, because a frame that turns out too
// large changes the blocks around it. Frames and blocks are independent divisions: a block may span many
// frames, and a frame may hold the ends of several blocks.

#include <cstdint>
#include <span>
#include <vector>

#include "tools/cabarc/FolderCompressor.h"
#include "tools/cabarc/lzx/BitWriter.h"
#include "tools/cabarc/lzx/BlockPlanner.h"
#include "tools/cabarc/lzx/BlockSplitter.h"
#include "tools/cabarc/lzx/Item.h"

namespace tools::cabarc::lzx {

/// A segment that is ready to be written: it starts at a frame border and ends at one or at the end of the
/// folder. The caller keeps what it refers to until Write has returned.
struct Segment {
    std::span<const std::uint8_t> Bytes;  ///< as they are compressed (after E8 translation)
    std::span<const Item> Items;          ///< none crosses a frame border
    std::span<const BlockSpan> Blocks;    ///< in order, without gaps; a border is between two items
};

/// Writes one folder. Between two segments it holds the recent offsets and whether the folder's first bit
/// has been sent; the code lengths that the decoder holds are the planner's.
class BlockWriter {
 public:
    /// For a folder with a window of 2^windowBits bytes. `translationSize` (bytes) is announced at the
    /// start of the folder; 0 = no E8 translation. The sink must outlive this object.
    BlockWriter(int windowBits, std::uint32_t translationSize, RecordSink& sink);

    /// Writes the next segment of the folder and gives its frames to the sink in order. Throws only what
    /// the sink throws; then the folder is lost, as some of its frames have been taken.
    void Write(const Segment& segment);

 private:
    struct Frame {
        std::vector<std::uint8_t> Payload;
        std::uint32_t Size = 0;
    };

    void WriteBlocks(const Segment& segment, std::span<const BlockPlan> plans);
    void WriteUncompressed(const Segment& segment, const BlockSpan& span);
    void WriteCoded(const Segment& segment, const BlockPlan& plan);
    void WriteItems(std::span<const Item> items, const CodeLengths& codes, BlockType type);
    void Advance(std::uint32_t bytes);
    void EndFrame();

    std::uint32_t translationSize_;
    RecordSink& sink_;
    bool startWritten_ = false;
    BlockPlanner planner_;
    RecentOffsets recent_;  ///< after what is written
    BitWriter bits_;
    std::uint32_t inFrame_ = 0;  ///< bytes of the current frame that bits_ stands for
    std::vector<Frame> frames_;
};

}  // namespace tools::cabarc::lzx
