// The window of the driver selection in this process, as the program's own loops use it: shown next to other
// windows while its drivers are loaded, or waited for.

#include <windows.h>
// commctrl.h needs windows.h before it.
#include <commctrl.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <thread>

#include "src/common/RuntimeError.h"
#include "src/ui/DriversPage.h"
#include "src/ui/windows/DriversWindow.h"
#include "src/ui/windows/SystemDesktop.h"
#include "tests/e2e/support/DemoFolder.h"
#include "tests/e2e/support/DriverStore.h"
#include "tests/e2e/support/Screen.h"
#include "tests/e2e/support/SelectionWindow.h"
#include "tests/e2e/support/WindowTree.h"
#include "tests/support/Patience.h"

namespace velbooter::e2e {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using Names = std::vector<std::string>;

// The real desktop; a test may do something before some of its calls.
class WatchedDesktop : public SystemDesktop {
 public:
    void Repaint() override {
        if (BeforeRepaint) BeforeRepaint();
        SystemDesktop::Repaint();
    }
    void PendingEvents() override {
        if (BeforeEvents) BeforeEvents();
        SystemDesktop::PendingEvents();
        if (AfterEvents) AfterEvents();
    }
    std::function<void()> BeforeRepaint;
    std::function<void()> BeforeEvents;
    std::function<void()> AfterEvents;
};

SelectionWindow FindSelection() {
    for (const WindowInfo& window : TopLevelWindows(::GetCurrentProcessId())) {
        if (window.Class == "#32770" && window.Visible) return SelectionWindow(window.Handle);
    }
    return SelectionWindow(nullptr);
}

class DriversWindowTest : public testing::Test {
 protected:
    DriversWindowTest() {
        LeaveWindowsUnmanaged("e2e_tests.exe");
        desktop_.ShowFormsOf(app_);
    }
    ~DriversWindowTest() override {
        desktop_.CloseWindows();
        ::SetCurrentDirectoryA("C:\\");  // reading drivers goes into the folder
    }

    // Lists three drivers, the last without a tick, and makes the selection visible.
    void FillForm() {
        app_.Drivers.LV.Tag = "ndis";
        app_.Drivers.LV.ListItems = {Row("A", "first", true), Row("B", "second", true),
                                     Row("C", "third", false)};
        app_.Drivers.LV.Sorted = true;
        app_.Drivers.LV.SortKey = 1;
        app_.Drivers.Visible = true;
    }
    static ListItem Row(const std::string& name, const std::string& description, bool checked) {
        ListItem row;
        row.Text = name;
        row.SubItem = description;
        row.Checked = checked;
        return row;
    }

    SelectionWindow Show() {
        FillForm();
        desktop_.Repaint();
        return FindSelection();
    }

    // Handles posted messages as the program's own loop does.
    void HandleMessages() {
        MSG message{};
        while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != 0) desktop_.HandleMessage(message);
    }

    // Waits for the selection to end, while `user` uses it from another thread as soon as it is visible.
    void ShowDriverSelection(const std::function<void(const SelectionWindow&)>& user) {
        FillForm();
        std::jthread thread([&] {
            if (Eventually([] { return FindSelection().Handle() != nullptr; })) user(FindSelection());
        });
        desktop_.ShowDriverSelection();
    }

    std::string IniValue(const char* key) const {
        char value[16] = "";
        ::GetPrivateProfileStringA("ndis", key, "", value, sizeof value, folder_.Path("Drivers.ini").c_str());
        return value;
    }

    const DemoFolder folder_;
    WatchedDesktop desktop_;
    Application app_{folder_.Path(), desktop_};
};

TEST_F(DriversWindowTest, RowsAppearAsTheyAreLoaded) {
    ClearDrivers(folder_);
    for (const char* name : {"ONE", "THREE", "TWO"})
        AddDriver(folder_, "ndis", name, std::string("Card ") + name);
    std::vector<Names> seen;
    std::vector<Arrow> arrows;
    desktop_.AfterEvents = [&] {
        const SelectionWindow window = FindSelection();
        seen.push_back(window.Names());
        arrows.push_back(window.ColumnArrow(1));
    };
    app_.Wizard.ChkNDIS.Width = kNdisWidth;
    CmdSelNDIS_Click(app_);
    EXPECT_THAT(seen.front(), IsEmpty());
    EXPECT_THAT(seen, Contains(Names{"ONE"}));
    EXPECT_THAT(seen, Contains(Names{"ONE", "THREE"}));
    EXPECT_THAT(arrows, testing::Each(Arrow::None)) << "they are sorted when they are all there";
    EXPECT_EQ(Arrow::Up, FindSelection().ColumnArrow(1));
    EXPECT_EQ("ONE", FindSelection().Selected());
    EXPECT_EQ("list", FindSelection().FocusedPart());
}

