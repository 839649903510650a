#pragma once
// The names that a file has until it is complete. They lie beside the target, so that the final renaming
// stays on one drive.

#include <filesystem>

namespace tools {

/// Number of names that a part may have beside one target. A part takes the next one when the user has a
/// file of the first name.
constexpr unsigned kPartNames = 99;

/// What each of these names contains; digits may follow.
constexpr char kPartEnding[] = ".unfinished~";

/// Returns the name of a part beside `target`: "<target>.unfinished~" for `number` 1, the same followed by
/// the number for any other. The target's name is shortened where the result would be longer than a file
/// name may be (255 bytes on POSIX, 255 UTF-16 units on Windows), never inside a character.
std::filesystem::path PartName(const std::filesystem::path& target, unsigned number);

}  // namespace tools
