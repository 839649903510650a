// Builds through the wizard: what Finish creates, and which input waits while the program works.

#include <windows.h>
// commctrl.h needs windows.h before it.
#include <commctrl.h>

#include "tests/e2e/support/Announcements.h"
#include "tests/e2e/support/Programs.h"
#include "tests/e2e/support/RemoteControls.h"
#include "tests/e2e/support/WizardTest.h"

namespace velbooter::e2e {
namespace {

using testing::ElementsAre;

class WizardBuild : public WizardTest {
 protected:
    // Clicks Finish and waits for the outcome.
    static void Finish(const ShownWizard& wizard) {
        wizard.Click(IDC_FINISH);
        ExpectTheEnd(wizard, "Operation completed successfully");
    }

    // Clicks Finish on the final page.
    void Leave(const ShownWizard& wizard, ExitCode code) {
        wizard.Click(IDC_FINISH);
        EXPECT_EQ(Number(code), Program().ExitCode());
    }

    FloppyImage BuildByCommandLine(const std::string& arguments, const std::string& image) const {
        ProgramUnderTest program(folder_, " " + arguments + " " + folder_.Path(image));
        EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
        return FloppyImage(folder_.Path(image));
    }
};

TEST_F(WizardBuild, DemonstrationIsTheOneOfTheCommandLine) {
    const ShownWizard wizard = OpenAt(kDestinationPage, "demo");
    wizard.Enter(IDC_TARGET, folder_.Path("wizard.img"));
    Finish(wizard);
    ExpectNoWorkingFiles(folder_);
    Leave(wizard, ExitCode::Built);
    const FloppyImage image = ExpectImage(folder_, folder_.Path("wizard.img"), kSmallImageBytes);
    const FloppyImage other = BuildByCommandLine("-t 144 demo", "line.img");
    EXPECT_EQ(other.Files(), image.Files());
    EXPECT_TRUE(image.BytesWithoutTimes() == other.BytesWithoutTimes()) << "the images differ in their bytes";
}

TEST_F(WizardBuild, LargeImageIsTheOneOfTheCommandLine) {
    const ShownWizard wizard = OpenAt(kDestinationPage, "minimal");
    wizard.Click(IDC_IMAGE_28);
    wizard.Enter(IDC_TARGET, folder_.Path("wizard.img"));
    Finish(wizard);
    Leave(wizard, ExitCode::Built);
    const FloppyImage image = ExpectImage(folder_, folder_.Path("wizard.img"), kLargeImageBytes);
    EXPECT_TRUE(image.BytesWithoutTimes() ==
                BuildByCommandLine("-t 288 minimal", "line.img").BytesWithoutTimes());
}

TEST_F(WizardBuild, TakesTheSelectedFilesAlone) {
    const ShownWizard wizard = OpenAt(kFilesPage);
    EXPECT_EQ(wizard.SelectedFiles(), wizard.Files());
    wizard.ClickFile("AUTOEXEC.BAT");
    wizard.Next(kDestinationPage);
    Finish(wizard);
    Leave(wizard, ExitCode::Built);
    const FloppyImage image = ExpectImage(folder_, folder_.Path("BootDisk.img"), kSmallImageBytes);
    EXPECT_EQ(0u, image.Files().count("AUTOEXEC.BAT"));
    EXPECT_EQ(1u, image.Files().count("CONFIG.SYS"));
}

TEST_F(WizardBuild, AnswersOfTheSetupPageReachTheDisk) {
    SetDisk("minimal", SmallDiskWith({"[Create_CABs]", "setupwin=LIB"}));
    const ShownWizard wizard = OpenAt(kSetupPage, "minimal");
    wizard.Enter(IDC_OWNER, "Somebody Else");
    wizard.Next(kDestinationPage);
    EXPECT_NE(folder_.Read("files\\setupwin\\bin\\auto.inf").find("Name=\"Somebody Else\""),
              std::string::npos);
    wizard.Close();
    Program().ExitCode();
}

TEST_F(WizardBuild, ProgressIsShownWhileTheWorkGoesOn) {
    HeldTool tool(folder_, "bfi");
    const ShownWizard wizard = OpenAt(kDestinationPage, "minimal");
    wizard.Click(IDC_IMAGE_14);
    wizard.Click(IDC_FINISH);
    wizard.WaitForPage(kProgressPage);
    Program().WaitUntil([&] { return tool.IsAtWork(); }, "the image is not written");
    EXPECT_THAT(wizard.Buttons(), ElementsAre(IDC_FINISH, IDC_HELP_BUTTON));
    EXPECT_EQ("Preparing selected Drivers", wizard.Text(IDC_STEP_1));
    EXPECT_EQ("Preparing pre-built drivers cache", wizard.Text(IDC_STEP_2));
    EXPECT_EQ("Preparing new floppy image", wizard.Text(IDC_STEP_3));
    EXPECT_EQ("Copying files to floppy image", wizard.Text(IDC_STEP_4));
    for (const int done : {IDC_MARK_1, IDC_MARK_2, IDC_MARK_3}) EXPECT_EQ("Done", wizard.Text(done));
    EXPECT_EQ("", wizard.Text(IDC_MARK_4));
    EXPECT_EQ(Ask(wizard.Control(IDC_PROGRESS), PBM_GETPOS), Ask(wizard.Control(IDC_PROGRESS), PBM_GETRANGE));
    EXPECT_GT(Ask(wizard.Control(IDC_PROGRESS), PBM_GETPOS), 0);
    // A click on Finish now is dropped: the user has to see the result first.
    ::PostMessageA(wizard.Control(IDC_FINISH), BM_CLICK, 0, 0);
    Ask(wizard.Handle(), WM_NULL);
    tool.Release();
    ExpectTheEnd(wizard, "Operation completed successfully");
    EXPECT_EQ("Done", wizard.Text(IDC_MARK_4));
    Leave(wizard, ExitCode::Built);
}

TEST_F(WizardBuild, StepsAndOutcomeAreAnnounced) {
    const ShownWizard wizard = OpenAt(kDestinationPage, "minimal");
    const Announcements announcements(Program().ProcessId());
    Finish(wizard);
    std::vector<HWND> expected;
    for (const int id : {IDC_STEP_1, IDC_STEP_2, IDC_STEP_3, IDC_STEP_4, IDC_OUTCOME})
        expected.push_back(wizard.Control(id));
    Program().WaitUntil([&] { return announcements.Heard().size() >= expected.size(); },
                        "the outcome is not announced");
    EXPECT_EQ(expected, announcements.Heard());
    Leave(wizard, ExitCode::Built);
}

TEST_F(WizardBuild, FloppyThatIsNotFormattedCancels) {
    const ShownWizard wizard = OpenAt(kDestinationPage, "minimal");
    wizard.Click(IDC_FLOPPY);
    wizard.Click(IDC_FINISH);
    EXPECT_EQ((ShownMessage{
                  "You have select not to format the floppy", "Didn't Format", {"OK"}, Picture::Information}),
              Program().Answer("OK"));
    ExpectTheEnd(wizard, "Operation canceled");
    EXPECT_NE(wizard.Text(IDC_MARK_2), "");
    EXPECT_EQ("", wizard.Text(IDC_MARK_3));
    ExpectNoWorkingFiles(folder_);
    Leave(wizard, ExitCode::Canceled);
}

TEST_F(WizardBuild, ClosingAfterwardsTellsOfTheSuccess) {
    const ShownWizard wizard = OpenAt(kDestinationPage, "minimal");
    Finish(wizard);
    wizard.Close();
    EXPECT_EQ(Number(ExitCode::Built), Program().ExitCode());
    EXPECT_TRUE(folder_.Exists("minimal.img"));
}

TEST_F(WizardBuild, EndOfTheSessionCleansUp) {
    const ShownWizard wizard = OpenAt(kDriversPage, "demo");
    EXPECT_EQ(TRUE, Ask(wizard.Handle(), WM_QUERYENDSESSION));
    EXPECT_TRUE(folder_.Exists("cabs")) << "the session may stay after all";
    Ask(wizard.Handle(), WM_ENDSESSION, FALSE);
    EXPECT_TRUE(folder_.Exists("Drivers.ini"));
    Ask(wizard.Handle(), WM_ENDSESSION, TRUE);
    ExpectNoWorkingFiles(folder_);
    wizard.Close();
    EXPECT_EQ(Number(ExitCode::Built), Program().ExitCode());
}

// The wizard while it loads a disk; the archiver that packs its module is held up.
class WizardAtWork : public WizardTest {
 protected:
    void SetUp() override {
        WizardTest::SetUp();
        SetDisk("minimal", SmallDiskWith({"[Create_CABs]", "scsi=LIB"}));
    }

