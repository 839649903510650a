#include "tests/support/FullDisk.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <unistd.h>

#include <cerrno>
#endif

#include <algorithm>
#include <limits>
#include <span>

#include "tools/shared/DeviceWrite.h"
#include "tools/shared/HostText.h"

namespace tools {
namespace {

constexpr std::uint64_t kEndless = std::numeric_limits<std::uint64_t>::max();
std::uint64_t limit = kEndless;

#ifdef _WIN32
constexpr DWORD kDiskFull = ERROR_DISK_FULL;

void SetError(DWORD error) {
    SetLastError(error);
}

bool MoveTo(const FileHandle& file, std::uint64_t offset) {
    LARGE_INTEGER position{};
    position.QuadPart = static_cast<LONGLONG>(offset);
    return SetFilePointerEx(file.Get(), position, nullptr, FILE_BEGIN) != 0;
}

std::size_t WriteAt(const FileHandle& file, std::uint64_t offset, const std::uint8_t* bytes,
                    std::size_t count) {
    DWORD written = 0;
    const bool isDone =
        MoveTo(file, offset) && WriteFile(file.Get(), bytes, static_cast<DWORD>(count), &written, nullptr);
    return isDone ? written : 0;
}

bool Resize(const FileHandle& file, std::uint64_t size) {
    return MoveTo(file, size) && SetEndOfFile(file.Get()) != 0;
}
#else
constexpr int kDiskFull = ENOSPC;

void SetError(int error) {
    errno = error;
}

std::size_t WriteAt(const FileHandle& file, std::uint64_t offset, const std::uint8_t* bytes,
                    std::size_t count) {
    return static_cast<std::size_t>(
        std::max(pwrite(file.Get(), bytes, count, static_cast<off_t>(offset)), ssize_t{0}));
}

bool Resize(const FileHandle& file, std::uint64_t size) {
    return ftruncate(file.Get(), static_cast<off_t>(size)) == 0;
}
#endif

}  // namespace

std::size_t WriteSome(const FileHandle& file, std::uint64_t offset, std::span<const std::uint8_t> bytes) {
    const std::uint64_t left = limit - std::min(limit, offset);
    const std::size_t count = static_cast<std::size_t>(std::min<std::uint64_t>(left, bytes.size()));
    if (count > 0) return WriteAt(file, offset, bytes.data(), count);
    SetError(kDiskFull);
    return 0;
}

bool SetSize(const FileHandle& file, std::uint64_t size) {
    if (size <= limit) return Resize(file, size);
    SetError(kDiskFull);
    return false;
}

namespace testing {

FullDisk::FullDisk(std::uint64_t bytes) {
    limit = bytes;
}

FullDisk::~FullDisk() {
    limit = kEndless;
}

std::string FullDisk::Reason() {
    return SystemReason(kDiskFull);
}

}  // namespace testing
}  // namespace tools
