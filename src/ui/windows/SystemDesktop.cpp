#include "src/ui/windows/SystemDesktop.h"

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
    driversWindow_.RunModal(*app_, waitWindow_.Handle());
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
        ::TranslateMessage(&message);
        ::DispatchMessageA(&message);
    }
    driversWindow_.IgnoreInput(false);
    driversWindow_.RethrowFailure();
}

HWND SystemDesktop::Front() const {
    const HWND selection = driversWindow_.Handle();
    return selection != nullptr ? selection : waitWindow_.Handle();
}

}  // namespace velbooter
