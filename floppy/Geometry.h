#pragma once
// The floppy formats that an image can have, with a FAT12 file system. The program and the image tool use the
// same numbers. docs/formats/fat12.md has the layouts in a table.

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace floppy {

/// Bytes of a sector and of a directory entry of every FAT file system on a floppy.
constexpr std::size_t kSectorBytes = 512;
constexpr std::size_t kDirectoryEntryBytes = 32;
/// Number of UTF-16 units of a long name that one directory entry holds.
constexpr std::size_t kUnitsPerLongNamePart = 13;
/// What all formats have in common: sectors before the first FAT (the boot sector), copies of the FAT, and
/// the number of the first cluster.
constexpr std::uint32_t kReservedSectors = 1;
constexpr std::uint32_t kFatCopies = 2;
constexpr std::uint32_t kFirstCluster = 2;

/// A floppy format; sectors are counted from 0 at the boot sector, clusters from 2 at the data area.
struct Geometry {
    const char* Type;  ///< how a command line asks for it: "144"
    const char* Name;  ///< for messages: "1.44 MB"
    std::uint32_t Cylinders;
    std::uint32_t Heads;
    std::uint32_t SectorsPerTrack;
    std::uint32_t SectorsPerCluster;
    std::uint32_t RootEntries;
    std::uint32_t SectorsPerFat;  ///< of one copy
    std::uint8_t MediaByte;       ///< of the boot sector; its bits are also in FAT entry 0

    /// Derived numbers: all sectors, the first sector of the root directory and of the data area, the
    /// clusters of the data area, the bytes of a cluster and of the whole image.
    constexpr std::uint32_t TotalSectors() const { return Cylinders * Heads * SectorsPerTrack; }
    constexpr std::uint32_t RootSector() const { return kReservedSectors + kFatCopies * SectorsPerFat; }
    constexpr std::uint32_t DataSector() const {
        return RootSector() + static_cast<std::uint32_t>(RootEntries * kDirectoryEntryBytes / kSectorBytes);
    }
    constexpr std::uint32_t DataClusters() const {
        return (TotalSectors() - DataSector()) / SectorsPerCluster;
    }
    constexpr std::size_t ClusterBytes() const { return SectorsPerCluster * kSectorBytes; }
    constexpr std::size_t ImageBytes() const { return TotalSectors() * kSectorBytes; }
    /// Returns the number of clusters that hold `bytes` bytes, 0 for none.
    constexpr std::uint64_t ClustersFor(std::uint64_t bytes) const {
        return bytes / ClusterBytes() + (bytes % ClusterBytes() != 0 ? 1 : 0);
    }
};

/// Returns the number of directory entries of a name: the short one and the parts of its long form, which
/// has `longUnits` UTF-16 units, 0 when the short one is the whole name.
constexpr std::size_t SlotsOfName(std::size_t longUnits) {
    return 1 + (longUnits + kUnitsPerLongNamePart - 1) / kUnitsPerLongNamePart;
}

/// Returns the bytes of the entries of a folder below the root whose names take `slots` directory entries;
/// "." and ".." are added here. They are not rounded up to clusters.
constexpr std::size_t BytesOfFolder(std::size_t slots) {
    return (slots + 2) * kDirectoryEntryBytes;
}

/// Returns all formats, each with a type of its own. They live as long as the program.
std::span<const Geometry> AllGeometries();

/// Returns the format of that type, or nullptr when there is none.
const Geometry* GeometryOfType(const std::string& type);

/// Returns the format of an image of `bytes` bytes, or nullptr when none has this length.
const Geometry* GeometryOfLength(std::size_t bytes);

}  // namespace floppy
