#pragma once
// Names as DOS knows them: eight characters and an extension of three, and the volume label of eleven.

#include <array>
#include <optional>
#include <string>

namespace tools::bfi {

/// The eleven characters of a directory entry: name, then extension, upper case, padded with blanks, no dot.
using ShortName = std::array<char, 11>;

/// Returns whether DOS allows `character` in a name; lower-case letters count as not allowed, and so does all
/// beyond ASCII, because what it means depends on the code page of the machine that reads the disk.
bool IsShortNameCharacter(char character);

/// Returns `name` in upper case as a directory entry stores it, or nothing when it is not of the form 8.3
/// with allowed characters.
std::optional<ShortName> ToShortName(const std::string& name);

/// Returns whether DOS takes `name`, whatever its extension, for a device (CON, LPT1 ...), so that a file of
/// that name could never be opened.
bool IsDeviceName(const std::string& name);

/// Returns the volume label in upper case, padded. Throws ToolError when it is empty, longer than eleven
/// characters, begins with a blank or holds a character that DOS does not allow.
ShortName ToVolumeLabel(const std::string& label);

}  // namespace tools::bfi
