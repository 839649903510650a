#pragma once
// The window of the driver selection as a user sees and uses it, from outside the program's thread.

#include <windows.h>

#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

namespace velbooter::e2e {

/// A row of the selection.
struct DriverRow {
    std::string Name;
    std::string Description;
    bool Ticked = false;

    bool operator==(const DriverRow&) const = default;
};

/// Prints a row for GoogleTest.
void PrintTo(const DriverRow& row, std::ostream* out);

enum class Arrow { None, Up, Down };

class SelectionWindow {
 public:
    /// `window` is the selection's window, in this process or another.
    explicit SelectionWindow(HWND window) : window_(window) {}

    HWND Handle() const { return window_; }

    /// The list of drivers. Throws HarnessFailure when there is none.
    HWND List() const;

    /// The rows from top to bottom.
    std::vector<DriverRow> Rows() const;

    /// The names of the rows that have a tick, from top to bottom.
    std::vector<std::string> Ticked() const;

    /// The names of all rows, from top to bottom.
    std::vector<std::string> Names() const;

    /// The name of the selected row; "" when none is.
    std::string Selected() const;

    /// The title of a 0-based column, and the arrow next to it.
    std::string ColumnTitle(int column) const;
    Arrow ColumnArrow(int column) const;

    /// The width of a 0-based column, and that of a text in the list, in pixels.
    int ColumnWidth(int column) const;
    int TextWidth(const std::string& text) const;

    /// The buttons' captions from left to right.
    std::vector<std::string> Buttons() const;

    /// The button with this caption. Throws HarnessFailure when there is none.
    HWND Button(const std::string& caption) const;

    /// Clicks a button, the title of a column, or the check box of a row, and returns at once.
    void Click(const std::string& button) const;
    void ClickColumn(int column) const;
    void ClickBox(int row) const;

    /// Presses a key (a VK_ number) in the control that has the focus, and returns at once.
    void Key(WPARAM key) const;

    /// The control that has the focus, and its caption or class as text for a failure.
    HWND Focus() const;
    std::string FocusedPart() const;

    /// Whether a menu is open.
    bool ShowsMenu() const;

    /// The size that a button needs for its caption, in pixels.
    SIZE IdealSizeOf(HWND button) const;

    /// The place of a child in the client area, or of the window on the screen, in pixels.
    RECT PlaceOf(HWND part) const;

    /// Where the check box of a row is on the screen.
    POINT BoxOf(int row) const;

 private:
    RECT HeaderPlace(int column) const;
    HWND Header() const;

    HWND window_;
};

}  // namespace velbooter::e2e
