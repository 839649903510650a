#pragma once
// What the companions need of the operating system beyond standard C++: DOS attributes, local times, the
// arguments as the user typed them, and messages that a console shows as they are. All texts and names are
// UTF-8; HostFiles_win.cpp and HostFiles_posix.cpp implement it.

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "tools/shared/DosTime.h"
#include "tools/shared/ToolError.h"

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

/// Returns the arguments of the program, its own name excluded, as UTF-8. Throws ToolError when one of them
/// cannot be expressed in Unicode. On Windows they are taken from the process's wide command line (the C
/// library would expand wildcards and lose characters); on POSIX from argv.
std::vector<std::string> Arguments(int argc, char** argv);

/// Has Windows look for libraries in its own folder only from now on, and not beside the program, where
/// anyone may have put a file with the name of a system library. Without effect on a Windows 7 without
/// updates, and on POSIX, which never looks there. To be called before anything that loads a library.
void UseSystemLibrariesOnly();

/// The standard streams that Print writes to.
enum class Stream { Output, Error };

/// Writes UTF-8 text to a standard stream; a Windows console gets it as Unicode, a file or pipe as it is.
/// Failure to write (a closed pipe) is ignored.
void Print(Stream stream, const std::string& text);

/// Converts UTF-8 (with "/" or, on either system, "\" between folders) to a path of this system. Throws
/// ToolError when `text` is not UTF-8.
std::filesystem::path PathFromUtf8(const std::string& text);

/// Converts a path to UTF-8 for messages; the prefix that LongPath adds is left out. Never fails: what
/// cannot be expressed in UTF-8 is replaced by ASCII, so the result need not lead back to the file.
std::string Utf8FromPath(const std::filesystem::path& path);

/// Returns `name` (well-formed UTF-8) in capital letters, those beyond ASCII too: Windows takes two names
/// for one when these are equal. Throws ToolError on POSIX when the system has no locale C.UTF-8.
std::u16string FoldedName(const std::string& name);

/// Returns a form of `path` whose length Windows does not limit (absolute, with the prefix for long paths);
/// names may be appended to it. On POSIX the path itself. The functions below apply it themselves; a path
/// that is handed to the standard library needs it. A path that Windows cannot complete comes back
/// unchanged.
std::filesystem::path LongPath(const std::filesystem::path& path);

/// Returns the system's own text for one of its error numbers (errno, or what GetLastError returns), in the
/// user's language and without a full stop on Windows; "error N" where Windows has no text.
std::string SystemReason(std::int64_t error);

/// Throws a ToolError that names `file`, the `problem` ("cannot be read") and the system's reason for
/// `error`. Putting a message together may change the system's error number; as an argument it is fetched
/// before.
[[noreturn]] inline void FailWithReason(const std::filesystem::path& file, const char* problem,
                                        std::int64_t error) {
    throw ToolError(Utf8FromPath(file) + ": " + problem + ": " + SystemReason(error));
}

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
