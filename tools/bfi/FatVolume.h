#pragma once
// A floppy with a FAT12 file system while it is being filled. Space is given out from the start of the data
// area and never taken back, so that every file and folder lies in one piece: old boot sectors read IO.SYS
// without looking at the allocation table. The data go to the image as they come, small files together; what
// lies before them (boot sector, allocation tables, root directory) is kept in memory until the end.
// docs/formats/fat12.md describes the layout.

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "floppy/Geometry.h"
#include "tools/bfi/BootSector.h"
#include "tools/bfi/Fingerprint.h"
#include "tools/shared/OutputFile.h"

namespace tools::bfi {

class FatVolume {
 public:
    /// A formatted volume without files, all zero except for the start of its allocation table. `image` is
    /// empty; it and `geometry` must outlive the volume.
    FatVolume(const floppy::Geometry& geometry, OutputFile& image);

    /// Reserves consecutive clusters for `bytes` bytes and returns the first one's number (from 2 on), or 0
    /// for 0 bytes. The caller has checked that the volume has that many (RequireSpace in SourceTree.h).
    std::uint32_t Allocate(std::uint64_t bytes);

    /// Stores `size` bytes from the start of `cluster` on, which Allocate has reserved for them; `fill` gets
    /// the place for them and writes every byte of it. The rest of the last cluster becomes zero. Each
    /// cluster is stored once. Throws ToolError when the image cannot be written, and what `fill` throws.
    void Store(std::uint32_t cluster, std::size_t size,
               const std::function<void(std::span<std::uint8_t>)>& fill);

    /// Returns the bytes of the root directory, zero until the caller fills them, valid as long as the
    /// volume lives.
    std::span<std::uint8_t> RootDirectory();

    /// Copies the allocation table, puts the boot sector in and completes the image. The serial number is
    /// computed from all other bytes, so that the same contents always give the same image. To be called
    /// once, last; the caller commits the image. Throws ToolError when the image cannot be written.
    void Finish(const BootSector& bootSector);

 private:
    /// Returns where a cluster begins in the image, in bytes.
    std::uint64_t OffsetOf(std::uint32_t cluster) const;
    void WriteGathered();
    void SetFatEntry(std::uint32_t cluster, std::uint32_t value);

    const floppy::Geometry& geometry_;
    OutputFile& image_;
    std::vector<std::uint8_t> head_;  // all sectors before the data area
    std::uint32_t nextCluster_ = floppy::kFirstCluster;
    std::vector<std::uint8_t> gathered_;  // its first gatheredBytes_ bytes are not written yet
    std::size_t gatheredBytes_ = 0;       // whole clusters
    std::uint64_t gatheredOffset_ = 0;    // where they go in the image, in bytes
    Fingerprint contents_;
};

}  // namespace tools::bfi
