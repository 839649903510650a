#pragma once
// The operating system's file functions, thinly: each does one thing and raises RuntimeError (the number
// mapped from the system's error, the file named) when it cannot. Helpers that report failure by their result
// instead are in SetupCommon.

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "src/common/Handle.h"

namespace velbooter {

/// One name of a directory listing.
struct FolderEntry {
    std::string Name;
    bool IsFolder = false;
};

/// One enumeration of the files and folders that match a pattern ("C:\App\*.*"), hidden and system entries,
/// "." and ".." included, in the order the system gives them. A missing folder or no match is an empty
/// listing.
class FolderListing {
 public:
    explicit FolderListing(const std::string& pattern) : pattern_(pattern) {}

    /// Returns the next entry, or nothing after the last. Raises RuntimeError when the folder cannot be read
    /// to its end (a drive that is not ready, a share that goes), and for a name that the code page cannot
    /// hold (52): no name is ever taken for another one. Called again after an error, it tries the same
    /// entry.
    std::optional<FolderEntry> Next();

    /// Makes Next() begin again with the first entry of a fresh enumeration.
    void Restart();

 private:
    std::string pattern_;
    FindHandle search_;
    size_t given_ = 0;  ///< entries that Next() has returned since the beginning
};

/// Returns whether a listing of `pattern` has any entry; false on any error.
bool AnyMatches(const std::string& pattern);

/// Deletes a folder with everything in it: read-only, hidden and system files, names that the code page
/// cannot hold, and paths of any length. A link is removed, never followed, be it `folder` itself. Returns
/// false at the first thing that cannot be deleted, which stays with all that was not reached yet. A folder
/// that is missing or cannot be listed counts as gone (true); one that lies in `folder` has to be gone after
/// its turn.
bool DeleteTree(const std::string& folder);

/// Copies a file, replacing the destination. Its read-only, hidden and system attributes do not protect an
/// old destination. A copy that ends for want of space leaves no part of the file behind. `whileCopying`, if
/// given, is called now and then in a long copy; what it throws ends the copy. The error names the source
/// when that cannot be read, else the destination.
void CopyFileOver(const std::string& source, const std::string& destination,
                  const std::function<void()>& whileCopying = {});

/// The same, by way of a file beside the destination (its name with kCopySuffix): whatever interrupts the
/// copy, the destination is the old file or the whole new one, which is never read-only, hidden or system.
void CopyWholeFileOver(const std::string& source, const std::string& destination,
                       const std::function<void()>& whileCopying = {});
inline constexpr const char* kCopySuffix = ".copy~";

/// Deletes a file whatever its attributes are.
void DeleteFileAt(const std::string& file);

/// Clears the read-only, hidden and system attributes of `file`, if it is there.
void MakeWritable(const std::string& file);

/// What tells a file from the one that stood in its place before.
struct FileVersion {
    std::uint64_t Written = 0;  ///< last write, in 100 nanoseconds since 1601 (UTC)
    std::uint64_t Created = 0;  ///< the same of its making, which some drives keep more exactly
    std::uint64_t Bytes = 0;
    std::uint64_t Identity = 0;  ///< the file system's own number of the file; 0 where a share tells none
    std::uint32_t Volume = 0;    ///< the serial number of its volume
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

/// Makes `folder` the current folder and its drive the current drive. A drive alone ("E:") is its root.
void ChangeDriveAndFolder(const std::string& folder);

}  // namespace velbooter
