#pragma once
// The command line of a process as the system keeps it: the program's own name, and the text behind it.

#include <string>

namespace velbooter {

/// Returns everything of `wholeCommandLine` that follows the program's own name, the separating blank
/// included, to the letter; velbooter.com hands it on. The name ends, as the system reads it, at the first
/// blank or tab that is not between double quotes.
std::string TextBehindName(const std::string& wholeCommandLine);

/// Returns the text of TextBehindName without the one blank or tab that separates it.
std::string ArgumentsOf(const std::string& wholeCommandLine);

/// Returns whether `text`, of TextBehindName, asks for nothing: blanks, some of which a command prompt adds
/// by itself, are no arguments.
bool IsWithoutArguments(const std::string& text);

}  // namespace velbooter
