#pragma once
// Which members of a cabinet become which files; everything that can be refused before a file is written is
// refused here.

#include <filesystem>
#include <span>
#include <string>
#include <vector>

#include "tools/cabarc/CabinetDirectory.h"

namespace tools::cabarc {

struct PlannedMember {
    std::size_t Index = 0;         ///< in the directory
    std::filesystem::path Target;  ///< the file to be written
};

/// Returns the members that match one of `patterns` (all when there is none), in their order, each with its
/// file below `folder` (UTF-8, "" is the working folder). Throws ToolError when no member matches, when the
/// name of one of them is not safe as a path below the folder, when two of them clash (Neighbours.h), when
/// without `overwrite` one of the files exists already, and for a cabinet that is part of a set. `label`
/// names the cabinet in messages.
std::vector<PlannedMember> PlanExtraction(const CabinetDirectory& directory, const std::string& label,
                                          std::span<const std::string> patterns, const std::string& folder,
                                          bool overwrite);

/// Throws ToolError when the planned files need more than `free` bytes. Each is written beside the older file
/// whose place it takes then. `label` names the cabinet.
void RequireSpace(const CabinetDirectory& directory, const std::string& label,
                  std::span<const PlannedMember> plan, std::uint64_t free);

/// Throws the error for a file that is not to be overwritten.
[[noreturn]] void RefuseExisting(const std::filesystem::path& target);

}  // namespace tools::cabarc
