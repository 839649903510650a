#include <gtest/gtest.h>

#include "src/run/ProgramEnd.h"
#include "src/ui/PageWalk.h"
#include "tests/src/start/BuildRunTest.h"

namespace velbooter::testing {
namespace {

using Files = std::vector<std::string>;

class FinishClick : public BuildRun {
 protected:
    FinishClick() {
        for (Frame& page : App.Wizard.FraMain) page.Visible = false;
        App.Wizard.FraMain[kDestinationPage].Visible = true;
        App.Wizard.CmdBack.Enabled = true;
        App.Wizard.CmdFinish.Enabled = false;
    }
    void ExpectFinalPage() {
        for (int page = 0; page < kPageCount; ++page) {
            EXPECT_EQ(page == kFinishedPage, App.Wizard.FraMain[static_cast<size_t>(page)].Visible) << page;
        }
        EXPECT_FALSE(App.Wizard.CmdBack.Enabled);
        EXPECT_FALSE(App.Wizard.CmdCancel.Enabled);
        EXPECT_TRUE(App.Wizard.CmdFinish.Enabled);
        EXPECT_TRUE(App.RunEnded);
    }
};

TEST_F(FinishClick, BuildsOnTheProgressPageAndShowsTheFinalOne) {
    int paints = 0;
    Screen.OnPaint = [&] {
        ++paints;
        EXPECT_TRUE(App.Wizard.FraMain[kProgressPage].Visible);
        EXPECT_FALSE(App.Wizard.FraMain[kDestinationPage].Visible);
        EXPECT_FALSE(App.Wizard.CmdBack.Enabled);
        EXPECT_FALSE(App.Wizard.CmdCancel.Enabled);
    };
    CmdFinish_Click(App);
    Screen.OnPaint = {};
    EXPECT_GT(paints, 0);
    EXPECT_EQ("Operation completed successfully", App.Wizard.LblFinish.Caption);
    EXPECT_TRUE(Folder.HasFile("out.img"));
    ExpectFinalPage();
}

TEST_F(FinishClick, NeverAddsAPlugin) {
    Folder.MakeTool("plugins\\.exe");
    CmdFinish_Click(App);
    EXPECT_TRUE(Folder.Calls("plugins\\.exe").empty());
}

TEST_F(FinishClick, AFailedRunEndsOnTheFinalPageToo) {
    BreakStaging();
    CmdFinish_Click(App);
    EXPECT_EQ("Operation canceled", App.Wizard.LblFinish.Caption);
    ExpectFinalPage();
}

TEST_F(FinishClick, AnAbortedDriverCopyEndsOnTheFinalPageToo) {
    OfferDrivers("[ASPI]\r\nGONE=1\r\n");
    Screen.Expect(DriverFailure("aspi\\gone.cab"), Answer::Abort);
    CmdFinish_Click(App);
    EXPECT_EQ("Operation canceled", App.Wizard.LblFinish.Caption);
    ExpectFinalPage();
    EXPECT_THROW(CmdFinish_Click(App), ProgramEnd);
}

TEST_F(FinishClick, ASecondClickEndsTheProgramWithoutBuildingAgain) {
    CmdFinish_Click(App);
    ASSERT_EQ(1u, Folder.Calls("bfi.exe").size());
    EXPECT_THROW(CmdFinish_Click(App), ProgramEnd);
    EXPECT_EQ(1u, Folder.Calls("bfi.exe").size());
}

TEST_F(FinishClick, AClickAfterACancelEndsTheProgram) {
    App.RunEnded = true;
    Folder.Write("Drivers.ini");
    EXPECT_THROW(CmdFinish_Click(App), ProgramEnd);
    EXPECT_TRUE(Folder.HasFile("Drivers.ini")) << "ended at once";
}

}  // namespace
}  // namespace velbooter::testing
