// The drivers of a batch run: which are put onto the disk, and the selection of -sel.

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "src/common/INIFile.h"
#include "src/ui/DriversPage.h"
#include "tests/src/start/BatchModeTest.h"

namespace velbooter::testing {
namespace {

using Files = std::vector<std::string>;

const Files kScsiFiles{"lib\\aspi\\aha154x.cab", "lib\\aspi\\bt958.cab"};
const Files kNdisFiles{"etc\\_msnet.nic", "etc\\_msnet.pci", "lib\\ndis\\e100b.cab", "lib\\ndis\\ne2000.cab"};
const Files kOdiFiles{"lib\\odi16\\lan.cab", "lib\\odi16\\nw.cab", "lib\\odi32\\fast.cab",
                      "lib\\odi32\\nw.cab"};

Files Joined(const Files& left, const Files& right) {
    Files all = left;
    all.insert(all.end(), right.begin(), right.end());
    std::sort(all.begin(), all.end());
    return all;
}

class BatchDrivers : public BatchModeTest {
 protected:
    BatchDrivers() {
        MakeDisks({{"plain", ""},
                   {"scsi", "aspi=1\r\n"},
                   {"Net", "ndis=1\r\n"},
                   {"odi", "netw=1\r\n"},
                   {"both", "aspi=1\r\nndis=1\r\n"},
                   {"all", "aspi=1\r\nndis=1\r\nnetw=1\r\n"}});
        for (const char* driver : {"aspi\\AHA154X", "aspi\\bt958", "ndis\\e100b", "ndis\\ne2000",
                                   "odi16\\lan", "odi16\\nw", "odi32\\fast", "odi32\\nw"}) {
            Folder.Write(std::string("drivers\\") + driver + ".cab", driver);
        }
        Folder.MakeTool("cabarc.exe");
    }

    static CommandLineValues WithSelection(const std::string& disk) {
        CommandLineValues values = Values(disk);
        values.ShowDriverDialog = true;
        return values;
    }

    /// Returns the drivers and network lists among the image tool's input.
    Files DriverFiles() {
        Files files;
        std::istringstream tree(Folder.Read("tree.txt"));
        std::string line;
        while (std::getline(tree, line)) {
            const std::string file = line.substr(0, line.rfind(' '));
            if (file.starts_with("lib\\") || file.starts_with("etc\\")) files.push_back(file);
        }
        return files;
    }

    /// Returns the rows of the driver selection, ticked ones after a plus sign, sorted by these texts.
    Files Rows() const {
        Files rows;
        for (const ListItem& row : App.Drivers.LV.ListItems)
            rows.push_back((row.Checked ? "+" : "-") + row.Text);
        std::sort(rows.begin(), rows.end());
        return rows;
    }

