#pragma once
// Folders: what is in one, whether it is there, how it is made and how it goes. Functions that return a bool
// report failure by it; listings, MakeFolder and ChangeDriveAndFolder raise RuntimeError.

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

/// Returns whether a folder exists: whether a listing of everything in it has any entry (an existing folder
/// lists at least "."). False for a blank path and on any error.
bool FolderExists(const std::string& path);

/// Appends "\" to `path` when it does not end in one (the caller sees it) and creates every missing folder of
/// it. Returns whether the system reported success; false too for a path that is longer than the system can
/// take.
bool CreateFolderPath(std::string& path);

/// Makes one folder, whose parent must exist; an existing one is an error (75).
void MakeFolder(const std::string& folder);

/// Deletes a folder with everything in it: read-only, hidden and system files, names that the code page
/// cannot hold, and paths of any length. A link is removed, never followed, be it `folder` itself. Returns
/// false at the first thing that cannot be deleted, which stays with all that was not reached yet. A folder
/// that is missing or cannot be listed counts as gone (true); one that lies in `folder` has to be gone after
/// its turn.
bool DeleteTree(const std::string& folder);

/// Deletes a folder with everything in it, read-only, hidden and system files included (DeleteTree). A link
/// is removed, never followed. Returns true when the folder is gone (or never was); false when something
/// could not be deleted, which then stays with all that was not reached yet.
bool DeleteFolderTree(const std::string& path);

/// Makes `folder` the current folder and its drive the current drive. A drive alone ("E:") is its root.
void ChangeDriveAndFolder(const std::string& folder);

/// Return the Windows and the system folder with a trailing backslash; "" when the system does not tell.
std::string GetWindowsFolder();
std::string GetSystemFolder();

}  // namespace velbooter
