#pragma once
// The kinds of handles that the companions own.

#include "base/UniqueHandle.h"

namespace tools {

using base::UniqueHandle;

namespace handles {

/// An open file: a HANDLE or a descriptor. None is minus one on both systems.
struct File {
#ifdef _WIN32
    using Value = void*;
#else
    using Value = int;
#endif
    static Value None();
    static void Close(Value file);
};

#ifdef _WIN32
/// A search through a folder: the HANDLE of FindFirstFile.
struct Search {
    using Value = void*;
    static Value None();
    static void Close(Value search);
};
#endif

}  // namespace handles

using FileHandle = UniqueHandle<handles::File>;

}  // namespace tools
