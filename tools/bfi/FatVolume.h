#pragma once
// The bytes of a floppy with a FAT12 file system while it is being filled. Space is given out from the start
// of the data area and never taken back, so that every file and folder lies in one piece, as old boot sectors
// need it.

#include <cstdint>
#include <span>
#include <vector>

#include "tools/bfi/BootSector.h"
#include "tools/bfi/Geometry.h"

namespace tools::bfi {

class FatVolume {
 public:
    /// A formatted volume without files, all zero but for the start of its allocation table.
    explicit FatVolume(const Geometry& geometry);

    /// Reserves room for `bytes` bytes in consecutive clusters and returns the first one's number, or 0 for 0
    /// bytes. The caller has checked that the volume has room.
    std::uint32_t Allocate(std::uint64_t bytes);

    /// Returns `bytes` bytes of the data area from the start of `cluster`, as long as the volume lives.
    std::span<std::uint8_t> Data(std::uint32_t cluster, std::size_t bytes);

    /// Returns the root directory's sectors, as long as the volume lives.
    std::span<std::uint8_t> RootDirectory();

    /// Copies the allocation table, puts the boot sector in and returns the image. The serial number is
    /// made from all other bytes, so that the same contents always give the same image. To be called once,
    /// last.
    const std::vector<std::uint8_t>& Finish(const BootSector& bootSector);

 private:
    void SetFatEntry(std::uint32_t cluster, std::uint32_t value);

    const Geometry& geometry_;
    std::vector<std::uint8_t> image_;
    std::uint32_t nextCluster_ = kFirstCluster;
};

}  // namespace tools::bfi
