// Extraction through the system's own cabinet library: contents, names, times, attributes, and everything
// that a damaged or hostile cabinet must not be able to do.
#include <windows.h>

#include <process.h>

#include <gmock/gmock.h>

#include "tests/support/BuiltFile.h"
#include "tests/tools/cabarc/ParsedCabinet.h"
#include "tools/cabarc/CabinetReader.h"
#include "tools/cabarc/CabinetWriter.h"
#include "tools/cabarc/Compressors.h"
#include "tools/cabarc/Extractor.h"
#include "tools/cabarc/Packer.h"
#include "tools/cabarc/SystemCabinet.h"
#include "tools/shared/ByteOrder.h"
#include "tools/shared/HostFiles.h"
#include "tools/shared/HostText.h"
#include "tools/shared/ToolError.h"

namespace tools::cabarc::testing {
namespace {

using ::testing::AnyOf;
using ::testing::HasSubstr;
using ::testing::ThrowsMessage;
using Words = std::vector<std::string>;
using Tree = std::map<std::string, Bytes>;

void PackWith(const Words& words) {
    Pack(ParseCommandLine(words, false));
}

std::size_t ExtractWith(const Words& words) {
    return Extract(ParseCommandLine(words, false));
}

HostFile EntryOf(const std::string& folder, const std::string& name) {
    for (const HostFile& entry : ListFolder(PathFromUtf8(folder))) {
        if (entry.Name == name) return entry;
    }
    ADD_FAILURE() << name << " is not in " << folder;
    return {};
}

/// The tests work in the folder work, so that a file which is extracted outside it is found next to it.
class Extractor : public InTestFolder {
 protected:
    Extractor() {
        std::filesystem::create_directory("work");
        std::filesystem::current_path("work");
    }
    ~Extractor() override { std::filesystem::current_path(Folder); }
};

class ExtractorOfMethod : public Extractor, public ::testing::WithParamInterface<std::string> {};

TEST_P(ExtractorOfMethod, GivesBackContentsNamesTimesAndAttributes) {
    WriteBytes("../in/autoexec.bat", TextLike(3000));
    WriteBytes("../in/empty", {});
    WriteBytes("../in/bin/noise.bin", RandomBytes(150001));
    WriteBytes("../in/bin/deep/er/prose.txt", TextLike(400000, 7));
    WriteBytes("../in/caf\xC3\xA9/\xE6\xBC\xA2.txt", BytesOf("unicode"));
    ASSERT_TRUE(
        SetTimeAndAttributes("../in/autoexec.bat", PackDosTime(1994, 5, 31, 6, 22, 0), kReadOnly | kArchive));
    ASSERT_TRUE(SetTimeAndAttributes("../in/bin/noise.bin", PackDosTime(2024, 2, 29, 23, 59, 58),
                                     kHidden | kSystem | kArchive));
    PackWith({"-m", GetParam(), "-p", "-r", "-P", "..\\in", "n", "..\\out.cab", "..\\in\\*.*"});
    EXPECT_EQ(5U, ExtractWith({"x", "..\\out.cab"}));
    EXPECT_TRUE(TreeOf(".") == TreeOf("..\\in"));
    const HostFile batch = EntryOf(".", "autoexec.bat");
    EXPECT_EQ(PackDosTime(1994, 5, 31, 6, 22, 0), batch.Modified);
    EXPECT_EQ(EntryOf("..\\in", "autoexec.bat").Attributes, batch.Attributes);
    EXPECT_EQ(kReadOnly, batch.Attributes & kReadOnly);
    const HostFile noise = EntryOf("bin", "noise.bin");
    EXPECT_EQ(PackDosTime(2024, 2, 29, 23, 59, 58), noise.Modified);
    EXPECT_EQ(EntryOf("..\\in\\bin", "noise.bin").Attributes, noise.Attributes);
}

TEST_P(ExtractorOfMethod, UnpacksFarRepetitions) {
    Bytes data = RandomBytes(1500000, 3);
    const Bytes prose = TextLike(1200000, 4);
    data.insert(data.end(), prose.begin(), prose.end());
    const Bytes again(data.begin() + 700000, data.begin() + 1000000);
    data.insert(data.end(), again.begin(), again.end());
    WriteBytes("../in/long.bin", data);
    PackWith({"-m", GetParam(), "n", "..\\out.cab", "..\\in\\long.bin"});
    ExtractWith({"x", "..\\out.cab"});
    EXPECT_TRUE(ReadBytes("long.bin") == data);
}

INSTANTIATE_TEST_SUITE_P(Methods, ExtractorOfMethod,
                         ::testing::Values("NONE", "MSZIP", "LZX:15", "LZX:18", "LZX:21"),
                         [](const auto& info) {
                             std::string method = info.param;
                             std::erase(method, ':');
                             return method;
                         });

TEST_F(Extractor, TakesDriverFilesOutAsTheBuildAsksForThem) {
    WriteBytes("source/scsi.txt", BytesOf("scsi.txt     An adapter\r\n"));
    WriteBytes("source/ndis.dos", RandomBytes(20000));
    WriteBytes("source/ndis.txt", BytesOf("ndis.txt     A card\r\n"));
    WriteBytes("source/other.txt", BytesOf("left"));
    PackWith({"-m", "LZX:21", "n", "drivers\\ndis\\E100B.cab", "source\\*.*"});
    std::filesystem::remove_all("source");
    const ProgramResult one = RunCabarc("-o x drivers\\ndis\\E100B.cab scsi.txt");
    EXPECT_EQ(0, one.ExitCode) << one.Errors;
    EXPECT_EQ(BytesOf("scsi.txt     An adapter\r\n"), ReadBytes("scsi.txt"));
    const ProgramResult several = RunCabarc("-o x drivers\\ndis\\E100B.cab NDIS.*");
    EXPECT_EQ(0, several.ExitCode) << several.Errors;
    EXPECT_EQ(RandomBytes(20000), ReadBytes("ndis.dos"));
    EXPECT_TRUE(std::filesystem::exists("ndis.txt"));
    EXPECT_FALSE(std::filesystem::exists("other.txt"));
}

TEST_F(Extractor, UnpacksFoldersOfDifferentMethods) {
    const Method methods[] = {{Method::Kind::Lzx, 17},
                              {Method::Kind::MsZip, 0},
                              {Method::Kind::Stored, 0},
                              {Method::Kind::Lzx, 21}};
    CabinetDirectory directory;
    Tree expected;
    for (std::uint16_t i = 0; i < 4; ++i) {
        directory.Folders.push_back({0, 0, MethodCode(methods[i])});
        for (std::uint32_t part = 0; part < 2; ++part) {
            CabinetMember member;
            member.Name = "f" + std::to_string(i) + std::to_string(part);
            member.Size = 50000;
            member.Offset = part * 50000;
            member.Folder = i;
            expected[member.Name] = TextLike(50000, i * 10 + part);
            directory.Members.push_back(member);
        }
    }
    {
        OutputFile output("../mixed.cab");
        CabinetWriter writer(output, directory);
        for (int i = 0; i < 4; ++i) {
            const auto compressor = MakeCompressor(methods[i], writer.BeginFolder());
            compressor->Write(expected["f" + std::to_string(i) + "0"]);
            compressor->Write(expected["f" + std::to_string(i) + "1"]);
            compressor->Finish();
        }
        writer.Finish();
        output.Commit();
    }
    EXPECT_EQ(2U, ExtractWith({"x", "..\\mixed.cab", "f11", "f30"}));
    EXPECT_TRUE(TreeOf(".") == (Tree{{"f11", expected["f11"]}, {"f30", expected["f30"]}}));
    ExtractWith({"-o", "x", "..\\mixed.cab"});
    EXPECT_TRUE(TreeOf(".") == expected);
}

// Records what it receives, and in which order.
class Recorder : public MemberReceiver {
 public:
    bool Begin(std::size_t index) override {
        Order.push_back(index);
        return true;
    }
    void Write(std::span<const std::uint8_t> bytes) override {
        Bytes& contents = Contents[Order.back()];
        contents.insert(contents.end(), bytes.begin(), bytes.end());
    }
    void End() override {}

