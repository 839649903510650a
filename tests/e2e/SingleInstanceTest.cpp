// Only one run at a time works in an application folder.

#include <gtest/gtest.h>

#include "tests/e2e/support/DemoFolder.h"
#include "tests/e2e/support/Expectations.h"
#include "tests/e2e/support/ProgramUnderTest.h"

namespace velbooter::e2e {
namespace {

const std::vector<std::string> kDiskThatAsks = {"[Copy_Files]", "io.sys=IO.SYS", "nosuch.sys=NOSUCH.SYS",
                                                "command.com=COMMAND.COM"};
const ShownMessage kAlreadyRunning{
    "The Veltrane is already running", "Already Running", {"OK"}, Picture::Critical};

TEST(SingleInstance, SecondStartIsRefusedAndTheFirstGoesOn) {
    const DemoFolder folder;
    folder.SetCustomDisk(kDiskThatAsks);
    ProgramUnderTest first(folder, " custom");
    EXPECT_EQ(CopyQuestion("nosuch.sys"), first.Message());
    for (const char* arguments : {"", " custom", " -x"}) {
        ProgramUnderTest second(folder, arguments);
        EXPECT_EQ(kAlreadyRunning, second.Answer("OK"));
        EXPECT_EQ(Number(ExitCode::AlreadyRunning), second.ExitCode());
    }
    first.Press("Ignore");
    EXPECT_EQ(Number(ExitCode::Built), first.ExitCode());
    ExpectImage(folder, folder.Path("BootDisk.img"), kSmallImageBytes);
}

TEST(SingleInstance, IsTestedBeforeTheDosFiles) {
    const DemoFolder folder;
    folder.SetCustomDisk(kDiskThatAsks);
    ProgramUnderTest first(folder, " custom");
    EXPECT_EQ(CopyQuestion("nosuch.sys"), first.Message());
    folder.Remove("dos\\XCOPY32.MOD");
    ProgramUnderTest second(folder, " custom");
    EXPECT_EQ(kAlreadyRunning, second.Answer("OK"));
    EXPECT_EQ(Number(ExitCode::AlreadyRunning), second.ExitCode());
    first.Press("Abort");
    EXPECT_EQ(Number(ExitCode::Canceled), first.ExitCode());
}

TEST(SingleInstance, NextStartIsWelcomeOnceTheFirstHasEnded) {
    const DemoFolder folder;
    folder.SetCustomDisk(SmallDisk());
    for (int run = 0; run < 2; ++run) {
        ProgramUnderTest program(folder, " custom");
        EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
    }
}

TEST(SingleInstance, KilledRunBlocksNobody) {
    const DemoFolder folder;
    folder.SetCustomDisk(kDiskThatAsks);
    ProgramUnderTest first(folder, " custom");
    EXPECT_EQ(CopyQuestion("nosuch.sys"), first.Message());
    first.Kill();
    folder.SetCustomDisk(SmallDisk());
    ProgramUnderTest next(folder, " custom");
    EXPECT_EQ(Number(ExitCode::Built), next.ExitCode());
    ExpectImage(folder, folder.Path("BootDisk.img"), kSmallImageBytes);
    ExpectNoWorkingFiles(folder);
}

}  // namespace
}  // namespace velbooter::e2e
