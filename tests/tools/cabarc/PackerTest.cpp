#include "tools/cabarc/Packer.h"

#include <gmock/gmock.h>

#include "tests/tools/cabarc/ParsedCabinet.h"
#include "tools/shared/HostFiles.h"
#include "tools/shared/ToolError.h"

namespace tools::cabarc::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::ThrowsMessage;
using Words = std::vector<std::string>;

PackReport PackWith(const Words& words) {
    return Pack(ParseCommandLine(words, false));
}

Words NamesIn(const std::string& cabinet) {
    Words names;
    for (const ParsedMember& member : Parse(ReadBytes(cabinet)).Members) names.push_back(member.Name);
    return names;
}

class Packer : public InTestFolder {};

TEST_F(Packer, PacksAModuleAsTheBuildAsksForIt) {
    WriteBytes("files/net/net.bat", TextLike(5000));
    WriteBytes("files/net/bin/tcp.exe", RandomBytes(70000));
    SetTime("files/net/net.bat", 2001, 2, 3, 4, 5, 6);
    const PackReport report = PackWith(
        {"-m", "LZX:21", "-p", "-r", "-P", "files\\net\\", "n", "cabs\\lib\\net.cab", "files\\net\\*.*"});
    EXPECT_EQ(2U, report.Files);
    EXPECT_EQ(75000U, report.BytesIn);
    const Bytes bytes = ReadBytes("cabs/lib/net.cab");
    EXPECT_EQ(report.BytesOut, bytes.size());
    const ParsedCabinet cabinet = Parse(bytes);
    ASSERT_EQ(1U, cabinet.Folders.size());
    EXPECT_EQ(0x1503U, cabinet.Folders[0].Type);
    ASSERT_THAT(NamesIn("cabs/lib/net.cab"), ElementsAre("net.bat", "bin\\tcp.exe"));
    EXPECT_EQ(21U << 9 | 2U << 5 | 3U, cabinet.Members[0].Date);
    EXPECT_EQ(4U << 11 | 5U << 5 | 3U, cabinet.Members[0].Time);
    EXPECT_EQ(0x20U, cabinet.Members[0].Attributes);
}

TEST_F(Packer, StoresContentsByteForByte) {
    const Bytes prose = TextLike(100001);
    const Bytes noise = RandomBytes(65536);
    WriteBytes("a", prose);
    WriteBytes("b", {});
    WriteBytes("c", noise);
    WriteBytes("d", {7});
    for (const char* method : {"NONE", "MSZIP"}) {
        PackWith({"-m", method, "n", "out.cab", "a", "b", "c", "d"});
        const ParsedCabinet cabinet = Parse(ReadBytes("out.cab"));
        ASSERT_EQ(4U, cabinet.Members.size());
        EXPECT_EQ(prose, cabinet.Members[0].Contents) << method;
        EXPECT_EQ(Bytes(), cabinet.Members[1].Contents) << method;
        EXPECT_EQ(noise, cabinet.Members[2].Contents) << method;
        EXPECT_EQ(Bytes{7}, cabinet.Members[3].Contents) << method;
    }
}

TEST_F(Packer, SameInputGivesSameBytes) {
    WriteBytes("in/a", TextLike(50000));
    WriteBytes("in/b", RandomBytes(50000));
    for (const char* method : {"NONE", "MSZIP", "LZX:16"}) {
        PackWith({"-m", method, "n", "one.cab", "in\\*"});
        PackWith({"-m", method, "n", "two.cab", "in/*.*"});
        EXPECT_EQ(ReadBytes("one.cab"), ReadBytes("two.cab")) << method;
    }
}

TEST_F(Packer, WhatAWildcardFindsIsStoredByExtension) {
    std::uint32_t seed = 0;
    for (const char* name : {"a.txt", "b.EXE", "c", "d.TXT", "sub/e.exe", "sub/f", "sub.dir/g"})
        WriteBytes(std::string("in/") + name, RandomBytes(100, ++seed));
    PackWith({"-p", "-r", "-P", "in", "n", "out.cab", "in\\*.*"});
    EXPECT_THAT(NamesIn("out.cab"),
                ElementsAre("c", "sub\\f", "sub.dir\\g", "b.EXE", "sub\\e.exe", "a.txt", "d.TXT"));
    const ParsedCabinet cabinet = Parse(ReadBytes("out.cab"));
    EXPECT_EQ(RandomBytes(100, 5), cabinet.Members[4].Contents);
}

