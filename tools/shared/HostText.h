#pragma once
// How the operating system writes names, paths and the reasons of its failures, from and to UTF-8.
// HostText_win.cpp and HostText_posix.cpp implement it.

#include <cstdint>
#include <filesystem>
#include <string>

#include "tools/shared/ToolError.h"

namespace tools {

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
/// names may be appended to it. On POSIX the path itself. HostFiles.h, InputFile.h and PartFile.h apply it
/// themselves; a path that is handed to the standard library needs it. A path that Windows cannot complete
/// comes back unchanged.
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

}  // namespace tools
