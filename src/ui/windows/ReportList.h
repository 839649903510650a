#pragma once
// A list view that shows a ListView of the forms: two columns with titles, and rows with a picture or a
// tick. It never sorts by itself: the rows have the order that they have in the form.

#include <windows.h>
// commctrl.h needs windows.h before it.
#include <commctrl.h>

#include <array>
#include <string>
#include <vector>

#include "src/forms/Controls.h"

namespace velbooter {

/// Keeps a copy of what the control shows, so that only what has changed is sent to it. Rows and columns are
/// counted from 0.
class ReportList {
 public:
    /// The control; null before Attach.
    HWND Handle() const { return list_; }

    /// Writes ticks and selection into `rows` as the control has them now. Rows that the control does not
    /// show stay as they are.
    void Read(std::vector<ListItem>& rows);

 protected:
    /// What differed when rows were shown: nothing, ticks and selection alone, or the texts as well.
    enum class Change { None, State, Rows };

    /// Takes the empty control `list`, which must exist as long as the object is used and already have its
    /// extended style, and gives it its two columns.
    void Attach(HWND list);

    /// Gives a column its title and its arrow: HDF_SORTUP, HDF_SORTDOWN or 0 for none.
    void ShowTitle(size_t column, const std::string& title, int arrow);

    /// Brings rows, ticks and selection in line with `rows` and returns what differed. A row is left alone
    /// if it had these values when it was last shown or read.
    Change ShowRows(const std::vector<ListItem>& rows);

    /// Takes over ticks and selection from the control into the copy.
    void ReadState();

    /// Returns the row that is selected, the first one of several; -1 for none.
    int SelectedRow() const;

    /// Returns how wide a text is in the list's font, in pixels.
    int TextWidth(const std::string& text) const;

    /// Makes a column as wide as its longest text, or as `least` when that is more (pixels).
    void FitColumn(int column, int least) const;

    /// Makes a column as wide as its longest text, or as the space that the other column leaves when that is
    /// more.
    void FillWithColumn(int column) const;

 private:
    struct Title {
        std::string Text;
        int Arrow = 0;
        bool operator==(const Title&) const = default;
    };
    void ShowRow(size_t row, const ListItem& wanted, ListItem& shown) const;
    void ShowText(size_t row, int column, std::string text) const;
    void WidenColumn(int column, int least) const;

    HWND list_ = nullptr;
    bool hasTicks_ = false;
    std::array<Title, 2> titles_;
    std::vector<ListItem> shown_;  ///< the rows that the control shows
};

}  // namespace velbooter
