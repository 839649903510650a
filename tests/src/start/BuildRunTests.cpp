#include "src/start/BuildRun.h"

#include <gtest/gtest.h>

#include "src/common/ProgramEnd.h"
#include "src/common/Text.h"
#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {
namespace {

using Files = std::vector<std::string>;

constexpr const char* kCheckMark = "\xFC";

class BuildRun : public ApplicationTest {
 protected:
    BuildRun() {
        Folder.Write("Drivers.ini");
        Add("IO.SYS", "staged");
        App.Wizard.TxtDest.Text = Folder.At("out.img");
        App.Wizard.LblMsg3.Caption = "Step three";
        App.Wizard.LblMsg4.Caption = "Step four";
        App.Wizard.LblFinish.Caption = "";
        Folder.MakeTool("bfi.exe", "tree|tree.txt\ncreate|out.img\n");
    }
    void Add(const std::string& entry, const std::string& content) {
        Folder.Write("cabs\\" + entry, content);
        App.Wizard.LstFiles.AddItem(entry);
        App.Wizard.LstFiles.Select(App.Wizard.LstFiles.ListCount() - 1, true);
    }
    void ExpectCleanFolder() {
        EXPECT_FALSE(Folder.HasFile("Drivers.ini"));
        EXPECT_FALSE(Folder.HasFolder("cabs"));
        EXPECT_FALSE(Folder.HasFolder("Temp"));
    }
    void ExpectCanceled() {
        EXPECT_TRUE(App.RunEnded);
        EXPECT_EQ("Operation canceled", App.Wizard.LblFinish.Caption);
        EXPECT_TRUE(App.Wizard.FraMain[kFinishedPage].Visible);
        ExpectCleanFolder();
    }
    /// Makes the staging step fail: its first file is not there.
    void BreakStaging() {
        Folder.Remove("cabs\\IO.SYS");
        Screen.Expect({"Error while copying the file from its Source :\r\nIO.SYS", "Error", Buttons::Ok,
                       Icon::Critical});
    }
};

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

TEST_F(BuildRun, EachStepIsAnnouncedThenBoldThenTicked) {
    FinishApp(App, "");
    EXPECT_FALSE(App.Wizard.LblMsg3.Bold);
    EXPECT_FALSE(App.Wizard.LblMsg4.Bold);
    EXPECT_EQ(kCheckMark, App.Wizard.LblRight3.Caption);
    EXPECT_EQ(kCheckMark, App.Wizard.LblRight4.Caption);
    // What each repaint showed, repetitions left out: status, bold lines and ticks.
    Files seen;
    for (const View& view : Screen.Views) {
        const std::string text = view.WaitStatus + (view.Step3.Bold ? " B3" : "") +
                                 (view.Mark3.empty() ? "" : " T3") + (view.Step4.Bold ? " B4" : "") +
                                 (view.Mark4.empty() ? "" : " T4");
        if (seen.empty() || seen.back() != text) seen.push_back(text);
    }
    ASSERT_GE(seen.size(), 4u);
    EXPECT_EQ("Step three ...", seen[0]);
    EXPECT_EQ("Step three ... B3", seen[1]);
    const auto has = [&](const std::string& text) {
        return std::find(seen.begin(), seen.end(), text) != seen.end();
    };
    EXPECT_TRUE(has("Step four ... T3"));
    EXPECT_TRUE(has("Step four ... T3 B4"));
    EXPECT_FALSE(has("Step four ...")) << "step three is ticked before step four is announced";
}

TEST_F(BuildRun, AFailedStagingStopsTheRunWithoutTicks) {
    BreakStaging();
    Folder.MakeTool("plugins\\extra.exe");
    FinishApp(App, "extra");
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
    LockedFile lock(Folder.At("Drivers.ini"));
    FinishApp(App, "");
    EXPECT_EQ("Operation completed successfully", App.Wizard.LblFinish.Caption);
    EXPECT_FALSE(Folder.HasFolder("cabs"));
}

class FinishClick : public BuildRun {
 protected:
    FinishClick() {
        for (Frame& page : App.Wizard.FraMain) page.Visible = false;
        App.Wizard.FraMain[kDestinationPage].Visible = true;
        App.Wizard.CmdBack.Enabled = true;
        App.Wizard.CmdFinish.Enabled = false;
    }
    void ExpectFinalPage() {
        for (int page = 0; page < kPageCount; ++page) {
            EXPECT_EQ(page == kFinishedPage, App.Wizard.FraMain[static_cast<size_t>(page)].Visible) << page;
        }
        EXPECT_FALSE(App.Wizard.CmdBack.Enabled);
        EXPECT_FALSE(App.Wizard.CmdCancel.Enabled);
        EXPECT_TRUE(App.Wizard.CmdFinish.Enabled);
        EXPECT_TRUE(App.RunEnded);
    }
};

TEST_F(FinishClick, BuildsOnTheProgressPageAndShowsTheFinalOne) {
    int paints = 0;
    Screen.OnPaint = [&] {
        ++paints;
        EXPECT_TRUE(App.Wizard.FraMain[kProgressPage].Visible);
        EXPECT_FALSE(App.Wizard.FraMain[kDestinationPage].Visible);
        EXPECT_FALSE(App.Wizard.CmdBack.Enabled);
        EXPECT_FALSE(App.Wizard.CmdCancel.Enabled);
    };
    CmdFinish_Click(App);
    Screen.OnPaint = {};
    EXPECT_GT(paints, 0);
    EXPECT_EQ("Operation completed successfully", App.Wizard.LblFinish.Caption);
    EXPECT_TRUE(Folder.HasFile("out.img"));
    ExpectFinalPage();
}

TEST_F(FinishClick, NeverAddsAPlugin) {
    Folder.MakeTool("plugins\\.exe");
    CmdFinish_Click(App);
    EXPECT_TRUE(Folder.Calls("plugins\\.exe").empty());
}

TEST_F(FinishClick, AFailedRunEndsOnTheFinalPageToo) {
    BreakStaging();
    CmdFinish_Click(App);
    EXPECT_EQ("Operation canceled", App.Wizard.LblFinish.Caption);
    ExpectFinalPage();
}

TEST_F(FinishClick, ASecondClickEndsTheProgramWithoutBuildingAgain) {
    CmdFinish_Click(App);
    ASSERT_EQ(1u, Folder.Calls("bfi.exe").size());
    EXPECT_THROW(CmdFinish_Click(App), ProgramEnd);
    EXPECT_EQ(1u, Folder.Calls("bfi.exe").size());
}

TEST_F(FinishClick, AClickAfterACancelEndsTheProgram) {
    App.RunEnded = true;
    Folder.Write("Drivers.ini");
    EXPECT_THROW(CmdFinish_Click(App), ProgramEnd);
    EXPECT_TRUE(Folder.HasFile("Drivers.ini")) << "ended at once";
}

}  // namespace
}  // namespace velbooter::testing
