#include "tools/cabarc/Listing.h"

#include <algorithm>
#include <set>
#include <utility>

#include "tools/cabarc/MemberName.h"
#include "tools/cabarc/Method.h"
#include "tools/cabarc/SystemCabinet.h"
#include "tools/cabarc/Wildcard.h"
#include "tools/shared/HostFiles.h"
#include "tools/shared/Utf8.h"

namespace tools::cabarc {

namespace {

std::string Padded(std::uint64_t number, std::size_t width, char fill = '0') {
    const std::string digits = std::to_string(number);
    return std::string(width - std::min(width, digits.size()), fill) + digits;
}

std::string Counted(std::uint64_t count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

std::string DateAndTime(DosTime moment) {
    const CalendarTime units = UnpackDosTime(moment);
    const auto two = [](int number) { return Padded(static_cast<unsigned>(number), 2); };
    return std::to_string(units.Year) + "-" + two(units.Month) + "-" + two(units.Day) + " " +
           two(units.Hour) + ":" + two(units.Minute) + ":" + two(units.Second);
}

std::string AttributeLetters(std::uint16_t attributes) {
    constexpr std::pair<int, char> kLetters[] = {
        {kReadOnly, 'r'}, {kHidden, 'h'}, {kSystem, 's'}, {kArchive, 'a'}};
    std::string letters;
    for (const auto& [bit, letter] : kLetters) letters += (attributes & bit) != 0 ? letter : '-';
    return letters;
}

// The methods of the folders, each once: "LZX:21", or "MSZIP, NONE".
std::string MethodNames(const CabinetDirectory& directory) {
    std::set<std::string> names;
    for (const CabinetFolder& folder : directory.Folders) names.insert(MethodName(folder.Type));
    std::string text;
    for (const std::string& name : names) text += (text.empty() ? "" : ", ") + name;
    return text;
}

}  // namespace

std::string ListingOf(const CabinetDirectory& directory, const std::string& label,
                      std::span<const std::string> patterns) {
    std::string text = Shown(label) + ": " + Counted(directory.CabinetSize, "byte") + ", " +
                       Counted(directory.Folders.size(), "folder") + ", " + MethodNames(directory) + "\n\n";
    text += "      Size  Date       Time      Attr  Name\n";
    std::uint64_t bytes = 0;
    std::uint64_t files = 0;
    for (const CabinetMember& member : directory.Members) {
        const std::string name = MemberNameUtf8(member);
        if (!MatchesAnyMember(patterns, name)) continue;
        text += Padded(member.Size, 10, ' ') + "  " + DateAndTime(member.Modified) + "  " +
                AttributeLetters(member.Attributes) + "  " + Shown(name) + "\n";
        bytes += member.Size;
        ++files;
    }
    return text + Padded(bytes, 10, ' ') + "  in " + Counted(files, "file") + "\n";
}

}  // namespace tools::cabarc
