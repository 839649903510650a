#pragma once
// Access to the program's INI files, a thin object around the system's profile functions. Nothing is cached:
// every call goes to the file. Values are in the Windows ANSI code page. The system's rules apply: the case
// of sections and keys does not matter, and a pair of quotes around a value is removed when it is read.

#include <string>

namespace velbooter {

class INIFile {
 public:
    /// Full path of the file; not checked. A missing file reads as empty values and is created by the first
    /// write.
    std::string FileName;

    INIFile() = default;
    explicit INIFile(const std::string& fileName) : FileName(fileName) {}

    /// Sets FileName to `folder` + "\" + `file`, without the folder's trailing and the file's leading
    /// backslashes.
    void CreateIni(const std::string& folder, const std::string& file);

    /// Writes key = value in [section]; an empty value writes the key with nothing after its equals sign. A
    /// failure is not reported.
    void SetINIKey(const std::string& section, const std::string& key, const std::string& value) const;

    /// Returns the value of the key followed by one NUL character: just the NUL for a missing key or an empty
    /// value. Of a value of 99 characters or more, only the first 99 are returned, without the NUL. Callers
    /// that compare or join a value cut it with TrimAtNul first.
    std::string GetINIKey(const std::string& section, const std::string& key) const;
};

}  // namespace velbooter
