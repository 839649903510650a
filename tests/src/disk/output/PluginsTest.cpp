#include "src/disk/output/Plugins.h"

#include <gtest/gtest.h>

#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {
namespace {

using Files = std::vector<std::string>;

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

TEST_F(PluginInjection, ANameWithBlanksGivesAnUnquotedCommandLine) {
    // Without quotes, the line starts the program whose path ends at its first space, if that exists.
    Folder.MakeTool("plugins\\my.exe");
    Folder.MakeTool("plugins\\my plugin.exe");
    InjectPlugin(App.Paths, App.Screen, App.Staging.Folder, "my plugin");
    EXPECT_EQ(0u, Folder.Calls("plugins\\my plugin.exe").size());
    EXPECT_EQ(1u, Folder.Calls("plugins\\my.exe").size());
}

TEST_F(PluginInjection, ANameWithBlanksRunsItsProgram) {
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
