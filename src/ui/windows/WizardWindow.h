#pragma once
// The window that shows FrmWizard: a frame with a side picture and a row of buttons, and eight pages of which
// one is visible. What the user does reaches the form's state first and then the form's handlers.

#include <windows.h>

#include <array>

#include "src/ui/windows/ModelessDialog.h"
#include "src/ui/windows/WizardControls.h"

namespace velbooter {

class WizardWindow final : public ModelessDialog {
 public:
    ~WizardWindow() { Close(); }

    /// Brings the window in line with the wizard of `app`, which must outlive every later call and message.
    /// It is created when it is first to be shown. Throws what the messages of showing it throw.
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
    bool isBuilding_ = false;  ///< the work is one that the end of the session waits for
};

}  // namespace velbooter
