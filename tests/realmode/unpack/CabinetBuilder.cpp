#include "tests/realmode/unpack/CabinetBuilder.h"

#include "tools/shared/ByteOrder.h"

namespace realmode::unpack::testing {

namespace {

using tools::AppendU16;
using tools::AppendU32;

constexpr std::size_t kSizeAt = 8;
constexpr std::size_t kMembersAt = 16;
constexpr std::uint8_t kReserveByte = 0x5A;

// As the format defines it: words, then a tail whose first byte is the most significant.
std::uint32_t Checksum(const Bytes& bytes) {
    std::uint32_t sum = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const std::size_t tail = bytes.size() % 4;
        const bool isTail = i >= bytes.size() - tail;
        const std::size_t shift = isTail ? 8 * (bytes.size() - 1 - i) : 8 * (i % 4);
        sum ^= std::uint32_t{bytes[i]} << shift;
    }
    return sum;
}

void AppendRecord(Bytes& to, const BuiltRecord& record, unsigned reserve) {
    Bytes sizes;
    AppendU16(sizes, static_cast<std::uint32_t>(record.Payload.size()));
    AppendU16(sizes, record.Unpacked);
    Bytes summed = sizes;
    if (record.ChecksumHasReserve) summed.insert(summed.end(), reserve, kReserveByte);
    std::uint32_t sum = Checksum(record.Payload) ^ Checksum(summed);
    if (record.HasWrongChecksum) sum ^= 0x100;
    AppendU32(to, record.HasNoChecksum ? 0 : sum);
    to.insert(to.end(), sizes.begin(), sizes.end());
    to.insert(to.end(), reserve, kReserveByte);
    to.insert(to.end(), record.Payload.begin(), record.Payload.end());
}

}  // namespace

Bytes BuiltCabinet::Build() const {
    Bytes cabinet{'M', 'S', 'C', 'F'};
    for (int i = 0; i < 5; ++i) AppendU32(cabinet, 0);
    for (const std::size_t field : {std::size_t{0x0103}, Folders.size(), Members.size(), std::size_t{Flags},
                                    std::size_t{7}, std::size_t{0}})
        AppendU16(cabinet, static_cast<std::uint32_t>(field));
    if ((Flags & 4) != 0) {
        AppendU16(cabinet, HeaderReserve);
        AppendU16(cabinet, FolderReserve | DataReserve << 8);
        cabinet.insert(cabinet.end(), HeaderReserve, kReserveByte);
    }
    std::vector<std::size_t> dataAt;
    for (const BuiltFolder& folder : Folders) {
        dataAt.push_back(cabinet.size());
        AppendU32(cabinet, 0);
        AppendU16(cabinet, static_cast<std::uint32_t>(folder.Records.size()));
        AppendU16(cabinet, folder.Method);
        cabinet.insert(cabinet.end(), FolderReserve, kReserveByte);
    }
    tools::PutU32(&cabinet[kMembersAt], static_cast<std::uint32_t>(cabinet.size()));
    for (const BuiltMember& member : Members) {
        AppendU32(cabinet, member.Size);
        AppendU32(cabinet, member.Offset);
        for (const unsigned field : {member.Folder, member.Date, member.Time, member.Attributes})
            AppendU16(cabinet, field);
        cabinet.insert(cabinet.end(), member.Name.begin(), member.Name.end());
        cabinet.push_back(0);
    }
    for (std::size_t i = 0; i < Folders.size(); ++i) {
        tools::PutU32(&cabinet[dataAt[i]], static_cast<std::uint32_t>(cabinet.size()));
        for (const BuiltRecord& record : Folders[i].Records) AppendRecord(cabinet, record, DataReserve);
    }
    tools::PutU32(&cabinet[kSizeAt], static_cast<std::uint32_t>(cabinet.size()));
    return cabinet;
}

BuiltCabinet OneFile(unsigned method, const std::vector<BuiltRecord>& records) {
    BuiltCabinet cabinet;
    cabinet.Folders.push_back({method, records});
    std::uint32_t size = 0;
    for (const BuiltRecord& record : records) size += record.Unpacked;
    cabinet.Members.push_back({"F", size});
    return cabinet;
}

Bytes Text(const std::string& text) {
    return {text.begin(), text.end()};
}

}  // namespace realmode::unpack::testing
