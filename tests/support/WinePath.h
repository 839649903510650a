#pragma once
// The paths of a test's files in the system below Wine, for programs of that system.

#include <filesystem>
#include <string>

namespace velbooter {

/// Returns the path of `path` in the system below Wine; "" on a real Windows, or when there is none.
std::string UnixPath(const std::filesystem::path& path);

}  // namespace velbooter
