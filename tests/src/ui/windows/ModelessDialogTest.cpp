// The base class of the dialogs, with a small dialog of the test: a failure leaves its procedure only
// through the message loop, and input waits while work runs. The test needs a screen, which may be virtual.

#include "src/ui/windows/ModelessDialog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "src/common/RuntimeError.h"
#include "tests/support/ScriptedDesktop.h"

namespace velbooter::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct EmptyTemplate {
    explicit EmptyTemplate(DWORD style) : Dialog{style, 0, 0, 0, 0, 100, 100} {}
    DLGTEMPLATE Dialog;
    WORD MenuClassAndTitle[3] = {};
};

// Calls OnAny for every message to it or to its page.
class TestDialog final : public ModelessDialog {
 public:
    TestDialog(Application& app, HWND owner) {
        ShowFormsOf(app);
        alignas(DWORD) const EmptyTemplate frame(WS_POPUP | WS_CAPTION);
        alignas(DWORD) const EmptyTemplate page(WS_CHILD | DS_CONTROL);
        Create(&frame.Dialog, owner);
        Page = CreatePage(&page.Dialog);
    }
    ~TestDialog() { Close(); }

    using ModelessDialog::FinishShowing;
    using ModelessDialog::Frame;
    using ModelessDialog::Run;

    std::function<INT_PTR(HWND window, UINT message)> OnAny = [](HWND, UINT) { return FALSE; };
    HWND Page = nullptr;
    static constexpr LRESULT kReply = 42;
    static bool ReplyTo(HWND window) { return Reply(window, kReply); }

 private:
    void Do(const UserAction& action) override { action.Handler(App()); }
    bool OnCommand(int, int) override { return OnAny(Frame(), WM_COMMAND) != FALSE; }
    bool OnNotify(HWND window, const NMHDR&) override { return OnAny(window, WM_NOTIFY) != FALSE; }
    INT_PTR OnMessage(HWND window, UINT message, WPARAM, LPARAM) override { return OnAny(window, message); }
    bool IsHeldInput(const MSG& message) override { return message.message == WM_KEYDOWN; }
};

class ModelessDialogTest : public ::testing::Test {
 protected:
    void FailAt(UINT failing, int number = 70) {
        dialog_->OnAny = [=](HWND, UINT message) -> INT_PTR {
            if (message == failing) throw RuntimeError(number);
            return FALSE;
        };
    }

    // Whether a message would wake a waiting loop.
    static bool LoopIsWoken() {
        bool woken = false;
        MSG message{};
        while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != 0)
            woken = woken || (message.hwnd == nullptr && message.message == WM_NULL);
        return woken;
    }

    UserAction Noting(const char* name, ActionKind kind = ActionKind::Step) {
        return {[this, name](Application&) { done_.push_back(name); }, kind};
    }

    ScriptedDesktop desktop_;
    Application app_{"C:\\nowhere", desktop_};
    std::unique_ptr<TestDialog> dialog_ = std::make_unique<TestDialog>(app_, nullptr);
    std::vector<std::string> done_;
};

TEST_F(ModelessDialogTest, AFailureInAnyMessageReachesTheLoopAlone) {
    NMHDR notice{};
    LoopIsWoken();
    for (const UINT message :
         {WM_COMMAND, WM_NOTIFY, WM_CLOSE, WM_HELP, WM_QUERYENDSESSION, WM_ENDSESSION, WM_DRAWITEM,
          WM_CTLCOLORSTATIC, WM_SYSCOLORCHANGE, WM_SIZE, WM_TIMER, WM_CONTEXTMENU, WM_ACTIVATE, WM_USER}) {
        for (const HWND window : {dialog_->Frame(), dialog_->Page}) {
            FailAt(message);
            EXPECT_NO_THROW(::SendMessageA(window, message, 0, reinterpret_cast<LPARAM>(&notice)));
            EXPECT_TRUE(LoopIsWoken()) << message;
            EXPECT_THROW(dialog_->RethrowFailure(), RuntimeError) << message;
            EXPECT_NO_THROW(dialog_->RethrowFailure()) << message;
        }
    }
}

TEST_F(ModelessDialogTest, OfTwoFailuresTheFirstIsRaised) {
    for (const int number : {70, 53}) {
        FailAt(WM_USER, number);
        ::SendMessageA(dialog_->Frame(), WM_USER, 0, 0);
    }
    try {
        dialog_->RethrowFailure();
        FAIL() << "nothing was raised";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(70, error.Number);
    }
    EXPECT_NO_THROW(dialog_->RethrowFailure());
}

