// The wizard without a mouse, with the keyboard of the virtual screen.

#include <algorithm>

#include "src/forms/ProductTexts.h"
#include "tests/e2e/support/BrowserCalls.h"
#include "tests/e2e/support/HarnessFailure.h"
#include "tests/e2e/support/HelpCalls.h"
#include "tests/e2e/support/Programs.h"
#include "tests/e2e/support/RemoteControls.h"
#include "tests/e2e/support/Screen.h"
#include "tests/e2e/support/SelectionWindow.h"
#include "tests/e2e/support/WizardTest.h"
#include "tests/support/Patience.h"

namespace velbooter::e2e {
namespace {

using testing::ElementsAre;
using Ids = std::vector<int>;

class WizardKeyboard : public WizardTest {
 protected:
    void Type(const std::string& keys) {
        if (!TypeKeys(Program().ProcessId(), keys))
            throw HarnessFailure("the keys " + keys + " could not be typed");
    }

    // Types keys that lead to `page` and expects the focus on a control that can be used.
    void TypeTo(const ShownWizard& wizard, const std::string& keys, int page) {
        Type(keys);
        wizard.WaitForPage(page);
        ExpectUsefulFocus(wizard);
    }

    static void ExpectUsefulFocus(const ShownWizard& wizard) {
        const int focus = wizard.Focus();
        ASSERT_NE(focus, 0) << "no control has the focus on page " << wizard.Page();
        EXPECT_TRUE(wizard.Takes(focus)) << focus << " has the focus on page " << wizard.Page();
    }

    void WaitForFocus(const ShownWizard& wizard, int id) {
        Program().WaitUntil([&] { return wizard.Focus() == id; },
                            "control " + std::to_string(id) + " has not the focus");
    }

    void Choose(const ShownWizard& wizard, const std::string& key, int option) {
        Type(key);
        Program().WaitUntil([&] { return wizard.IsTicked(option); }, key + " does not choose its option");
    }

    // The controls that the Tab key reaches, from the one with the focus until that has it again; `key` is
    // Tab or shift+Tab.
    Ids Stops(const ShownWizard& wizard, const std::string& key) {
        constexpr size_t kMany = 30;
        const int first = wizard.Focus();
        Ids stops;
        do {
            const int former = wizard.Focus();
            stops.push_back(former);
            Type(key);
            Program().WaitUntil([&] { return wizard.Focus() != former; }, "the Tab key leads nowhere");
            ExpectUsefulFocus(wizard);
        } while (wizard.Focus() != first && stops.size() < kMany);
        return stops;
    }

