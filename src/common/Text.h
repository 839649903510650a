#pragma once
// Small functions for text in the Windows ANSI code page. Trimming removes only spaces (20h): it keeps tabs
// and NULs, because values from INI files carry a NUL that callers still need.

#include <string>
#include <vector>

namespace velbooter {

/// Returns `text` without leading spaces.
std::string TrimLeft(const std::string& text);

/// Returns `text` without trailing spaces.
std::string TrimRight(const std::string& text);

/// Returns `text` without leading and trailing spaces.
std::string Trim(const std::string& text);

/// Returns `text` up to, not including, its first NUL character; all of it when there is none.
std::string TrimAtNul(const std::string& text);

// In code pages with two-byte characters (Japanese, Chinese, Korean) the second byte may look like a
// backslash or a letter. The functions with a `codePage` therefore step from character to character; it is
// the number of the text's code page, 0 for the system's ANSI code page.

/// Returns the parts of `text` between the separators: always one more than there are separators, empty parts
/// included; an empty text gives one empty part.
std::vector<std::string> Split(const std::string& text, char separator, unsigned codePage = 0);

/// Return `text` in lower or upper case by the rules of the ANSI code page.
std::string LowerCase(const std::string& text);
std::string UpperCase(const std::string& text);

/// Returns whether `text` ends with `part`, case included.
bool EndsWith(const std::string& text, const std::string& part, unsigned codePage = 0);

/// Returns the position (0-based, in bytes) of the last character of `text` that is one of `characters`;
/// std::string::npos when there is none.
size_t FindLastOf(const std::string& text, const std::string& characters, unsigned codePage = 0);

/// Returns whether `text` begins with `part`, ignoring case.
bool StartsWithIgnoringCase(const std::string& text, const std::string& part);

/// Returns a number below, equal to or above 0 when `left` sorts before, with or after `right` in the user's
/// language, ignoring case.
int CompareIgnoringCase(const std::string& left, const std::string& right);

/// Returns the number at the beginning of `text`: spaces, tabs and line ends are skipped, then come an
/// optional sign, digits with one decimal point, and an exponent. Reading stops at the first character that
/// does not fit; without a number the result is 0.
double NumericPrefix(const std::string& text);

/// Returns NumericPrefix of `text` rounded to a whole number (a half goes to the even neighbour). Raises
/// RuntimeError 6 (overflow) when it does not fit in 16 bits; the error names `file`, the source of the text.
int WholeNumber(const std::string& text, const std::string& file = "");

/// Converts `text` from the ANSI code page to UTF-16.
std::wstring WideFromAnsi(const std::string& text);

}  // namespace velbooter
