#pragma once
// The kinds of handles that the program owns. Each knows its invalid value: null for kernel objects, minus
// one for files and directory searches.

#include <cstdint>
#include <string>

#include "base/UniqueHandle.h"

namespace velbooter {

namespace handles {

/// The value that the system returns for a file that could not be opened.
inline void* MinusOne() {
    return reinterpret_cast<void*>(static_cast<std::intptr_t>(-1));
}

/// A process, a thread or a mutex.
struct Kernel {
    using Value = void*;
    static Value None() { return nullptr; }
    static void Close(void* handle);
};

/// A file, from CreateFile.
struct File {
    using Value = void*;
    static Value None() { return MinusOne(); }
    static void Close(void* handle);
};

/// A search through a folder, from FindFirstFile.
struct Find {
    using Value = void*;
    static Value None() { return MinusOne(); }
    static void Close(void* handle);
};

}  // namespace handles

using KernelHandle = base::UniqueHandle<handles::Kernel>;
using FileHandle = base::UniqueHandle<handles::File>;
using FindHandle = base::UniqueHandle<handles::Find>;

/// Opens an existing file without preventing anyone from reading, writing or deleting it. `access` is the
/// system's access mask; 0 requests none, so that a file locked by another program can be queried, too.
/// Returns an empty handle on failure; GetLastError gives the reason.
FileHandle OpenExistingFile(const std::string& file, std::uint32_t access);

}  // namespace velbooter
