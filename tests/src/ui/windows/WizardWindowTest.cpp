// The wizard's window in this process: any failure in one of its messages reaches the message loop as an
// exception. The test needs a screen, which may be virtual.

#include <windows.h>
// commctrl.h needs windows.h before it.
#include <commctrl.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <new>
#include <utility>

#include "src/common/RuntimeError.h"
#include "src/run/ProgramEnd.h"
#include "src/ui/windows/SystemDesktop.h"
#include "src/ui/windows/WizardIds.h"
#include "tests/e2e/support/Screen.h"
#include "tests/support/ApplicationFolder.h"

namespace {

// While this is set, the next allocation fails, which clears it again.
bool refusesMemory = false;

}  // namespace

// Not inlined, because the compiler would report a mismatch where it sees only one of such a pair.
[[gnu::noinline]] void* operator new(std::size_t size) {
    if (std::exchange(refusesMemory, false)) throw std::bad_alloc();
    if (void* memory = std::malloc(size > 0 ? size : 1)) return memory;
    throw std::bad_alloc();
}

[[gnu::noinline]] void operator delete(void* memory) noexcept {
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}

namespace velbooter::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

// The real desktop except for its message boxes and the help, which a test answers.
class WatchedDesktop : public SystemDesktop {
 public:
    void Repaint() override {
        if (BeforeRepaint) BeforeRepaint();
        SystemDesktop::Repaint();
    }
    Answer ShowMessage(const Message& message) override {
        Messages.push_back(message.Text);
        return Answer::Ok;
    }
    void CallHelp(std::int32_t, const std::string&, HelpCommand, std::uint32_t) override {
        ++HelpCalls;
        if (OnHelp) OnHelp();
    }

    std::function<void()> BeforeRepaint;
    std::function<void()> OnHelp;
    std::vector<std::string> Messages;
    int HelpCalls = 0;
};

class WizardWindowTest : public ::testing::Test {
 protected:
    WizardWindowTest() {
        e2e::LeaveWindowsUnmanaged("test_windows.exe");
        desktop_.ShowFormsOf(app_);
        app_.Wizard.Visible = true;
        app_.Wizard.TxtOwner.Text = "A name too long for a string that asks for no memory";
        desktop_.Repaint();
        window_ = ::FindWindowA("FrmWizard", nullptr);
        for (HWND page = ::GetWindow(window_, GW_CHILD); page != nullptr;
             page = ::GetWindow(page, GW_HWNDNEXT))
            if (HWND found = ::GetDlgItem(page, IDC_OWNER); found != nullptr) setupPage_ = page;
        HandleMessages();
    }
    ~WizardWindowTest() override { desktop_.CloseWindows(); }

    // Handles posted messages as the program's own loop does.
    void HandleMessages() {
        MSG message{};
        while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != 0) desktop_.HandleMessage(message);
    }

    void Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        ::SendMessageA(window_, message, wParam, lParam);
    }
    void Notify(int control, UINT code) const {
        NMHDR notice{nullptr, static_cast<UINT_PTR>(control), code};
        Send(WM_NOTIFY, notice.idFrom, reinterpret_cast<LPARAM>(&notice));
    }

    // Runs `send`, which sends a message, while the first allocation fails.
    void ExpectFailureInTheLoop(const char* what, const std::function<void()>& send) {
        SCOPED_TRACE(what);
        refusesMemory = true;
        EXPECT_NO_THROW(send());
        EXPECT_FALSE(std::exchange(refusesMemory, false)) << "no memory was asked for";
        EXPECT_THROW(HandleMessages(), std::bad_alloc);
        EXPECT_NO_THROW(HandleMessages());
    }

    const ApplicationFolder folder_;
    WatchedDesktop desktop_;
    Application app_{folder_.Path(), desktop_};
    HWND window_ = nullptr;
    HWND setupPage_ = nullptr;
};

