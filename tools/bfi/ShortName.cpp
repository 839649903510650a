#include "tools/bfi/ShortName.h"

#include <algorithm>
#include <string_view>

#include "tools/shared/ToolError.h"
#include "tools/shared/Utf8.h"

namespace tools::bfi {
namespace {

constexpr std::size_t kBaseLength = 8;
constexpr std::size_t kExtensionLength = 3;
constexpr std::string_view kAllowedSigns = "!#$%&'()-@^_`{}~";

bool AreAllowed(const std::string& text) {
    return std::all_of(text.begin(), text.end(), IsShortNameCharacter);
}

}  // namespace

bool IsShortNameCharacter(char character) {
    return (character >= 'A' && character <= 'Z') || (character >= '0' && character <= '9') ||
           kAllowedSigns.find(character) != std::string_view::npos;
}

std::optional<ShortName> ToShortName(const std::string& name) {
    const std::string upper = tools::UpperAscii(name);
    const std::size_t dot = upper.find('.');
    const std::string base = upper.substr(0, dot);
    const std::string extension = dot == std::string::npos ? "" : upper.substr(dot + 1);
    if (base.empty() || base.size() > kBaseLength || extension.size() > kExtensionLength) return std::nullopt;
    if (!AreAllowed(base) || !AreAllowed(extension)) return std::nullopt;
    // "NAME." would come back as "NAME".
    if (dot != std::string::npos && extension.empty()) return std::nullopt;
    ShortName packed;
    packed.fill(' ');
    std::copy(base.begin(), base.end(), packed.begin());
    std::copy(extension.begin(), extension.end(), packed.begin() + kBaseLength);
    return packed;
}

bool IsDeviceName(const std::string& name) {
    std::string base = tools::UpperAscii(name.substr(0, name.find('.')));
    base.erase(base.find_last_not_of(' ') + 1);
    if (base == "CON" || base == "PRN" || base == "AUX" || base == "NUL" || base == "CLOCK$") return true;
    return base.size() == 4 && (base.starts_with("COM") || base.starts_with("LPT")) && base[3] >= '1' &&
           base[3] <= '9';
}

ShortName ToVolumeLabel(const std::string& label) {
    const std::string upper = tools::UpperAscii(label);
    const std::string option = "-l=" + label + ": ";
    if (upper.empty()) throw tools::ToolError("-l=: the volume label is empty");
    ShortName packed;
    if (upper.size() > packed.size())
        throw tools::ToolError(option + "a volume label has at most 11 characters");
    if (upper.front() == ' ') throw tools::ToolError(option + "a volume label cannot begin with a blank");
    const auto isAllowed = [](char character) { return character == ' ' || IsShortNameCharacter(character); };
    if (!std::all_of(upper.begin(), upper.end(), isAllowed))
        throw tools::ToolError(option + "a volume label holds only letters, digits, blanks and " +
                               std::string(kAllowedSigns));
    packed.fill(' ');
    std::copy(upper.begin(), upper.end(), packed.begin());
    return packed;
}

}  // namespace tools::bfi
