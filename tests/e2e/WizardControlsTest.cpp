// The controls of the wizard's pages, each as a user uses it: drivers, destination, links, help.

#include <windows.h>
// commctrl.h needs windows.h before it.
#include <commctrl.h>

#include "src/forms/ProductTexts.h"
#include "tests/e2e/support/BrowserCalls.h"
#include "tests/e2e/support/FileDialogs.h"
#include "tests/e2e/support/HelpCalls.h"
#include "tests/e2e/support/RemoteControls.h"
#include "tests/e2e/support/SelectionWindow.h"
#include "tests/e2e/support/WindowTree.h"
#include "tests/e2e/support/WizardTest.h"
#include "tests/support/Patience.h"

namespace velbooter::e2e {
namespace {

using testing::ElementsAre;
using Names = std::vector<std::string>;

class WizardControls : public WizardTest {
 protected:
    // Builds and returns the names of a group's drivers on the disk.
    Names Build(const ShownWizard& wizard, const std::string& group) {
        wizard.GoTo(kDestinationPage);
        const FloppyImage image = FinishInto(wizard, wizard.Text(IDC_TARGET));
        const std::string prefix = "LIB\\" + group + "\\";
        Names names;
        for (const auto& [file, contents] : image.Files()) {
            if (file.rfind(prefix, 0) == 0) names.push_back(file.substr(prefix.size()));
        }
        return names;
    }

    size_t DriversIn(const std::string& group) const {
        const Names names = folder_.Names("drivers\\" + group);
        return static_cast<size_t>(std::count_if(names.begin(), names.end(), [](const std::string& name) {
            return name.find(".cab") != std::string::npos;
        }));
    }

