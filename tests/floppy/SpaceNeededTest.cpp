#include "floppy/SpaceNeeded.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/floppy/EveryFormat.h"

namespace floppy::testing {
namespace {

class SpaceNeededTest : public ::testing::TestWithParam<std::string> {
 protected:
    const Geometry& Format = *GeometryOfType(GetParam());
    const std::uint64_t Cluster = Format.ClusterBytes();
    SpaceNeeded Space{Format};
};

TEST_P(SpaceNeededTest, AnEmptyDiskHoldsTheLabelAlone) {
    EXPECT_EQ(0U, Space.Bytes());
    EXPECT_EQ(1U, Space.RootSlots());
    EXPECT_TRUE(Space.Fits());
}

TEST_P(SpaceNeededTest, FilesTakeWholeClusters) {
    Space.AddFile(0);
    EXPECT_EQ(0U, Space.Bytes());
    Space.AddFile(1);
    Space.AddFile(Cluster);
    Space.AddFile(Cluster + 1);
    EXPECT_EQ(4 * Cluster, Space.Bytes());
}

TEST_P(SpaceNeededTest, AFolderTakesItsDirectoryWithTwoEntriesOfItsOwn) {
    const std::size_t slots = static_cast<std::size_t>(Cluster / 32 - 2);
    Space.AddFolder(0);
    Space.AddFolder(slots);
    EXPECT_EQ(2 * Cluster, Space.Bytes());
    Space.AddFolder(slots + 1);
    EXPECT_EQ(4 * Cluster, Space.Bytes());
}

TEST_P(SpaceNeededTest, TheDataAreaIsFullToItsLastCluster) {
    Space.AddFile((Format.DataClusters() - 1) * Cluster);
    Space.AddFolder(1);
    EXPECT_TRUE(Space.Fits());
    EXPECT_EQ(0U, Space.MissingBytes());
    Space.AddFile(1);
    EXPECT_FALSE(Space.Fits());
    EXPECT_EQ(Cluster, Space.MissingBytes());
}

TEST_P(SpaceNeededTest, TheRootTakesSoManyNamesAndTheLabel) {
    Space.AddRootNames(Format.RootEntries - 1);
    EXPECT_TRUE(Space.Fits());
    Space.AddRootNames(1);
    EXPECT_FALSE(Space.Fits());
    EXPECT_EQ(0U, Space.MissingBytes()) << "the names of the root take nothing of the data area";
}

TEST_P(SpaceNeededTest, ASumThatCannotBeCountedStaysTooLarge) {
    for (int i = 0; i < 4096; ++i) {
        Space.AddFile(~std::uint64_t{0});
        EXPECT_GT(Space.MissingBytes(), 0U);
    }
    EXPECT_TRUE(Space.IsBeyondCounting());
    EXPECT_FALSE(Space.Fits());
    SpaceNeeded countable(Format);
    countable.AddFile(std::uint64_t{1} << 40);
    EXPECT_FALSE(countable.IsBeyondCounting());
}

TEST_P(SpaceNeededTest, AFinishedDiskIsUsedByWhatItsFatMarks) {
    std::vector<std::uint8_t> image(Format.ImageBytes());
    image[512] = Format.MediaByte;
    image[513] = image[514] = 0xFF;
    EXPECT_EQ(0U, UsedBytes(image, Format));
    // The entry of a cluster with an even number begins a group of three bytes.
    const std::size_t last = Format.DataClusters() + 1;
    image[512 + last * 3 / 2 + (last % 2)] = 0xFF;
    EXPECT_EQ(Cluster, UsedBytes(image, Format));
    image[512 + 3] = 0xFF;
    image[512 + 4] = 0x8F;
    image[512 + 5] = 0x00;
    EXPECT_EQ(3 * Cluster, UsedBytes(image, Format));
    // The entry after the last cluster's counts for nothing.
    image[512 + (last + 1) * 3 / 2 + ((last + 1) % 2)] = 0xFF;
    EXPECT_EQ(3 * Cluster, UsedBytes(image, Format));
}

VELBOOTER_EVERY_FORMAT(SpaceNeededTest);

}  // namespace
}  // namespace floppy::testing
