#pragma once
// The window that shows FrmDrivers: the drivers with a tick each, and the three buttons. It is created when
// it is first needed and hidden, never closed. The user's input goes into the form before a handler of the
// selection is called.

#include "src/ui/windows/CheckList.h"
#include "src/ui/windows/ModelessDialog.h"

namespace velbooter {

class DriversWindow final : public ModelessDialog {
 public:
    ~DriversWindow() { Close(); }

    /// Brings the window in line with app.Drivers and paints it at once. When it appears, it stands above
    /// `owner` (may be null) with the keyboard in the list. `app` must outlive every later call and message.
    /// Throws what the messages of showing it throw.
    void Show(Application& app, HWND owner);

    /// Takes the input from `owner` (may be null) until the window is hidden again, which Show sees to.
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
