#pragma once
// LZX compression of one cabinet folder: the codec as the cabinet sees it.
//
//     folder -> E8 translation -> SegmentParser (match finder, optimal parser, splitter) -> Segment
//            -> BlockWriter (planner, bits) -> frames -> the cabinet
//
// The encoder buffers the start of the folder to decide about E8 translation, then slides its window over the
// whole folder and hands over a segment's frames whenever one is ready. Memory stays under 48 MiB for the
// largest window. The output depends on the folder's bytes, the window and the options alone: not on how the
// bytes arrive, and not on the machine.

#include <memory>

#include "tools/cabarc/FolderCompressor.h"
#include "tools/cabarc/lzx/SegmentParser.h"

namespace tools::cabarc::lzx {

class BlockWriter;

class LzxEncoder final : public FolderCompressor {
 public:
    /// Bytes in the buffer beside the window: two segments, so that the one in work can always see past its
    /// end.
    static constexpr std::uint32_t kAheadBytes = 2 * SegmentParser::kMaxBytes;

    /// `windowBits` is 15 to 21 and each option within its bounds (std::invalid_argument otherwise); `sink`
    /// outlives the encoder, and its errors pass through Write and Finish.
    LzxEncoder(int windowBits, const LzxOptions& options, BlockSink& sink);
    ~LzxEncoder() override;
    LzxEncoder(const LzxEncoder&) = delete;
    LzxEncoder& operator=(const LzxEncoder&) = delete;

    void Write(std::span<const std::uint8_t> bytes) override;
    void Finish() override;

 private:
    void Start();
    void Encode(bool last);
    void DropHistory();

    int windowBits_;
    BlockSink& sink_;
    SegmentParser parser_;
    std::unique_ptr<BlockWriter> writer_;  ///< exists once the translation is decided
    bool translate_ = false;
    std::size_t capacity_;
    std::vector<std::uint8_t> buffer_;
    std::uint32_t bufferStart_ = 0;  ///< folder position of the first byte in the buffer
    std::uint32_t position_ = 0;     ///< folder position of the first byte that is not packed yet
    std::uint32_t ready_ = 0;        ///< folder position up to which frames are complete and translated
};

}  // namespace tools::cabarc::lzx
