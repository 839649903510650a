#include "tools/cabarc/ExtractionPlan.h"

#include <algorithm>

#include "tools/cabarc/MemberName.h"
#include "tools/cabarc/SystemCabinet.h"
#include "tools/cabarc/Wildcard.h"
#include "tools/shared/HostFiles.h"
#include "tools/shared/ToolError.h"

namespace tools::cabarc {

void RefuseExisting(const std::filesystem::path& target) {
    throw ToolError(DisplayName(Utf8FromPath(target)) + ": exists already; -o overwrites it");
}

std::vector<PlannedMember> PlanExtraction(const CabinetDirectory& directory, const std::string& label,
                                          std::span<const std::string> patterns, const std::string& folder,
                                          bool overwrite) {
    if ((directory.Flags & (kHasPreviousCabinet | kHasNextCabinet)) != 0) {
        throw ToolError(label + ": this cabinet is part of a set; sets cannot be extracted");
    }
    const std::filesystem::path folderPath = PathFromUtf8(folder);
    std::vector<PlannedMember> plan;
    for (std::size_t i = 0; i < directory.Members.size(); ++i) {
        std::string name = MemberNameUtf8(directory.Members[i]);
        if (!MatchesAnyMember(patterns, name)) continue;
        if (const auto problem = NameProblem(name)) {
            throw ToolError(label + ": the member " + DisplayName(name) + " is refused: " + *problem);
        }
        std::replace(name.begin(), name.end(), '/', '\\');
        PlannedMember member{i, folderPath / PathFromUtf8(name)};
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

}  // namespace tools::cabarc
