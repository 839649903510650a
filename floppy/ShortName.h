#pragma once
// Names as DOS knows them: eight characters and an extension of three.

#include <array>
#include <optional>
#include <string_view>

namespace floppy {

/// The eleven characters of a directory entry: name, then extension, upper case, padded with spaces, no dot.
using ShortName = std::array<char, 11>;

/// Returns `character` with a-z turned to A-Z; any other stays. What lies beyond ASCII has no case here: it
/// depends on the code page of the machine that reads the disk.
constexpr char UpperAscii(char character) {
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
}

/// The characters besides capital letters and digits that DOS allows in a name.
constexpr std::string_view kShortNameSigns = "!#$%&'()-@^_`{}~";

/// Returns whether DOS allows `character` in a name; lower-case letters count as not allowed, and so does all
/// beyond ASCII.
bool IsShortNameCharacter(char character);

/// Returns `name` in upper case as a directory entry stores it, or nothing when it is not of the form 8.3
/// with allowed characters.
std::optional<ShortName> ToShortName(std::string_view name);

/// Returns whether DOS takes `name`, whatever its case, its extension and the spaces before that, for a
/// device (CON, LPT1 ...), so that a file of that name could never be opened. Windows has more such names.
bool IsDeviceName(std::string_view name);

}  // namespace floppy
