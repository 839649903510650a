#include "tests/support/LockedFile.h"

#include <windows.h>

#include <stdexcept>

namespace tools::testing {

LockedFile::LockedFile(const std::filesystem::path& path)
    : file_(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                        FILE_ATTRIBUTE_NORMAL, nullptr)) {
    if (file_ == INVALID_HANDLE_VALUE) throw std::runtime_error("the test cannot lock " + path.string());
}

LockedFile::LockedFile(const std::string& path)
    : file_(CreateFileA(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                        FILE_ATTRIBUTE_NORMAL, nullptr)) {
    if (file_ == INVALID_HANDLE_VALUE) throw std::runtime_error("the test cannot lock " + path);
}

void LockedFile::Release() {
    if (file_ != INVALID_HANDLE_VALUE) CloseHandle(file_);
    file_ = INVALID_HANDLE_VALUE;
}

}  // namespace tools::testing
