#pragma once
// The method NONE: the payload of each data record is the frame itself.

#include "tools/cabarc/FrameCompressor.h"

namespace tools::cabarc {

/// The sink must outlive the object.
class StoredCompressor : public FrameCompressor {
 public:
    explicit StoredCompressor(BlockSink& sink) : sink_(sink) {}

 private:
    void CompressFrame(std::span<const std::uint8_t> frame, std::span<const std::uint8_t>) override {
        sink_.PutBlock(frame, static_cast<std::uint16_t>(frame.size()));
    }

    BlockSink& sink_;
};

}  // namespace tools::cabarc
