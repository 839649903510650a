#pragma once
// The controls of the forms as plain values. A build reads and writes them whether or not a window shows
// them; setting one calls no handler. Positions are 0-based, sizes in twips (1440 to the inch).

#include <cstdint>
#include <string>
#include <vector>

namespace velbooter {

struct Label {
    std::string Caption;
    bool Bold = false;
    bool Warning = false;  ///< shown in the colour of warnings
};

struct CommandButton {
    std::string Caption;
    bool Enabled = true;
    bool Visible = true;
    int Left = 0;  ///< in the driver selection, the only window whose buttons move
    int Top = 0;
};

struct CheckBox {
    std::string Caption;
    int Width = 0;
    bool Enabled = true;
    int Value = 0;  ///< 1 when ticked
};

struct TextBox {
    std::string Text;
    bool Enabled = true;
};

struct OptionButton {
    std::string Caption;
    bool Value = false;
};

struct ProgressBar {
    int Min = 0;
    int Max = 100;
    int Value = 0;
};

/// A multi-select list of texts.
class ListBox {
 public:
    int ListCount() const { return static_cast<int>(rows_.size()); }

    /// Returns the text at `index`; "" outside the list, on which the callers' fixed loops rely.
    std::string List(int index) const { return Contains(index) ? rows_[Position(index)].Text : ""; }

    /// Returns whether the row at `index` is selected; false outside the list.
    bool Selected(int index) const { return Contains(index) && rows_[Position(index)].Selected; }

    /// Marks the row at `index`, which must exist.
    void Select(int index, bool selected) { rows_.at(Position(index)).Selected = selected; }

    /// Returns the number that the program keeps with the row at `index`, 0 at first; 0 outside the list.
    std::int32_t ItemData(int index) const { return Contains(index) ? rows_[Position(index)].Data : 0; }

    /// Keeps a number with the row at `index`, which must exist.
    void SetItemData(int index, std::int32_t data) { rows_.at(Position(index)).Data = data; }

    /// Adds an unselected row at the end.
    void AddItem(const std::string& text) { rows_.push_back({text}); }

    /// Inserts an unselected row before `index` (0 to ListCount()).
    void AddItem(const std::string& text, int index) { rows_.insert(rows_.begin() + index, {text}); }

    /// Removes the row at `index`, which must exist.
    void RemoveItem(int index) { rows_.erase(rows_.begin() + index); }

    void Clear() { rows_.clear(); }

    /// Returns the number of selected rows.
    int SelectedCount() const {
        int count = 0;
        for (const Row& row : rows_) count += row.Selected ? 1 : 0;
        return count;
    }

 private:
    struct Row {
        std::string Text;
        bool Selected = false;
        std::int32_t Data = 0;
    };
    static size_t Position(int index) { return static_cast<size_t>(index); }
    bool Contains(int index) const { return index >= 0 && index < ListCount(); }

    std::vector<Row> rows_;
};

/// A file dialog's settings; FileName is preset by the program and replaced by the user's choice.
struct CommonDialog {
    std::string FileName;
    std::string DialogTitle;
    std::string Filter;  ///< one pattern, for example "*.img"; "" for all files
    std::string DefaultExt;
};

/// One row of a list view: the text of the row, its first sub-item, and the pictures as indexes into the
/// image list (1-based; not checked here: the window shows none for an index below 1).
struct ListItem {
    std::string Text;
    std::string SubItem;
    double Icon = 0;
    int SmallIcon = 0;
    bool Selected = false;
    bool Checked = false;
};

/// The direction of sorting, which a second click on a column reverses.
enum class SortOrder { Ascending, Descending };

/// The rows in the order in which they are shown, and how they were sorted.
struct ListView {
    std::vector<ListItem> ListItems;
    std::string FirstColumnTitle;
    std::string SecondColumnTitle;
    std::string Tag;  ///< free for the form

    bool Sorted = false;
    std::int16_t SortKey = 0;  ///< the column that decides: 0 the text, 1 the sub-item
    SortOrder Order = SortOrder::Ascending;

    int Width = 0;   ///< twips
    int Height = 0;  ///< twips
};

/// Sorts the rows of a list whose Sorted is set by its sort key and order, and leaves any other list alone.
/// Case is ignored, equal rows keep their order, and ticks and selection move with their rows.
void SortRows(ListView& list);

}  // namespace velbooter
