#pragma once
// The list of drivers: a report with a check box for each row and a header that can be clicked and shows the
// sorting.

#include "src/ui/windows/ReportList.h"

namespace velbooter {

class CheckList : public ReportList {
 public:
    /// Creates the control as a child of `parent`, which owns it, with `name` as what screen readers call it.
    void Create(HWND parent, int id, const char* name, HFONT font);

    /// Brings titles, rows, ticks, selection and the header's arrow in line with `list`. When a sorted list
    /// has no selected row, the first one is selected, here and in `list`, so that the keyboard has a place
    /// to start from.
    void Show(ListView& list);

    /// Moves the control within its parent (pixels) and lets the second column fill what the first leaves.
    void Place(int left, int top, int width, int height) const;

    /// Returns where a menu for the selected row belongs, in coordinates of the screen.
    POINT PlaceForMenu() const;

 private:
    bool fits_ = true;  ///< whether the columns fit the rows that are shown
};

/// Returns whether a change that the control asks about or reports (LVN_ITEMCHANGING, LVN_ITEMCHANGED) is
/// one of a tick.
bool ChangesTick(const NMLISTVIEW& change);

}  // namespace velbooter