TEST_F(DriversWindowTest, ColumnsFitRowsThatComeInTheirOrder) {
    const std::string description =
        "A card that is described in more words than the window can show at first, in order";
    ClearDrivers(folder_);
    AddDriver(folder_, "ndis", "ONLY", description);
    app_.Wizard.ChkNDIS.Width = kNdisWidth;
    CmdSelNDIS_Click(app_);
    EXPECT_GT(FindSelection().ColumnWidth(1), FindSelection().TextWidth(description));
}

TEST_F(DriversWindowTest, InputIsDroppedWhileTheDriversAreLoaded) {
    ClearDrivers(folder_);
    for (const char* name : {"ONE", "THREE", "TWO"})
        AddDriver(folder_, "ndis", name, std::string("Card ") + name);
    bool clickedARow = false;
    desktop_.BeforeEvents = [&] {
        const SelectionWindow window = FindSelection();
        window.Click("OK");
        window.Click("Cancel");
        window.Click("Unselect All");
        window.ClickColumn(0);
        for (const WPARAM key : {VK_SPACE, VK_RETURN, VK_ESCAPE}) window.Key(key);
        ::PostMessageA(window.Handle(), WM_SYSCOMMAND, SC_CLOSE, 0);
        ::PostMessageA(window.List(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(window.List()), -1);
        clickedARow = !window.Rows().empty();
        if (clickedARow) window.ClickBox(0);
    };
    desktop_.AfterEvents = [] { EXPECT_EQ(FindSelection().Ticked(), FindSelection().Names()); };
    app_.Wizard.ChkNDIS.Width = kNdisWidth;
    CmdSelNDIS_Click(app_);
    HandleMessages();
    EXPECT_TRUE(clickedARow);
    const SelectionWindow window = FindSelection();
    ASSERT_NE(window.Handle(), nullptr) << "a click while loading has hidden the selection";
    EXPECT_THAT(window.Ticked(), ElementsAre("ONE", "THREE", "TWO"));
    EXPECT_THAT(window.Buttons(), ElementsAre("Unselect All", "OK", "Cancel"));
    EXPECT_EQ(1, app_.Drivers.LV.SortKey);

    window.Click("Cancel");
    HandleMessages();
    EXPECT_FALSE(app_.Drivers.Visible);
    EXPECT_FALSE(::IsWindowVisible(window.Handle()));
}

TEST_F(DriversWindowTest, FollowsTheFormWhileItIsOpen) {
    const SelectionWindow window = Show();
    EXPECT_THAT(window.Ticked(), ElementsAre("A", "B"));
    FrmDrivers& form = app_.Drivers;
    form.LV.ListItems[0].Checked = false;
    form.LV.ListItems[1].SubItem = "told anew";
    form.LV.ListItems[2] = Row("D", "another", true);
    form.LV.ListItems.push_back(Row("E", "one more", false));
    form.LV.FirstColumnTitle = "ASPI";
    form.LV.Order = SortOrder::Descending;
    form.CmdSelAll.Caption = "Select All";
    desktop_.Repaint();
    EXPECT_THAT(window.Rows(),
                ElementsAre(DriverRow{"A", "first", false}, DriverRow{"B", "told anew", true},
                            DriverRow{"D", "another", true}, DriverRow{"E", "one more", false}));
    EXPECT_EQ("ASPI", window.ColumnTitle(0));
    EXPECT_EQ(Arrow::Down, window.ColumnArrow(1));
    EXPECT_THAT(window.Buttons(), Contains("Select All"));
    form.LV.ListItems.resize(1);
    desktop_.Repaint();
    EXPECT_THAT(window.Names(), ElementsAre("A"));
    form.Visible = false;
    desktop_.Repaint();
    EXPECT_FALSE(::IsWindowVisible(window.Handle()));
}

TEST_F(DriversWindowTest, InputIsInTheFormBeforeAnyHandler) {
    const SelectionWindow window = Show();
    window.ClickBox(2);
    window.Key(VK_DOWN);
    window.Key(VK_SPACE);
    HandleMessages();
    EXPECT_TRUE(app_.Drivers.LV.ListItems[0].Checked);
    EXPECT_FALSE(app_.Drivers.LV.ListItems[1].Checked);
    EXPECT_TRUE(app_.Drivers.LV.ListItems[2].Checked);
    EXPECT_TRUE(app_.Drivers.LV.ListItems[1].Selected);
    EXPECT_FALSE(app_.Drivers.LV.ListItems[0].Selected);
    desktop_.Repaint();
    EXPECT_THAT(window.Ticked(), ElementsAre("A", "C"));
}

TEST_F(DriversWindowTest, ResizingIsInTheForm) {
    const SelectionWindow window = Show();
    ::SetWindowPos(window.Handle(), nullptr, 0, 0, 600, 400, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ(9000, app_.Drivers.Width);
    EXPECT_EQ(6000, app_.Drivers.Height);
    EXPECT_EQ(8900, app_.Drivers.LV.Width);
    EXPECT_EQ(5850, app_.Drivers.CmdOK.Left);
}

TEST_F(DriversWindowTest, ReadersOfTheScreenAreToldTheListsName) {
    const SelectionWindow window = Show();
    const HWND label = ::GetWindow(window.List(), GW_HWNDPREV);
    char className[32] = "";
    ::GetClassNameA(label, className, sizeof className);
    EXPECT_STRCASEEQ(className, "Static");
    EXPECT_EQ("Drivers", TextOf(label));
    EXPECT_EQ("Drivers", TextOf(window.List()));
    // The texts have no access keys, which would clash with each other.
    for (const std::string& caption : window.Buttons()) EXPECT_EQ(std::string::npos, caption.find('&'));
}

TEST_F(DriversWindowTest, OpenedAgainItIsTheSameWindowInItsMiddle) {
    const SelectionWindow window = Show();
    const RECT first = window.PlaceOf(window.Handle());
    ::SetWindowPos(window.Handle(), nullptr, 1, 1, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    window.Click("Unselect All");
    HandleMessages();
    EXPECT_EQ("Select All", window.FocusedPart());
    window.Click("OK");
    HandleMessages();
    EXPECT_FALSE(app_.Drivers.Visible);
    EXPECT_EQ("0", IniValue("A"));
    const SelectionWindow again = Show();
    EXPECT_EQ(again.Handle(), window.Handle());
    EXPECT_EQ("list", again.FocusedPart());
    EXPECT_THAT(again.Buttons(), Contains("Select All"));
    EXPECT_THAT(again.Ticked(), ElementsAre("A", "B"));
    const RECT second = window.PlaceOf(window.Handle());
    EXPECT_TRUE(::EqualRect(&first, &second));
}

TEST_F(DriversWindowTest, SecondPressAfterTheOneThatHidItDoesNothing) {
    const SelectionWindow window = Show();
    window.Click("Cancel");
    window.Click("OK");
    HandleMessages();
    EXPECT_FALSE(folder_.Exists("Drivers.ini"));
}

TEST_F(DriversWindowTest, WaitingEndsWithOk) {
    app_.Wait.Visible = true;
    desktop_.Repaint();
    bool ownerTookInput = true;
    HWND owner = nullptr;
    ShowDriverSelection([&](const SelectionWindow& window) {
        owner = ::GetWindow(window.Handle(), GW_OWNER);
        ownerTookInput = ::IsWindowEnabled(owner) != FALSE;
        window.Click("OK");
    });
    EXPECT_FALSE(app_.Drivers.Visible);
    EXPECT_EQ("1", IniValue("B"));
    EXPECT_EQ("0", IniValue("C"));
    ASSERT_NE(owner, nullptr);
    EXPECT_FALSE(ownerTookInput);
    EXPECT_TRUE(::IsWindowEnabled(owner));
}

TEST_F(DriversWindowTest, WaitingEndsWithAPressThatIsSentNotPosted) {
    ShowDriverSelection(
        [](const SelectionWindow& window) { ::SendMessageA(window.Handle(), WM_COMMAND, IDCANCEL, 0); });
    EXPECT_FALSE(app_.Drivers.Visible);
}

TEST_F(DriversWindowTest, EndOfTheProgramIsCancelAndToldAgain) {
    ShowDriverSelection([](const SelectionWindow& window) {
        ::PostThreadMessageA(::GetWindowThreadProcessId(window.Handle(), nullptr), WM_QUIT, 7, 0);
    });
    EXPECT_FALSE(app_.Drivers.Visible);
    EXPECT_EQ(nullptr, FindSelection().Handle());
    EXPECT_FALSE(folder_.Exists("Drivers.ini"));
    MSG message{};
    while (::GetMessageA(&message, nullptr, 0, 0) > 0) continue;
    EXPECT_EQ(7u, message.wParam);
}

TEST_F(DriversWindowTest, PendingEventsLeaveTheEndOfTheProgramToTheLoop) {
    ::PostQuitMessage(8);
    desktop_.PendingEvents();
    MSG message{};
    while (::GetMessageA(&message, nullptr, 0, 0) > 0) continue;
    EXPECT_EQ(8u, message.wParam);
}

TEST_F(DriversWindowTest, FailureOfAHandlerEndsTheWaiting) {
    app_.Wait.Visible = true;
    desktop_.Repaint();
    desktop_.BeforeRepaint = [&] {
        if (!app_.Drivers.Visible) throw RuntimeError(70);
    };
    for (const bool sent : {false, true}) {
        const auto press = [&](const SelectionWindow& window) {
            if (sent) {
                ::SendMessageA(window.Handle(), WM_COMMAND, IDOK, 0);
            } else {
                window.Click("OK");
            }
        };
        EXPECT_THROW(ShowDriverSelection(press), RuntimeError);
        EXPECT_FALSE(app_.Drivers.Visible);
        EXPECT_EQ(nullptr, FindSelection().Handle());
    }
    for (const WindowInfo& window : TopLevelWindows(::GetCurrentProcessId())) {
        EXPECT_TRUE(window.Class != "FrmWait" || window.Enabled);
    }
}

TEST_F(DriversWindowTest, FailureOfAHandlerThatShowsOnHidesTheSelection) {
    desktop_.BeforeRepaint = [&] {
        if (app_.Drivers.CmdSelAll.Caption == "Select All") throw RuntimeError(70);
    };
    EXPECT_THROW(ShowDriverSelection([](const SelectionWindow& window) { window.Click("Unselect All"); }),
                 RuntimeError);
    EXPECT_FALSE(app_.Drivers.Visible);
    EXPECT_EQ(nullptr, FindSelection().Handle());
}

TEST_F(DriversWindowTest, FailureOfAHandlerLeavesTheProgramsOwnLoop) {
    const SelectionWindow window = Show();
    desktop_.BeforeRepaint = [&] { throw RuntimeError(70); };
    window.Click("Unselect All");
    EXPECT_THROW(HandleMessages(), RuntimeError);
    desktop_.BeforeRepaint = nullptr;
    EXPECT_NO_THROW(HandleMessages());
    EXPECT_THAT(app_.Drivers.CmdSelAll.Caption, "Select All");
}

LRESULT CALLBACK CountColorChanges(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR /*id*/,
                                   DWORD_PTR count) {
    if (message == WM_SYSCOLORCHANGE) ++*reinterpret_cast<int*>(count);
    return ::DefSubclassProc(window, message, wParam, lParam);
}

// Makes the text of the system's messages much larger, as a user can in the settings.
class LargeMessages {
 public:
    LargeMessages() {
        former_.cbSize = sizeof former_;
        ::SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, sizeof former_, &former_, 0);
        NONCLIENTMETRICSA large = former_;
        large.lfMessageFont.lfHeight *= 3;
        ::SystemParametersInfoA(SPI_SETNONCLIENTMETRICS, sizeof large, &large, 0);
    }
    ~LargeMessages() { ::SystemParametersInfoA(SPI_SETNONCLIENTMETRICS, sizeof former_, &former_, 0); }
    LargeMessages(const LargeMessages&) = delete;
    LargeMessages& operator=(const LargeMessages&) = delete;

 private:
    NONCLIENTMETRICSA former_{};
};

// The size of a text in the font of a control of this process.
SIZE SizeOfText(HWND control, const std::string& text) {
    const HDC context = ::GetDC(control);
    const HGDIOBJ former =
        ::SelectObject(context, reinterpret_cast<HFONT>(::SendMessageA(control, WM_GETFONT, 0, 0)));
    SIZE size{};
    ::GetTextExtentPoint32A(context, text.c_str(), static_cast<int>(text.size()), &size);
    ::SelectObject(context, former);
    ::ReleaseDC(control, context);
    return size;
}

TEST_F(DriversWindowTest, CaptionsFitAtAnySizeOfMessages) {
    const LargeMessages large;
    const SelectionWindow window = Show();
    for (const std::string& caption : window.Buttons()) {
        const HWND button = window.Button(caption);
        const RECT place = window.PlaceOf(button);
        const SIZE needed = SizeOfText(button, caption);
        ASSERT_GT(needed.cx, 0);
        EXPECT_LE(needed.cx, place.right - place.left) << caption;
        EXPECT_LE(needed.cy, place.bottom - place.top) << caption;
    }
}

TEST_F(DriversWindowTest, ListIsToldOfNewColors) {
    const SelectionWindow window = Show();
    int count = 0;
    ::SetWindowSubclass(window.List(), CountColorChanges, 0, reinterpret_cast<DWORD_PTR>(&count));
    ::SendMessageA(window.Handle(), WM_SYSCOLORCHANGE, 0, 0);
    EXPECT_EQ(1, count);
    ::RemoveWindowSubclass(window.List(), CountColorChanges, 0);
}

TEST_F(DriversWindowTest, WaitWindowAsksTheSessionToStay) {
    app_.Wait.Visible = true;
    desktop_.Repaint();
    const HWND window = ::FindWindowA("FrmWait", nullptr);
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(FALSE, ::SendMessageA(window, WM_QUERYENDSESSION, 0, 0));
    app_.Wait.Visible = false;
    desktop_.Repaint();
    EXPECT_EQ(TRUE, ::SendMessageA(window, WM_QUERYENDSESSION, 0, 0)) << "there is nothing to wait for";
}

TEST_F(DriversWindowTest, WindowsEndBeforeTheApplicationDoes) {
    app_.Wait.Visible = true;
    Show();
    std::vector<HWND> shown;
    for (const WindowInfo& window : TopLevelWindows(::GetCurrentProcessId())) {
        if (window.Visible) shown.push_back(window.Handle);
    }
    EXPECT_EQ(2u, shown.size());
    desktop_.CloseWindows();
    for (const HWND window : shown) EXPECT_FALSE(::IsWindow(window));
    EXPECT_NO_THROW(HandleMessages());
    EXPECT_NO_THROW(desktop_.Repaint()) << "there is nothing left to show";
}

TEST_F(DriversWindowTest, FollowsTheFormAlsoWhileInputIsDropped) {
    DriversWindow window;
    FillForm();
    window.Show(app_, nullptr);
    const auto work = window.HoldInput();
    app_.Drivers.LV.ListItems[0].Checked = false;
    window.Show(app_, nullptr);
    EXPECT_THAT(SelectionWindow(window.Handle()).Ticked(), ElementsAre("B"));
}

TEST_F(DriversWindowTest, GoesWithItsOwnerAndIsMadeAgain) {
    DriversWindow window;
    FillForm();
    const auto makeOwner = [] {
        return ::CreateWindowExA(0, "STATIC", "owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 200,
                                 nullptr, nullptr, nullptr, nullptr);
    };
    for (int i = 0; i < 2; ++i) {
        const HWND owner = makeOwner();
        window.Show(app_, owner);
        ASSERT_NE(window.Handle(), nullptr);
        EXPECT_EQ(owner, ::GetWindow(window.Handle(), GW_OWNER));
        EXPECT_THAT(SelectionWindow(window.Handle()).Ticked(), ElementsAre("A", "B"));
        ::DestroyWindow(owner);
        EXPECT_EQ(nullptr, window.Handle());
    }
}

}  // namespace
}  // namespace velbooter::e2e