    // Clicks one of the two buttons and waits until all drivers are listed.
    SelectionWindow Select(const ShownWizard& wizard, int button, size_t drivers) {
        wizard.Click(button);
        const SelectionWindow selection(Program().DriverSelection());
        EXPECT_TRUE(Eventually([&] {
            return selection.Rows().size() == drivers && selection.ColumnArrow(1) == Arrow::Up;
        })) << "not all drivers are listed";
        return selection;
    }
};

TEST_F(WizardControls, CheckBoxesSwitchTheirButtonsAndTheirDrivers) {
    SetDisk("custom", SmallDiskWith({"[DefaultDrivers]", "ASPI\\ASPI8DOS", "NDIS\\E100B"}));
    const ShownWizard wizard = OpenAt(kDriversPage);
    for (const auto& [box, button] :
         {std::pair{IDC_NDIS, IDC_SELECT_NDIS}, std::pair{IDC_ASPI, IDC_SELECT_ASPI}}) {
        EXPECT_TRUE(wizard.IsTicked(box));
        EXPECT_TRUE(wizard.Takes(button));
        wizard.Click(box);
        Program().WaitUntil([&] { return !wizard.Takes(button); }, "the button stays enabled");
        EXPECT_FALSE(wizard.IsTicked(box));
    }
    wizard.Click(IDC_NDIS);
    Program().WaitUntil([&] { return wizard.Takes(IDC_SELECT_NDIS); }, "the button stays disabled");
    EXPECT_TRUE(wizard.IsTicked(IDC_NDIS));
    EXPECT_THAT(Build(wizard, "NDIS"), ElementsAre("E100B.CAB"));
    EXPECT_FALSE(FloppyImage(folder_.Path("BootDisk.img")).Files().count("LIB\\ASPI\\ASPI8DOS.CAB"));
}

TEST_F(WizardControls, DiskWithoutDriversOffersNone) {
    const ShownWizard wizard = OpenAt(kDriversPage, "minimal");
    for (const int id : {IDC_NDIS, IDC_ASPI, IDC_SELECT_NDIS, IDC_SELECT_ASPI})
        EXPECT_FALSE(wizard.Takes(id));
    EXPECT_FALSE(wizard.IsTicked(IDC_NDIS));
    EXPECT_FALSE(wizard.IsTicked(IDC_ASPI));
    Leave(wizard);
}

TEST_F(WizardControls, OdiDiskSaysSo) {
    const ShownWizard wizard = OpenAt(kDriversPage, "demoodi");
    EXPECT_EQ("Network adapters drivers (ODI16/32)", wizard.Text(IDC_NDIS));
    EXPECT_THAT(wizard.Text(IDC_NDIS_NOTE), testing::HasSubstr("NWLAN"));
    const SelectionWindow selection =
        Select(wizard, IDC_SELECT_NDIS, DriversIn("odi16") + DriversIn("odi32"));
    EXPECT_EQ("NIC", selection.ColumnTitle(0));
    selection.Click("Cancel");
    Program().WaitUntilHidden(selection.Handle());
    Leave(wizard);
}

TEST_F(WizardControls, NetworkDriversAreSelectedBesideTheWizard) {
    SetDisk("custom", SmallDiskWith({"[DefaultDrivers]", "NDIS\\E100B", "NDIS\\EL90X"}));
    const ShownWizard wizard = OpenAt(kDriversPage);
    const SelectionWindow selection = Select(wizard, IDC_SELECT_NDIS, DriversIn("ndis"));
    EXPECT_EQ("NIC", selection.ColumnTitle(0));
    EXPECT_EQ(::GetWindow(selection.Handle(), GW_OWNER), wizard.Handle());
    EXPECT_TRUE(::IsWindowEnabled(wizard.Handle())) << "the wizard can be used meanwhile";
    const Names names = selection.Names();
    const auto row = std::find(names.begin(), names.end(), "EL90X") - names.begin();
    EXPECT_THAT(selection.Ticked(), testing::UnorderedElementsAre("E100B", "EL90X"));
    selection.ClickBox(static_cast<int>(row));
    EXPECT_TRUE(Eventually([&] { return selection.Ticked() == Names{"E100B"}; }));
    selection.Click("OK");
    Program().WaitUntilHidden(selection.Handle());
    EXPECT_THAT(Build(wizard, "NDIS"), ElementsAre("E100B.CAB"));
}

TEST_F(WizardControls, ScsiDriversFollowInTheSameWindow) {
    const ShownWizard wizard = OpenAt(kDriversPage);
    const SelectionWindow network = Select(wizard, IDC_SELECT_NDIS, DriversIn("ndis"));
    const size_t drivers = DriversIn("aspi");
    wizard.Click(IDC_SELECT_ASPI);
    EXPECT_TRUE(Eventually([&] {
        return network.ColumnTitle(0) == "ASPI" && network.Rows().size() == drivers &&
               network.ColumnArrow(1) == Arrow::Up;
    }));
    EXPECT_TRUE(network.Ticked().empty());
    network.ClickBox(0);
    EXPECT_TRUE(Eventually([&] { return network.Ticked().size() == 1; }));
    const std::string ticked = network.Ticked().front();
    network.Click("OK");
    Program().WaitUntilHidden(network.Handle());
    EXPECT_THAT(Build(wizard, "ASPI"), ElementsAre(ticked + ".CAB"));
}

TEST_F(WizardControls, CancelTakesAnOpenSelectionAlong) {
    const ShownWizard wizard = OpenAt(kDriversPage);
    const SelectionWindow selection = Select(wizard, IDC_SELECT_ASPI, DriversIn("aspi"));
    wizard.Click(IDCANCEL);
    Program().WaitUntilHidden(selection.Handle());
    ExpectTheEnd(wizard, "Operation canceled");
    ExpectNoWorkingFiles(folder_);
    wizard.Click(IDC_FINISH);
    EXPECT_EQ(Number(ExitCode::Canceled), Program().ExitCode());
}

TEST_F(WizardControls, DoubleClickOnADiskIsNext) {
    const ShownWizard wizard = OpenAt(kDiskPage, "minimal");
    const HWND list = wizard.Control(IDC_DISKS);
    const POINT place = MiddleOf(ItemPlace(list, wizard.SelectedDisk(), LVIR_LABEL));
    ClickInside(list, place);
    ::PostMessageA(list, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(place.x, place.y));
    ::PostMessageA(list, WM_LBUTTONUP, 0, MAKELPARAM(place.x, place.y));
    wizard.WaitForPage(kDriversPage);
    EXPECT_EQ("Press Next to re-populate the files list", wizard.Text(IDC_STATUS));
    wizard.Next(kDestinationPage);
    EXPECT_EQ(folder_.Path("minimal.img"), wizard.Text(IDC_TARGET));
    Leave(wizard);
}

TEST_F(WizardControls, OptionsSwitchTheTarget) {
    const ShownWizard wizard = OpenAt(kDriversPage);
    EXPECT_EQ("Formating Floppy Disk", wizard.Text(IDC_STEP_3));
    wizard.GoTo(kDestinationPage);
    EXPECT_TRUE(wizard.IsTicked(IDC_IMAGE_14));
    // The option that is chosen at first counts as clicked.
    EXPECT_EQ("Preparing new floppy image", wizard.Text(IDC_STEP_3));
    EXPECT_EQ("Copying files to floppy image", wizard.Text(IDC_STEP_4));
    struct Click {
        int Option;
        bool TakesTarget;
    };
    for (const Click& click : {Click{IDC_FLOPPY, false}, Click{IDC_IMAGE_28, true}, Click{IDC_FLOPPY, false},
                               Click{IDC_IMAGE_14, true}}) {
        wizard.Click(click.Option);
        Program().WaitUntil([&] { return wizard.Takes(IDC_BROWSE) == click.TakesTarget; },
                            "the option does nothing");
        EXPECT_EQ(click.TakesTarget, wizard.Takes(IDC_TARGET));
        for (const int option : {IDC_IMAGE_14, IDC_IMAGE_28, IDC_FLOPPY}) {
            EXPECT_EQ(option == click.Option, wizard.IsTicked(option));
        }
        EXPECT_EQ("Preparing new floppy image", wizard.Text(IDC_STEP_3));
        EXPECT_EQ("Copying files to floppy image", wizard.Text(IDC_STEP_4));
    }
    Leave(wizard);
}

TEST_F(WizardControls, BrowseTakesTheChosenFile) {
    const ShownWizard wizard = OpenAt(kDestinationPage);
    wizard.Click(IDC_BROWSE);
    const HWND dialog = Program().FileDialog();
    EXPECT_EQ("Select where to save the Floppy Image", TextOf(dialog));
    EXPECT_EQ("BootDisk.img", FileNameIn(dialog));
    EXPECT_EQ(TRUE, Ask(wizard.Handle(), WM_QUERYENDSESSION)) << "a question holds no session";
    EXPECT_EQ(::GetWindow(dialog, GW_OWNER), wizard.Handle());
    EXPECT_FALSE(::IsWindowEnabled(wizard.Handle()));
    ChooseFile(Program(), dialog, folder_.OutsidePath("chosen"));
    Program().WaitUntil([&] { return wizard.Text(IDC_TARGET) == folder_.OutsidePath("chosen.img"); },
                        "the chosen file is not the target");
    FinishInto(wizard, folder_.OutsidePath("chosen.img"));
}

TEST_F(WizardControls, BrowseTakesAFolderThatIsNotThereYet) {
    const ShownWizard wizard = OpenAt(kDestinationPage);
    const std::string target = folder_.OutsidePath("new\\folder\\chosen.img");
    wizard.Click(IDC_BROWSE);
    ChooseFile(Program(), Program().FileDialog(), target);
    Program().WaitUntil([&] { return wizard.Text(IDC_TARGET) == target; },
                        "the chosen file is not the target");
    FinishInto(wizard, target);
}

TEST_F(WizardControls, BrowseFromAFolderBeginsWithTheUsualName) {
    const ShownWizard wizard = OpenAt(kDestinationPage);
    wizard.Enter(IDC_TARGET, folder_.OutsidePath(""));
    wizard.Click(IDC_BROWSE);
    const HWND dialog = Program().FileDialog();
    EXPECT_EQ("BootDisk.img", FileNameIn(dialog));
    CancelBrowsing(wizard, dialog);
    EXPECT_EQ(folder_.OutsidePath(""), wizard.Text(IDC_TARGET));
    Leave(wizard);
}

TEST_F(WizardControls, CancelledBrowsingKeepsTheTarget) {
    const ShownWizard wizard = OpenAt(kDestinationPage);
    wizard.Enter(IDC_TARGET, folder_.Path("mine.img"));
    wizard.Click(IDC_BROWSE);
    const HWND dialog = Program().FileDialog();
    EXPECT_EQ("mine.img", FileNameIn(dialog));
    CancelBrowsing(wizard, dialog);
    EXPECT_EQ(folder_.Path("mine.img"), wizard.Text(IDC_TARGET));
    Leave(wizard);
}

TEST_F(WizardControls, LinksOpenTheirAddresses) {
    const BrowserCalls browser(folder_);
    const ShownWizard wizard = Open();
    wizard.Click(IDCANCEL);
    ExpectTheEnd(wizard, "Operation canceled");
    wizard.Click(IDC_HOME_PAGE);
    EXPECT_EQ(kHomePage, browser.Next(Program()));
    wizard.Click(IDC_FRAMEWORK_SITE);
    EXPECT_EQ(kFrameworkSite, browser.Next(Program()));
    EXPECT_EQ(kFinishedPage, wizard.Page());
    wizard.Click(IDC_FINISH);
    EXPECT_EQ(Number(ExitCode::Canceled), Program().ExitCode());
}

class WizardHelp : public WizardControls {
 protected:
    std::string CallForTopic(int topic) const {
        return "owner 0 file " + folder_.Path("corvane_help.chm") + ">Down command 15 data " +
               std::to_string(topic);
    }

