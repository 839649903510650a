#pragma once
// A list view as plain state: rows with a text and one sub-item, which can carry a picture, a tick, and be
// sorted.

#include <cstdint>
#include <string>
#include <vector>

namespace velbooter {

/// One row of a list view: the text of the row, its first sub-item, and the pictures as indexes into the
/// image list (1-based; not checked here).
struct ListItem {
    std::string Text;
    std::string SubItem;
    double Icon = 0;
    int SmallIcon = 0;
    bool Selected = false;
    bool Checked = false;
};

enum class SortOrder { Ascending, Descending };

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

/// Puts the rows of a sorted list into the order that its sort key and order ask for; rows that are alike
/// keep their places, capitals do not count, and ticks and selection move with their rows. Does nothing to a
/// list that is not sorted.
void SortRows(ListView& list);

}  // namespace velbooter
