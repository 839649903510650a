#pragma once
// Turns the blocks of one segment into frames: picks each block's type by price, writes headers and items,
// cuts the bits at frame borders, and makes sure that no frame becomes larger than readers accept.

#include <cstdint>
#include <span>
#include <vector>

#include "tools/cabarc/FolderCompressor.h"
#include "tools/cabarc/lzx/BitWriter.h"
#include "tools/cabarc/lzx/BlockCodes.h"
#include "tools/cabarc/lzx/BlockSplitter.h"
#include "tools/cabarc/lzx/Item.h"

namespace tools::cabarc::lzx {

/// A segment that is ready to be written: it starts at a frame border and ends at one or at the end of the
/// folder.
struct Segment {
    std::span<const std::uint8_t> Bytes;  ///< as they are compressed (after E8 translation)
    std::span<const Item> Items;
    std::vector<BlockSpan> Blocks;
};

class BlockWriter {
 public:
    /// `translationSize` is announced at the start of the folder; 0 = no E8 translation. The sink outlives
    /// this.
    BlockWriter(int windowBits, std::uint32_t translationSize, BlockSink& sink);

    /// Writes the next segment of the folder and gives its frames to the sink.
    void Write(const Segment& segment);

 private:
    struct Block {
        BlockSpan Span;
        bool Raw = false;  ///< to be stored as bytes
    };
    struct Frame {
        std::vector<std::uint8_t> Payload;
        std::uint32_t Size = 0;
    };
    /// What a segment starts from; kept so that it can be written again.
    struct State {
        CodeLengths Codes;
        RepeatQueue Queue;
    };

    std::vector<Block> ChooseRawBlocks(const Segment& segment) const;
    static std::vector<Block> StoreFrame(const Segment& segment, const std::vector<Block>& blocks,
                                         std::uint32_t begin, std::uint32_t end);
    void WriteBlocks(const Segment& segment, const std::vector<Block>& blocks);
    void WriteRaw(const Segment& segment, const BlockSpan& span);
    void WriteCoded(const Segment& segment, const BlockSpan& span);
    void WriteItems(std::span<const Item> items, const CodeLengths& codes, BlockType type);
    void Advance(std::uint32_t bytes);
    void EndFrame();

    std::size_t mainSymbols_;
    std::uint32_t translationSize_;
    BlockSink& sink_;
    bool startWritten_ = false;
    State state_;
    BitWriter bits_;
    std::uint32_t inFrame_ = 0;  ///< bytes of the running frame that bits_ stands for
    std::vector<Frame> frames_;
};

}  // namespace tools::cabarc::lzx
