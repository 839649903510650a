#include "src/ui/PageWalk.h"

#include <gtest/gtest.h>

#include "src/common/RuntimeError.h"
#include "src/run/RunEnd.h"
#include "src/start/BuildRun.h"
#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {
namespace {

/// An application folder with a custom disk and one disk of the catalogue, which each test may give the setup
/// modules.
class PageWalk : public ApplicationTest {
 protected:
    static constexpr int kCustom = 0;
    static constexpr int kCatalogue = 1;

    PageWalk() {
        Folder.Write(
            "files\\disklist.ini",
            "[Disks_List]\r\nCount=2\r\n[1]\r\nName=First\r\n[2]\r\nName=second\r\nfile=second.img\r\n");
        for (const char* name : {"IO.SYS", "MSDOS.SYS", "COMMAND.COM"})
            Folder.Write(std::string("files\\base_files\\") + name, name);
        for (const char* file : {"key_template.inf", "winme_template.inf", "win2k_template.inf"})
            Folder.Write(std::string("files\\inf_files\\") + file, "[Setup]\r\n");
        Folder.MakeFolder("files\\setupwin\\bin");
        Folder.MakeFolder("files\\setupnt\\bin");
        Folder.Write("keyfile.txt", "[Win9xInfo]\r\nOwnerName=Key File\r\n");
        Folder.MakeTool("cabarc.exe", "create|cabs\\lib\\setupwin.cab\ncreate|cabs\\lib\\setupnt.cab\n");
        for (const char* disk : {"custom", "first", "second"}) GiveModules(disk, "");
        InitApp(App);
    }
    /// Writes the configuration of a disk: a copy, and lines of [Create_CABs].
    void GiveModules(const std::string& disk, const std::string& modules) {
        Folder.Write("files\\" + disk + ".ini", "[Copy_Files]\r\nfiles\\base_files\\IO.SYS=mark\\" + disk +
                                                    "\r\n[Create_CABs]\r\n" + modules);
    }
    void Next(int times = 1) {
        for (int i = 0; i < times; ++i) CmdNext_Click(App);
    }
    void Back(int times = 1) {
        for (int i = 0; i < times; ++i) CmdBack_Click(App);
    }
    /// Goes to the drivers page with the disk at the 0-based row `row`.
    void GoToDrivers(size_t row) {
        Next();
        Choose(row);
        Next();
    }
    void Choose(size_t row) {
        auto& rows = App.Wizard.LV_Disk.ListItems;
        for (ListItem& item : rows) item.Selected = false;
        rows.at(row).Selected = true;
    }
    /// Returns the one visible page; -1 when there are none or several.
    int Page() const {
        int page = -1;
        for (int i = 0; i < kPageCount; ++i) {
            if (!App.Wizard.FraMain[static_cast<size_t>(i)].Visible) continue;
            if (page != -1) return -1;
            page = i;
        }
        return page;
    }
    bool HasSetupNT() const { return Folder.HasFile("cabs\\lib\\setupnt.cab"); }
};

TEST_F(PageWalk, LoadingADiskHidesTheDriversOfTheFormer) {
    GoToDrivers(kCustom);
    App.Drivers.Visible = true;
    Back();
    EXPECT_TRUE(App.Drivers.Visible) << "turning back changes no choice";
    Next();
    EXPECT_FALSE(App.Drivers.Visible);
}

TEST_F(PageWalk, DestinationPageTellsOfAnImageBeforeAnyClick) {
    GoToDrivers(kCatalogue);
    EXPECT_EQ("Formating Floppy Disk", App.Wizard.LblMsg3.Caption);
    Next();
    EXPECT_EQ(kDestinationPage, Page());
    EXPECT_EQ("Preparing new floppy image", App.Wizard.LblMsg3.Caption);
    EXPECT_EQ("Copying files to floppy image", App.Wizard.LblMsg4.Caption);
    EXPECT_TRUE(App.Wizard.TxtDest.Enabled);
}

TEST_F(PageWalk, DestinationPageKeepsTheChoiceOfAFloppy) {
    GoToDrivers(kCatalogue);
    Next();
    ChooseOption(App.Wizard, &FrmWizard::OptFloppy);
    Back();
    Next();
    EXPECT_TRUE(App.Wizard.OptFloppy.Value);
    EXPECT_FALSE(App.Wizard.TxtDest.Enabled);
}

TEST_F(PageWalk, BeginsOnTheWelcomePageWithBackDisabled) {
    EXPECT_EQ(0, Page());
    EXPECT_EQ(0, App.CurrentStep);
    EXPECT_FALSE(App.Wizard.CmdBack.Enabled);
    EXPECT_TRUE(App.Wizard.CmdNext.Visible);
    EXPECT_FALSE(App.Wizard.CmdFinish.Visible);
}

TEST_F(PageWalk, TheFirstNextListsTheDisksAndEnablesBack) {
    Next();
    EXPECT_EQ(1, Page());
    EXPECT_EQ(3u, App.Wizard.LV_Disk.ListItems.size());
    EXPECT_TRUE(App.Wizard.CmdBack.Enabled);
}

TEST_F(PageWalk, BackFromTheDiskPageDisablesBack) {
    Next();
    Back();
    EXPECT_EQ(0, Page());
    EXPECT_FALSE(App.Wizard.CmdBack.Enabled);
}

TEST_F(PageWalk, BackOnTheFirstPageStaysThere) {
    Back();
    EXPECT_EQ(0, Page());
    EXPECT_EQ(0, App.CurrentStep);
}

TEST_F(PageWalk, LeavingTheDiskPageLoadsTheDiskAndItsDriverSettings) {
    GoToDrivers(2);
    EXPECT_EQ(2, Page());
    EXPECT_EQ(3, App.SelectedDiskIndex);
    EXPECT_TRUE(Folder.HasFile("cabs\\mark\\second"));
    EXPECT_EQ(Folder.At("second.img"), App.Wizard.TxtDest.Text);
    EXPECT_EQ("Press Next to re-populate the files list", App.Wizard.LblStatus.Caption);
    const auto statuses = Screen.WizardStatuses();
    EXPECT_NE(statuses.end(), std::find(statuses.begin(), statuses.end(),
                                        "Please Wait ... Preparing Default Drivers Settings"));
}

TEST_F(PageWalk, TheNameOfTheDiskIsLoweredForItsFile) {
    GoToDrivers(kCatalogue);
    EXPECT_TRUE(Folder.HasFile("cabs\\mark\\first"));
}

TEST_F(PageWalk, OfSeveralSelectedDisksTheLastCounts) {
    Next();
    Choose(1);
    App.Wizard.LV_Disk.ListItems[2].Selected = true;
    Next();
    EXPECT_EQ(3, App.SelectedDiskIndex);
}

TEST_F(PageWalk, WithoutASelectionTheFormerDiskStays) {
    GoToDrivers(2);
    Back();
    for (ListItem& item : App.Wizard.LV_Disk.ListItems) item.Selected = false;
    Next();
    EXPECT_EQ(3, App.SelectedDiskIndex);
    EXPECT_EQ(2, Page());
}

TEST_F(PageWalk, WithoutAnyDiskEverSelectedThePageStaysAndSaysSo) {
    Next();
    for (ListItem& item : App.Wizard.LV_Disk.ListItems) item.Selected = false;
    Next();
    EXPECT_EQ(1, Page());
    EXPECT_EQ("Select a disk configuration, then press Next", App.Wizard.LblStatus.Caption);
}

TEST_F(PageWalk, NextOnTheDiskPageAgainLoadsTheNewlySelectedDisk) {
    GoToDrivers(kCatalogue);
    Back();
    Choose(2);
    Next();
    EXPECT_EQ(3, App.SelectedDiskIndex);
    EXPECT_TRUE(Folder.HasFile("cabs\\mark\\second"));
    EXPECT_TRUE(Folder.HasFile("cabs\\mark\\first")) << "another disk does not empty the tree";
}

TEST_F(PageWalk, NothingOfTheDiskLookedAtBeforeStaysSelected) {
    Folder.Write("drivers\\NDIS\\e100b.cab");
    Folder.Write(
        "files\\disklist.ini",
        "[Disks_List]\r\nCount=2\r\n[0]\r\nndis=1\r\n[1]\r\nName=First\r\nndis=1\r\n[2]\r\nName=second\r\n");
    Folder.Write("files\\custom.ini", "[Copy_Files]\r\nfiles\\base_files\\IO.SYS=x\r\n[DefaultDrivers]\r\n");
    GoToDrivers(kCustom);
    EXPECT_EQ("[NDIS]\r\nE100B=0\r\n", Folder.Read("Drivers.ini"));
    Back();
    Choose(kCatalogue);
    Next();
    EXPECT_EQ("[NDIS]\r\nE100B=1\r\n", Folder.Read("Drivers.ini"));
}

TEST_F(PageWalk, TheStepLinesAreThoseOfAnImageOnceTheDestinationIsSeen) {
    GoToDrivers(kCatalogue);
    Next();
    EXPECT_EQ(5, Page());
    EXPECT_EQ("Preparing new floppy image", App.Wizard.LblMsg3.Caption);
    EXPECT_EQ("Copying files to floppy image", App.Wizard.LblMsg4.Caption);
}

TEST_F(PageWalk, CustomDiskWithSetupWalksEveryPage) {
    GiveModules("custom", "setupwin=LIB\r\n");
    GoToDrivers(kCustom);
    Next();
    EXPECT_EQ(3, Page());
    EXPECT_EQ("Key File", App.Wizard.TxtOwner.Text);
    Next();
    EXPECT_EQ(4, Page());
    EXPECT_TRUE(App.Wizard.CmdNext.Visible);
    Next();
    EXPECT_EQ(5, Page());
    EXPECT_TRUE(App.Wizard.CmdFinish.Visible);
    EXPECT_FALSE(App.Wizard.CmdNext.Visible);
    Back();
    EXPECT_EQ(4, Page());
    EXPECT_TRUE(App.Wizard.CmdNext.Visible);
    EXPECT_FALSE(App.Wizard.CmdFinish.Visible);
    Back();
    EXPECT_EQ(3, Page());
    Back();
    EXPECT_EQ(2, Page());
}

TEST_F(PageWalk, CustomDiskWithoutSetupSkipsTheSetupPage) {
    GiveModules("custom", "setupnt=LIB\r\n");
    GoToDrivers(kCustom);
    Next();
    EXPECT_EQ(4, Page());
    EXPECT_TRUE(HasSetupNT()) << "the work of the skipped page runs";
    EXPECT_EQ("IO.SYS", App.Wizard.LstFiles.List(0));
    Next();
    EXPECT_EQ(5, Page());
    Back();
    EXPECT_EQ(4, Page());
    Back();
    EXPECT_EQ(2, Page());
}

TEST_F(PageWalk, CatalogueDiskWithSetupSkipsTheFilesPage) {
    GiveModules("first", "setupwin=LIB\r\n");
    GoToDrivers(kCatalogue);
    Next();
    EXPECT_EQ(3, Page());
    Next();
    EXPECT_EQ(5, Page());
    EXPECT_TRUE(App.Wizard.CmdFinish.Visible);
    EXPECT_TRUE(Folder.HasFile("cabs\\lib\\setupwin.cab"));
    Back();
    EXPECT_EQ(3, Page());
    EXPECT_TRUE(App.Wizard.CmdNext.Visible);
}

TEST_F(PageWalk, CatalogueDiskWithoutSetupSkipsBothPages) {
    GiveModules("first", "setupnt=LIB\r\n");
    GoToDrivers(kCatalogue);
    Next();
    EXPECT_EQ(5, Page());
    EXPECT_TRUE(HasSetupNT()) << "CreateSetupNT runs when Next leaves the drivers page";
    EXPECT_TRUE(App.Wizard.CmdFinish.Visible);
    Back();
    EXPECT_EQ(2, Page());
    EXPECT_TRUE(App.Wizard.CmdNext.Visible);
    Next();
    EXPECT_EQ(5, Page());
}

TEST_F(PageWalk, BothSetupModulesAreMadeWhenTheSetupPageIsLeft) {
    GiveModules("first", "setupwin=LIB\r\nsetupnt=LIB\r\n");
    GoToDrivers(kCatalogue);
    Next();
    EXPECT_FALSE(HasSetupNT());
    App.Wizard.TxtOwner.Text = "Somebody else";
    Next();
    EXPECT_TRUE(HasSetupNT());
    EXPECT_NE(std::string::npos, Folder.Read("files\\setupwin\\bin\\def.inf").find("\"Somebody else\""));
}

TEST_F(PageWalk, WithoutAKeyFileTheRegistryFillsTheSetupPage) {
    Folder.Remove("keyfile.txt");
    GiveModules("first", "setupwin=LIB\r\n");
    GoToDrivers(kCatalogue);
    App.Wizard.TxtPCName.Text = "kept?";
    Next();
    EXPECT_EQ("", App.Wizard.TxtPCName.Text) << "a missing value empties its field";
}

TEST_F(PageWalk, NothingIsValidatedBeforeNext) {
    GiveModules("first", "setupwin=LIB\r\n");
    GoToDrivers(kCatalogue);
    Next();
    App.Wizard.TxtOwner.Text = "";
    App.Wizard.TxtKeyPart1.Text = "";
    Next();
    EXPECT_EQ(5, Page());
    EXPECT_TRUE(Screen.Messages.empty());
}

TEST_F(PageWalk, AStepThatCancelsLeavesTheFinalPageAlone) {
    Folder.Write("files\\first.ini", "[Create_CABs]\r\nsetupwin=LIB\r\n");
    GoToDrivers(kCatalogue);
    EXPECT_TRUE(App.RunEnded);
    EXPECT_EQ(6, Page());
    EXPECT_EQ("Operation canceled", App.Wizard.LblFinish.Caption);
    EXPECT_FALSE(App.Wizard.CmdNext.Visible);
    EXPECT_TRUE(App.Wizard.CmdFinish.Visible);
    EXPECT_FALSE(Folder.HasFolder("cabs"));
}

TEST_F(PageWalk, AMissingConfigurationFileIsShownOnceAndEndsOnTheFinalPage) {
    Folder.Remove("files\\first.ini");
    Next();
    Choose(kCatalogue);
    Screen.ExpectMessageWith({"53", "first.ini"});
    EXPECT_FALSE(RunGuarded(App, [&] { Next(); }));
    EXPECT_EQ(6, Page());
    EXPECT_EQ("Operation canceled", App.Wizard.LblFinish.Caption);
}

TEST_F(PageWalk, AnOpenHelpWindowFollowsThePages) {
    Next();
    EXPECT_TRUE(Screen.HelpCalls.empty()) << "none is opened";
    Screen.HelpIsOpen = true;
    Choose(kCatalogue);
    Next();
    Next();
    Back();
    ASSERT_EQ(3u, Screen.HelpCalls.size());
    EXPECT_EQ(1330u, Screen.HelpCalls[0].Data);
    EXPECT_EQ(1360u, Screen.HelpCalls[1].Data);
    EXPECT_EQ(1330u, Screen.HelpCalls[2].Data);
}

}  // namespace
}  // namespace velbooter::testing
