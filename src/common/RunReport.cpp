#include "src/common/RunReport.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <memory>

namespace velbooter {

namespace {

// The bytes of the memory: a path that a NUL ends.
constexpr DWORD kSize = MAX_PATH;

std::string NameOf(DWORD process) {
    return "Local\\Velbooter run " + std::to_string(process);
}

struct Unmap {
    void operator()(char* view) const { ::UnmapViewOfFile(view); }
};

std::unique_ptr<char, Unmap> View(HANDLE memory, DWORD access) {
    return std::unique_ptr<char, Unmap>(static_cast<char*>(::MapViewOfFile(memory, access, 0, 0, kSize)));
}

}  // namespace

RunReport::RunReport(std::uint32_t process)
    : memory_(::CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, kSize,
                                   NameOf(process).c_str())) {}

std::string RunReport::BuiltImage() const {
    const auto view = memory_ ? View(memory_.Get(), FILE_MAP_READ) : nullptr;
    return view ? std::string(view.get(), std::find(view.get(), view.get() + kSize, '\0')) : "";
}

void ReportBuiltImage(const std::string& image) {
    const KernelHandle memory(
        ::OpenFileMappingA(FILE_MAP_WRITE, FALSE, NameOf(::GetCurrentProcessId()).c_str()));
    if (!memory) return;
    std::array<char, kSize> path{};
    const DWORD length = ::GetFullPathNameA(image.c_str(), kSize, path.data(), nullptr);
    const auto view = length < kSize ? View(memory.Get(), FILE_MAP_WRITE) : nullptr;
    if (view) std::copy_n(path.begin(), length, view.get());
}

}  // namespace velbooter
