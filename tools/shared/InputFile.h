#pragma once
// The one way in which the companions read files. Every failure names the file and gives the system's reason,
// because "cannot be opened" does not say whether another program holds it or access is denied.
// InputFile_win.cpp and InputFile_posix.cpp hold what differs.

#include <cstdint>
#include <filesystem>
#include <span>

#include "tools/shared/Handle.h"

namespace tools {

/// A file that is read from its start on, or from wherever Seek moves to. It is not locked: what another
/// program writes meanwhile is read, too.
class InputFile {
 public:
    /// Opens the file, whose path may be longer than Windows usually allows; other programs may continue to
    /// write it. Throws ToolError naming it and the system's reason.
    explicit InputFile(const std::filesystem::path& file);

    /// Fills `bytes` from the position on and moves the position past them. Returns how many there were:
    /// fewer than asked for only at the end of the file. Throws ToolError when the system cannot read.
    std::size_t Read(std::span<std::uint8_t> bytes);

    /// Moves the position, in bytes from the start; it may lie beyond the end, where Read finds nothing.
    /// Throws ToolError when the system refuses.
    void Seek(std::uint64_t position);

    std::uint64_t Position() const { return position_; }

    /// Returns the number of bytes in the file now. Throws ToolError when the system cannot say.
    std::uint64_t Size() const;

 private:
    /// Reads once; returns 0 at the end of the file.
    std::size_t ReadSome(std::span<std::uint8_t> bytes);

    std::filesystem::path file_;
    FileHandle handle_;
    std::uint64_t position_ = 0;
};

/// Fills `bytes` from the start of `file`. Throws ToolError naming the file when it cannot be opened or read,
/// and when it does not hold exactly that many bytes (because it changed since it was listed).
void ReadWhole(const std::filesystem::path& file, std::span<std::uint8_t> bytes);

}  // namespace tools
