#include "src/start/Automator.h"

#include <gtest/gtest.h>

#include "tests/src/start/BatchModeTest.h"

namespace velbooter::testing {
namespace {

using Files = std::vector<std::string>;

class BatchMode : public BatchModeTest {
 protected:
    BatchMode() { MakeDisks({{"first", ""}, {"MyDisk", ""}, {"third", ""}}); }

    static Message Summary(const std::string& values) {
        return {
            "There has been an invalid parameter,\r\n"
            "check your settings before starting the batch mode :\r\n"
            "\r\n" +
                values,
            "Check your Command Line Parameters", Buttons::OkCancel, Icon::Exclamation};
    }
};

TEST_F(BatchMode, BuildsTheNamedDiskAndEndsTheProgram) {
    EXPECT_EQ(ExitCode::Built, Run(Values("MyDisk", Elsewhere.At("out\\boot.img"))));
    EXPECT_EQ(3, App.SelectedDiskIndex);
    EXPECT_EQ(kSystemFiles + std::string("mark\\mydisk 6\n"), Folder.Read("tree.txt"));
    EXPECT_EQ(Elsewhere.At("out\\boot.img"), Image());
    EXPECT_EQ("144", Type());
    EXPECT_FALSE(App.Wait.Visible);
    EXPECT_TRUE(Screen.Messages.empty());
    ExpectCleanFolder();
}

TEST_F(BatchMode, TheWaitWindowTellsEachPhase) {
    Run(Values("MyDisk"));
    EXPECT_EQ(
        (Files{"Please wait ...", "Getting a list of Disks Configuration ...",
               "Getting Disk Configuration INI file ...", "Processing mydisk.ini file ...",
               "Getting Drivers Settings ...", "Getting files list to be copied to the floppy image ...",
               "Creating the floppy image file ...", "Preparing selected Drivers ...",
               "Preparing pre-built drivers cache ...", "Preparing new floppy image ...",
               "Copying files to floppy image ..."}),
        Screen.WaitStatuses());
    ASSERT_FALSE(Screen.Views.empty());
    for (size_t i = 0; i + 1 < Screen.Views.size(); ++i) EXPECT_TRUE(Screen.Views[i].WaitVisible) << i;
    EXPECT_FALSE(Screen.Views.back().WaitVisible);
}

TEST_F(BatchMode, TheWizardIsNeverOnItsWay) {
    App.Wizard.LstFiles.AddItem("left over");
    Run(Values("first"));
    EXPECT_EQ("IO.SYS", App.Wizard.LstFiles.List(0));
    EXPECT_EQ(4, App.Wizard.LstFiles.ListCount());
    EXPECT_FALSE(App.RunEnded);
}

TEST_F(BatchMode, ANameThatDiffersInCaseDoesNotExist) {
    Screen.Expect({"The disk \"mydisk\" doesn't exist", "Critical error", Buttons::Ok, Icon::Critical});
    EXPECT_EQ(ExitCode::UnknownDisk, Run(Values("mydisk")));
    EXPECT_TRUE(Folder.HasFolder("cabs")) << "nothing is cleaned up";
    EXPECT_TRUE(Folder.HasFile("Drivers.ini"));
    EXPECT_TRUE(Folder.Calls("bfi.exe").empty());
}

TEST_F(BatchMode, CustomBuildsTheCustomConfiguration) {
    EXPECT_EQ(ExitCode::Built, Run(Values("custom")));
    EXPECT_EQ(1, App.SelectedDiskIndex);
    EXPECT_TRUE(IsOnDisk("mark\\custom"));
}

TEST_F(BatchMode, OfTwoRowsWithOneNameTheLastWins) {
    Folder.Write(
        "files\\disklist.ini",
        "[Disks_List]\r\nCount=3\r\n[1]\r\nName=first\r\n[2]\r\nName=third\r\n[3]\r\nName=first\r\n");
    EXPECT_EQ(ExitCode::Built, Run(Values("first")));
    EXPECT_EQ(4, App.SelectedDiskIndex);
}

TEST_F(BatchMode, WithoutATargetAndAFileOfTheDiskTheDefaultIsKept) {
    for (const char* file : {"", "file=\r\n"}) {
        Folder.Remove("bfi.log");
        MakeDisks({{"first", file}});
        EXPECT_EQ(ExitCode::Built, Run(Values("first")));
        EXPECT_EQ("BootDisk.img", Image()) << file;
        EXPECT_EQ(Folder.At("BootDisk.img"), App.Wizard.TxtDest.Text) << file;
    }
}

TEST_F(BatchMode, WithoutATargetTheFileOfTheDiskIsMade) {
    const std::pair<std::string, std::string> cases[] = {
        {"net.img", Folder.At("net.img")},
        {"images\\my net.img", Folder.At("images\\my net.img")},
        {"\\net.img", Folder.Path() + "\\\\net.img"},
        {Elsewhere.At("images\\net.img"), Elsewhere.At("images\\net.img")},
    };
    for (const auto& [file, target] : cases) {
        MakeDisks({{"first", ""}, {"second", "file=" + file + "\r\n"}});
        Run(Values("second"));
        EXPECT_EQ(target, App.Wizard.TxtDest.Text);
    }
}

TEST_F(BatchMode, AGivenTargetWinsOverTheFileOfTheDisk) {
    MakeDisks({{"first", "file=" + Elsewhere.At("net.img") + "\r\n"}});
    EXPECT_EQ(ExitCode::Built, Run(Values("first", "mine.img")));
    EXPECT_EQ("mine.img", Image());
}

TEST_F(BatchMode, TheCustomDiskHasAFileInSectionZero) {
    Folder.Write("files\\disklist.ini",
                 "[Disks_List]\r\nCount=1\r\n[0]\r\nfile=my.img\r\n[1]\r\nName=first\r\nfile=first.img\r\n");
    EXPECT_EQ(ExitCode::Built, Run(Values("custom")));
    EXPECT_EQ("my.img", Image());
}

TEST_F(BatchMode, ATargetWithoutADriveIsRelativeToTheApplicationFolder) {
    EXPECT_EQ(ExitCode::Built, Run(Values("first", "images\\boot a.img")));
    EXPECT_EQ(Folder.At("images\\boot a.img"), App.Wizard.TxtDest.Text);
    EXPECT_EQ("images\\boot a.img", Image());
}

TEST_F(BatchMode, ATargetThatBeginsWithABackslashIsTakenAsRelativeToo) {
    EXPECT_EQ(ExitCode::Built, Run(Values("first", "\\boot.img")));
    EXPECT_EQ(Folder.Path() + "\\\\boot.img", App.Wizard.TxtDest.Text);
}

TEST_F(BatchMode, ATargetWithADriveIsTakenAsItIs) {
    EXPECT_EQ(ExitCode::Built, Run(Values("first", Elsewhere.At("boot.img"))));
    EXPECT_EQ(Elsewhere.At("boot.img"), Image());
}

TEST_F(BatchMode, ABuildWithoutANewImageEndsWithItsOwnCode) {
    Folder.MakeTool("bfi.exe", "exit|1\n");
    EXPECT_EQ(ExitCode::NoImage, Run(Values("first", "boot.img")));
    Folder.Write("boot.img", "of an earlier run");
    EXPECT_EQ(ExitCode::NoImage, Run(Values("first", "boot.img")));
    EXPECT_EQ("of an earlier run", Folder.Read("boot.img"));
    EXPECT_EQ("Operation completed successfully", App.Wizard.LblFinish.Caption) << "the build's own rule";
    Folder.Remove("bfi.exe");
    EXPECT_EQ(ExitCode::NoImage, Run(Values("first", "boot.img")));
}

TEST_F(BatchMode, OnlyImageTypeTwoGivesTheLargeImage) {
    const std::pair<int, const char*> cases[] = {{0, "144"}, {1, "144"}, {2, "288"}, {3, "144"}};
    for (const auto& [type, size] : cases) {
        Folder.Remove("bfi.log");
        App.SelectedDiskIndex = 0;
        ChooseOption(App.Wizard, &FrmWizard::OptFloppy);
        CommandLineValues values = Values("first");
        values.ImageType = type;
        EXPECT_EQ(ExitCode::Built, Run(values)) << type;
        EXPECT_EQ(size, Type()) << type;
    }
}

TEST_F(BatchMode, ThePluginIsAddedToTheImage) {
    Folder.Write("plugins\\extra\\plugin.txt", "p");
    CommandLineValues values = Values("first");
    values.PluginName = "extra";
    EXPECT_EQ(ExitCode::Built, Run(values));
    EXPECT_TRUE(IsOnDisk("plugin.txt"));
}

TEST_F(BatchMode, AWrongParameterShowsTheSummaryAndOkBuilds) {
    CommandLineValues values = Values("MyDisk");
    values.ParameterError = true;
    Screen.Expect(
        Summary("Disk Name : MyDisk\r\nTarget : \r\nPlugin to Apply : None\r\nImage Type : 1.44 MB\r\n"
                "Select Drivers : False\r\nLoad Product key from keyfile.txt : False\r\n"),
        Answer::Ok, [&] { EXPECT_FALSE(App.Wait.Visible); });
    EXPECT_EQ(ExitCode::Built, Run(values));
    EXPECT_EQ("144", Type());
}

TEST_F(BatchMode, CancelAtTheSummaryEndsTheProgramBeforeAnything) {
    CommandLineValues values = Values("nosuch disk", "C:\\a b.img");
    values.ParameterError = true;
    values.ImageType = 2;
    values.ShowDriverDialog = true;
    values.UseKeyFile = true;
    Screen.Expect(Summary("Disk Name : nosuch disk\r\nTarget : C:\\a b.img\r\nPlugin to Apply : None\r\n"
                          "Image Type : 2.88 MB\r\nSelect Drivers : True\r\n"
                          "Load Product key from keyfile.txt : True\r\n"),
                  Answer::Cancel);
    EXPECT_EQ(ExitCode::Refused, Run(values));
    EXPECT_FALSE(Folder.HasFolder("cabs"));
    EXPECT_TRUE(Screen.Views.empty());
}

TEST_F(BatchMode, TheSummaryDoesNotNameAGivenPlugin) {
    CommandLineValues values = Values("first");
    values.ParameterError = true;
    values.PluginName = "extra";
    Screen.Expect(Summary("Disk Name : first\r\nTarget : \r\nPlugin to Apply : \r\nImage Type : 1.44 MB\r\n"
                          "Select Drivers : False\r\nLoad Product key from keyfile.txt : False\r\n"),
                  Answer::Cancel);
    EXPECT_EQ(ExitCode::Refused, Run(values));
}

TEST_F(BatchMode, ACanceledPreparationEndsWithoutAMessageOfItsOwn) {
    LockedFile lock(Folder.At("files\\base_files\\IO.SYS"));
    Screen.Expect({"Error while copying the file :\r\n" + Folder.At("files\\base_files\\*.*"),
                   "Error While Copying", Buttons::AbortRetryIgnore, Icon::Critical},
                  Answer::Abort);
    EXPECT_EQ(ExitCode::Canceled, Run(Values("first")));
    EXPECT_TRUE(App.Wizard.LV_Disk.ListItems.empty()) << "nothing was done after";
    EXPECT_FALSE(App.Wait.Visible);
    ExpectCleanFolder();
}

TEST_F(BatchMode, ACanceledConfigurationEndsWithoutAMessageOfItsOwn) {
    Folder.Write("files\\first.ini", "[Create_CABs]\r\nsetupwin=x\r\n");
    EXPECT_EQ(ExitCode::Canceled, Run(Values("first")));
    EXPECT_EQ("Return to Previous step to Populate the list", App.Wizard.LstFiles.List(0))
        << "nothing was listed";
    EXPECT_TRUE(Folder.Calls("bfi.exe").empty());
    EXPECT_FALSE(App.Wait.Visible);
    ExpectCleanFolder();
}

TEST_F(BatchMode, AFailedStagingEndsCanceled) {
    Folder.Remove("files\\base_files\\IO.SYS");
    Screen.Expect(
        {"Error while copying the file from its Source :\r\nIO.SYS", "Error", Buttons::Ok, Icon::Critical});
    EXPECT_EQ(ExitCode::Canceled, Run(Values("first")));
    EXPECT_TRUE(Folder.Calls("bfi.exe").empty());
    EXPECT_FALSE(App.Wait.Visible);
    ExpectCleanFolder();
}

TEST_F(BatchMode, AMissingConfigurationFileIsShownOnceAndCleanedUp) {
    Folder.Remove("files\\first.ini");
    Screen.ExpectMessageWith({"53", "File not found", "first.ini"});
    EXPECT_EQ(ExitCode::InternalError, Run(Values("first")));
    EXPECT_TRUE(App.RunEnded);
    EXPECT_FALSE(App.Wait.Visible);
    ExpectCleanFolder();
}

TEST_F(BatchMode, AnAbsurdCatalogueIsShownOnceAndCleanedUp) {
    Folder.Write("files\\disklist.ini", "[Disks_List]\r\nCount=99999\r\n");
    Screen.ExpectMessageWith({"6", "Overflow"});
    EXPECT_EQ(ExitCode::InternalError, Run(Values("first")));
    ExpectCleanFolder();
}

TEST_F(BatchMode, ALockedDriverIndexIsShownOnce) {
    LockedFile lock(Folder.Write("Drivers.ini", "old"));
    Screen.ExpectMessageWith({"70", "Permission denied", "Drivers.ini"});
    EXPECT_EQ(ExitCode::InternalError, Run(Values("first")));
}

}  // namespace
}  // namespace velbooter::testing
