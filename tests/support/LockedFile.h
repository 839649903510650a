#pragma once
// A file that nobody else can open as long as the object has it open.

#include <filesystem>
#include <string>

namespace tools::testing {

class LockedFile {
 public:
    /// Opens the file at `path`, which is created when it does not exist, without sharing it. A path given
    /// as text is in the ANSI code page. Throws std::runtime_error when another process has it open.
    explicit LockedFile(const std::filesystem::path& path);
    explicit LockedFile(const std::string& path);
    ~LockedFile() { Release(); }
    LockedFile(const LockedFile&) = delete;
    LockedFile& operator=(const LockedFile&) = delete;

    /// Closes the file, so that others can open it again. A second call does nothing.
    void Release();

 private:
    void* file_;
};

}  // namespace tools::testing
