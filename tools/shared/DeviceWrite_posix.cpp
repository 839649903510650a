#include <unistd.h>

#include <cerrno>

#include "tools/shared/DeviceWrite.h"

namespace tools {

std::size_t WriteSome(const FileHandle& file, std::uint64_t offset, std::span<const std::uint8_t> bytes) {
    ssize_t count = 0;
    do {
        count = pwrite(file.Get(), bytes.data(), bytes.size(), static_cast<off_t>(offset));
    } while (count < 0 && errno == EINTR);
    return count < 0 ? 0 : static_cast<std::size_t>(count);
}

bool SetSize(const FileHandle& file, std::uint64_t size) {
    return ftruncate(file.Get(), static_cast<off_t>(size)) == 0;
}

}  // namespace tools
