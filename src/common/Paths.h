#pragma once
// Paths as texts in the ANSI code page. Nothing here asks the system whether a path exists, but for the 8.3
// form and the current folder. Failures are told by the result; nothing raises.

#include <string>

namespace velbooter {

/// Appends "\" to `path`, its trailing blanks removed, unless, blanks trimmed, it ends in "/" or "\" already;
/// then it is left as it is.
void AddTrailingBackslash(std::string& path);

/// Returns whether `character` (a string of one character) is "\" or "/".
bool IsPathSeparator(const std::string& character);

/// Splits `path` at its last separator. Returns true with `folder` (without the separator, so "" for "\a")
/// and `file` set. Without a separator `folder` becomes the current folder, `file` the whole path, and the
/// result is false; a path that ends in a separator sets nothing and gives false.
bool SplitPath(const std::string& path, std::string& folder, std::string& file);

/// Returns the folder part that SplitPath yields ("" when it sets nothing).
std::string GetFolderPart(const std::string& path);

/// Returns `text` between double quotes. With `trim` its blanks are trimmed first. Unless `force`, a text
/// that begins and ends with a double quote already stays as it is.
std::string QuotePath(const std::string& text, bool force, bool trim);

/// Returns `text` without surrounding blanks and then without one pair of enclosing double quotes.
std::string UnquotePath(const std::string& text);

/// Returns the 8.3 form of `path`, or `path` unchanged when the system has none.
std::string GetShortPath(const std::string& path);

}  // namespace velbooter
