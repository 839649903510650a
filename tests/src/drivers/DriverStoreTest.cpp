#include "src/drivers/DriverStore.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "src/common/RuntimeError.h"
#include "src/drivers/DriverIndex.h"
#include "tests/src/drivers/DriverFolder.h"

namespace velbooter::testing {
namespace {

TEST(DriverGroups, TheirFoldersAndMembersAreFixed) {
    const char* expected[4][4] = {{"ASPI", "aspi", "scsi.txt", "scsi.pci"},
                                  {"NDIS", "ndis", "ndis.txt", "ndis.pci"},
                                  {"ODI16", "odi16", "odi.txt", "odi16.pci"},
                                  {"ODI32", "odi32", "odi.txt", "odi32.pci"}};
    for (size_t i = 0; i < 4; ++i) {
        EXPECT_STREQ(expected[i][0], kDriverGroups[i].Section);
        EXPECT_STREQ(expected[i][1], kDriverGroups[i].Folder);
        EXPECT_STREQ(expected[i][2], kDriverGroups[i].DescriptionFile);
        EXPECT_STREQ(expected[i][3], kDriverGroups[i].PciFile);
    }
}

class DriverFolders : public DriversTest {};

TEST_F(DriverFolders, AGroupIsThereWhenItsFolderIs) {
    for (const DriverGroup& group : kDriverGroups) {
        EXPECT_FALSE(HasDriverFolder(App.Paths, group)) << group.Section;
        Folder.MakeFolder(std::string("drivers\\") + group.Folder);
        EXPECT_TRUE(HasDriverFolder(App.Paths, group)) << group.Section;
    }
}

TEST_F(DriverFolders, AFileOfThatNameIsNoFolder) {
    Folder.Write("drivers\\ndis", "a file");
    EXPECT_FALSE(HasDriverFolder(App.Paths, kNdisDrivers));
}

class DefaultDrivers : public DriversTest {
 protected:
    DefaultDrivers() {
        MakeEmptyCabinets("ndis", {"e100b.cab", "ne2000.cab", "rtl8139.cab"});
        MakeEmptyCabinets("aspi", {"aha154x.cab", "aic78.cab"});
        MakeEmptyCabinets("odi16", {"nw.cab"});
        MakeEmptyCabinets("odi32", {"nw.cab"});
        Folder.Write("Drivers.ini", kEverything);
    }

    /// Applies the defaults of a disk whose configuration file contains `lines`.
    void Apply(const std::string& lines, const std::string& group) {
        Folder.Write("files\\net.ini", lines);
        GetDefaultDriversOptions(App.Paths, App.Screen, "net.ini", group);
    }
    void ApplyNdis(const std::string& lines) { Apply(lines, "NDIS"); }

    /// Returns the values of the three NDIS drivers, in the order of their names.
    std::string Ndis() const { return Key("NDIS", "E100B") + Key("NDIS", "NE2000") + Key("NDIS", "RTL8139"); }
    std::string Aspi() const { return Key("ASPI", "AHA154X") + Key("ASPI", "AIC78"); }

