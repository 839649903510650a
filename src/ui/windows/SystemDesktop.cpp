#include "src/ui/windows/SystemDesktop.h"

#include "src/ui/windows/FormatDialog.h"
#include "src/ui/windows/MessageBoxes.h"
#include "src/ui/windows/OpenDialog.h"

namespace velbooter {

Answer SystemDesktop::ShowMessage(const Message& message) {
    Repaint();
    return ShowMessageBox(waitWindow_.Handle(), message);
}

std::int32_t SystemDesktop::ShowFormatDialog() {
    return ShowFormatDialogForDriveA(waitWindow_.Handle());
}

std::optional<std::string> SystemDesktop::ShowOpenDialog(const CommonDialog& dialog) {
    return AskForExistingFile(waitWindow_.Handle(), dialog);
}

void SystemDesktop::ShowDriverSelection() {
    app_->Drivers.Visible = false;
}

void SystemDesktop::Repaint() {
    if (app_ != nullptr) waitWindow_.Show(app_->Wait);
}

void SystemDesktop::PendingEvents() {
    Repaint();
    MSG message{};
    while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
        ::TranslateMessage(&message);
        ::DispatchMessageA(&message);
    }
}

}  // namespace velbooter
