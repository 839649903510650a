#include "realmode/unpack/CabinetReader.h"

#include "realmode/unpack/Checksum.h"
#include "realmode/unpack/LzxDecoder.h"

namespace realmode::unpack {

namespace {

constexpr uint32_t kSignature = 0x4643534D;  // "MSCF"
constexpr uint32_t kOfASet = 3;              // flags: a previous and a next cabinet
constexpr uint32_t kHasReserves = 4;
constexpr uint32_t kFirstContinued = 0xFFFD;  // numbers of folders that other cabinets share

uint16_t Get16(const uint8_t* bytes) {
    return static_cast<uint16_t>(bytes[0] | bytes[1] << 8);
}

uint32_t Get32(const uint8_t* bytes) {
    return Get16(bytes) | uint32_t{Get16(bytes + 2)} << 16;
}

}  // namespace

// Brings `count` bytes of the cabinet, at most kLookBytes, to near memory, and what comes after them.
Fault CabinetReader::Look(uint32_t at, uint32_t count, const uint8_t*& bytes) {
    if (at > end_ || count > end_ - at) return Fault::EndsEarly;
    if (at < lookAt_ || at + count > lookAt_ + lookCount_) {
        const uint32_t rest = end_ - at;
        lookCount_ = 0;
        const uint32_t wanted = rest < kLookBytes ? rest : kLookBytes;
        if (!file_.Read(at, look_, wanted)) return Fault::CannotRead;
        lookAt_ = at;
        lookCount_ = wanted;
    }
    bytes = look_ + (at - lookAt_);
    return Fault::None;
}

Fault CabinetReader::Open() {
    end_ = file_.Size();
    const uint8_t* header = nullptr;
    Fault fault = Look(0, 4, header);
    if (fault == Fault::EndsEarly || (fault == Fault::None && Get32(header) != kSignature))
        return Fault::NotACabinet;
    if (fault == Fault::None) fault = Look(0, kHeaderBytes, header);
    if (fault != Fault::None) return fault;
    if (Get32(header + 8) > end_) return Fault::EndsEarly;
    end_ = Get32(header + 8);
    firstMemberAt_ = Get32(header + 16);
    folders_ = Get16(header + 26);
    members_ = Get16(header + 28);
    foldersAt_ = kHeaderBytes;
    const uint32_t flags = Get16(header + 30);
    if ((flags & kOfASet) != 0) return Fault::PartOfASet;
    if ((flags & kHasReserves) != 0) fault = ReadReserves();
    Rewind();
    return fault;
}

Fault CabinetReader::ReadReserves() {
    const uint8_t* sizes = nullptr;
    const Fault fault = Look(kHeaderBytes, kReserveBytes, sizes);
    if (fault != Fault::None) return fault;
    foldersAt_ += kReserveBytes + Get16(sizes);
    folderReserve_ = sizes[2];
    dataReserve_ = sizes[3];
    return Fault::None;
}

Fault CabinetReader::NextMember(Member& member) {
    const uint8_t* bytes = nullptr;
    // The longest name that fits into the cabinet here.
    uint32_t space = kMemberBytes + Member::kMaxName + 1;
    if (memberAt_ < end_ && end_ - memberAt_ < space) space = end_ - memberAt_;
    if (space < kMemberBytes) return Fault::BadDirectory;
    const Fault fault = Look(memberAt_, space, bytes);
    if (fault != Fault::None) return fault;
    member.Size = Get32(bytes);
    member.Offset = Get32(bytes + 4);
    member.Folder = Get16(bytes + 8);
    member.Stamp = {Get16(bytes + 10), Get16(bytes + 12), Get16(bytes + 14)};
    if (member.Folder >= kFirstContinued) return Fault::PartOfASet;
    uint32_t length = 0;
    do {
        if (kMemberBytes + length == space) return Fault::BadDirectory;
        member.Name[length] = static_cast<char>(bytes[kMemberBytes + length]);
    } while (member.Name[length++] != '\0');
    memberAt_ += kMemberBytes + length;
    return Fault::None;
}

Fault CabinetReader::ReadFolder(uint32_t number, FolderRecord& folder) {
    if (number >= folders_) return Fault::BadDirectory;
    const uint8_t* bytes = nullptr;
    const Fault fault = Look(foldersAt_ + number * (kFolderBytes + folderReserve_), kFolderBytes, bytes);
    if (fault != Fault::None) return fault;
    folder.DataAt = Get32(bytes);
    folder.Records = Get16(bytes + 4);
    const uint32_t method = Get16(bytes + 6);
    folder.WindowBits = method >> 8;
    switch (method & 0xF) {
        case 0:
            folder.Method = FolderRecord::Packing::Stored;
            return Fault::None;
        case 1:
            folder.Method = FolderRecord::Packing::MsZip;
            return Fault::None;
        case 3:
            folder.Method = FolderRecord::Packing::Lzx;
            folder.WindowBits &= 0x1F;
            if (folder.WindowBits >= LzxDecoder::kMinWindowBits &&
                folder.WindowBits <= LzxDecoder::kMaxWindowBits)
                return Fault::None;
            break;
        default:
            break;
    }
    return Fault::UnknownMethod;
}

Fault CabinetReader::ReadData(uint32_t& at, FarBytes data, uint32_t& packed, uint32_t& unpacked) {
    constexpr uint32_t kMaxReserve = 255;
    uint8_t header[kDataHeaderBytes + kMaxReserve];
    const uint32_t headerBytes = kDataHeaderBytes + dataReserve_;
    if (at > end_ || headerBytes > end_ - at) return Fault::EndsEarly;
    if (!file_.Read(at, header, headerBytes)) return Fault::CannotRead;
    at += headerBytes;
    packed = Get16(header + 4);
    unpacked = Get16(header + 6);
    if (packed > kMaxPackedBytes || unpacked == 0 || unpacked > kFrameBytes) return Fault::BadRecord;
    if (packed > end_ - at) return Fault::EndsEarly;
    if (!file_.Read(at, data, packed)) return Fault::CannotRead;
    at += packed;
    const uint32_t stored = Get32(header);
    if (stored == 0) return Fault::None;  // not checked
    // The checksum is that of the payload, then of the sizes, then of the reserve, which some packers leave
    // out.
    FarBytes::Copy(data, packed, header + 4, 4 + dataReserve_);
    const uint32_t sum = ChecksumOf(data, 0, packed);
    const bool isRight = stored == (sum ^ ChecksumOf(data, packed, 4 + dataReserve_)) ||
                         stored == (sum ^ ChecksumOf(data, packed, 4));
    return isRight ? Fault::None : Fault::BadChecksum;
}

}  // namespace realmode::unpack
