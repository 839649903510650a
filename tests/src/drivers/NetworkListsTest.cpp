#include "src/drivers/NetworkLists.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "src/common/RuntimeError.h"
#include "tests/src/drivers/DriverFolder.h"

namespace velbooter::testing {
namespace {

using Files = std::vector<std::string>;

/// In NDIS mode with a tree cabs, and the archiver in place.
class NetworkListsTest : public DriversTest {
 protected:
    NetworkListsTest() {
        InstallArchiver();
        Folder.MakeFolder("cabs");
        App.Wizard.ChkNDIS.Value = 1;
        SetNetworkMode(App.Wizard, NetworkMode::Ndis);
    }

    /// Creates a driver with both members, each containing the driver's name.
    void MakeNdisDriver(const std::string& name) {
        MakeCabinet("ndis\\" + name + ".CAB", {{"ndis.txt", Menu(name) + "\r\nnot taken over\r\n"},
                                               {"ndis.pci", Pci(name) + "\r\n"},
                                               {name + ".DOS", "driver"}});
    }
    static std::string Menu(const std::string& name) { return name + ".DOS  card " + name + " [x]"; }
    static std::string Pci(const std::string& name) { return "8086 1229 " + name; }

    void WriteIndex(const std::string& index) { Folder.Write("Drivers.ini", index); }
    void Create(const std::string& index) {
        WriteIndex(index);
        CreatePrebuiltFiles(App.Paths, App.Screen, App.Wizard);
    }
    /// What follows the header lines in the list and in the map.
    std::string MenuLines() const { return After(kMenuHeader, Folder.Read("cabs\\etc\\_msnet.nic")); }
    std::string PciLines() const { return After(kPciHeader, Folder.Read("cabs\\etc\\_msnet.pci")); }
    Files Calls() const {
        Files commandLines;
        for (const ToolCall& call : Folder.Calls("cabarc.exe")) commandLines.push_back(call.CommandLine);
        return commandLines;
    }

    static constexpr const char* kMenuHeader =
        "; This file is used to manual\r\n"
        "; select a network driver\r\n"
        ":_ndis \"Select Network driver...\" [x]\r\n";
    static constexpr const char* kPciHeader = "; PCI map file (build from ndis.pci files)\r\n";

