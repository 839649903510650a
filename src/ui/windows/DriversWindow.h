#pragma once
// The window that shows FrmDrivers: the drivers with a tick each, and the three buttons. It is made when it
// is first needed and hidden, never closed. The user's input goes into the form before a handler of the
// selection is called.

#include "src/run/Application.h"
#include "src/ui/windows/CaughtFailure.h"
#include "src/ui/windows/CheckList.h"
#include "src/ui/windows/WindowHandle.h"

namespace velbooter {

class DriversWindow {
 public:
    DriversWindow() = default;
    DriversWindow(const DriversWindow&) = delete;
    DriversWindow& operator=(const DriversWindow&) = delete;

    /// Brings the window in line with app.Drivers and paints it at once. When it appears, it stands above
    /// `owner` (may be null) with the keyboard in the list. `app` must outlive every later call and message.
    void Show(Application& app, HWND owner);

    /// Ends the window, if there is one.
    void Close();

    /// Takes the input from `owner` (may be null) until the window is hidden again, which Show sees to.
    void BlockWhileOpen(HWND owner);

    /// Handles `message` when it is for this window: its keys are those of a dialog. Returns whether it was.
    bool Takes(MSG& message);

    /// While the program works, what the user does to the window is dropped, except looking around.
    void IgnoreInput(bool ignored) { ignoresInput_ = ignored; }

    /// Throws what a handler has thrown within the window's procedure since the last call. Every message loop
    /// calls it after each message.
    void RethrowFailure() { failure_.Rethrow(); }

    /// The window to own message boxes; null while it is not visible.
    HWND Handle() const { return open_ ? window_.get() : nullptr; }

 private:
    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    INT_PTR Respond(UINT message, WPARAM wParam, LPARAM lParam);
    INT_PTR Answer(LRESULT result) const;
    INT_PTR Notified(const NMHDR& notification, LPARAM lParam);

    void Create(HWND owner);
    void Appear(HWND owner);
    void Hide();
    void Resized();
    void PlaceControls() const;
    void TellLeastSize(MINMAXINFO& limits) const;
    void Press(int button);
    void SortBy(int column);
    void ShowSortMenu(LPARAM place);

    Application* app_ = nullptr;
    CaughtFailure failure_;
    CheckList list_;
    Font font_;
    HWND blockedOwner_ = nullptr;
    bool open_ = false;
    bool ignoresInput_ = false;
    Window window_;
};

}  // namespace velbooter
