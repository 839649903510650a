#pragma once
// Reads the directory of a cabinet from any source without trusting a byte of it. The data records are not
// touched, so listing a cabinet takes no longer when its contents are large.

#include <istream>
#include <string>

#include "tools/cabarc/CabinetDirectory.h"

namespace tools::cabarc {

/// Reads the directory of the cabinet that starts at the beginning of `cabinet`, a seekable binary stream.
/// `label` names the cabinet in messages. Throws ToolError with one line when it is no cabinet, is shorter
/// than it states, states that it is empty, or when a record contradicts itself or the format. Everything
/// that is returned is in range: folder numbers exist (or mark a member that is continued in another cabinet
/// of a set), names have 1 to kMaxNameBytes bytes, members lie within their folder.
CabinetDirectory ReadCabinetDirectory(std::istream& cabinet, const std::string& label);

/// Opens the file at `path` (UTF-8) and reads its directory; `path` is the label, too. Throws ToolError as
/// ReadCabinetDirectory does, and when the file is missing, is no file or cannot be read.
CabinetDirectory ReadCabinetFile(const std::string& path);

}  // namespace tools::cabarc
