// The questions about files that cannot be copied, and what each answer does.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/e2e/support/DemoFolder.h"
#include "tests/e2e/support/Expectations.h"
#include "tests/e2e/support/ProgramUnderTest.h"
#include "tests/support/LockedFile.h"

namespace velbooter::e2e {
namespace {

using tools::testing::LockedFile;

const std::vector<std::string> kDiskWithAMissingFile = {"[Copy_Files]", "io.sys=IO.SYS",
                                                        "nosuch.sys=NOSUCH.SYS", "command.com=COMMAND.COM"};

TEST(CopyQuestion, AbortCancelsTheBuild) {
    const DemoFolder folder;
    folder.SetCustomDisk(kDiskWithAMissingFile);
    ProgramUnderTest program(folder, " custom");
    EXPECT_EQ(CopyQuestion("nosuch.sys"), program.Message());
    EXPECT_EQ("Processing custom.ini file ...", program.Status());
    EXPECT_TRUE(folder.Exists("cabs\\IO.SYS"));
    program.Press("Abort");
    EXPECT_EQ(Number(ExitCode::Canceled), program.ExitCode());
    EXPECT_FALSE(folder.Exists("BootDisk.img"));
    ExpectNoWorkingFiles(folder);
}

TEST(CopyQuestion, IgnoreLeavesTheFileOut) {
    const DemoFolder folder;
    folder.SetCustomDisk(kDiskWithAMissingFile);
    ProgramUnderTest program(folder, " custom");
    EXPECT_EQ(CopyQuestion("nosuch.sys"), program.Answer("Ignore"));
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
    const FloppyImage image = ExpectImage(folder, folder.Path("BootDisk.img"), kSmallImageBytes);
    EXPECT_EQ(0u, image.Files().count("NOSUCH.SYS"));
    ExpectNoWorkingFiles(folder);
}

TEST(CopyQuestion, RetryDoesNotSearchAMissingFileAgain) {
    const DemoFolder folder;
    folder.SetCustomDisk(kDiskWithAMissingFile);
    ProgramUnderTest program(folder, " custom");
    EXPECT_EQ(CopyQuestion("nosuch.sys"), program.Message());
    folder.Write("nosuch.sys", "here, but too late");
    program.Press("Retry");
    EXPECT_EQ(CopyQuestion("nosuch.sys"), program.Answer("Retry"));
    EXPECT_EQ(CopyQuestion("nosuch.sys"), program.Answer("Ignore"));
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
    const FloppyImage image = ExpectImage(folder, folder.Path("BootDisk.img"), kSmallImageBytes);
    EXPECT_EQ(0u, image.Files().count("NOSUCH.SYS"));
}

TEST(CopyQuestion, RetryCopiesOnceTheDestinationIsFree) {
    const DemoFolder folder;
    folder.Write("PAYLOAD.TXT", "new");
    folder.SetCustomDisk(SmallDiskWith({"[Copy_Files_for_CABs]", "PAYLOAD.TXT=held\\PAYLOAD.TXT",
                                        "[Copy_Files]", "files\\held\\PAYLOAD.TXT=PAYLOAD.TXT"}));
    folder.Write("files\\held\\PAYLOAD.TXT", "old");
    LockedFile lock(folder.Path("files\\held\\PAYLOAD.TXT"));
    ProgramUnderTest program(folder, " custom");
    EXPECT_EQ(CopyQuestion("PAYLOAD.TXT"), program.Answer("Retry"));
    EXPECT_EQ(CopyQuestion("PAYLOAD.TXT"), program.Message());
    lock.Release();
    program.Press("Retry");
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
    const FloppyImage image = ExpectImage(folder, folder.Path("BootDisk.img"), kSmallImageBytes);
    EXPECT_EQ("new", image.Files().at("PAYLOAD.TXT"));
}

TEST(CopyQuestion, RetryCopiesOnceTheSourceIsFree) {
    const DemoFolder folder;
    const std::string source = folder.OutsidePath("HELD.TXT");
    WriteFileAt(source, "now readable");
    folder.SetCustomDisk(SmallDiskWith({source + "=BIN\\HELD.TXT"}));
    LockedFile lock(source);
    ProgramUnderTest program(folder, " custom");
    EXPECT_EQ(CopyQuestion(source), program.Message());
    lock.Release();
    program.Press("Retry");
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
    const FloppyImage image = ExpectImage(folder, folder.Path("BootDisk.img"), kSmallImageBytes);
    EXPECT_EQ("now readable", image.Files().at("BIN\\HELD.TXT"));
}

TEST(CopyQuestion, ComesForABaseFileBeforeTheDiskIsLookedFor) {
    const DemoFolder folder;
    const LockedFile lock(folder.Path("files\\base_files\\AUTOEXEC.BAT"));
    ProgramUnderTest program(folder, " custom");
    EXPECT_EQ(CopyQuestion(folder.Path("files\\base_files\\*.*")), program.Answer("Abort"));
    EXPECT_EQ(Number(ExitCode::Canceled), program.ExitCode());
    EXPECT_FALSE(folder.Exists("BootDisk.img"));
    ExpectNoWorkingFiles(folder);
}

TEST(CopyQuestion, NeverComesForAModule) {
    const DemoFolder folder;
    folder.SetCustomDisk(SmallDiskWith({"[Copy_CABs]", "nosuch.cab=LIB\\nosuch.cab"}));
    ProgramUnderTest program(folder, " custom");
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
    ExpectImage(folder, folder.Path("BootDisk.img"), kSmallImageBytes);
}

TEST(CopyQuestion, ClosingTheWaitWindowMeanwhileDoesNothing) {
    const DemoFolder folder;
    folder.SetCustomDisk(kDiskWithAMissingFile);
    ProgramUnderTest program(folder, " custom");
    EXPECT_EQ(CopyQuestion("nosuch.sys"), program.Message());
    ASSERT_NE(program.WaitWindow(), nullptr);
    ::PostMessageA(program.WaitWindow(), WM_CLOSE, 0, 0);
    program.Press("Ignore");
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
    ExpectImage(folder, folder.Path("BootDisk.img"), kSmallImageBytes);
}

ShownMessage UnreadableSource(const std::string& entry) {
    return {"Error while copying the file from its Source :\r\n" + entry, "Error", {"OK"}, Picture::Critical};
}

TEST(StagingMessage, MissingSystemFileEndsTheBuild) {
    const DemoFolder folder;
    folder.SetCustomDisk({"[Copy_Files]", "command.com=COMMAND.COM"});
    folder.Write("BootDisk.img", "an old image");
    ProgramUnderTest program(folder, " custom");
    EXPECT_EQ(UnreadableSource("IO.SYS"), program.Message());
    EXPECT_EQ("Preparing new floppy image ...", program.Status());
    program.Press("OK");
    EXPECT_EQ(Number(ExitCode::Canceled), program.ExitCode());
    EXPECT_EQ("an old image", folder.Read("BootDisk.img"));
    ExpectNoWorkingFiles(folder);
}

TEST(StagingMessage, FileThatBecomesUnreadableEndsTheBuild) {
    const DemoFolder folder;
    folder.Write("LATE.TXT", "locked when it is staged");
    folder.SetCustomDisk(SmallDiskWith({"LATE.TXT=BIN\\LATE.TXT", "nosuch.sys=NOSUCH.SYS"}));
    ProgramUnderTest program(folder, " custom");
    EXPECT_EQ(CopyQuestion("nosuch.sys"), program.Message());
    const LockedFile lock(folder.Path("cabs\\BIN\\LATE.TXT"));
    program.Press("Ignore");
    const ShownMessage message = program.Answer("OK");
    EXPECT_THAT(message.Text, testing::EndsWith("\\LATE.TXT"));
    EXPECT_EQ(message, UnreadableSource(message.Text.substr(message.Text.find('\n') + 1)));
    EXPECT_EQ(Number(ExitCode::Canceled), program.ExitCode());
    EXPECT_FALSE(folder.Exists("BootDisk.img"));
}

// The name of the staging folder, which exists while a run waits for an answer during staging.
std::string StagingFolderOf(const DemoFolder& folder) {
    folder.SetCustomDisk({"[Copy_Files]", "command.com=COMMAND.COM"});
    ProgramUnderTest program(folder, " custom");
    EXPECT_EQ(UnreadableSource("IO.SYS"), program.Message());
    const std::vector<std::string> names = folder.Names("Temp");
    program.Press("OK");
    program.ExitCode();
    if (names.size() != 1) throw std::runtime_error("not one staging folder");
    return names.front();
}

TEST(StagingMessage, EveryStartTriesTheSameFolderNames) {
    const DemoFolder folder;
    const std::string name = StagingFolderOf(folder);
    EXPECT_THAT(name, testing::MatchesRegex("Velbooter\\d+"));
    EXPECT_EQ(name, StagingFolderOf(folder));
}

ShownMessage WithoutDescription(ShownMessage message) {
    message.Text.erase(message.Text.find("\r\n") + 2);
    return message;
}

const ShownMessage kStagingQuestion{"The current Error has happend :\r\n",
                                    "Error while Copying to Floppy",
                                    {"Abort", "Retry", "Ignore"},
                                    Picture::Critical};

TEST(StagingMessage, RetryGoesOnWithTheSameFile) {
    const DemoFolder folder;
    const std::string staging = "Temp\\" + StagingFolderOf(folder);
    folder.SetCustomDisk(SmallDisk());
    folder.Write("Temp", "a file in the folder's place");
    ProgramUnderTest program(folder, " custom");
    const ShownMessage first = program.Answer("Retry");
    EXPECT_EQ(kStagingQuestion, WithoutDescription(first));
    EXPECT_GT(first.Text.size(), kStagingQuestion.Text.size()) << "the error is not described";
    EXPECT_EQ(first, program.Message());
    folder.Remove("Temp");
    folder.Write(staging + "\\MADE.TXT", "the folder is there now");
    program.Press("Retry");
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
    ExpectImage(folder, folder.Path("BootDisk.img"), kSmallImageBytes);
    ExpectNoWorkingFiles(folder);
}

TEST(StagingMessage, IgnoreGoesOnWithTheNextFileAndAbortCancels) {
    const DemoFolder folder;
    folder.SetCustomDisk(SmallDisk());
    folder.Write("Temp", "a file in the folder's place");
    ProgramUnderTest program(folder, " custom");
    EXPECT_EQ(kStagingQuestion, WithoutDescription(program.Answer("Ignore")));
    EXPECT_EQ(kStagingQuestion, WithoutDescription(program.Answer("Abort")));
    EXPECT_EQ(Number(ExitCode::Canceled), program.ExitCode());
    EXPECT_FALSE(folder.Exists("BootDisk.img"));
    EXPECT_FALSE(folder.Exists("cabs"));
}

}  // namespace
}  // namespace velbooter::e2e
