// The check of the DOS files at start, and their import through the system's own dialog.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/e2e/support/DemoFolder.h"
#include "tests/e2e/support/DosFiles.h"
#include "tests/e2e/support/Expectations.h"
#include "tests/e2e/support/FileDialogs.h"
#include "tests/e2e/support/ProgramUnderTest.h"

namespace velbooter::e2e {
namespace {

namespace fs = std::filesystem;

// An application folder without DOS files, and a folder "cd" next to it that contains them.
class DosFiles : public testing::Test {
 protected:
    void SetUp() override {
        char windows[MAX_PATH] = "";
        ::GetWindowsDirectoryA(windows, MAX_PATH);
        ASSERT_FALSE(fs::exists(std::string(windows) + "\\Command"))
            << "with a Command folder in Windows the program imports without a question";
        folder_.SetCustomDisk(SmallDisk());
        fs::copy(folder_.Path("dos"), folder_.OutsidePath("cd"), fs::copy_options::recursive);
        WriteFileAt(Cd("WIN.COM"), "stand-in");
        folder_.Remove("dos");
    }

    std::string Cd(const std::string& name) const { return folder_.OutsidePath("cd\\" + name); }

    const DemoFolder folder_;
};

TEST_F(DosFiles, CancelOfTheQuestionEndsTheProgram) {
    ProgramUnderTest program(folder_, " custom");
    EXPECT_EQ(ImportQuestion(), program.Answer("Cancel"));
    EXPECT_EQ(Number(ExitCode::DosFilesMissing), program.ExitCode());
    EXPECT_FALSE(folder_.Exists("BootDisk.img"));
}

TEST_F(DosFiles, OneMissingFileIsEnoughForTheQuestion) {
    fs::copy(folder_.OutsidePath("cd"), folder_.Path("dos"), fs::copy_options::recursive);
    folder_.Remove("dos\\XCOPY32.MOD");
    ProgramUnderTest program(folder_, "");
    EXPECT_EQ(ImportQuestion(), program.Answer("Cancel"));
    EXPECT_EQ(Number(ExitCode::DosFilesMissing), program.ExitCode());
}

TEST_F(DosFiles, HelpLeavesTheQuestionStanding) {
    ProgramUnderTest program(folder_, " custom");
    EXPECT_EQ(ImportQuestion(), program.Message());
    program.PressAndKeep("Help");
    EXPECT_EQ(ImportQuestion(), program.Answer("Cancel"));
    EXPECT_EQ(Number(ExitCode::DosFilesMissing), program.ExitCode());
}

TEST_F(DosFiles, CancelOfTheFileDialogEndsTheProgram) {
    ProgramUnderTest program(folder_, " custom");
    program.Answer("OK");
    CancelFileDialog(program, program.FileDialog());
    EXPECT_EQ(Number(ExitCode::DosFilesMissing), program.ExitCode());
}

TEST_F(DosFiles, AnyFileOfTheCdFolderIsEnoughToImportAll) {
    ProgramUnderTest program(folder_, " custom");
    program.Answer("OK");
    ChooseFile(program, program.FileDialog(), Cd("MEM.EXE"));
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
    for (const std::string& name : DosFileNames()) {
        ASSERT_TRUE(folder_.Exists("dos\\" + name)) << name;
        EXPECT_EQ(folder_.Read("dos\\" + name), ReadFileAt(Cd(name))) << name;
    }
    ExpectImage(folder_, folder_.Path("BootDisk.img"), kSmallImageBytes);
}

TEST_F(DosFiles, WaitWindowCountsTheImportedFiles) {
    ProgramUnderTest program(folder_, " custom");
    program.Answer("OK");
    ChooseFile(program, program.FileDialog(), Cd("WIN.COM"));
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
    const std::vector<std::string> texts = program.StatusTexts();
    const std::vector<std::string> import = ImportStatuses();
    const auto first = std::find(texts.begin(), texts.end(), import.front());
    ASSERT_GE(static_cast<size_t>(texts.end() - first), import.size());
    EXPECT_EQ(std::vector<std::string>(first, first + static_cast<std::ptrdiff_t>(import.size())), import);
}

TEST_F(DosFiles, FolderWithoutTheCdsFilesAsksAgainWithTheCabinetPreset) {
    ProgramUnderTest program(folder_, " custom");
    program.Answer("OK");
    ChooseFile(program, program.FileDialog(), folder_.Path("files\\disklist.ini"));
    const HWND again = program.FileDialog();
    EXPECT_EQ("BASE5.CAB", FileNameIn(again));
    ChooseFile(program, again, Cd("WIN.COM"));
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
    ExpectImage(folder_, folder_.Path("BootDisk.img"), kSmallImageBytes);
}

TEST_F(DosFiles, FileThatTheImportDidNotFindEndsTheProgram) {
    fs::remove(Cd("SORT.EXE"));
    fs::remove(Cd("XCOPY.EXE"));
    ProgramUnderTest program(folder_, " custom");
    program.Answer("OK");
    ChooseFile(program, program.FileDialog(), Cd("WIN.COM"));
    EXPECT_EQ((ShownMessage{"The file SORT.EXE couldn't be extracted successfully",
                            "Critical Error",
                            {"OK", "Help"},
                            Picture::Critical}),
              program.Answer("OK"));
    EXPECT_EQ(Number(ExitCode::DosFilesMissing), program.ExitCode());
    EXPECT_TRUE(folder_.Exists("dos\\XCOPY32.MOD"));
    EXPECT_FALSE(folder_.Exists("BootDisk.img"));
}

}  // namespace
}  // namespace velbooter::e2e
