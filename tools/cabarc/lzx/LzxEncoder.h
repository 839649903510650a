#pragma once
// LZX compression of one cabinet folder: the codec as the cabinet sees it.
//
//     folder -> E8 translation -> SegmentParser (match finder, optimal parser, splitter) -> Segment
//            -> BlockWriter (planner, bits) -> frames -> the cabinet
//
// The encoder buffers the start of the folder to decide about E8 translation, then slides its window over
// the whole folder and hands over a segment's frames whenever one is ready. Memory stays under 48 MiB for
// the largest window, whatever the folder's size. The output depends on the folder's bytes, the window and
// the options alone: not on how the bytes arrive, and not on the machine.

#include <memory>

#include "tools/cabarc/FolderCompressor.h"
#include "tools/cabarc/lzx/SegmentParser.h"

namespace tools::cabarc::lzx {

class BlockWriter;

/// Compresses one folder of up to kMaxFolderBytes bytes (CabinetDirectory.h). Where speed counts more than
/// size, MSZIP is the better method.
class LzxEncoder final : public FolderCompressor {
 public:
    /// Bytes in the buffer beside the window: two segments, so that the one being packed can always see past
    /// its end.
    static constexpr std::uint32_t kAheadBytes = 2 * SegmentParser::kMaxBytes;

    /// `windowBits` is 15 to 21 and each option within its bounds (std::invalid_argument otherwise); `sink`
    /// outlives the encoder, and its errors pass through Write and Finish.
    LzxEncoder(int windowBits, const LzxOptions& options, RecordSink& sink);
    ~LzxEncoder() override;
    LzxEncoder(const LzxEncoder&) = delete;
    LzxEncoder& operator=(const LzxEncoder&) = delete;

    /// Buffers `bytes` and packs whenever the buffer is full. The folder must not exceed its size limit, as
    /// positions have 32 bits.
    void Write(std::span<const std::uint8_t> bytes) override;
    /// Packs what is left. The last frame may be shorter than the others; a folder without a byte has no
    /// frame.
    void Finish() override;

 private:
    void Start();
    void Encode(bool last);
    void DropHistory();

    int windowBits_;
    RecordSink& sink_;
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
