#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "tools/shared/HostText.h"
#include "tools/shared/InputFile.h"

namespace tools {
namespace {

[[noreturn]] void CannotBeRead(const std::filesystem::path& file) {
    FailWithReason(file, "cannot be read", errno);
}

}  // namespace

InputFile::InputFile(const std::filesystem::path& file)
    : file_(file), handle_(open(file.c_str(), O_RDONLY | O_CLOEXEC)) {
    if (!handle_) FailWithReason(file, "cannot be opened", errno);
}

std::size_t InputFile::ReadSome(std::span<std::uint8_t> bytes) {
    ssize_t count = 0;
    do {
        count = read(handle_.Get(), bytes.data(), bytes.size());
    } while (count < 0 && errno == EINTR);
    if (count < 0) CannotBeRead(file_);
    return static_cast<std::size_t>(count);
}

void InputFile::Seek(std::uint64_t position) {
    if (lseek(handle_.Get(), static_cast<off_t>(position), SEEK_SET) < 0) CannotBeRead(file_);
    position_ = position;
}

std::uint64_t InputFile::Size() const {
    struct stat status {};
    if (fstat(handle_.Get(), &status) != 0) CannotBeRead(file_);
    return static_cast<std::uint64_t>(status.st_size);
}

}  // namespace tools
