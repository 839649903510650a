// A drive A: with free space that takes no more than three names: the system itself reports "disk full".
#include <gtest/gtest.h>

#include "src/disk/output/Staging.h"
#include "tests/src/drive_a/DriveA.h"

namespace velbooter::testing {
namespace {

class FullFloppy : public DriveATest {
 protected:
    FullFloppy() {
        for (const char* entry : {"a", "b", "c", "d"}) Add(entry, 100);
    }
};

TEST_F(FullFloppy, IgnoreLeavesTheFileOut) {
    Screen.Expect(DiskFull(), Answer::Ignore);
    EXPECT_TRUE(InjectFilesToDir(App.Paths, App.Screen, App.Wizard, "A:"));
    EXPECT_EQ(100, SizeOnDrive("c"));
    EXPECT_EQ(-1, SizeOnDrive("d"));
}

TEST_F(FullFloppy, AbortEndsTheCopy) {
    Add("e", 100);
    Screen.Expect(DiskFull(), Answer::Abort);
    EXPECT_FALSE(InjectFilesToDir(App.Paths, App.Screen, App.Wizard, "A:"));
}

TEST_F(FullFloppy, RetryCopiesOnceThereIsSpace) {
    Screen.Expect(DiskFull(), Answer::Retry);
    Screen.Expect(DiskFull(), Answer::Retry, [] { std::filesystem::remove("A:\\a"); });
    EXPECT_TRUE(InjectFilesToDir(App.Paths, App.Screen, App.Wizard, "A:"));
    EXPECT_EQ(-1, SizeOnDrive("a"));
    EXPECT_EQ(100, SizeOnDrive("d"));
    EXPECT_EQ(6, App.Wizard.WorkProgress.Value);
}

}  // namespace
}  // namespace velbooter::testing
