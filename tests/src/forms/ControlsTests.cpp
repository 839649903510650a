#include "src/forms/Controls.h"

#include <gtest/gtest.h>

#include "src/forms/ErrorMessage.h"
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

TEST_F(WizardForm, ChoosingAnOutputMakesTheOthersFallBack) {
    ChooseOption(App.Wizard, &FrmWizard::OptFloppy);
    EXPECT_FALSE(App.Wizard.OptImage14.Value);
    EXPECT_TRUE(App.Wizard.OptFloppy.Value);
    ChooseOption(App.Wizard, &FrmWizard::OptImage28);
    EXPECT_FALSE(App.Wizard.OptFloppy.Value);
    EXPECT_TRUE(App.Wizard.OptImage28.Value);
}

TEST_F(WizardForm, AnUnhandledErrorIsShownWithNumberTextAndFile) {
    Screen.ExpectMessageWith({"53", "File not found", "files\\x.ini"});
    ShowRuntimeError(App, RuntimeError(kFileNotFound, "files\\x.ini"));
    EXPECT_EQ(1u, Screen.Messages.size());
}

}  // namespace
}  // namespace velbooter::testing
