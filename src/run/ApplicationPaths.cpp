#include "src/run/ApplicationPaths.h"

#include "src/common/Text.h"

namespace velbooter {

bool HasDrive(const std::string& path) {
    return path.size() >= 2 && path[1] == ':';
}

std::string ApplicationPaths::FullPathOf(const std::string& path) const {
    return HasDrive(path) ? path : PathOf(path);
}

std::string ApplicationPaths::RelativePathOf(const std::string& path) const {
    if (!StartsWithIgnoringCase(path, ApplicationFolder)) return path;
    size_t begin = ApplicationFolder.size() + 1;
    // FullPathOf of a path that begins with a backslash contains two of them. If one remained, a tool would
    // take the rest for a path from the drive's root.
    if (path.compare(begin - 1, 1, "\\") == 0) begin = path.find_first_not_of('\\', begin);
    return begin < path.size() ? path.substr(begin) : "";
}

}  // namespace velbooter
