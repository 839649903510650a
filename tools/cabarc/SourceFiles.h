#pragma once
// Finds the files that a packing command names.

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

#include "tools/shared/DosTime.h"

namespace tools::cabarc {

/// A file to be packed. Its path is kept once, as a cabinet may take 65535 of them.
struct SourceFile {
    std::string Path;  ///< UTF-8: the folder as the pattern names it, and the way from there
    std::uint64_t Size = 0;
    DosTime Modified;
    std::uint8_t Attributes = 0;  ///< DosAttribute bits
};

/// Returns the files that `patterns` name, in the order of the patterns; for one pattern folder by folder, a
/// folder's own files before its sub-folders, each sorted as ListFolder does. Wildcards may stand in the last
/// part of a pattern. With `recurse` a pattern also looks into all folders below its own. A file is returned
/// once, and `cabinet`, the file that is going to be written, never. Throws ToolError for a pattern that
/// finds nothing or names a folder, for anything found that is not an ordinary file, and for a link to a
/// folder on the way down.
std::vector<SourceFile> FindSourceFiles(std::span<const std::string> patterns, bool recurse,
                                        const std::filesystem::path& cabinet);

}  // namespace tools::cabarc
