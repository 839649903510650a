#pragma once
// Names as DOS knows them: eight characters and an extension of three. Shared by the image tool, which
// stores them, the cabinet tool, which must not extract a device's name, and the program, which counts
// directory entries.

#include <array>
#include <optional>
#include <string_view>

namespace floppy {

/// The eleven characters of a directory entry: name, then extension, upper case, padded with spaces, no dot.
using ShortName = std::array<char, 11>;

/// Returns `character` with a-z turned to A-Z; any other stays. Characters beyond ASCII have no case here:
/// it depends on the code page of the machine that reads the disk.
constexpr char UpperAscii(char character) {
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
}

/// The characters besides capital letters and digits that DOS allows in a name.
constexpr std::string_view kShortNameSigns = "!#$%&'()-@^_`{}~";

/// The characters that neither DOS nor Windows allows in any name, also not in a long one, besides the
/// separators of paths and control characters.
constexpr std::string_view kForbiddenSigns = "\"*:<>?|";

/// Returns whether DOS allows `character` in a name. Lower-case letters and everything beyond ASCII are not
/// allowed.
bool IsShortNameCharacter(char character);

/// Returns `name` in upper case as a directory entry stores it, or nothing when it is not of the form 8.3
/// with allowed characters: an empty name or extension, a second dot and a space are not. A device's name is
/// no exception here.
std::optional<ShortName> ToShortName(std::string_view name);

/// Returns whether DOS takes `name` for a device (CON, PRN, AUX, NUL, CLOCK$, COM1 to COM9, LPT1 to LPT9),
/// so that a file of that name could never be opened. Case, an extension and the spaces before it make no
/// difference. Windows has more such names.
bool IsDeviceName(std::string_view name);

}  // namespace floppy
