#pragma once
// The command "l": the table of a cabinet's members.

#include <span>
#include <string>

#include "tools/cabarc/CabinetDirectory.h"

namespace tools::cabarc {

/// Returns the table of the members that match one of `patterns` (all of them when there is none), with a
/// line on the cabinet, named `label`, before and the sums after it. Names stand as Shown() (Utf8.h) makes
/// them, one line each.
std::string ListingOf(const CabinetDirectory& directory, const std::string& label,
                      std::span<const std::string> patterns);

}  // namespace tools::cabarc
