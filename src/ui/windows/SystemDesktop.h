#pragma once
// The real desktop: system message boxes and dialogs, and the windows that show the forms. Tests replace it
// by a scripted one (Desktop.h has the contracts of the overridden functions).

#include "src/run/Application.h"
#include "src/run/Desktop.h"
#include "src/ui/windows/DriversWindow.h"
#include "src/ui/windows/WaitWindow.h"
#include "src/ui/windows/WizardWindow.h"

namespace velbooter {

class SystemDesktop : public Desktop {
 public:
    /// Makes the windows show the forms of `app`, which must live until CloseWindows.
    void ShowFormsOf(Application& app) { app_ = &app; }

    /// Destroys the windows, those of the help viewer too, and forgets the application. To be called while
    /// the application still exists, because the last messages of a window may need it.
    void CloseWindows();

    /// Runs the message loop of the program. It ends by an exception, ProgramEnd or what a handler has
    /// thrown, or returns after a message that the program is to quit.
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

    /// Handles a message from the queue, with the keys of the program's dialogs. Throws what a handler has
    /// thrown within a window's procedure.
    void HandleMessage(MSG& message);

 private:
    void RethrowFailures();

    /// The owner of the driver selection, and the owner of other dialogs, which is the window whose handler
    /// asks; null while none is visible.
    HWND Owner() const;
    HWND Front() const;

    /// The visible window beside Front, which must not take input while a dialog of Front is open; null when
    /// there is none.
    HWND Other() const;

    Application* app_ = nullptr;
    WaitWindow waitWindow_;
    WizardWindow wizardWindow_;
    DriversWindow driversWindow_;  ///< owned by windows above, so it goes before them
};

}  // namespace velbooter
