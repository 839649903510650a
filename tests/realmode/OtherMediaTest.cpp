#include <gtest/gtest.h>

#include <map>

#include "tests/realmode/DiskTest.h"
#include "tests/support/RunProgram.h"

namespace realmode::testing {
namespace {

using tools::testing::Bytes;
using tools::testing::ProgramResult;
using tools::testing::RunProgram;

/// The images where no drive holds them as a floppy disk: on a CD, and in memory. The commands are those of
/// docs/image-use.md.
class OtherMedia : public DiskTest {
 protected:
    OtherMedia() {
        Files.Write("tree/IO.SYS", FileAt(BOOT_PROBE));
        BuildDisk();
    }

    /// Starts the PC with an empty disk in its floppy drive and expects the image of the test to be drive A:
    /// all the same.
    void ExpectStarts(const std::vector<std::string>& more) const {
        Files.Write("empty.img", Bytes(floppy::GeometryOfType("144")->ImageBytes()));
        std::map<std::string, unsigned> values = Started(Files.Text("empty.img"), more);
        EXPECT_EQ(0U, values["DRIVE"] & 0xFF) << "drive A:";
        EXPECT_EQ(Format().SectorsPerTrack, values["TRACK"] & 0xFF);
        EXPECT_EQ(0xBEEFU, values["MARKER"]) << "all of IO.SYS was read";
    }
};

TEST_P(OtherMedia, StartsAsTheBootImageOfACd) {
    Files.MakeFolder("cd");
    Files.Write("cd/boot.img", Files.Read("disk.img"));
    const ProgramResult made =
        RunProgram({"xorriso", "-as", "mkisofs", "-quiet", "-o", Files.Text("boot.iso"), "-b", "boot.img",
                    "-c", "boot.cat", Files.Text("cd")});
    ASSERT_EQ(0, made.ExitCode) << made.All();
    ExpectStarts({"-boot", "d", "-cdrom", Files.Text("boot.iso")});
}

TEST_P(OtherMedia, StartsInMemoryByMemdisk) {
    ExpectStarts({"-kernel", "/usr/lib/syslinux/memdisk", "-initrd", Image()});
}

// A CD's boot image can only be one of these sizes.
INSTANTIATE_TEST_SUITE_P(Floppy, OtherMedia, ::testing::Values("1200", "144", "288"),
                         [](const auto& type) { return "Of" + type.param; });

}  // namespace
}  // namespace realmode::testing
