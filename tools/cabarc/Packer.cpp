#include "tools/cabarc/Packer.h"

#include <algorithm>
#include <span>

#include "tools/cabarc/CabinetWriter.h"
#include "tools/cabarc/Compressors.h"
#include "tools/cabarc/MemberName.h"
#include "tools/cabarc/MemberOrder.h"
#include "tools/cabarc/SourceFiles.h"
#include "tools/shared/HostText.h"
#include "tools/shared/InputFile.h"
#include "tools/shared/OutputFile.h"
#include "tools/shared/ToolError.h"

namespace tools::cabarc {

namespace {

constexpr std::size_t kReadSize = 65536;

bool IsAscii(const std::string& text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

CabinetMember MemberOf(const SourceFile& file, const CommandLine& call) {
    CabinetMember member;
    member.Name = StoredName(file.Path, call.KeepFolders, call.Prefixes);
    if (const auto problem = NameProblem(member.Name))
        throw ToolError(file.Path + ": the name " + member.Name + " cannot be stored: " + *problem);
    if (file.Size > kMaxFolderBytes) {
        throw ToolError(file.Path + ": this file is too big for a cabinet, which takes at most " +
                        std::to_string(kMaxFolderBytes) + " bytes of a file");
    }
    member.Size = static_cast<std::uint32_t>(file.Size);
    member.Modified = file.Modified;
    member.Attributes = file.Attributes;
    if (!IsAscii(member.Name)) member.Attributes |= kNameIsUtf8;
    return member;
}

std::vector<CabinetMember> MembersOf(std::span<const SourceFile> files, const CommandLine& call) {
    std::vector<CabinetMember> members;
    Neighbours neighbours;
    members.reserve(files.size());
    for (const SourceFile& file : files) {
        members.push_back(MemberOf(file, call));
        const auto clash = neighbours.Add(members.back().Name, members.size() - 1);
        if (!clash) continue;
        const std::string& first = files[clash->First].Path;
        const std::string& second = files[clash->Second].Path;
        throw ToolError(clash->IsFolder
                            ? first + " would be stored as the folder of " + second
                            : second + " and " + first + " would both be stored as " + members.back().Name);
    }
    return members;
}

// Returns `items` in the order of their numbers `order`.
template <typename T>
std::vector<T> Arranged(std::vector<T> items, std::span<const std::size_t> order) {
    std::vector<T> arranged;
    arranged.reserve(items.size());
    for (const std::size_t number : order) arranged.push_back(std::move(items[number]));
    return arranged;
}

// Feeds the contents of a file to the compressor; they must have the size that the directory states.
void PackContents(const SourceFile& file, FolderCompressor& compressor, std::span<std::uint8_t> buffer) {
    InputFile input(PathFromUtf8(file.Path));
    std::uint64_t read = 0;
    for (std::size_t count = buffer.size(); count == buffer.size() && read <= file.Size;) {
        count = input.Read(buffer);
        read += count;
        if (read <= file.Size) compressor.Write(buffer.first(count));
    }
    if (read != file.Size) throw ToolError(file.Path + ": this file changed while it was read");
}

}  // namespace

PackReport Pack(const CommandLine& call) {
    const std::filesystem::path target = PathFromUtf8(call.Cabinet);
    std::vector<SourceFile> files = FindSourceFiles(call.Names, call.Recurse, target);
    SortByExtension(files, call.Names);
    CabinetDirectory directory;
    directory.Members = MembersOf(files, call);
    if (call.Compression.Type != Method::Kind::Stored) {
        const std::vector<std::size_t> order = OrderByContents(files, call.Names);
        files = Arranged(std::move(files), order);
        directory.Members = Arranged(std::move(directory.Members), order);
    }
    PlanFolders(directory, MethodCode(call.Compression));

    std::vector<std::uint16_t> folderOf(files.size());
    std::transform(directory.Members.begin(), directory.Members.end(), folderOf.begin(),
                   [](const CabinetMember& member) { return member.Folder; });
    const std::size_t folderCount = directory.Folders.size();

    OutputFile output(target);
    CabinetWriter writer(output, std::move(directory));
    PackReport report;
    std::vector<std::uint8_t> buffer(kReadSize);
    std::size_t next = 0;
    for (std::size_t folder = 0; folder < folderCount; ++folder) {
        const auto compressor = MakeCompressor(call.Compression, writer.BeginFolder());
        for (; next < files.size() && folderOf[next] == folder; ++next) {
            PackContents(files[next], *compressor, buffer);
            report.BytesIn += files[next].Size;
        }
        compressor->Finish();
    }
    writer.Finish();
    output.Commit();
    report.Files = files.size();
    report.BytesOut = output.Size();
    return report;
}

}  // namespace tools::cabarc
