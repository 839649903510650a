#pragma once
// The folder tree that becomes the disk's contents, read and named before anything is written, so that
// anything that cannot be stored is found while there is still nothing to undo.

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "floppy/Geometry.h"
#include "tools/bfi/DirectoryNames.h"
#include "tools/shared/HostFiles.h"

namespace tools::bfi {

/// One file or folder of the tree.
struct TreeEntry {
    HostFile Host;
    DirectoryName Name;
    std::size_t Folder = 0;  ///< for a folder: its 0-based index in the tree
};

/// One folder of the tree; its entries are in the order in which the disk lists them.
struct TreeFolder {
    std::filesystem::path Path;  ///< on the host
    std::size_t Parent = 0;      ///< index of the folder that holds this one; the root is its own parent
    DosTime Modified;
    std::vector<TreeEntry> Entries;

    /// Number of 32-byte entries for everything in the folder; neither the label nor "." and ".." are
    /// counted.
    std::size_t Slots() const;
};

/// All folders, the root first and every folder after its parent.
using SourceTree = std::vector<TreeFolder>;

/// Returns whether an entry of the root is one of the two files that DOS starts from, IO.SYS and MSDOS.SYS
/// in any case. The image marks these read-only, hidden and system.
bool IsSystemFile(const HostFile& file);

/// Reads the names, sizes, times and attributes of all files below `folder`. In the root IO.SYS, MSDOS.SYS
/// and COMMAND.COM come first, everything else is sorted by name. The files' contents are not read. Throws
/// ToolError naming what cannot be read or stored: a name, a link to a folder, a device.
SourceTree ReadSourceTree(const std::filesystem::path& folder);

/// Throws ToolError when the tree does not fit: too many entries in the root (the label's included), or too
/// many bytes, counted in whole clusters, folders included; then the message says how many bytes are
/// missing.
void RequireSpace(const SourceTree& tree, const floppy::Geometry& geometry);

/// Returns the bytes of the entries of a folder below the root, "." and ".." included, before they are
/// rounded up to clusters.
std::size_t FolderBytes(const TreeFolder& folder);

}  // namespace tools::bfi
