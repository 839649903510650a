#pragma once
// What cabarc leaves to the system: decompression, which the cabinet library of Windows does for every
// method that it knows, and the names of old cabinets, which are in the system's ANSI code page.
// SystemCabinet_win.cpp and SystemCabinet_posix.cpp implement it.

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>

#include "tools/cabarc/CabinetDirectory.h"

namespace tools::cabarc {

/// Receives the members of a cabinet one after another: Begin, and if that returns true any number of Write
/// and one End. What it throws ends the unpacking and reaches the caller of UnpackCabinet.
class MemberReceiver {
 public:
    virtual ~MemberReceiver() = default;

    /// Announces the member `index` (0-based) of the directory, each once. Those that are packed by one
    /// method come together, in ascending order. Returns whether its contents are wanted.
    virtual bool Begin(std::size_t index) = 0;
    /// Delivers the next bytes of the member that was begun last; they are valid during the call.
    virtual void Write(std::span<const std::uint8_t> bytes) = 0;
    /// Reports that the member is complete: Write has delivered as many bytes as the directory states.
    virtual void End() = 0;
};

/// Throws ToolError when this system cannot unpack cabinets: always on POSIX, never on Windows.
void RequireUnpacking();

/// Unpacks the wanted members of the cabinet at `file`, whose `directory` was read before and which is not
/// part of a set. `label` names it in messages. Throws ToolError when the library cannot be loaded, when the
/// data is damaged, uses a method that the system does not know, or no longer agrees with `directory`.
void UnpackCabinet(const std::filesystem::path& file, const std::string& label,
                   const CabinetDirectory& directory, MemberReceiver& receiver);

/// Returns the name of a member as UTF-8, whichever encoding it is stored in. A name that claims to be UTF-8
/// is returned as it is, well-formed or not. On POSIX, which has no ANSI code page, bytes of another
/// encoding become \xNN.
std::string MemberNameUtf8(const CabinetMember& member);

}  // namespace tools::cabarc