TEST_F(WizardWindowTest, WantOfMemoryInAMessageReachesTheLoop) {
    ASSERT_NE(setupPage_, nullptr);
    ExpectFailureInTheLoop("help", [&] { Send(WM_HELP); });
    ExpectFailureInTheLoop("closing", [&] { Send(WM_CLOSE); });
    ExpectFailureInTheLoop("end of the session", [&] { Send(WM_ENDSESSION, TRUE); });
    ExpectFailureInTheLoop("press of a button", [&] { Send(WM_COMMAND, IDC_HELP_BUTTON); });
    ExpectFailureInTheLoop("click on a link", [&] { Notify(IDC_HOME_PAGE, NM_CLICK); });
    ExpectFailureInTheLoop("another disk", [&] { Notify(IDC_DISKS, static_cast<UINT>(LVN_ITEMCHANGED)); });
    ExpectFailureInTheLoop("another file", [&] { Send(WM_COMMAND, MAKEWPARAM(IDC_FILES, LBN_SELCHANGE)); });
    const HWND box = ::GetDlgItem(setupPage_, IDC_OWNER);
    ExpectFailureInTheLoop(
        "typed text", [&] { ::SendMessageA(box, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>("typed")); });
    EXPECT_EQ(0, desktop_.HelpCalls) << "no handler was reached";
}

// Puts a text onto the clipboard.
void Copy(HWND owner, const std::string& text) {
    ASSERT_TRUE(::OpenClipboard(owner));
    ::EmptyClipboard();
    const HGLOBAL block = ::GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
    std::copy_n(text.c_str(), text.size() + 1, static_cast<char*>(::GlobalLock(block)));
    ::GlobalUnlock(block);
    ::SetClipboardData(CF_TEXT, block);
    ::CloseClipboard();
}

TEST_F(WizardWindowTest, WantOfMemoryForAPastedKeyReachesTheLoop) {
    Copy(window_, "ABCDE-FGHIJ-KLMNO-PQRST-UVWXY");
    const HWND box = ::GetDlgItem(setupPage_, IDC_KEY_PART_1);
    ExpectFailureInTheLoop("pasted key", [&] { ::SendMessageA(box, WM_PASTE, 0, 0); });
    EXPECT_EQ(0, ::GetWindowTextLengthA(box));
    ::SendMessageA(box, WM_PASTE, 0, 0);
    EXPECT_EQ(5, ::GetWindowTextLengthA(box)) << "the clipboard was left open";
}

TEST_F(WizardWindowTest, FailureAfterAHandlerReachesTheLoop) {
    desktop_.BeforeRepaint = [] { throw RuntimeError(70); };
    EXPECT_NO_THROW(Send(WM_HELP));
    EXPECT_THROW(HandleMessages(), RuntimeError);
    desktop_.BeforeRepaint = nullptr;
    Send(WM_HELP);
    EXPECT_NO_THROW(HandleMessages());
    EXPECT_EQ(2, desktop_.HelpCalls);
}

TEST_F(WizardWindowTest, EndOfTheProgramReachesTheLoop) {
    EXPECT_NO_THROW(Send(WM_CLOSE));
    EXPECT_THROW(HandleMessages(), ProgramEnd);
}

TEST_F(WizardWindowTest, EndOfTheProgramReachesTheLoopWhenTheMessageIsPosted) {
    ::PostMessageA(window_, WM_CLOSE, 0, 0);
    EXPECT_THROW(HandleMessages(), ProgramEnd);
}

TEST_F(WizardWindowTest, FailureInAMessageDuringWorkIsOneOfTheWork) {
    desktop_.OnHelp = [&] {
        refusesMemory = true;
        Send(WM_ENDSESSION, TRUE);
        desktop_.PendingEvents();
        ADD_FAILURE() << "the work goes on";
    };
    Send(WM_HELP);
    EXPECT_NO_THROW(HandleMessages());
    EXPECT_THAT(desktop_.Messages, ElementsAre(HasSubstr("Error 7")));
    EXPECT_TRUE(app_.RunEnded);
    EXPECT_TRUE(app_.Wizard.FraMain[kFinishedPage].Visible);
}

TEST_F(WizardWindowTest, InputDuringWorkIsForgottenExceptCancelAndClosing) {
    desktop_.OnHelp = [&] {
        ::PostMessageA(window_, WM_COMMAND, IDC_NEXT, 0);
        ::PostMessageA(window_, WM_KEYDOWN, VK_RETURN, 0);
        ::PostMessageA(window_, WM_KEYDOWN, VK_ESCAPE, 0);
        desktop_.PendingEvents();
        EXPECT_EQ(kWelcomePage, app_.CurrentStep);
        EXPECT_FALSE(app_.RunEnded) << "the cancelling waits";
    };
    Send(WM_HELP);
    EXPECT_TRUE(app_.RunEnded);
    desktop_.OnHelp = [&] {
        ::PostMessageA(window_, WM_CLOSE, 0, 0);
        desktop_.PendingEvents();
    };
    Send(WM_HELP);
    EXPECT_THROW(HandleMessages(), ProgramEnd);
}

}  // namespace
}  // namespace velbooter::testing
