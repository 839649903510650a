#pragma once
// Creates a tree of real files from choices, for the tools to pack.

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
    /// Whether every name can be stored anywhere and no two names clash; otherwise some names consist of any
    /// bytes that the system accepts.
    bool HasPlainNames = true;
};

/// Fills `folder`, which exists and is empty, and returns what it then contains. Files have at most
/// `longestFile` bytes.
RandomTree MakeRandomTree(Choices& choices, const std::filesystem::path& folder, std::size_t longestFile);

/// Returns inputs that give all kinds of trees.
std::vector<Bytes> TreeSeeds();

}  // namespace fuzz
