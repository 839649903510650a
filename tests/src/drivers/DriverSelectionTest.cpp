#include "src/drivers/DriverSelection.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "src/common/RuntimeError.h"
#include "tests/src/drivers/SelectionTest.h"

namespace velbooter::testing {
namespace {

using Texts = std::vector<std::string>;

class DriverList : public SelectionTest {};

TEST_F(DriverList, ADriverIsARowWithItsNameInUpperCaseAndItsDescription) {
    MakeDriver("ndis\\e100b.cab", "ndis.txt", "Intel PRO/100");
    LoadNdis();
    EXPECT_EQ((Texts{"+E100B: Intel PRO/100"}), Rows(true));
}

TEST_F(DriverList, TheDescriptionIsExtractedFromEachCabinet) {
    MakeEmptyCabinets("odi16", {"a.cab", "B.CAB"});
    Folder.MakeTool("cabarc.exe");
    CreateIndex(App.Paths, App.Screen, App.Drivers, "odi.txt", "odi16.pci", "odi16", "NIC", true);
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

TEST_F(DriverList, ALongerEndingIsNoDriver) {
    MakeEmptyCabinets("ndis", {"a.cab", "b.cab~", "c.cab_old"});
    LoadNdis();
    EXPECT_EQ((Texts{"+A"}), Rows());
}

// A driver must not be mistaken for another one with a similar name.
TEST_F(DriverList, ANameThatTheCodePageLacksIsAnError) {
    MakeDriver("ndis\\E100B.CAB", "ndis.txt", "Intel PRO/100");
    const std::wstring folder(Folder.Path().begin(), Folder.Path().end());
    ASSERT_TRUE(MoveFileW((folder + L"\\drivers\\ndis\\E100B.CAB").c_str(),
                          (folder + L"\\drivers\\ndis\\\u0416uk.cab").c_str()));
    try {
        LoadNdis();
        ADD_FAILURE();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(kBadFileName, error.Number);
        EXPECT_EQ(Folder.At("drivers\\ndis\\?uk.cab"), error.File);
    }
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
    CreateIndex(App.Paths, App.Screen, App.Drivers, "scsi.txt", "scsi.pci", "aspi", "Some caption", true);
    EXPECT_EQ("Some caption", List().FirstColumnTitle);
    EXPECT_EQ("Description", List().SecondColumnTitle);
    EXPECT_EQ("aspi", List().Tag);
    CreateIndex(App.Paths, App.Screen, App.Drivers, "odi.txt", "odi32.pci", "odi32", "NIC", true);
    EXPECT_EQ("NIC", List().FirstColumnTitle);
    EXPECT_EQ("odi32", List().Tag);
}

TEST_F(DriverList, ATrailingBackslashOfTheFolderIsDropped) {
    MakeEmptyCabinets("ndis", {"a.cab"});
    Folder.MakeTool("cabarc.exe");
    Folder.Write("Drivers.ini", "[NDIS]\r\nA=1\r\n");
    CreateIndex(App.Paths, App.Screen, App.Drivers, "ndis.txt", "ndis.pci", "ndis\\", "NIC", true);
    EXPECT_EQ("ndis", List().Tag);
    EXPECT_EQ((Texts{"+A: Description not available (NDIS Driver)"}), Rows(true));
    EXPECT_EQ(Folder.Path() + "\\cabarc -o x drivers\\ndis\\a.cab ndis.txt",
              Folder.Calls("cabarc.exe").at(0).CommandLine);
}

TEST_F(DriverList, TheListIsEmptiedOnlyWhenAskedTo) {
    MakeEmptyCabinets("odi16", {"a.cab"});
    MakeEmptyCabinets("odi32", {"b.cab"});
    AddRow("OLD", "old", true);
    CreateIndex(App.Paths, App.Screen, App.Drivers, "odi.txt", "odi16.pci", "odi16", "NIC", true);
    EXPECT_EQ((Texts{"+A"}), Rows());
    CreateIndex(App.Paths, App.Screen, App.Drivers, "odi.txt", "odi32.pci", "odi32", "NIC", false);
    EXPECT_EQ((Texts{"+A", "+B"}), Rows());
}

TEST_F(DriverList, AMissingFolderGivesAnEmptyListAndOkWritesNothing) {
    AddRow("OLD", "old", true);
    LoadNdis();
    EXPECT_EQ((Texts{}), Rows());
    StoreTicks(App.Paths, App.Drivers.LV);
    EXPECT_FALSE(Folder.HasFile("Drivers.ini"));
}

TEST_F(DriverList, NothingIsLeftInTheApplicationFolder) {
    MakeDriver("ndis\\A.CAB", "ndis.txt", "alpha");
    MakeDriver("ndis\\B.CAB", "ndis.txt", "beta");
    LoadNdis();
    EXPECT_EQ((Texts{"cabarc.exe", "drivers\\ndis\\A.CAB", "drivers\\ndis\\B.CAB"}), Folder.Tree(""));
}

}  // namespace
}  // namespace velbooter::testing
