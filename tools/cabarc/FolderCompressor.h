#pragma once
// The seam between the cabinet container and its compression methods. A cabinet folder is one long stream of
// bytes (the files of the folder back to back, at most 0x7FFF8000 bytes); a compressor cuts it into frames
// of 32768 bytes and hands each frame, compressed, to the container as the payload of one CFDATA record.
// Everything streams: a compressor holds its window and a fixed amount in addition, never the folder, so
// that memory is bounded for a folder of any size.

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace tools::cabarc {

/// Uncompressed bytes that every data record of a folder but the last stands for; the last may stand for
/// less.
constexpr std::size_t kFrameSize = 32768;

/// Receives the data records of a folder in their order. The container implements it.
class RecordSink {
 public:
    virtual ~RecordSink() = default;

    /// Takes one CFDATA record: its compressed bytes (copied or written before the call returns) and the
    /// number of bytes that they expand to, 1 to kFrameSize. Throws ToolError when the cabinet cannot take
    /// it (disk full, too big).
    virtual void PutRecord(std::span<const std::uint8_t> payload, std::uint16_t uncompressedSize) = 0;
};

/// Compresses one folder into a sink that outlives it. A new object is a new folder: no state is carried
/// over. An object that is destroyed before Finish() leaves the folder incomplete and gives the sink nothing
/// more. What the sink throws passes through Write and Finish; the object is of no further use then.
class FolderCompressor {
 public:
    virtual ~FolderCompressor() = default;

    /// Appends bytes to the folder's stream. Calls of any size, zero included, give the same records as one
    /// big call.
    virtual void Write(std::span<const std::uint8_t> bytes) = 0;

    /// Ends the stream and hands the remaining records to the sink; a folder without a byte has no record. To
    /// be called once, last.
    virtual void Finish() = 0;
};

/// Base of the compressors that treat a folder frame by frame: it cuts the stream into frames and keeps the
/// one before, which is all the history that MSZIP can refer to; LZX, whose window is larger, has a buffer of
/// its own. Holds two frames of kFrameSize bytes.
class FrameCompressor : public FolderCompressor {
 public:
    /// Calls CompressFrame for every full frame at once, and for what is left at the end.
    void Write(std::span<const std::uint8_t> bytes) final;
    void Finish() final;

 protected:
    FrameCompressor();

    /// Compresses one frame of 1 to kFrameSize bytes and gives its record to the sink, whose errors pass
    /// through. `previous` is the frame before it, empty for the first one and otherwise full. Both are
    /// valid during the call.
    virtual void CompressFrame(std::span<const std::uint8_t> frame,
                               std::span<const std::uint8_t> previous) = 0;

 private:
    std::vector<std::uint8_t> frame_;
    std::vector<std::uint8_t> previous_;
};

}  // namespace tools::cabarc
