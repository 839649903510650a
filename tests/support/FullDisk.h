#pragma once
// A disk that is full: what no test can bring about on a real one within two lines. Linked into a test, it
// takes the place of the two system calls by which the companions write (tools/shared/DeviceWrite.h).
// Everything else that a test sees is real: the files, the bytes up to the limit, the system's own reason.

#include <cstdint>
#include <string>

namespace tools::testing {

/// While it lives, the disk takes no byte of a file beyond its first `bytes`: a write across the border is
/// done up to it, and what is left is refused. There is one at a time.
class FullDisk {
 public:
    explicit FullDisk(std::uint64_t bytes);
    ~FullDisk();
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

    /// What the system says of a full disk.
    static std::string Reason();
};

}  // namespace tools::testing
