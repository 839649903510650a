#pragma once
// A file that nobody else can open while it is held.

#include <windows.h>

#include <string>

#include "tests/e2e/support/HarnessFailure.h"

namespace velbooter::e2e {

class LockedFile {
 public:
    /// Opens the file at `path`, which is made when it does not exist, and shares it with nobody. Throws
    /// HarnessFailure when another process has it open.
    explicit LockedFile(const std::string& path)
        : file_(::CreateFileA(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                              FILE_ATTRIBUTE_NORMAL, nullptr)) {
        if (file_ == INVALID_HANDLE_VALUE) throw HarnessFailure("cannot lock " + path);
    }
    ~LockedFile() { Release(); }
    LockedFile(const LockedFile&) = delete;
    LockedFile& operator=(const LockedFile&) = delete;

    /// Lets others open the file again. A second call does nothing.
    void Release() {
        if (file_ != INVALID_HANDLE_VALUE) ::CloseHandle(file_);
        file_ = INVALID_HANDLE_VALUE;
    }

 private:
    HANDLE file_;
};

}  // namespace velbooter::e2e