    static constexpr const char* kEverything =
        "[ASPI]\r\nAHA154X=1\r\nAIC78=1\r\n[NDIS]\r\nE100B=1\r\nNE2000=1\r\nRTL8139=1\r\n"
        "[ODI16]\r\nNW=1\r\n[ODI32]\r\nNW=1\r\n";
};

TEST_F(DefaultDrivers, EachCallNarrowsItsOwnGroupOnly) {
    const std::string lines = "[DefaultDrivers]\r\nNDIS\\e100b.cab\r\naspi\\AHA154X\r\n";
    Apply(lines, "NDIS");
    EXPECT_EQ("100", Ndis());
    EXPECT_EQ("11", Aspi()) << "the group's own call has not been made yet";
    Apply(lines, "ASPI");
    EXPECT_EQ("100", Ndis());
    EXPECT_EQ("10", Aspi());
    EXPECT_EQ("1", Key("ODI16", "NW"));
    EXPECT_EQ("1", Key("ODI32", "NW"));
}

TEST_F(DefaultDrivers, TheTwoOdiGroupsAreTwoGroups) {
    Apply("[DefaultDrivers]\r\nODI16\\nw\r\n", "ODI16");
    Apply("[DefaultDrivers]\r\nODI16\\nw\r\n", "ODI32");
    EXPECT_EQ("1", Key("ODI16", "NW"));
    EXPECT_EQ("0", Key("ODI32", "NW"));
}

TEST_F(DefaultDrivers, WithoutTheSectionTheSelectionStays) {
    for (const char* lines :
         {"", "[Copy_CABs]\r\nNDIS\\e100b.cab\r\n", "NDIS\\e100b.cab\r\n",
          "[defaultdrivers]\r\nNDIS\\e100b.cab\r\n", "[DefaultDrivers] \r\nNDIS\\e100b.cab\r\n",
          " [DefaultDrivers]\r\nNDIS\\e100b.cab\r\n", "[DEFAULTDRIVERS]\r\nNDIS\\e100b.cab\r\n",
          ";[DefaultDrivers]\r\nNDIS\\e100b.cab\r\n"}) {
        ApplyNdis(lines);
        EXPECT_EQ(kEverything, Folder.Read("Drivers.ini")) << lines;
    }
}

TEST_F(DefaultDrivers, AnEmptySectionSelectsNothing) {
    ApplyNdis("[DefaultDrivers]\r\n");
    EXPECT_EQ("000", Ndis());
    EXPECT_EQ("11", Aspi());
}

TEST_F(DefaultDrivers, ALineWithoutABackslashIsSkipped) {
    ApplyNdis("[DefaultDrivers]\r\nNDIS\r\nNDIS=E100B\r\nNDIS/E100B\r\nNDIS\\ne2000\r\n");
    EXPECT_EQ("010", Ndis());
}

TEST_F(DefaultDrivers, TheNameEndsBeforeItsFirstCab) {
    ApplyNdis("[DefaultDrivers]\r\nNDIS\\E100B.CAB.OLD\r\nNDIS\\ne2000 .cab.cab\r\n");
    EXPECT_EQ("110", Ndis());
    EXPECT_EQ("", Key("NDIS", "E100B.CAB.OLD"));
    EXPECT_EQ("", Key("NDIS", "NE2000.CAB"));
}

TEST_F(DefaultDrivers, AnotherEndingBelongsToTheName) {
    ApplyNdis("[DefaultDrivers]\r\nNDIS\\e100b.zip\r\n");
    EXPECT_EQ("000", Ndis());
    EXPECT_EQ("1", Key("NDIS", "E100B.ZIP"));
}

TEST_F(DefaultDrivers, CaseAndSpacesOfBothPartsDoNotMatter) {
    ApplyNdis("[DefaultDrivers]\r\n  nDiS  \\  e100B.Cab  \r\nndis\\RTL8139\r\n");
    EXPECT_EQ("101", Ndis());
}

TEST_F(DefaultDrivers, OnlyTheFirstTwoPartsCount) {
    ApplyNdis("[DefaultDrivers]\r\nNDIS\\e100b\\ne2000\r\n");
    EXPECT_EQ("100", Ndis());
}

TEST_F(DefaultDrivers, AGroupMustBeNamedWhole) {
    ApplyNdis("[DefaultDrivers]\r\nNDIS2\\e100b\r\nNDI\\ne2000\r\n\\rtl8139\r\n");
    EXPECT_EQ("000", Ndis());
}

TEST_F(DefaultDrivers, TheNextSectionEndsThem) {
    ApplyNdis("[DefaultDrivers]\r\nNDIS\\e100b\r\n[Copy_Files]\r\nNDIS\\ne2000\r\n[x\r\nNDIS\\rtl8139\r\n");
    EXPECT_EQ("100", Ndis());
}

TEST_F(DefaultDrivers, CommentsAndEmptyLinesDoNotEndThem) {
    ApplyNdis("[DefaultDrivers]\r\n; NDIS\\ne2000\r\n\r\n;[Copy_Files]\r\n;NDIS\\ne2000\r\nNDIS\\e100b\r\n");
    EXPECT_EQ("100", Ndis());
}

TEST_F(DefaultDrivers, ASecondSectionStartsAfresh) {
    ApplyNdis("[DefaultDrivers]\r\nNDIS\\e100b\r\n[Copy_Files]\r\n[DefaultDrivers]\r\nNDIS\\ne2000\r\n");
    EXPECT_EQ("010", Ndis());
}

TEST_F(DefaultDrivers, ADriverThatIsNotInTheStoreGetsItsKeyAllTheSame) {
    ApplyNdis("[DefaultDrivers]\r\nNDIS\\gone.cab\r\n");
    EXPECT_EQ("000", Ndis());
    EXPECT_EQ("1", Key("NDIS", "GONE"));
}

TEST_F(DefaultDrivers, AKeyOfADriverThatHasLeftTheStoreStays) {
    Folder.Write("Drivers.ini", "[NDIS]\r\nGONE=1\r\n");
    ApplyNdis("[DefaultDrivers]\r\n");
    EXPECT_EQ("1", Key("NDIS", "GONE")) << "only the cabinets that are there become 0";
}

TEST_F(DefaultDrivers, TheyAreAppliedAgainAtEveryCall) {
    const std::string lines = "[DefaultDrivers]\r\nNDIS\\e100b\r\n";
    ApplyNdis(lines);
    Folder.Write("Drivers.ini", kEverything);
    ApplyNdis(lines);
    EXPECT_EQ("100", Ndis());
}

TEST_F(DefaultDrivers, ANewFileGetsHeadersThatTheLineReadersKnow) {
    Folder.Remove("Drivers.ini");
    ApplyNdis("[DefaultDrivers]\r\nndis\\ne2000\r\n");
    EXPECT_EQ("[NDIS]\r\nE100B=0\r\nNE2000=1\r\nRTL8139=0\r\n", Folder.Read("Drivers.ini"));
}

TEST_F(DefaultDrivers, AFileOfNoBytesIsFilled) {
    Folder.Write("Drivers.ini");
    ApplyNdis("[DefaultDrivers]\r\nndis\\ne2000\r\n");
    EXPECT_EQ("[NDIS]\r\nE100B=0\r\nNE2000=1\r\nRTL8139=0\r\n", Folder.Read("Drivers.ini"));
}

TEST_F(DefaultDrivers, LinesMayEndInLfAlone) {
    Folder.Write("Drivers.ini", "[NDIS]\nE100B=1\nNE2000=1\nRTL8139=1\n");
    ApplyNdis("[DefaultDrivers]\nNDIS\\e100b.cab\nNDIS\\rtl8139");
    EXPECT_EQ("101", Ndis());
}

TEST_F(DefaultDrivers, NamesBeyondAsciiAreUpperCasedLikeTheCabinets) {
    MakeEmptyCabinets("ndis", {"t\xFCrk.cab"});
    ApplyNdis("[DefaultDrivers]\r\nNDIS\\t\xFCrk.cab\r\n");
    EXPECT_EQ("1", Key("NDIS", "T\xDCRK"));
    EXPECT_EQ(std::string::npos, Folder.Read("Drivers.ini").find('\xFC')) << "one key, not two";
}

TEST_F(DefaultDrivers, AnIndexThatCannotBeWrittenSilentlyKeepsItsValues) {
    {
        WriteProtectedFile protection(Folder.At("Drivers.ini"));
        ApplyNdis("[DefaultDrivers]\r\nNDIS\\e100b\r\n");
        EXPECT_EQ("111", Ndis()) << "it can still be read";
    }
    EXPECT_EQ(kEverything, Folder.Read("Drivers.ini"));
}

TEST_F(DefaultDrivers, ALockedIndexSilentlyKeepsItsValues) {
    {
        LockedFile lock(Folder.At("Drivers.ini"));
        ApplyNdis("[DefaultDrivers]\r\nNDIS\\e100b\r\n");
    }
    EXPECT_EQ(kEverything, Folder.Read("Drivers.ini"));
}

TEST_F(DefaultDrivers, ADiskWithoutAConfigurationFileIsAnError) {
    Folder.MakeFolder("files");
    EXPECT_EQ(kFileNotFound,
              NumberOf([&] { GetDefaultDriversOptions(App.Paths, App.Screen, "net.ini", "NDIS"); }));
    EXPECT_EQ(kEverything, Folder.Read("Drivers.ini"));
}

class DriverDescriptions : public DriversTest {
 protected:
    std::string Describe(const std::string& cabinet = "AHA154X.CAB") {
        return DriverDescription(App.Paths, App.Screen, "aspi", cabinet, "scsi.txt");
    }
    std::string DescribeText(const std::string& text) {
        MakeCabinet("aspi\\AHA154X.CAB", {{"scsi.txt", text}});
        return Describe();
    }
    static constexpr const char* kNotAvailable = "Description not available (ASPI Driver)";
    static constexpr const char* kCorrupted = "The Driver file is corrupted";
};

TEST_F(DriverDescriptions, TheArchiverIsCalledWithRelativePathsInTheApplicationFolder) {
    Folder.MakeTool("cabarc.exe", "create|scsi.txt\n");
    Describe();
    const auto calls = Folder.Calls("cabarc.exe");
    ASSERT_EQ(1u, calls.size());
    EXPECT_EQ(Folder.Path() + "\\cabarc -o x drivers\\aspi\\AHA154X.CAB scsi.txt", calls[0].CommandLine);
    EXPECT_EQ("hidden", calls[0].Window);
    EXPECT_EQ(Folder.Path(), calls[0].WorkingFolder);
}

TEST_F(DriverDescriptions, EveryGroupHasItsFolderAndMember) {
    Folder.MakeTool("cabarc.exe");
    EXPECT_EQ("Description not available (ASPI Driver)",
              DriverDescription(App.Paths, App.Screen, "aspi", "a.cab", "scsi.txt"));
    EXPECT_EQ("Description not available (NDIS Driver)",
              DriverDescription(App.Paths, App.Screen, "ndis", "b.Cab", "ndis.txt"));
    EXPECT_EQ("Description not available (ODI16 Driver)",
              DriverDescription(App.Paths, App.Screen, "odi16", "c.cab", "odi.txt"));
    EXPECT_EQ("Description not available (ODI32 Driver)",
              DriverDescription(App.Paths, App.Screen, "odi32", "d.cab", "odi.txt"));
    std::vector<std::string> commandLines;
    for (const ToolCall& call : Folder.Calls("cabarc.exe")) commandLines.push_back(call.CommandLine);
    const std::string tool = Folder.Path() + "\\cabarc -o x drivers\\";
    EXPECT_EQ((std::vector<std::string>{tool + "aspi\\a.cab scsi.txt", tool + "ndis\\b.Cab ndis.txt",
                                        tool + "odi16\\c.cab odi.txt", tool + "odi32\\d.cab odi.txt"}),
              commandLines);
}

TEST_F(DriverDescriptions, TheEndOfTheArchiverIsAwaitedWhileWindowsPaint) {
    Folder.MakeTool("cabarc.exe", "wait|700\ncreate|scsi.txt\n");
    EXPECT_EQ("c", Describe()) << "the 14th character of the stand-in's \"made by cabarc\"";
    EXPECT_GE(Screen.EventPumps(), 2);
}

TEST_F(DriverDescriptions, TheFirstLineIsReadFromIts14thCharacterOn) {
    EXPECT_EQ("Adaptec AHA-154x", DescribeText("AHA154X.SYS  Adaptec AHA-154x\r\nsecond line\r\n"));
}

TEST_F(DriverDescriptions, SpacesAroundItAreTrimmed) {
    EXPECT_EQ("Adaptec  AHA-154x", DescribeText("AHA154X.SYS      Adaptec  AHA-154x  \r\n"));
}

TEST_F(DriverDescriptions, TheLineMayEndInLfAloneOrInNothing) {
    EXPECT_EQ("Adaptec", DescribeText("AHA154X.SYS  Adaptec\nsecond\n"));
    EXPECT_EQ("Adaptec", DescribeText("AHA154X.SYS  Adaptec"));
}

TEST_F(DriverDescriptions, ALineThatEndsBeforeThe14thCharacterDescribesNothing) {
    EXPECT_EQ("", DescribeText("AHA154X.SYS"));
    EXPECT_EQ("", DescribeText("0123456789ABC\r\nsecond line that is long enough\r\n"));
    EXPECT_EQ("D", DescribeText("0123456789ABCD\r\n"));
    EXPECT_EQ("", DescribeText("\r\nsecond line that is long enough\r\n"));
}

TEST_F(DriverDescriptions, BytesBeyondAsciiAreKept) {
    EXPECT_EQ("Netzwerkkarte f\xFCr B\xFCros",
              DescribeText("CARD.SYS     Netzwerkkarte f\xFCr B\xFCros\r\n"));
}

TEST_F(DriverDescriptions, AnEmptyDescriptionFileIsCorrupted) {
    EXPECT_EQ(kCorrupted, DescribeText(""));
}

TEST_F(DriverDescriptions, ACabinetWithoutTheMemberIsNotDescribed) {
    MakeCabinet("aspi\\AHA154X.CAB", {{"aha154x.sys", "driver"}, {"scsi.pci", "1000 0001\r\n"}});
    EXPECT_EQ(kNotAvailable, Describe());
}

TEST_F(DriverDescriptions, ATruncatedCabinetIsNotDescribed) {
    MakeDriver("aspi\\AHA154X.CAB", "scsi.txt", "Adaptec");
    const std::string whole = Folder.Read("drivers\\aspi\\AHA154X.CAB");
    for (const size_t length : {whole.size() - 1, whole.size() / 2, size_t{4}, size_t{0}}) {
        Folder.Write("drivers\\aspi\\AHA154X.CAB", whole.substr(0, length));
        EXPECT_EQ(kNotAvailable, Describe()) << length << " of " << whole.size() << " bytes";
    }
    Folder.Write("drivers\\aspi\\AHA154X.CAB", whole);
    EXPECT_EQ("Adaptec", Describe());
}

TEST_F(DriverDescriptions, AFileThatIsNoCabinetIsNotDescribed) {
    InstallArchiver();
    Folder.Write("drivers\\aspi\\AHA154X.CAB", "just a text that has been given the name of a cabinet\r\n");
    EXPECT_EQ(kNotAvailable, Describe());
}

TEST_F(DriverDescriptions, AMissingArchiverOrCabinetIsNotDescribed) {
    MakeEmptyCabinets("aspi", {"AHA154X.CAB"});
    EXPECT_EQ(kNotAvailable, Describe());
    InstallArchiver();
    EXPECT_EQ(kNotAvailable, Describe("GONE.CAB"));
}

TEST_F(DriverDescriptions, ANameWithSpacesIsNotQuotedAndSoNotDescribed) {
    MakeDriver("aspi\\MY CARD.CAB", "scsi.txt", "My card");
    EXPECT_EQ(kNotAvailable, Describe("MY CARD.CAB"));
}

TEST_F(DriverDescriptions, ACabinetNamedBeyondAsciiIsDescribed) {
    MakeDriver("aspi\\T\xDCRK.CAB", "scsi.txt", "The card");
    EXPECT_EQ("The card", Describe("T\xDCRK.CAB"));
}

TEST_F(DriverDescriptions, AReadOnlyMemberIsReadAndDeletedToo) {
    MakeCabinet("aspi\\AHA154X.CAB", {{"scsi.txt", "0123456789ABCAdaptec\r\n"}},
                FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    EXPECT_EQ("Adaptec", Describe());
    EXPECT_FALSE(Folder.HasFile("scsi.txt"));
    EXPECT_EQ("Adaptec", Describe()) << "nothing is left that could stand in the way";
}

TEST_F(DriverDescriptions, TheExtractedFileIsDeletedInEveryCase) {
    for (const char* text : {"0123456789ABCAdaptec\r\n", "short", ""}) {
        DescribeText(text);
        EXPECT_FALSE(Folder.HasFile("scsi.txt")) << text;
    }
}

TEST_F(DriverDescriptions, AFileLeftByAnEarlierRunIsNotTakenForTheMember) {
    MakeCabinet("aspi\\AHA154X.CAB", {{"aha154x.sys", "driver"}});
    Folder.Write("scsi.txt", "0123456789ABCOld description\r\n");
    EXPECT_EQ(kNotAvailable, Describe());
    EXPECT_FALSE(Folder.HasFile("scsi.txt"));
}

TEST_F(DriverDescriptions, AReadOnlyFileLeftByAnEarlierRunIsReplaced) {
    MakeDriver("aspi\\AHA154X.CAB", "scsi.txt", "New description");
    Folder.Write("scsi.txt", "0123456789ABCOld description\r\n");
    Folder.SetAttributes("scsi.txt", FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ("New description", Describe());
    EXPECT_FALSE(Folder.HasFile("scsi.txt"));
}

TEST_F(DriverDescriptions, OnlyTheOneMemberIsExtracted) {
    MakeCabinet("aspi\\AHA154X.CAB",
                {{"scsi.txt", "0123456789ABCAdaptec\r\n"}, {"scsi.pci", "x"}, {"aha154x.sys", "driver"}});
    EXPECT_EQ("Adaptec", Describe());
    EXPECT_FALSE(Folder.HasFile("scsi.pci"));
    EXPECT_FALSE(Folder.HasFile("aha154x.sys"));
}

TEST_F(DriverDescriptions, TheApplicationFolderIsTheWorkingFolderFromWhereverItIsCalled) {
    MakeDriver("aspi\\AHA154X.CAB", "scsi.txt", "Adaptec");
    const std::string elsewhere = Folder.MakeFolder("elsewhere");
    ASSERT_TRUE(SetCurrentDirectoryA(elsewhere.c_str()));
    EXPECT_EQ("Adaptec", Describe());
    EXPECT_EQ(Folder.Path(), CurrentFolder());
    EXPECT_TRUE(Folder.Tree("elsewhere").empty());
}

}  // namespace
}  // namespace velbooter::testing
