#include "tools/cabarc/CabinetReader.h"

#include <array>
#include <span>
#include <streambuf>

#include "tools/cabarc/FolderCompressor.h"
#include "tools/shared/ByteOrder.h"
#include "tools/shared/HostFiles.h"
#include "tools/shared/HostText.h"
#include "tools/shared/InputFile.h"
#include "tools/shared/ToolError.h"

namespace tools::cabarc {

namespace {

constexpr std::uint32_t kCabinetSignature = 0x4643534D;  // "MSCF"
// Longest header reserve that the format allows.
constexpr std::uint16_t kMaxHeaderReserve = 60000;

// One pass over the records of a directory.
class Parser {
 public:
    Parser(std::istream& cabinet, const std::string& label) : cabinet_(cabinet), label_(label) {}

    CabinetDirectory Run() {
        cabinet_.seekg(0, std::ios::end);
        fileSize_ = cabinet_ ? static_cast<std::uint64_t>(cabinet_.tellg()) : 0;
        Seek(0);
        ReadHeader();
        ReadReserveAndNeighbours();
        for (std::size_t i = 0; i < folderCount_; ++i) ReadFolder();
        Seek(membersOffset_);
        directory_.Members.reserve(memberCount_);
        for (std::size_t i = 0; i < memberCount_; ++i) ReadMember(i + 1);
        return std::move(directory_);
    }

 private:
    [[noreturn]] void Damaged(const std::string& what) const {
        throw ToolError(label_ + ": this cabinet is damaged: " + what);
    }

    void Seek(std::uint64_t offset) {
        cabinet_.clear();
        cabinet_.seekg(static_cast<std::streamoff>(offset));
    }

    void Read(std::span<std::uint8_t> bytes, const char* what) {
        for (std::uint8_t& byte : bytes) byte = ReadByte(what);
    }

    std::uint8_t ReadByte(const char* what) {
        const int byte = cabinet_.get();
        if (byte == std::istream::traits_type::eof()) Damaged(std::string("it ends within ") + what);
        return static_cast<std::uint8_t>(byte);
    }

    void ReadHeader() {
        std::array<std::uint8_t, kHeaderBytes> header{};
        std::size_t present = 0;
        for (int byte = 0;
             present < header.size() && (byte = cabinet_.get()) != std::char_traits<char>::eof();)
            header[present++] = static_cast<std::uint8_t>(byte);
        if (present < 4 || GetU32(header.data()) != kCabinetSignature)
            throw ToolError(label_ + ": this is not a cabinet");
        if (present < header.size()) Damaged("it ends within the header");
        if (header[25] != 1) throw ToolError(label_ + ": this version of the cabinet format is not known");
        directory_.CabinetSize = GetU32(header.data() + 8);
        membersOffset_ = GetU32(header.data() + 16);
        folderCount_ = GetU16(header.data() + 26);
        memberCount_ = GetU16(header.data() + 28);
        directory_.Flags = GetU16(header.data() + 30);
        if (directory_.CabinetSize > fileSize_) {
            throw ToolError(label_ + ": this cabinet is cut off: it should have " +
                            std::to_string(directory_.CabinetSize) + " bytes and has " +
                            std::to_string(fileSize_));
        }
        if (directory_.Flags > (kHasPreviousCabinet | kHasNextCabinet | kHasReserve))
            Damaged("unknown flags");
        if (folderCount_ == 0 || memberCount_ == 0) Damaged("it states that it holds nothing");
    }

    void ReadReserveAndNeighbours() {
        if ((directory_.Flags & kHasReserve) != 0) {
            std::array<std::uint8_t, 4> sizes{};
            Read(sizes, "the reserve sizes");
            const std::uint16_t headerReserve = GetU16(sizes.data());
            if (headerReserve > kMaxHeaderReserve) Damaged("a reserve is too big");
            folderReserve_ = sizes[2];
            for (int i = 0; i < headerReserve; ++i) ReadByte("the header's reserve");
        }
        if ((directory_.Flags & kHasPreviousCabinet) != 0) {
            ReadText("the name of the previous cabinet");
            ReadText("the previous disk's name");
        }
        if ((directory_.Flags & kHasNextCabinet) != 0) {
            ReadText("the name of the next cabinet");
            ReadText("the next disk's name");
        }
    }

