#pragma once
// Builds cabinets by hand, valid ones and some that no packer writes.

#include <cstdint>
#include <string>
#include <vector>

#include "tests/support/TestData.h"

namespace realmode::unpack::testing {

using tools::testing::Bytes;

constexpr unsigned kStored = 0;
constexpr unsigned kMsZip = 1;
/// Returns the number of the method LZX with a window of 2^windowBits bytes.
constexpr unsigned Lzx(unsigned windowBits) {
    return 3 | windowBits << 8;
}

struct BuiltRecord {
    Bytes Payload;
    unsigned Unpacked = 0;
    bool HasWrongChecksum = false;
    bool HasNoChecksum = false;
    bool ChecksumHasReserve = true;
};

struct BuiltFolder {
    unsigned Method = kStored;
    std::vector<BuiltRecord> Records;
};

struct BuiltMember {
    std::string Name;
    std::uint32_t Size = 0;
    std::uint32_t Offset = 0;
    unsigned Folder = 0;
    unsigned Attributes = 0x20;
    unsigned Date = 0x24AB;  ///< 1998-05-11
    unsigned Time = 0xA021;  ///< 20:01:02
};

struct BuiltCabinet {
    std::vector<BuiltFolder> Folders;
    std::vector<BuiltMember> Members;
    unsigned Flags = 0;
    /// With flag 4: bytes of the reserves of the header, of each folder and of each data record.
    unsigned HeaderReserve = 0;
    unsigned FolderReserve = 0;
    unsigned DataReserve = 0;

    Bytes Build() const;
};

/// Returns a cabinet of one folder with that method and one member, F, which consists of everything that its
/// records unpack to.
BuiltCabinet OneFile(unsigned method, const std::vector<BuiltRecord>& records);

/// Returns the bytes of a text.
Bytes Text(const std::string& text);

}  // namespace realmode::unpack::testing
