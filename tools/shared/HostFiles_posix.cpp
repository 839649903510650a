#include "tools/shared/HostFiles.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <limits>
#include <system_error>

#include "tools/shared/Handle.h"
#include "tools/shared/HostText.h"
#include "tools/shared/ToolError.h"
#include "tools/shared/Utf8.h"

namespace tools {
namespace {

constexpr mode_t kAnyoneWrites = S_IWUSR | S_IWGRP | S_IWOTH;

DosTime LocalDosTime(std::time_t moment) {
    std::tm local{};
    if (localtime_r(&moment, &local) == nullptr) return DosTime{};
    return PackDosTime(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min,
                       local.tm_sec);
}

struct OpenFolder {
    using Value = DIR*;
    static Value None() { return nullptr; }
    static void Close(Value folder) { closedir(folder); }
};

HostFile Describe(int folder, const std::filesystem::path& folderPath, const char* name) {
    HostFile entry;
    entry.Name = name;
    if (!IsUtf8(entry.Name))
        throw ToolError(Utf8FromPath(folderPath) +
                        ": holds a name that is not UTF-8: " + PrintableBytes(entry.Name));
    struct stat status {};
    if (fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) != 0)
        FailWithReason(folderPath / name, "cannot be read", errno);
    const bool isLink = S_ISLNK(status.st_mode);
    if (isLink && fstatat(folder, name, &status, 0) != 0) {
        entry.IsSpecial = true;
        return entry;
    }
    entry.IsFolder = S_ISDIR(status.st_mode);
    entry.IsLink = isLink && entry.IsFolder;
    entry.IsSpecial = !entry.IsFolder && !S_ISREG(status.st_mode);
    if (S_ISREG(status.st_mode)) entry.Size = static_cast<std::uint64_t>(status.st_size);
    entry.Modified = LocalDosTime(status.st_mtime);
    if ((status.st_mode & kAnyoneWrites) == 0)
        entry.Attributes = kReadOnly;
    else if (!entry.IsFolder)
        entry.Attributes = kArchive;
    return entry;
}

}  // namespace

FileKind KindOf(const std::filesystem::path& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) return FileKind::Missing;
    if (S_ISDIR(status.st_mode)) return FileKind::Folder;
    if (!S_ISREG(status.st_mode)) return FileKind::Special;
    return (status.st_mode & kAnyoneWrites) == 0 ? FileKind::ReadOnly : FileKind::Writable;
}

std::uint64_t SizeOf(const std::filesystem::path& file) {
    struct stat status {};
    return stat(file.c_str(), &status) == 0 && S_ISREG(status.st_mode)
               ? static_cast<std::uint64_t>(status.st_size)
               : 0;
}

std::uint64_t FreeSpace(const std::filesystem::path& folder) {
    std::error_code error;
    std::filesystem::path present = std::filesystem::absolute(folder.empty() ? "." : folder, error);
    while (KindOf(present) == FileKind::Missing && present.has_relative_path())
        present = present.parent_path();
    const std::filesystem::space_info space = std::filesystem::space(present, error);
    return error ? std::numeric_limits<std::uint64_t>::max() : space.available;
}

bool IsSame(const std::filesystem::path& left, const std::filesystem::path& right) {
    std::error_code ignored;
    return std::filesystem::equivalent(left, right, ignored);
}

bool LiesBelow(const std::filesystem::path& file, const std::filesystem::path& folder) {
    std::error_code ignored;
    std::filesystem::path above =
        std::filesystem::weakly_canonical(std::filesystem::absolute(file, ignored), ignored);
    while (above.has_relative_path()) {
        above = above.parent_path();
        if (IsSame(above, folder)) return true;
    }
    return false;
}

void CreateFolders(const std::filesystem::path& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) throw ToolError(Utf8FromPath(folder) + ": this folder cannot be created: " + error.message());
}

std::vector<HostFile> ListFolder(const std::filesystem::path& folder) {
    const UniqueHandle<OpenFolder> opened(opendir(folder.c_str()));
    if (!opened) FailWithReason(folder, "this folder cannot be read", errno);
    std::vector<HostFile> entries;
    for (;;) {
        errno = 0;
        const dirent* const found = readdir(opened.Get());
        if (found == nullptr) break;
        if (std::strcmp(found->d_name, ".") == 0 || std::strcmp(found->d_name, "..") == 0) continue;
        entries.push_back(Describe(dirfd(opened.Get()), folder, found->d_name));
    }
    if (errno != 0) FailWithReason(folder, "this folder cannot be read", errno);
    std::sort(entries.begin(), entries.end(),
              [](const HostFile& a, const HostFile& b) { return PrecedesWithoutCase(a.Name, b.Name); });
    return entries;
}

bool SetTimeAndAttributes(const std::filesystem::path& file, DosTime stored, std::uint8_t attributes) {
    const CalendarTime modified = UnpackDosTime(NearestMoment(stored));
    std::tm local{};
    local.tm_year = modified.Year - 1900;
    local.tm_mon = modified.Month - 1;
    local.tm_mday = modified.Day;
    local.tm_hour = modified.Hour;
    local.tm_min = modified.Minute;
    local.tm_sec = modified.Second;
    local.tm_isdst = -1;
    timespec times[2]{};
    times[0].tv_nsec = UTIME_OMIT;
    times[1].tv_sec = mktime(&local);
    utimensat(AT_FDCWD, file.c_str(), times, 0);
    struct stat status {};
    if (stat(file.c_str(), &status) != 0) return false;
    return (attributes & kReadOnly) == 0 ||
           chmod(file.c_str(), status.st_mode & ~kAnyoneWrites & 07777U) == 0;
}

}  // namespace tools
