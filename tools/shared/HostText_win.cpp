#include "tools/shared/HostText.h"

#include <windows.h>

#include <iterator>

#include "tools/shared/Utf8.h"
#include "tools/shared/WideText_win.h"

namespace tools {

namespace fs = std::filesystem;

bool ConvertToUtf8(const std::wstring& wide, std::string& text) {
    text.clear();
    if (wide.empty()) return true;
    const int length = static_cast<int>(wide.size());
    const int needed =
        WideCharToMultiByte(CP_UTF8, WC_ERR_INVALID_CHARS, wide.data(), length, nullptr, 0, nullptr, nullptr);
    if (needed <= 0) return false;
    text.resize(static_cast<std::size_t>(needed));
    return WideCharToMultiByte(CP_UTF8, WC_ERR_INVALID_CHARS, wide.data(), length, text.data(), needed,
                               nullptr, nullptr) == needed;
}

std::string LossyUtf8(const std::wstring& wide) {
    std::string text;
    if (ConvertToUtf8(wide, text)) return text;
    for (const wchar_t unit : wide) text += unit >= 0x20 && unit < 0x7F ? static_cast<char>(unit) : '?';
    return text;
}

std::wstring WideFromUtf8(const std::string& text) {
    const std::u16string wide = Utf16FromUtf8(text);
    return {wide.begin(), wide.end()};
}

std::string SystemReason(std::int64_t error) {
    wchar_t text[512];
    DWORD length =
        FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                       static_cast<DWORD>(error), 0, text, static_cast<DWORD>(std::size(text)), nullptr);
    while (length > 0 && (text[length - 1] <= L' ' || text[length - 1] == L'.')) --length;
    return length > 0 ? LossyUtf8({text, length}) : "error " + std::to_string(error);
}

fs::path PathFromUtf8(const std::string& text) {
    if (!IsUtf8(text)) throw ToolError("this name is not UTF-8: " + PrintableBytes(text));
    return WideFromUtf8(text);
}

std::u16string FoldedName(const std::string& name) {
    std::wstring wide = WideFromUtf8(name);
    const int length = static_cast<int>(wide.size());
    // Without further flags the rules are those of the file systems.
    if (length > 0)
        LCMapStringEx(L"", LCMAP_UPPERCASE, wide.data(), length, wide.data(), length, nullptr, nullptr, 0);
    return {wide.begin(), wide.end()};
}

std::string Utf8FromPath(const fs::path& path) {
    const std::wstring& text = path.native();
    if (text.starts_with(kLongNetworkPrefix))
        return LossyUtf8(L"\\\\" + text.substr(kLongNetworkPrefixLength));
    if (text.starts_with(kLongPrefix)) return LossyUtf8(text.substr(kLongPrefixLength));
    return LossyUtf8(text);
}

fs::path LongPath(const fs::path& path) {
    const std::wstring& text = path.native();
    if (text.starts_with(kLongPrefix) || text.empty()) return path;
    std::wstring full;
    DWORD length = GetFullPathNameW(text.c_str(), 0, nullptr, nullptr);
    if (length == 0) return path;
    full.resize(length);
    length = GetFullPathNameW(text.c_str(), length, full.data(), nullptr);
    full.resize(length);
    // Devices ("\\.\...", what "NUL" becomes) have no long form.
    if (full.starts_with(L"\\\\.\\")) return full;
    if (full.starts_with(L"\\\\")) return kLongNetworkPrefix + full.substr(2);
    return kLongPrefix + full;
}

}  // namespace tools
