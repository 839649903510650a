#pragma once
// Chooses the compressor of a method. Only this pair of files knows all of them; the packer knows
// FolderCompressor.

#include <memory>

#include "tools/cabarc/FolderCompressor.h"
#include "tools/cabarc/Method.h"

namespace tools::cabarc {

/// The method NONE: the payload of each data record is the frame itself. The sink must outlive the object.
class StoredCompressor : public FrameCompressor {
 public:
    explicit StoredCompressor(RecordSink& sink) : sink_(sink) {}

 private:
    void CompressFrame(std::span<const std::uint8_t> frame, std::span<const std::uint8_t>) override {
        sink_.PutRecord(frame, static_cast<std::uint16_t>(frame.size()));
    }

    RecordSink& sink_;
};

/// Returns a compressor for one folder, which hands its records to `sink`; that must outlive it. Throws
/// std::invalid_argument for an LZX window that the format does not have; ParseMethod never returns one.
std::unique_ptr<FolderCompressor> MakeCompressor(const Method& method, RecordSink& sink);

}  // namespace tools::cabarc
