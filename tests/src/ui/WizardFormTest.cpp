#include "src/ui/PageWalk.h"

#include <gtest/gtest.h>

#include "src/forms/ProductTexts.h"
#include "src/run/RunEnd.h"
#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {
namespace {

class WizardForm : public ApplicationTest {
 protected:
    WizardForm() {
        Folder.Write("Drivers.ini", "[ASPI]\r\n");
        Folder.Write("cabs\\a", "a");
        Folder.Write("Temp\\Velbooter1\\b", "b");
    }
    ExitCode Unload() {
        try {
            Form_Unload(App);
        } catch (const ProgramEnd& end) {
            return end.Code;
        }
    }
    void ExpectCleanFolder() {
        EXPECT_FALSE(Folder.HasFile("Drivers.ini"));
        EXPECT_FALSE(Folder.HasFolder("cabs"));
        EXPECT_FALSE(Folder.HasFolder("Temp"));
    }
};

TEST_F(WizardForm, ClosingCleansUpEvenWhenNoBuildRan) {
    EXPECT_EQ(ExitCode::Built, Unload());
    EXPECT_EQ("Operation canceled", App.Wizard.LblFinish.Caption);
    ExpectCleanFolder();
}

TEST_F(WizardForm, ClosingAfterACancelledRunTellsSo) {
    CancelApp(App);
    EXPECT_EQ(ExitCode::Canceled, Unload());
}

TEST_F(WizardForm, ClosingAfterABuildTellsWhetherAnImageIsThere) {
    App.Wizard.LstFiles.Clear();
    App.Wizard.TxtDest.Text = Folder.At("a.img");
    CmdFinish_Click(App);
    EXPECT_EQ(ExitCode::NoImage, Unload());
    Folder.MakeTool("bfi.exe", "image\n");
    Folder.Write("Drivers.ini");
    App.RunEnded = false;
    CmdFinish_Click(App);
    EXPECT_EQ(ExitCode::Built, Unload());
}

TEST_F(WizardForm, CancelFromAnyPageLeavesTheFinalPageWithFinishAlone) {
    App.Wizard.FraMain[kWelcomePage].Visible = false;
    App.Wizard.FraMain[kDriversPage].Visible = true;
    CancelApp(App);
    for (size_t page = 0; page < kPageCount; ++page)
        EXPECT_EQ(page == kFinishedPage, App.Wizard.FraMain[page].Visible);
    EXPECT_TRUE(App.Wizard.CmdFinish.Visible && App.Wizard.CmdFinish.Enabled);
    EXPECT_FALSE(App.Wizard.CmdNext.Visible);
    EXPECT_FALSE(App.Wizard.CmdBack.Enabled || App.Wizard.CmdCancel.Enabled);
    ExpectCleanFolder();
}

TEST_F(WizardForm, TheDriverSelectionGoesWithTheRunItBelongsTo) {
    App.Drivers.Visible = true;
    CancelApp(App);
    EXPECT_FALSE(App.Drivers.Visible);
}

TEST_F(WizardForm, HelpShowsTheCurrentPageWhetherOrNotItIsOpen) {
    App.CurrentStep = kSetupPage;
    CmdHelp_Click(App);
    Screen.HelpIsOpen = true;
    CmdHelp_Click(App);
    const HelpCall call{0, Folder.At("corvane_help.chm>Down"), 15, 1340};
    EXPECT_EQ((std::vector<HelpCall>{call, call}), Screen.HelpCalls);
}

TEST_F(WizardForm, TheLinksOpenTheirAddresses) {
    LblHomePage_Click(App);
    LblFrameworkSite_Click(App);
    EXPECT_EQ((std::vector<std::string>{kHomePage, kFrameworkSite}), Screen.Addresses);
    EXPECT_EQ(kHomePage, App.Wizard.LblHomePage.Caption);
    EXPECT_EQ(kFrameworkSite, App.Wizard.LblFrameworkSite.Caption);
}

}  // namespace
}  // namespace velbooter::testing
