#include "floppy/Geometry.h"

#include <gtest/gtest.h>

namespace floppy::testing {
namespace {

TEST(Geometry, TheTwoFormatsHaveTheSectorsOfTheirDisks) {
    const Geometry& small = *GeometryOfType("144");
    EXPECT_EQ(80U, small.TotalSectors / small.SectorsPerTrack / small.Heads);
    EXPECT_EQ(1'474'560U, small.ImageBytes());
    EXPECT_EQ(512U, small.ClusterBytes());
    const Geometry& large = *GeometryOfType("288");
    EXPECT_EQ(80U, large.TotalSectors / large.SectorsPerTrack / large.Heads);
    EXPECT_EQ(2'949'120U, large.ImageBytes());
    EXPECT_EQ(1024U, large.ClusterBytes());
}

TEST(Geometry, AnAllocationTableCountsAllClusters) {
    // An entry has 12 bits, and the first two entries belong to no cluster.
    for (const char* type : {"144", "288"}) {
        const Geometry& geometry = *GeometryOfType(type);
        EXPECT_GE(geometry.SectorsPerFat * kSectorBytes * 2 / 3, geometry.DataClusters() + 2) << type;
        EXPECT_LT(geometry.DataClusters(), 4085U) << type << ": more would be FAT16";
    }
}

TEST(Geometry, ThereIsNoOtherType) {
    for (const char* type : {"", "1440", "14", "720", "144 "})
        EXPECT_EQ(nullptr, GeometryOfType(type)) << type;
}

TEST(Geometry, ClustersAreRoundedUp) {
    const Geometry& geometry = *GeometryOfType("288");
    EXPECT_EQ(0U, geometry.ClustersFor(0));
    EXPECT_EQ(1U, geometry.ClustersFor(1));
    EXPECT_EQ(1U, geometry.ClustersFor(1024));
    EXPECT_EQ(2U, geometry.ClustersFor(1025));
    EXPECT_EQ(std::uint64_t{1} << 54, geometry.ClustersFor(~std::uint64_t{0}));
}

TEST(Geometry, ALongNameTakesOneEntryForThirteenUnits) {
    EXPECT_EQ(1U, SlotsOfName(0));
    EXPECT_EQ(2U, SlotsOfName(1));
    EXPECT_EQ(2U, SlotsOfName(13));
    EXPECT_EQ(3U, SlotsOfName(14));
    EXPECT_EQ(21U, SlotsOfName(255));
}

}  // namespace
}  // namespace floppy::testing
