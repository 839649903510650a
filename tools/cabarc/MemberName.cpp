#include "tools/cabarc/MemberName.h"

#include <algorithm>

#include "floppy/ShortName.h"
#include "tools/cabarc/CabinetDirectory.h"
#include "tools/shared/HostText.h"
#include "tools/shared/Utf8.h"

namespace tools::cabarc {

namespace {

// The parts of a path that are stored: no drive, no empty and no "." part.
std::vector<std::string_view> MeaningfulParts(std::string_view path) {
    if (path.size() >= 2 && path[1] == ':') path.remove_prefix(2);
    std::vector<std::string_view> parts = PathParts(path);
    std::erase_if(parts, [](std::string_view part) { return part.empty() || part == "."; });
    return parts;
}

bool StartsWith(std::span<const std::string_view> parts, std::span<const std::string_view> prefix) {
    // The file's own name always stays.
    return prefix.size() < parts.size() &&
           std::equal(prefix.begin(), prefix.end(), parts.begin(), EqualsFolded);
}

// Windows opens a device for the names of DOS and for some more, in any folder and with any extension.
bool IsWindowsDeviceName(std::string_view part) {
    if (floppy::IsDeviceName(part)) return true;
    std::string_view base = part.substr(0, part.find('.'));
    while (base.ends_with(' ')) base.remove_suffix(1);
    if (EqualsFolded(base, "CONIN$") || EqualsFolded(base, "CONOUT$")) return true;
    if (!EqualsFolded(base.substr(0, 3), "COM") && !EqualsFolded(base.substr(0, 3), "LPT")) return false;
    // Windows takes the superscripts 1, 2 and 3 for digits here.
    constexpr std::string_view kMoreNumbers[] = {"0", "\u00B9", "\u00B2", "\u00B3"};
    return std::find(std::begin(kMoreNumbers), std::end(kMoreNumbers), base.substr(3)) !=
           std::end(kMoreNumbers);
}

std::optional<std::string> PartProblem(std::string_view part) {
    if (part.empty()) return "a part of the path is empty";
    if (part == "..") return "it leads out of the folder";
    if (part.ends_with('.') || part.ends_with(' ')) return "a part of the path ends in a dot or a space";
    if (HoldsControl(part)) return "it holds a control character";
    if (const auto at = part.find_first_of(floppy::kForbiddenSigns); at != std::string_view::npos)
        return std::string("it holds the character ") + part[at];
    if (IsWindowsDeviceName(part)) return "it is the name of a device";
    return std::nullopt;
}

}  // namespace

std::vector<std::string_view> PathParts(std::string_view path) {
    std::vector<std::string_view> parts;
    for (;;) {
        const std::size_t end = path.find_first_of(kPathSeparators);
        parts.push_back(path.substr(0, end));
        if (end == std::string_view::npos) return parts;
        path.remove_prefix(end + 1);
    }
}

std::string StoredName(std::string_view path, bool keepFolders, std::span<const std::string> prefixes) {
    const std::vector<std::string_view> all = MeaningfulParts(path);
    std::span<const std::string_view> parts = all;
    if (parts.empty()) return {};
    if (!keepFolders) return std::string(parts.back());
    for (const std::string& prefix : prefixes) {
        const std::vector<std::string_view> prefixParts = MeaningfulParts(prefix);
        if (!prefixParts.empty() && StartsWith(parts, prefixParts)) {
            parts = parts.subspan(prefixParts.size());
            break;
        }
    }
    std::string name;
    for (const std::string_view part : parts) {
        if (!name.empty()) name += '\\';
        name += part;
    }
    return name;
}

std::optional<std::string> NameProblem(const std::string& name) {
    if (name.size() > kMaxNameBytes) return "it has more than " + std::to_string(kMaxNameBytes) + " bytes";
    if (!IsUtf8(name)) return "it is not UTF-8";
    if (name.find_first_of(kPathSeparators) == 0) return "it is an absolute path";
    if (name.size() >= 2 && name[1] == ':') return "it names a drive";
    for (const std::string_view part : PathParts(name))
        if (auto problem = PartProblem(part)) return problem;
    return std::nullopt;
}

std::optional<Clash> Neighbours::Add(const std::string& name, std::size_t number) {
    const std::u16string folded = FoldedName(name);
    const auto [other, isNew] = files_.emplace(folded, number);
    if (!isNew) return Clash{other->second, number, false};
    if (const auto below = folders_.find(folded); below != folders_.end())
        return Clash{number, below->second, true};
    for (std::size_t end = folded.find(u'\\'); end != folded.npos; end = folded.find(u'\\', end + 1)) {
        const std::u16string folder = folded.substr(0, end);
        if (const auto file = files_.find(folder); file != files_.end())
            return Clash{file->second, number, true};
        folders_.emplace(folder, number);
    }
    return std::nullopt;
}

}  // namespace tools::cabarc
