#pragma once
// A new folder for every test, and short functions to fill it and to read from it.

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/TestData.h"
#include "tools/shared/DosTime.h"

namespace tools::testing {

/// Writes a file with its missing folders; reads one. Throw std::runtime_error.
void WriteFileAt(const std::filesystem::path& file, const Bytes& content);
Bytes ReadFileAt(const std::filesystem::path& file);

/// An empty folder under the system's temporary folder; removed with everything in it at the end, even
/// read-only files. Names are UTF-8 with "/" between folders, relative to the folder.
class TestFolder {
 public:
    TestFolder();
    ~TestFolder();
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    std::filesystem::path Path(const std::string& name = "") const;
    /// The same as UTF-8 text, for command lines.
    std::string Text(const std::string& name = "") const;
    void MakeFolder(const std::string& name) const;
    void Write(const std::string& name, const Bytes& content) const;
    void Write(const std::string& name, const std::string& content) const;
    void Write(const std::string& name, const Bytes& content, DosTime modified,
               std::uint8_t attributes) const;
    Bytes Read(const std::string& name) const;
    bool Exists(const std::string& name) const;
    void SetReadOnly(const std::string& name, bool isReadOnly) const;
    /// The names in a folder, sorted.
    std::vector<std::string> Names(const std::string& name = "") const;

 private:
    std::filesystem::path root_;
};

/// Returns the text of the ToolError that `work` throws; another text when it throws none.
template <typename Work>
std::string ErrorOf(Work work) {
    try {
        work();
    } catch (const std::exception& error) {
        return error.what();
    }
    return "(no error)";
}

}  // namespace tools::testing
