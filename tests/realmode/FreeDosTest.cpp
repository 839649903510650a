#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "tests/realmode/DiskTest.h"
#include "tests/realmode/Machine.h"
#include "tests/tools/bfi/FatReader.h"
#include "tools/shared/ByteOrder.h"

namespace realmode::testing {
namespace {

using ::testing::HasSubstr;
using tools::bfi::testing::ReadFatImage;
using tools::testing::Bytes;
using tools::testing::RandomBytes;

constexpr unsigned kKernelSectors = 200;
constexpr std::size_t kMostBytes = 312 * kSector;

Bytes Kernel() {
    return FileAt(FREEDOS_KERNEL);
}

/// The boot sector, the IO.SYS that starts KERNEL.SYS, and a stand-in for KERNEL.SYS.
class FreeDos : public DiskTest {
 protected:
    void BuildDiskWith(const Bytes& kernel) const {
        Files.Write("tree/io.sys", FileAt(FREEDOS_IO_SYS));
        Files.Write("tree/kernel.sys", kernel);
        BuildDisk();
    }

    /// Returns the position of the entry of KERNEL.SYS in the root directory of an image, in bytes.
    std::size_t KernelEntry(const Bytes& image) const {
        const std::string name = "KERNEL  SYS";
        std::size_t at = RootStart();
        while (!std::equal(name.begin(), name.end(), image.begin() + static_cast<std::ptrdiff_t>(at)))
            at += kEntry;
        return at;
    }
};

TEST_P(FreeDos, StartsALongKernelSysAsItsOwnBootSectorDoes) {
    BuildDiskWith(Kernel());
    std::map<std::string, unsigned> values = Started();
    EXPECT_EQ(0x60U, values["CS"]);
    EXPECT_EQ(0x1FE0U, values["SS"]);
    EXPECT_EQ(0x7C00U, values["BP"]);
    EXPECT_EQ(0x7C00U, values["SP"]);
    EXPECT_EQ(0U, values["BX"]) << "the drive";
    EXPECT_EQ(0U, values["DX"]) << "the drive";
    EXPECT_EQ(0U, values["DRIVE"] & 0xFF);
    EXPECT_EQ(512U, values["SECTORBYTES"]);
    EXPECT_EQ(Format().SectorsPerTrack, values["TRACK"]);
    EXPECT_EQ(0xAA55U, values["SIGNATURE"]);
    EXPECT_EQ(kKernelSectors, values["GOOD"]);
    EXPECT_EQ(0x7A11U, values["TAIL"]);
}

TEST_P(FreeDos, FollowsAKernelSysInPiecesFarDownInTheRoot) {
    Files.Write("tree/io.sys", FileAt(FREEDOS_IO_SYS));
    for (int i = 0; i < 40; ++i) Files.Write("tree/file" + std::to_string(i), "");
    BuildDiskWith(Kernel());
    Bytes image = Files.Read("disk.img");
    const std::uint32_t first = ReadFatImage(image).At("KERNEL.SYS").Clusters.front();
    // Entry 341 lies across two sectors of the table; the next two follow each other, the two after them do
    // not.
    const std::uint32_t last = Format().DataClusters() + 1;
    const std::vector<std::uint32_t> places{341,      last - 90, last - 89, last / 2 + 1,
                                            last / 2, last - 40, last};
    Scatter(image, Format(), first, places);
    tools::PutU16(image.data() + KernelEntry(image) + 26, places.front());
    EXPECT_EQ(Kernel(), ReadFatImage(image).At("KERNEL.SYS").Content) << "still the same file";
    Files.Write("disk.img", image);
    std::map<std::string, unsigned> values = Started();
    EXPECT_EQ(kKernelSectors, values["GOOD"]);
    EXPECT_EQ(0x7A11U, values["TAIL"]);
}

TEST_P(FreeDos, StartsTheLargestKernelSysThatFits) {
    Bytes kernel = Kernel();
    kernel.resize(kMostBytes);
    BuildDiskWith(kernel);
    EXPECT_EQ(kKernelSectors, Started()["GOOD"]);
}

TEST_P(FreeDos, SaysThatKernelSysIsTooLarge) {
    Bytes kernel = Kernel();
    kernel.resize(kMostBytes + 1);
    BuildDiskWith(kernel);
    ExpectLine("KERNEL.SYS is too large");
}

TEST_P(FreeDos, SaysThatKernelSysIsTooLargeByItsUpperWord) {
    BuildDiskWith(Kernel());
    // Of 512 KB by its directory entry: not every disk has space for such a file.
    Bytes image = Files.Read("disk.img");
    tools::PutU32(image.data() + KernelEntry(image) + 28, 0x80000);
    Files.Write("disk.img", image);
    ExpectLine("KERNEL.SYS is too large");
}

TEST_P(FreeDos, SaysThatKernelSysIsMissingAndStartsAgainOnAKey) {
    Files.Write("tree/io.sys", FileAt(FREEDOS_IO_SYS));
    Files.Write("tree/command.com", "x");
    BuildDisk();
    Machine machine(Image(), Report());
    ASSERT_TRUE(machine.WaitFor(kPrompt)) << machine.Text();
    EXPECT_THAT(machine.Text(), HasSubstr("No KERNEL.SYS on this disk"));
    machine.Press(' ');
    EXPECT_TRUE(machine.WaitFor("No KERNEL.SYS on this disk", 2)) << machine.Text();
}

TEST_P(FreeDos, SaysThatKernelSysIsMissingInAFullRootToo) {
    Files.Write("tree/io.sys", FileAt(FREEDOS_IO_SYS));
    for (std::uint32_t i = 2; i < Format().RootEntries; ++i) Files.Write("tree/f" + std::to_string(i), "");
    BuildDisk();
    ExpectLine("No KERNEL.SYS on this disk");
}

TEST_P(FreeDos, SaysThatAKernelSysWithoutBytesIsDamaged) {
    BuildDiskWith({});
    ExpectLine("KERNEL.SYS is damaged");
}

TEST_P(FreeDos, SaysThatAKernelSysIsDamagedWhoseChainEndsEarly) {
    BuildDiskWith(Kernel());
    Bytes image = Files.Read("disk.img");
    const std::uint32_t first = ReadFatImage(image).At("KERNEL.SYS").Clusters.front();
    SetFatEntry(image, Format(), first + 20, 0xFFF);
    Files.Write("disk.img", image);
    ExpectLine("KERNEL.SYS is damaged");
}

TEST_P(FreeDos, SaysThatTheDiskCannotBeRead) {
    BuildDiskWith(Kernel());
    // The directory names a cluster two cylinders beyond the end of the disk.
    const std::uint32_t sector =
        (Format().Cylinders + 2) * Format().Heads * Format().SectorsPerTrack - Format().DataSector();
    Bytes image = Files.Read("disk.img");
    tools::PutU16(image.data() + KernelEntry(image) + 26, 2 + sector / Format().SectorsPerCluster);
    Files.Write("disk.img", image);
    ExpectLine("Disk cannot be read");
}

VELBOOTER_EVERY_FORMAT(FreeDos);

TEST(FreeDosFile, HasTheFourSectorsThatTheBootSectorLoads) {
    EXPECT_EQ(4 * kSector, FileAt(FREEDOS_IO_SYS).size());
}

}  // namespace
}  // namespace realmode::testing
