#pragma once
// A fresh copy of the demonstration's application folder in the temporary folder. Every test has its own, so
// that nothing that a run leaves reaches another test. Paths are in the ANSI code page, tails are relative
// to the folder and have no leading backslash.

#include <string>
#include <vector>

namespace velbooter::e2e {

class DemoFolder {
 public:
    /// Copies the demonstration. `name` becomes the last part of the folder's path and may contain spaces;
    /// `parent` is the folder to create it in, else the test's own. Throws HarnessFailure when the
    /// demonstration has not been built.
    explicit DemoFolder(const std::string& name = "app", const std::string& parent = "");

    /// Removes the folder with everything in it; what another process still has open stays.
    ~DemoFolder();
    DemoFolder(const DemoFolder&) = delete;
    DemoFolder& operator=(const DemoFolder&) = delete;

    /// The full path of `tail`; without one, that of the folder, without a trailing backslash.
    std::string Path(const std::string& tail = "") const;

    /// The full path of `tail` in a folder next to the application folder, for files that belong to the
    /// test; that folder is created at the first call.
    std::string OutsidePath(const std::string& tail) const;

    bool Exists(const std::string& tail) const;

    /// Writes `contents` unchanged and creates missing folders. Throws HarnessFailure on failure.
    void Write(const std::string& tail, const std::string& contents) const;

    /// The contents of a file, unchanged. Throws HarnessFailure when it cannot be read.
    std::string Read(const std::string& tail) const;

    /// Removes a file, or a folder with everything in it; it must exist.
    void Remove(const std::string& tail) const;

    /// The names in a folder, sorted; empty when the folder does not exist.
    std::vector<std::string> Names(const std::string& tail) const;

    /// Replaces the configuration of the disk "custom"; lines end in CR LF.
    void SetCustomDisk(const std::vector<std::string>& lines) const;

 private:
    std::string base_;  ///< the test's own folder; the application folder lies below it, or in its parent
    std::string path_;
};

/// The lines of a disk with nothing but the two files that it starts with; it is built without packing
/// anything.
std::vector<std::string> SmallDisk();

/// The lines of SmallDisk followed by `more`.
std::vector<std::string> SmallDiskWith(const std::vector<std::string>& more);

/// Returns a text in the ANSI code page. Throws HarnessFailure when the code page lacks one of its
/// characters.
std::string Ansi(const std::wstring& text);

/// Reads a whole file by its full path. Throws HarnessFailure when it cannot be read.
std::string ReadFileAt(const std::string& path);

/// Writes a whole file by its full path and creates missing folders. Throws HarnessFailure on failure.
void WriteFileAt(const std::string& path, const std::string& contents);

}  // namespace velbooter::e2e
