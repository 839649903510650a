#pragma once
// The order in which members are stored where the user has not given one: files that resemble each other
// become neighbours. What they have in common is then near, where it is cheaper to refer to and still inside
// a small window, and their symbols share the codes of a block.
//
// Only files that a wildcard or the search through folders found in a row change places; a user who names
// files one by one may want their order. The result depends on the names and contents of the files alone.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "tools/cabarc/SourceFiles.h"

namespace tools::cabarc {

/// Sorts by extension, without regard to ASCII case, the files that may change places; those with the same
/// extension stay in their order. `names` are the patterns by which the files were found.
void SortByExtension(std::vector<SourceFile>& files, std::span<const std::string> names);

/// Bytes at the start of a file by which it is compared with others.
constexpr std::size_t kComparedBytes = 256 * 1024;

/// Returns the numbers of `files` in the order in which to store them: those that may change places are
/// chained by what they hold (ChainByResemblance). Reads the start of each such file, where there are
/// three or more in a row, and takes a KiB of memory for it. Throws ToolError when one cannot be read.
std::vector<std::size_t> OrderByContents(std::span<const SourceFile> files,
                                         std::span<const std::string> names);

/// Returns how much the files with two numbers resemble each other; 0 keeps them apart.
using ResemblanceOf = std::function<std::uint32_t(std::size_t, std::size_t)>;

/// The most pairs of up to as many files that are compared. So up to 1024 files are each compared with all
/// others, of more each with those that follow next, and of 65535 each with 16.
constexpr std::size_t kMaxPairs = std::size_t{1} << 20;

/// Returns the numbers from 0 to `count` - 1, each once, with numbers that resemble each other in a row.
/// What resembles nothing keeps its place among the others: chains are in the order of their least numbers.
/// Calls `resemblance` at most kMaxPairs times, the first number always less than the second, and sorts at
/// most as many pairs.
std::vector<std::size_t> ChainByResemblance(std::size_t count, const ResemblanceOf& resemblance);

}  // namespace tools::cabarc
