#include "tools/cabarc/CabinetWriter.h"

#include <algorithm>
#include <stdexcept>

#include "tools/shared/ByteOrder.h"
#include "tools/shared/ToolError.h"

namespace tools::cabarc {

namespace {

constexpr std::size_t kMaxRecords = 65535;

std::size_t EncodedSize(const CabinetDirectory& directory) {
    std::size_t size = kHeaderBytes + directory.Folders.size() * kFolderBytes;
    for (const CabinetMember& member : directory.Members) size += kMemberBytes + member.Name.size() + 1;
    return size;
}

std::vector<std::uint8_t> Encode(const CabinetDirectory& directory) {
    std::vector<std::uint8_t> bytes = {'M', 'S', 'C', 'F'};
    bytes.reserve(EncodedSize(directory));
    AppendU32(bytes, 0);
    AppendU32(bytes, directory.CabinetSize);
    AppendU32(bytes, 0);
    AppendU32(bytes, static_cast<std::uint32_t>(kHeaderBytes + directory.Folders.size() * kFolderBytes));
    AppendU32(bytes, 0);
    AppendU16(bytes, 0x0103);  // version 1.3
    AppendU16(bytes, static_cast<std::uint32_t>(directory.Folders.size()));
    AppendU16(bytes, static_cast<std::uint32_t>(directory.Members.size()));
    AppendU16(bytes, directory.Flags);
    AppendU16(bytes, 0);  // set and number: a cabinet of its own
    AppendU16(bytes, 0);
    for (const CabinetFolder& folder : directory.Folders) {
        AppendU32(bytes, folder.DataOffset);
        AppendU16(bytes, folder.Records);
        AppendU16(bytes, folder.Type);
    }
    for (const CabinetMember& member : directory.Members) {
        AppendU32(bytes, member.Size);
        AppendU32(bytes, member.Offset);
        AppendU16(bytes, member.Folder);
        AppendU16(bytes, member.Modified.Date);
        AppendU16(bytes, member.Modified.Time);
        AppendU16(bytes, member.Attributes);
        bytes.insert(bytes.end(), member.Name.begin(), member.Name.end());
        bytes.push_back(0);
    }
    return bytes;
}

}  // namespace

std::uint32_t RecordChecksum(std::span<const std::uint8_t> payload, std::uint16_t uncompressedSize) {
    std::uint32_t sum =
        static_cast<std::uint32_t>(payload.size()) | (static_cast<std::uint32_t>(uncompressedSize) << 16);
    std::size_t at = 0;
    for (; at + 4 <= payload.size(); at += 4) sum ^= GetU32(payload.data() + at);
    // The one big-endian part of the format: in a tail of 1 to 3 bytes the first one is the most
    // significant.
    std::uint32_t tail = 0;
    for (; at < payload.size(); ++at) tail = (tail << 8) | payload[at];
    return sum ^ tail;
}

void PlanFolders(CabinetDirectory& directory, std::uint16_t type) {
    if (directory.Members.size() > kMaxMembers) {
        throw ToolError("a cabinet holds at most " + std::to_string(kMaxMembers) + " files, not " +
                        std::to_string(directory.Members.size()));
    }
    directory.Folders.assign(1, CabinetFolder{0, 0, type});
    std::uint32_t used = 0;
    for (CabinetMember& member : directory.Members) {
        if (member.Size > kMaxFolderBytes - used) {
            if (directory.Folders.size() == kMaxFolders)
                throw ToolError("the files are too big for one cabinet");
            directory.Folders.push_back(CabinetFolder{0, 0, type});
            used = 0;
        }
        member.Folder = static_cast<std::uint16_t>(directory.Folders.size() - 1);
        member.Offset = used;
        used += member.Size;
    }
}

CabinetWriter::CabinetWriter(OutputFile& output, CabinetDirectory directory)
    : output_(output), directory_(std::move(directory)), folderBytes_(directory_.Folders.size()) {
    output_.Write(std::vector<std::uint8_t>(EncodedSize(directory_)));
}

RecordSink& CabinetWriter::BeginFolder() {
    directory_.Folders.at(begun_).DataOffset = static_cast<std::uint32_t>(output_.Size());
    ++begun_;
    return *this;
}

void CabinetWriter::PutRecord(std::span<const std::uint8_t> payload, std::uint16_t uncompressedSize) {
    CabinetFolder& folder = directory_.Folders.at(begun_ - 1);
    if (output_.Size() + kDataHeaderBytes + payload.size() > kMaxCabinetBytes ||
        folder.Records == kMaxRecords) {
        throw ToolError("the packed files are too big for one cabinet, which holds at most " +
                        std::to_string(kMaxCabinetBytes) + " bytes");
    }
    record_.clear();
    AppendU32(record_, RecordChecksum(payload, uncompressedSize));
    AppendU16(record_, static_cast<std::uint32_t>(payload.size()));
    AppendU16(record_, uncompressedSize);
    record_.insert(record_.end(), payload.begin(), payload.end());
    output_.Write(record_);
    ++folder.Records;
    folderBytes_[begun_ - 1] += uncompressedSize;
}

void CabinetWriter::Finish() {
    std::vector<std::uint64_t> expected(directory_.Folders.size());
    for (const CabinetMember& member : directory_.Members) expected.at(member.Folder) += member.Size;
    if (begun_ != expected.size() || folderBytes_ != expected)
        throw std::logic_error("the data of the cabinet does not fit its directory");
    directory_.CabinetSize = static_cast<std::uint32_t>(output_.Size());
    output_.WriteAt(0, Encode(directory_));
}

}  // namespace tools::cabarc
