#include "floppy/ShortName.h"

#include <algorithm>
#include <string>

namespace floppy {
namespace {

constexpr std::size_t kBaseLength = 8;
constexpr std::size_t kExtensionLength = 3;

bool AreAllowed(std::string_view text) {
    return std::all_of(text.begin(), text.end(), IsShortNameCharacter);
}

std::string Upper(std::string_view text) {
    std::string upper(text.size(), '\0');
    std::transform(text.begin(), text.end(), upper.begin(), UpperAscii);
    return upper;
}

}  // namespace

bool IsShortNameCharacter(char character) {
    return (character >= 'A' && character <= 'Z') || (character >= '0' && character <= '9') ||
           kShortNameSigns.find(character) != std::string_view::npos;
}

std::optional<ShortName> ToShortName(std::string_view name) {
    const std::string upper = Upper(name);
    const std::size_t dot = upper.find('.');
    const std::string base = upper.substr(0, dot);
    const std::string extension = dot == std::string::npos ? "" : upper.substr(dot + 1);
    if (base.empty() || base.size() > kBaseLength || extension.size() > kExtensionLength) return std::nullopt;
    if (!AreAllowed(base) || !AreAllowed(extension)) return std::nullopt;
    // DOS drops the dot of "NAME.", so the name would come back as "NAME".
    if (dot != std::string::npos && extension.empty()) return std::nullopt;
    ShortName packed;
    packed.fill(' ');
    std::copy(base.begin(), base.end(), packed.begin());
    std::copy(extension.begin(), extension.end(), packed.begin() + kBaseLength);
    return packed;
}

bool IsDeviceName(std::string_view name) {
    std::string base = Upper(name.substr(0, name.find('.')));
    base.erase(base.find_last_not_of(' ') + 1);
    if (base == "CON" || base == "PRN" || base == "AUX" || base == "NUL" || base == "CLOCK$") return true;
    return base.size() == 4 && (base.starts_with("COM") || base.starts_with("LPT")) && base[3] >= '1' &&
           base[3] <= '9';
}

}  // namespace floppy
