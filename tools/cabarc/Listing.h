#pragma once
// The command "l": the table of a cabinet's members.

#include <span>
#include <string>

#include "tools/cabarc/CabinetDirectory.h"

namespace tools::cabarc {

/// Returns the table of the members that match one of `patterns` (all of them when there is none): a line
/// about the cabinet, named `label`, headings, a line for each member, and the sums (bytes, files) of those
/// listed. Every line ends with a line feed. Names are shown as Shown() (Utf8.h) returns them, so none can
/// break its line. A pattern that matches nothing is no failure.
std::string ListingOf(const CabinetDirectory& directory, const std::string& label,
                      std::span<const std::string> patterns);

}  // namespace tools::cabarc
