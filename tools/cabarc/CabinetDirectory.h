#pragma once
// What a cabinet says about its contents: the header, folder and member records that stand before the data,
// and the limits that the format sets. The writer encodes a directory, the reader decodes one; nothing else
// knows the records. docs/formats/cabinet.md describes them field by field.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tools/shared/DosTime.h"

namespace tools::cabarc {

/// A folder holds at most 65535 data records of 32768 bytes, so no folder and no member has more bytes than
/// this.
constexpr std::uint32_t kMaxFolderBytes = 0x7FFF8000;
/// The most bytes of a cabinet: many readers take sizes and offsets within it as signed 32-bit numbers.
constexpr std::uint32_t kMaxCabinetBytes = 0x7FFFFFFF;
/// Members are counted in 16 bits.
constexpr std::size_t kMaxMembers = 65535;
/// Folder numbers from 0xFFFD on have a meaning of their own.
constexpr std::size_t kMaxFolders = 0xFFFC;
/// Bytes of a member's name without its NUL, and of every other name in a cabinet.
constexpr std::size_t kMaxNameBytes = 255;

/// Bytes of the fixed parts of the records.
constexpr std::size_t kHeaderBytes = 36;
constexpr std::size_t kFolderBytes = 8;
constexpr std::size_t kMemberBytes = 16;  ///< without the name and its NUL
constexpr std::size_t kDataHeaderBytes = 8;

/// Bits of CabinetMember::Attributes besides the DOS attributes.
constexpr std::uint16_t kRunAfterExtraction = 0x40;
constexpr std::uint16_t kNameIsUtf8 = 0x80;

/// Bits of CabinetDirectory::Flags.
constexpr std::uint16_t kHasPreviousCabinet = 1;
constexpr std::uint16_t kHasNextCabinet = 2;
constexpr std::uint16_t kHasReserve = 4;

/// From this folder number on a member is continued from or in a neighbouring cabinet of a set.
constexpr std::uint16_t kFirstContinuedFolder = 0xFFFD;

/// A folder: the members that are compressed as one stream. It is no folder of a disk.
struct CabinetFolder {
    std::uint32_t DataOffset = 0;  ///< of the first data record, in bytes from the start of the cabinet
    std::uint16_t Records = 0;     ///< number of data records
    std::uint16_t Type = 0;        ///< compression as stored; see MethodCode
};

/// A file in the cabinet.
struct CabinetMember {
    std::string Name;              ///< the stored bytes: UTF-8 with kNameIsUtf8, else some ANSI code page
    std::uint32_t Size = 0;        ///< bytes
    std::uint32_t Offset = 0;      ///< of the first byte in the folder's uncompressed stream
    std::uint16_t Folder = 0;      ///< 0-based
    DosTime Modified;              ///< local time
    std::uint16_t Attributes = 0;  ///< DosAttribute bits, kRunAfterExtraction and kNameIsUtf8
};

/// Everything that stands before the data. The order of the members is that of their data.
struct CabinetDirectory {
    std::uint32_t CabinetSize = 0;  ///< bytes, as the header states it
    std::uint16_t Flags = 0;        ///< kHasPreviousCabinet, kHasNextCabinet and kHasReserve
    std::vector<CabinetFolder> Folders;
    std::vector<CabinetMember> Members;
};

}  // namespace tools::cabarc
