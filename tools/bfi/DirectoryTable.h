#pragma once
// Writes the 32-byte entries of one directory, long names included, into the sectors reserved for it. The
// fields of an entry are listed in docs/formats/fat12.md.

#include <cstdint>
#include <span>
#include <string>

#include "floppy/ShortName.h"
#include "tools/bfi/DirectoryNames.h"
#include "tools/shared/DosTime.h"

namespace tools::bfi {

/// Attribute bits that only a directory entry has; DosAttribute (HostFiles.h) has those that a file on the
/// host has, too.
constexpr std::uint8_t kLabelAttribute = 0x08;
constexpr std::uint8_t kFolderAttribute = 0x10;

/// What an entry states besides its name.
struct EntryFacts {
    std::uint8_t Attributes = 0;     ///< DosAttribute bits and the two above
    DosTime Modified;                ///< local time
    std::uint32_t FirstCluster = 0;  ///< 0 for an empty file and the label
    std::uint32_t Size = 0;          ///< bytes; 0 for a folder and the label
};

/// Appends entries to a directory. The caller has counted the slots (TreeFolder::Slots): there is no check
/// for space.
class DirectoryTable {
 public:
    /// `bytes` belongs to the caller, is zero-filled and stays valid as long as the table is used.
    explicit DirectoryTable(std::span<std::uint8_t> bytes) : free_(bytes) {}

    /// Appends an entry that has only the eleven characters `name`: the label, "." and "..".
    void Add(const floppy::ShortName& name, const EntryFacts& facts);

    /// Appends an entry, preceded by those of its long name: DirectoryName::Slots() entries in all.
    void Add(const DirectoryName& name, const EntryFacts& facts);

 private:
    std::span<std::uint8_t> Take();

    std::span<std::uint8_t> free_;
};

}  // namespace tools::bfi
