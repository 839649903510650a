#include "tests/tools/cabarc/ParsedCabinet.h"

#include <zlib.h>

#include <algorithm>
#include <stdexcept>

namespace tools::cabarc::testing {

namespace {

constexpr std::size_t kFrame = 32768;

void Require(bool holds, const std::string& rule) {
    if (!holds) throw std::runtime_error("the cabinet breaks a rule: " + rule);
}

/// Reads the bytes of a cabinet in order.
class Cursor {
 public:
    explicit Cursor(const Bytes& bytes) : bytes_(bytes) {}

    std::size_t Position() const { return at_; }
    std::uint32_t Number(int bytes) {
        std::uint32_t value = 0;
        for (int i = 0; i < bytes; ++i) value |= std::uint32_t{Byte()} << (8 * i);
        return value;
    }
    std::uint8_t Byte() {
        Require(at_ < bytes_.size(), "no record ends after the cabinet");
        return bytes_[at_++];
    }
    std::string Text() {
        std::string text;
        while (const std::uint8_t byte = Byte()) text += static_cast<char>(byte);
        return text;
    }
    Bytes Take(std::size_t count) {
        Bytes taken;
        while (taken.size() < count) taken.push_back(Byte());
        return taken;
    }

 private:
    const Bytes& bytes_;
    std::size_t at_ = 0;
};

void AppendNumber(Bytes& bytes, std::uint64_t value, int count) {
    for (int i = 0; i < count; ++i) bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
}

/// The checksum byte by byte: byte i of a whole word has the weight 256^(i mod 4), those of the tail have
/// their weights in reverse.
std::uint32_t ChecksumOf(const Bytes& payload, std::size_t uncompressed) {
    Bytes sizes;
    AppendNumber(sizes, payload.size(), 2);
    AppendNumber(sizes, uncompressed, 2);
    std::uint32_t sum = 0;
    const std::size_t whole = payload.size() / 4 * 4;
    for (std::size_t i = 0; i < whole; ++i) sum ^= std::uint32_t{payload[i]} << (8 * (i % 4));
    for (std::size_t i = whole; i < payload.size(); ++i) {
        sum ^= std::uint32_t{payload[i]} << (8 * (payload.size() - 1 - i));
    }
    for (std::size_t i = 0; i < 4; ++i) sum ^= std::uint32_t{sizes[i]} << (8 * i);
    return sum;
}

void Inflate(const ParsedRecord& record, Bytes& stream) {
    Require(record.Payload.size() >= 2 && record.Payload[0] == 'C' && record.Payload[1] == 'K',
            "MSZIP begins with CK");
    Bytes frame(record.Uncompressed + 1);
    z_stream zlib = {};
    Require(inflateInit2(&zlib, -15) == Z_OK, "zlib starts");
    const std::size_t history = std::min(stream.size(), kFrame);
    inflateSetDictionary(&zlib, stream.data() + stream.size() - history, static_cast<uInt>(history));
    Bytes payload(record.Payload.begin() + 2, record.Payload.end());
    zlib.next_in = payload.data();
    zlib.avail_in = static_cast<uInt>(payload.size());
    zlib.next_out = frame.data();
    zlib.avail_out = static_cast<uInt>(frame.size());
    const int result = inflate(&zlib, Z_FINISH);
    const bool isExact = zlib.avail_in == 0 && zlib.avail_out == 1;
    inflateEnd(&zlib);
    Require(result == Z_STREAM_END && isExact, "an MSZIP record is one complete stream of the stated size");
    stream.insert(stream.end(), frame.begin(), frame.end() - 1);
}

void Decode(ParsedFolder& folder) {
    if (folder.Type > 1) return;
    Bytes stream;
    for (const ParsedRecord& record : folder.Records) {
        if (folder.Type == 0) {
            Require(record.Payload.size() == record.Uncompressed, "stored records have one size");
            stream.insert(stream.end(), record.Payload.begin(), record.Payload.end());
        } else {
            Inflate(record, stream);
        }
    }
    folder.Stream = std::move(stream);
}

std::size_t PayloadLimit(unsigned type) {
    switch (type & 15) {
        case 0:
            return kFrame;
        case 1:
            return kFrame + 12;
        default:
            return kFrame + 6144;
    }
}

ParsedRecord TakeRecord(Cursor& cursor, unsigned type, bool isLast) {
    const std::uint32_t sum = cursor.Number(4);
    const std::size_t size = cursor.Number(2);
    ParsedRecord record;
    record.Uncompressed = cursor.Number(2);
    record.Payload = cursor.Take(size);
    Require(size > 0 && size <= PayloadLimit(type), "the size of a record is in its limits");
    Require(
        isLast ? record.Uncompressed >= 1 && record.Uncompressed <= kFrame : record.Uncompressed == kFrame,
        "every record but the last of a folder stands for 32768 bytes");
    Require(sum == ChecksumOf(record.Payload, record.Uncompressed), "the checksum is right");
    return record;
}

void PlaceMembers(ParsedCabinet& cabinet) {
    std::vector<std::uint64_t> used(cabinet.Folders.size());
    std::size_t lastFolder = 0;
    for (ParsedMember& member : cabinet.Members) {
        Require(member.Folder < used.size() && member.Folder >= lastFolder,
                "folders are used in ascending order");
        lastFolder = member.Folder;
        Require(member.Offset == used[member.Folder], "members of a folder follow each other without a gap");
        used[member.Folder] += member.Size;
        const std::optional<Bytes>& stream = cabinet.Folders[member.Folder].Stream;
        if (!stream) continue;
        Require(used[member.Folder] <= stream->size(), "members lie within their folder");
        const auto begin = stream->begin() + static_cast<std::ptrdiff_t>(member.Offset);
        member.Contents.assign(begin, begin + static_cast<std::ptrdiff_t>(member.Size));
    }
    for (std::size_t i = 0; i < used.size(); ++i) {
        std::uint64_t size = 0;
        for (const ParsedRecord& record : cabinet.Folders[i].Records) size += record.Uncompressed;
        Require(used[i] == size, "a folder holds its members and nothing else");
    }
}

}  // namespace

ParsedCabinet Parse(const Bytes& bytes) {
    Cursor cursor(bytes);
    Require(cursor.Take(4) == BytesOf("MSCF"), "the signature is MSCF");
    Require(cursor.Number(4) == 0, "the first reserved field is 0");
    Require(cursor.Number(4) == bytes.size(), "the header states the size");
    Require(cursor.Number(4) == 0, "the second reserved field is 0");
    const std::size_t membersAt = cursor.Number(4);
    Require(cursor.Number(4) == 0, "the third reserved field is 0");
    Require(cursor.Number(2) == 0x0103, "the version is 1.3");
    const std::size_t folders = cursor.Number(2);
    const std::size_t members = cursor.Number(2);
    Require(folders > 0 && members > 0, "there are folders and members");
    Require(cursor.Number(2) == 0, "there are no flags");
    cursor.Number(2);
    Require(cursor.Number(2) == 0, "it is the first of its set");
    ParsedCabinet cabinet;
    std::vector<std::size_t> dataAt;
    std::vector<std::size_t> records;
    for (std::size_t i = 0; i < folders; ++i) {
        dataAt.push_back(cursor.Number(4));
        records.push_back(cursor.Number(2));
        cabinet.Folders.push_back({cursor.Number(2), {}, {}});
    }
    Require(cursor.Position() == membersAt, "the members follow the folders");
    for (std::size_t i = 0; i < members; ++i) {
        ParsedMember member;
        member.Size = cursor.Number(4);
        member.Offset = cursor.Number(4);
        member.Folder = cursor.Number(2);
        member.Date = cursor.Number(2);
        member.Time = cursor.Number(2);
        member.Attributes = cursor.Number(2);
        member.Name = cursor.Text();
        Require(!member.Name.empty() && member.Name.size() <= 255, "a name has 1 to 255 bytes");
        const bool isAscii =
            std::all_of(member.Name.begin(), member.Name.end(), [](char c) { return c > 0; });
        Require(isAscii == ((member.Attributes & 0x80) == 0),
                "names beyond ASCII, and no others, are marked");
        cabinet.Members.push_back(std::move(member));
    }
    for (std::size_t i = 0; i < folders; ++i) {
        Require(records[i] == 0 || dataAt[i] == cursor.Position(), "data follows without a gap");
        for (std::size_t n = 1; n <= records[i]; ++n) {
            ParsedFolder& folder = cabinet.Folders[i];
            folder.Records.push_back(TakeRecord(cursor, folder.Type, n == records[i]));
        }
        Decode(cabinet.Folders[i]);
    }
    Require(cursor.Position() == bytes.size(), "nothing follows the data");
    PlaceMembers(cabinet);
    return cabinet;
}

Bytes HandMade(const std::vector<HandMember>& members) {
    const std::size_t folders = members.back().Folder + 1;
    std::vector<Bytes> streams(folders);
    Bytes records;
    for (const HandMember& member : members) {
        Bytes& stream = streams[member.Folder];
        AppendNumber(records, member.Contents.size(), 4);
        AppendNumber(records, stream.size(), 4);
        AppendNumber(records, member.Folder, 2);
        AppendNumber(records, (2003 - 1980) << 9 | 4 << 5 | 5, 2);
        AppendNumber(records, 6 << 11 | 7 << 5 | 4, 2);
        AppendNumber(records, member.Attributes, 2);
        records.insert(records.end(), member.Name.begin(), member.Name.end());
        records.push_back(0);
        stream.insert(stream.end(), member.Contents.begin(), member.Contents.end());
    }
    Bytes folderRecords;
    Bytes data;
    const std::size_t dataStart = 36 + 8 * folders + records.size();
    for (const Bytes& stream : streams) {
        AppendNumber(folderRecords, dataStart + data.size(), 4);
        AppendNumber(folderRecords, (stream.size() + kFrame - 1) / kFrame, 2);
        AppendNumber(folderRecords, 0, 2);
        for (std::size_t at = 0; at < stream.size(); at += kFrame) {
            const std::size_t end = std::min(stream.size(), at + kFrame);
            const Bytes frame(stream.begin() + static_cast<std::ptrdiff_t>(at),
                              stream.begin() + static_cast<std::ptrdiff_t>(end));
            AppendNumber(data, ChecksumOf(frame, frame.size()), 4);
            AppendNumber(data, frame.size(), 2);
            AppendNumber(data, frame.size(), 2);
            data.insert(data.end(), frame.begin(), frame.end());
        }
    }
    Bytes cabinet = BytesOf("MSCF");
    AppendNumber(cabinet, 0, 4);
    AppendNumber(cabinet, dataStart + data.size(), 4);
    AppendNumber(cabinet, 0, 4);
    AppendNumber(cabinet, 36 + 8 * folders, 4);
    AppendNumber(cabinet, 0, 4);
    AppendNumber(cabinet, 0x0103, 2);
    AppendNumber(cabinet, folders, 2);
    AppendNumber(cabinet, members.size(), 2);
    AppendNumber(cabinet, 0, 6);
    for (const Bytes* part : {&folderRecords, &records, &data})
        cabinet.insert(cabinet.end(), part->begin(), part->end());
    return cabinet;
}

}  // namespace tools::cabarc::testing
