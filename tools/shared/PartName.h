#pragma once
// The names that a file has until it is complete.

#include <filesystem>

namespace tools {

/// Number of names that a part may have beside one target. A part takes the next one when the user has a file
/// under the first.
constexpr unsigned kPartNames = 99;

/// What each of these names holds; digits may follow.
constexpr char kPartEnding[] = ".unfinished~";

/// Returns the name of a part beside `target`: with `number` 1 "<target>.unfinished~", with any other the
/// number behind it. The name of the target is cut where the whole would be longer than a file's name may be.
std::filesystem::path PartName(const std::filesystem::path& target, unsigned number);

}  // namespace tools
