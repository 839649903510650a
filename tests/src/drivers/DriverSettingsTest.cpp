#include "src/drivers/DriverSettings.h"

#include <gtest/gtest.h>

#include <set>

#include "src/common/RuntimeError.h"
#include "src/start/Catalogue.h"
#include "tests/src/drivers/DriverFolder.h"

namespace velbooter::testing {
namespace {

class DiskSettings : public DriversTest {
 protected:
    DiskSettings() {
        for (const char* name : {"custom", "NET"}) {
            ListItem row;
            row.Text = "Description";
            row.SubItem = name;
            App.Wizard.LV_Disk.ListItems.push_back(row);
        }
        for (const char* folder : {"aspi", "ndis", "odi16", "odi32"})
            MakeEmptyCabinets(folder, {"a.cab", "b.cab"});
        Folder.Write("files\\net.ini", kDefaults);
        Folder.Write("Drivers.ini", kEverything);
    }

    /// Prepares the page for the catalogue's first disk, whose section contains `keys`.
    void Prepare(const std::string& keys) {
        Folder.Write("files\\disklist.ini", "[1]\r\nname=NET\r\n" + keys);
        App.SelectedDiskIndex = 2;
        GetDiskAndDriverSettings(App.Paths, App.Screen, App.Wizard, ChosenDisk(App));
    }
    void RemoveFolders(std::initializer_list<const char*> folders) {
        for (const char* folder : folders) Folder.Remove(std::string("drivers\\") + folder);
    }

    void ExpectAspi(bool on) {
        EXPECT_EQ(on, App.Wizard.ChkASPI.Enabled);
        EXPECT_EQ(on ? 1 : 0, App.Wizard.ChkASPI.Value);
        EXPECT_EQ(on, App.Wizard.CmdSelASPI.Enabled);
        EXPECT_EQ("SCSI Host adapters drivers (ASPI)", App.Wizard.ChkASPI.Caption);
    }
    void ExpectNetworkOff() {
        EXPECT_FALSE(App.Wizard.ChkNDIS.Enabled);
        EXPECT_EQ(0, App.Wizard.ChkNDIS.Value);
        EXPECT_FALSE(App.Wizard.CmdSelNDIS.Enabled);
    }
    void ExpectNetworkOn() {
        EXPECT_TRUE(App.Wizard.ChkNDIS.Enabled);
        EXPECT_EQ(1, App.Wizard.ChkNDIS.Value);
        EXPECT_TRUE(App.Wizard.CmdSelNDIS.Enabled);
    }
    void ExpectNdisLook() {
        EXPECT_EQ("Network adapters drivers (NDIS)", App.Wizard.ChkNDIS.Caption);
        EXPECT_EQ(2655, App.Wizard.ChkNDIS.Width);
        EXPECT_EQ(
            "You only need the MSNET module and it requirements to make use of the NDIS drivers and load the "
            "network interface.",
            App.Wizard.LblNDISNote.Caption);
    }
    void ExpectOdiLook() {
        EXPECT_EQ("Network adapters drivers (ODI16/32)", App.Wizard.ChkNDIS.Caption);
        EXPECT_EQ(3015, App.Wizard.ChkNDIS.Width);
        EXPECT_EQ(
            "You need the NWLAN module and it requirements to make use of the ODI16/32 drivers and load the "
            "network interface.",
            App.Wizard.LblNDISNote.Caption);
    }
    /// The groups to which the disk's defaults have been applied: there only A is selected, not B.
    std::set<std::string> Narrowed() const {
        std::set<std::string> groups;
        for (const char* group : {"ASPI", "NDIS", "ODI16", "ODI32"}) {
            EXPECT_EQ("1", Key(group, "A")) << group;
            if (Key(group, "B") == "0") groups.insert(group);
        }
        return groups;
    }

