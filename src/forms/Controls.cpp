#include "src/forms/Controls.h"

#include <algorithm>

#include "src/common/Text.h"

namespace velbooter {

void SortRows(ListView& list) {
    if (!list.Sorted) return;
    const auto text = [&](const ListItem& row) -> const std::string& {
        return list.SortKey == 0 ? row.Text : row.SubItem;
    };
    const auto comesFirst = [&](const ListItem& left, const ListItem& right) {
        const int order = CompareIgnoringCase(text(left), text(right));
        return list.Order == SortOrder::Ascending ? order < 0 : order > 0;
    };
    std::stable_sort(list.ListItems.begin(), list.ListItems.end(), comesFirst);
}

}  // namespace velbooter
