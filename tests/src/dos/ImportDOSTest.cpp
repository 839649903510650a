#include "src/dos/ImportDOS.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>

#include "src/common/Folders.h"
#include "src/common/Paths.h"
#include "src/common/RuntimeError.h"
#include "src/common/Text.h"
#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {
namespace {

using Files = std::vector<std::string>;

class DosImport : public ApplicationTest {
 protected:
    static bool IsPlain(const std::string& name) {
        return name == "SCANDISK.EXE" || name == "FORMAT.COM" || name == "SMARTDRV.EXE";
    }
    void MakePlainFiles() {
        for (const std::string name : kDosFiles) {
            if (IsPlain(name)) Folder.Write("cd\\" + name, "plain");
        }
        Folder.MakeFolder("dos");
    }
    static Files Statuses(bool withCheck) {
        Files texts;
        int i = 0;
        for (const std::string name : kDosFiles) {
            texts.push_back("Please wait ... Importing " + name + " (" + std::to_string(++i) + "/25)");
        }
        if (withCheck) texts.push_back("Please wait ... Checking import process");
        return texts;
    }
    /// Compares the painted statuses, and expects that the wait window showed them.
    void ExpectProgress() {
        Files painted = Screen.WaitStatuses();
        // The window may have been painted with its first text, and once more after the last one.
        if (!painted.empty() && painted.front() == "Please wait ...") painted.erase(painted.begin());
        const bool withCheck = painted.size() == 26;
        EXPECT_EQ(painted, Statuses(withCheck));
        EXPECT_FALSE(App.Wait.Visible) << "closed at the end";
        for (const View& view : Screen.Views) {
            if (view.WaitStatus.starts_with("Please wait ... Importing")) {
                EXPECT_TRUE(view.WaitVisible);
            }
        }
    }
};

class ImportWithExtract : public DosImport {
 protected:
    void Import(const std::string& source) {
        MakePlainFiles();
        Folder.Write("cd\\base4.cab");
        Folder.MakeTool("cd\\EXTRACT.EXE");
        Folder.Write("dos\\EXTRACT.do", "extract\n");
        ImportDOSFilesWithExtract(App.Paths, App.Screen, App.Wait, source);
    }
};

TEST_F(ImportWithExtract, EveryCommandLineIsExact) {
    Import(Folder.At("cd"));
    const std::string cabinet = UpperCase(GetShortPath(Folder.At("cd\\BASE4.CAB")));
    Files expected, actual;
    for (const std::string name : kDosFiles) {
        if (IsPlain(name)) continue;
        const std::string member = name == "IO.SYS" ? "WINBOOT.SYS" : name;
        expected.push_back(Folder.At("dos\\extract.exe") + " /y /a " + cabinet + " " + member + " /l DOS\\");
    }
    for (const ToolCall& call : Folder.Calls("dos\\EXTRACT.EXE")) {
        actual.push_back(call.CommandLine);
        EXPECT_EQ("hidden", call.Window);
        EXPECT_EQ(Folder.Path(), call.WorkingFolder);
    }
    EXPECT_EQ(expected, actual);
}

TEST_F(ImportWithExtract, AllFilesArriveAndThreeOfThemAsPlainCopies) {
    Import(Folder.At("cd\\"));
    for (const std::string name : kDosFiles) EXPECT_TRUE(Folder.HasFile("dos\\" + name)) << name;
    for (const char* name : {"SCANDISK.EXE", "FORMAT.COM", "SMARTDRV.EXE"}) {
        EXPECT_EQ("plain", Folder.Read(std::string("dos\\") + name));
    }
    EXPECT_EQ(Folder.Read("cd\\EXTRACT.EXE"), Folder.Read("dos\\EXTRACT.EXE"));
}

TEST_F(ImportWithExtract, IoSysComesFromWinbootSysAndReplacesAnOldOne) {
    Folder.Write("dos\\IO.SYS", "old");
    Folder.SetAttributes("dos\\IO.SYS",
                         FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    Import(Folder.At("cd"));
    EXPECT_EQ("made by WINBOOT.SYS", Folder.Read("dos\\IO.SYS"));
    EXPECT_FALSE(Folder.HasFile("dos\\WINBOOT.SYS"));
}

TEST_F(ImportWithExtract, NoMarkOrCopyStaysBeside) {
    Import(Folder.At("cd"));
    const Files files = Folder.Tree("dos");
    for (const std::string& file : files) EXPECT_EQ(std::string::npos, file.find('~')) << file;
    EXPECT_EQ(1, std::count(files.begin(), files.end(), "IO.SYS")) << "in capitals";
}

TEST_F(ImportWithExtract, AToolThatLeavesNothingIsNoErrorYet) {
    MakePlainFiles();
    Folder.Write("dos\\WINBOOT.SYS", "half of an earlier import");
    Folder.MakeTool("cd\\EXTRACT.EXE");
    ImportDOSFilesWithExtract(App.Paths, App.Screen, App.Wait, Folder.At("cd"));
    EXPECT_FALSE(Folder.HasFile("dos\\IO.SYS"));
    EXPECT_FALSE(Folder.HasFile("dos\\WINBOOT.SYS"));
}

// The tool finds the mark that an interruption would leave.
TEST_F(ImportWithExtract, WhileAToolWritesAFileIsMarked) {
    MakePlainFiles();
    Folder.MakeTool("cd\\EXTRACT.EXE");
    Folder.Write("dos\\EXTRACT.do", "tree|seen.txt\n");
    Folder.MakeFolder("DOS");
    ImportDOSFilesWithExtract(App.Paths, App.Screen, App.Wait, Folder.At("cd"));
    const std::string seen = Folder.Read("seen.txt");
    EXPECT_NE(std::string::npos, seen.find("COPY32.MOD.unfinished~")) << seen;
    EXPECT_EQ(std::string::npos, seen.find("COPY32.EXE.unfinished~"))
        << "of the last call one mark alone: " << seen;
}

class UnfinishedImport : public DosImport {};

TEST_F(UnfinishedImport, HalfFilesAndMarksGo) {
    Folder.Write("dos\\IO.SYS", "half");
    Folder.Write("dos\\IO.SYS.unfinished~");
    Folder.Write("dos\\MEM.EXE", "whole");
    Folder.Write("dos\\MEM.EXE.copy~", "half");
    Folder.Write("dos\\FC.EXE.unfinished~");
    DeleteUnfinishedDosFiles(App.Paths);
    EXPECT_EQ((Files{"MEM.EXE"}), Folder.Tree("dos"));
    EXPECT_EQ("whole", Folder.Read("dos\\MEM.EXE"));
}

TEST_F(ImportWithExtract, EachFileIsAnnounced) {
    Import(Folder.At("cd"));
    ExpectProgress();
}

TEST_F(ImportWithExtract, ACdWithoutTheToolIsAnError) {
    MakePlainFiles();
    try {
        ImportDOSFilesWithExtract(App.Paths, App.Screen, App.Wait, Folder.At("cd"));
        ADD_FAILURE();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(kFileNotFound, error.Number);
    }
}

class ImportWithExpand : public DosImport {
 protected:
    // A program in the current folder is found before the system's own.
    void Import(const std::string& source) {
        MakePlainFiles();
        Folder.MakeTool("cd\\expand.exe", "expand\n");
        ImportDOSFilesWithExpand(App.Paths, App.Screen, App.Wait, source);
    }
};

TEST_F(ImportWithExpand, EveryCommandLineIsExact) {
    Import(Folder.At("cd"));
    Files expected, actual;
    for (const std::string name : kDosFiles) {
        if (IsPlain(name)) continue;
        const std::string member = name == "IO.SYS" ? "WINBOOT.SYS" : name;
        expected.push_back("expand.exe *.cab -f:" + member + " \"" + Folder.At("dos\\") + "\"");
    }
    for (const ToolCall& call : Folder.Calls("cd\\expand.exe")) {
        actual.push_back(call.CommandLine);
        EXPECT_EQ("hidden", call.Window);
        EXPECT_EQ(Folder.At("cd"), call.WorkingFolder);
    }
    EXPECT_EQ(expected, actual);
}

TEST_F(ImportWithExpand, AllFilesArriveAndIoSysFromWinbootSys) {
    Folder.Write("dos\\IO.SYS", "old");
    Import(Folder.At("cd\\"));
    for (const std::string name : kDosFiles) EXPECT_TRUE(Folder.HasFile("dos\\" + name)) << name;
    EXPECT_EQ("made by WINBOOT.SYS", Folder.Read("dos\\IO.SYS"));
    EXPECT_FALSE(Folder.HasFile("dos\\WINBOOT.SYS"));
    EXPECT_EQ("plain", Folder.Read("dos\\FORMAT.COM"));
}

TEST_F(ImportWithExpand, EachFileIsAnnounced) {
    Import(Folder.At("cd"));
    ExpectProgress();
}

class ImportByCopy : public DosImport {
 protected:
    ImportByCopy() { Folder.MakeFolder("dos"); }
};

TEST_F(ImportByCopy, TheCommandFolderWinsOverTheFolderItself) {
    Folder.Write("win\\MEM.EXE", "windows folder");
    Folder.Write("win\\SYS.COM", "windows folder");
    Folder.Write("win\\command\\MEM.EXE", "command folder");
    CopyDOSFiles(App.Paths, App.Screen, App.Wait, Folder.At("win"));
    EXPECT_EQ((Files{"MEM.EXE", "SYS.COM"}), Folder.Tree("dos"));
    EXPECT_EQ("command folder", Folder.Read("dos\\MEM.EXE"));
    EXPECT_EQ("windows folder", Folder.Read("dos\\SYS.COM"));
}

TEST_F(ImportByCopy, AnOldFileIsReplaced) {
    Folder.Write("dos\\MEM.EXE", "old and longer");
    Folder.SetAttributes("dos\\MEM.EXE", FILE_ATTRIBUTE_READONLY);
    Folder.Write("win\\MEM.EXE", "new");
    CopyDOSFiles(App.Paths, App.Screen, App.Wait, Folder.At("win\\"));
    EXPECT_EQ("new", Folder.Read("dos\\MEM.EXE"));
}

TEST_F(ImportByCopy, AFileFoundNowhereIsSkippedSilently) {
    CopyDOSFiles(App.Paths, App.Screen, App.Wait, Folder.MakeFolder("win"));
    EXPECT_EQ((Files{}), Folder.Tree("dos"));
}

TEST_F(ImportByCopy, EachFileIsAnnounced) {
    CopyDOSFiles(App.Paths, App.Screen, App.Wait, Folder.MakeFolder("win"));
    ExpectProgress();
}

TEST_F(ImportByCopy, AFailedCopyIsAnError) {
    Folder.Write("win\\MEM.EXE", "new");
    LockedFile lock(Folder.Write("dos\\MEM.EXE", "old"));
    try {
        CopyDOSFiles(App.Paths, App.Screen, App.Wait, Folder.At("win"));
        ADD_FAILURE();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(kPermissionDenied, error.Number);
    }
}

}  // namespace
}  // namespace velbooter::testing