    using Groups = std::set<std::string>;
    static constexpr const char* kDefaults =
        "[DefaultDrivers]\r\nASPI\\a.cab\r\nNDIS\\a.cab\r\nODI16\\a.cab\r\nODI32\\a.cab\r\n";
    static constexpr const char* kEverything =
        "[ASPI]\r\nA=1\r\nB=1\r\n[NDIS]\r\nA=1\r\nB=1\r\n[ODI16]\r\nA=1\r\nB=1\r\n[ODI32]\r\nA=1\r\nB=1\r\n";
};

TEST_F(DiskSettings, TheCustomRowReadsSectionZeroWhichIsUsuallyAbsent) {
    Folder.Write("files\\disklist.ini", "[1]\r\nname=NET\r\nfile=net.img\r\naspi=1\r\nndis=1\r\nnetw=1\r\n");
    App.SelectedDiskIndex = 1;
    GetDiskAndDriverSettings(App.Paths, App.Screen, App.Wizard, ChosenDisk(App));
    EXPECT_EQ(Folder.Path() + "\\", App.Wizard.TxtDest.Text);
    ExpectAspi(false);
    ExpectNetworkOff();
    EXPECT_EQ(kEverything, Folder.Read("Drivers.ini"));
}

TEST_F(DiskSettings, SectionZeroCountsForTheCustomRow) {
    Folder.Write("files\\disklist.ini", "[0]\r\nfile=mine.img\r\naspi=1\r\n[1]\r\nndis=1\r\n");
    Folder.Write("files\\custom.ini", kDefaults);
    App.SelectedDiskIndex = 1;
    GetDiskAndDriverSettings(App.Paths, App.Screen, App.Wizard, ChosenDisk(App));
    EXPECT_EQ(Folder.At("mine.img"), App.Wizard.TxtDest.Text);
    ExpectAspi(true);
    ExpectNetworkOff();
    EXPECT_EQ((Groups{"ASPI"}), Narrowed());
}

TEST_F(DiskSettings, TheSelectedDisksOwnSectionCounts) {
    Folder.Write("files\\disklist.ini", "[1]\r\naspi=1\r\n[2]\r\nfile=two.img\r\nndis=1\r\n");
    ListItem row;
    row.SubItem = "Net";
    App.Wizard.LV_Disk.ListItems.push_back(row);
    App.SelectedDiskIndex = 3;
    GetDiskAndDriverSettings(App.Paths, App.Screen, App.Wizard, ChosenDisk(App));
    EXPECT_EQ(Folder.At("two.img"), App.Wizard.TxtDest.Text);
    ExpectAspi(false);
    ExpectNetworkOn();
}

TEST_F(DiskSettings, ATargetWithADriveIsTakenAsItIs) {
    Prepare("file=C:\\Images\\net.img\r\n");
    EXPECT_EQ("C:\\Images\\net.img", App.Wizard.TxtDest.Text);
    Prepare("file=d:net.img\r\n");
    EXPECT_EQ("d:net.img", App.Wizard.TxtDest.Text);
}

TEST_F(DiskSettings, ATargetWithoutADriveLiesInTheApplicationFolder) {
    Prepare("file=net.img\r\n");
    EXPECT_EQ(Folder.At("net.img"), App.Wizard.TxtDest.Text);
    Prepare("file=images\\a.b\\net.img\r\n");
    EXPECT_EQ(Folder.At("images\\a.b\\net.img"), App.Wizard.TxtDest.Text);
    Prepare("file=\\net.img\r\n");
    EXPECT_EQ(Folder.At("\\net.img"), App.Wizard.TxtDest.Text);
    Prepare("file=x\r\n");
    EXPECT_EQ(Folder.At("x"), App.Wizard.TxtDest.Text);
}

TEST_F(DiskSettings, ADiskWithoutATargetGetsTheBareFolder) {
    Prepare("");
    EXPECT_EQ(Folder.Path() + "\\", App.Wizard.TxtDest.Text);
    Prepare("file=\r\n");
    EXPECT_EQ(Folder.Path() + "\\", App.Wizard.TxtDest.Text);
}

TEST_F(DiskSettings, ADiskThatAsksForNothingSwitchesEverythingOff) {
    Prepare("");
    ExpectAspi(false);
    ExpectNetworkOff();
    EXPECT_EQ(kEverything, Folder.Read("Drivers.ini"));
}

TEST_F(DiskSettings, ScsiDriversAreOfferedWithTheirDefaults) {
    Prepare("aspi=1\r\n");
    ExpectAspi(true);
    ExpectNetworkOff();
    EXPECT_EQ((Groups{"ASPI"}), Narrowed());
}

TEST_F(DiskSettings, ScsiDriversNeedTheirFolder) {
    RemoveFolders({"aspi"});
    Prepare("aspi=1\r\n");
    ExpectAspi(false);
    EXPECT_EQ(kEverything, Folder.Read("Drivers.ini"));
}

TEST_F(DiskSettings, NdisDriversWithoutAnyOdiFolder) {
    RemoveFolders({"odi16", "odi32"});
    Prepare("ndis=1\r\n");
    ExpectNetworkOn();
    ExpectNdisLook();
    EXPECT_EQ((Groups{"NDIS"}), Narrowed());
}

TEST_F(DiskSettings, NdisDriversStayWhenTheDiskDoesNotAskForOdi) {
    Prepare("ndis=1\r\nnetw=0\r\n");
    ExpectNetworkOn();
    ExpectNdisLook();
    EXPECT_EQ((Groups{"NDIS"}), Narrowed());
}

TEST_F(DiskSettings, NdisDriversStayWhenThereIsNoOdiFolder) {
    RemoveFolders({"odi16", "odi32"});
    Prepare("ndis=1\r\nnetw=1\r\n");
    ExpectNetworkOn();
    ExpectNdisLook();
    EXPECT_EQ((Groups{"NDIS"}), Narrowed());
}

TEST_F(DiskSettings, NdisDriversNeedTheirFolder) {
    RemoveFolders({"ndis"});
    Prepare("ndis=1\r\n");
    ExpectNetworkOff();
    EXPECT_EQ(kEverything, Folder.Read("Drivers.ini"));
}

TEST_F(DiskSettings, OdiWinsOverNdisWhoseDefaultsAreAppliedAllTheSame) {
    Prepare("ndis=1\r\nnetw=1\r\n");
    ExpectNetworkOn();
    ExpectOdiLook();
    EXPECT_EQ((Groups{"NDIS", "ODI16", "ODI32"}), Narrowed());
}

TEST_F(DiskSettings, OdiAloneAppliesBothItsGroups) {
    RemoveFolders({"ndis"});
    Prepare("netw=1\r\n");
    ExpectNetworkOn();
    ExpectOdiLook();
    EXPECT_EQ((Groups{"ODI16", "ODI32"}), Narrowed());
}

TEST_F(DiskSettings, OneOdiFolderIsEnough) {
    RemoveFolders({"odi32"});
    Prepare("netw=1\r\n");
    ExpectNetworkOn();
    ExpectOdiLook();
    EXPECT_EQ("0", Key("ODI16", "B"));

    Folder.Write("Drivers.ini", kEverything);
    Folder.MakeFolder("drivers\\odi32");
    MakeEmptyCabinets("odi32", {"a.cab", "b.cab"});
    RemoveFolders({"odi16"});
    Prepare("netw=1\r\n");
    ExpectNetworkOn();
    ExpectOdiLook();
    EXPECT_EQ("0", Key("ODI32", "B"));
}

TEST_F(DiskSettings, OdiWithoutAnyFolderIsOff) {
    RemoveFolders({"odi16", "odi32"});
    Prepare("netw=1\r\n");
    ExpectNetworkOff();
    EXPECT_EQ(kEverything, Folder.Read("Drivers.ini"));
}

TEST_F(DiskSettings, ANumberOtherThanZeroMeansYes) {
    struct Case {
        const char* Value;
        bool On;
    };
    for (const Case& c : {Case{"1", true},
                          {"2", true},
                          {"-1", true},
                          {"0.5", true},
                          {"1x", true},
                          {"0", false},
                          {"", false},
                          {"yes", false},
                          {"x1", false},
                          {"00", false}}) {
        SCOPED_TRACE(c.Value);
        RemoveFolders({"odi16", "odi32"});
        Prepare("aspi=" + std::string(c.Value) + "\r\nndis=" + c.Value + "\r\n");
        ExpectAspi(c.On);
        c.On ? ExpectNetworkOn() : ExpectNetworkOff();
    }
    for (const char* folder : {"odi16", "odi32"}) MakeEmptyCabinets(folder, {"a.cab"});
    Prepare("netw=-1\r\n");
    ExpectNetworkOn();
    Prepare("netw=x\r\n");
    ExpectNetworkOff();
}

TEST_F(DiskSettings, ARowThatIsSwitchedOffKeepsItsLastLook) {
    Prepare("netw=1\r\n");
    ExpectOdiLook();
    Prepare("");
    ExpectNetworkOff();
    ExpectOdiLook();
    Prepare("ndis=1\r\n");
    ExpectNdisLook();
    Prepare("");
    ExpectNetworkOff();
    ExpectNdisLook();
}

TEST_F(DiskSettings, EveryVisitAppliesTheDefaultsAgain) {
    Prepare("aspi=1\r\n");
    Folder.Write("Drivers.ini", "[ASPI]\r\nA=0\r\nB=1\r\n[NDIS]\r\nB=1\r\n");
    App.Wizard.ChkASPI.Value = 0;
    EnableTickedRows(App.Wizard);
    Prepare("aspi=1\r\n");
    ExpectAspi(true);
    EXPECT_EQ("1", Key("ASPI", "A"));
    EXPECT_EQ("0", Key("ASPI", "B"));
    EXPECT_EQ("1", Key("NDIS", "B")) << "a group that the disk does not offer keeps its selection";
}

TEST_F(DiskSettings, WithoutDefaultsEveryDriverStaysSelected) {
    Folder.Write("files\\net.ini", "[Copy_CABs]\r\n");
    Prepare("aspi=1\r\nndis=1\r\nnetw=1\r\n");
    ExpectAspi(true);
    ExpectOdiLook();
    EXPECT_EQ(kEverything, Folder.Read("Drivers.ini"));
}

TEST_F(DiskSettings, ADiskWithoutAConfigurationFileIsAnErrorOnceItsDefaultsAreNeeded) {
    Folder.Remove("files\\net.ini");
    Prepare("file=net.img\r\n");
    EXPECT_EQ(Folder.At("net.img"), App.Wizard.TxtDest.Text);
    for (const char* keys : {"aspi=1\r\n", "ndis=1\r\n", "netw=1\r\n"})
        EXPECT_EQ(kFileNotFound, NumberOf([&] { Prepare(keys); })) << keys;
    EXPECT_TRUE(Screen.Messages.empty());
}

TEST_F(DiskSettings, AMissingCatalogueReadsAsEmpty) {
    App.SelectedDiskIndex = 2;
    GetDiskAndDriverSettings(App.Paths, App.Screen, App.Wizard, ChosenDisk(App));
    EXPECT_EQ(Folder.Path() + "\\", App.Wizard.TxtDest.Text);
    ExpectAspi(false);
    ExpectNetworkOff();
}

TEST_F(DiskSettings, ALockedIndexDoesNotStopThePage) {
    LockedFile lock(Folder.At("Drivers.ini"));
    Prepare("aspi=1\r\nndis=1\r\n");
    ExpectAspi(true);
    ExpectNdisLook();
}

}  // namespace
}  // namespace velbooter::testing
