#include "tools/bfi/DirectoryNames.h"

#include <algorithm>
#include <map>
#include <set>
#include <string_view>

#include "tools/shared/HostText.h"
#include "tools/shared/ToolError.h"
#include "tools/shared/Utf8.h"

namespace tools::bfi {

namespace {

constexpr std::size_t kLongestName = 255;

void RefuseUnstorable(const std::string& folder, const std::string& name) {
    const std::string start = folder + name + ": ";
    if (HoldsControl(name) || name.find_first_of(floppy::kForbiddenSigns) != std::string::npos ||
        name.find_first_of("/\\") != std::string::npos)
        throw ToolError(start + "the name holds a character that DOS does not allow");
    if (name.back() == '.' || name.back() == ' ')
        throw ToolError(start + "the name ends with a dot or a space, which DOS drops");
    if (floppy::IsDeviceName(name)) throw ToolError(start + "DOS takes this name for a device");
    if (Utf16FromUtf8(name).size() > kLongestName)
        throw ToolError(start + "the name is longer than 255 characters");
}

// What an alias keeps of a part of a long name: spaces and dots are dropped, what DOS does not allow becomes
// "_".
std::string AliasPart(const std::string& part) {
    std::string kept;
    for (const char character : UpperAscii(part)) {
        const bool isContinuation = (static_cast<unsigned char>(character) & 0xC0) == 0x80;
        if (character == ' ' || character == '.' || isContinuation) continue;
        kept += floppy::IsShortNameCharacter(character) ? character : '_';
    }
    return kept;
}

// Creates aliases that no other entry of the folder has: "LONGNA~1.TXT", counted upwards.
class AliasMaker {
 public:
    explicit AliasMaker(std::set<floppy::ShortName>& taken) : taken_(taken) {}

    floppy::ShortName Make(const std::string& name) {
        const std::size_t dot = name.find_last_of('.');
        const bool hasExtension = dot != std::string::npos && dot > 0;
        const std::string extension = hasExtension ? AliasPart(name.substr(dot + 1)).substr(0, 3) : "";
        std::string base = AliasPart(name.substr(0, hasExtension ? dot : std::string::npos)).substr(0, 6);
        if (base.empty()) base += '_';
        const std::string suffix = extension.empty() ? "" : "." + extension;
        // Counting continues where the last alias of the same kind stopped, so that thousands of similar
        // names take no more time for each than a few do.
        for (unsigned& number = lastNumber_[base + suffix];;) {
            std::string tail(1, '~');
            tail += std::to_string(++number);
            const floppy::ShortName alias =
                *floppy::ToShortName(base.substr(0, 8 - tail.size()) + tail + suffix);
            if (taken_.insert(alias).second) return alias;
        }
    }

 private:
    std::set<floppy::ShortName>& taken_;
    std::map<std::string, unsigned> lastNumber_;
};

}  // namespace

std::vector<DirectoryName> NameEntries(const std::string& folder, const std::vector<std::string>& names) {
    std::map<std::u16string, std::string> seen;
    std::set<floppy::ShortName> taken;
    std::vector<DirectoryName> stored(names.size());
    for (std::size_t i = 0; i < names.size(); ++i) {
        const std::string& name = names[i];
        RefuseUnstorable(folder, name);
        const auto [other, isNew] = seen.emplace(FoldedName(name), name);
        if (!isNew)
            throw ToolError(folder + other->second + " and " + name + " have the same name on a DOS disk");
        if (const auto shortName = floppy::ToShortName(name)) {
            stored[i].Short = *shortName;
            taken.insert(*shortName);
        } else {
            stored[i].Long = Utf16FromUtf8(name);
        }
    }
    AliasMaker aliases(taken);
    for (std::size_t i = 0; i < names.size(); ++i)
        if (!stored[i].Long.empty()) stored[i].Short = aliases.Make(names[i]);
    return stored;
}

floppy::ShortName ToVolumeLabel(const std::string& label) {
    const std::string upper = UpperAscii(label);
    const std::string option = "-l=" + label + ": ";
    if (upper.empty()) throw ToolError("-l=: the volume label is empty");
    floppy::ShortName packed;
    if (upper.size() > packed.size()) throw ToolError(option + "a volume label has at most 11 characters");
    if (upper.front() == ' ') throw ToolError(option + "a volume label cannot begin with a space");
    const auto isAllowed = [](char character) {
        return character == ' ' || floppy::IsShortNameCharacter(character);
    };
    if (!std::all_of(upper.begin(), upper.end(), isAllowed))
        throw ToolError(option + "a volume label holds only letters, digits, spaces and " +
                        std::string(floppy::kShortNameSigns));
    packed.fill(' ');
    std::copy(upper.begin(), upper.end(), packed.begin());
    return packed;
}

}  // namespace tools::bfi
