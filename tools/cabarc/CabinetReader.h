#pragma once
// Reads the directory of a cabinet, made by anyone, without trusting a byte of it. The data records are not
// touched.

#include <istream>
#include <string>

#include "tools/cabarc/CabinetDirectory.h"

namespace tools::cabarc {

/// Reads the directory of the cabinet that starts at the beginning of `cabinet`, a seekable binary stream.
/// `label` names the cabinet in messages. Throws ToolError with one line when it is no cabinet, shorter than
/// it states, or when a record contradicts itself or the format; whatever is returned is in range: folder
/// numbers exist (or mark a member that is continued in another cabinet of a set), names have 1 to
/// kMaxNameBytes bytes, members lie within their folder.
CabinetDirectory ReadCabinetDirectory(std::istream& cabinet, const std::string& label);

/// Opens the file at `path` (UTF-8) and reads its directory; `path` is the label too. Throws ToolError.
CabinetDirectory ReadCabinetFile(const std::string& path);

}  // namespace tools::cabarc