    ShownWizard StartLoading() {
        ShownWizard wizard = OpenAt(kDiskPage, "minimal");
        wizard.Click(IDC_NEXT);
        Program().WaitUntil([&] { return tool_.IsAtWork(); }, "nothing is packed");
        return wizard;
    }

    const HeldTool tool_{folder_, "cabarc"};
};

TEST_F(WizardAtWork, TellsWhereItIs) {
    const ShownWizard wizard = StartLoading();
    EXPECT_EQ(kDiskPage, wizard.Page());
    EXPECT_EQ("Please Wait ... Creating CAB files", wizard.Text(IDC_STATUS));
    tool_.Release();
    wizard.WaitForPage(kDriversPage);
    EXPECT_TRUE(folder_.Exists("cabs\\LIB\\scsi.cab"));
    wizard.Close();
    Program().ExitCode();
}

TEST_F(WizardAtWork, PointerIsBusyOverPageAndFrame) {
    const ShownWizard wizard = StartLoading();
    const auto setsPointer = [](HWND window, HWND over) {
        const auto place = MAKELPARAM(HTCLIENT, WM_MOUSEMOVE);
        return Ask(window, WM_SETCURSOR, reinterpret_cast<WPARAM>(over),
                   reinterpret_cast<const void*>(static_cast<UINT_PTR>(place)));
    };
    EXPECT_EQ(1, setsPointer(wizard.PageWindow(kDiskPage), wizard.Control(IDC_DISKS)));
    EXPECT_EQ(1, setsPointer(wizard.Handle(), wizard.Control(IDC_HELP_BUTTON)));
    tool_.Release();
    wizard.WaitForPage(kDriversPage);
    EXPECT_EQ(0, setsPointer(wizard.PageWindow(kDriversPage), wizard.Control(IDC_NDIS)));
    wizard.Close();
    EXPECT_EQ(Number(ExitCode::Built), Program().ExitCode());
}

TEST_F(WizardAtWork, SessionIsAskedToStay) {
    const ShownWizard wizard = StartLoading();
    EXPECT_EQ(FALSE, Ask(wizard.Handle(), WM_QUERYENDSESSION));
    Ask(wizard.Handle(), WM_ENDSESSION, FALSE);
    tool_.Release();
    wizard.WaitForPage(kDriversPage);
    EXPECT_TRUE(folder_.Exists("Drivers.ini"));
    EXPECT_EQ(TRUE, Ask(wizard.Handle(), WM_QUERYENDSESSION));
    wizard.Close();
    EXPECT_EQ(Number(ExitCode::Built), Program().ExitCode());
}

TEST_F(WizardAtWork, NextAndBackAreNotTaken) {
    const ShownWizard wizard = StartLoading();
    for (const int id : {IDC_NEXT, IDC_BACK}) {
        ::PostMessageA(wizard.Control(id), BM_CLICK, 0, 0);
        wizard.PressMouseOn(id);
    }
    ::PostMessageA(wizard.Control(IDC_DISKS), WM_KEYDOWN, VK_HOME, 1);
    Ask(wizard.Handle(), WM_NULL);
    tool_.Release();
    wizard.WaitForPage(kDriversPage);
    EXPECT_EQ("minimal", wizard.Disks().at(static_cast<size_t>(wizard.SelectedDisk())));
    wizard.Next(kDestinationPage);
    wizard.Close();
    EXPECT_EQ(Number(ExitCode::Built), Program().ExitCode());
}

TEST_F(WizardAtWork, EscapeInTheFrameWaits) {
    const ShownWizard wizard = StartLoading();
    ::PostMessageA(wizard.Handle(), WM_KEYDOWN, VK_ESCAPE, 1);
    Ask(wizard.Handle(), WM_NULL);
    EXPECT_EQ(kDiskPage, wizard.Page());
    tool_.Release();
    ExpectTheEnd(wizard, "Operation canceled");
    wizard.Click(IDC_FINISH);
    EXPECT_EQ(Number(ExitCode::Canceled), Program().ExitCode());
}

TEST_F(WizardAtWork, HeldScrollBarHoldsNothingUp) {
    const ShownWizard wizard = StartLoading();
    const HWND list = wizard.Control(IDC_DISKS);
    RECT place{};
    ::GetWindowRect(list, &place);
    const LPARAM inTheBar = MAKELPARAM(place.right - 5, (place.top + place.bottom) / 2);
    EXPECT_NE(::GetWindowLongA(list, GWL_STYLE) & WS_VSCROLL, 0) << "the list has no scroll bar";
    ::PostMessageA(list, WM_NCLBUTTONDOWN, HTVSCROLL, inTheBar);
    tool_.Release();
    wizard.WaitForPage(kDriversPage);
    wizard.Close();
    EXPECT_EQ(Number(ExitCode::Built), Program().ExitCode());
}

TEST_F(WizardAtWork, CancelWaits) {
    const ShownWizard wizard = StartLoading();
    wizard.PressMouseOn(IDCANCEL);
    Ask(wizard.Handle(), WM_NULL);
    EXPECT_EQ(kDiskPage, wizard.Page());
    EXPECT_TRUE(folder_.Exists("cabs"));
    tool_.Release();
    ExpectTheEnd(wizard, "Operation canceled");
    ExpectNoWorkingFiles(folder_);
    wizard.Click(IDC_FINISH);
    EXPECT_EQ(Number(ExitCode::Canceled), Program().ExitCode());
}

TEST_F(WizardAtWork, ClosingWaits) {
    const ShownWizard wizard = StartLoading();
    wizard.Close();
    Ask(wizard.Handle(), WM_NULL);
    EXPECT_TRUE(::IsWindowVisible(wizard.Handle()));
    EXPECT_TRUE(folder_.Exists("Drivers.ini"));
    tool_.Release();
    EXPECT_EQ(Number(ExitCode::Built), Program().ExitCode());
    ExpectNoWorkingFiles(folder_);
}

TEST_F(WizardBuild, ClosingDuringTheBuildWaitsForTheImage) {
    HeldTool tool(folder_, "bfi");
    const ShownWizard wizard = OpenAt(kDestinationPage, "minimal");
    wizard.Click(IDC_FINISH);
    Program().WaitUntil([&] { return tool.IsAtWork(); }, "the image is not written");
    wizard.Close();
    Ask(wizard.Handle(), WM_NULL);
    EXPECT_TRUE(::IsWindowVisible(wizard.Handle()));
    tool.Release();
    EXPECT_EQ(Number(ExitCode::Built), Program().ExitCode());
    ExpectImage(folder_, folder_.Path("minimal.img"), kSmallImageBytes);
    ExpectNoWorkingFiles(folder_);
}

}  // namespace
}  // namespace velbooter::e2e
