#pragma once
// The list of drivers: a list view in report style with a check box for each row and a header that can be
// clicked and shows the sorting.

#include "src/ui/windows/ReportList.h"

namespace velbooter {

/// Create comes first, once; the parent window destroys the control.
class CheckList : public ReportList {
 public:
    /// Creates the control as a child of `parent`, which owns it; screen readers announce it as `name`.
    /// `font` must outlive the control.
    void Create(HWND parent, int id, const char* name, HFONT font);

    /// Brings titles, rows, ticks, selection and the header's arrow in line with `list`. When a sorted list
    /// has no selected row, the first one is selected, here and in `list`, so that the arrow keys have a row
    /// to start from. The columns are fitted to the rows once the list is sorted.
    void Show(ListView& list);

    /// Moves the control within its parent (pixels) and gives the second column the width that the first
    /// leaves.
    void Place(int left, int top, int width, int height) const;

    /// Returns where a menu for the selected row belongs, in screen coordinates: below its text, or at the
    /// upper left corner of the list when no row is selected.
    POINT PlaceForMenu() const;

 private:
    bool fits_ = true;  ///< whether the columns fit the rows that are shown
};

/// Returns whether a change that the control asks about or reports (LVN_ITEMCHANGING, LVN_ITEMCHANGED) is
/// the change of a tick.
bool ChangesTick(const NMLISTVIEW& change);

}  // namespace velbooter
