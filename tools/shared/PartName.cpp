#include "tools/shared/PartName.h"

#include <string>

namespace tools {
namespace {

using Text = std::filesystem::path::string_type;
using Unit = Text::value_type;

constexpr std::size_t kLongestName = 255;  // bytes on POSIX, UTF-16 units on Windows

// Returns whether a character that needs more than one unit continues here.
bool Continues(Unit unit) {
    if constexpr (sizeof(Unit) == 1) return (static_cast<unsigned>(unit) & 0xC0U) == 0x80U;
    return (static_cast<unsigned>(unit) & 0xFC00U) == 0xDC00U;
}

}  // namespace

std::filesystem::path PartName(const std::filesystem::path& target, unsigned number) {
    std::string ending = kPartEnding;
    if (number != 1) ending += std::to_string(number);
    Text name = target.filename().native();
    if (name.size() + ending.size() > kLongestName) {
        std::size_t kept = kLongestName - ending.size();
        while (kept > 0 && Continues(name[kept])) --kept;
        name.resize(kept);
    }
    name.append(ending.begin(), ending.end());
    std::filesystem::path part = target;
    part.replace_filename(name);
    return part;
}

}  // namespace tools
