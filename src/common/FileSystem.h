#pragma once
// The operating system's file functions, thinly: each does one thing and raises RuntimeError (the number
// mapped from the system's error, the file named) when it cannot. Helpers that report failure by their result
// instead are in SetupCommon.

#include <cstdint>
#include <optional>
#include <string>

#include "src/common/Handle.h"

namespace velbooter {

/// One name of a directory listing.
struct FolderEntry {
    std::string Name;
    bool IsFolder = false;
    bool IsLink = false;  ///< a junction or symbolic link: its contents lie elsewhere
};

/// One enumeration of the files and folders that match a pattern ("C:\App\*.*"), hidden and system entries,
/// "." and
/// ".." included, in the order the system gives them. A missing folder or no match is an empty listing; a
/// drive that is not ready raises RuntimeError.
class FolderListing {
 public:
    explicit FolderListing(const std::string& pattern) : pattern_(pattern) {}

    /// Returns the next entry, or nothing after the last.
    std::optional<FolderEntry> Next();

    /// Makes Next() begin again with the first entry of a fresh enumeration.
    void Restart() { search_.Reset(); }

 private:
    std::string pattern_;
    FindHandle search_;
};

/// Copies a file, replacing the destination. Its read-only, hidden and system attributes do not protect an
/// old destination. A copy that ends for want of space leaves no part of the file behind. The error names the
/// source when that cannot be read, else the destination.
void CopyFileOver(const std::string& source, const std::string& destination);

/// Deletes a file whatever its attributes are.
void DeleteFileAt(const std::string& file);

/// Clears the read-only, hidden and system attributes of `file`, if it is there.
void MakeWritable(const std::string& file);

/// What tells a file from the one that stood in its place before.
struct FileVersion {
    std::uint64_t Written = 0;  ///< last write, in 100 nanoseconds since 1601 (UTC)
    std::uint64_t Created = 0;  ///< the same of its making, which some drives keep more exactly
    std::uint64_t Bytes = 0;
    std::uint64_t Identity = 0;  ///< the file system's own number of the file
    bool operator==(const FileVersion&) const = default;
};

/// Returns the version of `file`, or nothing when there is no such file or it cannot be looked at.
std::optional<FileVersion> VersionOf(const std::string& file);

/// Returns the length of `file` in bytes without opening it; nothing when there is no such file.
std::optional<std::uint64_t> ListedSize(const std::string& file);

/// Renames or moves a file on one drive; an existing destination is an error (58).
void RenameFileTo(const std::string& file, const std::string& newName);

/// Makes one folder, whose parent must exist; an existing one is an error (75).
void MakeFolder(const std::string& folder);

/// Creates an empty file, or empties an existing one.
void MakeEmptyFile(const std::string& file);

/// Makes `folder` the current folder and its drive the current drive.
void ChangeDriveAndFolder(const std::string& folder);

}  // namespace velbooter
