#include "src/ui/windows/SystemDesktop.h"

#include "src/common/Processes.h"
#include "src/ui/DriversPage.h"
#include "src/ui/windows/HelpWindow.h"
#include "src/ui/windows/MessageBoxes.h"
#include "src/ui/windows/SystemDialogs.h"

namespace velbooter {

namespace {

// Disables a window (null for none) as long as a dialog is open that another window owns.
class DisabledWindow {
 public:
    explicit DisabledWindow(HWND window)
        : window_(window != nullptr && ::IsWindowEnabled(window) != FALSE ? window : nullptr) {
        if (window_ != nullptr) ::EnableWindow(window_, FALSE);
    }
    ~DisabledWindow() {
        if (window_ != nullptr) ::EnableWindow(window_, TRUE);
    }
    DisabledWindow(const DisabledWindow&) = delete;
    DisabledWindow& operator=(const DisabledWindow&) = delete;

 private:
    HWND window_;
};

}  // namespace

Answer SystemDesktop::ShowMessage(const Message& message) {
    Repaint();
    const DisabledWindow other(Other());
    return ShowMessageBox(Front(), message);
}

std::int32_t SystemDesktop::ShowFormatDialog() {
    const DisabledWindow other(Other());
    return ShowFormatDialogForDriveA(Front());
}

std::optional<std::string> SystemDesktop::ShowOpenDialog(const CommonDialog& dialog) {
    const DisabledWindow other(Other());
    return AskForExistingFile(Front(), dialog);
}

void SystemDesktop::ShowDriverSelection() {
    driversWindow_.BlockWhileOpen(Owner());
    try {
        Repaint();
        while (app_->Drivers.Visible) {
            MSG message{};
            if (::GetMessageW(&message, nullptr, 0, 0) > 0) {
                HandleMessage(message);
                continue;
            }
            // The program is ending: the loop around this one has to see the message, too.
            ::PostQuitMessage(static_cast<int>(message.wParam));
            CmdCancelDrivers_Click(*app_);
        }
    } catch (...) {
        app_->Drivers.Visible = false;
        driversWindow_.Show(*app_, nullptr);
        throw;
    }
}

std::optional<std::string> SystemDesktop::ShowSaveDialog(const CommonDialog& dialog) {
    const DisabledWindow other(Other());
    return AskForTargetFile(Front(), dialog);
}

void SystemDesktop::CallHelp(std::int32_t owner, const std::string& file, HelpCommand command,
                             std::uint32_t data) {
    const auto window = reinterpret_cast<HWND>(static_cast<std::intptr_t>(owner));
    CallHtmlHelp(window, file, command, data);
}

bool SystemDesktop::IsHelpOpen(const std::string& title) {
    return IsWindowPresent("HH Parent", title);
}

void SystemDesktop::OpenAddress(const std::string& address) {
    OpenWithShell(address);
}

HWND SystemDesktop::Owner() const {
    const HWND wizard = wizardWindow_.Handle();
    return wizard != nullptr ? wizard : waitWindow_.Handle();
}

void SystemDesktop::CloseWindows() {
    CloseHelp();
    driversWindow_.Close();
    wizardWindow_.Close();
    waitWindow_.Close();
    app_ = nullptr;
}

void SystemDesktop::Repaint() {
    if (app_ == nullptr) return;
    waitWindow_.Show(app_->Wait);
    wizardWindow_.Show(*app_);
    driversWindow_.Show(*app_, Owner());
}

void SystemDesktop::PendingEvents() {
    Repaint();
    // The wizard knows of its own work. The selection is loaded by others, so its input is held back here.
    const FlagScope work = driversWindow_.HoldInput();
    MSG message{};
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
        if (message.message == WM_QUIT) {
            ::PostQuitMessage(static_cast<int>(message.wParam));
            break;
        }
        if (wizardWindow_.Withholds(message) || driversWindow_.Withholds(message)) continue;
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
    RethrowFailures();
}

void SystemDesktop::HandleMessage(MSG& message) {
    if (!driversWindow_.Takes(message) && !wizardWindow_.Takes(message)) {
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
    RethrowFailures();
}

void SystemDesktop::RethrowFailures() {
    driversWindow_.RethrowFailure();
    wizardWindow_.RethrowFailure();
}

HWND SystemDesktop::Front() const {
    const HWND selection = driversWindow_.Handle();
    return selection == nullptr || wizardWindow_.IsWorking() ? Owner() : selection;
}

HWND SystemDesktop::Other() const {
    const HWND selection = driversWindow_.Handle();
    if (selection == nullptr) return nullptr;
    return wizardWindow_.IsWorking() ? selection : Owner();
}

void SystemDesktop::RunMessages() {
    MSG message{};
    while (::GetMessageW(&message, nullptr, 0, 0) > 0) HandleMessage(message);
}

}  // namespace velbooter
