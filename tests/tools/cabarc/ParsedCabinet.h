#pragma once
// A strict reader of cabinets that shares nothing with the program's: it reads a cabinet byte by byte and
// rejects everything that a careful packer must not write. It also builds small cabinets by hand, with any
// names that a test wants.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tests/tools/cabarc/InTestFolder.h"

namespace tools::cabarc::testing {

struct ParsedRecord {
    Bytes Payload;
    std::size_t Uncompressed = 0;
};

struct ParsedFolder {
    unsigned Type = 0;
    std::vector<ParsedRecord> Records;
    std::optional<Bytes> Stream;  ///< the contents, where the method is NONE or MSZIP
};

struct ParsedMember {
    std::string Name;
    std::uint64_t Size = 0;
    std::uint64_t Offset = 0;
    std::size_t Folder = 0;
    unsigned Date = 0;
    unsigned Time = 0;
    unsigned Attributes = 0;
    Bytes Contents;  ///< empty where the folder has no Stream
};

struct ParsedCabinet {
    std::vector<ParsedFolder> Folders;
    std::vector<ParsedMember> Members;
};

/// Reads a cabinet. Throws std::runtime_error that says what is wrong with it.
ParsedCabinet Parse(const Bytes& cabinet);

/// A member of a cabinet that HandMade builds.
struct HandMember {
    std::string Name;
    Bytes Contents;
    unsigned Attributes = 0x20;
    unsigned Folder = 0;
};

/// Returns a cabinet that stores the members uncompressed, in as many folders as they name (ascending from
/// 0).
Bytes HandMade(const std::vector<HandMember>& members);

}  // namespace tools::cabarc::testing
