#include "src/common/SingleInstance.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "src/common/Paths.h"
#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {
namespace {

class SingleInstances : public ::testing::Test {
 protected:
    ApplicationFolder Folder;
    std::string Program = Folder.Write("Veltrane of mine\\program.exe", "MZ");
};

TEST_F(SingleInstances, ASecondOneOfTheSameFileIsNotTheFirst) {
    const SingleInstance first(Program);
    EXPECT_TRUE(first.IsFirst());
    const SingleInstance second(Program);
    EXPECT_FALSE(second.IsFirst());
    EXPECT_TRUE(first.IsFirst());
}

TEST_F(SingleInstances, HoweverThePathIsWritten) {
    const SingleInstance first(Program);
    EXPECT_FALSE(SingleInstance(Folder.At("VELTRANE OF MINE\\Program.EXE")).IsFirst());
    EXPECT_FALSE(SingleInstance(Folder.At("x\\..\\Veltrane of mine\\.\\program.exe")).IsFirst());
    ASSERT_NE(Program, GetShortPath(Program));
    EXPECT_FALSE(SingleInstance(GetShortPath(Program)).IsFirst());
    EXPECT_FALSE(SingleInstance("\\\\?\\" + Program).IsFirst());
}

TEST_F(SingleInstances, ByWayOfALinkToItsFolder) {
    Folder.MakeLink("link", "Veltrane of mine");
    const SingleInstance first(Program);
    EXPECT_FALSE(SingleInstance(Folder.At("link\\program.exe")).IsFirst());
}

TEST_F(SingleInstances, AnotherFileIsAnotherInstance) {
    const SingleInstance first(Program);
    EXPECT_TRUE(SingleInstance(Folder.Write("Veltrane of mine\\other.exe")).IsFirst());
    EXPECT_TRUE(SingleInstance(Folder.Write("program.exe", "MZ")).IsFirst());
}

TEST_F(SingleInstances, TheMarkIsHeldAsLongAsTheInstanceLives) {
    { EXPECT_TRUE(SingleInstance(Program).IsFirst()); }
    const SingleInstance next(Program);
    EXPECT_TRUE(next.IsFirst());
}

// The file of a running program can always be queried; where a file cannot, its path identifies it.
TEST_F(SingleInstances, WithoutAFileThePathCounts) {
    const std::string path = Folder.At(std::string(200, 'x') + "\\B\xFCro.exe");
    const SingleInstance first(path);
    EXPECT_TRUE(first.IsFirst());
    EXPECT_FALSE(SingleInstance(path).IsFirst());
    EXPECT_FALSE(SingleInstance(Folder.At(std::string(200, 'X') + "\\B\xDCRO.EXE")).IsFirst());
}

// Another user of the PC, with another desktop, finds the same mutex.
TEST_F(SingleInstances, TheMarkIsThatOfTheWholePc) {
    const SingleInstance first(Program);
    BY_HANDLE_FILE_INFORMATION facts{};
    const HANDLE file =
        ::CreateFileA(Program.c_str(), 0, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_TRUE(::GetFileInformationByHandle(file, &facts));
    ::CloseHandle(file);
    const ULONGLONG index = (static_cast<ULONGLONG>(facts.nFileIndexHigh) << 32) | facts.nFileIndexLow;
    const std::string name =
        "Global\\Velbooter " + std::to_string(facts.dwVolumeSerialNumber) + " " + std::to_string(index);
    const HANDLE mark = ::OpenMutexA(SYNCHRONIZE, FALSE, name.c_str());
    EXPECT_NE(nullptr, mark);
    if (mark != nullptr) ::CloseHandle(mark);
}

}  // namespace
}  // namespace velbooter::testing
