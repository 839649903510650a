#pragma once
// Finds the files that a packing command names. No contents are read: sizes, times and attributes come from
// the folders' listings.

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

#include "tools/shared/DosTime.h"

namespace tools::cabarc {

/// A file to be packed. Its path is its only text, because a cabinet may take 65535 of them.
struct SourceFile {
    std::string Path;             ///< UTF-8: the folder as the pattern spells it, and the path from there
    std::uint64_t Size = 0;       ///< bytes
    DosTime Modified;             ///< local time
    std::uint8_t Attributes = 0;  ///< DosAttribute bits
};

/// Returns the files that `patterns` name, in the order of the patterns; for one pattern folder by folder, a
/// folder's own files before its sub-folders, each sorted as ListFolder does. Wildcards may stand in the
/// last part of a pattern. With `recurse` a pattern also looks into all folders below its own. A file that
/// is found twice by the same path is returned once; two spellings of a folder count as two. `cabinet`, the
/// file that is going to be written, is never returned, nor is an unfinished part beside it. Throws
/// ToolError for a pattern that finds nothing or names a folder, for a folder that cannot be read, for
/// anything found that is not an ordinary file, and for a link to a folder on the way down.
std::vector<SourceFile> FindSourceFiles(std::span<const std::string> patterns, bool recurse,
                                        const std::filesystem::path& cabinet);

}  // namespace tools::cabarc
