// The wizard while the driver selection is open next to it: both can be used, and neither discards what the
// user has done in the other.

#include "tests/e2e/support/FileDialogs.h"
#include "tests/e2e/support/SelectionWindow.h"
#include "tests/e2e/support/WindowTree.h"
#include "tests/e2e/support/WizardTest.h"
#include "tests/support/Patience.h"

namespace velbooter::e2e {
namespace {

class WizardBesideSelection : public WizardTest {
 protected:
    // Opens the selection of SCSI drivers and waits until all of them are listed.
    SelectionWindow OpenSelection(const ShownWizard& wizard) {
        wizard.Click(IDC_SELECT_ASPI);
        const SelectionWindow selection(Program().DriverSelection());
        Program().WaitUntil([&] { return selection.ColumnArrow(1) == Arrow::Up; },
                            "the drivers are not listed");
        return selection;
    }

    // Clicks a button of the selection, whose handler shows all forms again.
    void UnselectAll(const SelectionWindow& selection) {
        selection.Click("Unselect All");
        Program().WaitUntil([&] { return selection.Ticked().empty(); }, "the ticks stay");
    }

    void PressOk(const SelectionWindow& selection) {
        selection.Click("OK");
        Program().WaitUntilHidden(selection.Handle());
    }

    // The dialog of the program that is not the selection.
    HWND OtherDialog(const SelectionWindow& selection) {
        HWND found = nullptr;
        const auto isThere = [&] {
            for (const WindowInfo& window : TopLevelWindows(Program().ProcessId())) {
                const bool isDialog = window.Class == "#32770" && window.Visible;
                if (isDialog && window.Handle != selection.Handle()) found = window.Handle;
            }
            return found != nullptr;
        };
        Program().WaitUntil(isThere, "no dialog came");
        return found;
    }
};

TEST_F(WizardBesideSelection, AnswersThatAreTypedStay) {
    SetDisk("custom", SmallDiskWith({"[Create_CABs]", "setupwin=LIB"}));
    const ShownWizard wizard = OpenAt(kDriversPage);
    const SelectionWindow selection = OpenSelection(wizard);
    wizard.GoTo(kSetupPage);
    wizard.Enter(IDC_OWNER, "Typed by hand");
    UnselectAll(selection);
    EXPECT_EQ("Typed by hand", wizard.Text(IDC_OWNER));
    wizard.Enter(IDC_KEY_PART_5, "ABCDE");
    PressOk(selection);
    EXPECT_EQ("Typed by hand", wizard.Text(IDC_OWNER));
    EXPECT_EQ("ABCDE", wizard.Text(IDC_KEY_PART_5));
    wizard.Next(kFilesPage);
    EXPECT_NE(folder_.Read("files\\setupwin\\bin\\auto.inf").find("Name=\"Typed by hand\""),
              std::string::npos);
    Leave(wizard);
}

TEST_F(WizardBesideSelection, SelectedDiskStays) {
    const ShownWizard wizard = OpenAt(kDriversPage);
    const SelectionWindow selection = OpenSelection(wizard);
    wizard.Back(kDiskPage);
    wizard.SelectDisk("minimal");
    const int row = wizard.SelectedDisk();
    UnselectAll(selection);
    EXPECT_EQ(row, wizard.SelectedDisk());
    PressOk(selection);
    EXPECT_EQ(row, wizard.SelectedDisk());
    Leave(wizard);
}

TEST_F(WizardBesideSelection, TargetThatIsTypedIsTheOneThatIsBuilt) {
    const ShownWizard wizard = OpenAt(kDriversPage);
    const SelectionWindow selection = OpenSelection(wizard);
    wizard.GoTo(kDestinationPage);
    const std::string mine = folder_.OutsidePath("mine.img");
    wizard.Enter(IDC_TARGET, mine);
    PressOk(selection);
    EXPECT_EQ(mine, wizard.Text(IDC_TARGET));
    FinishInto(wizard, mine);
}

TEST_F(WizardBesideSelection, DialogOfTheWizardTakesTheInputOfBoth) {
    const ShownWizard wizard = OpenAt(kDriversPage);
    const SelectionWindow selection = OpenSelection(wizard);
    wizard.GoTo(kDestinationPage);
    wizard.Click(IDC_BROWSE);
    const HWND dialog = OtherDialog(selection);
    EXPECT_EQ(::GetWindow(dialog, GW_OWNER), wizard.Handle());
    EXPECT_FALSE(::IsWindowEnabled(wizard.Handle()));
    EXPECT_FALSE(::IsWindowEnabled(selection.Handle()));
    CancelBrowsing(wizard, dialog);
    EXPECT_TRUE(Eventually([&] { return ::IsWindowEnabled(selection.Handle()) != FALSE; }));
    PressOk(selection);
    Leave(wizard);
}

TEST_F(WizardBesideSelection, LoadingAnotherDiskHidesTheDriversOfTheFormer) {
    const ShownWizard wizard = OpenAt(kDriversPage);
    const SelectionWindow selection = OpenSelection(wizard);
    wizard.Back(kDiskPage);
    wizard.SelectDisk("demoodi");
    wizard.Next(kDriversPage);
    EXPECT_FALSE(::IsWindowVisible(selection.Handle()));
    EXPECT_TRUE(wizard.Takes(IDC_SELECT_NDIS));
    Leave(wizard);
}

}  // namespace
}  // namespace velbooter::e2e
