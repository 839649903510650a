// The walk through the wizard's pages: which page follows which, and the ways out of it.

#include "tests/e2e/support/WindowTree.h"
#include "tests/e2e/support/WizardTest.h"
#include "tests/support/LockedFile.h"

namespace velbooter::e2e {
namespace {

using tools::testing::LockedFile;

using testing::ElementsAre;
using Pages = std::vector<int>;

const std::vector<std::string> kBothSetups = {"[Create_CABs]", "setupwin=LIB", "setupnt=LIB"};
const std::vector<std::string> kSetupOfNt = {"[Create_CABs]", "setupnt=LIB"};

struct Walk {
    const char* Name;
    const char* Disk;
    bool HasSetupPage;
    Pages Way;  ///< the pages that Next turns to, the first one included
};

void PrintTo(const Walk& walk, std::ostream* out) {
    *out << walk.Name;
}

class WizardWalk : public WizardTest, public testing::WithParamInterface<Walk> {
 protected:
    static void ExpectButtons(const ShownWizard& wizard, int page) {
        Pages expected;
        if (page != kWelcomePage) expected.push_back(IDC_BACK);
        expected.push_back(page == kDestinationPage ? IDC_FINISH : IDC_NEXT);
        expected.push_back(IDCANCEL);
        expected.push_back(IDC_HELP_BUTTON);
        EXPECT_EQ(expected, wizard.Buttons()) << "on page " << page;
    }

