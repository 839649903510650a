#include "src/ui/DriversPage.h"

#include <gtest/gtest.h>

#include "tests/src/drivers/SelectionTest.h"

namespace velbooter::testing {
namespace {

using Texts = std::vector<std::string>;

class DriverSelectionOpening : public SelectionTest {
 protected:
    DriverSelectionOpening() {
        MakeEmptyCabinets("aspi", {"aha154x.cab"});
        MakeEmptyCabinets("ndis", {"e100b.cab"});
        MakeEmptyCabinets("odi16", {"ne2000.cab"});
        MakeEmptyCabinets("odi32", {"rtl8139.cab"});
        Folder.MakeTool("cabarc.exe");
    }
    /// The cabinets and members that were extracted.
    Texts Extracted() const {
        Texts texts;
        const std::string before = Folder.Path() + "\\cabarc -o x drivers\\";
        for (const ToolCall& call : Folder.Calls("cabarc.exe"))
            texts.push_back(call.CommandLine.substr(before.size()));
        return texts;
    }
};

TEST_F(DriverSelectionOpening, TheScsiButtonLoadsTheScsiDrivers) {
    AddRow("OLD", "old", true);
    CmdSelASPI_Click(App);
    EXPECT_TRUE(App.Drivers.Visible);
    EXPECT_EQ("ASPI", List().FirstColumnTitle);
    EXPECT_EQ("aspi", List().Tag);
    EXPECT_EQ((Texts{"aspi\\aha154x.cab scsi.txt"}), Extracted());
    EXPECT_EQ((Texts{"+AHA154X"}), Rows());
}

TEST_F(DriverSelectionOpening, InNdisModeTheNetworkButtonLoadsTheNdisDrivers) {
    AddRow("OLD", "old", true);
    CmdSelNDIS_Click(App);
    EXPECT_TRUE(App.Drivers.Visible);
    EXPECT_EQ("NIC", List().FirstColumnTitle);
    EXPECT_EQ("ndis", List().Tag);
    EXPECT_EQ((Texts{"ndis\\e100b.cab ndis.txt"}), Extracted());
    EXPECT_EQ((Texts{"+E100B"}), Rows());
}

TEST_F(DriverSelectionOpening, InOdiModeTheNetworkButtonLoadsBothOdiGroupsTogether) {
    ChooseOdi();
    AddRow("OLD", "old", true);
    CmdSelNDIS_Click(App);
    EXPECT_TRUE(App.Drivers.Visible);
    EXPECT_EQ("NIC", List().FirstColumnTitle);
    EXPECT_EQ("odi32", List().Tag);
    EXPECT_EQ((Texts{"odi16\\ne2000.cab odi.txt", "odi32\\rtl8139.cab odi.txt"}), Extracted());
    EXPECT_EQ((Texts{"+NE2000", "+RTL8139"}), Rows());
}

TEST_F(DriverSelectionOpening, EachOdiRowIsTickedByItsOwnGroup) {
    Folder.Write("Drivers.ini", "[ODI16]\r\nNE2000=1\r\nRTL8139=1\r\n[ODI32]\r\nNE2000=1\r\nRTL8139=0\r\n");
    ChooseOdi();
    CmdSelNDIS_Click(App);
    EXPECT_EQ((Texts{"+NE2000", "-RTL8139"}), Rows());
}

TEST_F(DriverSelectionOpening, ItShowsBeforeItLoads) {
    std::vector<size_t> rowsWhenPainted;
    Screen.OnPaint = [&] {
        EXPECT_TRUE(App.Drivers.Visible);
        rowsWhenPainted.push_back(List().ListItems.size());
    };
    CmdSelASPI_Click(App);
    ASSERT_FALSE(rowsWhenPainted.empty());
    EXPECT_EQ(0u, rowsWhenPainted.front());
    EXPECT_EQ(1u, rowsWhenPainted.back());
}

TEST_F(DriverSelectionOpening, EveryOpeningReadsTheTicksAfresh) {
    Folder.Write("Drivers.ini", "[NDIS]\r\nE100B=0\r\n");
    CmdSelNDIS_Click(App);
    EXPECT_EQ((Texts{"-E100B"}), Rows());
    Row("E100B").Checked = true;
    CmdCancelDrivers_Click(App);
    EXPECT_EQ((Texts{"+E100B"}), Rows()) << "hidden, not emptied";
    CmdSelNDIS_Click(App);
    EXPECT_EQ((Texts{"-E100B"}), Rows());
    CmdCancelDrivers_Click(App);
    Folder.Write("Drivers.ini", "[NDIS]\r\nE100B=1\r\n");
    CmdSelNDIS_Click(App);
    EXPECT_EQ((Texts{"+E100B"}), Rows());
}

TEST_F(DriverSelectionOpening, TheOtherGroupReplacesTheList) {
    CmdSelASPI_Click(App);
    CmdCancelDrivers_Click(App);
    CmdSelNDIS_Click(App);
    EXPECT_EQ((Texts{"+E100B"}), Rows());
    EXPECT_EQ("ndis", List().Tag);
}

class DriverSelectionOk : public SelectionTest {};

TEST_F(DriverSelectionOk, ItWritesEveryTickInTheOrderDisplayedAndHides) {
    MakeDriver("aspi\\A.CAB", "scsi.txt", "zeta");
    MakeDriver("aspi\\B.CAB", "scsi.txt", "alpha");
    MakeDriver("aspi\\C.CAB", "scsi.txt", "gamma");
    CmdSelASPI_Click(App);
    Row("C").Checked = false;
    CmdOK_Click(App);
    EXPECT_FALSE(App.Drivers.Visible);
    EXPECT_EQ("[aspi]\r\nB=1\r\nC=0\r\nA=1\r\n", Folder.Read("Drivers.ini"))
        << "a new file gets the folder's name as the section";
}

TEST_F(DriverSelectionOk, TheFormIsPaintedHidden) {
    App.Drivers.Visible = true;
    CmdOK_Click(App);
    EXPECT_EQ(1, Screen.Repaints());
    EXPECT_FALSE(App.Drivers.Visible);
}

TEST_F(DriverSelectionOk, TheKeysLandInTheSectionThatIsThere) {
    MakeEmptyCabinets("ndis", {"e100b.cab", "ne2000.cab"});
    Folder.Write("Drivers.ini", "[ASPI]\r\nE100B=1\r\n[NDIS]\r\nE100B=1\r\nNE2000=0\r\n");
    LoadNdis();
    Row("E100B").Checked = false;
    Row("NE2000").Checked = true;
    CmdOK_Click(App);
    EXPECT_EQ("[ASPI]\r\nE100B=1\r\n[NDIS]\r\nE100B=0\r\nNE2000=1\r\n", Folder.Read("Drivers.ini"));
}

TEST_F(DriverSelectionOk, OdiRowsGoToTheGroupThatHasTheDriver) {
    MakeEmptyCabinets("odi16", {"ne2000.cab"});
    MakeEmptyCabinets("odi32", {"rtl8139.cab"});
    Folder.Write("Drivers.ini", "[ODI16]\r\nNE2000=1\r\n[ODI32]\r\nRTL8139=1\r\n");
    ChooseOdi();
    CmdSelNDIS_Click(App);
    Row("NE2000").Checked = false;
    CmdOK_Click(App);
    EXPECT_EQ("[ODI16]\r\nNE2000=0\r\n[ODI32]\r\nRTL8139=1\r\n", Folder.Read("Drivers.ini"));
    Row("NE2000").Checked = true;
    Row("RTL8139").Checked = false;
    CmdOK_Click(App);
    EXPECT_EQ("[ODI16]\r\nNE2000=1\r\n[ODI32]\r\nRTL8139=0\r\n", Folder.Read("Drivers.ini"));
}

TEST_F(DriverSelectionOk, ANewFileGetsTheOdiGroupsInUpperCase) {
    MakeEmptyCabinets("odi16", {"ne2000.cab"});
    MakeEmptyCabinets("odi32", {"rtl8139.cab"});
    ChooseOdi();
    CmdSelNDIS_Click(App);
    CmdOK_Click(App);
    EXPECT_EQ("[ODI16]\r\nNE2000=1\r\n[ODI32]\r\nRTL8139=1\r\n", Folder.Read("Drivers.ini"));
}

TEST_F(DriverSelectionOk, ADriverOfBothOdiGroupsShowsTwoRowsAndIsWrittenAs16BitOnly) {
    MakeEmptyCabinets("odi16", {"NW.CAB"});
    MakeEmptyCabinets("odi32", {"NW.CAB"});
    Folder.Write("Drivers.ini", "[ODI16]\r\nNW=0\r\n[ODI32]\r\nNW=0\r\n");
    ChooseOdi();
    CmdSelNDIS_Click(App);
    EXPECT_EQ((Texts{"-NW", "-NW"}), Rows());
    for (ListItem& row : List().ListItems) row.Checked = true;
    CmdOK_Click(App);
    EXPECT_EQ("[ODI16]\r\nNW=1\r\n[ODI32]\r\nNW=0\r\n", Folder.Read("Drivers.ini"));
}

TEST_F(DriverSelectionOk, OfTwoRowsOfOneNameTheLaterOneDisplayedWins) {
    MakeDriver("odi16\\NW.CAB", "odi.txt", "alpha");
    MakeDriver("odi32\\NW.CAB", "odi.txt", "beta");
    ChooseOdi();
    CmdSelNDIS_Click(App);
    ASSERT_EQ((Texts{"+NW: alpha", "+NW: beta"}), Rows(true));
    List().ListItems[1].Checked = false;
    CmdOK_Click(App);
    EXPECT_EQ("0", Key("ODI16", "NW"));

    DriverColumn_Click(App, 1);
    DriverColumn_Click(App, 1);
    ASSERT_EQ((Texts{"-NW: beta", "+NW: alpha"}), Rows(true));
    CmdOK_Click(App);
    EXPECT_EQ("1", Key("ODI16", "NW"));
    EXPECT_EQ("", Key("ODI32", "NW"));
}

TEST_F(DriverSelectionOk, ADriverThatHasLeftTheStoreMeanwhileIsTakenFor32Bit) {
    MakeEmptyCabinets("odi16", {"ne2000.cab"});
    ChooseOdi();
    CmdSelNDIS_Click(App);
    Folder.Remove("drivers\\odi16\\ne2000.cab");
    CmdOK_Click(App);
    EXPECT_EQ("[ODI32]\r\nNE2000=1\r\n", Folder.Read("Drivers.ini"));
}

TEST_F(DriverSelectionOk, NamesBeyondAsciiAreWrittenAsTheIndexHasThem) {
    MakeEmptyCabinets("ndis", {"t\xFCrk.cab"});
    Folder.Write("Drivers.ini", "[NDIS]\r\nT\xDCRK=1\r\n");
    LoadNdis();
    Row("T\xDCRK").Checked = false;
    CmdOK_Click(App);
    EXPECT_EQ("[NDIS]\r\nT\xDCRK=0\r\n", Folder.Read("Drivers.ini"));
}

TEST_F(DriverSelectionOk, AnIndexThatCannotBeWrittenSilentlyKeepsItsValues) {
    MakeEmptyCabinets("ndis", {"a.cab"});
    Folder.Write("Drivers.ini", "[NDIS]\r\nA=1\r\n");
    LoadNdis();
    Row("A").Checked = false;
    App.Drivers.Visible = true;
    {
        WriteProtectedFile protection(Folder.At("Drivers.ini"));
        CmdOK_Click(App);
    }
    EXPECT_EQ("[NDIS]\r\nA=1\r\n", Folder.Read("Drivers.ini"));
    EXPECT_FALSE(App.Drivers.Visible);
    EXPECT_TRUE(Screen.Messages.empty());
}

TEST_F(DriverSelectionOk, CancelWritesNothingAndHides) {
    MakeEmptyCabinets("ndis", {"a.cab"});
    Folder.Write("Drivers.ini", "[NDIS]\r\nA=1\r\n");
    CmdSelNDIS_Click(App);
    Row("A").Checked = false;
    CmdCancelDrivers_Click(App);
    EXPECT_FALSE(App.Drivers.Visible);
    EXPECT_EQ("[NDIS]\r\nA=1\r\n", Folder.Read("Drivers.ini"));
}

class SelectAllButton : public SelectionTest {
 protected:
    SelectAllButton() { MakeEmptyCabinets("ndis", {"a.cab", "b.cab", "c.cab"}); }
    std::string& Caption() { return App.Drivers.CmdSelAll.Caption; }
};

TEST_F(SelectAllButton, TheButtonsAreNamedAtFirst) {
    EXPECT_EQ("OK", App.Drivers.CmdOK.Caption);
    EXPECT_EQ("Cancel", App.Drivers.CmdCancel.Caption);
    EXPECT_EQ("Unselect All", Caption());
}

TEST_F(SelectAllButton, ItUnticksAndTicksEveryRowInTurn) {
    Folder.Write("Drivers.ini", "[NDIS]\r\nA=1\r\nB=0\r\nC=1\r\n");
    LoadNdis();
    CmdSelAll_Click(App);
    EXPECT_EQ((Texts{"-A", "-B", "-C"}), Rows());
    EXPECT_EQ("Select All", Caption());
    Row("B").Checked = true;
    CmdSelAll_Click(App);
    EXPECT_EQ((Texts{"+A", "+B", "+C"}), Rows());
    EXPECT_EQ("Unselect All", Caption());
}

TEST_F(SelectAllButton, UnselectAllAndOkWriteZeroForTheWholeGroupAndTheCaptionStays) {
    Folder.Write("Drivers.ini", "[NDIS]\r\nA=1\r\nB=1\r\nC=1\r\n");
    CmdSelNDIS_Click(App);
    CmdSelAll_Click(App);
    CmdOK_Click(App);
    EXPECT_EQ("[NDIS]\r\nA=0\r\nB=0\r\nC=0\r\n", Folder.Read("Drivers.ini"));
    CmdSelNDIS_Click(App);
    EXPECT_EQ("Select All", Caption());
    EXPECT_EQ((Texts{"-A", "-B", "-C"}), Rows());
}

TEST_F(SelectAllButton, AnEmptyListStillTurnsTheCaption) {
    CmdSelAll_Click(App);
    EXPECT_EQ("Select All", Caption());
}

class ColumnClicks : public SelectionTest {
 protected:
    ColumnClicks() {
        AddRow("B", "one", true);
        AddRow("C", "two", false);
        AddRow("A", "three", true);
    }
};

TEST_F(ColumnClicks, TheDescriptionSortsUpwardsThenDownwards) {
    DriverColumn_Click(App, 1);
    EXPECT_EQ((Texts{"+B", "+A", "-C"}), Rows());
    DriverColumn_Click(App, 1);
    EXPECT_EQ((Texts{"-C", "+A", "+B"}), Rows());
    DriverColumn_Click(App, 1);
    EXPECT_EQ((Texts{"+B", "+A", "-C"}), Rows());
}

TEST_F(ColumnClicks, TheFirstClickOnTheNamesSortsDownwards) {
    DriverColumn_Click(App, 0);
    EXPECT_EQ((Texts{"-C", "+B", "+A"}), Rows());
    DriverColumn_Click(App, 0);
    EXPECT_EQ((Texts{"+A", "+B", "-C"}), Rows());
}

TEST_F(ColumnClicks, AnotherColumnKeepsTheDirection) {
    DriverColumn_Click(App, 1);
    DriverColumn_Click(App, 1);
    DriverColumn_Click(App, 0);
    EXPECT_EQ((Texts{"-C", "+B", "+A"}), Rows());
    DriverColumn_Click(App, 1);
    EXPECT_EQ((Texts{"-C", "+A", "+B"}), Rows());
    DriverColumn_Click(App, 1);
    EXPECT_EQ((Texts{"+B", "+A", "-C"}), Rows());
}

TEST_F(ColumnClicks, TheColumnIsRemembered) {
    List().Sorted = false;
    DriverColumn_Click(App, 1);
    EXPECT_TRUE(List().Sorted);
    EXPECT_EQ(1, List().SortKey);
    EXPECT_EQ(1, App.Drivers.SortColumn);
    EXPECT_EQ(1, App.Drivers.LastSortColumn);
    DriverColumn_Click(App, 0);
    EXPECT_EQ(0, List().SortKey);
    EXPECT_EQ(0, App.Drivers.SortColumn);
    EXPECT_EQ(0, App.Drivers.LastSortColumn);
}

TEST_F(ColumnClicks, ANewListIsSortedByDescriptionInTheLastDirection) {
    MakeDriver("ndis\\A.CAB", "ndis.txt", "one");
    MakeDriver("ndis\\B.CAB", "ndis.txt", "two");
    DriverColumn_Click(App, 0);
    LoadNdis();
    EXPECT_EQ((Texts{"+B", "+A"}), Rows());
    EXPECT_EQ(1, List().SortKey);
}

class SelectionSize : public ::testing::Test {
 protected:
    void Resize(int width, int height) {
        Form.Width = width;
        Form.Height = height;
        DriverSelection_Resize(Form);
    }
    FrmDrivers Form;
};

TEST_F(SelectionSize, TheControlsFollowTheWindow) {
    Form.CmdSelAll.Left = 120;
    Resize(8000, 5000);
    EXPECT_EQ(8000, Form.Width);
    EXPECT_EQ(5000, Form.Height);
    EXPECT_EQ(7900, Form.LV.Width);
    EXPECT_EQ(3950, Form.LV.Height);
    EXPECT_EQ(4050, Form.CmdOK.Top);
    EXPECT_EQ(4050, Form.CmdCancel.Top);
    EXPECT_EQ(4050, Form.CmdSelAll.Top);
    EXPECT_EQ(4850, Form.CmdOK.Left);
    EXPECT_EQ(6290, Form.CmdCancel.Left);
    EXPECT_EQ(120, Form.CmdSelAll.Left);
}

TEST_F(SelectionSize, TheLeastSizeItselfIsKept) {
    Resize(6870, 2430);
    EXPECT_EQ(6870, Form.Width);
    EXPECT_EQ(2430, Form.Height);
    EXPECT_EQ(6770, Form.LV.Width);
    EXPECT_EQ(1380, Form.LV.Height);
    EXPECT_EQ(1480, Form.CmdOK.Top);
    EXPECT_EQ(3720, Form.CmdOK.Left);
    EXPECT_EQ(5160, Form.CmdCancel.Left);
}

TEST_F(SelectionSize, ASmallerWindowIsRaisedToTheLeastSizeAndLaidOutForIt) {
    Resize(6869, 2429);
    EXPECT_EQ(6870, Form.Width);
    EXPECT_EQ(2430, Form.Height);
    EXPECT_EQ(6770, Form.LV.Width);
    EXPECT_EQ(1380, Form.LV.Height);
    EXPECT_EQ(1480, Form.CmdSelAll.Top);
    EXPECT_EQ(5160, Form.CmdCancel.Left);
}

TEST_F(SelectionSize, TheTwoDirectionsAreIndependent) {
    Resize(100, 5000);
    EXPECT_EQ(6870, Form.Width);
    EXPECT_EQ(5000, Form.Height);
    EXPECT_EQ(3950, Form.LV.Height);
    Resize(8000, 100);
    EXPECT_EQ(8000, Form.Width);
    EXPECT_EQ(2430, Form.Height);
    EXPECT_EQ(7900, Form.LV.Width);
}

class DriverRows : public ApplicationTest {};

TEST_F(DriverRows, AClickEnablesTheButtonWhileTheRowIsTicked) {
    FrmWizard& wizard = App.Wizard;
    for (const int value : {0, 1, 0, 2}) {
        wizard.ChkASPI.Value = value;
        ChkASPI_Click(App);
        EXPECT_EQ(value != 0, wizard.CmdSelASPI.Enabled) << value;
        wizard.ChkNDIS.Value = value;
        ChkNDIS_Click(App);
        EXPECT_EQ(value != 0, wizard.CmdSelNDIS.Enabled) << value;
    }
}

TEST_F(DriverRows, EachRowHasItsOwnButton) {
    FrmWizard& wizard = App.Wizard;
    wizard.ChkASPI.Value = 1;
    wizard.ChkNDIS.Value = 0;
    ChkASPI_Click(App);
    ChkNDIS_Click(App);
    EXPECT_TRUE(wizard.CmdSelASPI.Enabled);
    EXPECT_FALSE(wizard.CmdSelNDIS.Enabled);
    EXPECT_EQ("Select which drivers to include...", wizard.CmdSelASPI.Caption);
    EXPECT_EQ("Select which drivers to include...", wizard.CmdSelNDIS.Caption);
}

}  // namespace
}  // namespace velbooter::testing
