#pragma once
// Makes a tree of real files from choices, for the tools to pack.

#include <filesystem>

#include "tests/fuzz/Choices.h"
#include "tools/shared/DosTime.h"

namespace fuzz {

struct TreeFile {
    std::string Path;  ///< below the tree's folder, with "/"
    Bytes Contents;
    tools::DosTime Modified;
    std::uint8_t Attributes = 0;  ///< as the tools see them on this system: read-only or archive
};

struct RandomTree {
    std::vector<std::string> Folders;  ///< every one, parents first, with "/"
    std::vector<TreeFile> Files;
    /// Whether every name can be stored anywhere and none is another's twin; otherwise some are of any bytes
    /// that the system takes.
    bool HasPlainNames = true;
};

/// Fills `folder`, which exists and is empty, and returns what it then holds. Files have at most
/// `longestFile` bytes.
RandomTree MakeRandomTree(Choices& choices, const std::filesystem::path& folder, std::size_t longestFile);

/// Returns inputs that make trees of all sorts.
std::vector<Bytes> TreeSeeds();

}  // namespace fuzz
