#pragma once
// The two calls by which a part grows, which are the two that find a disk full. DeviceWrite_win.cpp and
// DeviceWrite_posix.cpp hold nothing else, so that the tests can link a disk that is full after so many bytes
// in their place (tests/support/FullDisk.h): no test could fill a real one.

#include <cstdint>
#include <span>

#include "tools/shared/Handle.h"

namespace tools {

/// Writes the beginning of `bytes`, which are some, at `offset` (in bytes) of `file`. Returns how many the
/// system took; 0 when it refused, and then its error number (errno, GetLastError) says why.
std::size_t WriteSome(const FileHandle& file, std::uint64_t offset, std::span<const std::uint8_t> bytes);

/// Cuts `file` off or extends it with zeros to `size` bytes. Returns false when the system refused, and then
/// its error number says why.
bool SetSize(const FileHandle& file, std::uint64_t size);

}  // namespace tools
