#pragma once
// What velbooter.com hands on: the text of its own command line that belongs to velbooter.exe.

#include <string>

namespace velbooter {

/// Returns everything of `wholeCommandLine` that follows the program's own name, the separating blank
/// included, to the letter. The name ends, as the system reads it, at the first blank or tab that is not
/// between double quotes.
std::string TextBehindName(const std::string& wholeCommandLine);

/// Returns whether `text`, of TextBehindName, asks for nothing: blanks, some of which a command prompt adds
/// by itself, are no arguments.
bool IsWithoutArguments(const std::string& text);

}  // namespace velbooter
