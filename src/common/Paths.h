#pragma once
// Paths as text in the ANSI code page. Only the 8.3 form and the current folder are looked up in the system.
// The result shows a failure; nothing raises.

#include <string>

namespace velbooter {

/// Removes trailing spaces from `path` and appends "\". A path that ends in "/" or "\" before any trailing
/// spaces is left unchanged.
void AddTrailingBackslash(std::string& path);

/// Returns whether `character` (a string of one character) is "\" or "/".
bool IsPathSeparator(const std::string& character);

/// Splits `path` at its last separator. Returns true with `folder` (without the separator, so "" for "\a")
/// and `file` set. Without a separator `folder` becomes the current folder, `file` the whole path, and the
/// result is false; for a path that ends in a separator it is false, too, and nothing is set.
bool SplitPath(const std::string& path, std::string& folder, std::string& file);

/// Returns the folder part that SplitPath yields ("" when it sets nothing).
std::string GetFolderPart(const std::string& path);

/// Returns `text` between double quotes. With `trim`, leading and trailing spaces are removed first. Unless
/// `force` is set, a text that already begins and ends with a double quote is returned unchanged.
std::string QuotePath(const std::string& text, bool force, bool trim);

/// Returns `text` without leading and trailing spaces and then without one pair of enclosing double quotes.
std::string UnquotePath(const std::string& text);

/// Returns the 8.3 form of `path`, or `path` unchanged when the system has none.
std::string GetShortPath(const std::string& path);

}  // namespace velbooter
