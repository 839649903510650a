// The cabinet writer: any tree of files, packed with any method, becomes a cabinet that contains the tree
// and that our reader, the strict reader of the tests and libmspack read alike; or it is rejected and
// nothing is left. A second kind of input skips the files and lays out members in several folders of
// different methods.

#include <algorithm>
#include <fstream>
#include <map>
#include <sstream>

#include "tests/fuzz/Contents.h"
#include "tests/fuzz/FuzzTarget.h"
#include "tests/fuzz/MspackReader.h"
#include "tests/fuzz/RandomTree.h"
#include "tests/support/TestFolder.h"
#include "tests/tools/cabarc/ParsedCabinet.h"
#include "tools/cabarc/CabinetReader.h"
#include "tools/cabarc/CabinetWriter.h"
#include "tools/cabarc/Compressors.h"
#include "tools/cabarc/Packer.h"
#include "tools/shared/InputFile.h"
#include "tools/shared/ToolError.h"

namespace fuzz {

namespace {

using namespace tools::cabarc;
using tools::testing::TestFolder;

constexpr std::size_t kLongestFile = 30'000;

/// What a member must contain.
struct Expected {
    Bytes Contents;
    tools::DosTime Modified;
    unsigned Attributes = 0;
};

Method AnyMethod(Choices& choices) {
    const std::uint32_t choice = choices.Below(9);
    if (choice == 0) return {Method::Kind::Stored, 0};
    if (choice == 1) return {Method::Kind::MsZip, 0};
    return {Method::Kind::Lzx, 13 + static_cast<int>(choice)};
}

unsigned WithNameBit(const std::string& name, unsigned attributes) {
    const bool isAscii = std::all_of(name.begin(), name.end(), [](char c) { return c > 0; });
    return isAscii ? attributes : attributes | kNameIsUtf8;
}

Bytes ReadAll(const TestFolder& folder, const std::string& name) {
    Bytes bytes(std::filesystem::file_size(folder.Path(name)));
    tools::ReadWhole(folder.Path(name), bytes);
    return bytes;
}

// Three readers find the same members, and those are the expected ones.
void CheckCabinet(const Bytes& cabinet, const std::map<std::string, Expected>& expected) {
    std::istringstream stream(std::string(cabinet.begin(), cabinet.end()), std::ios::binary);
    const CabinetDirectory directory = ReadCabinetDirectory(stream, "out.cab");
    const tools::cabarc::testing::ParsedCabinet parsed = tools::cabarc::testing::Parse(cabinet);
    const std::vector<MspackMember> members = ReadWithMspack(cabinet);
    Require(directory.CabinetSize == cabinet.size(), "the cabinet states its size");
    Require(members.size() == expected.size() && directory.Members.size() == expected.size() &&
                parsed.Members.size() == expected.size(),
            "the cabinet has as many members as were packed");
    for (std::size_t i = 0; i < members.size(); ++i) {
        const MspackMember& member = members[i];
        const auto found = expected.find(member.Name);
        Require(found != expected.end(), "a member was packed under its name: " + member.Name);
        const Expected& model = found->second;
        Require(member.Contents == model.Contents, member.Name + " has its contents");
        Require(member.Date == model.Modified.Date && member.Time == model.Modified.Time,
                member.Name + " has its time");
        Require(member.Attributes == WithNameBit(member.Name, model.Attributes),
                member.Name + " has its attributes");
        const CabinetMember& own = directory.Members[i];
        Require(own.Name == member.Name && own.Size == member.Contents.size() &&
                    own.Modified == model.Modified && own.Attributes == member.Attributes,
                "our reader sees " + member.Name + " as libmspack does");
        if (parsed.Folders[parsed.Members[i].Folder].Stream)
            Require(parsed.Members[i].Contents == model.Contents, "the strict reader sees " + member.Name);
    }
}

std::string StoredPath(std::string path) {
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
}

void PackTree(Choices& choices) {
    const TestFolder folder;
    folder.MakeFolder("tree");
    CommandLine call;
    call.Action = Command::New;
    call.Compression = AnyMethod(choices);
    call.KeepFolders = choices.Flag();
    call.Recurse = true;
    call.Prefixes = {folder.Text("tree")};
    call.Cabinet = folder.Text("out.cab");
    call.Names = {folder.Text("tree/*.*")};
    const RandomTree tree = MakeRandomTree(choices, folder.Path("tree"), kLongestFile);
    std::map<std::string, Expected> expected;
    bool hasTwins = false;
    for (const TreeFile& file : tree.Files) {
        const std::string name =
            call.KeepFolders ? StoredPath(file.Path) : file.Path.substr(file.Path.find_last_of('/') + 1);
        hasTwins |= !expected.emplace(name, Expected{file.Contents, file.Modified, file.Attributes}).second;
    }
    try {
        const PackReport report = Pack(call);
        Require(report.Files == tree.Files.size(), "the report counts the files");
    } catch (const tools::ToolError& error) {
        const std::string text = error.what();
        Require(error.Code == tools::ExitCode::Failed && text.find('\n') == std::string::npos,
                "a refusal is one line: " + text);
        Require(folder.Names() == std::vector<std::string>{"tree"}, "a refusal leaves nothing");
        Require(!tree.HasPlainNames || tree.Files.empty() || hasTwins,
                "a tree of plain names is packed: " + text);
        return;
    }
    Require(!hasTwins, "two files of one name are refused");
    CheckCabinet(ReadAll(folder, "out.cab"), expected);
}

// Members in one to four folders; each folder has at least one.
void LayOut(Choices& choices) {
    CabinetDirectory directory;
    std::vector<Method> methods;
    std::map<std::string, Expected> expected;
    for (std::uint32_t left = 1 + choices.Below(4); left > 0; --left) {
        methods.push_back(AnyMethod(choices));
        directory.Folders.push_back({0, 0, MethodCode(methods.back())});
        std::uint32_t used = 0;
        for (std::uint32_t members = 1 + choices.Below(4); members > 0; --members) {
            CabinetMember member;
            member.Name = "m" + std::to_string(directory.Members.size());
            member.Name.append(choices.Below(200), 'x');
            Expected& model = expected[member.Name];
            model.Contents = ShortContents(choices, 3 * kLongestFile);
            model.Modified = tools::PackDosTime(1980 + static_cast<int>(choices.Below(128)), 2, 3, 4, 5, 6);
            model.Attributes = choices.Byte() & 0x67U;
            member.Size = static_cast<std::uint32_t>(model.Contents.size());
            member.Offset = used;
            member.Folder = static_cast<std::uint16_t>(methods.size() - 1);
            member.Modified = model.Modified;
            member.Attributes = static_cast<std::uint16_t>(model.Attributes);
            used += member.Size;
            directory.Members.push_back(member);
        }
    }
    const TestFolder folder;
    tools::OutputFile output(folder.Path("out.cab"));
    CabinetWriter writer(output, directory);
    auto member = directory.Members.begin();
    for (std::size_t i = 0; i < methods.size(); ++i) {
        const auto compressor = MakeCompressor(methods[i], writer.BeginFolder());
        for (; member != directory.Members.end() && member->Folder == i; ++member)
            compressor->Write(expected.at(member->Name).Contents);
        compressor->Finish();
    }
    writer.Finish();
    output.Commit();
    CheckCabinet(ReadAll(folder, "out.cab"), expected);
}

}  // namespace

void RunInput(std::span<const std::uint8_t> input) {
    Choices choices(input);
    if (choices.Flag())
        LayOut(choices);
    else
        PackTree(choices);
}

std::vector<Bytes> Seeds() {
    std::vector<Bytes> seeds;
    std::uint8_t method = 0;
    for (const Bytes& tree : TreeSeeds()) {
        for (std::uint8_t keepFolders = 0; keepFolders < 2; ++keepFolders) {
            seeds.push_back({0, method++, keepFolders});
            seeds.back().insert(seeds.back().end(), tree.begin(), tree.end());
        }
    }
    for (std::uint8_t first = 0; first < 9; ++first) {
        seeds.push_back({1, 3, first, 1, 5, 2, 3, 9, 7,  30, 1, 0x20, 9,  0, 0, 8, 1,
                         4, 2, 9,     7, 3, 6, 2, 1, 77, 3,  9, 40,   21, 1, 2, 9, 9});
    }
    return seeds;
}

}  // namespace fuzz
