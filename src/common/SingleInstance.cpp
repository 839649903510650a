#include "src/common/SingleInstance.h"

#include <windows.h>

#include <algorithm>
#include <array>

#include "src/common/Files.h"
#include "src/common/Text.h"

namespace velbooter {

namespace {

// Returns the full name of `file` in lower case, which identifies it where a share reports no file number.
std::string FinalPath(const std::string& file) {
    const FileHandle opened = OpenExistingFile(file, 0);
    std::array<char, MAX_PATH> path{};
    const DWORD length =
        opened ? ::GetFinalPathNameByHandleA(opened.Get(), path.data(), MAX_PATH, FILE_NAME_NORMALIZED) : 0;
    return LowerCase(length == 0 || length >= MAX_PATH ? file : std::string(path.data(), length));
}

// A mutex name cannot contain a backslash and cannot be as long as the longest path. Of a long path the end
// is kept, because it distinguishes better.
std::string MarkOf(const std::string& executable) {
    const auto stamp = StampOf(executable);
    if (stamp && stamp->Identity != 0)
        return std::to_string(stamp->Volume) + " " + std::to_string(stamp->Identity);
    constexpr size_t kLongest = 200;
    std::string path = FinalPath(executable);
    std::replace(path.begin(), path.end(), '\\', '/');
    return path.size() > kLongest ? path.substr(path.size() - kLongest) : path;
}

}  // namespace

SingleInstance::SingleInstance(const std::string& executable) {
    const std::string name = "Global\\Velbooter " + MarkOf(executable);
    HANDLE mutex = ::CreateMutexA(nullptr, FALSE, name.c_str());
    const DWORD error = ::GetLastError();
    mutex_ = KernelHandle(mutex);
    // Another user's mutex may exist but deny access.
    isFirst_ = error != ERROR_ALREADY_EXISTS && error != ERROR_ACCESS_DENIED;
}

}  // namespace velbooter
