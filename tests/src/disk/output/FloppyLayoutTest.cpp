#include "src/disk/output/FloppyLayout.h"

#include <gtest/gtest.h>

namespace velbooter::testing {
namespace {

class FloppyLayouts : public ::testing::Test {
 protected:
    static constexpr std::uint64_t kSmallCluster = 512;
    static constexpr std::uint64_t kLargeCluster = 1024;
    static constexpr std::uint64_t kSmallDisk = 2847 * kSmallCluster;
    static constexpr std::uint64_t kLargeDisk = 2863 * kLargeCluster;

    FloppyLayout Small{*floppy::GeometryOfType("144")};
    FloppyLayout Large{*floppy::GeometryOfType("288")};
};

TEST_F(FloppyLayouts, NothingTakesNothing) {
    EXPECT_EQ(0U, Small.Bytes());
    EXPECT_TRUE(Small.Fits());
}

TEST_F(FloppyLayouts, FilesTakeWholeClusters) {
    Small.Add("EMPTY", 0);
    EXPECT_EQ(0U, Small.Bytes());
    Small.Add("ONE", 1);
    Small.Add("FULL", 512);
    Small.Add("MORE", 513);
    EXPECT_EQ(4 * kSmallCluster, Small.Bytes());
    for (const auto& [name, bytes] : {std::pair{"ONE", 1}, std::pair{"FULL", 1024}, std::pair{"MORE", 1025}})
        Large.Add(name, static_cast<std::uint64_t>(bytes));
    EXPECT_EQ(4 * kLargeCluster, Large.Bytes());
}

TEST_F(FloppyLayouts, EachFolderTakesItsDirectory) {
    Small.Add("bin\\a.cab", 1);
    Small.Add("bin\\b.cab", 1);
    EXPECT_EQ(3 * kSmallCluster, Small.Bytes());
    Small.Add("lib\\ndis\\c.cab", 1);
    EXPECT_EQ(6 * kSmallCluster, Small.Bytes());
}

TEST_F(FloppyLayouts, AFullDirectoryGrowsByACluster) {
    // A directory of one cluster has 16 entries, two of them taken by "." and "..".
    for (int i = 0; i < 14; ++i) Small.Add("d\\f" + std::to_string(i), 0);
    EXPECT_EQ(kSmallCluster, Small.Bytes());
    Small.Add("d\\f14", 0);
    EXPECT_EQ(2 * kSmallCluster, Small.Bytes());
}

TEST_F(FloppyLayouts, LongNamesTakeSeveralEntries) {
    // A name of 12 characters that is not 8.3 takes two entries, one of 14 takes three.
    for (const char* name : {"a long.name1", "b long.name1", "c long.name1", "d long.name1", "e long.name1"})
        Small.Add(std::string("d\\") + name, 0);
    Small.Add("d\\fourteen chars", 0);
    EXPECT_EQ(kSmallCluster, Small.Bytes()) << "13 entries";
    Small.Add("d\\g long.name1", 0);
    EXPECT_EQ(2 * kSmallCluster, Small.Bytes()) << "15 entries";
}

TEST_F(FloppyLayouts, AFolderWithALongNameCountsInTheFolderAboveIt) {
    for (int i = 0; i < 7; ++i) Small.Add("d\\long folders " + std::to_string(i) + "\\f", 0);
    EXPECT_EQ(9 * kSmallCluster, Small.Bytes()) << "23 entries in two clusters, and seven folders";
}

TEST_F(FloppyLayouts, APathCountsOnceWhateverItsCase) {
    Small.Add("Lib\\ndis\\a.cab", 5000);
    Small.Add("lib\\NDIS\\A.CAB", 1);
    EXPECT_EQ(3 * kSmallCluster, Small.Bytes());
}

TEST_F(FloppyLayouts, ADiskIsFullToItsLastCluster) {
    Small.Add("ALL", kSmallDisk);
    EXPECT_TRUE(Small.Fits());
    Small.Add("MORE", 1);
    EXPECT_FALSE(Small.Fits());
    Large.Add("ALL", kLargeDisk);
    EXPECT_TRUE(Large.Fits());
    Large.Add("ALL", kLargeDisk + 1);
    EXPECT_FALSE(Large.Fits());
}

TEST_F(FloppyLayouts, TheRootTakesSoManyNamesAndTheLabel) {
    for (int i = 0; i < 223; ++i) Small.Add("F" + std::to_string(i), 0);
    EXPECT_TRUE(Small.Fits());
    Small.Add("F223", 0);
    EXPECT_FALSE(Small.Fits());
}

}  // namespace
}  // namespace velbooter::testing
