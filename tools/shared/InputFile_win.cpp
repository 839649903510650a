#include <windows.h>

#include <algorithm>

#include "tools/shared/HostText.h"
#include "tools/shared/InputFile.h"

namespace tools {
namespace {

constexpr DWORD kLargestRead = 1U << 30;

[[noreturn]] void CannotBeRead(const std::filesystem::path& file) {
    FailWithReason(file, "cannot be read", GetLastError());
}

}  // namespace

InputFile::InputFile(const std::filesystem::path& file)
    : file_(file),
      handle_(CreateFileW(LongPath(file).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                          OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr)) {
    if (!handle_) FailWithReason(file, "cannot be opened", GetLastError());
}

std::size_t InputFile::ReadSome(std::span<std::uint8_t> bytes) {
    const auto piece = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), kLargestRead));
    DWORD count = 0;
    if (!ReadFile(handle_.Get(), bytes.data(), piece, &count, nullptr)) CannotBeRead(file_);
    return count;
}

void InputFile::Seek(std::uint64_t position) {
    LARGE_INTEGER offset{};
    offset.QuadPart = static_cast<LONGLONG>(position);
    if (!SetFilePointerEx(handle_.Get(), offset, nullptr, FILE_BEGIN)) CannotBeRead(file_);
    position_ = position;
}

std::uint64_t InputFile::Size() const {
    LARGE_INTEGER size{};
    if (!GetFileSizeEx(handle_.Get(), &size)) CannotBeRead(file_);
    return static_cast<std::uint64_t>(size.QuadPart);
}

}  // namespace tools
