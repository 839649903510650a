#include "src/ui/Destination.h"

#include <gtest/gtest.h>

#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {
namespace {

class Destination : public ApplicationTest {
 protected:
    void Choose(OptionButton FrmWizard::*option, void (*click)(Application&)) {
        ChooseOption(App.Wizard, option);
        click(App);
    }
    bool TargetIsEnabled() const { return App.Wizard.TxtDest.Enabled && App.Wizard.CmdBrowse.Enabled; }
    bool TargetIsDisabled() const { return !App.Wizard.TxtDest.Enabled && !App.Wizard.CmdBrowse.Enabled; }
};

TEST_F(Destination, TheSmallImageIsChosenAtFirst) {
    EXPECT_TRUE(App.Wizard.OptImage14.Value);
    EXPECT_TRUE(TargetIsEnabled());
}

TEST_F(Destination, AFloppyHasNoTargetAndAnImageHas) {
    Choose(&FrmWizard::OptFloppy, OptFloppy_Click);
    EXPECT_TRUE(TargetIsDisabled());
    Choose(&FrmWizard::OptImage28, OptImage28_Click);
    EXPECT_TRUE(TargetIsEnabled());
    Choose(&FrmWizard::OptFloppy, OptFloppy_Click);
    Choose(&FrmWizard::OptImage14, OptImage14_Click);
    EXPECT_TRUE(TargetIsEnabled());
}

TEST_F(Destination, AllThreeOptionsGiveTheStepLinesOfAnImage) {
    for (const auto& [option, click] : {std::pair{&FrmWizard::OptImage14, &OptImage14_Click},
                                        std::pair{&FrmWizard::OptImage28, &OptImage28_Click},
                                        std::pair{&FrmWizard::OptFloppy, &OptFloppy_Click}}) {
        App.Wizard.LblMsg3.Caption = "";
        App.Wizard.LblMsg4.Caption = "";
        Choose(option, click);
        EXPECT_EQ("Preparing new floppy image", App.Wizard.LblMsg3.Caption);
        EXPECT_EQ("Copying files to floppy image", App.Wizard.LblMsg4.Caption);
    }
}

TEST_F(Destination, TheRoomIsToldForTheChosenDisk) {
    Choose(&FrmWizard::OptImage28, OptImage28_Click);
    EXPECT_NE(std::string::npos, App.Wizard.LblSpace.Caption.find("A 2.88 MB disk"));
    for (const auto& [option, click] : {std::pair{&FrmWizard::OptFloppy, &OptFloppy_Click},
                                        std::pair{&FrmWizard::OptImage14, &OptImage14_Click}}) {
        App.Wizard.LblSpace.Caption = "";
        Choose(option, click);
        EXPECT_NE(std::string::npos, App.Wizard.LblSpace.Caption.find("A 1.44 MB disk"));
    }
}

TEST_F(Destination, BrowseIsPresetWithTheTargetAndTakesTheChosenPath) {
    App.Wizard.TxtDest.Text = "C:\\images\\old.img";
    Screen.ExpectSaveDialog("C:\\images\\old.img", "D:\\new.img");
    CmdBrowse_Click(App);
    EXPECT_EQ("D:\\new.img", App.Wizard.TxtDest.Text);
}

TEST_F(Destination, ACancelledDialogKeepsTheTarget) {
    App.Wizard.TxtDest.Text = "C:\\images\\old.img";
    Screen.ExpectSaveDialog("C:\\images\\old.img", std::nullopt);
    CmdBrowse_Click(App);
    EXPECT_EQ("C:\\images\\old.img", App.Wizard.TxtDest.Text);
}

TEST_F(Destination, TheDialogHasItsDesign) {
    const CommonDialog& dialog = App.Wizard.DlgNew;
    EXPECT_EQ("BootDisk", dialog.FileName);
    EXPECT_EQ("Select where to save the Floppy Image", dialog.DialogTitle);
    EXPECT_EQ("*.img", dialog.Filter);
    EXPECT_EQ("img", dialog.DefaultExt);
}

}  // namespace
}  // namespace velbooter::testing
