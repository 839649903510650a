#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "tools/shared/DeviceWrite.h"
#include "tools/shared/HostText.h"
#include "tools/shared/PartFile.h"
#include "tools/shared/PartName.h"
#include "tools/shared/ToolError.h"

namespace tools {
namespace {

constexpr mode_t kMark = S_ISVTX;

bool IsMarked(const struct stat& status) {
    return S_ISREG(status.st_mode) && status.st_nlink == 1 && (status.st_mode & kMark) != 0;
}

bool IsNamed(const std::filesystem::path& part, const struct stat& opened) {
    struct stat named {};
    return lstat(part.c_str(), &named) == 0 && named.st_dev == opened.st_dev && named.st_ino == opened.st_ino;
}

// Returns a part that is locked and empty, or none and sets errno: EEXIST when the name is the user's,
// EWOULDBLOCK when another run writes under it.
FileHandle TakePart(const std::filesystem::path& part) {
    for (;;) {
        FileHandle file(open(part.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666 | kMark));
        if (!file && errno != EEXIST) return {};
        const bool isNew = static_cast<bool>(file);
        // Not waiting, because it may be a pipe.
        if (!isNew) file.Reset(open(part.c_str(), O_WRONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
        if (!file && errno == ENOENT) continue;
        if (!file) {
            errno = EEXIST;
            return {};
        }
        struct stat opened {};
        const bool isOurs = fstat(file.Get(), &opened) == 0 && (isNew || IsMarked(opened));
        const bool isLocked = isOurs && flock(file.Get(), LOCK_EX | LOCK_NB) == 0;
        const int lockError = errno;
        // The other run may have renamed or removed the part between our open and our lock.
        const bool isNamed = IsNamed(part, opened);
        // A new file is left as it is: some file systems write a file that was cut short to the device when
        // it is closed.
        if (isLocked && isNamed && (opened.st_size == 0 || SetSize(file, 0))) return file;
        const int error = !isOurs ? EEXIST : !isLocked ? lockError : errno;
        // Where nothing can be locked, the next run must not find what this one would leave.
        if (isNew && isNamed && error != EWOULDBLOCK) unlink(part.c_str());
        file.Reset();
        errno = error;
        if (isNamed) return {};
    }
}

}  // namespace

PartFile::PartFile(const std::filesystem::path& target) : target_(target) {
    for (unsigned number = 1; number <= kPartNames; ++number) {
        part_ = PartName(target, number);
        handle_ = TakePart(part_);
        if (handle_) return;
        if (errno == EWOULDBLOCK) throw ToolError(Utf8FromPath(target) + ": is being written by another run");
        if (errno != EEXIST) break;
    }
    FailWithReason(target, "cannot be written", errno);
}

PartFile::~PartFile() {
    if (handle_) unlink(part_.c_str());
}

void PartFile::WriteAt(std::uint64_t offset, std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const std::size_t count = WriteSome(handle_, offset, bytes);
        if (count == 0) FailWithReason(target_, "cannot be written", errno);
        offset += count;
        bytes = bytes.subspan(count);
    }
}

void PartFile::Resize(std::uint64_t size) {
    if (!SetSize(handle_, size)) FailWithReason(target_, "cannot be written", errno);
}

void PartFile::MoveToTarget() {
    // A file system may keep the renaming and lose the contents when the power fails. Some kinds of it, for
    // which there is nothing to wait for, answer EINVAL.
    if (fsync(handle_.Get()) != 0 && errno != EINVAL) FailWithReason(target_, "cannot be written", errno);
    if (rename(part_.c_str(), target_.c_str()) != 0) FailWithReason(target_, "cannot be replaced", errno);
    struct stat status {};
    if (fstat(handle_.Get(), &status) == 0) fchmod(handle_.Get(), status.st_mode & 07777U & ~kMark);
    // Closed last: the lock must hold until the name is gone, or another run could take the part over.
    handle_.Reset();
}

bool IsPart(const std::filesystem::path& file) {
    struct stat status {};
    return lstat(file.c_str(), &status) == 0 && IsMarked(status);
}

}  // namespace tools
