#pragma once
// Texts inside the tools are UTF-8, whatever the system uses; these few functions are what file names need
// of it.

#include <string>
#include <string_view>

#include "floppy/ShortName.h"

namespace tools {

/// Returns whether `text` is well-formed UTF-8 as RFC 3629 defines it: no overlong forms, no surrogates,
/// nothing above U+10FFFF.
bool IsUtf8(const std::string& text);

/// Returns the text in UTF-16, whose characters above U+FFFF take two units. `text` must be well-formed
/// UTF-8.
std::u16string Utf16FromUtf8(const std::string& text);

/// Returns `text` with every byte that is not printable ASCII written as \xNN, for messages about broken
/// names.
std::string PrintableBytes(const std::string& text);

/// Returns whether the text, well-formed or not, contains a control character: U+0000 to U+001F, U+007F to
/// U+009F.
bool HoldsControl(std::string_view text);

/// Returns the text as one harmless line for the screen. Control characters below U+0080 become "?"; those
/// from U+0080 on, which some terminals obey, and characters that break a line or change the direction of
/// writing are shown as \uNNNN; bytes that are not UTF-8 as \xNN.
std::string Shown(const std::string& text);

/// Return a character or a text with a-z turned to A-Z; other characters stay: their case depends on a code
/// page that neither a floppy nor a cabinet names.
using floppy::UpperAscii;
std::string UpperAscii(std::string text);

/// Returns whether the two texts differ at most in ASCII case, as DOS names and the members of a cabinet are
/// compared.
bool EqualsFolded(std::string_view left, std::string_view right);

/// Returns whether `left` comes before `right` in the order of names in everything that the tools write:
/// without regard to ASCII case first, by bytes among names that are equal so.
bool PrecedesWithoutCase(const std::string& left, const std::string& right);

}  // namespace tools
