#pragma once
// Reads the records of a cabinet; docs/formats/cabinet.md describes them. Whatever it hands out was checked
// against the limits of the format.

#include <stdint.h>

#include "realmode/unpack/Machine.h"

namespace realmode::unpack {

/// A folder of a cabinet: members that are packed as one stream.
struct FolderRecord {
    enum class Packing : uint8_t { Stored, MsZip, Lzx };

    uint32_t DataAt = 0;   ///< the place of the first data record in the cabinet
    uint32_t Records = 0;  ///< how many data records there are
    Packing Method = Packing::Stored;
    uint32_t WindowBits = 0;  ///< of LZX: 15 to 21
};

struct Member {
    static constexpr uint32_t kMaxName = 255;

    uint32_t Size = 0;
    uint32_t Offset = 0;  ///< in the folder's stream
    uint32_t Folder = 0;
    FileStamp Stamp;
    char Name[kMaxName + 1] = {};
};

class CabinetReader {
 public:
    /// Bytes of memory that ReadData needs.
    static constexpr uint32_t kDataBytes = kMaxPackedBytes + 4 + 255;

    explicit CabinetReader(CabinetFile& file) : file_(file) {}
    CabinetReader(const CabinetReader&) = delete;
    CabinetReader& operator=(const CabinetReader&) = delete;

    /// Reads the header; every other function comes after it.
    Fault Open();

    uint32_t MemberCount() const { return members_; }
    /// NextMember begins with the first one again.
    void Rewind() { memberAt_ = firstMemberAt_; }
    /// Reads a member; there are MemberCount of them.
    Fault NextMember(Member& member);

    /// Reads the folder of that number. It is BadDirectory when there is none.
    Fault ReadFolder(uint32_t number, FolderRecord& folder);

    /// Reads the data record at the place `at`, which becomes that of the next one: its payload, whose
    /// checksum was compared, to the start of `data`, and its two sizes.
    Fault ReadData(uint32_t& at, FarBytes data, uint32_t& packed, uint32_t& unpacked);

 private:
    static constexpr uint32_t kHeaderBytes = 36;
    static constexpr uint32_t kReserveBytes = 4;
    static constexpr uint32_t kFolderBytes = 8;
    static constexpr uint32_t kMemberBytes = 16;
    static constexpr uint32_t kDataHeaderBytes = 8;
    static constexpr uint32_t kLookBytes = 2048;

    Fault Look(uint32_t at, uint32_t count, const uint8_t*& bytes);
    Fault ReadReserves();

    CabinetFile& file_;
    uint32_t end_ = 0;     // of the cabinet
    uint32_t lookAt_ = 0;  // what the buffer holds of it
    uint32_t lookCount_ = 0;
    uint32_t folders_ = 0;
    uint32_t members_ = 0;
    uint32_t foldersAt_ = 0;
    uint32_t firstMemberAt_ = 0;
    uint32_t memberAt_ = 0;
    uint32_t folderReserve_ = 0;
    uint32_t dataReserve_ = 0;
    uint8_t look_[kLookBytes];
};

}  // namespace realmode::unpack
