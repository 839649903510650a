#pragma once
// A file that appears under its name only when it is complete. It is written beside the target as
// "<target>.unfinished~" and moved over the target by Commit(); until then an existing target stays as it
// was. When the object goes away without Commit() the part is removed. On Windows the part is also deleted
// by the system when the process is killed; elsewhere the next run writes over a part that was left. A file
// of the user's that has the part's name stays, and the part takes another name. Of two runs that write the
// same target at the same time the second fails.

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>

#include "tools/shared/PartFile.h"

namespace tools {

/// One output of a tool. Every failure is a ToolError that names the target or its folder, never the part,
/// which the user does not know.
class OutputFile {
 public:
    /// Creates missing parent folders and opens the part. Throws ToolError when that fails, when `target`
    /// names no file, or when it exists and is read-only or anything but a file.
    explicit OutputFile(const std::filesystem::path& target);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    /// Appends bytes; every call goes to the system at once, so hand over large pieces. Throws ToolError
    /// (disk full, for instance).
    void Write(std::span<const std::uint8_t> bytes);

    /// Writes bytes at `offset` (in bytes from the start), over what was written there before or beyond it;
    /// a gap that is left reads as zeros. The position at which Write appends stays. Throws ToolError.
    void WriteAt(std::uint64_t offset, std::span<const std::uint8_t> bytes);

    /// Gives the file `size` bytes: what was not written reads as zeros, and what lies beyond is cut off.
    /// The position at which Write appends stays. Throws ToolError.
    void Resize(std::uint64_t size);

    /// The number of bytes that Write has appended so far; WriteAt and Resize do not change it.
    std::uint64_t Size() const;

    /// Puts the part in the place of the target, once it is on the device, and closes it. On Windows a
    /// target that another program holds is waited for, five seconds at most. Throws ToolError when the
    /// target stays in use or cannot be replaced; the part is then removed with the object and the old
    /// target is untouched. To be called once, last.
    void Commit();

 private:
    std::filesystem::path target_;
    std::unique_ptr<PartFile> part_;
    std::uint64_t size_ = 0;
};

}  // namespace tools
