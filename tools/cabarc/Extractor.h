#pragma once
// The command "x": unpacks the members of a cabinet and turns them into files.

#include <cstddef>
#include <memory>
#include <span>

#include "tools/cabarc/CommandLine.h"
#include "tools/cabarc/ExtractionPlan.h"
#include "tools/cabarc/SystemCabinet.h"
#include "tools/shared/OutputFile.h"

namespace tools::cabarc {

/// Extracts what `call` asks for, with folders, times and attributes, and returns the number of files. Each
/// file appears under its name only when it is complete. Throws ToolError when the plan rejects the cabinet
/// or when unpacking or writing fails; files that were complete by then stay. Only the Windows build
/// extracts; the other always throws.
std::size_t Extract(const CommandLine& call);

/// Turns the members that come out of a cabinet into files. A read-only file that is to be replaced is
/// writable meanwhile, and read-only again if the new one is not completed.
class MemberFiles : public MemberReceiver {
 public:
    /// `directory` and `plan`, whose members are in ascending order, must outlive the object. With
    /// `overwrite` existing files are replaced, even read-only ones.
    MemberFiles(const CabinetDirectory& directory, std::span<const PlannedMember> plan, bool overwrite);
    ~MemberFiles() override;
    MemberFiles(const MemberFiles&) = delete;
    MemberFiles& operator=(const MemberFiles&) = delete;

    /// Returns whether the plan has the member; then its file is begun. Throws ToolError when that cannot be
    /// written, or exists and must not be overwritten.
    bool Begin(std::size_t index) override;
    void Write(std::span<const std::uint8_t> bytes) override;
    /// Puts the file in place and gives it its time and its attributes (read-only, hidden, system, archive).
    /// Throws ToolError when either fails.
    void End() override;

 private:
    const CabinetDirectory& directory_;
    std::span<const PlannedMember> plan_;
    const PlannedMember* open_ = nullptr;  ///< the member whose file is being written
    bool overwrite_;
    bool clearedReadOnly_ = false;  ///< of the file that the open one is going to replace
    std::unique_ptr<OutputFile> file_;
};

}  // namespace tools::cabarc
