#pragma once
// What the companions need of the file systems beyond standard C++: DOS attributes, local times, folders in a
// fixed order, names that lead to one file. Names are UTF-8; HostFiles_win.cpp and HostFiles_posix.cpp
// implement it.

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "tools/shared/DosTime.h"

namespace tools {

/// DOS attribute bits as FAT and cabinets number them.
enum DosAttribute : std::uint8_t {
    kReadOnly = 0x01,
    kHidden = 0x02,
    kSystem = 0x04,
    kArchive = 0x20,
};

/// One entry of a folder. A link to a file counts as that file; a link to a folder (a junction too) is a
/// folder with `IsLink` set, so that a walk can reject what might lead it in circles.
struct HostFile {
    std::string Name;        ///< UTF-8, without the folder
    bool IsFolder = false;   ///< a folder, or a link to one
    bool IsLink = false;     ///< a link to a folder
    bool IsSpecial = false;  ///< neither a file nor a folder: a pipe, a device, a link that leads nowhere
    std::uint64_t Size = 0;  ///< bytes; 0 for a folder
    DosTime Modified;        ///< local time of the last change
    std::uint8_t Attributes = 0;  ///< DosAttribute bits; POSIX: read-only when nobody may write, else archive
};

/// What a name leads to. A link counts as its target on POSIX.
enum class FileKind { Missing, Writable, ReadOnly, Folder, Special };

/// Returns what `path` leads to. A file that nobody may write is ReadOnly; what cannot be looked at counts as
/// Missing.
FileKind KindOf(const std::filesystem::path& path);

/// Returns the size of a file in bytes; 0 for anything that is missing, is no file or cannot be looked at.
std::uint64_t SizeOf(const std::filesystem::path& file);

/// Returns how many bytes the user may still write to the drive of `folder`, which need not exist. Where the
/// system cannot say, the result is the largest number, as if there were enough.
std::uint64_t FreeSpace(const std::filesystem::path& folder);

/// Returns whether both names lead to one file or folder, whatever links or spellings are on the way; false
/// when either is missing or cannot be looked at.
bool IsSame(const std::filesystem::path& left, const std::filesystem::path& right);

/// Returns whether `file`, which need not exist, is in `folder` or below it.
bool LiesBelow(const std::filesystem::path& file, const std::filesystem::path& folder);

/// Creates `folder` and its missing parents; one that exists already is no error. Throws ToolError naming
/// `folder` when one of them cannot be created. A drive or a share is no folder and is not looked at: if it
/// is missing, opening a file on it fails.
void CreateFolders(const std::filesystem::path& folder);

/// Returns the entries of `folder` except "." and "..", in the order of PrecedesWithoutCase (Utf8.h). Throws
/// ToolError naming the folder when it cannot be read, and naming the entry when its name cannot be
/// expressed in Unicode.
std::vector<HostFile> ListFolder(const std::filesystem::path& folder);

/// Sets the modification time (local time) and the DOS attributes of a closed file; POSIX sets only the
/// read-only attribute. A time that does not exist becomes the nearest one, and it is no error when the file
/// system refuses it: nothing is lost. Returns false when the attributes were refused.
bool SetTimeAndAttributes(const std::filesystem::path& file, DosTime modified, std::uint8_t attributes);

}  // namespace tools
