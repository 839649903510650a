#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/tools/bfi/ImageFixture.h"
#include "tools/bfi/SourceTree.h"
#include "tools/shared/HostFiles.h"

namespace tools::bfi::testing {
namespace {

using ::testing::ElementsAre;
using tools::DosTime;
using tools::PackDosTime;

std::vector<std::string> Paths(const FatImage& image) {
    std::vector<std::string> paths;
    for (const FatEntry& entry : image.Entries) paths.push_back(entry.Path);
    return paths;
}

TEST_P(ImageTest, GivesEveryFileBackWithItsTimeAndAttributes) {
    const DosTime time = PackDosTime(1998, 5, 11, 20, 1, 2);
    const DosTime other = PackDosTime(2024, 12, 31, 23, 59, 58);
    Files.Write("tree/config.sys", RandomBytes(1, 1), time, tools::kArchive);
    Files.Write("tree/lib/net.cab", RandomBytes(300'001, 2), other,
                tools::kReadOnly | tools::kHidden | tools::kSystem);
    Files.Write("tree/lib/deep/er/x", RandomBytes(1024, 3), time, tools::kArchive);
    Files.Write("tree/lib/deep/empty.txt", Bytes{}, other, tools::kArchive);
    const FatImage image = Build();
    EXPECT_THAT(Paths(image),
                ElementsAre("VELSTART   ", "CONFIG.SYS", "LIB", "LIB/DEEP", "LIB/DEEP/EMPTY.TXT",
                            "LIB/DEEP/ER", "LIB/DEEP/ER/X", "LIB/NET.CAB"));
    EXPECT_EQ(RandomBytes(1, 1), image.At("CONFIG.SYS").Content);
    EXPECT_EQ(RandomBytes(300'001, 2), image.At("LIB/NET.CAB").Content);
    EXPECT_EQ(RandomBytes(1024, 3), image.At("LIB/DEEP/ER/X").Content);
    EXPECT_EQ(Bytes{}, image.At("LIB/DEEP/EMPTY.TXT").Content);
    EXPECT_EQ(time.Date, image.At("CONFIG.SYS").Date);
    EXPECT_EQ(time.Time, image.At("CONFIG.SYS").Time);
    EXPECT_EQ(other.Date, image.At("LIB/NET.CAB").Date);
    EXPECT_EQ(other.Time, image.At("LIB/NET.CAB").Time);
    for (const tools::HostFile& staged : tools::ListFolder(Files.Path("tree/lib")))
        if (!staged.IsFolder) {
            EXPECT_EQ(staged.Attributes, image.At("LIB/NET.CAB").Attributes);
        }
    EXPECT_EQ(0x01, image.At("LIB/NET.CAB").Attributes & 0x01);
    EXPECT_EQ(0x20, image.At("CONFIG.SYS").Attributes);
}

TEST_P(ImageTest, TheSystemFilesComeFirstThenTheLabelThenCommandComThenTheRestByName) {
    for (const char* name :
         {"autoexec.bat", "zzz", "command.com", "Io.sys", "msdos.SYS", "Bin/x", "config.sys"})
        Files.Write(std::string("tree/") + name, RandomBytes(600, 1));
    EXPECT_THAT(Paths(Build()), ElementsAre("IO.SYS", "MSDOS.SYS", "VELSTART   ", "COMMAND.COM",
                                            "AUTOEXEC.BAT", "BIN", "BIN/X", "CONFIG.SYS", "ZZZ"));
}

TEST_P(ImageTest, TheSystemFilesAreReadOnlyHiddenAndSystemInTheRootOnly) {
    for (const char* name : {"io.sys", "msdos.sys", "command.com", "sub/io.sys"})
        Files.Write(std::string("tree/") + name, RandomBytes(600, 1));
    const FatImage image = Build();
    EXPECT_EQ(0x27, image.At("IO.SYS").Attributes);
    EXPECT_EQ(0x27, image.At("MSDOS.SYS").Attributes);
    EXPECT_EQ(0x20, image.At("COMMAND.COM").Attributes);
    EXPECT_EQ(0x20, image.At("SUB/IO.SYS").Attributes);
}

TEST_P(ImageTest, AFolderCalledLikeASystemFileIsAFolder) {
    Files.Write("tree/io.sys/x", "1");
    Files.Write("tree/a", "1");
    const FatImage image = Build();
    EXPECT_THAT(Paths(image), ElementsAre("VELSTART   ", "A", "IO.SYS", "IO.SYS/X"));
    EXPECT_EQ(0x10, image.At("IO.SYS").Attributes & 0x17);
}

TEST_P(ImageTest, EveryFileLiesInOnePieceAndIoSysStartsTheDataArea) {
    for (const char* name : {"a", "io.sys", "m/b", "m/c", "msdos.sys", "z"})
        Files.Write(std::string("tree/") + name, RandomBytes(2500, 1));
    const FatImage image = Build();
    EXPECT_EQ(2U, image.At("IO.SYS").Clusters.front());
    EXPECT_EQ(image.At("MSDOS.SYS").Clusters.front(), image.At("IO.SYS").Clusters.back() + 1);
    for (const FatEntry& entry : image.Entries)
        for (std::size_t i = 1; i < entry.Clusters.size(); ++i)
            EXPECT_EQ(entry.Clusters[i], entry.Clusters[i - 1] + 1) << entry.Path;
}

TEST_P(ImageTest, TheLabelIsTheSameInTheBootSectorAndInTheRoot) {
    Files.Write("tree/a", RandomBytes(1, 1), PackDosTime(1999, 2, 3, 4, 5, 6), tools::kArchive);
    const FatImage image = Build();
    EXPECT_EQ("VELSTART   ", image.Label);
    EXPECT_EQ(0x08, image.At("VELSTART   ").Attributes);
    EXPECT_EQ(PackDosTime(1999, 2, 3, 4, 5, 6).Date, image.At("VELSTART   ").Date) << "the newest file's";
}

TEST_P(ImageTest, AnEmptyTreeGivesAnEmptyDisk) {
    const FatImage image = Build();
    EXPECT_THAT(Paths(image), ElementsAre("VELSTART   "));
    EXPECT_EQ(Format().DataClusters(), image.FreeClusters);
    EXPECT_EQ(Files.Read("out.img").size(), Format().ImageBytes());
}

TEST_P(ImageTest, AnEmptyFolderTakesOneCluster) {
    Files.MakeFolder("tree/nothing");
    EXPECT_EQ(Format().DataClusters() - 1, Build().FreeClusters);
}

TEST_P(ImageTest, FillsTheDataAreaToTheLastCluster) {
    const std::size_t capacity = Format().DataClusters() * Format().ClusterBytes();
    Files.Write("tree/all", RandomBytes(capacity, 1));
    const FatImage image = Build();
    EXPECT_EQ(0U, image.FreeClusters);
    EXPECT_EQ(RandomBytes(capacity, 1), image.At("ALL").Content);
}

TEST_P(ImageTest, FillsTheDataAreaWithFoldersAndSmallFiles) {
    // A folder with 100 entries of 32 bytes besides "." and "..", and files of one byte in a cluster each.
    for (int i = 0; i < 100; ++i) Files.Write("tree/sub/f" + std::to_string(i), "x");
    const auto folderClusters = static_cast<std::size_t>(Format().ClustersFor(102 * 32));
    const std::size_t rest = Format().DataClusters() - 100 - folderClusters;
    Files.Write("tree/rest", RandomBytes(rest * Format().ClusterBytes(), 1));
    EXPECT_EQ(0U, Build().FreeClusters);
    Files.Write("tree/sub/one-more", "x");
    EXPECT_EQ(Files.Text("tree") + ": does not fit on a " + Format().Name +
                  " disk: " + std::to_string(Format().ClusterBytes()) + " bytes are missing",
              Refusal());
}

TEST_P(ImageTest, OneClusterTooManyIsRefusedWithTheMissingBytes) {
    const std::size_t capacity = Format().DataClusters() * Format().ClusterBytes();
    const std::string start = Files.Text("tree") + ": does not fit on a " + Format().Name + " disk: ";
    Files.Write("tree/all", RandomBytes(capacity + 1, 1));
    EXPECT_EQ(start + std::to_string(Format().ClusterBytes()) + " bytes are missing", Refusal());
    Files.Write("tree/more", RandomBytes(10'000, 1));
    EXPECT_EQ(start + std::to_string(Format().ClusterBytes() + 10'240) + " bytes are missing", Refusal());
    EXPECT_THAT(Files.Names(), ElementsAre("boot.bin", "tree"));
}

TEST_P(ImageTest, AFoldersOwnClusterCountsToo) {
    const std::size_t capacity = Format().DataClusters() * Format().ClusterBytes();
    Files.Write("tree/all", RandomBytes(capacity, 1));
    Files.MakeFolder("tree/folder");
    EXPECT_EQ(Files.Text("tree") + ": does not fit on a " + Format().Name +
                  " disk: " + std::to_string(Format().ClusterBytes()) + " bytes are missing",
              Refusal());
}

TEST_P(ImageTest, TheRootHoldsAsManyEntriesAsItHas) {
    const std::uint32_t entries = Format().RootEntries;
    for (std::uint32_t i = 1; i < entries; ++i) Files.Write("tree/f" + std::to_string(i), "");
    EXPECT_EQ(entries, Build().Entries.size());
    Files.Write("tree/g", "");
    EXPECT_EQ(Files.Text("tree") + ": the root directory of a " + Format().Name + " disk holds " +
                  std::to_string(entries) + " entries, and " + std::to_string(entries + 1) +
                  " are needed (the label takes one, a long name takes several)",
              Refusal());
}

TEST_P(ImageTest, AFolderBelowTheRootHoldsMoreEntriesThanTheRoot) {
    for (int i = 0; i < 500; ++i) Files.Write("tree/sub/f" + std::to_string(i), "");
    const FatImage image = Build();
    EXPECT_EQ(502U, image.Entries.size());
    EXPECT_EQ(Format().ClustersFor(502 * 32), image.At("SUB").Clusters.size());
}

TEST_P(ImageTest, FoldersMayBeNestedDeeply) {
    std::string path = "tree";
    std::string stored;
    for (int i = 0; i < 60; ++i) {
        path += "/d" + std::to_string(i);
        stored += "D" + std::to_string(i) + "/";
    }
    Files.Write(path + "/file", "deep");
    EXPECT_EQ((Bytes{'d', 'e', 'e', 'p'}), Build().At(stored + "FILE").Content);
}

TEST_P(ImageTest, LongNamesAreKeptBesideTheirAliases) {
    Files.Write("tree/A long name with \xC3\xA4 and \xE2\x82\xAC.text", "1");
    Files.Write("tree/sub folder/exactly 13 un", "2");
    Files.Write("tree/sub folder/" + std::string(120, 'n') + ".x", "3");
    const FatImage image = Build();
    EXPECT_EQ(u"A long name with \u00E4 and \u20AC.text", image.At("ALONGN~1.TEX").Long);
    EXPECT_EQ(u"sub folder", image.At("SUBFOL~1").Long);
    EXPECT_EQ(u"exactly 13 un", image.At("SUBFOL~1/EXACTL~1").Long);
    EXPECT_EQ(122U, image.At("SUBFOL~1/NNNNNN~1.X").Long.size());
}

TEST_P(ImageTest, TheSameContentsGiveTheSameImageAndOthersAnotherSerialNumber) {
    const DosTime time = PackDosTime(2001, 1, 1, 1, 1, 2);
    Files.Write("tree/b", RandomBytes(5000, 1), time, tools::kArchive);
    Files.Write("tree/a", RandomBytes(5000, 2), time, tools::kArchive);
    const FatImage first = Build();
    const Bytes bytes = Files.Read("out.img");
    EXPECT_EQ(first.Serial, Build().Serial);
    EXPECT_EQ(bytes, Files.Read("out.img"));
    Files.Write("tree/a", RandomBytes(5000, 3), time, tools::kArchive);
    EXPECT_NE(Build().Serial, first.Serial);
    EXPECT_NE(first.Serial, 0U);
}

TEST_P(ImageTest, SizesWhoseSumCannotBeCountedDoNotFit) {
    TreeEntry entry;
    entry.Host.Size = std::uint64_t{1} << 62;
    SourceTree tree(2);
    tree[0].Path = "tree";
    // The sum of their clusters is 2 to the power of 65 or 64.
    tree[1].Entries.assign(4096, entry);
    EXPECT_EQ(std::string("tree: does not fit on a ") + Format().Name + " disk by far",
              tools::testing::ErrorOf([&] { RequireSpace(tree, Format()); }));
}

VELBOOTER_EVERY_FORMAT(ImageTest);

}  // namespace
}  // namespace tools::bfi::testing
