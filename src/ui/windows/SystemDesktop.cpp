#include "src/ui/windows/SystemDesktop.h"

#include "src/drivers/DriverSelection.h"
#include "src/ui/windows/FormatDialog.h"
#include "src/ui/windows/MessageBoxes.h"
#include "src/ui/windows/OpenDialog.h"

namespace velbooter {

Answer SystemDesktop::ShowMessage(const Message& message) {
    Repaint();
    return ShowMessageBox(Front(), message);
}

std::int32_t SystemDesktop::ShowFormatDialog() {
    return ShowFormatDialogForDriveA(Front());
}

std::optional<std::string> SystemDesktop::ShowOpenDialog(const CommonDialog& dialog) {
    return AskForExistingFile(Front(), dialog);
}

void SystemDesktop::ShowDriverSelection() {
    driversWindow_.BlockWhileOpen(waitWindow_.Handle());
    try {
        Repaint();
        while (app_->Drivers.Visible) {
            MSG message{};
            if (::GetMessageA(&message, nullptr, 0, 0) > 0) {
                HandleMessage(message);
                continue;
            }
            // The program is to end: the loop around this one has to see it too.
            ::PostQuitMessage(static_cast<int>(message.wParam));
            CmdCancelDrivers_Click(*app_);
        }
    } catch (...) {
        app_->Drivers.Visible = false;
        driversWindow_.Show(*app_, nullptr);
        throw;
    }
}

void SystemDesktop::Repaint() {
    if (app_ == nullptr) return;
    waitWindow_.Show(app_->Wait);
    driversWindow_.Show(*app_, waitWindow_.Handle());
}

void SystemDesktop::PendingEvents() {
    Repaint();
    driversWindow_.IgnoreInput(true);
    MSG message{};
    while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
        if (message.message == WM_QUIT) {
            ::PostQuitMessage(static_cast<int>(message.wParam));
            break;
        }
        ::TranslateMessage(&message);
        ::DispatchMessageA(&message);
    }
    driversWindow_.IgnoreInput(false);
    driversWindow_.RethrowFailure();
}

void SystemDesktop::HandleMessage(MSG& message) {
    if (!driversWindow_.Takes(message)) {
        ::TranslateMessage(&message);
        ::DispatchMessageA(&message);
    }
    driversWindow_.RethrowFailure();
}

HWND SystemDesktop::Front() const {
    const HWND selection = driversWindow_.Handle();
    return selection != nullptr ? selection : waitWindow_.Handle();
}

}  // namespace velbooter
