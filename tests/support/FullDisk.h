#pragma once
// A full disk, which no test can produce at an exact byte of a real one. Linked into a test, it replaces the
// two system calls by which the companions write (tools/shared/DeviceWrite.h). Everything else that a test
// sees is real: the files, the bytes up to the limit, the system's own reason.

#include <cstdint>
#include <string>

namespace tools::testing {

/// While it lives, the disk accepts only the first `bytes` bytes of a file: a write across that limit is
/// done up to it, and the rest is refused. Only one may exist at a time.
class FullDisk {
 public:
    explicit FullDisk(std::uint64_t bytes);
    ~FullDisk();
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

    /// The system's text for a full disk.
    static std::string Reason();
};

}  // namespace tools::testing
