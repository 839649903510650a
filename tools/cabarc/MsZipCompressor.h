#pragma once
// The method MSZIP: each frame is "CK" and one complete raw deflate stream (RFC 1951) that may refer back
// into the frame before it, so that the 32 KiB of history run through the whole folder. zlib does the
// deflating.

#include <memory>
#include <vector>

#include "tools/cabarc/FolderCompressor.h"

namespace tools::cabarc {

/// Packs each frame in several ways and keeps the shortest. A payload has at most 32775 bytes, those of a
/// stored frame.
class MsZipCompressor : public FrameCompressor {
 public:
    /// The sink must outlive this object. Throws std::bad_alloc when zlib cannot start.
    explicit MsZipCompressor(RecordSink& sink);
    ~MsZipCompressor() override;
    MsZipCompressor(const MsZipCompressor&) = delete;
    MsZipCompressor& operator=(const MsZipCompressor&) = delete;

 private:
    void CompressFrame(std::span<const std::uint8_t> frame, std::span<const std::uint8_t> previous) override;

    /// Puts the frame into payload_ uncompressed.
    void PutStored(std::span<const std::uint8_t> frame);

    class Deflater;
    RecordSink& sink_;
    std::vector<std::unique_ptr<Deflater>> deflaters_;
    std::vector<std::uint8_t> payload_;  ///< the shortest record so far
    std::vector<std::uint8_t> trial_;
};

}  // namespace tools::cabarc