    void ExpectEnd(ExitCode code) { EXPECT_EQ(Number(code), Program().ExitCode()); }
};

TEST_F(WizardKeyboard, EnterLeadsThroughToTheEnd) {
    const ShownWizard wizard = Open();
    EXPECT_EQ(IDC_NEXT, wizard.Focus());
    TypeTo(wizard, "Return", kDiskPage);
    EXPECT_EQ(IDC_DISKS, wizard.Focus());
    TypeTo(wizard, "Return", kDriversPage);
    EXPECT_EQ(IDC_NDIS, wizard.Focus());
    TypeTo(wizard, "Return", kFilesPage);
    EXPECT_EQ(IDC_FILES, wizard.Focus());
    TypeTo(wizard, "Return", kDestinationPage);
    EXPECT_EQ(IDC_IMAGE_14, wizard.Focus());
    Type("Return");
    ExpectTheEnd(wizard, "Operation completed successfully");
    EXPECT_EQ(IDC_FINISH, wizard.Focus());
    Type("Return");
    ExpectEnd(ExitCode::Built);
    ExpectImage(folder_, folder_.Path("BootDisk.img"), kSmallImageBytes);
}

TEST_F(WizardKeyboard, TabStopsInReadingOrderAndBack) {
    SetDisk("custom", SmallDiskWith({"[Create_CABs]", "setupwin=LIB"}));
    const std::vector<Ids> expected = {
        {},
        {IDC_DISKS},
        {IDC_NDIS, IDC_SELECT_NDIS, IDC_ASPI, IDC_SELECT_ASPI},
        {IDC_OWNER, IDC_ORGANIZATION, IDC_PC_NAME, IDC_WORKGROUP, IDC_KEY_PART_1, IDC_KEY_PART_2,
         IDC_KEY_PART_3, IDC_KEY_PART_4, IDC_KEY_PART_5},
        {IDC_FILES},
        {IDC_IMAGE_14, IDC_TARGET, IDC_BROWSE},
        {IDC_HOME_PAGE, IDC_FRAMEWORK_SITE}};
    const ShownWizard wizard = Open();
    for (int page = kWelcomePage; page <= kFinishedPage; ++page) {
        Ids stops = expected.at(static_cast<size_t>(page));
        const Ids buttons = wizard.Buttons();
        stops.insert(stops.end(), buttons.begin(), buttons.end());
        // The focus is at first on the page's first control, or on the default button.
        const bool atButton = page == kWelcomePage || page == kFinishedPage;
        const int first = page == kFinishedPage ? IDC_FINISH : IDC_NEXT;
        if (atButton) std::rotate(stops.begin(), std::find(stops.begin(), stops.end(), first), stops.end());
        EXPECT_EQ(stops, Stops(wizard, "Tab")) << "on page " << page;
        std::reverse(stops.begin() + 1, stops.end());
        EXPECT_EQ(stops, Stops(wizard, "shift+Tab")) << "backwards on page " << page;
        if (page < kDestinationPage) TypeTo(wizard, "alt+n", page + 1);
        if (page == kDestinationPage) TypeTo(wizard, "alt+c", kFinishedPage);
    }
    Type("alt+f");
    ExpectEnd(ExitCode::Canceled);
}

TEST_F(WizardKeyboard, AccessKeysOfTheButtons) {
    const HelpCalls help(folder_);
    const ShownWizard wizard = Open();
    TypeTo(wizard, "alt+n", kDiskPage);
    TypeTo(wizard, "alt+b", kWelcomePage);
    TypeTo(wizard, "alt+n", kDiskPage);
    Type("alt+h");
    Program().WaitUntil([&] { return help.Topics() == Ids{1320}; }, "the help was not called for");
    Program().HelpWindow();
    Type("alt+c");
    ExpectTheEnd(wizard, "Operation canceled");
    Type("alt+f");
    ExpectEnd(ExitCode::Canceled);
}

TEST_F(WizardKeyboard, EscapeLeavesASuccessAsItIs) {
    const ShownWizard wizard = OpenAt(kDestinationPage, "minimal");
    Type("Return");
    ExpectTheEnd(wizard, "Operation completed successfully");
    WaitForFocus(wizard, IDC_FINISH);
    // The effect of the key after it shows that Escape has been handled.
    Type("Escape Tab");
    WaitForFocus(wizard, IDC_HELP_BUTTON);
    ExpectTheEnd(wizard, "Operation completed successfully");
    Type("alt+f");
    ExpectEnd(ExitCode::Built);
    ExpectImage(folder_, folder_.Path("minimal.img"), kSmallImageBytes);
}

TEST_F(WizardKeyboard, AccessKeysOfTheDestination) {
    const ShownWizard wizard = OpenAt(kDestinationPage, "minimal");
    struct Choice {
        const char* Key;
        int Option;
    };
    for (const Choice& choice : {Choice{"alt+2", IDC_IMAGE_28}, Choice{"alt+1", IDC_IMAGE_14},
                                 Choice{"alt+f", IDC_FLOPPY}, Choice{"alt+1", IDC_IMAGE_14}}) {
        Choose(wizard, choice.Key, choice.Option);
        EXPECT_EQ(kDestinationPage, wizard.Page());
        WaitForFocus(wizard, choice.Option);
    }
    Type("alt+r");
    const HWND dialog = Program().FileDialog();
    Type("Escape");
    Program().WaitUntilGone(dialog);
    WaitForFocus(wizard, IDC_BROWSE);
    Choose(wizard, "alt+2", IDC_IMAGE_28);
    Type("Return");
    ExpectTheEnd(wizard, "Operation completed successfully");
    Type("Return");
    ExpectEnd(ExitCode::Built);
    ExpectImage(folder_, folder_.Path("minimal.img"), kLargeImageBytes);
}

TEST_F(WizardKeyboard, IsTakenBackFromNoWindow) {
    const ShownWizard wizard = OpenAt(kDestinationPage, "minimal");
    ASSERT_TRUE(TakeKeyboardAway(wizard.Handle()));
    Choose(wizard, "alt+2", IDC_IMAGE_28);
    Type("Escape");
    ExpectTheEnd(wizard, "Operation canceled");
    ASSERT_TRUE(TakeKeyboardAway(wizard.Handle()));
    Type("Return");
    ExpectEnd(ExitCode::Canceled);
}

TEST_F(WizardKeyboard, ArrowsChooseDisksAndOptions) {
    const ShownWizard wizard = OpenAt(kDiskPage);
    Type("Down");
    Program().WaitUntil([&] { return wizard.SelectedDisk() == 1; }, "the arrow selects no disk");
    Type("Up");
    Program().WaitUntil([&] { return wizard.SelectedDisk() == 0; }, "the arrow selects no disk");
    Type("m");
    Program().WaitUntil(
        [&] { return wizard.Disks().at(static_cast<size_t>(wizard.SelectedDisk())) == "minimal"; },
        "typing a letter finds no disk");
    TypeTo(wizard, "Return", kDriversPage);
    EXPECT_EQ(IDC_NEXT, wizard.Focus()) << "a disk without drivers has nothing to choose";
    TypeTo(wizard, "Return", kDestinationPage);
    for (const int option : {IDC_IMAGE_28, IDC_FLOPPY, IDC_IMAGE_14}) {
        Type("Down");
        Program().WaitUntil([&] { return wizard.IsTicked(option); }, "the arrow chooses no option");
        WaitForFocus(wizard, option);
        EXPECT_EQ(option != IDC_FLOPPY, wizard.Takes(IDC_BROWSE));
    }
    Type("Up");
    Program().WaitUntil([&] { return !wizard.Takes(IDC_TARGET); }, "the arrow chooses no option");
    Type("Tab");
    WaitForFocus(wizard, IDC_BACK);
    Type("shift+Tab");
    WaitForFocus(wizard, IDC_FLOPPY);
    Type("Escape");
    ExpectTheEnd(wizard, "Operation canceled");
    Type("space");
    ExpectEnd(ExitCode::Canceled);
}

TEST_F(WizardKeyboard, SpaceTicksAndOpens) {
    const ShownWizard wizard = OpenAt(kDriversPage);
    for (const bool ticked : {false, true}) {
        Type("space");
        Program().WaitUntil([&] { return wizard.Takes(IDC_SELECT_NDIS) == ticked; }, "space does not tick");
        EXPECT_EQ(ticked, wizard.IsTicked(IDC_NDIS));
        EXPECT_EQ(IDC_NDIS, wizard.Focus());
    }
    Type("Tab space");
    const SelectionWindow selection(Program().DriverSelection());
    EXPECT_TRUE(Eventually([&] { return selection.ColumnArrow(1) == Arrow::Up; }));
    EXPECT_TRUE(Eventually([&] { return selection.FocusedPart() == "list"; }));
    Type("Escape");
    Program().WaitUntilHidden(selection.Handle());
    WaitForFocus(wizard, IDC_SELECT_NDIS);
    TypeTo(wizard, "alt+n", kFilesPage);
    const size_t files = wizard.Files().size();
    for (const size_t selected : {files - 1, files}) {
        Type("space");
        Program().WaitUntil([&] { return wizard.SelectedFiles().size() == selected; },
                            "space selects no file");
    }
    Type("Down space");
    Program().WaitUntil([&] { return wizard.SelectedFiles().size() == files - 1; }, "space selects no file");
    EXPECT_THAT(wizard.SelectedFiles(), testing::Not(testing::Contains(wizard.Files().at(1))));
    Type("Escape");
    ExpectTheEnd(wizard, "Operation canceled");
    Type("Return");
    ExpectEnd(ExitCode::Canceled);
}

TEST_F(WizardKeyboard, TypingWritesIntoTheAnswers) {
    SetDisk("custom", SmallDiskWith({"[Create_CABs]", "setupwin=LIB"}));
    const ShownWizard wizard = OpenAt(kSetupPage);
    WaitForFocus(wizard, IDC_OWNER);
    Type("B o b");
    Program().WaitUntil([&] { return wizard.Text(IDC_OWNER) == "Bob"; },
                        "typing does not replace the owner's name");
    Type("Tab Tab Tab Tab 1 2 3 4 5 6");
    Program().WaitUntil([&] { return wizard.Text(IDC_KEY_PART_1) == "12345"; },
                        "a group has not five characters");
    Program().WaitUntil([&] { return wizard.Text(IDC_KEY_PART_2) == "6"; },
                        "typing does not go on in the next box");
    TypeTo(wizard, "Return", kFilesPage);
    EXPECT_NE(folder_.Read("files\\setupwin\\bin\\auto.inf").find("Name=\"Bob\""), std::string::npos);
    Type("alt+F4");
    ExpectEnd(ExitCode::Built);
    ExpectNoWorkingFiles(folder_);
}

TEST_F(WizardKeyboard, F1ShowsTheTopicOfThePage) {
    SetDisk("custom", SmallDiskWith({"[Create_CABs]", "setupwin=LIB"}));
    const HelpCalls help(folder_);
    const ShownWizard wizard = Open();
    for (int page = kWelcomePage; page <= kDestinationPage; ++page) {
        if (page != kWelcomePage) TypeTo(wizard, "alt+n", page);
        help.Forget();
        const int topic = 1310 + 10 * page;
        Type("F1");
        Program().WaitUntil([&] { return help.Topics() == Ids{topic}; }, "F1 does not show the page's topic");
        Type("shift+Tab F1");
        Program().WaitUntil(
            [&] {
                return help.Topics() == Ids{topic, topic};
            },
            "F1 does not show the page's topic");
    }
    Program().HelpWindow();
    Type("Escape");
    ExpectTheEnd(wizard, "Operation canceled");
    Type("alt+f");
    ExpectEnd(ExitCode::Canceled);
}

TEST_F(WizardKeyboard, EnterFollowsALink) {
    const BrowserCalls browser(folder_);
    const ShownWizard wizard = Open();
    Type("Escape");
    ExpectTheEnd(wizard, "Operation canceled");
    Type("Tab Tab");
    WaitForFocus(wizard, IDC_HOME_PAGE);
    Type("Return");
    EXPECT_EQ(kHomePage, browser.Next(Program()));
    Type("Tab");
    WaitForFocus(wizard, IDC_FRAMEWORK_SITE);
    Type("Return");
    EXPECT_EQ(kFrameworkSite, browser.Next(Program()));
    Type("alt+f");
    ExpectEnd(ExitCode::Canceled);
}

// Keys that are pressed while a disk is loaded.
class WizardKeyboardAtWork : public WizardKeyboard {
 protected:
    void SetUp() override {
        WizardKeyboard::SetUp();
        SetDisk("minimal", SmallDiskWith({"[Create_CABs]", "scsi=LIB"}));
    }

