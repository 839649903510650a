#pragma once
// The control that shows a ListView with ticks: two columns, a header that can be clicked and tells the
// sorting, and a check box for each row. It never sorts by itself: it shows the rows as they stand in the
// state.

#include <windows.h>

#include <commctrl.h>

#include "src/forms/ListView.h"

namespace velbooter {

class CheckList {
 public:
    /// Makes the control as a child of `parent`, which owns it, with `name` as what screen readers call it.
    void Create(HWND parent, int id, const char* name, HFONT font);

    HWND Handle() const { return list_; }

    /// Brings titles, rows, ticks, selection and the header's arrow in line with `list`. When a sorted list
    /// has no selected row, the first one is selected as a user would do it, so that the keyboard has a place
    /// to start from.
    void Show(const ListView& list);

    /// Writes ticks and selection into `list` as the user has changed them. Call it when the control tells of
    /// a changed row.
    void ReadInto(ListView& list);

    /// Whether Show is at work, so that a change which the control tells of is not the user's.
    bool IsCopying() const { return copying_; }

    /// Moves the control within its parent (pixels) and lets the second column fill what the first leaves.
    void Place(int left, int top, int width, int height) const;

    /// Returns where a menu for the selected row belongs, in coordinates of the screen.
    POINT PlaceForMenu() const;

 private:
    void ShowColumn(int column, const std::string& title, bool sorted, SortOrder order) const;
    bool ShowRows(const std::vector<ListItem>& rows);
    void ShowRow(int row, const ListItem& wanted, ListItem& shown) const;
    void FitColumns() const;
    void SelectFirstRow() const;

    HWND list_ = nullptr;          ///< destroyed with its parent
    std::vector<ListItem> shown_;  ///< the rows that the control shows
    bool copying_ = false;
    bool fits_ = true;  ///< whether the columns fit the rows that are shown
};

/// Returns whether a change that the control asks about or tells of (LVN_ITEMCHANGING, LVN_ITEMCHANGED) is
/// one of a tick.
bool ChangesTick(const NMLISTVIEW& change);

}  // namespace velbooter
