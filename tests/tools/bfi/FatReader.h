#pragma once
// A reader of FAT12 images that shares nothing with the writer but the published format. It rejects
// everything that is not sound: copies of the FAT that differ, clusters that are lost or used twice, chains
// that do not match a size, a long name without its short one, "." and ".." that lead elsewhere.

#include <cstdint>
#include <string>
#include <vector>

namespace tools::bfi::testing {

/// One directory entry, in the order in which the disk lists it.
struct FatEntry {
    std::string Path;  ///< short names from the root, "SUB/A.TXT"; the label's eleven characters as they are
    std::u16string Long;  ///< long name; empty when there is none
    std::uint8_t Attributes = 0;
    std::uint16_t Time = 0;
    std::uint16_t Date = 0;
    std::uint32_t Size = 0;
    std::vector<std::uint32_t> Clusters;
    std::vector<std::uint8_t> Content;  ///< of a file

    bool IsFolder() const { return (Attributes & 0x10) != 0; }
    bool IsLabel() const { return (Attributes & 0x08) != 0; }
};

struct FatImage {
    std::uint32_t ClusterBytes = 0;
    std::uint32_t Clusters = 0;  ///< in the data area
    std::uint32_t FreeClusters = 0;
    std::uint32_t Serial = 0;
    std::string Label;              ///< in the boot sector
    std::vector<FatEntry> Entries;  ///< a folder's own entries follow it at once; "." and ".." are left out
    /// Where each directory entry begins in the image, in bytes, also "." and ".."; those of long names are
    /// left out.
    std::vector<std::size_t> EntryPlaces;

    /// Returns the entry with that path. Throws std::runtime_error when there is none.
    const FatEntry& At(const std::string& path) const;
};

/// Reads an image. Throws std::runtime_error that says what is not sound.
FatImage ReadFatImage(const std::vector<std::uint8_t>& image);

}  // namespace tools::bfi::testing
