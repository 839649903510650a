#include <windows.h>

#include <algorithm>

#include "tools/shared/DeviceWrite.h"

namespace tools {
namespace {

constexpr DWORD kLargestWrite = 1U << 30;

bool MoveTo(const FileHandle& file, std::uint64_t offset) {
    LARGE_INTEGER position{};
    position.QuadPart = static_cast<LONGLONG>(offset);
    return SetFilePointerEx(file.Get(), position, nullptr, FILE_BEGIN) != 0;
}

}  // namespace

std::size_t WriteSome(const FileHandle& file, std::uint64_t offset, std::span<const std::uint8_t> bytes) {
    const auto piece = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), kLargestWrite));
    DWORD count = 0;
    const bool isDone = MoveTo(file, offset) && WriteFile(file.Get(), bytes.data(), piece, &count, nullptr);
    return isDone ? count : 0;
}

bool SetSize(const FileHandle& file, std::uint64_t size) {
    return MoveTo(file, size) && SetEndOfFile(file.Get()) != 0;
}

}  // namespace tools
