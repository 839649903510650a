#include "src/common/SingleInstance.h"

#include <windows.h>

#include <algorithm>

#include "src/common/Text.h"

namespace velbooter {

SingleInstance::SingleInstance(const std::string& applicationFolder) {
    // A mutex name cannot hold a backslash and is shorter than the longest path; the end of a path tells
    // more.
    std::string name = LowerCase(applicationFolder);
    std::replace(name.begin(), name.end(), '\\', '/');
    const size_t longest = MAX_PATH - sizeof "Velbooter ";
    if (name.size() > longest) name.erase(0, name.size() - longest);
    mutex_ = KernelHandle(::CreateMutexA(nullptr, FALSE, ("Velbooter " + name).c_str()));
    isFirst_ = ::GetLastError() != ERROR_ALREADY_EXISTS && ::GetLastError() != ERROR_ACCESS_DENIED;
}

}  // namespace velbooter
