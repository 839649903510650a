#include "src/disk/DriverIndex.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "src/common/INIFile.h"
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
    IndexDriverGroup(App, "Drivers.ini", "NDIS", 1);
    EXPECT_EQ("[NDIS]\r\nE100B=1\r\n", Folder.Read("Drivers.ini"));
}

TEST_F(DriverIndexing, OnlyCabinetsCountHiddenOnesToo) {
    Folder.Write("drivers\\aspi\\aic78.CAB");
    Folder.Write("drivers\\aspi\\hidden.cab");
    Folder.SetAttributes("drivers\\aspi\\hidden.cab", FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    Folder.Write("drivers\\aspi\\scsi.txt");
    Folder.Write("drivers\\aspi\\cab");
    Folder.Write("drivers\\aspi\\a.b.cab");
    IndexDriverGroup(App, "Drivers.ini", "ASPI", 0);
    EXPECT_EQ("[ASPI]\r\nA.B=0\r\nAIC78=0\r\nHIDDEN=0\r\n", Folder.Read("Drivers.ini"));
}

// The system finds these by their short names, which end in CAB.
TEST_F(DriverIndexing, ALongerEndingIsNoCabinet) {
    for (const char* file : {"a.cab", "b.cab~", "c.cab_old", "d.cabinet", "e.cab1"})
        Folder.Write(std::string("drivers\\NDIS\\") + file);
    IndexDriverGroup(App, "Drivers.ini", "NDIS", 1);
    EXPECT_EQ("[NDIS]\r\nA=1\r\n", Folder.Read("Drivers.ini"));
    EXPECT_EQ("A", DriverNameOf("a.CaB"));
    EXPECT_FALSE(DriverNameOf("a.cab~"));
    EXPECT_FALSE(DriverNameOf("cab"));
    EXPECT_EQ("", DriverNameOf(".cab"));
}

TEST_F(DriverIndexing, OtherGroupsAndOldValuesOfOtherKeysStay) {
    Folder.Write("Drivers.ini", "[ASPI]\r\nX=1\r\n[NDIS]\r\nOLD=1\r\nE100B=1\r\n");
    Folder.Write("drivers\\ndis\\e100b.cab");
    IndexDriverGroup(App, "Drivers.ini", "NDIS", 0);
    EXPECT_EQ("1\0"s, Key("ASPI", "X"));
    EXPECT_EQ("1\0"s, Key("NDIS", "OLD"));
    EXPECT_EQ("0\0"s, Key("NDIS", "E100B"));
}

TEST_F(DriverIndexing, ATrailingBackslashOfTheGroupIsDropped) {
    Folder.Write("drivers\\ODI16\\ne2000.cab");
    IndexDriverGroup(App, "Drivers.ini", "ODI16\\", 1);
    EXPECT_EQ("1\0"s, Key("ODI16", "NE2000"));
}

TEST_F(DriverIndexing, ValuesAreTrimmedDecimalText) {
    Folder.Write("drivers\\ODI32\\x.cab");
    IndexDriverGroup(App, "Drivers.ini", "ODI32", -12);
    EXPECT_EQ("-12\0"s, Key("ODI32", "X"));
}

TEST_F(DriverIndexing, AMissingFolderYieldsNoKeys) {
    IndexDriverGroup(App, "Drivers.ini", "NDIS", 1);
    EXPECT_FALSE(Folder.HasFile("Drivers.ini"));
}

TEST_F(DriverIndexing, EventsAreHandledAfterEachName) {
    for (const char* name : {"a", "b", "c"}) Folder.Write(std::string("drivers\\NDIS\\") + name + ".cab");
    IndexDriverGroup(App, "Drivers.ini", "NDIS", 1);
    EXPECT_EQ(3, Screen.EventPumps());
}

}  // namespace
}  // namespace velbooter::testing
