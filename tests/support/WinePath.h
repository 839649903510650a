#pragma once
// Files of a test as the system below Wine knows them, for its programs.

#include <filesystem>
#include <string>

namespace velbooter {

/// Returns the path by which the system below Wine knows `path`; "" on a Windows, or when it knows none.
std::string UnixPath(const std::filesystem::path& path);

}  // namespace velbooter
