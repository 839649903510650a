#pragma once
// The fixture of the tests of a build run: a disk of one file, ready to be built.

#include <gtest/gtest.h>

#include <string>

#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {

class BuildRun : public ApplicationTest {
 protected:
    BuildRun() {
        Folder.Write("Drivers.ini");
        Add("IO.SYS", "staged");
        App.Wizard.TxtDest.Text = Folder.At("out.img");
        App.Wizard.LblMsg3.Caption = "Step three";
        App.Wizard.LblMsg4.Caption = "Step four";
        App.Wizard.LblFinish.Caption = "";
        Folder.MakeTool("bfi.exe", "tree|tree.txt\nimage\n");
    }
    void Add(const std::string& entry, const std::string& content) {
        Folder.Write("cabs\\" + entry, content);
        App.Wizard.LstFiles.AddItem(entry);
        App.Wizard.LstFiles.Select(App.Wizard.LstFiles.ListCount() - 1, true);
    }
    /// Puts drivers into the store, ticks both rows of the drivers page, and writes `index` into
    /// Drivers.ini.
    void OfferDrivers(const std::string& index) {
        Folder.Write("drivers\\aspi\\bus.cab", "bus");
        Folder.Write("drivers\\aspi\\host.cab", "host");
        Folder.Write("drivers\\ndis\\net.cab", "card");
        Folder.Write("Drivers.ini", index);
        App.Wizard.ChkASPI.Value = 1;
        App.Wizard.ChkNDIS.Value = 1;
    }
    static Message DriverFailure(const std::string& cabinet) { return CopyFailure("drivers\\" + cabinet); }
    void ExpectCleanFolder() {
        EXPECT_FALSE(Folder.HasFile("Drivers.ini"));
        EXPECT_FALSE(Folder.HasFolder("cabs"));
        EXPECT_FALSE(Folder.HasFolder("Temp"));
    }
    void ExpectCanceled() {
        EXPECT_TRUE(App.RunEnded);
        EXPECT_EQ("Operation canceled", App.Wizard.LblFinish.Caption);
        EXPECT_TRUE(App.Wizard.FraMain[kFinishedPage].Visible);
        ExpectCleanFolder();
    }
    /// Makes the staging step fail: its first file is missing.
    void BreakStaging() {
        Folder.Remove("cabs\\IO.SYS");
        Screen.Expect({"Error while copying the file from its Source :\r\nIO.SYS", "Error", Buttons::Ok,
                       Icon::Critical});
    }
};

}  // namespace velbooter::testing
