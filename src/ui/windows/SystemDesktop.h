#pragma once
// The real desktop: system message boxes and dialogs, and the windows that show the forms.

#include "src/run/Application.h"
#include "src/run/Desktop.h"
#include "src/ui/windows/DriversWindow.h"
#include "src/ui/windows/WaitWindow.h"
#include "src/ui/windows/WizardWindow.h"

namespace velbooter {

class SystemDesktop : public Desktop {
 public:
    /// Makes the windows show the forms of `app`, which must live until CloseWindows and every later call.
    void ShowFormsOf(Application& app) { app_ = &app; }

    /// Ends the windows, the help's too, and forgets the application: what a window is told while it ends may
    /// need it.
    void CloseWindows();

    /// Runs the program as long as its windows live; every ending is an exception (ProgramEnd).
    void RunMessages();

    Answer ShowMessage(const Message& message) override;
    std::int32_t ShowFormatDialog() override;
    std::optional<std::string> ShowOpenDialog(const CommonDialog& dialog) override;
    std::optional<std::string> ShowSaveDialog(const CommonDialog& dialog) override;
    void CallHelp(std::int32_t owner, const std::string& file, HelpCommand command,
                  std::uint32_t data) override;
    bool IsHelpOpen(const std::string& title) override;
    void OpenAddress(const std::string& address) override;
    void ShowDriverSelection() override;
    void Repaint() override;
    void PendingEvents() override;

    /// Handles a message of the loop that the program waits in, the keys of its dialogs included. Throws what
    /// a handler has thrown within a window's procedure.
    void HandleMessage(MSG& message);

 private:
    void RethrowFailures();

    /// The window that owns the driver selection, and the one that owns dialogs, which is the one whose
    /// handler asks; null while none is visible.
    HWND Owner() const;
    HWND Front() const;

    /// The window that stands beside Front; null when there is none.
    HWND Other() const;

    Application* app_ = nullptr;
    WaitWindow waitWindow_;
    WizardWindow wizardWindow_;
    DriversWindow driversWindow_;  ///< owned by windows above, so it goes before them
};

}  // namespace velbooter
