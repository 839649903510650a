#pragma once
// Thin wrappers around the operating system's file functions. FileExists, GetFileSize, ListedSize and StampOf
// report failure in their result. All others raise RuntimeError with the number that stands for the system's
// error and the name of the file.

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace velbooter {

/// Returns whether a file can be opened for reading: false for a folder, a missing file, and one locked
/// against reading. One pair of enclosing quotes and then one trailing "\" are removed first. A path with "*"
/// is a pattern: true when a listing of it, folders included, has any entry.
bool FileExists(const std::string& path);

/// Deletes `file` if FileExists finds it. Raises RuntimeError when the deletion fails.
void DeleteIfThere(const std::string& file);

/// Returns a file's length in bytes; -1 when it cannot be opened for reading or its length does not fit.
std::int32_t GetFileSize(const std::string& path);

/// Returns the length of `file` in bytes without opening it; nothing when there is no such file.
std::optional<std::uint64_t> ListedSize(const std::string& file);

/// Distinguishes a file from an earlier file of the same name.
struct FileStamp {
    std::uint64_t Written = 0;  ///< last write, in 100 nanoseconds since 1601 (UTC)
    std::uint64_t Created = 0;  ///< creation, in the same unit; some drives store it more precisely
    std::uint64_t Bytes = 0;
    std::uint64_t Identity = 0;  ///< the file system's own number of the file; 0 where a share reports none
    std::uint32_t Volume = 0;    ///< the serial number of its volume
    bool operator==(const FileStamp&) const = default;
};

/// Returns the stamp of `file`; nothing when the file does not exist or cannot be queried.
std::optional<FileStamp> StampOf(const std::string& file);

/// Copies a file and replaces the destination, even one that is read-only, hidden or system. A copy that
/// fills the disk leaves no partial file. `whileCopying`, if given, is called repeatedly during a long copy;
/// an exception from it ends the copy and reaches the caller. The RuntimeError names the source when that
/// cannot be read, else the destination.
void CopyFileOver(const std::string& source, const std::string& destination,
                  const std::function<void()>& whileCopying = {});

/// Does the same by way of a temporary file, the destination's name followed by kCopySuffix. Whatever
/// interrupts the copy, the destination is either the old file or the complete new one, which is never
/// read-only, hidden or system.
void CopyWholeFileOver(const std::string& source, const std::string& destination,
                       const std::function<void()>& whileCopying = {});
/// What the name of an unfinished copy ends in. CheckDOSFiles deletes those that an interrupted import has
/// left.
inline constexpr const char* kCopySuffix = ".copy~";

/// Deletes a file, whatever its attributes.
void DeleteFileAt(const std::string& file);

/// Clears the read-only, hidden and system attributes of `file`, if it is there.
void MakeWritable(const std::string& file);

/// Renames or moves a file on one drive; an existing destination is an error (58).
void RenameFileTo(const std::string& file, const std::string& newName);

/// Creates an empty file, or empties an existing one; a read-only, hidden or system file is an error.
void MakeEmptyFile(const std::string& file);

}  // namespace velbooter
