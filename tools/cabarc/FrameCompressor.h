#pragma once
// Base of the compressors that treat a folder frame by frame: it cuts the stream into frames and keeps the
// one before, which is all the history that MSZIP can refer to. LZX, whose window is larger, has a buffer of
// its own.

#include <vector>

#include "tools/cabarc/FolderCompressor.h"

namespace tools::cabarc {

/// Holds two frames of kFrameSize bytes.
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