    void Untick(const std::string& driver) {
        bool found = false;
        for (ListItem& row : App.Drivers.LV.ListItems) {
            if (row.Text != driver) continue;
            row.Checked = false;
            found = true;
        }
        EXPECT_TRUE(found) << driver;
    }
};

TEST_F(BatchDrivers, ADiskGetsEveryDriverOfTheGroupsThatItOffers) {
    const std::pair<const char*, Files> cases[] = {
        {"plain", {}},
        {"scsi", kScsiFiles},
        {"Net", kNdisFiles},
        {"odi", kOdiFiles},
        {"custom", {}},
        {"both", Joined(kScsiFiles, kNdisFiles)},
        {"all", Joined(kScsiFiles, kOdiFiles)},
    };
    for (const auto& [disk, files] : cases) {
        EXPECT_EQ(ExitCode::Built, Run(Values(disk))) << disk;
        EXPECT_EQ(files, DriverFiles()) << disk;
        ExpectCleanFolder();
    }
    EXPECT_TRUE(Screen.Messages.empty());
}

TEST_F(BatchDrivers, TheDefaultDriversOfADiskNarrowItsGroups) {
    Configure("both", "[DefaultDrivers]\r\naspi\\BT958\r\nNDIS\\E100B.cab\r\nODI16\\LAN\r\n");
    EXPECT_EQ(ExitCode::Built, Run(Values("both")));
    EXPECT_EQ((Files{"etc\\_msnet.nic", "etc\\_msnet.pci", "lib\\aspi\\bt958.cab", "lib\\ndis\\e100b.cab"}),
              DriverFiles());
}

TEST_F(BatchDrivers, AnAbortedDriverCopyEndsWithoutAMessageOfItsOwn) {
    Configure("scsi", "[DefaultDrivers]\r\nASPI\\GONE\r\n");
    Screen.Expect({"Error while copying the file :\r\ndrivers\\aspi\\gone.cab", "Error While Copying",
                   Buttons::AbortRetryIgnore, Icon::Critical},
                  Answer::Abort);
    EXPECT_EQ(ExitCode::Canceled, Run(Values("scsi")));
    EXPECT_TRUE(Folder.Calls("bfi.exe").empty());
    EXPECT_FALSE(App.Wait.Visible);
    ExpectCleanFolder();
}

TEST_F(BatchDrivers, TheDriverListIsGotAfterTheFileListAndBeforeTheImage) {
    Screen.ExpectDriverSelection([&] { CmdOK_Click(App); });
    EXPECT_EQ(ExitCode::Built, Run(WithSelection("Net")));
    EXPECT_EQ(
        (Files{"Please wait ...", "Getting a list of Disks Configuration ...",
               "Getting Disk Configuration INI file ...", "Processing net.ini file ...",
               "Getting Drivers Settings ...", "Getting files list to be copied to the floppy image ...",
               "Getting Drivers List ...", "Creating the floppy image file ...",
               "Preparing selected Drivers ...", "Preparing pre-built drivers cache ...",
               "Preparing new floppy image ...", "Copying files to floppy image ..."}),
        Screen.WaitStatuses());
}

TEST_F(BatchDrivers, TheSelectionIsShownOnceWithEverythingElseChosen) {
    CommandLineValues values = WithSelection("Net");
    values.TargetPath = Elsewhere.At("mine.img");
    values.ImageType = 2;
    Screen.ExpectDriverSelection([&] {
        EXPECT_EQ("Getting Drivers List ...", App.Wait.LblStatus.Caption);
        EXPECT_TRUE(App.Wait.Visible);
        EXPECT_EQ(Elsewhere.At("mine.img"), App.Wizard.TxtDest.Text);
        EXPECT_TRUE(App.Wizard.OptImage28.Value);
        EXPECT_EQ(4, App.Wizard.LstFiles.ListCount());
        EXPECT_TRUE(Folder.HasFile("Drivers.ini"));
        EXPECT_TRUE(Folder.Calls("bfi.exe").empty());
        CmdCancelDrivers_Click(App);
    });
    EXPECT_EQ(ExitCode::Built, Run(values));
    EXPECT_EQ(Elsewhere.At("mine.img"), Image());
    EXPECT_EQ("288", Type());
}

TEST_F(BatchDrivers, TheSelectionHasOneListWhichTheNetworkDriversTake) {
    struct Case {
        const char* Disk;
        std::string Title;
        Files Rows;
        const char* Tag;
    };
    const Case cases[] = {
        {"plain", "DriverName", {}, ""},
        {"scsi", "ASPI", {"+AHA154X", "+BT958"}, "aspi"},
        {"Net", "NIC", {"+E100B", "+NE2000"}, "ndis"},
        {"odi", "NIC", {"+FAST", "+LAN", "+NW", "+NW"}, "odi32"},
        {"both", "NIC", {"+E100B", "+NE2000"}, "ndis"},
        {"all", "NIC", {"+FAST", "+LAN", "+NW", "+NW"}, "odi32"},
    };
    for (const Case& c : cases) {
        Screen.ExpectDriverSelection([&] {
            EXPECT_EQ(c.Title, App.Drivers.LV.FirstColumnTitle) << c.Disk;
            EXPECT_EQ(Rows(), c.Rows) << c.Disk;
            EXPECT_EQ(c.Tag, App.Drivers.LV.Tag) << c.Disk;
            CmdOK_Click(App);
        });
        EXPECT_EQ(ExitCode::Built, Run(WithSelection(c.Disk))) << c.Disk;
    }
}

TEST_F(BatchDrivers, TheGroupThatIsNotShownIsBuiltAsTheDiskSaysAllTheSame) {
    Configure("both", "[DefaultDrivers]\r\nASPI\\BT958\r\nNDIS\\E100B\r\nNDIS\\NE2000\r\n");
    Screen.ExpectDriverSelection([&] {
        CmdSelAll_Click(App);
        CmdOK_Click(App);
    });
    EXPECT_EQ(ExitCode::Built, Run(WithSelection("both")));
    EXPECT_EQ((Files{"etc\\_msnet.nic", "etc\\_msnet.pci", "lib\\aspi\\bt958.cab"}), DriverFiles());
}

TEST_F(BatchDrivers, TheTicksBeginAsTheDefaultsOfTheDiskSay) {
    Configure("Net", "[DefaultDrivers]\r\nNDIS\\NE2000\r\n");
    Screen.ExpectDriverSelection([&] {
        EXPECT_EQ((Files{"+NE2000", "-E100B"}), Rows());
        CmdOK_Click(App);
    });
    EXPECT_EQ(ExitCode::Built, Run(WithSelection("Net")));
    EXPECT_EQ((Files{"etc\\_msnet.nic", "etc\\_msnet.pci", "lib\\ndis\\ne2000.cab"}), DriverFiles());
}

TEST_F(BatchDrivers, OkBuildsWhatIsTicked) {
    Screen.ExpectDriverSelection([&] {
        Untick("AHA154X");
        CmdOK_Click(App);
        EXPECT_EQ(
            "[ASPI]\r\nAHA154X=0\r\nBT958=1\r\n[NDIS]\r\nE100B=1\r\nNE2000=1\r\n"
            "[ODI16]\r\nLAN=1\r\nNW=1\r\n[ODI32]\r\nFAST=1\r\nNW=1\r\n",
            Folder.Read("Drivers.ini"));
    });
    EXPECT_EQ(ExitCode::Built, Run(WithSelection("scsi")));
    EXPECT_EQ((Files{"lib\\aspi\\bt958.cab"}), DriverFiles());
}

TEST_F(BatchDrivers, CancelBuildsWhatWasChosenBefore) {
    Screen.ExpectDriverSelection([&] {
        Untick("AHA154X");
        CmdCancelDrivers_Click(App);
    });
    EXPECT_EQ(ExitCode::Built, Run(WithSelection("scsi")));
    EXPECT_EQ(kScsiFiles, DriverFiles());
}

TEST_F(BatchDrivers, WithoutAnyTickedNetworkDriverTheListsAreThereAllTheSame) {
    Screen.ExpectDriverSelection([&] {
        CmdSelAll_Click(App);
        CmdOK_Click(App);
    });
    EXPECT_EQ(ExitCode::Built, Run(WithSelection("Net")));
    EXPECT_EQ((Files{"etc\\_msnet.nic", "etc\\_msnet.pci"}), DriverFiles());
}

TEST_F(BatchDrivers, BothOdiGroupsAreChosenInOneList) {
    Screen.ExpectDriverSelection([&] {
        Untick("FAST");
        Untick("LAN");
        CmdOK_Click(App);
        const INIFile index(Folder.At("Drivers.ini"));
        EXPECT_EQ('0', index.GetINIKey("ODI16", "LAN").front());
        EXPECT_EQ('1', index.GetINIKey("ODI16", "NW").front());
        EXPECT_EQ('0', index.GetINIKey("ODI32", "FAST").front());
    });
    EXPECT_EQ(ExitCode::Built, Run(WithSelection("odi")));
    EXPECT_EQ((Files{"lib\\odi16\\nw.cab", "lib\\odi32\\nw.cab"}), DriverFiles());
}

TEST_F(BatchDrivers, AStoreWithoutTheGroupsFolderShowsAnEmptySelection) {
    Folder.Remove("drivers");
    Screen.ExpectDriverSelection([&] {
        EXPECT_TRUE(App.Drivers.LV.ListItems.empty());
        CmdOK_Click(App);
    });
    EXPECT_EQ(ExitCode::Built, Run(WithSelection("all")));
    EXPECT_EQ(Files{}, DriverFiles());
    EXPECT_TRUE(Folder.Calls("cabarc.exe").empty());
}

}  // namespace
}  // namespace velbooter::testing
