#include "src/forms/Controls.h"

#include <gtest/gtest.h>

#include "src/run/RunEnd.h"
#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {
namespace {

TEST(ListBoxes, ReadingPastTheEndYieldsNothing) {
    ListBox list;
    list.AddItem("a");
    EXPECT_EQ("a", list.List(0));
    EXPECT_EQ("", list.List(1));
    EXPECT_EQ("", list.List(-1));
    EXPECT_FALSE(list.Selected(1));
    EXPECT_FALSE(list.Selected(-1));
}

TEST(ListBoxes, RowsKeepTheirMarkWhenOthersComeAndGo) {
    ListBox list;
    list.AddItem("a");
    list.AddItem("b");
    list.Select(1, true);
    list.AddItem("first", 0);
    EXPECT_EQ("b", list.List(2));
    EXPECT_TRUE(list.Selected(2));
    EXPECT_FALSE(list.Selected(0));
    list.RemoveItem(0);
    EXPECT_TRUE(list.Selected(1));
    EXPECT_EQ(1, list.SelectedCount());
    list.Clear();
    EXPECT_EQ(0, list.ListCount());
    EXPECT_EQ(0, list.SelectedCount());
}

class WizardForm : public ApplicationTest {};

TEST_F(WizardForm, TheSmallImageIsChosenAtFirst) {
    EXPECT_TRUE(App.Wizard.OptImage14.Value);
    EXPECT_FALSE(App.Wizard.OptImage28.Value);
    EXPECT_FALSE(App.Wizard.OptFloppy.Value);
    EXPECT_FALSE(App.RunEnded);
    EXPECT_EQ(0, App.SelectedDiskIndex);
    EXPECT_TRUE(App.Wizard.FraMain[kWelcomePage].Visible);
}

TEST_F(WizardForm, TheDriversPageBeginsInNdisMode) {
    const FrmWizard& wizard = App.Wizard;
    EXPECT_EQ("Network adapters drivers (NDIS)", wizard.ChkNDIS.Caption);
    EXPECT_EQ(2655, wizard.ChkNDIS.Width);
    EXPECT_EQ(3015, kOdiWidth);
    EXPECT_EQ("SCSI Host adapters drivers (ASPI)", wizard.ChkASPI.Caption);
    EXPECT_EQ(0, wizard.ChkNDIS.Value);
    EXPECT_EQ(0, wizard.ChkASPI.Value);
    EXPECT_EQ("Select which drivers to include...", wizard.CmdSelNDIS.Caption);
    EXPECT_EQ("Select which drivers to include...", wizard.CmdSelASPI.Caption);
    EXPECT_EQ(
        "You only need the MSNET module and it requirements to make use of the NDIS drivers and load the "
        "network interface.",
        wizard.LblNDISNote.Caption);
}

TEST_F(WizardForm, TheSetupPageBeginsWithItsDefaults) {
    const FrmWizard& wizard = App.Wizard;
    EXPECT_EQ("VelUser", wizard.TxtOwner.Text);
    EXPECT_EQ("MARSH LTD.", wizard.TxtOrg.Text);
    EXPECT_EQ("VelPC", wizard.TxtPCName.Text);
    EXPECT_EQ("MARSH_LTD", wizard.TxtWorkgroup.Text);
    EXPECT_EQ("Microsoft Windows 98", wizard.LblOSType.Caption);
    for (const TextBox* part : {&wizard.TxtKeyPart1, &wizard.TxtKeyPart2, &wizard.TxtKeyPart3,
                                &wizard.TxtKeyPart4, &wizard.TxtKeyPart5}) {
        EXPECT_EQ("", part->Text);
        EXPECT_TRUE(part->Enabled);
    }
}

TEST_F(WizardForm, TheStepLinesBeginWithoutWeightAndMark) {
    const FrmWizard& wizard = App.Wizard;
    EXPECT_EQ("Preparing selected Drivers", wizard.LblMsg1.Caption);
    EXPECT_EQ("Preparing pre-built drivers cache", wizard.LblMsg2.Caption);
    EXPECT_EQ("Formating Floppy Disk", wizard.LblMsg3.Caption);
    EXPECT_EQ("Copying files to floppy disk", wizard.LblMsg4.Caption);
    for (const Label* line : {&wizard.LblMsg1, &wizard.LblMsg2, &wizard.LblMsg3, &wizard.LblMsg4}) {
        EXPECT_FALSE(line->Bold) << line->Caption;
    }
    for (const Label* mark : {&wizard.LblRight1, &wizard.LblRight2, &wizard.LblRight3, &wizard.LblRight4}) {
        EXPECT_EQ("", mark->Caption);
    }
}

TEST_F(WizardForm, TheDriverSelectionBeginsHiddenWithItsTexts) {
    EXPECT_FALSE(App.Drivers.Visible);
    EXPECT_EQ("DriverName", App.Drivers.LV.FirstColumnTitle);
    EXPECT_EQ("Description", App.Drivers.LV.SecondColumnTitle);
    EXPECT_EQ("OK", App.Drivers.CmdOK.Caption);
    EXPECT_EQ("Cancel", App.Drivers.CmdCancel.Caption);
    EXPECT_EQ("Unselect All", App.Drivers.CmdSelAll.Caption);
    EXPECT_EQ(0, App.Drivers.LastSortColumn);
}

TEST_F(WizardForm, ChoosingAnOutputMakesTheOthersFallBack) {
    ChooseOption(App.Wizard, &FrmWizard::OptFloppy);
    EXPECT_FALSE(App.Wizard.OptImage14.Value);
    EXPECT_TRUE(App.Wizard.OptFloppy.Value);
    ChooseOption(App.Wizard, &FrmWizard::OptImage28);
    EXPECT_FALSE(App.Wizard.OptFloppy.Value);
    EXPECT_TRUE(App.Wizard.OptImage28.Value);
}

TEST_F(WizardForm, TheNetworkRowsLookFollowsItsMode) {
    SetNetworkMode(App.Wizard, NetworkMode::Odi);
    EXPECT_EQ(NetworkMode::Odi, App.Wizard.Network);
    EXPECT_EQ(3015, App.Wizard.ChkNDIS.Width);
    EXPECT_EQ("Network adapters drivers (ODI16/32)", App.Wizard.ChkNDIS.Caption);
    SetNetworkMode(App.Wizard, NetworkMode::Ndis);
    EXPECT_EQ(NetworkMode::Ndis, App.Wizard.Network);
    EXPECT_EQ(2655, App.Wizard.ChkNDIS.Width);
    EXPECT_EQ("Network adapters drivers (NDIS)", App.Wizard.ChkNDIS.Caption);
}

TEST_F(WizardForm, TheFinalPageFollowsTheOutcome) {
    SetOutcome(App.Wizard, RunOutcome::Canceled);
    EXPECT_EQ("Operation canceled", App.Wizard.LblFinish.Caption);
    SetOutcome(App.Wizard, RunOutcome::Completed);
    EXPECT_EQ("Operation completed successfully", App.Wizard.LblFinish.Caption);
}

TEST_F(WizardForm, TheButtonOffersTheOppositeOfTheTicks) {
    SetAllTicked(App.Drivers, false);
    EXPECT_FALSE(App.Drivers.AllTicked);
    EXPECT_EQ("Select All", App.Drivers.CmdSelAll.Caption);
    SetAllTicked(App.Drivers, true);
    EXPECT_TRUE(App.Drivers.AllTicked);
    EXPECT_EQ("Unselect All", App.Drivers.CmdSelAll.Caption);
}

}  // namespace
}  // namespace velbooter::testing
