#pragma once
// UTF-16 as Windows takes and gives it. HostText_win.cpp implements it.

#include <cstddef>
#include <string>

namespace tools {

// What paths of any length begin with, those of shares too.
inline constexpr wchar_t kLongPrefix[] = L"\\\\?\\";
inline constexpr wchar_t kLongNetworkPrefix[] = L"\\\\?\\UNC\\";
inline constexpr std::size_t kLongPrefixLength = 4;
inline constexpr std::size_t kLongNetworkPrefixLength = 8;

/// Converts to UTF-8. Returns whether `wide` could be expressed, which names with half a surrogate pair
/// cannot; `text` is only then of use.
bool ConvertToUtf8(const std::wstring& wide, std::string& text);

/// Converts to UTF-8 for messages; what cannot be expressed is replaced by ASCII.
std::string LossyUtf8(const std::wstring& wide);

/// Converts from UTF-8; what is not UTF-8 is replaced as by Utf16FromUtf8.
std::wstring WideFromUtf8(const std::string& text);

}  // namespace tools
