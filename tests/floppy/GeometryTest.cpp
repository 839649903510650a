#include "floppy/Geometry.h"

#include <gtest/gtest.h>

#include <iterator>
#include <string>

namespace floppy::testing {
namespace {

TEST(Geometry, EachFormatHasTheNumbersOfItsDisk) {
    const struct {
        std::string Type;
        std::string Name;
        std::size_t ImageBytes;
        std::uint32_t Cylinders, DataSector, DataClusters;
        std::size_t ClusterBytes;
    } formats[] = {
        {"144", "1.44 MB", 1'474'560, 80, 33, 2847, 512}, {"288", "2.88 MB", 2'949'120, 80, 34, 2863, 1024},
        {"360", "360 KB", 368'640, 40, 12, 354, 1024},    {"720", "720 KB", 737'280, 80, 14, 713, 1024},
        {"1200", "1.2 MB", 1'228'800, 80, 29, 2371, 512}, {"1680", "1.68 MB", 1'720'320, 80, 35, 3325, 512},
    };
    ASSERT_EQ(std::size(formats), AllGeometries().size());
    for (std::size_t i = 0; i < std::size(formats); ++i) {
        const auto& expected = formats[i];
        const Geometry& geometry = AllGeometries()[i];
        EXPECT_EQ(&geometry, GeometryOfType(expected.Type)) << expected.Type;
        EXPECT_EQ(expected.Type, geometry.Type);
        EXPECT_EQ(expected.Name, geometry.Name);
        EXPECT_EQ(expected.ImageBytes, geometry.ImageBytes()) << expected.Type;
        EXPECT_EQ(expected.Cylinders, geometry.Cylinders) << expected.Type;
        EXPECT_EQ(expected.DataSector, geometry.DataSector()) << expected.Type;
        EXPECT_EQ(expected.DataClusters, geometry.DataClusters()) << expected.Type;
        EXPECT_EQ(expected.ClusterBytes, geometry.ClusterBytes()) << expected.Type;
    }
}

TEST(Geometry, ThereIsNoOtherType) {
    for (const char* type : {"", "1440", "14", "2880", "36", "144 ", "0360"})
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
