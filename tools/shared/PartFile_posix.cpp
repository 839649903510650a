#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "tools/shared/HostFiles.h"
#include "tools/shared/PartFile.h"
#include "tools/shared/ToolError.h"

namespace tools {
PartFile::PartFile(const std::filesystem::path& target) : target_(target), part_(target), handle_(-1) {
    part_ += ".unfinished~";
    bool isEmpty = false;
    for (;;) {
        const int file = open(part_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0666);
        if (file < 0) throw ToolError(Utf8FromPath(target) + ": cannot be written: " + SystemReason(errno));
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
        throw ToolError(Utf8FromPath(target) + ": cannot be written: " + SystemReason(error));
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
        if (count < 0) throw ToolError(Utf8FromPath(target_) + ": cannot be written: " + SystemReason(errno));
        offset += static_cast<std::uint64_t>(count);
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
}

void PartFile::Resize(std::uint64_t size) {
    if (ftruncate(static_cast<int>(handle_), static_cast<off_t>(size)) != 0)
        throw ToolError(Utf8FromPath(target_) + ": cannot be written: " + SystemReason(errno));
}

void PartFile::MoveToTarget() {
    if (rename(part_.c_str(), target_.c_str()) != 0)
        throw ToolError(Utf8FromPath(target_) + ": cannot be replaced: " + SystemReason(errno));
    // Closed last: the lock must hold until the name is gone, or another run could take the part over.
    close(static_cast<int>(handle_));
    handle_ = -1;
}

}  // namespace tools