    ShownWizard TypeWhileLoading(const std::string& keys) {
        ShownWizard wizard = OpenAt(kDiskPage, "minimal");
        Type("Return");
        Program().WaitUntil([&] { return tool_.IsAtWork(); }, "nothing is packed");
        Type(keys);
        Ask(wizard.Handle(), WM_NULL);
        EXPECT_EQ(kDiskPage, wizard.Page());
        EXPECT_TRUE(folder_.Exists("cabs"));
        return wizard;
    }

    const HeldTool tool_{folder_, "cabarc"};
};

TEST_F(WizardKeyboardAtWork, NextIsNotTaken) {
    const ShownWizard wizard = TypeWhileLoading("Return alt+n alt+b Home space");
    tool_.Release();
    wizard.WaitForPage(kDriversPage);
    TypeTo(wizard, "alt+n", kDestinationPage);
    wizard.Close();
    ExpectEnd(ExitCode::Built);
}

TEST_F(WizardKeyboardAtWork, EscapeWaits) {
    const ShownWizard wizard = TypeWhileLoading("Escape");
    tool_.Release();
    ExpectTheEnd(wizard, "Operation canceled");
    Type("Return");
    ExpectEnd(ExitCode::Canceled);
}

TEST_F(WizardKeyboardAtWork, AccessKeyOfCancelWaits) {
    const ShownWizard wizard = TypeWhileLoading("alt+c");
    tool_.Release();
    ExpectTheEnd(wizard, "Operation canceled");
    Type("Return");
    ExpectEnd(ExitCode::Canceled);
}

TEST_F(WizardKeyboardAtWork, ClosingWaits) {
    TypeWhileLoading("alt+F4");
    tool_.Release();
    ExpectEnd(ExitCode::Built);
    ExpectNoWorkingFiles(folder_);
}

}  // namespace
}  // namespace velbooter::e2e
