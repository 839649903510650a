#include "tools/cabarc/ExtractionPlan.h"

#include <algorithm>
#include <map>

#include "tools/cabarc/MemberName.h"
#include "tools/cabarc/SystemCabinet.h"
#include "tools/cabarc/Wildcard.h"
#include "tools/shared/HostFiles.h"
#include "tools/shared/ToolError.h"

namespace tools::cabarc {

namespace {

/// Notices members that cannot lie in one folder together, because Windows takes their names for one, or one
/// of them for a folder of the other.
class Neighbours {
 public:
    explicit Neighbours(const std::string& label) : label_(label) {}

    /// Adds a member's name, with "\\" between its parts. Throws ToolError that names it and the other one.
    void Add(const std::string& name) {
        const std::u16string folded = FoldedName(name);
        const auto [other, isNew] = files_.emplace(folded, name);
        if (!isNew) {
            throw ToolError(label_ + ": the members " + other->second + " and " + name +
                            " would be one file");
        }
        if (const auto below = folders_.find(folded); below != folders_.end())
            RefuseBoth(name, below->second);
        for (std::size_t end = folded.find(u'\\'); end != folded.npos; end = folded.find(u'\\', end + 1)) {
            const std::u16string folder = folded.substr(0, end);
            if (const auto file = files_.find(folder); file != files_.end()) RefuseBoth(file->second, name);
            folders_.emplace(folder, name);
        }
    }

 private:
    [[noreturn]] void RefuseBoth(const std::string& file, const std::string& below) const {
        throw ToolError(label_ + ": the member " + file + " would be the folder of " + below);
    }

    const std::string& label_;
    std::map<std::u16string, std::string> files_;    ///< by folded name
    std::map<std::u16string, std::string> folders_;  ///< a member in it, by the folder's folded name
};

}  // namespace

void RefuseExisting(const std::filesystem::path& target) {
    throw ToolError(Utf8FromPath(target) + ": exists already; -o overwrites it");
}

std::vector<PlannedMember> PlanExtraction(const CabinetDirectory& directory, const std::string& label,
                                          std::span<const std::string> patterns, const std::string& folder,
                                          bool overwrite) {
    if ((directory.Flags & (kHasPreviousCabinet | kHasNextCabinet)) != 0) {
        throw ToolError(label + ": this cabinet is part of a set; sets cannot be extracted");
    }
    const std::filesystem::path folderPath = PathFromUtf8(folder);
    std::vector<PlannedMember> plan;
    Neighbours neighbours(label);
    for (std::size_t i = 0; i < directory.Members.size(); ++i) {
        std::string name = MemberNameUtf8(directory.Members[i]);
        if (!MatchesAnyMember(patterns, name)) continue;
        if (const auto problem = NameProblem(name)) {
            throw ToolError(label + ": the member " + name + " is refused: " + *problem);
        }
        std::replace(name.begin(), name.end(), '/', '\\');
        neighbours.Add(name);
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
