#include "src/start/BuildRun.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

#include "src/common/RuntimeError.h"
#include "src/common/Text.h"
#include "tests/src/start/BuildRunTest.h"

namespace velbooter::testing {
namespace {

using Files = std::vector<std::string>;

constexpr const char* kCheckMark = "\xFC";

TEST_F(BuildRun, AnImageIsMadeFromTheStagedFilesAndTheFolderCleanedUp) {
    Add("bin\\a.cab", "cabinet");
    FinishApp(App, "");
    EXPECT_EQ("IO.SYS 6\nbin\\a.cab 7\n", Folder.Read("tree.txt"));
    EXPECT_TRUE(Folder.HasFile("out.img"));
    EXPECT_EQ("Operation completed successfully", App.Wizard.LblFinish.Caption);
    EXPECT_FALSE(App.RunEnded);
    ExpectCleanFolder();
}

TEST_F(BuildRun, ThePluginIsAddedAfterStagingAndBeforeTheImage) {
    Folder.Write("plugins\\extra\\IO.SYS", "from the plugin");
    Folder.Write("plugins\\extra\\more", "x");
    FinishApp(App, "extra");
    EXPECT_EQ("IO.SYS 15\nmore 1\n", Folder.Read("tree.txt"));
}

TEST_F(BuildRun, TheImageToolGetsTheStagingFolderWithoutABackslashAlsoAfterAPlugin) {
    Folder.Write("plugins\\extra\\more", "x");
    FinishApp(App, "extra");
    const auto calls = Folder.Calls("bfi.exe");
    ASSERT_EQ(1u, calls.size());
    EXPECT_FALSE(calls[0].CommandLine.ends_with("\\")) << calls[0].CommandLine;
    EXPECT_NE(std::string::npos, calls[0].CommandLine.find("\" Temp\\Velbooter")) << calls[0].CommandLine;
}

TEST_F(BuildRun, AMissingPluginDoesNotStopTheRun) {
    FinishApp(App, "missing");
    EXPECT_TRUE(Folder.HasFile("out.img"));
}

TEST_F(BuildRun, AFailingImageToolStillEndsInSuccess) {
    Folder.Remove("bfi.exe");
    FinishApp(App, "");
    EXPECT_EQ("Operation completed successfully", App.Wizard.LblFinish.Caption);
    EXPECT_EQ(kCheckMark, App.Wizard.LblRight4.Caption);
    ExpectCleanFolder();
}

TEST_F(BuildRun, BothImageOptionsMakeAnImage) {
    ChooseOption(App.Wizard, &FrmWizard::OptImage28);
    FinishApp(App, "");
    EXPECT_NE(std::string::npos, Folder.Calls("bfi.exe").at(0).CommandLine.find(" -t=288 "));
}

TEST_F(BuildRun, EachStepIsAnnouncedThenBoldThenTickedInTheirOrder) {
    FinishApp(App, "");
    const FrmWizard& wizard = App.Wizard;
    for (const Label* line : {&wizard.LblMsg1, &wizard.LblMsg2, &wizard.LblMsg3, &wizard.LblMsg4}) {
        EXPECT_FALSE(line->Bold) << line->Caption;
    }
    for (const Label* mark : {&wizard.LblRight1, &wizard.LblRight2, &wizard.LblRight3, &wizard.LblRight4}) {
        EXPECT_EQ(kCheckMark, mark->Caption);
    }
    // What each repaint showed, without repetitions: status, bold lines and ticks.
    Files seen;
    for (const View& view : Screen.Views) {
        std::string text = view.WaitStatus;
        const Label* lines[] = {&view.Step1, &view.Step2, &view.Step3, &view.Step4};
        const std::string* marks[] = {&view.Mark1, &view.Mark2, &view.Mark3, &view.Mark4};
        for (size_t i = 0; i < 4; ++i) {
            if (lines[i]->Bold) text += " B" + std::to_string(i + 1);
            if (!marks[i]->empty()) text += " T" + std::to_string(i + 1);
        }
        if (seen.empty() || seen.back() != text) seen.push_back(text);
    }
    // A line may be painted with its tick before the next step is announced; that is not a step.
    const auto isBetweenSteps = [](const std::string& text) {
        return text == "Preparing selected Drivers ... T1" ||
               text == "Preparing pre-built drivers cache ... T1 T2" || text == "Step three ... T1 T2 T3" ||
               text == "Step four ... T1 T2 T3 T4";
    };
    seen.erase(std::remove_if(seen.begin(), seen.end(), isBetweenSteps), seen.end());
    EXPECT_EQ((Files{"Preparing selected Drivers ...", "Preparing selected Drivers ... B1",
                     "Preparing pre-built drivers cache ... T1",
                     "Preparing pre-built drivers cache ... T1 B2", "Step three ... T1 T2",
                     "Step three ... T1 T2 B3", "Step four ... T1 T2 T3", "Step four ... T1 T2 T3 B4"}),
              seen);
}

TEST_F(BuildRun, TheChosenDriversAndTheirListsGoOntoTheDisk) {
    OfferDrivers("[ASPI]\r\nBUS=1\r\nHOST=0\r\n[NDIS]\r\nNET=1\r\n");
    Folder.MakeTool("cabarc.exe", "create|ndis.txt\ncreate|ndis.pci\n");
    FinishApp(App, "");
    const std::string list =
        "; This file is used to manual\r\n; select a network driver\r\n"
        ":_ndis \"Select Network driver...\" [x]\r\nmade by cabarc\r\n";
    const std::string map = "; PCI map file (build from ndis.pci files)\r\nmade by cabarc\r\n";
    EXPECT_EQ("IO.SYS 6\netc\\_msnet.nic " + std::to_string(list.size()) + "\netc\\_msnet.pci " +
                  std::to_string(map.size()) + "\nlib\\aspi\\bus.cab 3\nlib\\ndis\\net.cab 4\n",
              Folder.Read("tree.txt"));
    EXPECT_EQ("Operation completed successfully", App.Wizard.LblFinish.Caption);
    ExpectCleanFolder();
}

TEST_F(BuildRun, ADriverCopyThatIsAbortedEndsTheRunCleanedUpWithoutAnyTick) {
    OfferDrivers("[ASPI]\r\nBUS=1\r\nGONE=1\r\n[NDIS]\r\nNET=1\r\n");
    Folder.MakeTool("plugins\\extra.exe");
    Folder.MakeTool("cabarc.exe");
    Screen.Expect(DriverFailure("aspi\\gone.cab"), Answer::Abort);
    FinishApp(App, "extra");
    const FrmWizard& wizard = App.Wizard;
    for (const Label* mark : {&wizard.LblRight1, &wizard.LblRight2, &wizard.LblRight3, &wizard.LblRight4}) {
        EXPECT_EQ("", mark->Caption);
    }
    EXPECT_EQ("Preparing selected Drivers ...", Screen.WaitStatuses().back()) << "no other step begins";
    for (const char* tool : {"cabarc.exe", "bfi.exe", "plugins\\extra.exe"}) {
        EXPECT_TRUE(Folder.Calls(tool).empty()) << tool;
    }
    ExpectCanceled();
}

TEST_F(BuildRun, ADriverCopyThatSucceedsWhenRetriedGoesOn) {
    OfferDrivers("[ASPI]\r\nBUS=1\r\n");
    LockedFile lock(Folder.Write("cabs\\lib\\aspi\\bus.cab", "old"));
    Screen.Expect(DriverFailure("aspi\\bus.cab"), Answer::Retry, [&] { lock.Release(); });
    App.Wizard.ChkNDIS.Value = 0;
    FinishApp(App, "");
    EXPECT_EQ("IO.SYS 6\nlib\\aspi\\bus.cab 3\n", Folder.Read("tree.txt"));
    ExpectCleanFolder();
}

TEST_F(BuildRun, ADriverThatIsLeftOutIsMissedWhenTheDiskIsStaged) {
    OfferDrivers("[ASPI]\r\nGONE=1\r\nBUS=1\r\n");
    Screen.Expect(DriverFailure("aspi\\gone.cab"), Answer::Ignore);
    Screen.Expect({"Error while copying the file from its Source :\r\nlib\\aspi\\gone.cab", "Error",
                   Buttons::Ok, Icon::Critical});
    FinishApp(App, "");
    EXPECT_EQ(kCheckMark, App.Wizard.LblRight1.Caption);
    EXPECT_EQ(kCheckMark, App.Wizard.LblRight2.Caption);
    EXPECT_EQ("", App.Wizard.LblRight3.Caption);
    EXPECT_TRUE(Folder.Calls("bfi.exe").empty());
    ExpectCanceled();
}

TEST_F(BuildRun, ADriverIndexThatCannotBeReadIsAnError) {
    LockedFile lock(Folder.At("Drivers.ini"));
    try {
        FinishApp(App, "");
        ADD_FAILURE() << "nothing was raised";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(kPermissionDenied, error.Number);
        EXPECT_EQ(Folder.At("Drivers.ini"), error.File);
    }
    EXPECT_TRUE(Folder.Calls("bfi.exe").empty());
}

TEST_F(BuildRun, AFailedStagingStopsTheRunWithoutItsTicks) {
    BreakStaging();
    Folder.MakeTool("plugins\\extra.exe");
    FinishApp(App, "extra");
    EXPECT_EQ(kCheckMark, App.Wizard.LblRight1.Caption);
    EXPECT_EQ(kCheckMark, App.Wizard.LblRight2.Caption);
    EXPECT_EQ("", App.Wizard.LblRight3.Caption);
    EXPECT_EQ("", App.Wizard.LblRight4.Caption);
    EXPECT_TRUE(Folder.Calls("bfi.exe").empty());
    EXPECT_TRUE(Folder.Calls("plugins\\extra.exe").empty());
    ExpectCanceled();
}

TEST_F(BuildRun, AFormatThatDidNotHappenCancels) {
    ChooseOption(App.Wizard, &FrmWizard::OptFloppy);
    Screen.ExpectFormatDialog(kFormatNotPossible);
    Screen.Expect(
        {"You have select not to format the floppy", "Didn't Format", Buttons::Ok, Icon::Information});
    FinishApp(App, "");
    EXPECT_EQ("", App.Wizard.LblRight3.Caption);
    ExpectCanceled();
}

TEST_F(BuildRun, AFloppyIsFormattedAndFilledWithoutAnyPlugin) {
    ChooseOption(App.Wizard, &FrmWizard::OptFloppy);
    App.Wizard.LstFiles.Clear();
    Folder.MakeTool("plugins\\extra.exe");
    int painted = 0;
    Screen.ExpectFormatDialog(0, [&] { painted = static_cast<int>(Screen.Views.size()); });
    FinishApp(App, "extra");
    EXPECT_GT(static_cast<int>(Screen.Views.size()), painted) << "the wizard is painted after the dialog";
    EXPECT_TRUE(Folder.Calls("plugins\\extra.exe").empty());
    EXPECT_TRUE(Folder.Calls("bfi.exe").empty());
    EXPECT_FALSE(Folder.HasFolder("Temp"));
    EXPECT_EQ(kCheckMark, App.Wizard.LblRight3.Caption);
    EXPECT_EQ(kCheckMark, App.Wizard.LblRight4.Caption);
    EXPECT_EQ("Operation completed successfully", App.Wizard.LblFinish.Caption);
    ExpectCleanFolder();
}

TEST_F(BuildRun, AFloppyThatCannotBeFilledCancels) {
    ChooseOption(App.Wizard, &FrmWizard::OptFloppy);
    Screen.ExpectFormatDialog(0);
    BreakStaging();
    FinishApp(App, "");
    EXPECT_EQ(kCheckMark, App.Wizard.LblRight3.Caption);
    EXPECT_EQ("", App.Wizard.LblRight4.Caption);
    ExpectCanceled();
}

TEST_F(BuildRun, FilesThatCannotBeDeletedDoNotMatter) {
    std::ifstream reader(Folder.At("Drivers.ini"));
    FinishApp(App, "");
    EXPECT_EQ("Operation completed successfully", App.Wizard.LblFinish.Caption);
    EXPECT_TRUE(Folder.HasFile("Drivers.ini"));
    EXPECT_FALSE(Folder.HasFolder("cabs"));
}

}  // namespace
}  // namespace velbooter::testing
