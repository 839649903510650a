#include "src/ui/DiskSpace.h"

#include <gtest/gtest.h>

#include "src/ui/DriversPage.h"
#include "tests/src/drivers/DriverFolder.h"

namespace velbooter::testing {
namespace {

// One cluster of the small disk is half a KB.
class SpaceOnDisk : public DriversTest {
 protected:
    SpaceOnDisk() {
        App.Wizard.ChkASPI.Value = 0;
        App.Wizard.ChkNDIS.Value = 0;
        Folder.Write("Drivers.ini");
    }
    void List(const std::string& entry, size_t bytes, bool selected = true) {
        Folder.Write("cabs\\" + entry, std::string(bytes, 'x'));
        App.Wizard.LstFiles.AddItem(entry);
        App.Wizard.LstFiles.Select(App.Wizard.LstFiles.ListCount() - 1, selected);
    }
    std::string Measured() {
        MeasureSpace(App);
        ShowSpace(App);
        return App.Wizard.LblSpace.Caption;
    }
    static std::string Small(int kilobytes) {
        return "Selected files: " + std::to_string(kilobytes) + " KB. A 1.44 MB disk holds 1423 KB.";
    }
};

TEST_F(SpaceOnDisk, TheSelectedFilesAreCounted) {
    List("IO.SYS", 10 * 1024);
    List("bin\\a.cab", 3 * 512);
    List("b", 5000, false);
    EXPECT_EQ(Small(12), Measured()) << "ten, one and a half, and the directory of bin";
    EXPECT_FALSE(App.Wizard.LblSpace.Warning);
}

TEST_F(SpaceOnDisk, TicksCountWithoutAnotherLookAtTheFiles) {
    List("a", 4096);
    List("b", 2048);
    MeasureSpace(App);
    Folder.Remove("cabs");
    App.Wizard.LstFiles.Select(0, false);
    ShowSpace(App);
    EXPECT_EQ(Small(2), App.Wizard.LblSpace.Caption);
    EXPECT_EQ(Small(0), Measured()) << "a file that is not there takes nothing";
}

TEST_F(SpaceOnDisk, TheSizeOfTheDiskCounts) {
    List("a", 1);
    List("b", 1025);
    EXPECT_EQ(Small(2), Measured());
    ChooseOption(App.Wizard, &FrmWizard::OptImage28);
    EXPECT_EQ("Selected files: 3 KB. A 2.88 MB disk holds 2863 KB.", Measured());
    ChooseOption(App.Wizard, &FrmWizard::OptFloppy);
    EXPECT_EQ(Small(2), Measured());
}

TEST_F(SpaceOnDisk, WhatDoesNotFitIsAWarning) {
    List("a", 2847 * 512);
    EXPECT_EQ(Small(1423), Measured());
    EXPECT_FALSE(App.Wizard.LblSpace.Warning);
    List("b", 1);
    EXPECT_EQ(Small(1424), Measured());
    EXPECT_TRUE(App.Wizard.LblSpace.Warning);
    ChooseOption(App.Wizard, &FrmWizard::OptImage28);
    ShowSpace(App);
    EXPECT_FALSE(App.Wizard.LblSpace.Warning);
}

TEST_F(SpaceOnDisk, TheChosenDriversAreCounted) {
    Folder.Write("drivers\\aspi\\a.cab", std::string(4096, 'x'));
    Folder.Write("drivers\\aspi\\b.cab", std::string(8192, 'x'));
    Folder.Write("drivers\\odi16\\c.cab", std::string(16384, 'x'));
    Folder.Write("Drivers.ini", "[ASPI]\r\nA=1\r\nB=0\r\nMISSING=1\r\n[ODI16]\r\nC=1\r\n");
    EXPECT_EQ(Small(0), Measured()) << "the groups are switched off";
    App.Wizard.ChkASPI.Value = 1;
    EXPECT_EQ(Small(5), Measured()) << "and the folders lib and aspi";
    App.Wizard.ChkNDIS.Value = 1;
    SetNetworkMode(App.Wizard, NetworkMode::Odi);
    EXPECT_EQ(Small(21), Measured()) << "and the folder odi16";
}

TEST_F(SpaceOnDisk, ADriverThatLiesThereAlreadyCountsOnce) {
    Folder.Write("drivers\\aspi\\a.cab", std::string(4096, 'x'));
    Folder.Write("Drivers.ini", "[ASPI]\r\nA=1\r\n");
    App.Wizard.ChkASPI.Value = 1;
    List("Lib\\aspi\\a.cab", 4096);
    EXPECT_EQ(Small(5), Measured());
}

TEST_F(SpaceOnDisk, EntriesThatTheBuildSelectsItselfAreCountedUnticked) {
    List("lib\\ndis\\old.cab", 2048, false);
    List("etc\\_msnet.nic", 512, false);
    List("Lib\\ndis\\not.cab", 8192, false);
    EXPECT_EQ(Small(4), Measured()) << "two and a half, and three folders";
}

TEST_F(SpaceOnDisk, TheNetworkListsGrowWithTheDrivers) {
    App.Wizard.ChkNDIS.Value = 1;
    EXPECT_EQ(Small(1), Measured()) << "two short lists and the folder etc";
    std::string index = "[NDIS]\r\n";
    for (int i = 0; i < 100; ++i) index += "D" + std::to_string(i) + "=1\r\n";
    Folder.Write("Drivers.ini", index);
    const int folders = 4;  // lib, the 7 clusters of lib\ndis and etc are four and a half KB
    EXPECT_EQ(Small(16 + folders), Measured()) << "8,120 bytes each";
}

TEST_F(SpaceOnDisk, WithoutDriversIniThereAreNoDrivers) {
    Folder.Remove("Drivers.ini");
    List("a", 1024);
    EXPECT_EQ(Small(1), Measured());
}

TEST_F(SpaceOnDisk, AnIndexThatIsHeldEndsNothing) {
    List("a", 1024);
    const LockedFile index(Folder.At("Drivers.ini"));
    EXPECT_EQ(Small(1), Measured());
    EXPECT_FALSE(App.RunEnded);
}

TEST_F(SpaceOnDisk, AChoiceOfDriversChangesTheLine) {
    Folder.Write("drivers\\aspi\\a.cab", std::string(4096, 'x'));
    Folder.Write("Drivers.ini", "[ASPI]\r\nA=1\r\n");
    App.Wizard.ChkASPI.Value = 1;
    EXPECT_EQ(Small(5), Measured());
    App.Drivers.LV.Tag = "aspi";
    ListItem row;
    row.Text = "A";
    App.Drivers.LV.ListItems = {row};
    CmdOK_Click(App);
    EXPECT_EQ(Small(0), App.Wizard.LblSpace.Caption);
}

}  // namespace
}  // namespace velbooter::testing
