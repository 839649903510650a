#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <system_error>

#include "tools/shared/HostFiles.h"
#include "tools/shared/ToolError.h"
#include "tools/shared/Utf8.h"

namespace tools {
namespace {

constexpr mode_t kAnyoneWrites = S_IWUSR | S_IWGRP | S_IWOTH;

std::string Reason(int error) {
    return std::strerror(error);
}

DosTime LocalDosTime(std::time_t moment) {
    std::tm local{};
    if (localtime_r(&moment, &local) == nullptr) return DosTime{};
    return PackDosTime(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min,
                       local.tm_sec);
}

// Owns a descriptor or a folder stream for the length of one function.
struct Descriptor {
    int Number;
    explicit Descriptor(int number) : Number(number) {}
    ~Descriptor() {
        if (Number >= 0) close(Number);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
};

struct FolderStream {
    DIR* Handle;
    explicit FolderStream(DIR* handle) : Handle(handle) {}
    ~FolderStream() {
        if (Handle != nullptr) closedir(Handle);
    }
    FolderStream(const FolderStream&) = delete;
    FolderStream& operator=(const FolderStream&) = delete;
};

HostFile Describe(int folder, const std::filesystem::path& folderPath, const char* name) {
    HostFile entry;
    entry.Name = name;
    if (!IsUtf8(entry.Name))
        throw ToolError(Utf8FromPath(folderPath) +
                        ": holds a name that is not UTF-8: " + PrintableBytes(entry.Name));
    struct stat status {};
    if (fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) != 0)
        throw ToolError(Utf8FromPath(folderPath / name) + ": cannot be read: " + Reason(errno));
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

std::vector<std::string> Arguments(int argc, char** argv) {
    return {argv + std::min(argc, 1), argv + argc};
}

void Print(Stream stream, const std::string& text) {
    std::FILE* const file = stream == Stream::Output ? stdout : stderr;
    std::fwrite(text.data(), 1, text.size(), file);
    std::fflush(file);
}

std::filesystem::path PathFromUtf8(const std::string& text) {
    if (!IsUtf8(text)) throw ToolError("this name is not UTF-8: " + PrintableBytes(text));
    std::string slashed = text;
    std::replace(slashed.begin(), slashed.end(), '\\', '/');
    return slashed;
}

std::string Utf8FromPath(const std::filesystem::path& path) {
    return IsUtf8(path.string()) ? path.string() : PrintableBytes(path.string());
}

std::filesystem::path LongPath(const std::filesystem::path& path) {
    return path;
}

FileKind KindOf(const std::filesystem::path& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) return FileKind::Missing;
    if (S_ISDIR(status.st_mode)) return FileKind::Folder;
    if (!S_ISREG(status.st_mode)) return FileKind::Special;
    return (status.st_mode & kAnyoneWrites) == 0 ? FileKind::ReadOnly : FileKind::Writable;
}

void CreateFolders(const std::filesystem::path& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) throw ToolError(Utf8FromPath(folder) + ": this folder cannot be made: " + error.message());
}

std::vector<HostFile> ListFolder(const std::filesystem::path& folder) {
    const FolderStream stream(opendir(folder.c_str()));
    if (stream.Handle == nullptr)
        throw ToolError(Utf8FromPath(folder) + ": this folder cannot be read: " + Reason(errno));
    std::vector<HostFile> entries;
    for (;;) {
        errno = 0;
        const dirent* const found = readdir(stream.Handle);
        if (found == nullptr) break;
        if (std::strcmp(found->d_name, ".") == 0 || std::strcmp(found->d_name, "..") == 0) continue;
        entries.push_back(Describe(dirfd(stream.Handle), folder, found->d_name));
    }
    if (errno != 0) throw ToolError(Utf8FromPath(folder) + ": this folder cannot be read: " + Reason(errno));
    std::sort(entries.begin(), entries.end(),
              [](const HostFile& a, const HostFile& b) { return PrecedesWithoutCase(a.Name, b.Name); });
    return entries;
}

void ReadWhole(const std::filesystem::path& file, std::span<std::uint8_t> bytes) {
    const Descriptor input(open(file.c_str(), O_RDONLY | O_CLOEXEC));
    if (input.Number < 0) throw ToolError(Utf8FromPath(file) + ": cannot be opened: " + Reason(errno));
    // One byte more than expected is asked for, so that a file that has grown is noticed: the count that
    // comes back tells all in one call, since only the end of an ordinary file makes it short.
    std::uint8_t surplus = 0;
    const std::array<iovec, 2> places{iovec{bytes.data(), bytes.size()}, iovec{&surplus, 1}};
    ssize_t count = 0;
    do {
        count = readv(input.Number, places.data(), static_cast<int>(places.size()));
    } while (count < 0 && errno == EINTR);
    if (count < 0) throw ToolError(Utf8FromPath(file) + ": cannot be read: " + Reason(errno));
    if (static_cast<std::size_t>(count) != bytes.size())
        throw ToolError(Utf8FromPath(file) + ": changed while it was being read");
}

bool SetTimeAndAttributes(const std::filesystem::path& file, DosTime modified, std::uint8_t attributes) {
    std::tm local{};
    local.tm_year = (modified.Date >> 9) + 80;
    local.tm_mon = ((modified.Date >> 5) & 15) - 1;
    local.tm_mday = modified.Date & 31;
    local.tm_hour = modified.Time >> 11;
    local.tm_min = (modified.Time >> 5) & 63;
    local.tm_sec = (modified.Time & 31) * 2;
    local.tm_isdst = -1;
    timespec times[2]{};
    times[0].tv_nsec = UTIME_OMIT;
    times[1].tv_sec = mktime(&local);
    bool isDone = utimensat(AT_FDCWD, file.c_str(), times, 0) == 0;
    struct stat status {};
    if (stat(file.c_str(), &status) != 0) return false;
    if ((attributes & kReadOnly) != 0)
        isDone = chmod(file.c_str(), status.st_mode & ~kAnyoneWrites & 07777U) == 0 && isDone;
    return isDone;
}

PartFile::PartFile(const std::filesystem::path& target) : target_(target), part_(target), handle_(-1) {
    part_ += ".unfinished~";
    bool isEmpty = false;
    for (;;) {
        const int file = open(part_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0666);
        if (file < 0) throw ToolError(Utf8FromPath(target) + ": cannot be written: " + Reason(errno));
        if (flock(file, LOCK_EX | LOCK_NB) != 0) {
            close(file);
            throw ToolError(Utf8FromPath(target) + ": is being written by another run");
        }
        // The other run may have renamed or removed the part between our open and our lock: then take a new
        // one.
        struct stat opened {};
        struct stat named {};
        if (fstat(file, &opened) != 0 || stat(part_.c_str(), &named) != 0 || opened.st_ino != named.st_ino) {
            close(file);
            continue;
        }
        handle_ = file;
        isEmpty = opened.st_size == 0;
        break;
    }
    // A new file is left as it is: some file systems write a file that was cut short to the device when it is
    // closed.
    if (isEmpty) return;
    if (ftruncate(static_cast<int>(handle_), 0) != 0) {
        const int error = errno;
        close(static_cast<int>(handle_));
        throw ToolError(Utf8FromPath(target) + ": cannot be written: " + Reason(error));
    }
}

PartFile::~PartFile() {
    if (handle_ < 0) return;
    unlink(part_.c_str());
    close(static_cast<int>(handle_));
}

void PartFile::WriteAt(std::uint64_t offset, std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const ssize_t count =
            pwrite(static_cast<int>(handle_), bytes.data(), bytes.size(), static_cast<off_t>(offset));
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) throw ToolError(Utf8FromPath(target_) + ": cannot be written: " + Reason(errno));
        offset += static_cast<std::uint64_t>(count);
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
}

void PartFile::Resize(std::uint64_t size) {
    if (ftruncate(static_cast<int>(handle_), static_cast<off_t>(size)) != 0)
        throw ToolError(Utf8FromPath(target_) + ": cannot be written: " + Reason(errno));
}

void PartFile::MoveToTarget() {
    if (rename(part_.c_str(), target_.c_str()) != 0)
        throw ToolError(Utf8FromPath(target_) + ": cannot be replaced: " + Reason(errno));
    // Closed last: the lock must hold until the name is gone, or another run could take the part over.
    close(static_cast<int>(handle_));
    handle_ = -1;
}

}  // namespace tools
