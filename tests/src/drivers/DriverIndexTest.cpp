#include "src/drivers/DriverIndex.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "src/common/INIFile.h"
#include "src/common/RuntimeError.h"
#include "src/drivers/DriverStore.h"
#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {
namespace {

using std::string_literals::operator""s;

class DriverIndexing : public ApplicationTest {
 protected:
    std::string Key(const std::string& section, const std::string& key) {
        return INIFile(Folder.At("Drivers.ini")).GetINIKey(section, key);
    }
};

TEST_F(DriverIndexing, ACabinetBecomesAKeyInUpperCaseWithoutItsEnding) {
    Folder.Write("drivers\\NDIS\\e100b.cab");
    IndexDriverGroup(App.Paths, App.Screen, "Drivers.ini", "NDIS", 1);
    EXPECT_EQ("[NDIS]\r\nE100B=1\r\n", Folder.Read("Drivers.ini"));
}

TEST_F(DriverIndexing, OnlyCabinetsCountHiddenOnesToo) {
    Folder.Write("drivers\\aspi\\aic78.CAB");
    Folder.Write("drivers\\aspi\\hidden.cab");
    Folder.SetAttributes("drivers\\aspi\\hidden.cab", FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    Folder.Write("drivers\\aspi\\scsi.txt");
    Folder.Write("drivers\\aspi\\cab");
    Folder.Write("drivers\\aspi\\a.b.cab");
    IndexDriverGroup(App.Paths, App.Screen, "Drivers.ini", "ASPI", 0);
    EXPECT_EQ("[ASPI]\r\nA.B=0\r\nAIC78=0\r\nHIDDEN=0\r\n", Folder.Read("Drivers.ini"));
}

// The system finds these by their short names, which end in CAB.
TEST_F(DriverIndexing, ALongerEndingIsNoCabinet) {
    for (const char* file : {"a.cab", "b.cab~", "c.cab_old", "d.cabinet", "e.cab1"})
        Folder.Write(std::string("drivers\\NDIS\\") + file);
    IndexDriverGroup(App.Paths, App.Screen, "Drivers.ini", "NDIS", 1);
    EXPECT_EQ("[NDIS]\r\nA=1\r\n", Folder.Read("Drivers.ini"));
    EXPECT_EQ("A", DriverNameOf("a.CaB"));
    EXPECT_FALSE(DriverNameOf("a.cab~"));
    EXPECT_FALSE(DriverNameOf("cab"));
    EXPECT_EQ("", DriverNameOf(".cab"));
}

TEST_F(DriverIndexing, OtherGroupsAndOldValuesOfOtherKeysStay) {
    Folder.Write("Drivers.ini", "[ASPI]\r\nX=1\r\n[NDIS]\r\nOLD=1\r\nE100B=1\r\n");
    Folder.Write("drivers\\ndis\\e100b.cab");
    IndexDriverGroup(App.Paths, App.Screen, "Drivers.ini", "NDIS", 0);
    EXPECT_EQ("1\0"s, Key("ASPI", "X"));
    EXPECT_EQ("1\0"s, Key("NDIS", "OLD"));
    EXPECT_EQ("0\0"s, Key("NDIS", "E100B"));
}

TEST_F(DriverIndexing, ATrailingBackslashOfTheGroupIsDropped) {
    Folder.Write("drivers\\ODI16\\ne2000.cab");
    IndexDriverGroup(App.Paths, App.Screen, "Drivers.ini", "ODI16\\", 1);
    EXPECT_EQ("1\0"s, Key("ODI16", "NE2000"));
}

TEST_F(DriverIndexing, ValuesAreTrimmedDecimalText) {
    Folder.Write("drivers\\ODI32\\x.cab");
    IndexDriverGroup(App.Paths, App.Screen, "Drivers.ini", "ODI32", -12);
    EXPECT_EQ("-12\0"s, Key("ODI32", "X"));
}

TEST_F(DriverIndexing, AMissingFolderYieldsNoKeys) {
    IndexDriverGroup(App.Paths, App.Screen, "Drivers.ini", "NDIS", 1);
    EXPECT_FALSE(Folder.HasFile("Drivers.ini"));
}

TEST_F(DriverIndexing, EventsAreHandledAfterEachName) {
    for (const char* name : {"a", "b", "c"}) Folder.Write(std::string("drivers\\NDIS\\") + name + ".cab");
    IndexDriverGroup(App.Paths, App.Screen, "Drivers.ini", "NDIS", 1);
    EXPECT_EQ(3, Screen.EventPumps());
}

class LineCounts : public ApplicationTest {
 protected:
    std::int32_t Count(const std::string& content, const std::string& section, bool useSuffix = false,
                       const std::string& suffix = "") {
        return CountSectionLines(Folder.Write("d.ini", content), section, useSuffix, suffix);
    }
};

TEST_F(LineCounts, TheHeaderIsCountedWithTheEntries) {
    EXPECT_EQ(3, Count("[NDIS]\r\nA=1\r\nB=0\r\n", "NDIS"));
    EXPECT_EQ(1, Count("[NDIS]\r\n", "NDIS"));
}

TEST_F(LineCounts, AMissingSectionCountsNothing) {
    EXPECT_EQ(0, Count("[ASPI]\r\nA=1\r\n", "NDIS"));
    EXPECT_EQ(0, Count("", "NDIS"));
    EXPECT_EQ(0, Count("NDIS\r\nA=1\r\n", "NDIS"));
}

TEST_F(LineCounts, TheSectionEndsAtAnyOtherHeader) {
    EXPECT_EQ(2, Count("[ASPI]\r\nX=1\r\n[NDIS]\r\nA=1\r\n[ODI16]\r\nB=1\r\nC=1\r\n", "NDIS"));
    EXPECT_EQ(2, Count("[NDIS]\r\nA=1\r\n[broken\r\nB=1\r\n", "NDIS"));
}

TEST_F(LineCounts, ASectionThatComesTwiceIsCountedTwice) {
    EXPECT_EQ(4, Count("[NDIS]\r\nA=1\r\n[X]\r\nB=1\r\n[NDIS]\r\nC=1\r\n", "NDIS"));
}

TEST_F(LineCounts, CommentsAndEmptyLinesAreNotCounted) {
    EXPECT_EQ(2, Count("[NDIS]\r\n\r\n;A=1\r\nB=1\r\n\r\n", "NDIS"));
    EXPECT_EQ(3, Count("[NDIS]\r\n ;A=1\r\n  \r\n", "NDIS")) << "only the first character counts";
}

TEST_F(LineCounts, OnlyLinesWithTheSuffixAreCountedTheHeaderIncluded) {
    EXPECT_EQ(2, Count("[NDIS]\r\nA=1\r\nB=0\r\nC=1\r\n", "NDIS", true, "=1"));
    EXPECT_EQ(1, Count("[NDIS]\r\nA=1\r\n", "NDIS", true, "]"));
    EXPECT_EQ(3, Count("[NDIS]\r\nA=1\r\nB=0\r\n", "NDIS", true, ""));
    EXPECT_EQ(0, Count("[NDIS]\r\nA=1 \r\nB=\r\n", "NDIS", true, "=1"));
    EXPECT_EQ(3, Count("[NDIS]\r\nA=1\r\nB=0\r\n", "NDIS", false, "=1")) << "not asked for";
}

TEST_F(LineCounts, TheHeaderIsExactAndCaseCounts) {
    EXPECT_EQ(0, Count("[ndis]\r\nA=1\r\n", "NDIS"));
    EXPECT_EQ(0, Count("[NDIS] \r\nA=1\r\n", "NDIS"));
    EXPECT_EQ(0, Count(" [NDIS]\r\nA=1\r\n", "NDIS"));
}

TEST_F(LineCounts, LfLineEndsCountTheSame) {
    EXPECT_EQ(2, Count("[NDIS]\nA=1\nB=0\nC=1", "NDIS", true, "=1"));
}

TEST_F(LineCounts, CountFileLinesCountsEmptyLinesToo) {
    EXPECT_EQ(0, CountFileLines(Folder.Write("a", "")));
    EXPECT_EQ(1, CountFileLines(Folder.Write("a", "x")));
    EXPECT_EQ(3, CountFileLines(Folder.Write("a", "x\r\n\r\ny\r\n")));
    EXPECT_EQ(3, CountFileLines(Folder.Write("a", "x\n\ny")));
    EXPECT_EQ(2, CountFileLines(Folder.Write("a", std::string(10'000'000, 'x') + "\n;")));
    EXPECT_EQ(1, CountFileLines(Folder.Write("a", "\0\0"s)));
}

TEST_F(LineCounts, AMissingFileIsError53) {
    try {
        CountFileLines(Folder.At("missing.ini"));
        ADD_FAILURE();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(kFileNotFound, error.Number);
    }
    try {
        CountSectionLines(Folder.At("missing.ini"), "NDIS", false, "");
        ADD_FAILURE();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(kFileNotFound, error.Number);
    }
}

}  // namespace
}  // namespace velbooter::testing
