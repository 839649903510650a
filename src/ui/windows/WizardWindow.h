#pragma once
// The window that shows FrmWizard: a frame with a side picture and a row of buttons, and eight pages of
// which one is visible. The user's input is copied into the form before a handler of the form is called, so
// a handler never reads a control.

#include <windows.h>

#include <array>

#include "src/ui/windows/ModelessDialog.h"
#include "src/ui/windows/WizardControls.h"

namespace velbooter {

/// Keys, messages and postponed actions are ModelessDialog's; this class adds the pages, and what may be
/// done during a build.
class WizardWindow final : public ModelessDialog {
 public:
    ~WizardWindow() { Close(); }

    /// Brings the window in line with the wizard of `app`, which must outlive every later call and message.
    /// It is created when it is first to be visible. Throws what the handlers of the messages throw that
    /// showing it sends.
    void Show(Application& app);

 private:
    void Do(const UserAction& action) override;
    bool OnCommand(int id, int notice) override;
    bool OnNotify(HWND window, const NMHDR& notice) override;
    INT_PTR OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
    bool IsHeldInput(const MSG& message) override;

    void CreateFrame();
    void CreatePages();
    void ShowPages();
    void FocusPage(size_t page);
    void CallForTheUser() const;
    bool TakesClicks(int id) const;
    void TakeInput();

    std::array<HWND, kPageCount> pages_{};  ///< children, destroyed with the frame
    HWND shownPage_ = nullptr;
    WizardControls controls_;
    bool isBuilding_ = false;  ///< a build runs, for which the end of the session waits
};

}  // namespace velbooter
