#pragma once
// System helpers for paths, folders, files and the registry. They report failure by their result (false, -1,
// "", nothing) and never by a message; only GetDriveFreeSpace and DeleteIfThere raise. Paths are in the ANSI
// code page.

#include <cstdint>
#include <optional>
#include <string>

namespace velbooter {

/// Appends "\" to `path`, its trailing blanks removed, unless, blanks trimmed, it ends in "/" or "\" already;
/// then it is left as it is.
void AddTrailingBackslash(std::string& path);

/// Returns `text` up to, not including, its first NUL character; all of it when there is none.
std::string TrimAtNul(const std::string& text);

/// Returns whether `character` (a string of one character) is "\" or "/".
bool IsPathSeparator(const std::string& character);

/// Splits `path` at its last separator. Returns true with `folder` (without the separator, so "" for "\a")
/// and `file` set. Without a separator `folder` becomes the current folder, `file` the whole path, and the
/// result is false; a path that ends in a separator sets nothing and gives false.
bool SplitPath(const std::string& path, std::string& folder, std::string& file);

/// Returns the folder part that SplitPath yields ("" when it sets nothing).
std::string GetFolderPart(const std::string& path);

/// Returns `text` between double quotes. With `trim` its blanks are trimmed first. Unless `force`, a text
/// that begins and ends with a double quote already stays as it is.
std::string QuotePath(const std::string& text, bool force, bool trim);

/// Returns `text` without surrounding blanks and then without one pair of enclosing double quotes.
std::string UnquotePath(const std::string& text);

/// Returns the 8.3 form of `path`, or `path` unchanged when the system has none.
std::string GetShortPath(const std::string& path);

/// Return the Windows and the system folder with a trailing backslash; "" when the system does not tell.
std::string GetWindowsFolder();
std::string GetSystemFolder();

/// Return the running program's own file, and its folder without a trailing backslash. The path is cut when
/// it is longer than the system's 259 characters.
std::string GetProgramFile();
std::string GetProgramFolder();

/// Makes the system load libraries from its own folder alone: the program may lie among downloads, any of
/// which could be one. Changes nothing on a Windows 7 without its updates.
void LoadSystemLibrariesAlone();

/// Returns whether a file can be opened for reading: false for a folder, a missing file, and one locked
/// against reading. One pair of enclosing quotes and then one trailing "\" are dropped first. A path with "*"
/// is a pattern: true when a listing of it, folders included, has any entry.
bool FileExists(const std::string& path);

/// Deletes `file` if FileExists. Raises RuntimeError when it cannot.
void DeleteIfThere(const std::string& file);

/// Returns whether a folder exists: whether a listing of everything in it has any entry (an existing folder
/// lists at least "."). False for a blank path and on any error.
bool FolderExists(const std::string& path);

/// Appends "\" to `path` when it does not end in one (the caller sees it) and creates every missing folder of
/// it. Returns whether the system reported success; false too for a path that is longer than the system can
/// take.
bool CreateFolderPath(std::string& path);

/// Deletes a folder with everything in it, read-only, hidden and system files included (DeleteTree). A link
/// is removed, never followed. Returns true when the folder is gone (or never was); false when something
/// could not be deleted, which then stays with all that was not reached yet.
bool DeleteFolderTree(const std::string& path);

/// Returns a file's length in bytes; -1 when it cannot be opened for reading or its length does not fit.
std::int32_t GetFileSize(const std::string& path);

/// Returns the free space of the drive that `path` begins with, in bytes; -1 when it cannot be read. The
/// product is taken in signed 32-bit arithmetic: above 2,147,483,647 it raises RuntimeError 6 (overflow).
double GetDriveFreeSpace(const std::string& path);

/// The roots of the registry that ReadRegistryString can read.
enum class RegistryRoot { ClassesRoot, CurrentUser, LocalMachine, Users };

/// Returns the string value `valueName` of `subKey`, up to its first NUL; nothing when it is missing or not a
/// plain string. The key is not closed afterwards: the helper is used a handful of times in a run.
std::optional<std::string> ReadRegistryString(RegistryRoot root, const std::string& subKey,
                                              const std::string& valueName);

}  // namespace velbooter
