#pragma once
// The image that a run has built: how much of it is used.

#include <cstdint>
#include <optional>
#include <string>

namespace velbooter {

/// The data area of a disk, in bytes.
struct DiskUse {
    std::uint64_t Used = 0;  ///< taken by files and folders, in whole clusters
    std::uint64_t Size = 0;  ///< all of it
};

/// Reads the image at `path`. Returns nothing when it cannot be read or has not the length of a floppy
/// format.
std::optional<DiskUse> UseOfImage(const std::string& path);

}  // namespace velbooter
