#pragma once
// A block of memory in another process: what a control's message points to has to be in the memory of the
// control's process.

#include <windows.h>

#include <string>

#include "tests/e2e/support/HarnessFailure.h"

namespace velbooter::e2e {

/// The most bytes of a text that are read from a control.
inline constexpr size_t kRemoteTextBytes = 512;

class RemoteMemory {
 public:
    /// Allocates `size` bytes in the process that `window` belongs to. Throws HarnessFailure when that
    /// fails.
    RemoteMemory(HWND window, size_t size) {
        DWORD id = 0;
        ::GetWindowThreadProcessId(window, &id);
        process_ = ::OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, id);
        address_ = ::VirtualAllocEx(process_, nullptr, size, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
        if (address_ == nullptr) throw HarnessFailure("no memory in the program under test");
    }
    ~RemoteMemory() {
        ::VirtualFreeEx(process_, address_, 0, MEM_RELEASE);
        ::CloseHandle(process_);
    }
    RemoteMemory(const RemoteMemory&) = delete;
    RemoteMemory& operator=(const RemoteMemory&) = delete;

    /// The address in the other process of the byte at `offset` in the block.
    char* At(size_t offset = 0) const { return static_cast<char*>(address_) + offset; }

    /// Copies `value` to the start of the block.
    template <class Value>
    void Write(const Value& value) const {
        if (::WriteProcessMemory(process_, address_, &value, sizeof value, nullptr) == 0)
            throw HarnessFailure("memory of the program under test cannot be written");
    }

    /// Copies the start of the block into `value`.
    template <class Value>
    void Read(Value& value) const {
        ReadBytes(0, &value, sizeof value);
    }

    /// The text, ended by a NUL, that begins at `offset` in the block; its buffer has `size` bytes.
    std::string Text(size_t offset, size_t size) const {
        std::string text(size, '\0');
        ReadBytes(offset, text.data(), size);
        return text.substr(0, text.find('\0'));
    }

 private:
    void ReadBytes(size_t offset, void* to, size_t size) const {
        if (::ReadProcessMemory(process_, At(offset), to, size, nullptr) == 0)
            throw HarnessFailure("memory of the program under test cannot be read");
    }

    HANDLE process_ = nullptr;
    void* address_ = nullptr;
};

}  // namespace velbooter::e2e
