#include "src/dos/DosFiles.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <functional>

#include "src/common/Text.h"
#include "src/dos/ImportDOS.h"
#include "src/run/ProgramEnd.h"
#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {
namespace {

using Files = std::vector<std::string>;

constexpr const char* kNames[] = {
    "IO.SYS",     "COMMAND.COM", "ATTRIB.EXE",  "CHOICE.COM",  "DELTREE.EXE",  "DISKCOPY.COM", "EDIT.COM",
    "EMM386.EXE", "EXTRACT.EXE", "FC.EXE",      "FDISK.EXE",   "FORMAT.COM",   "HIMEM.SYS",    "LABEL.EXE",
    "MEM.EXE",    "MODE.COM",    "MORE.COM",    "MOVE.EXE",    "SCANDISK.EXE", "SMARTDRV.EXE", "SORT.EXE",
    "SYS.COM",    "XCOPY.EXE",   "XCOPY32.EXE", "XCOPY32.MOD",
};

class DosFilesCheck : public ApplicationTest {
 protected:
    DosFilesCheck() {
        App.Paths.WindowsFolder = Folder.MakeFolder("win") + "\\";
        App.Paths.SystemFolder = Folder.MakeFolder("win\\system") + "\\";
    }
    void WriteAll(const std::string& folder) {
        for (const char* name : kNames) Folder.Write(folder + "\\" + name, folder);
    }
    Message Missing(const std::string& name) const {
        return {"The file " + name + " couldn't be extracted successfully",
                "Critical Error",
                Buttons::Ok,
                Icon::Critical,
                Folder.At("corvane_help.chm>Down"),
                1420};
    }
    Message NoCommandFolder() const {
        return {
            "Your current windows installation doesn't contain the required\r\n"
            "DOS files needed for the Veltrane to funtion properly.\r\n"
            "Press OK to import the needed files from the Windows 98/98SE Setup CD.",
            "DOS Files no found",
            Buttons::OkCancel,
            Icon::Exclamation,
            Folder.At("corvane_help.chm>Down"),
            1420};
    }
    static void ExpectEnd(const std::function<void()>& action) {
        try {
            action();
            ADD_FAILURE() << "the program did not end";
        } catch (const ProgramEnd& end) {
            EXPECT_EQ(ExitCode::DosFilesMissing, end.Code);
        }
    }
};

TEST_F(DosFilesCheck, TheListHas25NamesInTheirOrder) {
    ASSERT_EQ(25u, kDosFiles.size());
    for (size_t i = 0; i < 25; ++i) EXPECT_STREQ(kNames[i], kDosFiles[i]);
}

TEST_F(DosFilesCheck, WithAllFilesNothingIsShown) {
    WriteAll("dos");
    CheckDOSFiles(App.Paths, App.Screen, App.Wait, App.Wizard.DlgOpen);
    EXPECT_TRUE(VerifyDOSFiles(App.Paths, App.Screen, true));
    EXPECT_TRUE(Screen.Views.empty());
}

TEST_F(DosFilesCheck, AFileThatAnImportHasLeftHalfIsImportedAgain) {
    WriteAll("dos");
    WriteAll("win\\command");
    Folder.Write("dos\\MEM.EXE", "half");
    Folder.Write("dos\\MEM.EXE.unfinished~");
    CheckDOSFiles(App.Paths, App.Screen, App.Wait, App.Wizard.DlgOpen);
    EXPECT_EQ("win\\command", Folder.Read("dos\\MEM.EXE"));
    EXPECT_FALSE(Folder.HasFile("dos\\MEM.EXE.unfinished~"));
}

TEST_F(DosFilesCheck, EveryMissingFileIsNoticed) {
    WriteAll("dos");
    for (const std::string name : kNames) {
        Folder.Remove("dos\\" + name);
        EXPECT_FALSE(VerifyDOSFiles(App.Paths, App.Screen, false)) << name;
        Folder.MakeFolder("dos\\" + name);
        EXPECT_FALSE(VerifyDOSFiles(App.Paths, App.Screen, false)) << name << " is a folder";
        Folder.Remove("dos\\" + name);
        Folder.Write("dos\\" + name);
    }
    EXPECT_TRUE(VerifyDOSFiles(App.Paths, App.Screen, false));
}

TEST_F(DosFilesCheck, TheFirstMissingFileIsReportedAndEndsTheProgram) {
    WriteAll("dos");
    Folder.Remove("dos\\MEM.EXE");
    Folder.Remove("dos\\SYS.COM");
    Screen.Expect(Missing("MEM.EXE"));
    ExpectEnd([&] { VerifyDOSFiles(App.Paths, App.Screen, true); });
}

TEST_F(DosFilesCheck, ACommandFolderIsUsedSilently) {
    WriteAll("win\\Command");
    CheckDOSFiles(App.Paths, App.Screen, App.Wait, App.Wizard.DlgOpen);
    EXPECT_EQ(25u, Folder.Tree("dos").size());
    EXPECT_EQ("win\\Command", Folder.Read("dos\\XCOPY32.MOD"));
    EXPECT_TRUE(Screen.Messages.empty());
}

TEST_F(DosFilesCheck, AFileThatTheCommandFolderLacksIsReported) {
    WriteAll("win\\Command");
    Folder.Remove("win\\Command\\XCOPY.EXE");
    Screen.Expect(Missing("XCOPY.EXE"));
    ExpectEnd([&] { CheckDOSFiles(App.Paths, App.Screen, App.Wait, App.Wizard.DlgOpen); });
    EXPECT_TRUE(Folder.HasFile("dos\\XCOPY32.MOD")) << "the others are imported";
}

TEST_F(DosFilesCheck, CancelEndsTheProgramAndLeavesTheFolderDos) {
    Screen.Expect(NoCommandFolder(), Answer::Cancel);
    ExpectEnd([&] { CheckDOSFiles(App.Paths, App.Screen, App.Wait, App.Wizard.DlgOpen); });
    EXPECT_TRUE(Folder.HasFolder("dos"));
}

TEST_F(DosFilesCheck, NothingIsCleanedUpWhenTheProgramEnds) {
    Folder.Write("Drivers.ini");
    Folder.Write("cabs\\a");
    Screen.Expect(NoCommandFolder(), Answer::Cancel);
    ExpectEnd([&] { CheckDOSFiles(App.Paths, App.Screen, App.Wait, App.Wizard.DlgOpen); });
    EXPECT_TRUE(Folder.HasFile("Drivers.ini"));
    EXPECT_TRUE(Folder.HasFile("cabs\\a"));
}

TEST_F(DosFilesCheck, AFolderWithWinComIsCopied) {
    WriteAll("cd");
    Folder.Write("cd\\WIN.COM");
    Folder.Write("cd\\BASE5.CAB");
    Screen.Expect(NoCommandFolder(), Answer::Ok);
    Screen.ExpectOpenDialog("", Folder.At("cd\\any.file"));
    CheckDOSFiles(App.Paths, App.Screen, App.Wait, App.Wizard.DlgOpen);
    EXPECT_EQ("cd", Folder.Read("dos\\IO.SYS"));
    EXPECT_TRUE(VerifyDOSFiles(App.Paths, App.Screen, false));
}

TEST_F(DosFilesCheck, AFileElsewhereReopensTheDialogPresetToBase5Cab) {
    WriteAll("cd");
    Folder.Write("cd\\WIN.COM");
    Folder.Write("other\\x");
    Screen.Expect(NoCommandFolder(), Answer::Ok);
    Screen.ExpectOpenDialog("", Folder.At("other\\x"));
    Screen.ExpectOpenDialog("BASE5.CAB", Folder.At("other\\x"));
    Screen.ExpectOpenDialog("BASE5.CAB", Folder.At("cd\\WIN.COM"));
    CheckDOSFiles(App.Paths, App.Screen, App.Wait, App.Wizard.DlgOpen);
}

TEST_F(DosFilesCheck, CancelingTheDialogEndsTheProgram) {
    Screen.Expect(NoCommandFolder(), Answer::Ok);
    Screen.ExpectOpenDialog("", std::nullopt);
    ExpectEnd([&] { CheckDOSFiles(App.Paths, App.Screen, App.Wait, App.Wizard.DlgOpen); });
}

TEST_F(DosFilesCheck, WithExpandInTheSystemFolderTheCabinetsAreExpanded) {
    for (const std::string place : {"win\\system\\expand.exe", "win\\expand.exe"}) {
        Folder.Remove("dos");
        Folder.Write(place, "only its presence counts");
        Folder.Write("cd\\BASE5.CAB");
        for (const char* name : {"SCANDISK.EXE", "FORMAT.COM", "SMARTDRV.EXE"}) {
            Folder.Write(std::string("cd\\") + name);
        }
        Folder.MakeTool("cd\\expand.exe", "expand\n");
        Screen.Expect(NoCommandFolder(), Answer::Ok);
        Screen.ExpectOpenDialog("", Folder.At("cd\\BASE5.CAB"));
        CheckDOSFiles(App.Paths, App.Screen, App.Wait, App.Wizard.DlgOpen);
        EXPECT_EQ(22u, Folder.Calls("cd\\expand.exe").size()) << place;
        Folder.Remove(place);
        Folder.Remove("cd\\expand.log");
        App.Wizard.DlgOpen.FileName = "";
    }
}

TEST_F(DosFilesCheck, WithoutExpandTheCabinetsAreExtractedWithTheCdsOwnTool) {
    Folder.Write("cd\\BASE5.CAB");
    Folder.Write("cd\\BASE4.CAB");
    for (const char* name : {"SCANDISK.EXE", "FORMAT.COM", "SMARTDRV.EXE"})
        Folder.Write(std::string("cd\\") + name);
    Folder.MakeTool("cd\\EXTRACT.EXE");
    Folder.Write("dos\\EXTRACT.do", "extract\n");
    Screen.Expect(NoCommandFolder(), Answer::Ok);
    Screen.ExpectOpenDialog("", Folder.At("cd\\readme.txt"));
    CheckDOSFiles(App.Paths, App.Screen, App.Wait, App.Wizard.DlgOpen);
    EXPECT_EQ(22u, Folder.Calls("dos\\EXTRACT.EXE").size());
    EXPECT_EQ("WINBOOT.SYS", Folder.Read("dos\\IO.SYS").substr(8)) << "from the member WINBOOT.SYS";
}

TEST_F(DosFilesCheck, AnErrorOfTheImportIsShownAndEndsTheProgram) {
    Folder.Write("cd\\BASE5.CAB");  // the CD lacks EXTRACT.EXE
    Screen.Expect(NoCommandFolder(), Answer::Ok);
    Screen.ExpectOpenDialog("", Folder.At("cd\\BASE5.CAB"));
    Screen.ExpectMessageWith({"53", "File not found", Folder.At("cd\\EXTRACT.EXE")});
    ExpectEnd([&] { CheckDOSFiles(App.Paths, App.Screen, App.Wait, App.Wizard.DlgOpen); });
}

class DosModule : public ApplicationTest {
 protected:
};

TEST_F(DosModule, TheFolderIsRebuiltFromItsPristineCopy) {
    Folder.Write("files\\dos\\old.txt");
    Folder.SetAttributes("files\\dos\\old.txt", FILE_ATTRIBUTE_READONLY);
    for (const char* file : {"a", "bin\\b", "help\\c", "menu\\d", "other\\e", "bin\\deeper\\f"}) {
        Folder.Write(std::string("files\\dos_files\\") + file);
    }
    EXPECT_TRUE(RefreshDosModuleFolder(App.Paths, App.Screen));
    EXPECT_EQ((Files{"a", "bin\\b", "help\\c", "menu\\d"}), Folder.Tree("files\\dos"));
}

TEST_F(DosModule, APristineCopyThatIsMissingGivesAnEmptyFolder) {
    EXPECT_TRUE(RefreshDosModuleFolder(App.Paths, App.Screen));
    EXPECT_EQ((Files{}), Folder.Tree("files\\dos"));
}

TEST_F(DosModule, FailuresAskTheUserAndTheLastCopysResultCounts) {
    for (const char* file : {"a", "menu\\d"}) Folder.Write(std::string("files\\dos_files\\") + file);
    LockedFile first(Folder.At("files\\dos_files\\a"));
    Screen.Expect(CopyFailure(Folder.At("files\\dos_files\\*.*")), Answer::Abort);
    EXPECT_TRUE(RefreshDosModuleFolder(App.Paths, App.Screen)) << "the other copies go on";
    EXPECT_EQ((Files{"menu\\d"}), Folder.Tree("files\\dos"));
    first.Release();
    LockedFile last(Folder.At("files\\dos_files\\menu\\d"));
    Screen.Expect(CopyFailure(Folder.At("files\\dos_files\\menu\\*.*")), Answer::Abort);
    EXPECT_FALSE(RefreshDosModuleFolder(App.Paths, App.Screen));
    EXPECT_EQ((Files{"a"}), Folder.Tree("files\\dos"));
}

}  // namespace
}  // namespace velbooter::testing
