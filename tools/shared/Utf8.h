#pragma once
// Texts inside the tools are UTF-8, whatever the system uses; these are the few questions about them that
// names of files raise.

#include <string>

namespace tools {

/// Returns true when `text` is well-formed UTF-8 (no overlong forms, no surrogates).
bool IsUtf8(const std::string& text);

/// Returns the text in UTF-16. `text` must be well-formed UTF-8.
std::u16string Utf16FromUtf8(const std::string& text);

/// Returns `text` with every byte that is not printable ASCII written as \xNN, for messages about broken
/// names.
std::string PrintableBytes(const std::string& text);

/// Returns the text with a-z turned to A-Z; other characters stay.
std::string UpperAscii(std::string text);

/// The order of names in everything the tools write: without regard to ASCII case first, by bytes among
/// equals.
bool PrecedesWithoutCase(const std::string& left, const std::string& right);

}  // namespace tools
