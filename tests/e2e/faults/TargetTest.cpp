// Targets that cannot be written. Whatever is wrong, an old image stays as it was, the exit code reports
// that there is no new one, and the next run works.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/e2e/faults/FaultExpectations.h"
#include "tests/e2e/support/ProgramUnderTest.h"
#include "tests/support/LockedFile.h"

namespace velbooter::e2e {
namespace {

using tools::testing::LockedFile;

using testing::IsEmpty;

class Target : public testing::Test {
 protected:
    void SetUp() override { folder_.SetCustomDisk(SmallDisk()); }

    const DemoFolder folder_;
};

TEST_F(Target, ReadOnlyIsKept) {
    PutOldImage(folder_);
    ::SetFileAttributesA(folder_.Path(kTarget).c_str(), FILE_ATTRIBUTE_READONLY);
    ExpectRunWithoutImage(folder_);
    ExpectOldImage(folder_);
    ::SetFileAttributesA(folder_.Path(kTarget).c_str(), FILE_ATTRIBUTE_NORMAL);
    ExpectRunWorks(folder_);
}

TEST_F(Target, HeldForGoodIsKept) {
    PutOldImage(folder_);
    LockedFile lock(folder_.Path(kTarget));
    ExpectRunWithoutImage(folder_);
    lock.Release();
    ExpectOldImage(folder_);
    ExpectRunWorks(folder_);
}

TEST_F(Target, HeldForAMomentIsReplaced) {
    constexpr DWORD kHeldMs = 500;
    PutOldImage(folder_);
    LockedFile lock(folder_.Path(kTarget));
    ProgramUnderTest program(folder_, kBuild);
    WaitForThePartOfTheImage(folder_);
    ::Sleep(kHeldMs);
    lock.Release();
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
    ExpectImage(folder_, folder_.Path(kTarget), kSmallImageBytes);
    EXPECT_THAT(folder_.Names("out"), testing::ElementsAre("disk.img"));
}

TEST_F(Target, FolderThatIsMissingIsMade) {
    EXPECT_FALSE(folder_.Exists("out"));
    ExpectRunWorks(folder_);
}

TEST_F(Target, FileInPlaceOfItsFolderIsKept) {
    folder_.Write("out", "a file");
    ExpectRunWithoutImage(folder_);
    EXPECT_EQ("a file", folder_.Read("out"));
    folder_.Remove("out");
    ExpectRunWorks(folder_);
}

TEST_F(Target, FolderInItsPlaceIsKept) {
    folder_.Write("out\\disk.img\\KEPT.TXT", "a file");
    ExpectRunWithoutImage(folder_);
    EXPECT_EQ("a file", folder_.Read("out\\disk.img\\KEPT.TXT"));
    folder_.Remove("out");
    ExpectRunWorks(folder_);
}

TEST_F(Target, DriveThatIsMissingMakesNoImage) {
    ProgramUnderTest program(folder_, " custom Q:\\disk.img");
    EXPECT_EQ(Number(ExitCode::NoImage), program.ExitCode());
    ExpectNoWorkingFiles(folder_);
}

TEST_F(Target, SizeThatIsTooSmallForTheDiskMakesNoImage) {
    folder_.SetCustomDisk(SmallDiskWith({"BIG.BIN=BIG.BIN"}));
    folder_.Write("BIG.BIN", std::string(1500000, 'b'));
    ExpectRunWithoutImage(folder_);
    EXPECT_THAT(folder_.Names("out"), IsEmpty());
    ProgramUnderTest large(folder_, std::string(" -t 288 custom ") + kTarget);
    EXPECT_EQ(Number(ExitCode::Built), large.ExitCode());
    const FloppyImage image = ExpectImage(folder_, folder_.Path(kTarget), kLargeImageBytes);
    EXPECT_EQ(folder_.Read("BIG.BIN"), image.Files().at("BIG.BIN"));
}

}  // namespace
}  // namespace velbooter::e2e
