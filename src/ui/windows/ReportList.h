#pragma once
// A list view that shows a ListView of the forms: two columns with titles, and rows with a picture or a tick.
// It never sorts by itself: the rows stand as they do in the state.

#include <windows.h>
// commctrl.h needs windows.h before it.
#include <commctrl.h>

#include <array>
#include <string>
#include <vector>

#include "src/forms/ListView.h"

namespace velbooter {

class ReportList {
 public:
    HWND Handle() const { return list_; }

    /// Writes ticks and selection into `rows` as the user has changed them. Rows that the control does not
    /// show stay as they are.
    void Read(std::vector<ListItem>& rows);

 protected:
    /// What differed when rows were shown: nothing, ticks and selection alone, or the texts as well.
    enum class Change { None, State, Rows };

    /// Takes the empty control `list`, which must outlive the object's use and have its extended style, and
    /// gives it its two columns.
    void Attach(HWND list);

    /// Brings the title of a column in line, and its arrow: HDF_SORTUP, HDF_SORTDOWN or 0 for none.
    void ShowTitle(size_t column, const std::string& title, int arrow);

    /// Brings rows, ticks and selection in line with `rows`. A row is left alone that shows its values since
    /// it was shown or read last.
    Change ShowRows(const std::vector<ListItem>& rows);

    /// Takes note of ticks and selection as they are.
    void ReadState();

    /// Returns the row that is selected; -1 for none.
    int SelectedRow() const;

    /// Returns how wide a text is in the list's font, in pixels.
    int TextWidth(const std::string& text) const;

    /// Makes a column as wide as its longest text, or as `least` when that is more (pixels).
    void FitColumn(int column, int least) const;

    /// Makes a column as wide as its longest text, or as what the other one leaves when that is more.
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
