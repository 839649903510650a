#pragma once
// The two calls by which a file grows, and so the two that find a disk full. DeviceWrite_win.cpp and
// DeviceWrite_posix.cpp hold nothing else, so that tests can link in their place a disk that is full after a
// given number of bytes (tests/support/FullDisk.h): no test could fill a real one.

#include <cstdint>
#include <span>

#include "tools/shared/Handle.h"

namespace tools {

/// Writes at least the first of `bytes`, which must not be empty, at `offset` (in bytes) of `file`. Returns
/// how many bytes the system took, which may be fewer than given; 0 when it refused, and then its error
/// number (errno, GetLastError) says why.
std::size_t WriteSome(const FileHandle& file, std::uint64_t offset, std::span<const std::uint8_t> bytes);

/// Cuts `file` off or extends it with zeros to `size` bytes. Returns false when the system refused, and then
/// its error number says why.
bool SetSize(const FileHandle& file, std::uint64_t size);

}  // namespace tools
