#pragma once
// The method NONE: each frame is its own data record.

#include "tools/cabarc/FrameCompressor.h"

namespace tools::cabarc {

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
