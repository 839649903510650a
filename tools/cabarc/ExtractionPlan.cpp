#include "tools/cabarc/ExtractionPlan.h"

#include <algorithm>

#include "tools/cabarc/MemberName.h"
#include "tools/cabarc/SystemCabinet.h"
#include "tools/cabarc/Wildcard.h"
#include "tools/shared/HostFiles.h"
#include "tools/shared/HostText.h"
#include "tools/shared/ToolError.h"

namespace tools::cabarc {

namespace {

// The name of a member as its file is named: with "\" between its parts.
std::string WrittenName(const CabinetMember& member) {
    std::string name = MemberNameUtf8(member);
    std::replace(name.begin(), name.end(), '/', '\\');
    return name;
}

[[noreturn]] void RefuseBoth(const CabinetDirectory& directory, const std::string& label,
                             const Clash& clash) {
    const std::string first = WrittenName(directory.Members[clash.First]);
    const std::string second = WrittenName(directory.Members[clash.Second]);
    throw ToolError(label + (clash.IsFolder
                                 ? ": the member " + first + " would be the folder of " + second
                                 : ": the members " + first + " and " + second + " would be one file"));
}

}  // namespace

void RefuseExisting(const std::filesystem::path& target) {
    throw ToolError(Utf8FromPath(target) + ": exists already; -o overwrites it");
}

std::vector<PlannedMember> PlanExtraction(const CabinetDirectory& directory, const std::string& label,
                                          std::span<const std::string> patterns, const std::string& folder,
                                          bool overwrite) {
    if ((directory.Flags & (kHasPreviousCabinet | kHasNextCabinet)) != 0)
        throw ToolError(label + ": this cabinet is part of a set; sets cannot be extracted");
    const std::filesystem::path folderPath = PathFromUtf8(folder);
    std::vector<PlannedMember> plan;
    Neighbours neighbours;
    for (std::size_t i = 0; i < directory.Members.size(); ++i) {
        const std::string name = MemberNameUtf8(directory.Members[i]);
        if (!MatchesAnyMember(patterns, name)) continue;
        if (const auto problem = NameProblem(name))
            throw ToolError(label + ": the member " + name + " is refused: " + *problem);
        const std::string written = WrittenName(directory.Members[i]);
        if (const auto clash = neighbours.Add(written, i)) RefuseBoth(directory, label, *clash);
        PlannedMember member{i, folderPath / PathFromUtf8(written)};
        if (!overwrite && KindOf(member.Target) != FileKind::Missing) RefuseExisting(member.Target);
        plan.push_back(std::move(member));
    }
    for (const std::string& pattern : patterns) {
        const bool isUsed = std::any_of(plan.begin(), plan.end(), [&](const PlannedMember& member) {
            return MatchesMember(pattern, MemberNameUtf8(directory.Members[member.Index]));
        });
        if (!isUsed) throw ToolError(label + ": no member matches " + pattern);
    }
    return plan;
}

void RequireSpace(const CabinetDirectory& directory, const std::string& label,
                  std::span<const PlannedMember> plan, std::uint64_t free) {
    std::int64_t used = 0;
    std::int64_t most = 0;
    for (const PlannedMember& member : plan) {
        used += directory.Members[member.Index].Size;
        most = std::max(most, used);
        used -= static_cast<std::int64_t>(SizeOf(member.Target));
    }
    if (static_cast<std::uint64_t>(most) > free) {
        throw ToolError(label + ": its files need " + std::to_string(most) +
                        " bytes, and the target's drive has " + std::to_string(free) + " left");
    }
}

}  // namespace tools::cabarc
