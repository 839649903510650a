#pragma once
// Listing, testing, creating and deleting folders. Functions that return a bool report failure by it;
// listings, MakeFolder and ChangeDriveAndFolder raise RuntimeError.

#include <cstddef>
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
    /// to its end (a drive that is not ready, a share that disappears). Raises RuntimeError 52 for a name
    /// that the code page cannot represent, so that no name is mistaken for another. Called again after an
    /// error, it tries the same entry.
    std::optional<FolderEntry> Next();

    /// Starts a fresh enumeration: Next() returns its first entry.
    void Restart();

 private:
    std::string pattern_;
    FindHandle search_;
    size_t given_ = 0;  ///< entries that Next() has returned since the beginning
};

/// Returns whether a listing of `pattern` has any entry; false on any error.
bool AnyMatches(const std::string& pattern);

/// Returns whether a folder exists: whether a listing of everything in it has any entry (an existing folder
/// lists at least "."). False for a path that is empty or only spaces, and on any error.
bool FolderExists(const std::string& path);

/// Appends "\" to `path` itself when it does not end in one, and creates every missing folder of it. Returns
/// whether the system reported success; a path that is longer than the system accepts is a failure, too.
bool CreateFolderPath(std::string& path);

/// Creates one folder, whose parent must exist; an existing one is an error (75).
void MakeFolder(const std::string& folder);

/// Deletes a folder with everything in it: read-only, hidden and system files, names that the code page
/// cannot represent, and paths of any length. A link is removed, never followed, even when it is `folder`
/// itself. Stops at the first entry that cannot be deleted and returns false; what was deleted by then is
/// gone. Returns true for a `folder` that is missing or cannot be listed, but false when a subfolder cannot
/// be listed.
bool DeleteTree(const std::string& folder);

/// Deletes a folder as DeleteTree does. Returns whether that succeeded and FolderExists no longer finds it.
bool DeleteFolderTree(const std::string& path);

/// Makes `folder` the current folder and its drive the current drive, for the whole process. A drive alone
/// ("E:") stands for its root. Raises RuntimeError when the folder is missing or the drive is not ready.
void ChangeDriveAndFolder(const std::string& folder);

/// Return the Windows and the system folder with a trailing backslash; "" when the system does not report
/// them.
std::string GetWindowsFolder();
std::string GetSystemFolder();

}  // namespace velbooter
