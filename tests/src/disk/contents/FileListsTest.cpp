#include "src/disk/contents/FileLists.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "src/common/RuntimeError.h"
#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {
namespace {

using std::string_literals::operator""s;
using Files = std::vector<std::string>;

class FileList : public ApplicationTest {
 protected:
    /// One step of the walk appends to an empty list, not to the entry that the list has at first.
    FileList() { App.Wizard.LstFiles.Clear(); }

    void MakeTree(const Files& files) {
        for (const std::string& file : files) Folder.Write("cabs\\" + file);
    }
    Files Listed() const {
        Files files;
        for (int i = 0; i < App.Wizard.LstFiles.ListCount(); ++i)
            files.push_back(App.Wizard.LstFiles.List(i));
        return files;
    }
    Files Queue() const {
        Files folders;
        for (int i = 0; i < App.Wizard.LstDirs.ListCount(); ++i)
            folders.push_back(App.Wizard.LstDirs.List(i));
        return folders;
    }
    Files Filled() {
        FillInitialList(App.Paths, App.Screen, App.Wizard);
        return Listed();
    }
};

TEST_F(FileList, TheSystemFilesComeFirstWhereverTheyWereFound) {
    MakeTree({"AUTOEXEC.BAT", "COMMAND.COM", "IO.SYS", "MSDOS.SYS", "ZZZ.TXT"});
    EXPECT_EQ((Files{"IO.SYS", "MSDOS.SYS", "COMMAND.COM", "AUTOEXEC.BAT", "ZZZ.TXT"}), Filled());
}

TEST_F(FileList, TheSystemFilesAreListedWhenTheTreeHasNone) {
    MakeTree({"A.TXT"});
    EXPECT_EQ((Files{"IO.SYS", "MSDOS.SYS", "COMMAND.COM", "A.TXT"}), Filled());
}

TEST_F(FileList, AMissingTreeGivesTheSystemFilesAlone) {
    EXPECT_EQ((Files{"IO.SYS", "MSDOS.SYS", "COMMAND.COM"}), Filled());
}

TEST_F(FileList, ALowerCaseSystemFileKeepsItsOwnEntry) {
    MakeTree({"io.sys", "Msdos.sys", "x.txt"});
    EXPECT_EQ((Files{"IO.SYS", "MSDOS.SYS", "COMMAND.COM", "io.sys", "Msdos.sys", "x.txt"}), Filled());
}

TEST_F(FileList, SystemFilesInSubFoldersStay) {
    MakeTree({"IO.SYS", "sub\\IO.SYS", "sub\\COMMAND.COM"});
    EXPECT_EQ((Files{"IO.SYS", "MSDOS.SYS", "COMMAND.COM", "sub\\COMMAND.COM", "sub\\IO.SYS"}), Filled());
}

TEST_F(FileList, EveryEntryIsSelected) {
    MakeTree({"a", "b", "sub\\c"});
    FillInitialList(App.Paths, App.Screen, App.Wizard);
    for (int i = 0; i < App.Wizard.LstFiles.ListCount(); ++i)
        EXPECT_TRUE(App.Wizard.LstFiles.Selected(i)) << i;
    EXPECT_EQ(6, App.Wizard.LstFiles.SelectedCount());
}

TEST_F(FileList, AnOldListIsReplacedAndTheQueueIsEmptyAfterwards) {
    MakeTree({"a"});
    FillInitialList(App.Paths, App.Screen, App.Wizard);
    EXPECT_EQ((Files{"IO.SYS", "MSDOS.SYS", "COMMAND.COM", "a"}), Filled());
    EXPECT_EQ((Files{}), Queue());
}

TEST_F(FileList, OfTwoSubFoldersTheOneFoundLastIsScannedFirst) {
    MakeTree({"0.txt", "A\\1.txt", "A\\AA\\2.txt", "B\\3.txt", "B\\BA\\4.txt", "B\\BB\\5.txt", "z.txt"});
    EXPECT_EQ((Files{"IO.SYS", "MSDOS.SYS", "COMMAND.COM", "0.txt", "z.txt", "B\\3.txt", "B\\BB\\5.txt",
                     "B\\BA\\4.txt", "A\\1.txt", "A\\AA\\2.txt"}),
              Filled());
}

TEST_F(FileList, FilesOfAHiddenFolderAreListed) {
    MakeTree({"h\\A.TXT"});
    Folder.SetAttributes("cabs\\h", FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    EXPECT_EQ((Files{"IO.SYS", "MSDOS.SYS", "COMMAND.COM", "h\\A.TXT"}), Filled());
}

TEST_F(FileList, ScanningWithAnEmptyQueueBeginsIt) {
    MakeTree({"sub\\A.TXT"});
    ScanCabsFolder(App.Paths, App.Screen, App.Wizard, Folder.At("cabs"), "*.*");
    EXPECT_EQ((Files{Folder.At("cabs\\sub\\")}), Queue());
}

TEST_F(FileList, HiddenAndSystemFilesAreListed) {
    MakeTree({"h.txt"});
    Folder.SetAttributes("cabs\\h.txt",
                         FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ((Files{"IO.SYS", "MSDOS.SYS", "COMMAND.COM", "h.txt"}), Filled());
}

TEST_F(FileList, FoldersWhoseNameBeginsWithADotAreSkippedFilesAreNot) {
    MakeTree({".folder\\a.txt", ".file", "b.txt"});
    EXPECT_EQ((Files{"IO.SYS", "MSDOS.SYS", "COMMAND.COM", ".file", "b.txt"}), Filled());
}

TEST_F(FileList, ALongListKeepsEveryName) {
    Files expected{"IO.SYS", "MSDOS.SYS", "COMMAND.COM"};
    for (int i = 100; i < 400; ++i) {
        MakeTree({"f" + std::to_string(i)});
        expected.push_back("f" + std::to_string(i));
    }
    EXPECT_EQ(expected, Filled());
}

TEST_F(FileList, ScanningAppendsFilesAndPutsFoldersAfterTheFirstOfTheQueue) {
    MakeTree({"f.txt", "A\\x", "B\\x"});
    App.Wizard.LstDirs.AddItem(Folder.At("cabs\\"));
    App.Wizard.LstDirs.AddItem("waiting\\");
    App.Wizard.LstFiles.AddItem("old");
    ScanCabsFolder(App.Paths, App.Screen, App.Wizard, Folder.At("cabs\\"), "*.*");
    EXPECT_EQ((Files{Folder.At("cabs\\"), Folder.At("cabs\\B\\"), Folder.At("cabs\\A\\"), "waiting\\"}),
              Queue());
    EXPECT_EQ((Files{"old", "f.txt"}), Listed());
    EXPECT_FALSE(App.Wizard.LstFiles.Selected(1));
}

TEST_F(FileList, ScanningTrimsTheFolderAndAddsItsBackslash) {
    MakeTree({"sub\\f.txt"});
    ScanCabsFolder(App.Paths, App.Screen, App.Wizard, "  " + Folder.At("cabs\\sub") + "  ", "*.*");
    EXPECT_EQ((Files{"sub\\f.txt"}), Listed());
}

TEST_F(FileList, ScanningTakesAPattern) {
    MakeTree({"a.txt", "b.cab"});
    App.Wizard.LstDirs.AddItem(Folder.At("cabs\\"));
    ScanCabsFolder(App.Paths, App.Screen, App.Wizard, Folder.At("cabs\\"), "*.cab");
    EXPECT_EQ((Files{"b.cab"}), Listed());
}

TEST_F(FileList, EventsAreHandledAfterEachName) {
    MakeTree({"a", "b", "c"});
    FillInitialList(App.Paths, App.Screen, App.Wizard);
    // ".", ".." and the three files.
    EXPECT_EQ(5, Screen.EventPumps());
}

}  // namespace
}  // namespace velbooter::testing
