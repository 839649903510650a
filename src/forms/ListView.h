#pragma once
// A list view as plain state: rows with a text, one sub-item, a picture and a tick, which can be sorted.

#include <cstdint>
#include <string>
#include <vector>

namespace velbooter {

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