TEST_F(Packer, WhatResemblesEachOtherIsStoredTogether) {
    // Too far apart for the window when sorted by name.
    for (std::uint32_t i = 0; i < 8; ++i)
        WriteBytes("in/" + std::to_string(i), RandomBytes(30'000, 1 + i % 2));
    const auto pack = [](const char* method) {
        const std::uint64_t size = PackWith({"-m", method, "n", "out.cab", "in\\*"}).BytesOut;
        EXPECT_THAT(NamesIn("out.cab"), ElementsAre("0", "2", "4", "6", "1", "3", "5", "7")) << method;
        return size;
    };
    EXPECT_LT(pack("MSZIP"), 70'000U);
    const ParsedCabinet cabinet = Parse(ReadBytes("out.cab"));
    for (std::size_t i = 0; i < 8; ++i)
        EXPECT_EQ(RandomBytes(30'000, i < 4 ? 1 : 2), cabinet.Members[i].Contents) << i;
    EXPECT_LT(pack("LZX:15"), 70'000U);
}

TEST_F(Packer, WhatIsNotCompressedStaysInTheOrderOfNames) {
    for (std::uint32_t i = 0; i < 4; ++i) WriteBytes("in/" + std::to_string(i), RandomBytes(300, i % 2));
    PackWith({"-m", "NONE", "n", "out.cab", "in\\*"});
    EXPECT_THAT(NamesIn("out.cab"), ElementsAre("0", "1", "2", "3"));
}

TEST_F(Packer, FilesNamedOneByOneKeepTheirPlaces) {
    for (const char* name : {"setup.inf", "b.exe", "a.dll", "z.txt", "y.com"})
        WriteBytes(name, BytesOf(name));
    PackWith({"n", "out.cab", "SETUP.INF", "b.exe", "a.dll"});
    EXPECT_THAT(NamesIn("out.cab"), ElementsAre("setup.inf", "b.exe", "a.dll"));
    PackWith({"n", "out.cab", "z.txt", "?.*", "setup.inf"});
    EXPECT_THAT(NamesIn("out.cab"), ElementsAre("z.txt", "y.com", "a.dll", "b.exe", "setup.inf"));
}

TEST_F(Packer, OnlyEmptyFilesMakeACabinetWithoutData) {
    WriteBytes("in/a", {});
    WriteBytes("in/b", {});
    for (const char* method : {"NONE", "MSZIP", "LZX:21"}) {
        PackWith({"-m", method, "n", "out.cab", "in\\*"});
        const ParsedCabinet cabinet = Parse(ReadBytes("out.cab"));
        EXPECT_THAT(NamesIn("out.cab"), ElementsAre("a", "b")) << method;
        EXPECT_THAT(cabinet.Folders[0].Records, IsEmpty()) << method;
    }
}

TEST_F(Packer, EmptyFoldersAreNotStored) {
    WriteBytes("in/sub/a", BytesOf("x"));
    std::filesystem::create_directories("in/nothing/at/all");
    PackWith({"-p", "-r", "n", "out.cab", "in\\*"});
    EXPECT_THAT(NamesIn("out.cab"), ElementsAre("in\\sub\\a"));
}

TEST_F(Packer, NamesBeyondAsciiAreMarkedAsUtf8) {
    WriteBytes("in/caf\xC3\xA9.txt", BytesOf("x"));
    WriteBytes("in/plain.txt", BytesOf("y"));
    PackWith({"n", "out.cab", "in\\*"});
    const ParsedCabinet cabinet = Parse(ReadBytes("out.cab"));
    EXPECT_THAT(NamesIn("out.cab"), ElementsAre("caf\xC3\xA9.txt", "plain.txt"));
    EXPECT_EQ(0xA0U, cabinet.Members[0].Attributes);
    EXPECT_EQ(0x20U, cabinet.Members[1].Attributes);
}

TEST_F(Packer, ReadOnlyIsStored) {
    WriteBytes("a", BytesOf("x"));
    ASSERT_TRUE(SetTimeAndAttributes("a", PackDosTime(2000, 1, 1, 0, 0, 0), kReadOnly));
    PackWith({"n", "out.cab", "a"});
    EXPECT_EQ(1U, Parse(ReadBytes("out.cab")).Members[0].Attributes & 1U);
}

TEST_F(Packer, TwoFilesOfOneStoredNameAreRefused) {
    WriteBytes("one/a.txt", BytesOf("x"));
    WriteBytes("two/A.TXT", BytesOf("y"));
    WriteBytes("out.cab", BytesOf("old"));
    EXPECT_THAT(
        [] {
            PackWith({"n", "out.cab", "one\\*", "two\\*"});
        },
        ThrowsMessage<ToolError>("two\\A.TXT and one\\a.txt would both be stored as A.TXT"));
    EXPECT_EQ(BytesOf("old"), ReadBytes("out.cab"));
    PackWith({"-p", "n", "out.cab", "one\\*", "two\\*"});
    EXPECT_THAT(NamesIn("out.cab"), ElementsAre("one\\a.txt", "two\\A.TXT"));
}

TEST_F(Packer, MembersThatTheExtractorWouldRefuseAreRefused) {
    WriteBytes("x/a", BytesOf("x"));
    WriteBytes("A/b", BytesOf("y"));
    for (const auto& [first, second] : {std::pair{"x\\a", "A\\b"}, std::pair{"A\\b", "x\\a"}}) {
        EXPECT_THAT(
            [&] {
                PackWith({"-p", "-P", "x", "n", "out.cab", first, second});
            },
            ThrowsMessage<ToolError>("x\\a would be stored as the folder of A\\b"));
    }
    WriteBytes("one/\xC3\xA4", BytesOf("x"));
    WriteBytes("two/\xC3\x84", BytesOf("y"));
    EXPECT_THAT(
        [] {
            PackWith({"n", "out.cab", "one\\*", "two\\*"});
        },
        ThrowsMessage<ToolError>(HasSubstr(" would both be stored as \xC3\x84")));
    EXPECT_FALSE(std::filesystem::exists("out.cab"));
}

TEST_F(Packer, NothingIsWrittenWhenAPatternFindsNothing) {
    WriteBytes("a", BytesOf("x"));
    EXPECT_THAT(
        [] {
            PackWith({"n", "cabs\\out.cab", "a", "gone\\*.*"});
        },
        ThrowsMessage<ToolError>("gone\\*.*: there is no such file"));
    EXPECT_FALSE(std::filesystem::exists("cabs"));
}

TEST_F(Packer, PathsThatLeadOutOfTheFolderNeedAPrefix) {
    WriteBytes("beside/a", BytesOf("x"));
    std::filesystem::create_directory("work");
    std::filesystem::current_path("work");
    EXPECT_THAT(
        [] {
            PackWith({"-p", "n", "out.cab", "..\\beside\\a"});
        },
        ThrowsMessage<ToolError>(
            "..\\beside\\a: the name ..\\beside\\a cannot be stored: it leads out of the folder"));
    PackWith({"-p", "-P", "..\\beside", "n", "out.cab", "..\\beside\\a"});
    EXPECT_THAT(NamesIn("out.cab"), ElementsAre("a"));
    std::filesystem::current_path(Folder);
}

TEST_F(Packer, NamesOf255BytesFitAndLongerOnesAreRefused) {
    const std::string folder = std::string(120, 'f') + "\\" + std::string(100, 'g') + "\\";
    WriteBytes(folder + std::string(33, 'n'), BytesOf("fits"));
    PackWith({"-p", "-r", "n", "out.cab", folder + "*"});
    EXPECT_EQ(255U, NamesIn("out.cab")[0].size());
    WriteBytes(folder + std::string(34, 'n'), BytesOf("does not"));
    EXPECT_THAT(
        [&] {
            PackWith({"-p", "-r", "n", "out.cab", folder + "*"});
        },
        ThrowsMessage<ToolError>(HasSubstr("cannot be stored: it has more than 255 bytes")));
    EXPECT_EQ(1U, NamesIn("out.cab").size());
}

TEST_F(Packer, FileThatIsTooBigIsRefusedUnread) {
    WriteBytes("big", {});
    std::filesystem::resize_file("big", 0x7FFF8001);
    EXPECT_THAT(
        [] {
            PackWith({"n", "out.cab", "big"});
        },
        ThrowsMessage<ToolError>(
            "big: this file is too big for a cabinet, which takes at most 2147450880 bytes of a file"));
    EXPECT_FALSE(std::filesystem::exists("out.cab"));
}

TEST_F(Packer, FailureLeavesTheOldCabinetAndNoOtherFile) {
    WriteBytes("a", BytesOf("x"));
    std::filesystem::create_directory("out.cab");
    EXPECT_THROW(PackWith({"n", "out.cab", "a"}), ToolError);
    EXPECT_EQ(1U, TreeOf(".").size());
}

TEST_F(Packer, TakesThreeThousandFilesInManyFolders) {
    for (int i = 0; i < 3000; ++i) {
        WriteBytes("in/" + std::to_string(i % 60) + "/file" + std::to_string(i),
                   BytesOf(std::to_string(i * i)));
    }
    PackWith({"-p", "-r", "-P", "in", "n", "out.cab", "in\\*.*"});
    const ParsedCabinet cabinet = Parse(ReadBytes("out.cab"));
    ASSERT_EQ(3000U, cabinet.Members.size());
    for (const ParsedMember& member : cabinet.Members) {
        const long long number = std::stoll(member.Name.substr(member.Name.find("file") + 4));
        EXPECT_EQ(BytesOf(std::to_string(number * number)), member.Contents);
    }
}

}  // namespace
}  // namespace tools::cabarc::testing
