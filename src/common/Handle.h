#pragma once
// Owning types for the operating system's handles, so that none is closed by hand. Each kind knows its
// invalid value: null for kernel objects, minus one for files and directory searches.

#include <cstdint>
#include <string>
#include <utility>

namespace velbooter {

namespace handles {

/// The value that the system returns for a file that could not be opened.
inline void* MinusOne() {
    return reinterpret_cast<void*>(static_cast<std::intptr_t>(-1));
}

/// A process, a thread or a mutex.
struct Kernel {
    static void* Invalid() { return nullptr; }
    static void Close(void* handle);
};

/// A file, from CreateFile.
struct File {
    static void* Invalid() { return MinusOne(); }
    static void Close(void* handle);
};

/// A search through a folder, from FindFirstFile.
struct Find {
    static void* Invalid() { return MinusOne(); }
    static void Close(void* handle);
};

}  // namespace handles

/// Owns one handle and closes it. Movable; empty after a move.
template <typename Kind>
class UniqueHandle {
 public:
    UniqueHandle() = default;
    /// Owns `handle` from now on; an invalid value owns nothing.
    explicit UniqueHandle(void* handle) : handle_(handle) {}
    UniqueHandle(UniqueHandle&& other) noexcept : handle_(std::exchange(other.handle_, Kind::Invalid())) {}
    UniqueHandle& operator=(UniqueHandle&& other) noexcept {
        if (this != &other) {
            Reset();
            handle_ = std::exchange(other.handle_, Kind::Invalid());
        }
        return *this;
    }
    ~UniqueHandle() { Reset(); }

    /// The handle itself; still owned here.
    void* Get() const { return handle_; }
    explicit operator bool() const { return handle_ != Kind::Invalid(); }

    /// Closes the handle, if there is one.
    void Reset() {
        if (*this) Kind::Close(std::exchange(handle_, Kind::Invalid()));
    }

 private:
    void* handle_ = Kind::Invalid();
};

using KernelHandle = UniqueHandle<handles::Kernel>;
using FileHandle = UniqueHandle<handles::File>;
using FindHandle = UniqueHandle<handles::Find>;

/// Opens an existing file without preventing anyone from reading, writing or deleting it. `access` is the
/// system's access mask; 0 requests none, so that a file locked by another program can be queried, too.
/// Returns an empty handle on failure; GetLastError gives the reason.
FileHandle OpenExistingFile(const std::string& file, std::uint32_t access);

}  // namespace velbooter