    // Expects the work of the page that Next has left to be done when the next page is shown.
    void ExpectWork(const ShownWizard& wizard, int page) const {
        if (page < kDriversPage) return;
        EXPECT_TRUE(folder_.Exists("cabs\\COMMAND.COM"));
        if (page == kSetupPage) {
            EXPECT_EQ("Ada Example", wizard.Text(IDC_OWNER));
        }
        if (page < kFilesPage) return;
        EXPECT_EQ(GetParam().HasSetupPage, folder_.Exists("cabs\\Lib\\setupwin.cab"));
        EXPECT_TRUE(folder_.Exists("cabs\\Lib\\setupnt.cab"));
        // The list is filled only on its own page.
        if (page == kFilesPage) {
            EXPECT_THAT(wizard.SelectedFiles(), testing::Contains("COMMAND.COM"));
        }
    }
};

TEST_P(WizardWalk, TurnsToThePagesThatTheDiskNeeds) {
    const Walk& walk = GetParam();
    std::vector<std::string> lines = SmallDisk();
    const auto& setups = walk.HasSetupPage ? kBothSetups : kSetupOfNt;
    lines.insert(lines.end(), setups.begin(), setups.end());
    SetDisk(walk.Disk, lines);
    const ShownWizard wizard = Open();
    // The second time everything is as the first time.
    for (int time = 0; time < 2; ++time) {
        for (const int page : walk.Way) {
            if (page != kWelcomePage) wizard.Next(page);
            if (page == kDiskPage) wizard.SelectDisk(walk.Disk);
            ExpectButtons(wizard, page);
            ExpectWork(wizard, page);
        }
        if (time == 1) break;
        for (auto page = walk.Way.rbegin() + 1; page != walk.Way.rend(); ++page) {
            wizard.Back(*page);
            ExpectButtons(wizard, *page);
        }
    }
    wizard.Close();
    EXPECT_EQ(Number(ExitCode::Built), Program().ExitCode());
    ExpectNoWorkingFiles(folder_);
}

INSTANTIATE_TEST_SUITE_P(Each, WizardWalk,
                         testing::Values(Walk{"CustomWithSetup", "custom", true, {0, 1, 2, 3, 4, 5}},
                                         Walk{"CustomWithoutSetup", "custom", false, {0, 1, 2, 4, 5}},
                                         Walk{"CatalogueWithSetup", "minimal", true, {0, 1, 2, 3, 5}},
                                         Walk{"CatalogueWithoutSetup", "minimal", false, {0, 1, 2, 5}}),
                         [](const auto& info) { return info.param.Name; });

class WizardEnds : public WizardTest, public testing::WithParamInterface<int> {
 protected:
    void SetUp() override {
        WizardTest::SetUp();
        SetDisk("custom", SmallDiskWith(kBothSetups));
    }
};

TEST_P(WizardEnds, CancelShowsTheFinalPageAlone) {
    const ShownWizard wizard = OpenAt(GetParam());
    EXPECT_TRUE(folder_.Exists("cabs"));
    EXPECT_TRUE(folder_.Exists("Drivers.ini"));
    wizard.Click(IDCANCEL);
    ExpectTheEnd(wizard, "Operation canceled");
    ExpectNoWorkingFiles(folder_);
    wizard.Click(IDC_FINISH);
    EXPECT_EQ(Number(ExitCode::Canceled), Program().ExitCode());
    EXPECT_FALSE(folder_.Exists("BootDisk.img"));
}

INSTANTIATE_TEST_SUITE_P(OnPage, WizardEnds,
                         testing::Values(kWelcomePage, kDiskPage, kDriversPage, kSetupPage, kFilesPage,
                                         kDestinationPage),
                         testing::PrintToStringParamName());

class WizardCloses : public WizardTest, public testing::WithParamInterface<int> {};

TEST_P(WizardCloses, LeavesNoWorkingFiles) {
    const ShownWizard wizard = OpenAt(GetParam());
    folder_.Write("Temp\\left.txt", "left by a former run");
    EXPECT_TRUE(folder_.Exists("cabs"));
    EXPECT_TRUE(folder_.Exists("Drivers.ini"));
    wizard.Close();
    EXPECT_EQ(Number(ExitCode::Built), Program().ExitCode());
    ExpectNoWorkingFiles(folder_);
    EXPECT_FALSE(folder_.Exists("BootDisk.img"));
}

INSTANTIATE_TEST_SUITE_P(OnPage, WizardCloses, testing::Values(kWelcomePage, kDiskPage, kDestinationPage),
                         testing::PrintToStringParamName());

TEST_F(WizardTest, ClosingTheFinalPageTellsOfTheCancelling) {
    const ShownWizard wizard = Open();
    wizard.Click(IDCANCEL);
    ExpectTheEnd(wizard, "Operation canceled");
    wizard.Close();
    EXPECT_EQ(Number(ExitCode::Canceled), Program().ExitCode());
}

TEST_F(WizardTest, StartPreparesTheFolder) {
    folder_.Write("cabs\\left.txt", "left by a former run");
    const ShownWizard wizard = Open();
    EXPECT_EQ("The Veltrane", TextOf(wizard.Handle()));
    EXPECT_EQ("Welcome to The Veltrane v1.5", wizard.Text(IDC_HEADING));
    EXPECT_EQ(folder_.Path("BootDisk.img"), wizard.Text(IDC_TARGET));
    EXPECT_TRUE(folder_.Exists("Drivers.ini"));
    EXPECT_TRUE(folder_.Exists("cabs\\bin"));
    EXPECT_FALSE(folder_.Exists("cabs\\left.txt"));
    EXPECT_TRUE(folder_.Exists("files\\dos\\bin"));
    EXPECT_FALSE(Program().SawWaitWindow());
    wizard.Close();
    EXPECT_EQ(Number(ExitCode::Built), Program().ExitCode());
}

TEST_F(WizardTest, AnotherDiskIsLoadedAnew) {
    SetDisk("custom", SmallDiskWith(kBothSetups));
    const ShownWizard wizard = OpenAt(kDestinationPage, "minimal");
    EXPECT_EQ(folder_.Path("minimal.img"), wizard.Text(IDC_TARGET));
    EXPECT_FALSE(folder_.Exists("cabs\\Lib"));
    wizard.Back(kDriversPage);
    wizard.Back(kDiskPage);
    EXPECT_EQ("minimal", wizard.Disks().at(static_cast<size_t>(wizard.SelectedDisk())));
    wizard.SelectDisk("custom");
    wizard.Next(kDriversPage);
    EXPECT_EQ("Press Next to re-populate the files list", wizard.Text(IDC_STATUS));
    EXPECT_EQ(folder_.Path("BootDisk.img"), wizard.Text(IDC_TARGET));
    wizard.Next(kSetupPage);
    wizard.Close();
    Program().ExitCode();
}

TEST_F(WizardTest, StepThatCancelsLeavesTheFinalPageAlone) {
    SetDisk("custom", {"[Create_CABs]", "setupwin=x"});
    const ShownWizard wizard = OpenAt(kDiskPage);
    wizard.Click(IDC_NEXT);
    ExpectTheEnd(wizard, "Operation canceled");
    ExpectNoWorkingFiles(folder_);
    wizard.Click(IDC_FINISH);
    EXPECT_EQ(Number(ExitCode::Canceled), Program().ExitCode());
}

TEST_F(WizardTest, MissingConfigurationFileIsToldOnce) {
    folder_.Remove("files\\minimal.ini");
    const ShownWizard wizard = OpenAt(kDiskPage, "minimal");
    wizard.Click(IDC_NEXT);
    const ShownMessage message = Program().Message();
    EXPECT_EQ((ShownMessage{"Error 53: File not found\r\n" + folder_.Path("files\\minimal.ini"),
                            "The Veltrane",
                            {"OK"},
                            Picture::Critical}),
              message);
    EXPECT_FALSE(::IsWindowEnabled(wizard.Handle())) << "the message does not belong to the wizard";
    Program().Press("OK");
    ExpectTheEnd(wizard, "Operation canceled");
    ExpectNoWorkingFiles(folder_);
    wizard.Click(IDC_FINISH);
    EXPECT_EQ(Number(ExitCode::Canceled), Program().ExitCode());
}

TEST_F(WizardTest, AbortedPreparationShowsTheFinalPage) {
    LockedFile locked(folder_.Path("files\\base_files\\MSDOS.SYS"));
    ProgramUnderTest program(folder_, "");
    EXPECT_EQ(CopyQuestion(folder_.Path("files\\base_files\\*.*")), program.Answer("Abort"));
    const ShownWizard wizard(program, kFinishedPage);
    ExpectTheEnd(wizard, "Operation canceled");
    ExpectNoWorkingFiles(folder_);
    wizard.Click(IDC_FINISH);
    EXPECT_EQ(Number(ExitCode::Canceled), program.ExitCode());
}

TEST_F(WizardTest, SecondStartIsRefusedWhileItIsOpen) {
    const ShownWizard wizard = OpenAt(kDriversPage);
    for (const char* arguments : {"", " custom"}) {
        ProgramUnderTest second(folder_, arguments);
        EXPECT_EQ("The Veltrane is already running", second.Answer("OK").Text);
        EXPECT_EQ(Number(ExitCode::AlreadyRunning), second.ExitCode());
    }
    EXPECT_TRUE(folder_.Exists("Drivers.ini"));
    wizard.Next(kFilesPage);
    wizard.Close();
    EXPECT_EQ(Number(ExitCode::Built), Program().ExitCode());
}

}  // namespace
}  // namespace velbooter::e2e
