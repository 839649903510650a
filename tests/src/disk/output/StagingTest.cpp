#include "src/disk/output/Staging.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "src/common/RuntimeError.h"
#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {
namespace {

using Files = std::vector<std::string>;

Message SourceFailure(const std::string& entry) {
    return {"Error while copying the file from its Source :\r\n" + entry, "Error", Buttons::Ok,
            Icon::Critical};
}

Message CopyFailure(int number) {
    return {"The current Error has happend :\r\n" + RuntimeErrorText(number), "Error while Copying to Floppy",
            Buttons::AbortRetryIgnore, Icon::Critical};
}

class Staging : public ApplicationTest {
 protected:
    /// Adds an entry, and its file under cabs with its own name as the content.
    void Add(const std::string& entry, bool selected = true) {
        Folder.Write("cabs\\" + entry, entry);
        AddEntry(entry, selected);
    }
    void AddEntry(const std::string& entry, bool selected = true) {
        App.Wizard.LstFiles.AddItem(entry);
        App.Wizard.LstFiles.Select(App.Wizard.LstFiles.ListCount() - 1, selected);
    }
    bool Inject() { return InjectFilesToDir(App.Paths, App.Screen, App.Wizard, Folder.MakeFolder("out")); }
};

TEST_F(Staging, TheSelectedEntriesAreCopied) {
    Add("IO.SYS");
    Add("left.out", false);
    Add("a.txt");
    EXPECT_TRUE(Inject());
    EXPECT_EQ((Files{"IO.SYS", "a.txt"}), Folder.Tree("out"));
    EXPECT_EQ("a.txt", Folder.Read("out\\a.txt"));
}

TEST_F(Staging, TheFolderOfAnEntryIsMadeBeforeTheCopy) {
    Add("bin\\x.cab");
    Add("a\\b\\c\\y.cab");
    Add("a/z.cab");
    EXPECT_TRUE(Inject());
    EXPECT_EQ((Files{"a\\b\\c\\y.cab", "a\\z.cab", "bin\\x.cab"}), Folder.Tree("out"));
}

TEST_F(Staging, AnEntryWithoutAFolderMakesNone) {
    Add("IO.SYS");
    SetCurrentDirectoryA(Folder.MakeFolder("current\\sub").c_str());
    EXPECT_TRUE(Inject());
    EXPECT_EQ((Files{"IO.SYS"}), Folder.Tree("out"));
    EXPECT_EQ((Files{"cabs\\IO.SYS", "out\\IO.SYS"}), Folder.Tree(""));
    EXPECT_FALSE(Folder.HasFolder("out\\C")) << "the current folder's path has no place under the target";
}

TEST_F(Staging, ProgressCountsTheSelectedEntries) {
    App.Wizard.WorkProgress.Value = 77;
    Add("a");
    Add("b", false);
    Add("c");
    EXPECT_TRUE(Inject());
    EXPECT_EQ(2, App.Wizard.WorkProgress.Max);
    EXPECT_EQ(2, App.Wizard.WorkProgress.Value);
    std::vector<int> seen;
    for (const View& view : Screen.Views) {
        EXPECT_EQ(2, view.ProgressMax);
        if (seen.empty() || seen.back() != view.Progress) seen.push_back(view.Progress);
    }
    EXPECT_EQ((std::vector<int>{1, 2}), seen) << "each step is painted before its copy";
}

TEST_F(Staging, ProgressStartsAtItsMinimum) {
    App.Wizard.WorkProgress.Min = 5;
    Add("a");
    EXPECT_TRUE(Inject());
    EXPECT_EQ(6, App.Wizard.WorkProgress.Value);
}

TEST_F(Staging, WithNoEntrySelectedTheMaximumIsZeroAndTheResultTrue) {
    Add("a", false);
    EXPECT_TRUE(Inject());
    EXPECT_EQ(0, App.Wizard.WorkProgress.Max);
    EXPECT_EQ(0, App.Wizard.WorkProgress.Value);
    EXPECT_EQ((Files{}), Folder.Tree("out"));
}

TEST_F(Staging, AMissingIoSysEndsTheCopyAtTheFirstEntry) {
    AddEntry("IO.SYS");
    Add("MSDOS.SYS");
    Screen.Expect(SourceFailure("IO.SYS"));
    EXPECT_FALSE(Inject());
    EXPECT_EQ((Files{}), Folder.Tree("out"));
}

TEST_F(Staging, AnUnreadableSourceEndsTheCopyWhereItLies) {
    Add("a");
    Add("bin\\locked.cab");
    Add("z");
    LockedFile lock(Folder.At("cabs\\bin\\locked.cab"));
    Screen.Expect(SourceFailure("bin\\locked.cab"));
    EXPECT_FALSE(Inject());
    EXPECT_EQ((Files{"a"}), Folder.Tree("out"));
}

TEST_F(Staging, ACopyErrorIsShownAndIgnoreLeavesTheFileOut) {
    Add("a");
    Add("b");
    LockedFile lock(Folder.Write("out\\a", "old"));
    Screen.Expect(CopyFailure(kPermissionDenied), Answer::Ignore);
    EXPECT_TRUE(Inject());
    EXPECT_TRUE(Folder.HasFile("out\\b"));
    lock.Release();
    EXPECT_EQ("old", Folder.Read("out\\a"));
}

TEST_F(Staging, AbortEndsTheCopy) {
    Add("a");
    Add("b");
    LockedFile lock(Folder.Write("out\\a", "old"));
    Screen.Expect(CopyFailure(kPermissionDenied), Answer::Abort);
    EXPECT_FALSE(Inject());
    EXPECT_FALSE(Folder.HasFile("out\\b"));
}

TEST_F(Staging, RetryDoesTheSameEntryAgainAndCountsItAgain) {
    Add("a");
    Add("b");
    LockedFile lock(Folder.Write("out\\a", "old"));
    Screen.Expect(CopyFailure(kPermissionDenied), Answer::Retry);
    Screen.Expect(CopyFailure(kPermissionDenied), Answer::Retry, [&] { lock.Release(); });
    EXPECT_TRUE(Inject());
    EXPECT_EQ("a", Folder.Read("out\\a"));
    EXPECT_EQ("b", Folder.Read("out\\b"));
    EXPECT_EQ(4, App.Wizard.WorkProgress.Value);
    EXPECT_EQ(2, App.Wizard.WorkProgress.Max);
}

TEST_F(Staging, RetryOfASourceThatVanishedIsAnUnreadableSource) {
    Add("a");
    LockedFile lock(Folder.Write("out\\a", "old"));
    Screen.Expect(CopyFailure(kPermissionDenied), Answer::Retry, [&] { Folder.Remove("cabs\\a"); });
    Screen.Expect(SourceFailure("a"));
    EXPECT_FALSE(Inject());
}

TEST_F(Staging, AFolderThatCannotBeMadeShowsInTheCopy) {
    Add("bin\\x.cab");
    Folder.Write("out\\bin", "a file is in the way");
    Screen.ExpectMessageWith({"The current Error has happend :\r\n"}, Answer::Ignore);
    EXPECT_TRUE(Inject());
    EXPECT_EQ("a file is in the way", Folder.Read("out\\bin"));
}

TEST_F(Staging, AProtectedDestinationIsOverwritten) {
    Add("IO.SYS");
    Folder.Write("out\\IO.SYS", "an old system file");
    Folder.SetAttributes("out\\IO.SYS",
                         FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    EXPECT_TRUE(Inject());
    EXPECT_EQ("IO.SYS", Folder.Read("out\\IO.SYS"));
}

class StagingFolders : public Staging {
 protected:
    /// Returns the number of the staging folder; fails the test when its name has another form.
    std::string Number() const {
        const std::string start = Folder.At("Temp\\Velbooter");
        EXPECT_EQ(start, App.Staging.Folder.substr(0, start.size()));
        const std::string number = App.Staging.Folder.substr(start.size());
        EXPECT_FALSE(number.empty());
        EXPECT_EQ(std::string::npos, number.find_first_not_of("0123456789")) << number;
        EXPECT_TRUE(number == "0" || number[0] != '0') << number;
        EXPECT_LE(number.size(), 5u);
        return number;
    }
};

TEST_F(StagingFolders, AFreshFolderIsMadeAndFilled) {
    Add("IO.SYS");
    Add("bin\\a.cab");
    EXPECT_TRUE(CreateDiskAsDir(App.Paths, App.Screen, App.Wizard, App.Staging));
    EXPECT_EQ((Files{"IO.SYS", "bin\\a.cab"}), Folder.Tree("Temp\\Velbooter" + Number()));
}

TEST_F(StagingFolders, EveryStartTriesTheSameNames) {
    Files first;
    for (int i = 0; i < 5; ++i) {
        EXPECT_TRUE(CreateDiskAsDir(App.Paths, App.Screen, App.Wizard, App.Staging));
        first.push_back(Number());
    }
    const ApplicationFolder otherFolder;
    ScriptedDesktop otherScreen;
    Application other(otherFolder.Path(), otherScreen);
    for (const std::string& number : first) {
        EXPECT_TRUE(CreateDiskAsDir(other.Paths, other.Screen, other.Wizard, other.Staging));
        EXPECT_EQ(otherFolder.At("Temp\\Velbooter" + number), other.Staging.Folder);
    }
    // The product of two numbers of the minimal standard generator, times 100,000.
    EXPECT_EQ((Files{"0", "53617", "18361", "20496", "19547"}), first);
}

TEST_F(StagingFolders, AFolderLeftFromAnEarlierRunIsPassedOver) {
    const ApplicationFolder otherFolder;
    ScriptedDesktop otherScreen;
    Application other(otherFolder.Path(), otherScreen);
    Files names;
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(CreateDiskAsDir(other.Paths, other.Screen, other.Wizard, other.Staging));
        names.push_back(other.Staging.Folder.substr(otherFolder.Path().size() + 1));
    }
    Folder.Write(names[0] + "\\left.over");
    Folder.MakeFolder(names[1]);
    EXPECT_TRUE(CreateDiskAsDir(App.Paths, App.Screen, App.Wizard, App.Staging));
    EXPECT_EQ(Folder.At(names[2]), App.Staging.Folder);
    EXPECT_TRUE(Folder.HasFile(names[0] + "\\left.over"));
}

TEST_F(StagingFolders, AFailedCopyIsReported) {
    AddEntry("IO.SYS");
    Folder.Write("Drivers.ini");
    Screen.Expect(SourceFailure("IO.SYS"));
    EXPECT_FALSE(CreateDiskAsDir(App.Paths, App.Screen, App.Wizard, App.Staging));
    EXPECT_EQ((Files{}), Folder.Tree("Temp"));
}

class PluginInjection : public ApplicationTest {
 protected:
    PluginInjection() {
        App.Staging.Folder = Folder.MakeFolder("Temp\\Velbooter1");
        Folder.Write("Temp\\Velbooter1\\IO.SYS", "staged");
    }
    Files Staged() const { return Folder.Tree("Temp\\Velbooter1"); }
};

TEST_F(PluginInjection, ThePluginsTreeIsMergedIntoTheStagingFolder) {
    Folder.Write("plugins\\extra\\a.txt", "a");
    Folder.Write("plugins\\extra\\bin\\b.txt", "b");
    InjectPlugin(App.Paths, App.Screen, App.Staging.Folder, "extra");
    EXPECT_EQ((Files{"IO.SYS", "a.txt", "bin\\b.txt"}), Staged());
    EXPECT_EQ("b", Folder.Read("Temp\\Velbooter1\\bin\\b.txt"));
}

TEST_F(PluginInjection, AFileOfThePluginReplacesTheStagedOne) {
    Folder.Write("Temp\\Velbooter1\\bin\\x", "staged");
    Folder.Write("plugins\\extra\\IO.SYS", "plugin");
    Folder.Write("plugins\\extra\\bin\\x", "plugin");
    InjectPlugin(App.Paths, App.Screen, App.Staging.Folder, "extra");
    EXPECT_EQ("plugin", Folder.Read("Temp\\Velbooter1\\IO.SYS"));
    EXPECT_EQ("plugin", Folder.Read("Temp\\Velbooter1\\bin\\x"));
}

TEST_F(PluginInjection, ABatchFileAloneRunsAndChangesNothingOnTheDisk) {
    Folder.Write("plugins\\extra.bat", "@echo ran>\"" + Folder.At("ran.txt") + "\"\r\n");
    InjectPlugin(App.Paths, App.Screen, App.Staging.Folder, "extra");
    EXPECT_TRUE(Folder.HasFile("ran.txt"));
    EXPECT_EQ((Files{"IO.SYS"}), Staged());
}

TEST_F(PluginInjection, TheProgramRunsVisiblyInTheApplicationFolderBeforeTheCopy) {
    Folder.MakeTool("plugins\\extra.exe", "create|plugins\\extra\\made.txt\n");
    Folder.MakeFolder("plugins\\extra");
    InjectPlugin(App.Paths, App.Screen, App.Staging.Folder, "extra");
    const auto calls = Folder.Calls("plugins\\extra.exe");
    ASSERT_EQ(1u, calls.size());
    EXPECT_EQ(Folder.At("plugins\\extra.exe"), calls[0].CommandLine);
    EXPECT_EQ("shown", calls[0].Window);
    EXPECT_EQ(Folder.Path(), calls[0].WorkingFolder);
    EXPECT_EQ((Files{"IO.SYS", "made.txt"}), Staged());
}

TEST_F(PluginInjection, TheExeWinsOverTheBatchFile) {
    Folder.Write("plugins\\extra.bat", "@echo ran>\"" + Folder.At("ran.txt") + "\"\r\n");
    Folder.MakeTool("plugins\\extra.exe");
    InjectPlugin(App.Paths, App.Screen, App.Staging.Folder, "extra");
    EXPECT_EQ(1u, Folder.Calls("plugins\\extra.exe").size());
    EXPECT_FALSE(Folder.HasFile("ran.txt"));
}

TEST_F(PluginInjection, TheComWinsOverTheBatchFileAndLosesToTheExe) {
    Folder.Write("plugins\\extra.bat", "@echo ran>\"" + Folder.At("ran.txt") + "\"\r\n");
    Folder.MakeTool("plugins\\extra.com");
    InjectPlugin(App.Paths, App.Screen, App.Staging.Folder, "extra");
    ASSERT_EQ(1u, Folder.Calls("plugins\\extra.com").size());
    EXPECT_EQ(Folder.At("plugins\\extra.com"), Folder.Calls("plugins\\extra.com")[0].CommandLine);
    EXPECT_FALSE(Folder.HasFile("ran.txt"));
    Folder.MakeTool("plugins\\extra.exe");
    InjectPlugin(App.Paths, App.Screen, App.Staging.Folder, "extra");
    const auto calls = Folder.Calls("plugins\\extra.com");  // both record in one file
    ASSERT_EQ(2u, calls.size());
    EXPECT_EQ(Folder.At("plugins\\extra.exe"), calls[1].CommandLine);
}

TEST_F(PluginInjection, ANameWithSpacesGivesAnUnquotedCommandLine) {
    // Without quotes, the line starts the program whose path ends at its first space, if that exists.
    Folder.MakeTool("plugins\\my.exe");
    Folder.MakeTool("plugins\\my plugin.exe");
    InjectPlugin(App.Paths, App.Screen, App.Staging.Folder, "my plugin");
    EXPECT_EQ(0u, Folder.Calls("plugins\\my plugin.exe").size());
    EXPECT_EQ(1u, Folder.Calls("plugins\\my.exe").size());
}

TEST_F(PluginInjection, ANameWithSpacesRunsItsProgram) {
    Folder.MakeTool("plugins\\my plugin.exe");
    Folder.Write("plugins\\my plugin\\a.txt");
    InjectPlugin(App.Paths, App.Screen, App.Staging.Folder, "my plugin");
    EXPECT_EQ(1u, Folder.Calls("plugins\\my plugin.exe").size());
    EXPECT_EQ((Files{"IO.SYS", "a.txt"}), Staged());
}

TEST_F(PluginInjection, AMissingPluginAddsNothingSilently) {
    InjectPlugin(App.Paths, App.Screen, App.Staging.Folder, "missing");
    EXPECT_EQ((Files{"IO.SYS"}), Staged());
}

TEST_F(PluginInjection, AFailingProgramOrCopyGoesOnSilently) {
    Folder.MakeTool("plugins\\extra.exe", "exit|5\n");
    Folder.Write("plugins\\extra\\IO.SYS", "plugin");
    LockedFile lock(Folder.At("Temp\\Velbooter1\\IO.SYS"));
    InjectPlugin(App.Paths, App.Screen, App.Staging.Folder, "extra");
    EXPECT_FALSE(App.RunEnded);
    EXPECT_TRUE(Screen.Messages.empty());
}

TEST_F(PluginInjection, AProgramThatCannotStartGoesOnSilently) {
    Folder.Write("plugins\\extra.exe", "this is no program");
    Folder.Write("plugins\\extra\\a.txt");
    InjectPlugin(App.Paths, App.Screen, App.Staging.Folder, "extra");
    EXPECT_EQ((Files{"IO.SYS", "a.txt"}), Staged());
}

}  // namespace
}  // namespace velbooter::testing