TEST_F(ModelessDialogTest, AFailureInWhatShowingSendsIsRaisedByIt) {
    FailAt(WM_SIZE);
    ::SetWindowPos(dialog_->Frame(), nullptr, 0, 0, 300, 200, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_THROW(dialog_->FinishShowing(), RuntimeError);
    EXPECT_NO_THROW(dialog_->FinishShowing());
}

TEST_F(ModelessDialogTest, WhatASenderGetsIsTheReply) {
    dialog_->OnAny = [](HWND window, UINT message) -> INT_PTR {
        return message == WM_USER && TestDialog::ReplyTo(window) ? TRUE : FALSE;
    };
    EXPECT_EQ(TestDialog::kReply, ::SendMessageA(dialog_->Frame(), WM_USER, 0, 0));
    EXPECT_EQ(TestDialog::kReply, ::SendMessageA(dialog_->Page, WM_USER, 0, 0));
}

TEST_F(ModelessDialogTest, StepsAreForgottenWhileWorkRuns) {
    dialog_->Run({[&](Application&) {
        EXPECT_TRUE(dialog_->IsWorking());
        dialog_->Run(Noting("step"));
        dialog_->Run(Noting("build", ActionKind::Build));
        done_.push_back("work");
    }});
    EXPECT_FALSE(dialog_->IsWorking());
    EXPECT_THAT(done_, ElementsAre("work"));
    dialog_->Run(Noting("step"));
    EXPECT_THAT(done_, ElementsAre("work", "step"));
}

TEST_F(ModelessDialogTest, CancelWaitsForTheEndOfTheWork) {
    dialog_->Run({[&](Application&) {
        dialog_->Run(Noting("cancel", ActionKind::Cancel));
        dialog_->Run(Noting("again", ActionKind::Cancel));
        done_.push_back("work");
    }});
    EXPECT_THAT(done_, ElementsAre("work", "cancel"));
    dialog_->Run(Noting("step"));
    EXPECT_THAT(done_, ElementsAre("work", "cancel", "step"));
}

TEST_F(ModelessDialogTest, ClosingGoesBeforeCancel) {
    for (const bool closesFirst : {true, false}) {
        done_.clear();
        dialog_->Run({[&](Application&) {
            if (closesFirst) dialog_->Run(Noting("close", ActionKind::Close));
            dialog_->Run(Noting("cancel", ActionKind::Cancel));
            if (!closesFirst) dialog_->Run(Noting("close", ActionKind::Close));
        }});
        EXPECT_THAT(done_, ElementsAre("close"));
    }
}

TEST_F(ModelessDialogTest, NothingStartsBetweenAFailureAndTheLoop) {
    FailAt(WM_USER);
    ::SendMessageA(dialog_->Frame(), WM_USER, 0, 0);
    dialog_->Run(Noting("step"));
    EXPECT_THAT(done_, IsEmpty());
    EXPECT_THROW(dialog_->RethrowFailure(), RuntimeError);
    dialog_->Run(Noting("step"));
    EXPECT_THAT(done_, ElementsAre("step"));
}

TEST_F(ModelessDialogTest, AfterWorkThatFailedInputIsTakenAgain) {
    EXPECT_THROW(dialog_->Run({[](Application&) { throw RuntimeError(70); }}), RuntimeError);
    EXPECT_FALSE(dialog_->IsWorking());
}

TEST_F(ModelessDialogTest, InputIsWithheldFromTheOwnWindowWhileWorkRuns) {
    MSG key{};
    key.message = WM_KEYDOWN;
    for (const HWND window : {dialog_->Frame(), dialog_->Page}) {
        key.hwnd = window;
        EXPECT_FALSE(dialog_->Withholds(key));
        const auto work = dialog_->HoldInput();
        EXPECT_TRUE(dialog_->Withholds(key));
        MSG other = key;
        other.message = WM_PAINT;
        EXPECT_FALSE(dialog_->Withholds(other));
        other = key;
        other.hwnd = ::GetDesktopWindow();
        EXPECT_FALSE(dialog_->Withholds(other));
    }
}

TEST_F(ModelessDialogTest, KnowsThatItsOwnerHasTakenItAlong) {
    const HWND owner =
        ::CreateWindowExA(0, "STATIC", "owner", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    TestDialog owned(app_, owner);
    EXPECT_NE(owned.Frame(), nullptr);
    EXPECT_EQ(nullptr, owned.Handle()) << "it is not visible";
    ::DestroyWindow(owner);
    EXPECT_EQ(nullptr, owned.Frame());
}

}  // namespace
}  // namespace velbooter::testing
