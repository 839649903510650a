// Drives that are full or write-protected. Wine lets the system's administrator write into read-only
// folders, so the tests use a drive A: that is mounted read-only; with-drive-a.sh creates it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/e2e/faults/FaultExpectations.h"
#include "tests/e2e/support/ProgramUnderTest.h"
#include "tests/e2e/support/Programs.h"
#include "tests/e2e/support/WizardTest.h"
#include "tests/support/DriveAControl.h"

namespace velbooter::e2e {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

const char* const kWritable = "rw,size=40m";
const char* const kReadOnly = "ro";

class DriveA : public testing::Test {
 protected:
    void TearDown() override {
        RemountDriveA(kWritable);
        ::DeleteFileA("A:\\disk.img");
    }

    static std::vector<std::string> NamesOnDrive() {
        std::vector<std::string> names;
        WIN32_FIND_DATAA found{};
        const HANDLE search = ::FindFirstFileA("A:\\*.*", &found);
        if (search == INVALID_HANDLE_VALUE) return names;
        do {
            const std::string name = found.cFileName;
            if (name != "." && name != "..") names.push_back(name);
        } while (::FindNextFileA(search, &found) != 0);
        ::FindClose(search);
        return names;
    }

    // Leaves the drive just `bytes` free bytes.
    static void LeaveFree(ULONGLONG bytes) {
        ULARGE_INTEGER available{};
        ULARGE_INTEGER total{};
        ASSERT_TRUE(::GetDiskFreeSpaceExA("A:\\", &available, &total, nullptr));
        RemountDriveA("size=" + std::to_string(total.QuadPart - available.QuadPart + bytes));
    }
};

class TargetOnDriveA : public DriveA {
 protected:
    void SetUp() override {
        // Bytes that do not compress and are not zeros, which a file system could store without space.
        std::string noise(1000000, '\0');
        unsigned number = 1;
        for (char& byte : noise) {
            number = number * 1664525u + 1013904223u;
            byte = static_cast<char>(number >> 24);
        }
        folder_.Write("BIG.BIN", noise);
        folder_.SetCustomDisk(SmallDiskWith({"BIG.BIN=BIG.BIN"}));
    }

    void ExpectBuild(ExitCode code) const {
        ProgramUnderTest program(folder_, " custom A:\\disk.img");
        EXPECT_EQ(Number(code), program.ExitCode());
        ExpectNoWorkingFiles(folder_);
    }

    const DemoFolder folder_;
};

TEST_F(TargetOnDriveA, FullDriveGetsNoPartOfAnImage) {
    RemountDriveA("size=600k");
    ExpectBuild(ExitCode::NoImage);
    EXPECT_THAT(NamesOnDrive(), testing::IsEmpty());
    RemountDriveA(kWritable);
    ExpectBuild(ExitCode::Built);
    ExpectImage(folder_, "A:\\disk.img", kSmallImageBytes);
    EXPECT_THAT(NamesOnDrive(), ElementsAre("disk.img"));
}

TEST_F(TargetOnDriveA, FullDriveKeepsItsOldImage) {
    WriteFileAt("A:\\disk.img", kOldImage);
    RemountDriveA("size=600k");
    ExpectBuild(ExitCode::NoImage);
    EXPECT_EQ(kOldImage, ReadFileAt("A:\\disk.img"));
    EXPECT_THAT(NamesOnDrive(), ElementsAre("disk.img"));
}

TEST_F(TargetOnDriveA, WriteProtectedDriveKeepsItsOldImage) {
    WriteFileAt("A:\\disk.img", kOldImage);
    RemountDriveA(kReadOnly);
    ExpectBuild(ExitCode::NoImage);
    EXPECT_EQ(kOldImage, ReadFileAt("A:\\disk.img"));
    EXPECT_THAT(NamesOnDrive(), ElementsAre("disk.img"));
}

// On a USB stick the program is often in the root, among everything else. The current folder of its drive
// can be any.
class ApplicationInTheRootOfDriveA : public DriveA {
 protected:
    void SetUp() override {
        ASSERT_THAT(NamesOnDrive(), testing::IsEmpty());
        folder_.SetCustomDisk(SmallDisk());
        fs::copy(folder_.Path(), "A:\\", fs::copy_options::recursive);
        fs::create_directory("A:\\work");
    }
    void TearDown() override {
        for (const std::string& name : NamesOnDrive()) fs::remove_all("A:\\" + name);
    }

    const DemoFolder folder_;
};

TEST_F(ApplicationInTheRootOfDriveA, BuildsFromAnotherFolderOfTheDrive) {
    EXPECT_EQ(Number(ExitCode::Built),
              StartedTool("\"A:\\velbooter.exe\" custom two.img", "A:\\work").ExitCode());
    EXPECT_EQ(1U, FloppyImage("A:\\two.img").Files().count("IO.SYS"));
    EXPECT_THAT(NamesOnDrive(), testing::Not(testing::Contains("cabs")));
    EXPECT_TRUE(fs::is_empty("A:\\work"));
}

class ApplicationOnDriveA : public DriveA {
 protected:
    void SetUp() override {
        folder_.SetCustomDisk(SmallDisk());
        PutOldImage(folder_);
    }
    void TearDown() override { RemountDriveA(kWritable); }

    const DemoFolder folder_{"app", "A:"};
    const ShownMessage error_ = FileError(70, "Permission denied", folder_.Path("Drivers.ini"));
};

TEST_F(ApplicationOnDriveA, WriteProtectedFolderIsAnErrorOfTheBatchRun) {
    RemountDriveA(kReadOnly);
    ProgramUnderTest program(folder_, kBuild);
    EXPECT_EQ(error_, program.Answer("OK"));
    EXPECT_EQ(Number(ExitCode::InternalError), program.ExitCode());
    ExpectOldImage(folder_);
    ExpectNoWorkingFiles(folder_);
}

TEST_F(ApplicationOnDriveA, WriteProtectedFolderShowsTheWizardsLastPage) {
    RemountDriveA(kReadOnly);
    ProgramUnderTest program(folder_, "");
    EXPECT_EQ(error_, program.Answer("OK"));
    const ShownWizard wizard(program, kFinishedPage);
    EXPECT_EQ("Operation canceled", wizard.Text(IDC_OUTCOME));
    wizard.Click(IDC_FINISH);
    EXPECT_EQ(Number(ExitCode::Canceled), program.ExitCode());
    ExpectOldImage(folder_);
}

// There is a question for each group of files; the build is cancelled when the base files could not be
// copied.
TEST_F(ApplicationOnDriveA, FullDriveIsAskedAboutAndCancels) {
    LeaveFree(8192);
    ProgramUnderTest program(folder_, kBuild);
    for (const char* group :
         {"dos_files\\bin", "dos_files\\help", "dos_files\\menu", "base_files", "base_files\\bin"}) {
        EXPECT_EQ(CopyQuestion(folder_.Path(std::string("files\\") + group + "\\*.*")),
                  program.Answer("Abort"));
    }
    EXPECT_EQ(Number(ExitCode::Canceled), program.ExitCode());
    ExpectOldImage(folder_);
    ExpectNoWorkingFiles(folder_);
    RemountDriveA(kWritable);
    ExpectRunWorks(folder_);
}

}  // namespace
}  // namespace velbooter::e2e
