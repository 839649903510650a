#pragma once
// A file that nobody else can open while it is held.

#include <filesystem>
#include <string>

namespace tools::testing {

class LockedFile {
 public:
    /// Opens the file at `path`, which is made when it does not exist, and shares it with nobody. A text is
    /// in the ANSI code page. Throws std::runtime_error when another process has it open.
    explicit LockedFile(const std::filesystem::path& path);
    explicit LockedFile(const std::string& path);
    ~LockedFile() { Release(); }
    LockedFile(const LockedFile&) = delete;
    LockedFile& operator=(const LockedFile&) = delete;

    /// Lets others open the file again. A second call does nothing.
    void Release();

 private:
    void* file_;
};

}  // namespace tools::testing
