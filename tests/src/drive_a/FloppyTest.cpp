// A drive A: of 1.44 MB. Its file system allocates space in blocks of 4096 bytes.
#include <gtest/gtest.h>

#include "src/common/Files.h"
#include "src/common/Folders.h"
#include "src/disk/output/Staging.h"
#include "src/dos/ImportDOS.h"
#include "src/start/BuildRun.h"
#include "tests/src/drive_a/DriveA.h"

namespace velbooter::testing {
namespace {

constexpr int kFloppySize = 1440 * 1024;

class Floppy : public DriveATest {};

TEST_F(Floppy, FreeSpaceFallsAsFilesAreWritten) {
    EXPECT_EQ(kFloppySize, GetDriveFreeSpace("A:"));
    EXPECT_EQ(kFloppySize, GetDriveFreeSpace("a:\\any\\path")) << "the first character alone counts";
    Add("a.cab", 100'000);
    EXPECT_TRUE(InjectFilesToDir(App.Paths, App.Screen, App.Wizard, "A:"));
    EXPECT_EQ(kFloppySize - 25 * 4096, GetDriveFreeSpace("A:"));
}

TEST_F(Floppy, TheFileThatDoesNotFitIsLeftOutAndTheRestStillCopied) {
    Add("IO.SYS", 1'000'000);  // takes 245 blocks, leaves 471,040 bytes
    Add("bin\\big.cab", 471'041);
    Add("bin\\fits.cab", 471'040);
    Add("one.txt", 1);
    Add("empty.txt", 0);
    Screen.Expect(NotEnoughSpace("bin\\big.cab"));
    Screen.Expect(NotEnoughSpace("one.txt"));
    EXPECT_TRUE(InjectFilesToDir(App.Paths, App.Screen, App.Wizard, "A:"));
    EXPECT_EQ(1'000'000, SizeOnDrive("IO.SYS"));
    EXPECT_EQ(-1, SizeOnDrive("bin\\big.cab"));
    EXPECT_EQ(471'040, SizeOnDrive("bin\\fits.cab"));
    EXPECT_EQ(-1, SizeOnDrive("one.txt"));
    EXPECT_EQ(0, SizeOnDrive("empty.txt"));
    EXPECT_EQ(5, App.Wizard.WorkProgress.Value);
    EXPECT_EQ(5, App.Wizard.WorkProgress.Max);
}

TEST_F(Floppy, AFileOnTheDriveIsJudgedByTheSpaceThatIsLeftBesideIt) {
    Add("a.cab", 1'000'000);
    EXPECT_TRUE(InjectFilesToDir(App.Paths, App.Screen, App.Wizard, "A:"));
    Screen.Expect(NotEnoughSpace("a.cab"));
    EXPECT_TRUE(InjectFilesToDir(App.Paths, App.Screen, App.Wizard, "A:"))
        << "overwriting would fit, but the space is read before";
    EXPECT_EQ(1'000'000, SizeOnDrive("a.cab"));
}

TEST_F(Floppy, ALowerCaseDriveIsAFolderWithoutASpaceTest) {
    Add("a.cab", 1'000'000);
    Add("b.cab", 1'000'000);
    Add("c.cab", 100);
    Screen.Expect(DiskFull(), Answer::Ignore);
    EXPECT_TRUE(InjectFilesToDir(App.Paths, App.Screen, App.Wizard, "a:"));
    EXPECT_EQ(1'000'000, SizeOnDrive("a.cab"));
    EXPECT_EQ(-1, SizeOnDrive("b.cab")) << "no part of it is left";
    EXPECT_EQ(100, SizeOnDrive("c.cab"));
}

TEST_F(Floppy, AFullDiskEndsACopyWithError61AndLeavesNoPart) {
    const std::string big = Folder.Write("big", std::string(2'000'000, 'x'));
    try {
        CopyFileOver(big, "A:\\big");
        ADD_FAILURE();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(kDiskFull, error.Number);
    }
    EXPECT_EQ(-1, SizeOnDrive("big"));
    EXPECT_EQ(kFloppySize, GetDriveFreeSpace("A:"));
}

TEST_F(Floppy, ARunFormatsAndFillsItWithTheSelectedDrivers) {
    Folder.Write("Drivers.ini", "[ASPI]\r\nAHA=1\r\nLEFTOUT=0\r\n");
    Folder.Write("drivers\\aspi\\aha.cab", std::string(3000, 'x'));
    App.Wizard.ChkASPI.Value = 1;
    Add("IO.SYS", 1000);
    Add("bin\\a.cab", 2000);
    Add("big.cab", 1'500'000);
    ChooseOption(App.Wizard, &FrmWizard::OptFloppy);
    Screen.ExpectFormatDialog(0);
    Screen.Expect(NotEnoughSpace("big.cab"));
    FinishApp(App, "");
    EXPECT_EQ(1000, SizeOnDrive("IO.SYS"));
    EXPECT_EQ(2000, SizeOnDrive("bin\\a.cab"));
    EXPECT_EQ(3000, SizeOnDrive("lib\\aspi\\aha.cab"));
    EXPECT_EQ("Operation completed successfully", App.Wizard.LblFinish.Caption);
    EXPECT_FALSE(Folder.HasFolder("cabs"));
}

TEST_F(Floppy, TheSpaceIsReadAgainBeforeEveryFile) {
    Add("a.cab", 1'000'000);
    Add("b.cab", 300'000);
    Screen.OnPaint = [&, shrunk = false]() mutable {
        if (App.Wizard.WorkProgress.Value != 2 || shrunk) return;
        shrunk = true;
        RemountDriveA("size=1200k");
    };
    Screen.Expect(NotEnoughSpace("b.cab"));
    EXPECT_TRUE(InjectFilesToDir(App.Paths, App.Screen, App.Wizard, "A:"));
    Screen.OnPaint = {};
    RemountDriveA("size=1440k");
}

TEST_F(Floppy, AReadingThatOverflowsLeavesTheLastOne) {
    Add("a.cab", 1'000'000);  // read: 1,474,560 free
    Add("b.cab", 1'474'561);
    Add("c.cab", 1'474'560);
    Screen.OnPaint = [&, grown = false]() mutable {
        if (App.Wizard.WorkProgress.Value != 2 || grown) return;
        grown = true;
        RemountDriveA("size=3g");
    };
    Screen.Expect(NotEnoughSpace("b.cab"));
    EXPECT_TRUE(InjectFilesToDir(App.Paths, App.Screen, App.Wizard, "A:"));
    Screen.OnPaint = {};
    EXPECT_EQ(-1, SizeOnDrive("b.cab"));
    EXPECT_EQ(1'474'560, SizeOnDrive("c.cab"));
    std::filesystem::remove("A:\\a.cab");
    std::filesystem::remove("A:\\c.cab");
    RemountDriveA("size=1440k");
}

TEST_F(Floppy, DosFilesOfAWindowsInstallationComeFromTheDrivesRootLast) {
    std::filesystem::create_directories("A:\\WINDOWS\\command");
    for (const char* file : {"IO.SYS", "MEM.EXE", "EDIT.COM", "WINDOWS\\MEM.EXE", "WINDOWS\\EDIT.COM",
                             "WINDOWS\\command\\EDIT.COM"}) {
        std::ofstream(std::string("A:\\") + file) << file;
    }
    Folder.MakeFolder("dos");
    CopyDOSFiles(App.Paths, App.Screen, App.Wait, "A:\\WINDOWS\\");
    EXPECT_EQ((std::vector<std::string>{"EDIT.COM", "IO.SYS", "MEM.EXE"}), Folder.Tree("dos"));
    EXPECT_EQ("IO.SYS", Folder.Read("dos\\IO.SYS"));
    EXPECT_EQ("WINDOWS\\MEM.EXE", Folder.Read("dos\\MEM.EXE"));
    EXPECT_EQ("WINDOWS\\command\\EDIT.COM", Folder.Read("dos\\EDIT.COM"));
}

}  // namespace
}  // namespace velbooter::testing
