#pragma once
// The operating system's file functions, thinly. FileExists, GetFileSize, ListedSize and StampOf report
// failure by their result; all others raise RuntimeError (the number mapped from the system's error, the file
// named) when they cannot do their one thing.

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace velbooter {

/// Returns whether a file can be opened for reading: false for a folder, a missing file, and one locked
/// against reading. One pair of enclosing quotes and then one trailing "\" are dropped first. A path with "*"
/// is a pattern: true when a listing of it, folders included, has any entry.
bool FileExists(const std::string& path);

/// Deletes `file` if FileExists. Raises RuntimeError when it cannot.
void DeleteIfThere(const std::string& file);

/// Returns a file's length in bytes; -1 when it cannot be opened for reading or its length does not fit.
std::int32_t GetFileSize(const std::string& path);

/// Returns the length of `file` in bytes without opening it; nothing when there is no such file.
std::optional<std::uint64_t> ListedSize(const std::string& file);

/// What tells a file from the one that stood in its place before.
struct FileStamp {
    std::uint64_t Written = 0;  ///< last write, in 100 nanoseconds since 1601 (UTC)
    std::uint64_t Created = 0;  ///< the same of its making, which some drives keep more exactly
    std::uint64_t Bytes = 0;
    std::uint64_t Identity = 0;  ///< the file system's own number of the file; 0 where a share tells none
    std::uint32_t Volume = 0;    ///< the serial number of its volume
    bool operator==(const FileStamp&) const = default;
};

/// Returns the version of `file`, or nothing when there is no such file or it cannot be looked at.
std::optional<FileStamp> StampOf(const std::string& file);

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

/// Renames or moves a file on one drive; an existing destination is an error (58).
void RenameFileTo(const std::string& file, const std::string& newName);

/// Creates an empty file, or empties an existing one.
void MakeEmptyFile(const std::string& file);

}  // namespace velbooter
