#include "src/start/Main.h"

#include <gtest/gtest.h>

#include <optional>

#include "src/common/Folders.h"
#include "src/dos/ImportDOS.h"
#include "src/run/ProgramEnd.h"
#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {
namespace {

class ProgramStart : public ApplicationTest {
 protected:
    void WriteDosFiles() {
        for (const char* name : kDosFiles) Folder.Write(std::string("dos\\") + name);
    }
    void MakeDisk() {
        Folder.Write("files\\disklist.ini", "[Disks_List]\r\nCount=1\r\n[1]\r\nName=mydisk\r\n");
        Folder.Write("files\\mydisk.ini", "[Copy_Files]\r\nIO.SYS=IO.SYS\r\nCOMMAND.COM=COMMAND.COM\r\n");
        Folder.Write("files\\base_files\\MSDOS.SYS");
        Folder.MakeTool("bfi.exe", "tree|tree.txt\nimage\n");
    }
    /// Returns how the program has ended; nothing when it continues with its wizard.
    std::optional<ExitCode> Start(const std::string& commandLine) {
        const SingleInstance instance(Folder.Path());
        try {
            Main(App, instance, commandLine);
        } catch (const ProgramEnd& end) {
            return end.Code;
        }
        return std::nullopt;
    }
    static Message OptionError(const std::string& text) {
        return {text, "Command Line options Error", Buttons::Ok, Icon::None};
    }
};

TEST_F(ProgramStart, ASecondInstanceIsRefusedBeforeAnythingElse) {
    const SingleInstance first(Folder.Path());
    Screen.Expect({"The Veltrane is already running", "Already Running", Buttons::Ok, Icon::Critical});
    EXPECT_EQ(ExitCode::AlreadyRunning, Start("mydisk")) << "the DOS files are missing too";
    EXPECT_EQ((std::vector<std::string>{}), Folder.Tree(""));
    EXPECT_FALSE(Folder.HasFolder("dos"));
    EXPECT_EQ("", App.Paths.WindowsFolder);
}

TEST_F(ProgramStart, MissingDosFilesEndTheProgramBeforeTheCommandLineIsRead) {
    Screen.ExpectMessageWith({"Press OK to import the needed files"}, Answer::Cancel);
    EXPECT_EQ(ExitCode::DosFilesMissing, Start("-t"));
    EXPECT_EQ(GetWindowsFolder(), App.Paths.WindowsFolder);
    EXPECT_EQ(GetSystemFolder(), App.Paths.SystemFolder);
}

TEST_F(ProgramStart, ACommandLineOfOneSpaceIsABatchRunWithoutAName) {
    WriteDosFiles();
    Screen.Expect(OptionError("The disk name is not specified"));
    EXPECT_EQ(ExitCode::Refused, Start(" "));
    EXPECT_FALSE(Folder.HasFolder("cabs")) << "nothing was prepared";
}

TEST_F(ProgramStart, ACommandLineBuildsItsDisk) {
    WriteDosFiles();
    MakeDisk();
    EXPECT_EQ(ExitCode::Built, Start("-t 288 mydisk out\\two.img"));
    const auto calls = Folder.Calls("bfi.exe");
    ASSERT_EQ(1u, calls.size());
    EXPECT_NE(std::string::npos, calls[0].CommandLine.find(" -t=288 -f=\"out\\two.img\" Temp\\Velbooter"));
    EXPECT_EQ("COMMAND.COM 0\nIO.SYS 0\nMSDOS.SYS 0\n", Folder.Read("tree.txt"));
}

TEST_F(ProgramStart, AWrongImageTypeIsReportedThenSummarisedThenBuiltSmall) {
    WriteDosFiles();
    MakeDisk();
    Screen.Expect(OptionError("Invalid Image type: 360"));
    Screen.Expect({"There has been an invalid parameter,\r\n"
                   "check your settings before starting the batch mode :\r\n"
                   "\r\n"
                   "Disk Name : mydisk\r\nTarget : \r\nPlugin to Apply : None\r\nImage Type : 1.44 MB\r\n"
                   "Select Drivers : False\r\nLoad Product key from keyfile.txt : False\r\n",
                   "Check your Command Line Parameters", Buttons::OkCancel, Icon::Exclamation},
                  Answer::Ok);
    EXPECT_EQ(ExitCode::Built, Start("-t 360 mydisk"));
    EXPECT_NE(std::string::npos, Folder.Calls("bfi.exe").at(0).CommandLine.find(" -t=144 "));
}

TEST_F(ProgramStart, AnEmptyCommandLineShowsTheWizardOnAPreparedFolder) {
    WriteDosFiles();
    MakeDisk();
    EXPECT_EQ(std::nullopt, Start(""));
    EXPECT_TRUE(App.Wizard.Visible);
    EXPECT_TRUE(App.Wizard.FraMain[kWelcomePage].Visible);
    EXPECT_EQ(Folder.At("BootDisk.img"), App.Wizard.TxtDest.Text);
    EXPECT_TRUE(Folder.HasFile("cabs\\MSDOS.SYS"));
    EXPECT_TRUE(Folder.Calls("bfi.exe").empty());
}

TEST_F(ProgramStart, ABatchRunNeverShowsTheWizard) {
    WriteDosFiles();
    MakeDisk();
    EXPECT_EQ(ExitCode::Built, Start("mydisk"));
    EXPECT_FALSE(App.Wizard.Visible);
}

TEST_F(ProgramStart, AFailedPreparationIsShownOnceAndTheWizardStandsOnItsFinalPage) {
    WriteDosFiles();
    MakeDisk();
    LockedFile lock(Folder.Write("Drivers.ini", "old"));
    Screen.ExpectMessageWith({"70", "Permission denied", "Drivers.ini"});
    EXPECT_EQ(std::nullopt, Start(""));
    EXPECT_TRUE(App.RunEnded);
    EXPECT_TRUE(App.Wizard.Visible);
    EXPECT_FALSE(App.Wizard.FraMain[kWelcomePage].Visible);
    EXPECT_TRUE(App.Wizard.FraMain[kFinishedPage].Visible);
}

TEST_F(ProgramStart, ACancelledPreparationShowsTheWizardOnItsFinalPage) {
    WriteDosFiles();
    LockedFile lock(Folder.Write("files\\base_files\\MSDOS.SYS", "locked"));
    Screen.ExpectMessageWith({"base_files"}, Answer::Abort);
    EXPECT_EQ(std::nullopt, Start(""));
    EXPECT_TRUE(App.Wizard.FraMain[kFinishedPage].Visible);
    EXPECT_EQ("Operation canceled", App.Wizard.LblFinish.Caption);
}

}  // namespace
}  // namespace velbooter::testing