 private:
    static std::string After(const std::string& header, const std::string& content) {
        EXPECT_EQ(header, content.substr(0, header.size()));
        return content.size() < header.size() ? "" : content.substr(header.size());
    }
};

class NetworkLists : public NetworkListsTest {};

TEST_F(NetworkLists, TheSelectedDriversStandInTheOrderOfTheIndex) {
    for (const char* name : {"E100B", "NE2000", "RTL8139"}) MakeNdisDriver(name);
    Create("[NDIS]\r\nRTL8139=1\r\nNE2000=0\r\nE100B=1\r\n");
    EXPECT_EQ(Menu("RTL8139") + "\r\n" + Menu("E100B") + "\r\n", MenuLines());
    EXPECT_EQ(Pci("RTL8139") + "\r\n" + Pci("E100B") + "\r\n", PciLines());
    EXPECT_EQ((Files{"etc\\_msnet.nic", "etc\\_msnet.pci"}), Listed());
    EXPECT_EQ(Listed(), Selected());
}

TEST_F(NetworkLists, WithoutASelectedDriverTheyHoldTheirHeadersAlone) {
    MakeNdisDriver("E100B");
    for (const char* index : {"", "[NDIS]\r\n", "[NDIS]\r\nE100B=0\r\n", "[ASPI]\r\nX=1\r\n"}) {
        App.Wizard.LstFiles.Clear();
        Create(index);
        EXPECT_EQ(kMenuHeader, Folder.Read("cabs\\etc\\_msnet.nic")) << index;
        EXPECT_EQ(kPciHeader, Folder.Read("cabs\\etc\\_msnet.pci")) << index;
        EXPECT_EQ((Files{"etc\\_msnet.nic", "etc\\_msnet.pci"}), Listed()) << index;
        EXPECT_EQ(Listed(), Selected()) << index;
    }
}

TEST_F(NetworkLists, NothingElseIsLeftBehind) {
    MakeNdisDriver("E100B");
    Create("[NDIS]\r\nE100B=1\r\n");
    EXPECT_EQ((Files{"etc\\_msnet.nic", "etc\\_msnet.pci"}), Folder.Tree("cabs"));
    EXPECT_FALSE(Folder.HasFile("ndis.txt"));
    EXPECT_FALSE(Folder.HasFile("ndis.pci"));
    EXPECT_FALSE(Folder.HasFile("E100B.DOS")) << "only members named ndis are extracted";
    EXPECT_EQ("[NDIS]\r\nE100B=1\r\n", Folder.Read("Drivers.ini"));
}

TEST_F(NetworkLists, OfTheMenuOnlyTheFirstLineIsTakenOverUnchanged) {
    const std::string first = "  \t:e100b  \"B\xFCro; card\" =[x]  \t ";
    MakeCabinet("ndis\\E100B.CAB", {{"ndis.txt", first + "\r\nsecond\r\n"}});
    Create("[NDIS]\r\nE100B=1\r\n");
    EXPECT_EQ(first + "\r\n", MenuLines());
    EXPECT_EQ("", PciLines());
}

TEST_F(NetworkLists, OfThePciListEveryLineIsTakenOverUnchanged) {
    MakeCabinet("ndis\\E100B.CAB", {{"ndis.pci", "; Intel\r\n\r\n  8086 1229 \r\n\t[x]=1\r\n\r\nlast"}});
    Create("[NDIS]\r\nE100B=1\r\n");
    EXPECT_EQ("; Intel\r\n\r\n  8086 1229 \r\n\t[x]=1\r\n\r\nlast\r\n", PciLines());
    EXPECT_EQ("", MenuLines());
}

TEST_F(NetworkLists, LineEndsBecomeCrLf) {
    MakeCabinet("ndis\\E100B.CAB", {{"ndis.txt", "menu\nsecond\n"}, {"ndis.pci", "one\n\ntwo\nthree"}});
    Create("[NDIS]\nE100B=1\n");
    EXPECT_EQ("menu\r\n", MenuLines());
    EXPECT_EQ("one\r\n\r\ntwo\r\nthree\r\n", PciLines());
}

TEST_F(NetworkLists, AnEmptyMemberAddsNothingAndAnEmptyLineIsALine) {
    MakeCabinet("ndis\\EMPTY.CAB", {{"ndis.txt", ""}, {"ndis.pci", ""}});
    MakeCabinet("ndis\\LINE.CAB", {{"ndis.txt", "\r\nsecond\r\n"}, {"ndis.pci", "\r\n"}});
    Create("[NDIS]\r\nEMPTY=1\r\n");
    EXPECT_EQ("", MenuLines());
    EXPECT_EQ("", PciLines());
    Create("[NDIS]\r\nLINE=1\r\n");
    EXPECT_EQ("\r\n", MenuLines());
    EXPECT_EQ("\r\n", PciLines());
}

TEST_F(NetworkLists, ADriverWithoutAMemberAddsNothingToThatListAndIsNotReported) {
    MakeCabinet("ndis\\A.CAB", {{"ndis.txt", "menu a\r\n"}, {"a.dos", "driver"}});
    MakeCabinet("ndis\\B.CAB", {{"ndis.pci", "pci b\r\n"}, {"b.dos", "driver"}});
    MakeCabinet("ndis\\C.CAB", {{"c.dos", "driver"}});
    MakeNdisDriver("D");
    Create("[NDIS]\r\nA=1\r\nB=1\r\nC=1\r\nD=1\r\n");
    EXPECT_EQ("menu a\r\n" + Menu("D") + "\r\n", MenuLines());
    EXPECT_EQ("pci b\r\n" + Pci("D") + "\r\n", PciLines());
    EXPECT_TRUE(Screen.Messages.empty());
}

TEST_F(NetworkLists, ADamagedOrMissingCabinetAddsNothing) {
    MakeNdisDriver("GOOD");
    const std::string whole = Folder.Read("drivers\\ndis\\GOOD.CAB");
    Folder.Write("drivers\\ndis\\CUT.CAB", whole.substr(0, whole.size() - 20));
    Folder.Write("drivers\\ndis\\TEXT.CAB", "no cabinet at all\r\n");
    Folder.Write("drivers\\ndis\\EMPTY.CAB");
    Create("[NDIS]\r\nCUT=1\r\nTEXT=1\r\nGONE=1\r\nEMPTY=1\r\nGOOD=1\r\n");
    EXPECT_EQ(Menu("GOOD") + "\r\n", MenuLines());
    EXPECT_EQ(Pci("GOOD") + "\r\n", PciLines());
    EXPECT_TRUE(Screen.Messages.empty());
}

TEST_F(NetworkLists, WithoutTheArchiverTheyHoldTheirHeadersAlone) {
    MakeNdisDriver("E100B");
    Folder.Remove("cabarc.exe");
    Create("[NDIS]\r\nE100B=1\r\n");
    EXPECT_EQ("", MenuLines());
    EXPECT_EQ("", PciLines());
}

TEST_F(NetworkLists, FilesLeftByAnEarlierRunAreNotTakenForADrivers) {
    MakeCabinet("ndis\\A.CAB", {{"a.dos", "driver"}});
    MakeNdisDriver("B");
    Folder.Write("ndis.txt", "old menu\r\n");
    Folder.Write("ndis.pci", "old pci\r\n");
    Create("[NDIS]\r\nA=1\r\nB=1\r\n");
    EXPECT_EQ(Menu("B") + "\r\n", MenuLines());
    EXPECT_EQ(Pci("B") + "\r\n", PciLines());
}

TEST_F(NetworkLists, WhatAnExtractionHasBroughtIsDeletedAndNothingElse) {
    Folder.Write("ndis.doc", "the user's own");
    MakeCabinet("ndis\\A.CAB",
                {{"ndis.txt", "menu"}, {"ndis.dos", "driver"}, {"ndis.inf", "setup"}, {"ndis.pci", "pci"}});
    Create("[NDIS]\r\nA=1\r\n");
    EXPECT_EQ("menu\r\n", MenuLines());
    for (const char* name : {"ndis.txt", "ndis.dos", "ndis.inf", "ndis.pci"})
        EXPECT_FALSE(Folder.HasFile(name)) << name;
    EXPECT_EQ("the user's own", Folder.Read("ndis.doc"));
}

// A list that a DOS editor has ended with 1Ah would hide everything after it from a DOS program.
TEST_F(NetworkLists, TheEndOfTextOfAListIsNotTakenOver) {
    MakeCabinet("ndis\\A.CAB", {{"ndis.txt", "\x1A"}, {"ndis.pci", "one\r\ntwo\r\n\x1A"}});
    MakeNdisDriver("B");
    Create("[NDIS]\r\nA=1\r\nB=1\r\n");
    EXPECT_EQ(Menu("B") + "\r\n", MenuLines());
    EXPECT_EQ("one\r\ntwo\r\n" + Pci("B") + "\r\n", PciLines());
}

TEST_F(NetworkLists, ReadOnlyMembersAreReadAndDeletedToo) {
    for (const char* name : {"A", "B"}) {
        MakeCabinet(std::string("ndis\\") + name + ".CAB",
                    {{"ndis.txt", std::string("menu ") + name}, {"ndis.pci", std::string("pci ") + name}},
                    FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    }
    Create("[NDIS]\r\nA=1\r\nB=1\r\n");
    EXPECT_EQ("menu A\r\nmenu B\r\n", MenuLines());
    EXPECT_EQ("pci A\r\npci B\r\n", PciLines());
    EXPECT_FALSE(Folder.HasFile("ndis.txt"));
    EXPECT_FALSE(Folder.HasFile("ndis.pci"));
}

TEST_F(NetworkLists, ADriverNamedBeyondAsciiIsRead) {
    MakeNdisDriver("T\xDCRK");
    Create("[NDIS]\r\nT\xDCRK=1\r\n");
    EXPECT_EQ(Menu("T\xDCRK") + "\r\n", MenuLines());
}

TEST_F(NetworkLists, OldListsAreReplacedWhateverTheirAttributesAre) {
    MakeNdisDriver("E100B");
    for (const char* file : {"cabs\\etc\\_msnet.nic", "cabs\\etc\\_msnet.pci"}) {
        Folder.Write(file,
                     "an older list, longer than the new one will be, so that a rest of it would show\r\n" +
                         std::string(1000, 'x'));
        Folder.SetAttributes(file, FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN);
    }
    Folder.Write("cabs\\_ndis.txt", std::string(1000, 'x'));
    Folder.Write("cabs\\_ndis.pci", std::string(1000, 'x'));
    Create("[NDIS]\r\nE100B=1\r\n");
    EXPECT_EQ(Menu("E100B") + "\r\n", MenuLines());
    EXPECT_EQ(Pci("E100B") + "\r\n", PciLines());
}

TEST_F(NetworkLists, OtherFilesOfTheFolderEtcStay) {
    Folder.Write("cabs\\etc\\hosts", "mine");
    Create("");
    EXPECT_EQ((Files{"etc\\_msnet.nic", "etc\\_msnet.pci", "etc\\hosts"}), Folder.Tree("cabs"));
    EXPECT_EQ("mine", Folder.Read("cabs\\etc\\hosts"));
}

TEST_F(NetworkLists, OnlyNdisModeMakesThem) {
    MakeNdisDriver("E100B");
    struct Case {
        int Value;
        NetworkMode Mode;
    };
    for (const Case& c : {Case{0, NetworkMode::Ndis}, {1, NetworkMode::Odi}, {0, NetworkMode::Odi}}) {
        App.Wizard.ChkNDIS.Value = c.Value;
        SetNetworkMode(App.Wizard, c.Mode);
        Create("[NDIS]\r\nE100B=1\r\n");
        EXPECT_EQ((Files{}), Folder.Tree("cabs")) << c.Value << App.Wizard.ChkNDIS.Caption;
        EXPECT_FALSE(Folder.HasFolder("cabs\\etc")) << c.Value << App.Wizard.ChkNDIS.Caption;
        EXPECT_EQ((Files{}), Listed()) << c.Value << App.Wizard.ChkNDIS.Caption;
    }
}

TEST_F(NetworkLists, EntriesThatBeginWithEtcUnderscoreAreSelectedInEveryMode) {
    for (const int value : {0, 1}) {
        App.Wizard.LstFiles.Clear();
        App.Wizard.ChkNDIS.Value = value;
        for (const char* entry : {"etc\\_setup.bat", "etc\\_", "etc\\hosts", "ETC\\_x", "etc/_x", "etc_x",
                                  "etc\\", "x\\etc\\_x", "IO.SYS", ""}) {
            App.Wizard.LstFiles.AddItem(entry);
        }
        Create("");
        Files expected{"etc\\_setup.bat", "etc\\_"};
        if (value == 1) expected.insert(expected.end(), {"etc\\_msnet.nic", "etc\\_msnet.pci"});
        EXPECT_EQ(expected, Selected()) << value;
    }
}

TEST_F(NetworkLists, OtherEntriesKeepTheirMark) {
    App.Wizard.LstFiles.AddItem("IO.SYS");
    App.Wizard.LstFiles.AddItem("etc\\hosts");
    App.Wizard.LstFiles.Select(0, true);
    Create("");
    EXPECT_EQ((Files{"IO.SYS", "etc\\_msnet.nic", "etc\\_msnet.pci"}), Selected());
}

TEST_F(NetworkLists, AListThatCannotBePlacedIsAnError) {
    const std::string target = Folder.Write("cabs\\etc\\_msnet.pci", "old");
    {
        LockedFile lock(target);
        EXPECT_EQ(kPermissionDenied, NumberOf([&] { Create(""); }));
    }
    EXPECT_EQ("old", Folder.Read("cabs\\etc\\_msnet.pci"));
    EXPECT_EQ((Files{"etc\\_msnet.nic"}), Listed());
}

TEST_F(NetworkLists, AFileInThePlaceOfTheFolderEtcIsAnError) {
    Folder.Write("cabs\\etc", "a file");
    EXPECT_EQ(kPathFileAccess, NumberOf([&] { Create(""); }));
    EXPECT_EQ("a file", Folder.Read("cabs\\etc"));
}

TEST_F(NetworkLists, AMissingTreeIsAnError) {
    Folder.Remove("cabs");
    EXPECT_EQ(kPathNotFound, NumberOf([&] { Create(""); }));
}

TEST_F(NetworkLists, AMissingOrLockedIndexIsAnError) {
    EXPECT_EQ(kFileNotFound, NumberOf([&] { CreatePrebuiltFiles(App.Paths, App.Screen, App.Wizard); }));
    WriteIndex("[NDIS]\r\nE100B=1\r\n");
    LockedFile lock(Folder.At("Drivers.ini"));
    EXPECT_EQ(kPermissionDenied, NumberOf([&] { CreatePrebuiltFiles(App.Paths, App.Screen, App.Wizard); }));
}

TEST_F(NetworkLists, ALockedListIsAnError) {
    LockedFile lock(Folder.Write("cabs\\_ndis.pci", "locked"));
    EXPECT_EQ(kPermissionDenied, NumberOf([&] { Create(""); }));
}

/// With a stand-in for the archiver, which records its command lines.
class NetworkListCalls : public NetworkListsTest {
 protected:
    NetworkListCalls() { Folder.MakeTool("cabarc.exe"); }
    std::string Call(const std::string& driver) const {
        return Folder.Path() + "\\cabarc -o x drivers\\ndis\\" + driver + ".cab ndis.*";
    }
    /// The drivers whose cabinets are opened when Drivers.ini contains `index`.
    Files Opened(const std::string& index) {
        Folder.Remove("cabarc.log");
        Create(index);
        Files drivers;
        const std::string before = Folder.Path() + "\\cabarc -o x drivers\\ndis\\";
        const std::string behind = ".cab ndis.*";
        for (const std::string& line : Calls()) {
            EXPECT_TRUE(line.starts_with(before) && line.ends_with(behind)) << line;
            drivers.push_back(line.substr(before.size(), line.size() - before.size() - behind.size()));
        }
        return drivers;
    }
};

TEST_F(NetworkListCalls, TheArchiverIsCalledHiddenWithRelativePathsInTheApplicationFolder) {
    const std::string elsewhere = Folder.MakeFolder("elsewhere");
    ASSERT_TRUE(SetCurrentDirectoryA(elsewhere.c_str()));
    Create("[NDIS]\r\nE100B=1\r\nNE2000=1\r\n");
    EXPECT_EQ((Files{Call("E100B"), Call("NE2000")}), Calls());
    for (const ToolCall& call : Folder.Calls("cabarc.exe")) {
        EXPECT_EQ("hidden", call.Window);
        EXPECT_EQ(Folder.Path(), call.WorkingFolder);
    }
}

TEST_F(NetworkListCalls, TheEndOfTheArchiverIsAwaitedWhileWindowsPaint) {
    Folder.MakeTool("cabarc.exe", "wait|700\ncreate|ndis.txt\n");
    Create("[NDIS]\r\nE100B=1\r\n");
    EXPECT_EQ("made by cabarc\r\n", MenuLines());
    EXPECT_GE(Screen.EventPumps(), 2);
}

TEST_F(NetworkListCalls, ALineMustEndInOne) {
    EXPECT_EQ((Files{"A", "E"}),
              Opened("[NDIS]\r\nA=1\r\nB=1 \r\nC=1\t\r\nD=1;\r\nE=1\r\nF=2\r\nG=-1x\r\nH=\r\n1 \r\n"));
}

TEST_F(NetworkListCalls, TheLastTwoCharactersOfALineAreCutOff) {
    EXPECT_EQ((Files{"E100B=", "A=", "B", "C:", "n"}),
              Opened("[NDIS]\r\nE100B=11\r\nA=-1\r\nB=1\r\nC:=1\r\nno1\r\n"));
}

TEST_F(NetworkListCalls, OnlyTheSectionNdisCounts) {
    EXPECT_EQ((Files{"B", "E"}), Opened("A=1\r\n[NDIS]\r\nB=1\r\n[ASPI]\r\nC=1\r\n[ODI16]\r\nE100B=1\r\n"
                                        "[ndis]\r\nD=1\r\n[NDIS]\r\nE=1\r\n[x1\r\nF=1\r\n"));
}

TEST_F(NetworkListCalls, TheHeaderCountsOnlyWhenItIsWrittenExactlySo) {
    for (const char* header : {"[ndis]", "[Ndis]", "[NDIS] ", " [NDIS]", "[NDIS", "[NDIS]1", "[NDIS1]"})
        EXPECT_EQ((Files{}), Opened(std::string(header) + "\r\nA=1\r\n")) << header;
}

TEST_F(NetworkListCalls, CommentsAndEmptyLinesAreSkippedAndEndNothing) {
    EXPECT_EQ((Files{"C"}), Opened("[NDIS]\r\n;A=1\r\n\r\n; B=1\r\n;[ASPI]\r\nC=1\r\n"));
}

TEST_F(NetworkListCalls, ALineOfTheOneAloneNamesNoDriver) {
    EXPECT_EQ((Files{"", ""}), Opened("[NDIS]\r\n=1\r\n1\r\n"));
}

TEST_F(NetworkListCalls, TheBarMovesOneStepForEachSelectedDriver) {
    App.Wizard.WorkProgress.Value = 77;
    Create("[NDIS]\r\nA=1\r\nB=0\r\n;C=1\r\nD=1\r\n\r\nE=1\r\n[ODI16]\r\nF=1\r\n");
    EXPECT_EQ(3, App.Wizard.WorkProgress.Max);
    EXPECT_EQ((std::vector<int>{1, 2, 3}), PaintedProgress());
    EXPECT_EQ(3, Screen.Repaints());
    for (const View& view : Screen.Views) EXPECT_EQ(3, view.ProgressMax);
}

TEST_F(NetworkListCalls, WithoutADriverTheBarStaysAtItsMinimum) {
    App.Wizard.WorkProgress.Value = 77;
    Create("[NDIS]\r\nB=0\r\n");
    EXPECT_EQ(0, App.Wizard.WorkProgress.Max);
    EXPECT_EQ(0, App.Wizard.WorkProgress.Value);
}

TEST_F(NetworkListCalls, TheNameAndTheGroupOfACacheAreFree) {
    WriteIndex("[NDIS]\r\nA=1\r\n[MINE]\r\nB=1\r\n");
    Folder.MakeTool("cabarc.exe", "create|x.txt\ncreate|x.pci\n");
    CreateCacheFile(App.Paths, App.Screen, App.Wizard.WorkProgress, "x", "mine\\");
    EXPECT_EQ((Files{}), Calls()) << "the section is looked up with the backslash";
    CreateCacheFile(App.Paths, App.Screen, App.Wizard.WorkProgress, "x", "mine");
    EXPECT_EQ((Files{Folder.Path() + "\\cabarc -o x drivers\\mine\\B.cab x.*"}), Calls());
    EXPECT_TRUE(Folder.Read("cabs\\_x.txt").ends_with("[x]\r\nmade by cabarc\r\n"));
    EXPECT_TRUE(Folder.Read("cabs\\_x.pci").ends_with("files)\r\nmade by cabarc\r\n"));
}

}  // namespace
}  // namespace velbooter::testing
