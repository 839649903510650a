#include "src/run/RunEnd.h"

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <stdexcept>

#include "src/common/RuntimeError.h"
#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {
namespace {

class Canceling : public ApplicationTest {
 protected:
    void MakeWorkingFiles() {
        Folder.Write("Drivers.ini", "[NDIS]\r\n");
        Folder.Write("cabs\\bin\\a.cab");
        Folder.Write("Temp\\Velbooter12\\IO.SYS");
        Folder.Write("files\\disklist.ini");
    }
    void ExpectCleanFolder() {
        EXPECT_FALSE(Folder.HasFile("Drivers.ini"));
        EXPECT_FALSE(Folder.HasFolder("cabs"));
        EXPECT_FALSE(Folder.HasFolder("Temp"));
        EXPECT_TRUE(Folder.HasFile("files\\disklist.ini"));
    }
};

TEST_F(Canceling, TheRunIsOverAndSaysSo) {
    App.Wizard.LblFinish.Caption = "";
    CancelApp(App);
    EXPECT_TRUE(App.RunEnded);
    EXPECT_EQ("Operation canceled", App.Wizard.LblFinish.Caption);
}

TEST_F(Canceling, TheWorkingFilesAreDeleted) {
    MakeWorkingFiles();
    CancelApp(App);
    ExpectCleanFolder();
}

TEST_F(Canceling, EveryErrorCancelsAndIsTold) {
    struct Case {
        std::function<void()> Step;
        std::string Text;
    };
    const std::string fault = "\r\n\r\nNo new disk was created.";
    const Case cases[] = {
        {[] { throw RuntimeError(kDiskFull, "A:\\x"); }, "Error 61: Disk Full\r\nA:\\x"},
        {[] { throw std::bad_alloc(); }, "Error 7: Out of memory"},
        {[] { throw std::out_of_range("vector"); },
         "The program stopped because of an internal error (vector)." + fault},
    };
    for (const Case& c : cases) {
        MakeWorkingFiles();
        Screen.Expect({c.Text, "The Veltrane", Buttons::Ok, Icon::Critical});
        EXPECT_FALSE(RunGuarded(App, c.Step)) << c.Text;
        EXPECT_EQ("Operation canceled", App.Wizard.LblFinish.Caption);
        ExpectCleanFolder();
    }
    EXPECT_TRUE(RunGuarded(App, [] {}));
}

TEST_F(Canceling, TheCodeTellsHowTheLastRunEnded) {
    EXPECT_EQ(ExitCode::Built, CodeOfLastRun(App)) << "no run";
    App.ImageMissing = true;
    EXPECT_EQ(ExitCode::NoImage, CodeOfLastRun(App));
    CancelApp(App);
    EXPECT_EQ(ExitCode::Canceled, CodeOfLastRun(App));
}

TEST_F(Canceling, WithoutWorkingFilesNothingHappens) {
    CancelApp(App);
    EXPECT_TRUE(App.RunEnded);
    EXPECT_EQ((std::vector<std::string>{}), Folder.Tree(""));
}

TEST_F(Canceling, ADeletionThatFailsIsIgnoredAndTheOthersHappen) {
    MakeWorkingFiles();
    {
        LockedFile index(Folder.At("Drivers.ini"));
        LockedFile cabinet(Folder.At("cabs\\bin\\a.cab"));
        CancelApp(App);
        EXPECT_TRUE(App.RunEnded);
        EXPECT_FALSE(Folder.HasFolder("Temp"));
    }
    DeleteWorkingFiles(App.Paths);
    ExpectCleanFolder();
}

TEST_F(Canceling, TheCleanUpAloneLeavesTheRunAsItIs) {
    MakeWorkingFiles();
    DeleteWorkingFiles(App.Paths);
    ExpectCleanFolder();
    EXPECT_FALSE(App.RunEnded);
    EXPECT_EQ("Operation completed successfully", App.Wizard.LblFinish.Caption);
}

TEST_F(Canceling, OnlyFinishIsLeftOfTheButtons) {
    App.Wizard.CmdBack.Enabled = true;
    App.Wizard.CmdFinish.Enabled = false;
    CancelApp(App);
    EXPECT_FALSE(App.Wizard.CmdNext.Visible);
    EXPECT_TRUE(App.Wizard.CmdFinish.Visible);
    EXPECT_TRUE(App.Wizard.CmdFinish.Enabled);
    EXPECT_FALSE(App.Wizard.CmdBack.Enabled);
    EXPECT_FALSE(App.Wizard.CmdCancel.Enabled);
}

TEST_F(Canceling, TheFinalPageIsTheOnlyOneShown) {
    for (Frame& page : App.Wizard.FraMain) page.Visible = true;
    CancelApp(App);
    for (int page = 0; page < kPageCount; ++page) {
        EXPECT_EQ(page == kFinishedPage, App.Wizard.FraMain[static_cast<size_t>(page)].Visible) << page;
    }
}

TEST_F(Canceling, AnUnhandledErrorIsShownWithNumberTextAndFile) {
    Screen.ExpectMessageWith({"53", "File not found", "files\\x.ini"});
    ShowRuntimeError(App.Screen, RuntimeError(kFileNotFound, "files\\x.ini"));
    EXPECT_EQ(1u, Screen.Messages.size());
}

}  // namespace
}  // namespace velbooter::testing
