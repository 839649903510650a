#pragma once
// Which members of a cabinet become which files. Everything that can be rejected before a file is written is
// rejected here, because a cabinet may come from anyone: its names must not lead out of the target folder,
// and its sizes must not fill the drive.

#include <filesystem>
#include <span>
#include <string>
#include <vector>

#include "tools/cabarc/CabinetDirectory.h"

namespace tools::cabarc {

/// One member that is to be extracted.
struct PlannedMember {
    std::size_t Index = 0;         ///< 0-based, in the directory
    std::filesystem::path Target;  ///< the file to be written
};

/// Returns the members that match one of `patterns` (all when there is none; see Wildcard.h), in their
/// order, each with its file below `folder` (UTF-8, "" is the working folder). Throws ToolError when a
/// pattern matches no member, when the name of a matching member is not safe as a path below the folder
/// (NameProblem), when two of them clash (Neighbours), when without `overwrite` one of the files exists
/// already, and for a cabinet that is part of a set. `label` names the cabinet in messages.
std::vector<PlannedMember> PlanExtraction(const CabinetDirectory& directory, const std::string& label,
                                          std::span<const std::string> patterns, const std::string& folder,
                                          bool overwrite);

/// Throws ToolError when the planned files would at some time need more than `free` bytes: each is written
/// in full before the older file that it replaces is removed. Sizes are counted in bytes, not in clusters,
/// so a plan that just fits may still fail later. `label` names the cabinet.
void RequireSpace(const CabinetDirectory& directory, const std::string& label,
                  std::span<const PlannedMember> plan, std::uint64_t free);

/// Throws the ToolError for a file that exists already and must not be overwritten.
[[noreturn]] void RefuseExisting(const std::filesystem::path& target);

}  // namespace tools::cabarc
