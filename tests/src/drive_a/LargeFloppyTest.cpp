// A drive A: with more than 2 GB free, which is too much for the 32-bit product.
#include <gtest/gtest.h>

#include "src/disk/output/Staging.h"
#include "tests/src/drive_a/DriveA.h"

namespace velbooter::testing {
namespace {

class LargeFloppy : public DriveATest {};

TEST_F(LargeFloppy, ItsFreeSpaceIsAnOverflow) {
    try {
        GetDriveFreeSpace("A:");
        ADD_FAILURE();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(kOverflow, error.Number);
    }
}

TEST_F(LargeFloppy, WithoutAnyReadingEveryFileButAnEmptyOneIsTooLarge) {
    Add("one", 1);
    Add("empty", 0);
    Add("more", 100);
    Screen.Expect(NotEnoughSpace("one"));
    Screen.Expect(NotEnoughSpace("more"));
    EXPECT_TRUE(InjectFilesToDir(App.Paths, App.Screen, App.Wizard, "A:"));
    EXPECT_EQ(-1, SizeOnDrive("one"));
    EXPECT_EQ(0, SizeOnDrive("empty")) << "a copy is judged by its own error alone";
    EXPECT_EQ(-1, SizeOnDrive("more"));
}

}  // namespace
}  // namespace velbooter::testing
