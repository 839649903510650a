// Programs that others wrote read what bfi writes: fsck.fat, mtools and 7-Zip. A missing program fails the
// test.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "tests/support/RunProgram.h"
#include "tests/tools/bfi/ImageFixture.h"
#include "tools/shared/HostFiles.h"

namespace tools::bfi::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using tools::PackDosTime;
using tools::testing::ProgramResult;
using tools::testing::RunProgram;

class Checker : public ImageTest {
 protected:
    std::string Image() const { return Files.Text("out.img"); }

    void WriteSampleTree() const {
        const tools::DosTime time = PackDosTime(1998, 5, 11, 20, 1, 2);
        Files.Write("tree/io.sys", RandomBytes(3000, 1), time, tools::kArchive);
        Files.Write("tree/command.com", RandomBytes(93'812, 2), time, tools::kArchive);
        Files.Write("tree/locked.txt", RandomBytes(10, 3), time, tools::kReadOnly);
        Files.Write("tree/lib/net.cab", RandomBytes(200'000, 4), time, tools::kArchive);
        Files.Write("tree/lib/A long name.text", RandomBytes(777, 5), time, tools::kArchive);
        Files.Write("tree/lib/deep/empty", Bytes{}, time, tools::kArchive);
        Files.MakeFolder("tree/nothing");
    }

    void ExpectSound() const {
        const ProgramResult check = RunProgram({"fsck.fat", "-n", "-v", Image()});
        EXPECT_EQ(0, check.ExitCode) << check.All();
        const ProgramResult archiver = RunProgram({"7z", "t", Image()});
        EXPECT_EQ(0, archiver.ExitCode) << archiver.All();
    }
};

TEST_P(Checker, FsckAndSevenZipFindNothing) {
    WriteSampleTree();
    Build();
    ExpectSound();
}

TEST_P(Checker, FsckFindsNothingOnAnEmptyAndOnAFullDisk) {
    Build();
    ExpectSound();
    Files.Write("tree/all", RandomBytes(Format().DataClusters() * Format().ClusterBytes(), 1));
    Build();
    ExpectSound();
    const ProgramResult check = RunProgram({"fsck.fat", "-n", Image()});
    const std::string clusters = std::to_string(Format().DataClusters());
    EXPECT_THAT(check.All(), HasSubstr(clusters + "/" + clusters + " clusters"));
}

TEST_P(Checker, FsckFindsNothingInAFullRootAndALargeFolder) {
    // The label takes an entry, the folder two.
    for (std::uint32_t i = 3; i < Format().RootEntries; ++i)
        Files.Write("tree/f" + std::to_string(i), i % 2 == 0 ? "x" : "");
    for (int i = 0; i < 200; ++i) Files.Write("tree/sub folder/long name " + std::to_string(i), "x");
    Build();
    ExpectSound();
}

TEST_P(Checker, McopyGivesEveryFileBack) {
    WriteSampleTree();
    Build();
    Files.MakeFolder("back");
    const ProgramResult copy =
        RunProgram({"mcopy", "-s", "-m", "-n", "-i", Image(), "::*", Files.Text("back")});
    ASSERT_EQ(0, copy.ExitCode) << copy.All();
    EXPECT_THAT(Files.Names("back"), ElementsAre("COMMAND.COM", "IO.SYS", "LIB", "LOCKED.TXT", "NOTHING"));
    EXPECT_EQ(RandomBytes(3000, 1), Files.Read("back/IO.SYS"));
    EXPECT_EQ(RandomBytes(93'812, 2), Files.Read("back/COMMAND.COM"));
    EXPECT_EQ(RandomBytes(10, 3), Files.Read("back/LOCKED.TXT"));
    EXPECT_EQ(RandomBytes(200'000, 4), Files.Read("back/LIB/NET.CAB"));
    EXPECT_EQ(RandomBytes(777, 5), Files.Read("back/LIB/A long name.text"));
    EXPECT_EQ(Bytes{}, Files.Read("back/LIB/DEEP/EMPTY"));
    for (const tools::HostFile& file : tools::ListFolder(Files.Path("back")))
        if (!file.IsFolder) {
            EXPECT_EQ(file.Modified, PackDosTime(1998, 5, 11, 20, 1, 2)) << file.Name;
        }
}

TEST_P(Checker, MtypePrintsAFile) {
    Files.Write("tree/autoexec.bat", "@echo off\r\n");
    Build();
    const ProgramResult type = RunProgram({"mtype", "-i", Image(), "::AUTOEXEC.BAT"});
    EXPECT_EQ(0, type.ExitCode);
    EXPECT_EQ("@echo off\r\n", type.All());
}

TEST_P(Checker, MattribShowsTheAttributes) {
    WriteSampleTree();
    Build();
    const ProgramResult attributes =
        RunProgram({"mattrib", "-i", Image(), "::IO.SYS", "::COMMAND.COM", "::LOCKED.TXT"});
    EXPECT_EQ(0, attributes.ExitCode) << attributes.All();
    EXPECT_THAT(attributes.All(), HasSubstr("  A  SHR     ::/IO.SYS"));
    EXPECT_THAT(attributes.All(), HasSubstr("  A          ::/COMMAND.COM"));
    EXPECT_THAT(attributes.All(), HasSubstr("       R     ::/LOCKED.TXT"));
}

TEST_P(Checker, MinfoShowsTheGeometryAndTheLabel) {
    Build();
    const ProgramResult info = RunProgram({"minfo", "-i", Image(), "::"});
    EXPECT_EQ(0, info.ExitCode) << info.All();
    const std::map<std::string, std::vector<std::string>> formats{
        {"144",
         {"cylinders: 80", "sectors per track: 18", "small size: 2880 sectors",
          "max available root directory slots: 224", "media descriptor byte: 0xf0", "sectors per fat: 9"}},
        {"288",
         {"cylinders: 80", "sectors per track: 36", "small size: 5760 sectors",
          "max available root directory slots: 240", "media descriptor byte: 0xf0", "sectors per fat: 9"}},
        {"360",
         {"cylinders: 40", "sectors per track: 9", "small size: 720 sectors",
          "max available root directory slots: 112", "media descriptor byte: 0xfd", "sectors per fat: 2"}},
        {"720",
         {"cylinders: 80", "sectors per track: 9", "small size: 1440 sectors",
          "max available root directory slots: 112", "media descriptor byte: 0xf9", "sectors per fat: 3"}},
        {"1200",
         {"cylinders: 80", "sectors per track: 15", "small size: 2400 sectors",
          "max available root directory slots: 224", "media descriptor byte: 0xf9", "sectors per fat: 7"}},
        {"1680",
         {"cylinders: 80", "sectors per track: 21", "small size: 3360 sectors",
          "max available root directory slots: 224", "media descriptor byte: 0xf0", "sectors per fat: 10"}},
    };
    for (const std::string& line : formats.at(GetParam())) EXPECT_THAT(info.All(), HasSubstr(line + "\n"));
    EXPECT_THAT(info.All(), HasSubstr("heads: 2\n"));
    EXPECT_THAT(info.All(), HasSubstr("\nfats: 2\n"));
    EXPECT_THAT(info.All(), HasSubstr("disk label=\"VELSTART   \""));
}

TEST_P(Checker, MformatDescribesADiskOfThatKindInTheSameWay) {
    Build();
    const std::string formatted = Files.Text("formatted.img");
    const ProgramResult format = RunProgram(
        {"mformat", "-C", "-t", std::to_string(Format().Cylinders), "-h", std::to_string(Format().Heads),
         "-s", std::to_string(Format().SectorsPerTrack), "-i", formatted, "::"});
    ASSERT_EQ(0, format.ExitCode) << format.All();
    // From the bytes in a sector to the sectors before the disk.
    const auto description = [&](const std::string& image) {
        const Bytes bytes = Files.Read(image);
        return Bytes(bytes.begin() + 0x0B, bytes.begin() + 0x20);
    };
    EXPECT_EQ(description("out.img"), description("formatted.img"));
    EXPECT_EQ(Files.Read("out.img").size(), Files.Read("formatted.img").size());
}

// As docs/command-line.md says, for a disk that the program has built.
TEST_P(Checker, ADiskThatSevenZipUnpacksBecomesADiskOfADifferentSize) {
    WriteSampleTree();
    const FatImage disk = Build();
    const ProgramResult unpack = RunProgram({"7z", "x", "-o" + Files.Text("unpacked"), Image()});
    ASSERT_EQ(0, unpack.ExitCode) << unpack.All();
    for (const floppy::Geometry& geometry : floppy::AllGeometries()) {
        ImageRequest request = Request();
        request.Format = &geometry;
        request.Folder = Files.Text("unpacked");
        BuildImage(request);
        const FatImage again = ReadFatImage(Files.Read("out.img"));
        ASSERT_EQ(disk.Entries.size(), again.Entries.size()) << geometry.Name;
        for (std::size_t i = 0; i < disk.Entries.size(); ++i) {
            EXPECT_EQ(disk.Entries[i].Path, again.Entries[i].Path) << geometry.Name;
            EXPECT_EQ(disk.Entries[i].Content, again.Entries[i].Content) << geometry.Name;
        }
    }
}

VELBOOTER_EVERY_FORMAT(Checker);

}  // namespace
}  // namespace tools::bfi::testing
