#pragma once
// The file that OutputFile writes: it has another name until it is complete. PartFile_win.cpp and
// PartFile_posix.cpp implement it.

#include <cstdint>
#include <filesystem>
#include <span>

#include "tools/shared/Handle.h"

namespace tools {

/// The file beside a target that holds what will replace it. Only one process at a time can have it open. It
/// is removed with the object unless MoveToTarget() succeeded; on Windows the system also removes it when
/// the process ends. Use it through OutputFile.
///
/// A part bears a mark, by which the next run recognises what a killed one left: a file without it is the
/// user's. The mark does no harm where a run is killed just after the renaming: the sticky bit on POSIX,
/// which means nothing for a file, and the system attribute on Windows.
class PartFile {
 public:
    /// Creates "<target>.unfinished~", or takes over the one that a killed run left. Whatever else has that
    /// name (a file of the user's, a link, a file with a second name) stays as it is, and the part takes
    /// another one (PartName.h). Throws ToolError naming `target` when another run is writing it, or when no
    /// part can be created.
    explicit PartFile(const std::filesystem::path& target);
    ~PartFile();
    PartFile(const PartFile&) = delete;
    PartFile& operator=(const PartFile&) = delete;

    /// Writes `bytes` at `offset` (in bytes). Throws ToolError naming the target.
    void WriteAt(std::uint64_t offset, std::span<const std::uint8_t> bytes);

    /// Cuts the part off or extends it with zeros to `size` bytes. Throws ToolError naming the target.
    void Resize(std::uint64_t size);

    /// Has the system write the part to the device, so that a power failure cannot lose it, renames it over
    /// the target, removes the mark and closes it. On Windows a target that another program holds open is
    /// waited for, five seconds at most. Throws ToolError naming the target, which is then untouched.
    void MoveToTarget();

 private:
    std::filesystem::path target_;
    std::filesystem::path part_;
    FileHandle handle_;  // none once the part is the target
};

/// Returns whether `file` is a part: one that is being written, or one that a killed run left. False when it
/// is missing or cannot be looked at.
bool IsPart(const std::filesystem::path& file);

}  // namespace tools
