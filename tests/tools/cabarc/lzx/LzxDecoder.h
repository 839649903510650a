#pragma once
// A decoder of LZX folders for the tests, written from the format alone and without any code of the encoder.
// It is stricter than every known reader: what any of them rejects, it rejects.

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "tools/cabarc/FolderCompressor.h"

namespace tools::cabarc::lzx::testing {

/// A folder as its compressor has delivered it.
class FrameCollector : public tools::cabarc::RecordSink {
 public:
    struct Frame {
        std::vector<std::uint8_t> Payload;
        std::size_t Size = 0;
    };

    void PutRecord(std::span<const std::uint8_t> payload, std::uint16_t uncompressedSize) override {
        Frames.push_back({{payload.begin(), payload.end()}, uncompressedSize});
    }

    /// Bytes of all payloads.
    std::size_t PackedSize() const;

    std::vector<Frame> Frames;
};

/// How often each type of block occurs in a folder, and whether its calls were translated.
struct LzxContents {
    std::size_t Verbatim = 0;
    std::size_t Aligned = 0;
    std::size_t Uncompressed = 0;
    bool Translated = false;
};

/// Decodes a folder and returns its bytes. Throws std::runtime_error that says what is wrong with it. Fills
/// `contents` when given.
std::vector<std::uint8_t> DecodeLzx(const std::vector<FrameCollector::Frame>& frames, int windowBits,
                                    LzxContents* contents = nullptr);

/// Reads one list of code lengths, with its pretree, from the start of `payload`. `lengths` are those of the
/// block before and become those that are read. Returns the number of bits that the list takes. Throws
/// std::runtime_error that says what is wrong with it.
std::size_t DecodeCodeLengths(std::span<const std::uint8_t> payload, std::span<std::uint8_t> lengths);

}  // namespace tools::cabarc::lzx::testing