    const HelpCalls help_{folder_};
};

TEST_F(WizardHelp, ButtonShowsTheTopicOfEachPage) {
    SetDisk("custom", SmallDiskWith({"[Create_CABs]", "setupwin=LIB"}));
    const ShownWizard wizard = Open();
    Names calls;
    for (int page = kWelcomePage; page <= kDestinationPage; ++page) {
        if (page != kWelcomePage) wizard.Next(page);
        EXPECT_EQ(calls, help_.Lines()) << "nobody has asked for help on page " << page;
        wizard.Click(IDC_HELP_BUTTON);
        calls.push_back(CallForTopic(1310 + 10 * page));
        Program().WaitUntil([&] { return help_.Lines() == calls; }, "the help was not called for");
        // An open help window would follow by itself.
        const HWND help = Program().HelpWindow();
        ::PostMessageA(help, WM_CLOSE, 0, 0);
        Program().WaitUntilGone(help);
    }
    wizard.Click(IDCANCEL);
    ExpectTheEnd(wizard, "Operation canceled");
    EXPECT_EQ(calls, help_.Lines());
    wizard.Click(IDC_FINISH);
    EXPECT_EQ(Number(ExitCode::Canceled), Program().ExitCode());
}

TEST_F(WizardHelp, OpenHelpFollowsThePages) {
    const ShownWizard wizard = Open();
    wizard.Click(IDC_HELP_BUTTON);
    Program().HelpWindow();
    wizard.Next(kDiskPage);
    wizard.SelectDisk("minimal");
    wizard.Next(kDriversPage);
    wizard.Next(kDestinationPage);
    wizard.Back(kDriversPage);
    wizard.Next(kDestinationPage);
    wizard.Click(IDC_FINISH);
    ExpectTheEnd(wizard, "Operation completed successfully");
    Names expected;
    for (const int topic : {1310, 1320, 1330, 1360, 1330, 1360, 1380, 1370})
        expected.push_back(CallForTopic(topic));
    EXPECT_EQ(expected, help_.Lines());
    Leave(wizard);
}

TEST_F(WizardHelp, IsCalledByAProcessThatTellsOfDrivesItself) {
    const ShownWizard wizard = Open();
    wizard.Click(IDC_HELP_BUTTON);
    Program().HelpWindow();
    EXPECT_EQ("the program", folder_.Read("critical-errors.txt"));
    Leave(wizard);
}

TEST_F(WizardHelp, GoesWithTheProgram) {
    const ShownWizard wizard = Open();
    wizard.Click(IDC_HELP_BUTTON);
    Program().HelpWindow();
    Leave(wizard);
    EXPECT_THAT(help_.Lines(), ElementsAre(CallForTopic(1310), "owner 0 file none command 18 data 0"));
}

TEST_F(WizardHelp, ThatNobodyHasOpenedIsNotCalled) {
    const ShownWizard wizard = Open();
    wizard.Next(kDiskPage);
    Leave(wizard);
    EXPECT_THAT(help_.Lines(), ElementsAre());
}

TEST_F(WizardControls, ViewerBesideTheProgramIsNotCalled) {
    const HelpCalls planted(folder_, HelpCalls::Place::BesideTheProgram);
    const ShownWizard wizard = Open();
    wizard.Click(IDC_HELP_BUTTON);
    wizard.Next(kDiskPage);
    EXPECT_THAT(planted.Lines(), ElementsAre());
    Leave(wizard);
}

TEST_F(WizardControls, SystemsViewerShowsTheHelp) {
    const ShownWizard wizard = Open();
    wizard.Click(IDC_HELP_BUTTON);
    const HWND help = Program().HelpWindow();
    EXPECT_EQ("The Corvane Help", TextOf(help));
    wizard.Next(kDiskPage);
    Leave(wizard);
}

TEST_F(WizardControls, WithoutAHelpFileNothingBreaks) {
    folder_.Remove("corvane_help.chm");
    const ShownWizard wizard = Open();
    wizard.Click(IDC_HELP_BUTTON);
    wizard.Next(kDiskPage);
    Leave(wizard);
}

}  // namespace
}  // namespace velbooter::e2e
