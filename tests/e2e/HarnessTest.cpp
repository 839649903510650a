// The harness itself: it must notice a program that misbehaves.

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/e2e/support/DemoFolder.h"
#include "tests/e2e/support/Expectations.h"
#include "tests/e2e/support/HarnessFailure.h"
#include "tests/e2e/support/ProgramUnderTest.h"
#include "tests/e2e/support/Programs.h"
#include "tests/support/BuiltFile.h"

namespace velbooter::e2e {
namespace {

void ReplaceTheProgram(const DemoFolder& folder, const std::string& with) {
    tools::testing::CopyOver(with, folder.Path("velbooter.exe"));
}

TEST(Harness, SeesAProgramThatEndsInsteadOfShowingAMessage) {
    const DemoFolder folder;
    folder.Remove("velbooter.exe");
    ReplaceTheProgram(folder, TestProgram("e2e_plugin.exe"));
    ProgramUnderTest program(folder, " nosuch");
    EXPECT_THROW(program.Message(), HarnessFailure);
}

TEST(Harness, SeesAProgramThatIsNoProgram) {
    const DemoFolder folder;
    folder.Write("velbooter.exe", "not a program");
    EXPECT_THROW(ProgramUnderTest(folder, " custom"), HarnessFailure);
}

TEST(Harness, SeesAMessageThatNoTestAskedFor) {
    const DemoFolder folder;
    ProgramUnderTest program(folder, " nosuch");
    EXPECT_THROW(program.ExitCode(), HarnessFailure);
    program.Kill();
}

TEST(Harness, EndsTheChildrenOfAProcessAndSparesThoseOfAnEarlierOneOfItsId) {
    const DemoFolder folder;
    CopyTestProgram("e2e_held.exe", folder.Path("held.exe"));
    StartedTool child(folder.Path("held.exe"), folder.Path());
    const ULONGLONG start = child.Start();
    EndChildrenOf(::GetCurrentProcessId(), start + 1);
    EXPECT_TRUE(child.IsRunning());
    EndChildrenOf(::GetCurrentProcessId(), start);
    EXPECT_FALSE(child.IsRunning());
}

TEST(Harness, SeesATruncatedImage) {
    const DemoFolder folder;
    folder.SetCustomDisk(SmallDisk());
    ProgramUnderTest program(folder, " custom");
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
    const std::string image = folder.Path("BootDisk.img");
    EXPECT_NO_THROW(FloppyImage{image});
    std::filesystem::resize_file(image, kSmallImageBytes - 512);
    EXPECT_THROW(FloppyImage{image}, HarnessFailure);
}

}  // namespace
}  // namespace velbooter::e2e
