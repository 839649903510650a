#include "src/drivers/DriverSelection.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "src/drivers/DriverSettings.h"
#include "tests/src/drivers/DriverFolder.h"

namespace velbooter::testing {
namespace {

using Texts = std::vector<std::string>;

class SelectionTest : public DriversTest {
 protected:
    void ChooseOdi() { App.Wizard.ChkNDIS.Width = 3015; }
    void LoadNdis() { CreateIndex(App, "ndis.txt", "ndis.pci", "ndis", "NIC", true); }

    ListView& List() { return App.Drivers.LV; }
    /// The rows as displayed: a tick, the name, and the description if there is one.
    Texts Rows(bool withDescriptions = false) const {
        Texts rows;
        for (const ListItem& row : App.Drivers.LV.ListItems) {
            rows.push_back((row.Checked ? "+" : "-") + row.Text +
                           (withDescriptions ? ": " + row.SubItem : ""));
        }
        return rows;
    }
    ListItem& Row(const std::string& name) {
        for (ListItem& row : List().ListItems) {
            if (row.Text == name) return row;
        }
        throw std::runtime_error("there is no row " + name);
    }
    void AddRow(const std::string& name, const std::string& description, bool checked) {
        ListItem row;
        row.Text = name;
        row.SubItem = description;
        row.Checked = checked;
        List().ListItems.push_back(row);
    }
};

class DriverList : public SelectionTest {};

TEST_F(DriverList, ADriverIsARowWithItsNameInUpperCaseAndItsDescription) {
    MakeDriver("ndis\\e100b.cab", "ndis.txt", "Intel PRO/100");
    LoadNdis();
    EXPECT_EQ((Texts{"+E100B: Intel PRO/100"}), Rows(true));
}

TEST_F(DriverList, TheDescriptionIsExtractedFromEachCabinet) {
    MakeEmptyCabinets("odi16", {"a.cab", "B.CAB"});
    Folder.MakeTool("cabarc.exe");
    CreateIndex(App, "odi.txt", "odi16.pci", "odi16", "NIC", true);
    const auto calls = Folder.Calls("cabarc.exe");
    ASSERT_EQ(2u, calls.size());
    EXPECT_EQ(Folder.Path() + "\\cabarc -o x drivers\\odi16\\a.cab odi.txt", calls[0].CommandLine);
    EXPECT_EQ(Folder.Path() + "\\cabarc -o x drivers\\odi16\\B.CAB odi.txt", calls[1].CommandLine);
    EXPECT_EQ("hidden", calls[1].Window);
    EXPECT_EQ(Folder.Path(), calls[1].WorkingFolder);
    EXPECT_EQ((Texts{"+A: Description not available (ODI16 Driver)",
                     "+B: Description not available (ODI16 Driver)"}),
              Rows(true));
}

TEST_F(DriverList, ADamagedDriverIsListedAndTickedLikeAnyOther) {
    MakeCabinet("ndis\\EMPTY.CAB", {{"ndis.txt", ""}});
    MakeDriver("ndis\\GOOD.CAB", "ndis.txt", "Good card");
    Folder.Write("drivers\\ndis\\CUT.CAB", Folder.Read("drivers\\ndis\\GOOD.CAB").substr(0, 60));
    Folder.Write("Drivers.ini", "[NDIS]\r\nEMPTY=1\r\nCUT=1\r\nGOOD=0\r\n");
    LoadNdis();
    EXPECT_EQ((Texts{"+CUT: Description not available (NDIS Driver)", "-GOOD: Good card",
                     "+EMPTY: The Driver file is corrupted"}),
              Rows(true));
}

TEST_F(DriverList, OnlyCabinetsAreListedHiddenOnesToo) {
    MakeEmptyCabinets("ndis", {"a.cab", "hidden.CAB", "ndis.txt", "cab", "a.cab.txt"});
    Folder.SetAttributes("drivers\\ndis\\hidden.CAB", FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    Folder.MakeFolder("drivers\\ndis\\folder.cab");
    LoadNdis();
    EXPECT_EQ((Texts{"+A", "+HIDDEN"}), Rows());
}

TEST_F(DriverList, NamesBeyondAsciiAreUpperCased) {
    MakeDriver("ndis\\t\xFCrk.cab", "ndis.txt", "B\xFCro");
    Folder.Write("Drivers.ini", "[NDIS]\r\nT\xDCRK=0\r\n");
    LoadNdis();
    EXPECT_EQ((Texts{"-T\xDCRK: B\xFCro"}), Rows(true));
}

TEST_F(DriverList, TicksFollowTheIndexAndADriverWithoutAKeyIsNotTicked) {
    MakeEmptyCabinets("ndis", {"e100b.cab", "ne2000.cab", "rtl8139.cab"});
    Folder.Write("Drivers.ini", "[NDIS]\r\nE100B=0\r\nRTL8139=1\r\n[ASPI]\r\nNE2000=1\r\n");
    LoadNdis();
    EXPECT_TRUE(App.Drivers.DriversIniExists);
    EXPECT_EQ((Texts{"-E100B", "-NE2000", "+RTL8139"}), Rows());
}

TEST_F(DriverList, AnyNumberButZeroMeansTicked) {
    struct Case {
        const char* Value;
        bool Ticked;
    };
    MakeEmptyCabinets("ndis", {"a.cab"});
    for (const Case& c : {Case{"1", true},
                          {"2", true},
                          {"-1", true},
                          {"0.5", true},
                          {"1x", true},
                          {"0", false},
                          {"", false},
                          {"x", false},
                          {"x1", false},
                          {"00", false}}) {
        Folder.Write("Drivers.ini", std::string("[NDIS]\r\nA=") + c.Value + "\r\n");
        LoadNdis();
        EXPECT_EQ((Texts{c.Ticked ? "+A" : "-A"}), Rows()) << c.Value;
    }
}

TEST_F(DriverList, WithoutAnIndexEveryRowIsTicked) {
    MakeEmptyCabinets("ndis", {"a.cab", "b.cab"});
    LoadNdis();
    EXPECT_FALSE(App.Drivers.DriversIniExists);
    EXPECT_EQ((Texts{"+A", "+B"}), Rows());
}

TEST_F(DriverList, WithAnIndexOfNoBytesNoRowIsTicked) {
    MakeEmptyCabinets("ndis", {"a.cab", "b.cab"});
    Folder.Write("Drivers.ini");
    LoadNdis();
    EXPECT_TRUE(App.Drivers.DriversIniExists);
    EXPECT_EQ((Texts{"-A", "-B"}), Rows());
}

TEST_F(DriverList, AnIndexThatCannotBeReadCountsAsMissing) {
    MakeEmptyCabinets("ndis", {"a.cab"});
    LockedFile lock(Folder.Write("Drivers.ini", "[NDIS]\r\nA=0\r\n"));
    LoadNdis();
    EXPECT_FALSE(App.Drivers.DriversIniExists);
    EXPECT_EQ((Texts{"+A"}), Rows());
}

TEST_F(DriverList, AnIndexWithLfAloneIsRead) {
    MakeEmptyCabinets("ndis", {"a.cab", "b.cab"});
    Folder.Write("Drivers.ini", "[NDIS]\nA=0\nB=1\n");
    LoadNdis();
    EXPECT_EQ((Texts{"-A", "+B"}), Rows());
}

TEST_F(DriverList, RowsAreSortedByDescriptionWithoutRegardToCase) {
    MakeDriver("ndis\\A.CAB", "ndis.txt", "zeta");
    MakeDriver("ndis\\B.CAB", "ndis.txt", "Beta");
    MakeDriver("ndis\\C.CAB", "ndis.txt", "alpha");
    MakeDriver("ndis\\D.CAB", "ndis.txt", "Gamma");
    LoadNdis();
    EXPECT_EQ((Texts{"+C", "+B", "+D", "+A"}), Rows());
    EXPECT_TRUE(List().Sorted);
    EXPECT_EQ(1, List().SortKey);
}

TEST_F(DriverList, RowsAreNotSortedWhileTheyAreAdded) {
    MakeDriver("ndis\\A.CAB", "ndis.txt", "zeta");
    MakeDriver("ndis\\B.CAB", "ndis.txt", "alpha");
    bool seen = false;
    Screen.OnPaint = [&] {
        if (List().ListItems.size() != 2 || List().Sorted) return;
        seen = true;
        EXPECT_EQ((Texts{"+A", "+B"}), Rows());
    };
    LoadNdis();
    EXPECT_TRUE(seen);
    EXPECT_EQ((Texts{"+B", "+A"}), Rows());
}

TEST_F(DriverList, EveryRowIsDrawnAndEventsAreHandledForEachFile) {
    MakeEmptyCabinets("ndis", {"a.cab", "b.cab", "c.cab"});
    std::vector<size_t> drawn;
    Screen.OnPaint = [&] {
        const size_t rows = List().ListItems.size();
        if (!Screen.Views.back().PendingEvents && (drawn.empty() || drawn.back() != rows))
            drawn.push_back(rows);
    };
    LoadNdis();
    EXPECT_EQ((std::vector<size_t>{1, 2, 3}), drawn);
    EXPECT_EQ(3, Screen.EventPumps()) << "no archiver is there, so that nothing is waited for";
}

TEST_F(DriverList, TheTitleAndTheTagAreThoseOfTheGroup) {
    EXPECT_EQ("DriverName", List().FirstColumnTitle);
    EXPECT_EQ("Description", List().SecondColumnTitle);
    CreateIndex(App, "scsi.txt", "scsi.pci", "aspi", "Some caption", true);
    EXPECT_EQ("Some caption", List().FirstColumnTitle);
    EXPECT_EQ("Description", List().SecondColumnTitle);
    EXPECT_EQ("aspi", List().Tag);
    CreateIndex(App, "odi.txt", "odi32.pci", "odi32", "NIC", true);
    EXPECT_EQ("NIC", List().FirstColumnTitle);
    EXPECT_EQ("odi32", List().Tag);
}

TEST_F(DriverList, ATrailingBackslashOfTheFolderIsDropped) {
    MakeEmptyCabinets("ndis", {"a.cab"});
    Folder.MakeTool("cabarc.exe");
    Folder.Write("Drivers.ini", "[NDIS]\r\nA=1\r\n");
    CreateIndex(App, "ndis.txt", "ndis.pci", "ndis\\", "NIC", true);
    EXPECT_EQ("ndis", List().Tag);
    EXPECT_EQ((Texts{"+A: Description not available (NDIS Driver)"}), Rows(true));
    EXPECT_EQ(Folder.Path() + "\\cabarc -o x drivers\\ndis\\a.cab ndis.txt",
              Folder.Calls("cabarc.exe").at(0).CommandLine);
}

TEST_F(DriverList, TheListIsEmptiedOnlyWhenAskedTo) {
    MakeEmptyCabinets("odi16", {"a.cab"});
    MakeEmptyCabinets("odi32", {"b.cab"});
    AddRow("OLD", "old", true);
    CreateIndex(App, "odi.txt", "odi16.pci", "odi16", "NIC", true);
    EXPECT_EQ((Texts{"+A"}), Rows());
    CreateIndex(App, "odi.txt", "odi32.pci", "odi32", "NIC", false);
    EXPECT_EQ((Texts{"+A", "+B"}), Rows());
}

TEST_F(DriverList, AMissingFolderGivesAnEmptyListAndOkWritesNothing) {
    AddRow("OLD", "old", true);
    LoadNdis();
    EXPECT_EQ((Texts{}), Rows());
    CmdOK_Click(App);
    EXPECT_FALSE(Folder.HasFile("Drivers.ini"));
}

TEST_F(DriverList, NothingIsLeftInTheApplicationFolder) {
    MakeDriver("ndis\\A.CAB", "ndis.txt", "alpha");
    MakeDriver("ndis\\B.CAB", "ndis.txt", "beta");
    LoadNdis();
    EXPECT_EQ((Texts{"cabarc.exe", "drivers\\ndis\\A.CAB", "drivers\\ndis\\B.CAB"}), Folder.Tree(""));
}

class DriverSelectionOpening : public SelectionTest {
 protected:
    DriverSelectionOpening() {
        MakeEmptyCabinets("aspi", {"aha154x.cab"});
        MakeEmptyCabinets("ndis", {"e100b.cab"});
        MakeEmptyCabinets("odi16", {"ne2000.cab"});
        MakeEmptyCabinets("odi32", {"rtl8139.cab"});
        Folder.MakeTool("cabarc.exe");
    }
    /// The cabinets and members that were asked for.
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

TEST_F(DriverSelectionOpening, OnlyTheExactWidthMeansOdi) {
    for (const int width : {2655, 3014, 3016, 0}) {
        App.Wizard.ChkNDIS.Width = width;
        CmdSelNDIS_Click(App);
        EXPECT_EQ("ndis", List().Tag) << width;
    }
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

TEST_F(SelectAllButton, WithAnyOtherCaptionItUnticksAndKeepsTheCaption) {
    for (const char* caption : {"", "select all", "Select all", "Everything", "&Select All"}) {
        Folder.Remove("Drivers.ini");
        LoadNdis();
        Caption() = caption;
        CmdSelAll_Click(App);
        EXPECT_EQ((Texts{"-A", "-B", "-C"}), Rows()) << caption;
        EXPECT_EQ(caption, Caption());
        CmdSelAll_Click(App);
        EXPECT_EQ((Texts{"-A", "-B", "-C"}), Rows()) << caption;
    }
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

}  // namespace
}  // namespace velbooter::testing