    void ReadFolder() {
        std::array<std::uint8_t, kFolderBytes> record{};
        Read(record, "a folder record");
        for (std::size_t i = 0; i < folderReserve_; ++i) ReadByte("a folder's reserve");
        const CabinetFolder folder{GetU32(record.data()), GetU16(record.data() + 4),
                                   GetU16(record.data() + 6)};
        if (folder.Records > 0 && folder.DataOffset >= directory_.CabinetSize)
            Damaged("the data of a folder lies beyond its end");
        directory_.Folders.push_back(folder);
    }

    void ReadMember(std::size_t number) {
        std::array<std::uint8_t, kMemberBytes> record{};
        Read(record, "a member record");
        CabinetMember member;
        member.Size = GetU32(record.data());
        member.Offset = GetU32(record.data() + 4);
        member.Folder = GetU16(record.data() + 8);
        member.Modified = {GetU16(record.data() + 10), GetU16(record.data() + 12)};
        member.Attributes = GetU16(record.data() + 14);
        member.Name = ReadText("a member's name");
        const std::string which = "member " + std::to_string(number);
        if (member.Name.empty()) Damaged(which + " has no name");
        CheckPlace(member, which);
        directory_.Members.push_back(std::move(member));
    }

    void CheckPlace(const CabinetMember& member, const std::string& which) const {
        const bool isSet = (directory_.Flags & (kHasPreviousCabinet | kHasNextCabinet)) != 0;
        if (isSet && member.Folder >= kFirstContinuedFolder) return;
        if (member.Folder >= folderCount_) Damaged(which + " is in a folder that does not exist");
        if (isSet) return;  // the length of a folder that continues in another cabinet is unknown here
        const std::uint64_t folderEnd = std::uint64_t{directory_.Folders[member.Folder].Records} * kFrameSize;
        if (std::uint64_t{member.Offset} + member.Size > folderEnd)
            Damaged(which + " lies beyond its folder's end");
    }

    std::string ReadText(const char* what) {
        std::string text;
        for (;;) {
            const std::uint8_t byte = ReadByte(what);
            if (byte == 0) return text;
            if (text.size() == kMaxNameBytes) Damaged(std::string(what) + " is too long");
            text += static_cast<char>(byte);
        }
    }

    std::istream& cabinet_;
    const std::string& label_;
    std::uint64_t fileSize_ = 0;
    std::uint32_t membersOffset_ = 0;
    std::size_t folderCount_ = 0;
    std::size_t memberCount_ = 0;
    std::size_t folderReserve_ = 0;
    CabinetDirectory directory_;
};

// A file as a stream that can be read and moved to an absolute place or to the end.
class Buffer : public std::streambuf {
 public:
    explicit Buffer(InputFile& file) : file_(file) {}

 private:
    int_type underflow() override {
        const std::size_t count = file_.Read(bytes_);
        char* const begin = reinterpret_cast<char*>(bytes_.data());
        setg(begin, begin, begin + count);
        return count == 0 ? traits_type::eof() : traits_type::to_int_type(*gptr());
    }

    pos_type seekoff(off_type offset, std::ios::seekdir direction, std::ios::openmode mode) override {
        // tellg asks for the place without moving from it.
        if (direction == std::ios::cur && offset == 0)
            return static_cast<off_type>(file_.Position()) - (egptr() - gptr());
        if (direction == std::ios::end) offset += static_cast<off_type>(file_.Size());
        return seekpos(offset, mode);
    }

    pos_type seekpos(pos_type position, std::ios::openmode) override {
        file_.Seek(static_cast<std::uint64_t>(static_cast<off_type>(position)));
        setg(nullptr, nullptr, nullptr);
        return position;
    }

    InputFile& file_;
    std::array<std::uint8_t, 4096> bytes_{};
};

}  // namespace

CabinetDirectory ReadCabinetDirectory(std::istream& cabinet, const std::string& label) {
    return Parser(cabinet, label).Run();
}

CabinetDirectory ReadCabinetFile(const std::string& path) {
    const std::filesystem::path file = PathFromUtf8(path);
    const FileKind kind = KindOf(file);
    if (kind == FileKind::Missing) throw ToolError(path + ": there is no such file");
    if (kind == FileKind::Folder || kind == FileKind::Special) throw ToolError(path + ": this is not a file");
    InputFile input(file);
    Buffer buffer(input);
    std::istream cabinet(&buffer);
    cabinet.exceptions(std::ios::badbit);  // passes on what the file throws
    return ReadCabinetDirectory(cabinet, path);
}

}  // namespace tools::cabarc
