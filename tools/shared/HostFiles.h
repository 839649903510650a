#pragma once
// What the companions need of the operating system's files beyond standard C++: DOS attributes, local times,
// the arguments as the user typed them, and a way to replace a file that never leaves half of one.
// All names are UTF-8; HostFiles_win.cpp and HostFiles_posix.cpp implement it.

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

/// One entry of a folder.
struct HostFile {
    std::string Name;              ///< UTF-8, without the folder
    bool IsFolder = false;
    std::uint64_t Size = 0;        ///< bytes; 0 for a folder
    DosTime Modified;              ///< local time of the last change
    std::uint8_t Attributes = 0;   ///< DosAttribute bits; POSIX: read-only when nobody may write, else archive
};

/// Returns the arguments of the program, its own name excluded, as UTF-8. On Windows they are taken from the
/// process's wide command line (the C library would expand wildcards and lose characters); on POSIX from argv.
std::vector<std::string> Arguments(int argc, char** argv);

/// Converts UTF-8 (with "/" or, on either system, "\" between folders) to a path of this system.
std::filesystem::path PathFromUtf8(const std::string& text);

/// Returns the entries of `folder` except "." and "..", sorted by name without regard to ASCII case (byte order
/// decides between names that are equal so). Throws ToolError naming the folder when it cannot be read, and naming the
/// entry when its name cannot be expressed in Unicode.
std::vector<HostFile> ListFolder(const std::filesystem::path& folder);

/// Sets the modification time (local time) and the DOS attributes of a closed file. Returns false when the system
/// refused; POSIX sets what it can express.
bool SetTimeAndAttributes(const std::filesystem::path& file, DosTime modified, std::uint8_t attributes);

}  // namespace tools
