#include "tools/cabarc/FolderCompressor.h"

#include <algorithm>

namespace tools::cabarc {

FrameCompressor::FrameCompressor() {
    frame_.reserve(kFrameSize);
    previous_.reserve(kFrameSize);
}

void FrameCompressor::Write(std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const std::size_t taken = std::min(bytes.size(), kFrameSize - frame_.size());
        frame_.insert(frame_.end(), bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(taken));
        bytes = bytes.subspan(taken);
        if (frame_.size() == kFrameSize) {
            CompressFrame(frame_, previous_);
            frame_.swap(previous_);
            frame_.clear();
        }
    }
}

void FrameCompressor::Finish() {
    if (!frame_.empty()) CompressFrame(frame_, previous_);
}

}  // namespace tools::cabarc
