#pragma once
// The window that shows FrmDrivers: the drivers with a tick each, and the three buttons. It is created when
// it is first needed and hidden, never closed. The user's input goes into the form before a handler of the
// selection is called, so a handler never reads a control.

#include "src/ui/windows/CheckList.h"
#include "src/ui/windows/ModelessDialog.h"

namespace velbooter {

class DriversWindow final : public ModelessDialog {
 public:
    ~DriversWindow() { Close(); }

    /// Brings the window in line with app.Drivers and paints it at once; creates it when it is first to be
    /// visible. When it appears, it lies above `owner` (may be null) and the list has the keyboard focus.
    /// `app` must outlive every later call and message. Throws what the handlers of the messages throw that
    /// showing it sends.
    void Show(Application& app, HWND owner);

    /// Disables `owner` (may be null) until Show hides the window again, so that the selection has to be
    /// answered first.
    void BlockWhileOpen(HWND owner);

 private:
    void Do(const UserAction& action) override { action.Handler(App()); }
    bool OnCommand(int id, int notice) override;
    bool OnNotify(HWND window, const NMHDR& notice) override;
    INT_PTR OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;

    void CreateControls(HWND owner);
    void Appear(HWND owner);
    void Hide();
    void Resized();
    void PlaceControls() const;
    void SetLeastSize(MINMAXINFO& limits) const;
    void SortBy(int column);
    void ShowSortMenu(LPARAM place);

    CheckList list_;
    Font font_;
    HWND blockedOwner_ = nullptr;
};

}  // namespace velbooter
