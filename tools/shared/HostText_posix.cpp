#include "tools/shared/HostText.h"

#include <wctype.h>

#include <algorithm>
#include <cstring>

#include "tools/shared/Utf8.h"

namespace tools {

std::string SystemReason(std::int64_t error) {
    return std::strerror(static_cast<int>(error));
}

std::filesystem::path PathFromUtf8(const std::string& text) {
    if (!IsUtf8(text)) throw ToolError("this name is not UTF-8: " + PrintableBytes(text));
    std::string slashed = text;
    std::replace(slashed.begin(), slashed.end(), '\\', '/');
    return slashed;
}

std::u16string FoldedName(const std::string& name) {
    std::u16string folded = Utf16FromUtf8(name);
    // Never freed: loading it costs more than folding all names of a folder.
    static const locale_t unicode = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    if (unicode == nullptr) throw ToolError("the characters of the locale C.UTF-8 cannot be read");
    for (char16_t& unit : folded) unit = static_cast<char16_t>(towupper_l(unit, unicode));
    return folded;
}

std::string Utf8FromPath(const std::filesystem::path& path) {
    return IsUtf8(path.string()) ? path.string() : PrintableBytes(path.string());
}

std::filesystem::path LongPath(const std::filesystem::path& path) {
    return path;
}

}  // namespace tools
