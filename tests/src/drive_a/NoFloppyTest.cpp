// A PC without a drive A:.
#include <gtest/gtest.h>

#include "src/disk/output/Staging.h"
#include "tests/src/drive_a/DriveA.h"

namespace velbooter::testing {
namespace {

class NoFloppy : public DriveATest {};

TEST_F(NoFloppy, ItsFreeSpaceIsMinusOne) {
    EXPECT_EQ(-1, GetDriveFreeSpace("A:"));
}

TEST_F(NoFloppy, EveryFileCountsAsTooLargeAndTheResultIsStillTrue) {
    Add("IO.SYS", 10);
    Add("empty", 0);
    Add("bin\\a.cab", 10);
    Screen.Expect(NotEnoughSpace("IO.SYS"));
    Screen.Expect(NotEnoughSpace("empty"));
    Screen.Expect(NotEnoughSpace("bin\\a.cab"));
    EXPECT_TRUE(InjectFilesToDir(App.Paths, App.Screen, App.Wizard, "A:"));
    EXPECT_EQ(3, App.Wizard.WorkProgress.Value);
}

}  // namespace
}  // namespace velbooter::testing
