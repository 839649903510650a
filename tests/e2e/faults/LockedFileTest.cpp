// Files of the application folder and of the tree that another program has open. The questions about files
// that are copied are in CopyMessagesTest.cpp.

#include <gtest/gtest.h>

#include "tests/e2e/faults/FaultExpectations.h"
#include "tests/e2e/support/ProgramUnderTest.h"
#include "tests/e2e/support/Programs.h"
#include "tests/support/LockedFile.h"

namespace velbooter::e2e {
namespace {

using tools::testing::LockedFile;

class Locked : public testing::Test {
 protected:
    void SetUp() override {
        folder_.SetCustomDisk(DiskWithAModule());
        PutOldImage(folder_);
    }

    // Expects a run that shows `message` and ends with `code`, and one that works when the file is released.
    void ExpectMessage(LockedFile& lock, const ShownMessage& message, ExitCode code) const {
        {
            ProgramUnderTest program(folder_, kBuild);
            EXPECT_EQ(message, program.Answer("OK"));
            EXPECT_EQ(Number(code), program.ExitCode());
        }
        ExpectOldImage(folder_);
        lock.Release();
        ExpectRunWorks(folder_);
    }

    const DemoFolder folder_;
};

TEST_F(Locked, ConfigurationFileIsNamedInTheMessage) {
    LockedFile lock(folder_.Path("files\\custom.ini"));
    ExpectMessage(lock, FileError(70, "Permission denied", folder_.Path("files\\custom.ini")),
                  ExitCode::InternalError);
    ExpectNoWorkingFiles(folder_);
}

TEST_F(Locked, IndexOfTheDriversIsNamedInTheMessage) {
    LockedFile lock(folder_.Path("Drivers.ini"));
    ProgramUnderTest program(folder_, kBuild);
    EXPECT_EQ(FileError(70, "Permission denied", folder_.Path("Drivers.ini")), program.Answer("OK"));
    EXPECT_EQ(Number(ExitCode::InternalError), program.ExitCode());
    ExpectOldImage(folder_);
    lock.Release();
    ExpectRunWorks(folder_);
}

TEST_F(Locked, FileOfAModuleMakesNoCabinet) {
    LockedFile lock(folder_.Path("files\\keyb\\KEYB.BAT"));
    ExpectMessage(lock, NoCabinet("keyb"), ExitCode::Canceled);
}

TEST_F(Locked, CatalogueHasNoDisks) {
    LockedFile lock(folder_.Path("files\\disklist.ini"));
    ProgramUnderTest program(folder_, " minimal");
    EXPECT_EQ(
        (ShownMessage{"The disk \"minimal\" doesn't exist", "Critical error", {"OK"}, Picture::Critical}),
        program.Answer("OK"));
    EXPECT_EQ(Number(ExitCode::UnknownDisk), program.ExitCode());
}

TEST_F(Locked, BootSectorMakesNoImage) {
    LockedFile lock(folder_.Path("files\\bootsect.bin"));
    ExpectRunWithoutImage(folder_);
    ExpectOldImage(folder_);
    lock.Release();
    ExpectRunWorks(folder_);
}

TEST_F(Locked, DriverCabinetIsAskedFor) {
    folder_.SetCustomDisk(
        {"[DefaultDrivers]", "ASPI\\ASPI8DOS", "[Copy_Files]", "io.sys=IO.SYS", "command.com=COMMAND.COM"});
    LockedFile lock(folder_.Path("drivers\\aspi\\aspi8dos.cab"));
    {
        ProgramUnderTest program(folder_, kBuild);
        EXPECT_EQ(CopyQuestion("drivers\\aspi\\aspi8dos.cab"), program.Answer("Abort"));
        EXPECT_EQ(Number(ExitCode::Canceled), program.ExitCode());
    }
    ExpectOldImage(folder_);
    lock.Release();
    ExpectRunWorks(folder_);
    const FloppyImage image(folder_.Path(kTarget));
    EXPECT_EQ(folder_.Read("drivers\\aspi\\aspi8dos.cab"), image.Files().at("LIB\\ASPI\\ASPI8DOS.CAB"));
}

TEST_F(Locked, StagedFileMakesNoImage) {
    {
        const HeldTool tool(folder_, "bfi");
        ProgramUnderTest program(folder_, kBuild);
        program.WaitUntil([&] { return tool.IsAtWork(); }, "the image is not written");
        const std::vector<std::string> staging = folder_.Names("Temp");
        ASSERT_EQ(1u, staging.size());
        const LockedFile lock(folder_.Path("Temp\\" + staging.front() + "\\AUTOEXEC.BAT"));
        tool.Release();
        EXPECT_EQ(Number(ExitCode::NoImage), program.ExitCode());
        ExpectOldImage(folder_);
        // A file that is open cannot be deleted; the next run deletes it.
        EXPECT_TRUE(folder_.Exists("Temp"));
    }
    ExpectRunWorks(folder_);
}

}  // namespace
}  // namespace velbooter::e2e