    std::vector<std::size_t> Order;
    std::map<std::size_t, Bytes> Contents;
};

TEST_F(Extractor, MembersThatAlternateBetweenMethodsTakeOneRunForEach) {
    const Method methods[] = {{Method::Kind::Stored, 0}, {Method::Kind::MsZip, 0}, {Method::Kind::Lzx, 17}};
    constexpr std::size_t kSize = 20000;
    CabinetDirectory directory;
    for (const Method& method : methods) directory.Folders.push_back({0, 0, MethodCode(method)});
    for (std::size_t i = 0; i < 9; ++i) {
        CabinetMember member;
        member.Name = "f" + std::to_string(i);
        member.Size = kSize;
        member.Offset = static_cast<std::uint32_t>(i / 3 * kSize);
        member.Folder = static_cast<std::uint16_t>(i % 3);
        directory.Members.push_back(member);
    }
    {
        OutputFile output("../mixed.cab");
        CabinetWriter writer(output, directory);
        for (std::uint32_t folder = 0; folder < 3; ++folder) {
            const auto compressor = MakeCompressor(methods[folder], writer.BeginFolder());
            for (std::uint32_t i = folder; i < 9; i += 3) compressor->Write(TextLike(kSize, i));
            compressor->Finish();
        }
        writer.Finish();
        output.Commit();
    }
    Recorder recorder;
    UnpackCabinet("../mixed.cab", "mixed.cab", ReadCabinetFile("../mixed.cab"), recorder);
    EXPECT_THAT(recorder.Order, ::testing::ElementsAre(0, 3, 6, 1, 4, 7, 2, 5, 8));
    for (std::uint32_t i = 0; i < 9; ++i) EXPECT_TRUE(recorder.Contents[i] == TextLike(kSize, i)) << i;
    EXPECT_EQ(9U, ExtractWith({"x", "..\\mixed.cab"}));
    for (std::uint32_t i = 0; i < 9; ++i)
        EXPECT_TRUE(ReadBytes("f" + std::to_string(i)) == TextLike(kSize, i)) << i;
}

// The members overlap: each is all of a folder that claims to have the greatest possible length.
TEST_F(Extractor, MoreThanTheDriveHoldsIsRefusedBeforeAnythingIsWritten) {
    std::vector<HandMember> members;
    for (int i = 0; i < 30000; ++i) members.push_back({std::to_string(100000 + i), {}});
    members.push_back({"last", BytesOf("x")});
    Bytes cabinet = HandMade(members);
    PutU16(&cabinet[36 + 4], 0xFFFF);
    for (std::size_t i = 0; i + 1 < members.size(); ++i) PutU32(&cabinet[44 + i * 23], 0x7FFF8000);
    WriteBytes("../huge.cab", cabinet);
    EXPECT_THAT(
        [] {
            ExtractWith({"x", "..\\huge.cab"});
        },
        ThrowsMessage<ToolError>(HasSubstr("huge.cab: its files need 64423526400001 bytes, and the ")));
    EXPECT_TRUE(TreeOf(".").empty());
}

TEST_F(Extractor, UnpacksACabinetOfAnotherPacker) {
    const auto fileAt = [](const std::string& name, const std::string& folder) {
        return Utf8FromPath(tools::testing::BuiltFile("foreign/" + name, folder + "/" + name));
    };
    EXPECT_EQ(2U, ExtractWith({"x", fileAt("foreign.cab", FOREIGN_CABINET_FOLDER)}));
    for (const std::string name : {"ParsedCabinet.cpp", "ParsedCabinet.h"}) {
        EXPECT_EQ(ReadBytes(name), ReadBytes(fileAt(name, FOREIGN_SOURCES))) << name;
    }
}

TEST_F(Extractor, RefusesNamesThatLeaveTheFolderAndWritesNothing) {
    std::filesystem::create_directory("sub");
    for (const char* name :
         {"..\\evil.txt", "../evil.txt", "sub\\..\\..\\evil.txt", "C:\\evil.txt", "C:evil.txt", "\\evil.txt",
          "/evil.txt", "\\\\?\\C:\\evil.txt", "sub\\\\evil.txt", "nul", "con.txt", "sub\\com1.txt",
          "good.txt:stream", "evil.txt.", ".. \\evil.txt", ".", "..", "a\nb"}) {
        WriteBytes("../evil.cab", HandMade({{"good.txt", BytesOf("fine")}, {name, BytesOf("out")}}));
        EXPECT_THAT(
            [] {
                ExtractWith({"-o", "x", "..\\evil.cab"});
            },
            ThrowsMessage<ToolError>(HasSubstr(" is refused: ")))
            << name;
        EXPECT_TRUE(TreeOf("..") == (Tree{{"evil.cab", ReadBytes("../evil.cab")}})) << name;
        EXPECT_FALSE(std::filesystem::exists("C:\\evil.txt")) << name;
    }
    EXPECT_EQ(1U, ExtractWith({"x", "..\\evil.cab", "good.txt"}));
}

TEST_F(Extractor, ForwardSlashesMakeFoldersToo) {
    WriteBytes("../a.cab", HandMade({{"one/two/three.txt", BytesOf("deep")}}));
    ExtractWith({"x", "..\\a.cab"});
    EXPECT_EQ(BytesOf("deep"), ReadBytes("one\\two\\three.txt"));
}

TEST_F(Extractor, NamesWithoutTheMarkAreInTheSystemsCodePage) {
    const char ansi[] = "caf\xE9.txt";
    wchar_t wide[20] = {};
    ASSERT_GT(MultiByteToWideChar(CP_ACP, 0, ansi, -1, wide, 20), 0);
    WriteBytes("../a.cab", HandMade({{ansi, BytesOf("ansi")}, {"caf\xC3\xA9.utf", BytesOf("utf"), 0xA0}}));
    ExtractWith({"x", "..\\a.cab"});
    EXPECT_NE(GetFileAttributesW(wide), INVALID_FILE_ATTRIBUTES);
    EXPECT_NE(GetFileAttributesW(L"caf\u00E9.utf"), INVALID_FILE_ATTRIBUTES);
}

TEST_F(Extractor, ExistingFilesNeedTheOption) {
    WriteBytes("../a.cab", HandMade({{"new", BytesOf("n")}, {"old", BytesOf("theirs")}}));
    WriteBytes("old", BytesOf("mine"));
    EXPECT_THAT(
        [] {
            ExtractWith({"x", "..\\a.cab"});
        },
        ThrowsMessage<ToolError>("old: exists already; -o overwrites it"));
    EXPECT_TRUE(TreeOf(".") == (Tree{{"old", BytesOf("mine")}}));
    ExtractWith({"-o", "x", "..\\a.cab"});
    EXPECT_EQ(BytesOf("theirs"), ReadBytes("old"));
}

TEST_F(Extractor, OverwritesReadOnlyAndHiddenFilesAgainAndAgain) {
    WriteBytes("../a.cab", HandMade({{"a", BytesOf("x"), kReadOnly | kHidden | kSystem}}));
    ExtractWith({"x", "..\\a.cab"});
    ExtractWith({"-o", "x", "..\\a.cab"});
    EXPECT_EQ(BytesOf("x"), ReadBytes("a"));
    EXPECT_EQ(FileKind::ReadOnly, KindOf("a"));
}

TEST_F(Extractor, TheLastNameMayBeTheFolder) {
    WriteBytes("../a.cab", HandMade({{"sub\\a", BytesOf("x")}, {"b", BytesOf("y")}}));
    ExtractWith({"x", "..\\a.cab", "sub\\a", "target\\here\\"});
    EXPECT_TRUE(TreeOf(".") == (Tree{{"target/here/sub/a", BytesOf("x")}}));
}

TEST_F(Extractor, CutOffCabinetWritesNothing) {
    const Bytes whole = HandMade({{"a", TextLike(40000)}, {"b", TextLike(40000)}});
    for (std::size_t size = 0; size < whole.size(); size += size < 120 ? 13 : 4999) {
        WriteBytes("../cut.cab", {whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)});
        EXPECT_THROW(ExtractWith({"x", "..\\cut.cab"}), ToolError) << size;
        EXPECT_TRUE(TreeOf(".").empty()) << size;
    }
}

// The size in the header may be wrong, so that only the library notices that data is missing.
TEST_F(Extractor, MissingDataLeavesNoHalfMember) {
    Bytes cut = HandMade({{"a", TextLike(1000), 0x20, 0}, {"b", TextLike(90000), 0x20, 1}});
    cut.resize(cut.size() - 30000);
    for (int i = 0; i < 4; ++i)
        cut[8 + static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(cut.size() >> (8 * i));
    WriteBytes("../cut.cab", cut);
    EXPECT_THAT(
        [] {
            ExtractWith({"x", "..\\cut.cab"});
        },
        ThrowsMessage<ToolError>("..\\cut.cab: this cabinet is damaged at the member b"));
    EXPECT_TRUE(TreeOf(".") == (Tree{{"a", TextLike(1000)}}));
}

TEST_F(Extractor, DamagedDataLeavesTheOldFileAsItWas) {
    for (const char* method : {"NONE", "MSZIP", "LZX:21"}) {
        WriteBytes("../in/a", TextLike(100000));
        PackWith({"-m", method, "n", "..\\bad.cab", "..\\in\\a"});
        Bytes bad = ReadBytes("../bad.cab");
        bad[bad.size() - 100] ^= 0x40U;
        WriteBytes("../bad.cab", bad);
        WriteBytes("a", BytesOf("mine"));
        ASSERT_TRUE(SetTimeAndAttributes("a", PackDosTime(2000, 1, 1, 0, 0, 0), kReadOnly));
        EXPECT_THAT(
            [] {
                ExtractWith({"-o", "x", "..\\bad.cab"});
            },
            ThrowsMessage<ToolError>("..\\bad.cab: this cabinet is damaged at the member a"))
            << method;
        EXPECT_TRUE(TreeOf(".") == (Tree{{"a", BytesOf("mine")}})) << method;
        EXPECT_EQ(FileKind::ReadOnly, KindOf("a")) << method;
        ASSERT_TRUE(SetTimeAndAttributes("a", PackDosTime(2000, 1, 1, 0, 0, 0), kArchive));
    }
}

TEST_F(Extractor, UnknownMethodIsRefused) {
    Bytes odd = HandMade({{"a", TextLike(100)}});
    odd[36 + 6] = 7;
    WriteBytes("../odd.cab", odd);
    EXPECT_THAT(
        [] {
            ExtractWith({"x", "..\\odd.cab"});
        },
        ThrowsMessage<ToolError>(
            AnyOf("..\\odd.cab: this cabinet is packed by a method that the system does not know",
                  "..\\odd.cab: this cabinet is damaged at the member a")));
    EXPECT_TRUE(TreeOf(".").empty());
}

TEST_F(Extractor, AFileWhereAFolderIsNeededIsNamed) {
    WriteBytes("../a.cab", HandMade({{"sub\\a", BytesOf("x")}}));
    WriteBytes("sub", BytesOf("a file"));
    EXPECT_THAT([] { ExtractWith({"-o", "x", "..\\a.cab"}); }, ThrowsMessage<ToolError>(HasSubstr("sub")));
    EXPECT_EQ(BytesOf("a file"), ReadBytes("sub"));
}

TEST_F(Extractor, FailureIsOneLineAndExitCodeOne) {
    WriteBytes("text.cab", BytesOf("no cabinet"));
    const ProgramResult result = RunCabarc("x text.cab");
    EXPECT_EQ(1, result.ExitCode);
    EXPECT_EQ("", result.Output);
    EXPECT_EQ("cabarc: text.cab: this is not a cabinet\n", result.Errors);
    WriteBytes("a.cab", HandMade({{"a", BytesOf("x")}}));
    EXPECT_EQ("cabarc: a.cab: no member matches nothing.*\n", RunCabarc("x a.cab nothing.*").Errors);
    EXPECT_EQ("a.cab: 1 file extracted\n", RunCabarc("x a.cab").Output);
}

TEST_F(Extractor, AMemberMayHaveTheNameOfAnUnfinishedFile) {
    WriteBytes("../a.cab", HandMade({{"a.unfinished~", BytesOf("first")}, {"a", BytesOf("second")}}));
    EXPECT_EQ(2U, ExtractWith({"x", "..\\a.cab"}));
    EXPECT_TRUE(TreeOf(".") == (Tree{{"a.unfinished~", BytesOf("first")}, {"a", BytesOf("second")}}));
}

TEST_F(Extractor, WhatThePackerStoresMayHaveTheLongestName) {
    const std::string name(250, 'n');
    WriteBytes("../in/" + name, BytesOf("long"));
    PackWith({"n", "..\\a.cab", "..\\in\\" + name});
    EXPECT_EQ(1U, ExtractWith({"x", "..\\a.cab"}));
    EXPECT_TRUE(TreeOf(".") == (Tree{{name, BytesOf("long")}}));
}

TEST_F(Extractor, MembersThatWouldBeOneFileAreRefusedBeforeAnythingIsWritten) {
    WriteBytes("../a.cab", HandMade({{"A.TXT", BytesOf("first")}, {"a.txt", BytesOf("second")}}));
    EXPECT_THAT(
        [] {
            ExtractWith({"-o", "x", "..\\a.cab"});
        },
        ThrowsMessage<ToolError>("..\\a.cab: the members A.TXT and a.txt would be one file"));
    EXPECT_TRUE(TreeOf(".").empty());
}

TEST_F(Extractor, AnArgumentThatIsNoTextIsNoWildcard) {
    WriteBytes("a.cab", HandMade({{"b", BytesOf("x")}}));
    const std::wstring program = tools::testing::BuiltFile("demo/cabarc.exe", CABARC_PROGRAM).wstring();
    const wchar_t half[] = {0xD800, 0};
    EXPECT_EQ(1, _wspawnl(_P_WAIT, program.c_str(), L"cabarc", L"x", L"a.cab", half, nullptr));
    EXPECT_FALSE(std::filesystem::exists("b"));
    EXPECT_EQ(0, _wspawnl(_P_WAIT, program.c_str(), L"cabarc", L"x", L"a.cab", L"?", nullptr));
    EXPECT_TRUE(std::filesystem::exists("b"));
}

TEST_F(Extractor, EmptyMembersBecomeEmptyFiles) {
    WriteBytes("../a.cab", HandMade({{"a", {}}, {"sub\\b", {}}}));
    EXPECT_EQ(2U, ExtractWith({"x", "..\\a.cab"}));
    EXPECT_TRUE(TreeOf(".") == (Tree{{"a", {}}, {"sub/b", {}}}));
}

}  // namespace
}  // namespace tools::cabarc::testing
